#pragma once
// The shots of a logging table, read once, so that the generator can ask which shot a stretch of timecode
// came from.

#include "host/settings.h"
#include "logging/log_shot.h"
#include "logging/shot_index.h"

class recdb;

/// Frames by which an event may overrun a shot at either end and still belong to it.
constexpr int shot_match_slack = 30;

/// The usable shots of a table, in its order. One list is read at a time.
class LogShotList {
public:
    /// Reads the whole table, which may go afterwards. `long_keycode` and `film_reel` are the options of the
    /// run. What is wrong is told to `logger`, and none of it ends a run: look at `result`.
    LogShotList(recdb& log, int long_keycode, LoggerHandle& logger, int film_reel);
    LogShotList(const LogShotList&) = delete;
    LogShotList& operator=(const LogShotList&) = delete;

    Vector<std::unique_ptr<LogShot>> shots;
    std::int32_t num_shots = 0;
    label_t vid_label_type = label_tc_24; ///< where a row names none
    label_t snd_label_type = label_tc_24; ///< likewise
    label_t film_label_type = label_key_35mm_4p;
    std::int32_t long_keycode;
    std::uint8_t pulldown = 0;
    std::int32_t sequence = 0; ///< at midnight
    std::int32_t pulldown_rate = 7;
    std::int32_t film_reel;
    std::int32_t result = -1; ///< -1 while there is no usable shot, else the rows rejected
    std::int32_t num_bad = 0;
    std::int32_t num_dubious = 0;
    LoggerHandle* logger;
    shot_index index; ///< of `shots`

private:
    bool check_table(recdb& log);
    void read_label_types(recdb& log);
    void read_pulldown(recdb& log);
    void read_shots(recdb& log);
    void add_shot(std::unique_ptr<LogShot> shot, int entry);
};

/// The first shot in the table's order that holds both points, give or take the slack, and whose reel is
/// what `reel` begins with; null if there is none. `reel` becomes upper case in place; null counts as empty.
LogShot* find_shot(LogShotList& list, LabelPoint start, LabelPoint end, char* reel);

/// The value of a header parameter; null where it is absent or empty.
const char* log_param(recdb& log, const char* key);
