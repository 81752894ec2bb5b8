#pragma once
// Tables of cuts and opticals, made without an edit.

#include "cutlist/classify_opticals.h"
#include "cutlist/cutlist_options.h"
#include "cutlist/upper_tracks.h"
#include "host/fixed_text.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "tests/support/recording_logger.h"

#include <string>
#include <vector>

namespace generator_test {

inline cut_s cut(int track, int in, int out, const char* transition_behind = "") {
    cut_s record;
    record.track = track;
    record.edit_in = in;
    record.edit_out = out;
    put_text(record.fx_op_out, transition_behind);
    return record;
}

inline cut_s v1(int in, int out, const char* transition_behind = "") { return cut(1, in, out, transition_behind); }

inline cut_s optical(int in, int out, int tracks = 1) {
    cut_s record;
    record.optical_record = 1;
    record.optical_tracks = tracks;
    record.optical_layer_count = 1;
    record.edit_in = record.optical_in = in;
    record.edit_out = record.optical_out = out;
    put_text(record.optical_name, "Blur");
    return record;
}

/// A table whose rows can be read back and drawn.
class MadeTable {
public:
    void add(const std::vector<cut_s>& records) {
        for (const cut_s& record : records)
            record.to_record(*table.get_record(static_cast<unsigned>(table.add_records(1))));
    }
    std::vector<cut_s> records() const {
        std::vector<cut_s> all(table.get_num_records());
        for (unsigned row = 0; row < all.size(); ++row)
            all[row].from_record(*table.get_record(row));
        return all;
    }
    /// "V1 0-10 #1 in 2" for a cut with its number and reference, "FX 5-15 of 0-20 #3 ref 1" for an optical;
    /// zero numbers and references are left out.
    std::string drawn() const {
        std::string text;
        for (const cut_s& record : records())
            text += (text.empty() ? "" : "\n") + drawn(record);
        return text;
    }

    RecordingLogger logger;
    cutdb table{&logger};

private:
    static std::string drawn(const cut_s& record) {
        const bool fx = record.optical_record != 0;
        std::string text = fx ? "FX" : "V" + std::to_string(record.track);
        text += " " + std::to_string(record.edit_in) + "-" + std::to_string(record.edit_out);
        if (fx) text += " of " + std::to_string(record.optical_in) + "-" + std::to_string(record.optical_out);
        if (record.event != 0) text += " #" + std::to_string(record.event);
        if (record.optical_ref != 0) text += (fx ? " ref " : " in ") + std::to_string(record.optical_ref);
        if (record.optical_error != 0) text += " error";
        if (fx && std::string(record.optical_name) != "Blur") text += " " + std::string(record.optical_name);
        return text;
    }
};

/// Options of one kind of list while it lives.
class ListKind {
public:
    explicit ListKind(bool neg_cut, int chan_type = 1) {
        cutlist_options() = CutlistOptions();
        cutlist_options().chan_type = chan_type;
        cutlist_options().pull_match_assembly = neg_cut ? 0 : 1;
    }
    ~ListKind() { cutlist_options() = CutlistOptions(); }
    ListKind(const ListKind&) = delete;
    ListKind& operator=(const ListKind&) = delete;
};

} // namespace generator_test
