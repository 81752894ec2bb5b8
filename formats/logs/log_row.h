#pragma once
// One shot of a log, whatever kind of file it came from.

#include "embedded/rates.h"
#include "embedded/warning.h"
#include "host/labels.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

/// What a log can say of a shot.
enum class LogField {
    name,
    reel,
    start,
    end,
    duration,
    frames, ///< the duration as a number of frames
    rate,
    cam_reel,
    lab_reel,
    comp_reel,
    snd_reel,
    snd_start,
    key_start,
    key_end,
    key_length, ///< feet and frames, or frames
    film,
    perforation,
    ink_start,
    pulldown, ///< letter of the first frame
    cadence,
    start_24p,
    reel_24p,
    cam_code,
    cam_date,
    scene,
    take,
    who,
    description,
    notes,
    tag,
    track,     ///< of an index of events, as "V1"
    record_in, ///< likewise; what tells such an index
    count
};

constexpr std::size_t log_fields = static_cast<std::size_t>(LogField::count);

/// A text of the file and where it begins: the character of its line, from 1.
struct LogCell {
    std::string_view text;
    int column = 0;
};

/// The cells of one row as the file has them, without blanks at their ends.
struct LogCells {
    int line = 0; ///< from 1
    std::array<LogCell, log_fields> cells;
    bool drop = false;     ///< the file says that the row's timecode drops frames
    bool snd_drop = false; ///< the same of its sound timecode
    bool event = false;    ///< the row is an event of an edit, and no shot of a log

    LogCell& operator[](LogField field) { return cells[static_cast<std::size_t>(field)]; }
    const LogCell& operator[](LogField field) const { return cells[static_cast<std::size_t>(field)]; }
};

/// A row that has been read. Points that aren't useful were missing or couldn't be read.
struct LogRow {
    std::string file;
    int line = 0;
    std::array<std::string, log_fields> texts; ///< as the table takes them
    TCInf standard;
    TCInf snd_standard;
    label_t film = label_none; ///< none where nothing names it
    LabelPoint start;
    LabelPoint end; ///< the frame behind the last
    LabelPoint key_start;
    LabelPoint key_end;            ///< as written
    std::optional<int> key_frames; ///< length on film as the log has it, in film frames
    bool key_refused = false;      ///< there is a key number, and it can't be read
    bool event = false;            ///< it is an event of an edit, for `join_events`
    bool pulldown = false;
    int phase = 0; ///< of the first frame: 0 to 4 for A, B, X, C, D

    std::string& operator[](LogField field) { return texts[static_cast<std::size_t>(field)]; }
    const std::string& operator[](LogField field) const { return texts[static_cast<std::size_t>(field)]; }
};

/// What one file gave. With an `error` there are no rows. Messages name file, line and column.
struct Log {
    std::vector<LogRow> rows;
    embedded::Warnings warnings;
    std::string error;
};

/// What the caller knows better than the file, or what the file can't tell.
struct LogOptions {
    const embedded::RateInfo* rate = nullptr; ///< wins over the file's own
    label_t film = label_none;                ///< likewise
    std::string reel;                         ///< likewise
};

} // namespace formats
