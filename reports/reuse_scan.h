#pragma once
// The scan of a cutlist for film that is wanted twice.

#include "host/counted.h"
#include "host/recdb.h"
#include "host/settings.h"

#include <memory>

/// Columns of the table of cases.
enum reuse_field : int {
    rf_shot_name = 0,
    rf_cam_reel,
    rf_keycode_in,
    rf_keycode_out,
    rf_keycode_missing,
    rf_labeltype,
    rf_count,
    rf_further,
    rf_event
};

/// What a scan found. It holds for as long as the table that was scanned.
class ReuseScan : public iVirtual {
public:
    ReuseScan(recdb& scanned, LoggerHandle& log);
    ReuseScan(const ReuseScan&) = delete;
    ReuseScan& operator=(const ReuseScan&) = delete;

    /// Forgets the roll's span.
    void reset();
    /// Takes a record into the roll's span. One whose key number lies below 0 is left out and logged.
    void note_range(unsigned index);

    recdb* table;
    std::unique_ptr<recdb> cases;
    int reuse_count = 0;
    int case_count = 0;
    int first_frame = 0; ///< of the roll in hand, in frames
    int last_frame = 0;
    int frame_span = 0;
    LoggerHandle* logger;
};

/// Sorts the table by key number, flags the records of each case in it and lists the cases by roll.
std::unique_ptr<ReuseScan> scan_reuse(recdb& table, LoggerHandle& logger);

/// The scan of the run in progress, made when it is first asked for.
ReuseScan& run_reuse_scan(recdb& table, LoggerHandle& logger);
/// At the end of a run, while its table stands.
void release_reuse_scan();
