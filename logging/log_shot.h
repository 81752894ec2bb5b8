#pragma once
// One logged shot: where it lies on video, sound and film.

#include "host/labels.h"

#include <cstdint>
#include <memory>

class LogShotList;
class dbrecord;

/// Pulldown of a shot's first frame.
struct LogShotPulldown {
    std::uint8_t on = 0;
    std::int32_t rate = 3; ///< 7 with pulldown, 3 without
    std::uint8_t first = 1;
    std::int32_t step = 1;
    std::int32_t sequence = 0; ///< phase
    std::int32_t reserved = 0;
};

/// A row of a logging table with its timecodes and film codes read.
class LogShot {
public:
    /// Columns are those that were resolved last. The `first` row of a table settles the list's film label
    /// type. A row that fails the checks isn't `valid`.
    LogShot(LogShotList& owner, dbrecord& row, bool first);
    LogShot(const LogShot&) = delete;
    LogShot& operator=(const LogShot&) = delete;

    /// Why the row is bad or dubious, at most 127 characters; null where it is neither.
    std::unique_ptr<char[]> message;
    LogShotList* list;
    char name[32] = "";
    char reel[16] = "";     ///< upper case, empty without such a column
    char snd_reel[16] = ""; ///< likewise
    char reel_24p[16] = ""; ///< likewise
    char film_roll[16] = "";
    label_t vid_label_type = label_none;
    LabelPoint start;
    LabelPoint end;
    label_t snd_label_type = label_none;
    LabelPoint snd_start;
    label_t code_24p_label_type = label_tc_24;
    LabelPoint start_24p;
    label_t film_label_type = label_none;
    LabelPoint keycode; ///< the invalid point where the row has none
    LabelPoint inkcode; ///< likewise
    LogShotPulldown pulldown;
    std::int32_t excluded = 0; ///< otherwise the row is neither kept nor rejected; always 0
    std::int32_t valid = 0;
    dbrecord* record; ///< the table's, and gone with it

private:
    void read_texts();
    void read_label_types();
    void read_timecodes();
    void settle_film_label_type();
    void read_film_codes();
    void read_pulldown();
    void read_pulldown_columns();
    void roll_pulldown_to_start();
    void check();
    void set_message(const char* text, int severity);
};

/// "name <...> from <...> to <...>", at most 127 characters, overwritten by the next call.
const char* describe_shot(const LogShot& shot);
