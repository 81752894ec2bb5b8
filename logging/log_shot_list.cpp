#include "logging/log_shot_list.h"

#include "base/messages.h"
#include "base/number_text.h"
#include "host/recdb.h"
#include "logging/log_shot_columns.h"

LogShotList::LogShotList(recdb& log, int long_keycode_option, LoggerHandle& log_messages, int film_reel_option)
    : long_keycode(long_keycode_option), film_reel(film_reel_option), logger(&log_messages) {
    if (!check_table(log)) return;
    read_label_types(log);
    read_shots(log);
    if (num_shots > 0) result = num_bad;
    index.build(shots);
}

// Any revision will do.
bool LogShotList::check_table(recdb& log) {
    if (!log.get_param_val("FILMDB")) {
        say(*logger, "ERROR: Log database has no filmdb revision\n", level_progress);
        return false;
    }
    if (resolve_log_columns(log, *logger, film_reel) == 0) return true;
    say(*logger, "ERROR: log database does not contain all required fields", level_progress);
    return false;
}

void LogShotList::read_label_types(recdb& log) {
    if (const char* value = log_param(log, "label_std"))
        vid_label_type = TvStd_to_label_type(edlstr_to_tv_standard(value));
    else
        say(*logger, "WARNING: No default video timecode specified", level_progress);
    if (const char* value = log_param(log, "snd label_std"))
        snd_label_type = TvStd_to_label_type(edlstr_to_tv_standard(value));
    read_pulldown(log);
    if (const char* value = log_param(log, "film label_std"))
        film_label_type = edlstr_to_label_type(value);
    else
        say(*logger, "WARNING: No global film standard: assuming 35mm for now\n", level_progress);
}

// A header that says nothing leaves the phase to itself: rows may still turn the pulldown on.
void LogShotList::read_pulldown(recdb& log) {
    if (const char* value = log_param(log, "pulldown")) {
        pulldown = *value == 'y' || *value == 'Y' || *value == '1';
        if (!pulldown) {
            pulldown_rate = 3;
            return;
        }
    }
    const int phase = decimal_number(log_param(log, "sequence"));
    sequence = phase < 0 ? 0 : phase;
}

void LogShotList::read_shots(recdb& log) {
    const unsigned count = log.get_num_records();
    shots.reserve(std::size_t{count} + 1);
    for (unsigned i = 0; i < count; ++i) {
        const int number = static_cast<int>(i);
        dbrecord* row = log.get_record(i);
        if (!row) {
            logger->Out("Unexpected end of logging database at record %d\n", number);
            return;
        }
        add_shot(std::make_unique<LogShot>(*this, *row, i == 0), number + 1);
    }
}

void LogShotList::add_shot(std::unique_ptr<LogShot> shot, int entry) {
    if (shot->excluded) return;
    if (!shot->valid) {
        logger->Out("ERROR: entry %d in database is BAD - %s: IGNORED\n\t%s\n", entry, shot->message.get(),
                    describe_shot(*shot));
        ++num_bad;
        return;
    }
    if (shot->message) {
        logger->Out("WARNING: entry %d in database is dubious - %s\n\t%s\n", entry, shot->message.get(),
                    describe_shot(*shot));
        ++num_dubious;
    }
    shots.push_back(std::move(shot));
    ++num_shots;
}

const char* log_param(recdb& log, const char* key) {
    const char* value = log.get_param_val(key);
    return value && *value ? value : nullptr;
}
