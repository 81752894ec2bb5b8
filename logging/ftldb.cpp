#include "base/guard.h"
#include "base/messages.h"
#include "base/number_text.h"
#include "base/trim_text.h"
#include "host/ascii_text.h"
#include "host/fixed_text.h"
#include "logging/keylog_columns.h"
#include "logging/keylog_lines.h"
#include "logging/log_columns.h"
#include "quillbrook/keylog.h"

#include <cctype>
#include <cstring>

namespace {

constexpr std::size_t reel_length = 8;

// What the standards line holds in its description.
constexpr int second_gauge_at = 5;
constexpr int standard_at = 17;
constexpr std::size_t standard_length = 4;

bool says_drop_frame(const char* text) { return std::strchr(text, 'T') != nullptr; }

void append(char (&text)[256], const char* more) {
    const std::size_t length = std::strlen(text);
    put_text(text + length, sizeof text - length, more);
}

// 123409 is 1234+09. A text that is too short to hold frames, or too long to take the sign, stays.
void part_frames(char (&text)[256]) {
    constexpr std::size_t frame_digits = 2;
    const std::size_t length = std::strlen(text);
    if (length < frame_digits || length + 1 >= sizeof text || std::strchr(text, '+')) return;
    char* frames = text + length - frame_digits;
    std::memmove(frames + 1, frames, frame_digits + 1);
    *frames = '+';
}

} // namespace

ftldb::ftldb(const LightweightString<wchar_t>& file_name, LoggerHandle& log, LightweightString<wchar_t> tableName)
    : filmdb(file_name, tableName), logger(&log) {
    if (!survives([&] { import(file_name); })) fail();
}

void ftldb::import(const LightweightString<wchar_t>& file_name) {
    const bool good_so_far = get_error() == fdb_ok;
    file = std::fopen(toUTF8(file_name).c_str(), "r");
    if (!file || !find_header()) return;
    set_offsets(line);
    if (!read_standards()) return;
    read_reelid();
    read_records();
    std::fclose(file);
    if (good_so_far) set_valid(1);
}

ftldb::ftldb(const ftldb& other)
    : iObject(), filmdb(other), file(other.file), lines_per_record(other.lines_per_record),
      min_line_length(other.min_line_length), logger(other.logger) {
    std::memcpy(line, other.line, sizeof line);
    std::memcpy(reel_id, other.reel_id, sizeof reel_id);
    std::memcpy(offsets, other.offsets, sizeof offsets);
}

ftldb& ftldb::operator=(const ftldb& other) = default;

ftldb::~ftldb() = default;

const char* ftldb::get_reelid() { return reel_id; }

void ftldb::set_reelid(const char* text) {
    const bool set = survives([&] {
        const unsigned count = get_num_records();
        for (unsigned i = 0; i < count; ++i)
            get_record(i)->set_field(fc_reel, text, true);
    });
    if (!set) fail();
}

// A header on the last line of a file that has no line end isn't taken for one.
bool ftldb::find_header() {
    do {
        if (read_line(file, line, line_size).at_end) {
            say(*logger, "No Keylog header found: cannot process file", level_progress);
            return false;
        }
    } while (!ascii::begins(line, std::string_view(keylog_header).substr(0, keylog_header_length)));
    const bool whole = std::strstr(line, "DUR_FRAMES") || std::strstr(line, "DUR_FR");
    lines_per_record = whole ? 1 : 2;
    if (!whole) continue_line();
    return true;
}

// The second line is read over the first one's line end. False at the end of the file.
bool ftldb::continue_line() {
    const int length = static_cast<int>(std::strlen(line));
    const line_read read = read_line(file, line + (length > 0 ? length - 1 : 0), line_size - length);
    return read.got || !read.at_end;
}

int ftldb::getline() {
    if constexpr (keylog_clear_line) Qb::Memset(line, 0, line_size);
    const line_read first = read_line(file, line, line_size);
    const bool got = lines_per_record == 2 ? continue_line() : first.got;
    line[line_size - 1] = '\0';
    if (!got) return -1;
    const std::size_t length = std::strlen(line);
    if (static_cast<int>(length) < min_line_length) {
        say(*logger, "WARNING:  Keylog file has short line.  Ignored\n", level_progress);
        return 0;
    }
    // Columns behind the end are empty.
    Qb::Memset(line + length, 0, static_cast<unsigned>(sizeof line - length));
    for (const int* offset = offsets + kc_event + 1; *offset != -2; ++offset) {
        if (*offset > 0) line[*offset - 1] = '\0';
    }
    const int first_column = static_cast<int>(std::strlen(line)) - 1;
    if (first_column >= 0) line[first_column] = '\0';
    return first_column;
}

void ftldb::set_offsets(char* header) {
    for (int& offset : offsets)
        offset = -1;
    ascii::make_lower(header);
    for (int column = kc_event; column <= kc_ink_out; ++column) {
        offsets[column] = get_offset(header, keylog_names[column]);
        if (column == kc_dur_frames && offsets[column] == -1)
            offsets[column] = get_offset(header, keylog_short_dur_frames);
    }
    for (const int column : {kc_slate, kc_labroll, kc_dlyroll})
        offsets[column] = get_offset(header, keylog_names[column]);
    min_line_length = offsets[kc_comments];
    offsets[kc_none] = -2;
}

int ftldb::get_offset(const char* header, const char* name) {
    if (const char* found = std::strstr(header, name)) return static_cast<int>(found - header);
    if (!optional_field(name)) logger->Out("WARNING:  Keylog file has missing field %s\n", name);
    return -1;
}

int ftldb::optional_field(const char* name) {
    for (const char* const* known = keylog_optional_names; *known; ++known) {
        if (std::strcmp(name, *known) == 0) return 1;
    }
    return 0;
}

const char* ftldb::column_text(int column) const {
    const int offset = offsets[column];
    return offset < 0 ? "" : line + offset;
}

bool ftldb::read_standards() {
    if (getline() <= 0) {
        say(*logger, "Input file has no standards line: cannot process\n", level_progress);
        return false;
    }
    const char* description = column_text(kc_descript);
    film_gauge gauge = int_to_film_gauge(decimal_number(description));
    if (gauge == gauge_35mm_4p && decimal_number(description + second_gauge_at) == 3) gauge = gauge_35mm_3p;
    char standard[standard_length + 1];
    put_text(standard, description + standard_at);
    trim_text(standard);

    set_vid_std(keylog_tv_standard(standard));
    set_snd_std(vid_std);
    set_film_std(gauge);
    set_film_origin(true);
    set_film_rate(24.0);
    set_pulldown(false);
    return true;
}

void ftldb::read_reelid() {
    const char* comments = column_text(kc_comments);
    for (const char* word : {"VTROLL", "VTR"}) {
        if (!ascii::begins(comments, word)) continue;
        put_text(reel_id, reel_length + 1, comments + std::strlen(word));
        return;
    }
}

void ftldb::read_records() {
    int record = 1;
    for (int length = getline(); length != -1; length = getline(), ++record) {
        if (length > 0) fill_row(*get_record(static_cast<unsigned>(add_records(1))), record);
    }
}

void ftldb::fill_row(dbrecord& row, int record) {
    const TCInf std = get_tv_standard(kc_vttc_drop);
    const int count = static_cast<int>(get_num_fields());
    for (int column = 0; column < count; ++column) {
        char text[256] = "";
        if (column == fc_reel)
            put_text(text, reel_length + 1, reel_id);
        else
            put_text(text, column_text(keylog_column_map[column]));
        trim_text(text);
        apply_rule(column, text, row, record, std);
        row.set_field(column, text, true);
    }
}

void ftldb::apply_rule(int column, char (&text)[256], dbrecord& row, int record, TCInf std) {
    switch (column) {
    case fc_name:
        return name_take(text, record);
    case fc_start_time:
    case fc_end_time:
        if (std.drop) drop_fix(text, 1);
        return;
    case fc_label_std:
        put_text(text, get_std_edlstr(kc_vttc_drop));
        return;
    case fc_sequence: {
        const char* start = row.get_field(fc_start_time);
        const int phase = calc_midnight_pulldown(start ? start : "", pulldown_index(text), std);
        std::snprintf(text, sizeof text, "%d", phase);
        return;
    }
    case fc_snd_start:
        if (says_drop_frame(column_text(kc_nagra_drop))) drop_fix(text, 1);
        return;
    case fc_snd_label_std:
        put_text(text, get_std_edlstr(kc_nagra_drop));
        return;
    case fc_start_keycode:
    case fc_start_inkcode:
        return part_frames(text);
    case fc_notes:
        return add_comments(text);
    default:
        return;
    }
}

void ftldb::name_take(char (&text)[256], int record) {
    if constexpr (!keylog_name_from_scene) {
        std::snprintf(text, sizeof text, "%s-%d", reel_id, record);
        return;
    }
    const char* take = column_text(kc_take);
    if (!*take) return;
    if (*text) append(text, "-");
    append(text, take);
    trim_text(text);
}

void ftldb::add_comments(char (&text)[256]) {
    if constexpr (keylog_no_comments) {
        *text = '\0';
        return;
    }
    char comments[81];
    put_text(comments, column_text(kc_comments));
    trim_text(comments);
    if (!*comments) return;
    if (*text) append(text, " / ");
    append(text, comments);
}

TCInf ftldb::get_tv_standard(int column) {
    TCInf standard = vid_std;
    if (says_drop_frame(column_text(column))) standard.drop = 1;
    return standard;
}

const char* ftldb::get_std_edlstr(int column) { return tv_standard_to_edlstr(get_tv_standard(column)); }

// Pull-in texts never become phases.
int ftldb::pulldown_index(char*) { return 0; }
