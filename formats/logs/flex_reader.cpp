#include "formats/logs/flex_reader.h"

#include "formats/logs/film_values.h"
#include "formats/logs/fixed_fields.h"
#include "formats/logs/log_builder.h"

#include <algorithm>
#include <array>
#include <deque>
#include <set>

namespace formats {
namespace {

constexpr std::size_t code_digits = 3;
constexpr std::size_t drift_reach = 9;

enum class FlexField {
    shoot_date,
    to_reel,
    field,
    standard,
    scene,
    take,
    cam_roll,
    sound_roll,
    sync_time,
    script,
    gauge,
    film_reel,
    film_length,
    key_prefix,
    key_count,
    key_perforation,
    picture_reel,
    picture_at,
    picture_for,
    sound_reel,
    sound_at,
    count
};

/// Where a field stands. Its word, where it has one, tells how far the line has drifted; fields without one
/// drift with the word before them.
struct FlexPlace {
    int code;
    std::string_view word;
    std::size_t word_at;
    FlexField field; ///< `count` for a word alone
    std::size_t at;
    std::size_t length;
};

constexpr FlexPlace places[] = {
    {12, "Shoot Date", 4, FlexField::shoot_date, 15, 8},
    {100, "to", 14, FlexField::to_reel, 17, 11},
    {100, "Field", 29, FlexField::field, 35, 2},
    {100, "", 0, FlexField::standard, 38, 4},
    {110, "Scene", 4, FlexField::scene, 10, 8},
    {110, "Take", 19, FlexField::take, 24, 8},
    {110, "Cam Roll", 33, FlexField::cam_roll, 42, 8},
    {110, "Sound", 51, FlexField::sound_roll, 57, 8},
    {110, "", 0, FlexField::sync_time, 66, 13},
    {120, "Scrpt", 4, FlexField::script, 10, 70},
    {200, "", 0, FlexField::gauge, 10, 2},
    {200, "", 0, FlexField::film_reel, 19, 8},
    {200, "", 0, FlexField::film_length, 38, 9},
    {200, "Key", 48, FlexField::key_prefix, 58, 8},
    {200, "", 0, FlexField::key_count, 67, 9},
    {200, "", 0, FlexField::key_perforation, 77, 2},
    {300, "", 0, FlexField::picture_reel, 20, 8},
    {300, "At", 29, FlexField::picture_at, 32, 13},
    {300, "For", 46, FlexField::picture_for, 50, 13},
    {400, "", 0, FlexField::sound_reel, 20, 8},
    {400, "At", 29, FlexField::sound_at, 32, 13},
};

// Records that hold nothing that a log of film has room for.
constexpr int records_without_use[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 101, 500, 600, 701, 702};

/// -1 for a line that begins with no code.
int code_of(std::string_view line) {
    if (line.size() < code_digits ||
        (line.size() > code_digits && line[code_digits] != ' ' && line[code_digits] != '\t'))
        return -1;
    int code = 0;
    for (const char c : line.substr(0, code_digits)) {
        if (c < '0' || c > '9') return -1;
        code = code * 10 + (c - '0');
    }
    return code;
}

bool is_without_use(int code) {
    for (const int known : records_without_use)
        if (known == code) return true;
    return false;
}

/// "01:02:03:04.0" without the number of its field.
LogCell without_field_number(LogCell cell) {
    constexpr std::size_t whole = 11;
    if (cell.text.size() > whole && (cell.text[whole] == '.' || cell.text[whole] == ','))
        cell.text = cell.text.substr(0, whole);
    return cell;
}

class FlexReader {
public:
    FlexReader(const TextLines& text, const std::string& path, const LogOptions& options, Log& log)
        : text_(text), builder_(log, path, options) {}

    void read() {
        for (at_ = 0; at_ < text_.count() && !builder_.refused(); ++at_)
            read_line(text_.line(at_));
        add_take();
        if (!any_take_ && !builder_.refused()) builder_.refuse(0, "no record 100, so no take");
        builder_.finish();
    }

private:
    using Cells = std::array<LogCell, static_cast<std::size_t>(FlexField::count)>;

    int number() const { return static_cast<int>(at_) + 1; }
    LogCell& cell(FlexField field) { return cells_[static_cast<std::size_t>(field)]; }

    void read_line(std::string_view line) {
        if (without_blanks_around(line).empty()) return;
        const int code = code_of(line);
        if (code == 100) {
            add_take();
            begin_take();
        }
        const bool read = take_fields(code, line);
        if (read || is_without_use(code) || !unread_.insert(code).second) return;
        builder_.warn(number(), 1,
                      code < 0 ? std::string("a line without a code; left out")
                               : "records " + std::string(line.substr(0, code_digits)) + " aren't read");
    }

    void begin_take() {
        cells_ = {};
        lines_.clear();
        take_line_ = number();
    }

    /// False for a record without fields.
    bool take_fields(int code, std::string_view line) {
        const FlexPlace* const first = std::find_if(std::begin(places), std::end(places),
                                                    [&](const FlexPlace& place) { return place.code == code; });
        const FlexPlace* const last =
            std::find_if(first, std::end(places), [&](const FlexPlace& place) { return place.code != code; });
        if (first == last) return false;
        const PlacedLine& placed = lines_.emplace_back(line);
        std::size_t drift_to = 0, drift_from = 0;
        for (const FlexPlace* place = first; place != last; ++place) {
            const std::size_t word = word_of(placed, *place);
            if (word != std::string::npos) {
                drift_to = word;
                drift_from = place->word_at;
            }
            const std::size_t from = place->at + drift_to - drift_from;
            cell(place->field) = placed.cell(from, end_of(placed, place, last, from));
        }
        if (code == 12) shoot_date_ = cell(FlexField::shoot_date).text;
        return true;
    }

    static std::size_t word_of(const PlacedLine& line, const FlexPlace& place) {
        return place.word.empty() ? std::string::npos : line.find_word(place.word, place.word_at, drift_reach);
    }

    // A field ends before the next word, also where that has moved to the left.
    static std::size_t end_of(const PlacedLine& line, const FlexPlace* place, const FlexPlace* last, std::size_t from) {
        const std::size_t end = from + place->length;
        const std::size_t next = place + 1 == last ? std::string::npos : word_of(line, place[1]);
        return next > from ? std::min(end, next) : end;
    }

    void add_take() {
        if (take_line_ == 0) return;
        LogCells row;
        row.line = take_line_;
        fill_row(row);
        settle_rate();
        if (!builder_.refused()) builder_.add(row);
        any_take_ = true;
        take_line_ = 0;
    }

    // The standard of the first take counts for the session.
    void settle_rate() {
        if (any_take_) return;
        LogHead head;
        const std::string standard = lower_case(cell(FlexField::standard).text);
        if (standard == "ntsc") head.rate = embedded::nearest_rate(29.97);
        if (standard == "pal") head.rate = embedded::nearest_rate(25);
        builder_.set_head(head);
        if (!builder_.knows_rate())
            builder_.refuse(take_line_, "neither NTSC nor PAL; name the frame rate with --rate");
    }

    void fill_row(LogCells& row) {
        const LogCell& picture = cell(FlexField::picture_reel);
        row[LogField::reel] = picture.text.empty() ? cell(FlexField::to_reel) : picture;
        row[LogField::start] = without_field_number(cell(FlexField::picture_at));
        row[LogField::duration] = without_field_number(cell(FlexField::picture_for));
        row[LogField::scene] = cell(FlexField::scene);
        row[LogField::take] = cell(FlexField::take);
        const bool has_cam_roll = !cell(FlexField::cam_roll).text.empty();
        row[LogField::cam_reel] = cell(has_cam_roll ? FlexField::cam_roll : FlexField::film_reel);
        if (has_cam_roll) row[LogField::lab_reel] = cell(FlexField::film_reel);
        row[LogField::description] = cell(FlexField::script);
        row[LogField::cam_date].text = shoot_date_;
        row[LogField::pulldown] = cell(FlexField::field);
        fill_sound(row);
        fill_film(row);
    }

    void fill_sound(LogCells& row) {
        const LogCell& reel = cell(FlexField::sound_roll);
        row[LogField::snd_reel] = reel.text.empty() ? cell(FlexField::sound_reel) : reel;
        const LogCell& sync = cell(FlexField::sync_time);
        row[LogField::snd_start] = without_field_number(sync.text.empty() ? cell(FlexField::sound_at) : sync);
    }

    // The prefix and the count make one number; the perforation stands by itself.
    void fill_film(LogCells& row) {
        row[LogField::film] = cell(FlexField::gauge);
        const LogCell& prefix = cell(FlexField::key_prefix);
        const LogCell& count = cell(FlexField::key_count);
        if (!prefix.text.empty() || !count.text.empty()) {
            key_.assign(prefix.text).append(count.text);
            row[LogField::key_start] = {key_, prefix.text.empty() ? count.column : prefix.column};
        }
        row[LogField::perforation] = cell(FlexField::key_perforation);
        // How many frames a foot of 16mm has here is told by none of these files.
        if (cell(FlexField::gauge).text == "35") row[LogField::key_length] = cell(FlexField::film_length);
    }

    const TextLines& text_;
    LogBuilder builder_;
    std::size_t at_ = 0;
    int take_line_ = 0;
    bool any_take_ = false;
    Cells cells_;
    std::deque<PlacedLine> lines_; ///< of the present take; the cells point into them
    std::string key_, shoot_date_;
    std::set<int> unread_;
};

} // namespace

Log read_flex(const TextLines& text, const std::string& path, const LogOptions& options) {
    Log log;
    FlexReader(text, path, options, log).read();
    return log;
}

bool looks_like_flex(const TextLines& text) {
    for (std::size_t i = 0; i < text.count(); ++i)
        if (!without_blanks_around(text.line(i)).empty()) return code_of(text.line(i)) >= 0;
    return false;
}

} // namespace formats
