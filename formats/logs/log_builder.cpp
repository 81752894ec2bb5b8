#include "formats/logs/log_builder.h"

#include "embedded/visible_text.h"

#include "embedded/clamped.h"
#include "embedded/decimal_text.h"
#include "formats/logs/film_values.h"
#include "formats/logs/log_table.h"
#include "host/decimal_number.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace formats {
namespace {

using embedded::RateInfo;

constexpr int counting_of_pulldown = 30;

struct FieldTitle {
    LogField field;
    const char* title;
};

constexpr FieldTitle titles[] = {
    {LogField::start, "start"},
    {LogField::end, "end"},
    {LogField::duration, "duration"},
    {LogField::frames, "duration in frames"},
    {LogField::rate, "frame rate"},
    {LogField::snd_start, "sound timecode"},
    {LogField::key_start, "key number"},
    {LogField::key_end, "key number of the end"},
    {LogField::film, "kind of film"},
    {LogField::ink_start, "ink number"},
    {LogField::pulldown, "pulldown phase"},
    {LogField::start_24p, "24-frame timecode"},
    {LogField::cadence, "cadence"},
};

const char* title_of(LogField field) {
    for (const FieldTitle& known : titles)
        if (known.field == field) return known.title;
    return "field";
}

// Taken as they stand.
constexpr LogField plain_texts[] = {
    LogField::name,      LogField::reel,        LogField::cam_reel,    LogField::lab_reel,
    LogField::comp_reel, LogField::snd_reel,    LogField::perforation, LogField::reel_24p,
    LogField::cam_code,  LogField::cam_date,    LogField::scene,       LogField::take,
    LogField::who,       LogField::description, LogField::notes,       LogField::tag};

bool is_digits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

int two_digits_at_end(std::string_view text) {
    const std::string_view digits = text.substr(text.size() < 2 ? 0 : text.size() - 2);
    int number = -1;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

TCInf standard_of(const RateInfo* rate, bool drop) {
    if (!rate) return {};
    return {rate->code, static_cast<std::uint8_t>(drop && rate->can_drop())};
}

bool same_prefix(const LabelPoint& a, const LabelPoint& b) {
    return std::string_view(a.get_prefix()) == b.get_prefix();
}

/// Film frames from the first key number to the other; nothing where they don't belong together.
std::optional<int> frames_between(const LabelPoint& start, const LabelPoint& end) {
    if (!start.is_useful() || !end.is_useful() || !same_prefix(start, end)) return std::nullopt;
    const std::int64_t samples = std::int64_t{end.sample} - start.sample;
    return embedded::clamp_to_int(samples / start.cvt()->samples_per_frame());
}

/// As a timecode without drop-frame is printed.
bool is_plain_timecode(std::string_view text) {
    constexpr std::string_view form = "00:00:00:00";
    if (text.size() != form.size() || text >= "24") return false;
    for (std::size_t i = 0; i < form.size(); ++i)
        if (form[i] == ':' ? text[i] != ':' : text[i] < '0' || text[i] > '9') return false;
    return true;
}

/// The text of a point. One that is plain already stays as it is, unless the point was moved away from it.
void put_timecode(std::string& text, LabelPoint& point, bool may_have_moved) {
    if (point.is_useful() && (may_have_moved || !is_plain_timecode(text))) text = point.get_string();
}

std::optional<int> length_of(const LogRow& row) {
    if (!row.start.is_useful() || !row.end.is_useful() || row.end.sample <= row.start.sample) return std::nullopt;
    return row.end.sample - row.start.sample;
}

// Spreadsheets drop the first digit of "01:00:00:00".
std::string with_two_digits_of_hours(std::string_view text) {
    const bool short_hours = text.size() > 1 && text[0] >= '0' && text[0] <= '9' && text[1] == ':';
    return (short_hours ? "0" : "") + std::string(text);
}

} // namespace

const RateInfo* rate_of_text(std::string_view text, bool* drop) {
    const std::string plain = lower_case(without_blanks_around(text));
    double number = 0;
    const auto [stop, trouble] = decimal::read(plain.data(), plain.data() + plain.size(), number);
    if (trouble != std::errc()) return nullptr;
    const std::string_view unit =
        without_blanks_around(std::string_view(stop, plain.size() - static_cast<std::size_t>(stop - plain.data())));
    constexpr std::string_view units[] = {"", "fps", "p", "i", "df", "ndf", "nd", "psf"};
    if (std::find(std::begin(units), std::end(units), unit) == std::end(units)) return nullptr;
    if (unit == "df" && drop) *drop = true;
    return embedded::nearest_rate(number);
}

embedded::Fraction film_frames_of(int video_frames, const TCInf& standard) {
    const RateInfo* rate = embedded::rate_info(standard.rate);
    const embedded::Fraction share = rate ? embedded::film_share(rate->nominal) : embedded::Fraction{1, 1};
    return share * embedded::Fraction(video_frames);
}

LogBuilder::LogBuilder(Log& log, std::string path, const LogOptions& options)
    : log_(log), path_(std::move(path)), options_(options) {}

void LogBuilder::set_head(const LogHead& head) { head_ = head; }

void LogBuilder::warn(int line, int column, const std::string& what, embedded::WarningKind kind) {
    log_.warnings.push_back({kind, path_ + ":" + std::to_string(line) + ":" + std::to_string(column) + ": " + what});
}

void LogBuilder::refuse(int line, const std::string& why) {
    rows_.clear();
    log_.error = path_ + (line > 0 ? ":" + std::to_string(line) : std::string()) + ": " + why;
}

void LogBuilder::tell(const LogCells& cells, LogField field, const char* what) {
    const LogCell& cell = cells[field];
    warn(cells.line, cell.column, std::string(title_of(field)) + " \"" + std::string(cell.text) + "\" " + what);
}

void LogBuilder::add(const LogCells& cells) {
    if (rows_.size() == most_table_rows)
        refuse(0, "makes more than the " + std::to_string(most_table_rows) + " rows that a logging table holds");
    if (refused()) return;
    RowInMaking& made = rows_.emplace_back();
    LogRow& row = made.row;
    row.file = path_;
    row.line = cells.line;
    row.event = cells.event;
    copy_texts(cells, row);
    read_standards(cells, row);
    read_film(cells, row);
    read_timecodes(cells, made);
    read_key_numbers(cells, row);
    read_ink(cells, row);
    read_pulldown(cells, row);
    read_other_timecodes(cells, row);
}

void LogBuilder::copy_texts(const LogCells& cells, LogRow& row) {
    for (const LogField field : plain_texts)
        row[field] = cells[field].text;
    if (!options_.reel.empty())
        row[LogField::reel] = options_.reel;
    else if (row[LogField::reel].empty())
        row[LogField::reel] = head_.reel;
    std::string& name = row[LogField::name];
    if (name.empty()) {
        name = row[LogField::scene];
        if (!row[LogField::take].empty()) name += (name.empty() ? "" : "-") + row[LogField::take];
    }
    receive_texts(cells, row);
}

void LogBuilder::receive_texts(const LogCells& cells, LogRow& row) {
    for (std::size_t field = 0; field < log_fields; ++field) {
        const embedded::Received what = embedded::receive(row.texts[field]);
        if (what.is_plain()) continue;
        const std::string place = path_ + ":" + std::to_string(cells.line) + ":" +
                                  std::to_string(std::max(cells.cells[field].column, 1)) + ": ";
        for (const embedded::Warning& line :
             embedded::told(what, title_of(static_cast<LogField>(field)), row.texts[field]))
            log_.warnings.push_back({line.kind, place + line.text});
    }
}

const RateInfo* LogBuilder::rate_of(const LogCells& cells) {
    if (options_.rate) return options_.rate;
    if (head_.rate) return head_.rate;
    const LogCell& cell = cells[LogField::rate];
    const RateInfo* rate = cell.text.empty() ? nullptr : rate_of_text(cell.text, nullptr);
    if (!cell.text.empty() && !rate) tell(cells, LogField::rate, "isn't a frame rate");
    return rate;
}

// A semicolon or comma in the timecode says that it drops frames, as do the file and the row.
void LogBuilder::read_standards(const LogCells& cells, LogRow& row) {
    bool drop = cells.drop || head_.drop;
    const RateInfo* rate = rate_of(cells);
    if (!options_.rate && !head_.rate) rate_of_text(cells[LogField::rate].text, &drop);
    drop = drop || cells[LogField::start].text.find_first_of(";,") != std::string_view::npos;
    row.standard = standard_of(rate, drop);
    const bool snd_drop =
        cells.snd_drop || cells[LogField::snd_start].text.find_first_of(";,") != std::string_view::npos;
    row.snd_standard = standard_of(rate, snd_drop);
}

void LogBuilder::read_film(const LogCells& cells, LogRow& row) {
    row.film = options_.film ? options_.film : head_.film;
    const LogCell& cell = cells[LogField::film];
    if (options_.film || cell.text.empty()) return;
    if (const label_t film = film_kind_of_text(cell.text))
        row.film = film;
    else
        tell(cells, LogField::film, "isn't known");
}

bool LogBuilder::read_timecode(const LogCells& cells, LogField field, label_t kind, LabelPoint& point) {
    const LogCell& cell = cells[field];
    if (cell.text.empty()) return false;
    point.set_type(kind);
    point.set_sample(with_two_digits_of_hours(cell.text).c_str());
    if (!point.is_useful()) {
        tell(cells, field, kind == label_none ? "has no frame rate" : "isn't a timecode at this frame rate");
        return false;
    }
    const bool moved = kind != label_tc_24 && two_digits_at_end(cell.text) < 4 &&
                       two_digits_at_end(point.get_string()) != two_digits_at_end(cell.text);
    if (moved) tell(cells, field, "doesn't exist in drop-frame; taken as the next that does");
    return true;
}

std::optional<int> LogBuilder::read_duration(const LogCells& cells, label_t kind) {
    const std::string_view frames = cells[LogField::frames].text;
    if (is_digits(frames) && frames.size() < 8) return embedded::int_of_text(std::string(frames).c_str());
    const std::string_view duration = cells[LogField::duration].text;
    if (is_digits(duration) && duration.size() < 8) return embedded::int_of_text(std::string(duration).c_str());
    LabelPoint point;
    if (duration.empty() || !read_timecode(cells, LogField::duration, kind, point)) return std::nullopt;
    return point.sample;
}

// What couldn't be read stays in the row, where the list of shots will reject it.
void LogBuilder::read_timecodes(const LogCells& cells, RowInMaking& made) {
    LogRow& row = made.row;
    const label_t kind = TvStd_to_label_type(row.standard);
    row[LogField::start] = cells[LogField::start].text;
    row[LogField::end] = cells[LogField::end].text;
    if (row[LogField::start].empty()) warn(cells.line, 1, "the row has no start");
    read_timecode(cells, LogField::start, kind, row.start);
    read_timecode(cells, LogField::end, kind, row.end);
    made.end_column = cells[LogField::end].column;
    made.duration = read_duration(cells, kind);
}

bool LogBuilder::read_key(const LogCells& cells, LogField field, const LogRow& row, LabelPoint& point) {
    const label_t kind = row.film ? row.film : label_key_35mm_4p;
    const std::string_view dot = field == LogField::key_start ? cells[LogField::perforation].text : std::string_view();
    switch (read_key_number(cells[field].text, dot, kind, point)) {
    case FilmNumber::empty:
        return false;
    case FilmNumber::good:
        return true;
    case FilmNumber::bad:
        tell(cells, field, "isn't a key number; left out");
        return false;
    case FilmNumber::mid_foot:
        tell(cells, field, "is a mid-foot mark of 32 perforations; taken as that");
        return true;
    case FilmNumber::beyond_count:
        tell(cells, field, "has more frames than a count of this film; carried");
        return true;
    case FilmNumber::bad_perforation:
        tell(cells, field, "has a perforation that no frame of this film has; left out");
        return true;
    }
    return false;
}

void LogBuilder::read_key_numbers(const LogCells& cells, LogRow& row) {
    const std::string_view written = cells[LogField::key_start].text;
    const bool read = read_key(cells, LogField::key_start, row, row.key_start);
    row.key_refused = !read && !written.empty();
    row[LogField::key_start] = read ? std::string(row.key_start.get_string()) : std::string(written);
    read_key(cells, LogField::key_end, row, row.key_end);
    const int length = film_length(cells[LogField::key_length].text, row.film ? row.film : label_key_35mm_4p);
    if (length > 0 && row.key_start.is_useful()) row.key_frames = length;
}

void LogBuilder::read_ink(const LogCells& cells, LogRow& row) {
    const std::string_view written = cells[LogField::ink_start].text;
    if (written.empty()) return;
    const std::string plain = plain_ink_number(written);
    LabelPoint point;
    point.set_type(label_t_to_ink_label_t(row.film ? row.film : label_key_35mm_4p));
    point.set_sample(plain.c_str());
    if (plain.empty() || !point.is_useful())
        tell(cells, LogField::ink_start, "isn't an ink number of this film; left out");
    else
        row[LogField::ink_start] = plain;
}

// Film goes to 30 frames a second by pulldown, to 24 and 25 frame for frame. Transfers begin on A by custom.
void LogBuilder::read_pulldown(const LogCells& cells, LogRow& row) {
    const RateInfo* rate = embedded::rate_info(row.standard.rate);
    const std::string cadence = lower_case(cells[LogField::cadence].text);
    row.pulldown = rate && rate->nominal == counting_of_pulldown && cadence != "none";
    if (!row.pulldown) return;
    if (cadence.substr(0, 3) == "adv") tell(cells, LogField::cadence, "is advanced pulldown; counted as the plain one");
    const LogCell& letter = cells[LogField::pulldown];
    const int phase = letter.text.empty() ? 0 : pulldown_phase(letter.text);
    if (phase < 0) tell(cells, LogField::pulldown, "isn't one of A, B, X, C, D; taken as A");
    row.phase = std::max(phase, 0);
}

void LogBuilder::read_other_timecodes(const LogCells& cells, LogRow& row) {
    LabelPoint point;
    if (read_timecode(cells, LogField::snd_start, TvStd_to_label_type(row.snd_standard), point))
        put_timecode(row[LogField::snd_start] = cells[LogField::snd_start].text, point, row.snd_standard.drop);
    point = LabelPoint();
    if (read_timecode(cells, LogField::start_24p, label_tc_24, point)) row[LogField::start_24p] = point.get_string();
}

// Rows that have both an end and a duration vote:
//
//     start |--------| end          exclusive: end - start is the duration
//     start |-------| end           inclusive: it is one frame less
//     start | end                   inclusive: a shot of one frame
//
bool LogBuilder::ends_are_inclusive() const {
    std::size_t exclusive = 0, inclusive = 0;
    for (const RowInMaking& made : rows_) {
        const LogRow& row = made.row;
        const int duration = made.duration.value_or(0);
        if (!row.start.is_useful() || !row.end.is_useful() || duration < 1) continue;
        const std::int64_t length = std::int64_t{row.end.sample} - row.start.sample;
        exclusive += length == duration;
        inclusive += length + 1 == duration;
    }
    return inclusive > exclusive;
}

// The same for key numbers, against the timecode. With pulldown only rows whose length is a whole number of film
// frames tell.
bool LogBuilder::key_ends_are_inclusive() const {
    std::size_t exclusive = 0, inclusive = 0;
    for (const RowInMaking& made : rows_) {
        const LogRow& row = made.row;
        const std::optional<int> length = length_of(row);
        const std::optional<int> frames = frames_between(row.key_start, row.key_end);
        if (!length || !frames) continue;
        const embedded::Fraction film = film_frames_of(*length, row.standard);
        if (film.den() != 1) continue;
        exclusive += *frames == film.floor();
        inclusive += *frames == film.floor() - 1;
    }
    return inclusive > exclusive;
}

void LogBuilder::settle_end(RowInMaking& made, bool inclusive) {
    LogRow& row = made.row;
    if (row.end.is_useful()) {
        if (inclusive) row.end += 1;
    } else if (row[LogField::end].empty() && row.start.is_useful() && made.duration) {
        row.end = row.start;
        row.end += *made.duration;
    } else if (row[LogField::end].empty()) {
        warn(row.line, std::max(made.end_column, 1), "the row has neither end nor duration");
    }
    put_timecode(row[LogField::start], row.start, row.standard.drop);
    put_timecode(row[LogField::end], row.end, row.standard.drop || inclusive);
    if (const std::optional<int> length = length_of(row)) {
        LabelPoint duration(*length, row.start.type());
        row[LogField::duration] = duration.get_string();
    }
}

// The key numbers count before a length that the log gives itself.
void LogBuilder::settle_key_frames(LogRow& row, bool inclusive) {
    const std::optional<int> frames = frames_between(row.key_start, row.key_end);
    if (frames) row.key_frames = embedded::clamp_to_int(std::int64_t{*frames} + (inclusive ? 1 : 0));
}

void LogBuilder::finish() {
    if (refused()) return;
    const bool inclusive = ends_are_inclusive();
    for (RowInMaking& made : rows_)
        settle_end(made, inclusive);
    const bool keys_inclusive = key_ends_are_inclusive();
    log_.rows.reserve(rows_.size());
    for (; !rows_.empty(); rows_.pop_front()) {
        settle_key_frames(rows_.front().row, keys_inclusive);
        log_.rows.push_back(std::move(rows_.front().row));
    }
}

} // namespace formats
