#include "documents/film_cells.h"

#include "documents/film_count.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string_view>

namespace documents {
namespace {

using film::Count;
using film::Fraction;

constexpr const char* code_heads[] = {
    "Reel in doubt",
    "Two log rows",
    "Past its log row",
    "Two key numbers",
    "Outside its media",
    "In no standard list",
    "Left out",
    "Replaced",
    "As it was read",
    "No key number",
    "No roll",
    "No log row",
    "No ink number",
    "Film not known",
    "Effect over no event",
    "Used twice",
    "Too close",
    "Frames left out",
    "Moved on from zero",
    "A frame left out",
    "Inexact",
    "Reverse",
    "Numbers begin again",
    "Another kind of film",
    "Alike when cut",
    "Text mended",
    "Rates differ",
};

static_assert(std::size(code_heads) == static_cast<std::size_t>(film::Code::codes));

Mark mark_of(const film::Finding& finding) {
    switch (finding.code) {
    case film::Code::used_twice:
    case film::Code::too_close:
        return Mark::reused;
    case film::Code::no_key:
    case film::Code::no_roll:
    case film::Code::no_log_row:
    case film::Code::no_film:
    case film::Code::no_ink:
        return Mark::missing;
    default:
        return finding.severity == film::Severity::wrong ? Mark::wrong : Mark::doubt;
    }
}

/// Leading zeros of the feet go.
std::string without_zeros(const std::string& text) {
    const std::size_t plus = text.find('+');
    if (plus == std::string::npos) return text;
    const std::size_t digit = std::min(text.find_first_not_of('0'), plus - 1);
    return text.substr(digit);
}

std::string grouped_thousands(std::int64_t number) {
    std::string text = std::to_string(number < 0 ? -number : number);
    for (std::size_t i = text.size(); i > 3; i -= 3)
        text.insert(i - 3, ",");
    return number < 0 ? "-" + text : text;
}

/// A count whose first frame and last frame lie `handles` frames of film further out.
struct Ends {
    KeyParts first, last;
};

Ends ends_of(const Count& count, std::int64_t length, int handles) {
    if (!count) return {};
    const int out = count.step < Fraction(0) ? -handles : handles;
    Count end = count;
    Ends ends;
    end.first = Fraction(count.frame_at(0) - out);
    ends.first = key_parts(end, 0);
    end.first = Fraction(count.frame_at(length - 1) + out);
    ends.last = key_parts(end, 0);
    return ends;
}

/// Those of each run, all of the same count of theirs.
std::vector<Ends> ends_of(const std::vector<FilmRun>& runs, Count FilmRun::*count, int handles) {
    std::vector<Ends> ends;
    ends.reserve(runs.size());
    for (const FilmRun& run : runs)
        ends.push_back(ends_of(run.*count, run.length(), handles));
    return ends;
}

KeyParts parts_of(const LabelPoint& point) {
    Count count;
    count.kind = point.type();
    count.prefix = point.get_prefix();
    const int frame = point.cvt()->samples_per_frame();
    count.first = Fraction(Fraction(point.sample, frame).floor());
    count.perforation = point.sample - static_cast<int>(count.first.floor()) * frame;
    return key_parts(count, 0);
}

Line span_line(const Ends& ends) {
    Line line = number_line(ends.first);
    line.push_back(mono(" - "));
    if (ends.last.prefix != ends.first.prefix) line.push_back(mono(ends.last.prefix + ' ', Weight::light));
    line.push_back(mono(ends.last.count));
    return line;
}

std::string tape_text(const film::Strip& strip) {
    return strip.rolls.tape.empty() ? "tape not named" : "tape " + strip.rolls.tape;
}

/// What stands where a number should.
std::vector<Line> lines_without(const char* what, const FilmRun& run) {
    const std::string first = run.first(run.timecode), last = run.last(run.timecode);
    std::vector<Line> lines =
        vector_of<Line>(line_of(mono(what, Weight::strong)),
                        line_of(mono(tape_text(*run.strip) + (first.empty() ? "" : ' ' + first), Weight::strong)));
    if (!first.empty()) lines.push_back(line_of(mono("to " + last, Weight::strong)));
    return lines;
}

void append(std::vector<Line>& lines, std::vector<Line> more) {
    lines.insert(lines.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

std::vector<Line> number_lines(const Ends& ends, bool alone) {
    if (!alone) return vector_of<Line>(span_line(ends));
    return vector_of<Line>(number_line(ends.first), number_line(ends.last));
}

std::vector<Line> key_lines(const FilmRun& run, const Ends& ends, bool alone) {
    if (!run.strip->has_film()) return lines_without(run.strip->rendered ? "rendered material" : "film not known", run);
    if (!run.key) return lines_without("no key number", run);
    std::vector<Line> lines = number_lines(ends, alone);
    if (run.strip->sureness == film::Sureness::within)
        lines.push_back(line_of(light("within " + film::frames_text(run.strip->off))));
    if (run.strip->sureness == film::Sureness::beyond) lines.push_back(line_of(strong("counted on past the log")));
    return lines;
}

constexpr const char* sureness_names[] = {"exact", "within", "beyond", "counted", "unknown"};

} // namespace

bool Units::feet() const { return !frames && static_cast<bool>(feet_of(film)); }

std::string Units::position(std::int64_t frame) const {
    return feet() ? position_text(film, frame) : std::to_string(frame);
}

std::string Units::length(std::int64_t length) const {
    return feet() ? without_zeros(position_text(film, length)) : std::to_string(length);
}

std::string Units::both(std::int64_t length) const {
    const std::string whole = counted(length, "frame", "frames");
    return feet() ? this->length(length) + ", " + whole : whole;
}

std::string Units::counting() const {
    if (!feet()) return "Positions and lengths in frames.";
    const FeetOfFilm foot = feet_of(film);
    if (foot.perforations % foot.in_frame == 0)
        return "Feet + frames, " + std::to_string(foot.perforations / foot.in_frame) + " frames a foot.";
    return "Feet + frames, " + std::to_string(foot.perforations) + " perforations a foot, " +
           std::to_string(foot.in_frame) + " a frame.";
}

Units units_of(const CutFilm& cut) { return {cut.film, cut.options.frames}; }

std::string percent_text(const Fraction& speed) {
    const Fraction percent = speed * 100;
    const std::int64_t whole = percent.floor();
    const Fraction rest = percent - Fraction(whole);
    if (rest == Fraction(0)) return std::to_string(whole) + '%';
    return (whole == 0 ? "" : std::to_string(whole) + ' ') + fraction_text(rest) + '%';
}

std::string fraction_text(const Fraction& fraction) {
    const auto number = [](Fraction::wide n) { return std::to_string(static_cast<long long>(n)); };
    return number(fraction.num()) + (fraction.den() == 1 ? "" : '/' + number(fraction.den()));
}

std::string counted(std::int64_t number, const char* one, const char* many) {
    return grouped_thousands(number) + ' ' + (number == 1 ? one : many);
}

std::string with_capital(std::string text) {
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 'a' + 'A');
    return text;
}

Column position_column(const char* key, const std::string& title) {
    return {key, title, Align::right, Wrap::none, {{key, "frames"}}};
}

Cell position_cell(const Units& units, std::int64_t frame) { return cell(mono(units.position(frame)), frame); }

Column length_column(const char* key, const std::string& title) {
    return {key, title, Align::right, Wrap::none, {{key, "frames"}}};
}

Cell length_cell(const Units& units, std::optional<std::int64_t> frames) {
    if (!frames) return cell(plain("not known"), Value());
    Cell made = cell(mono(units.length(*frames)), *frames);
    if (units.feet()) made.lines.push_back(line_of(mono(std::to_string(*frames) + " fr", Weight::light)));
    return made;
}

Cell film_cell(const Units& units, std::optional<std::int64_t> film, std::int64_t shown) {
    Cell made = length_cell(units, film);
    if (film == shown) made.lines.clear();
    return made;
}

void show_where_filled(List& list, const char* key) {
    const auto column = std::find_if(list.columns.begin(), list.columns.end(),
                                     [key](const Column& one) { return std::string_view(one.key) == key; });
    if (column == list.columns.end()) return;
    const auto place = static_cast<std::size_t>(column - list.columns.begin());
    for (const Part& part : list.parts)
        for (const Row& row : part.rows)
            if (place < row.cells.size() && !row.cells[place].lines.empty()) return;
    column->title.clear();
}

Column number_column(const char* key, const std::string& title) {
    return {key, title, Align::right, Wrap::none, {{key}}};
}

Cell number_cell(std::int64_t number) { return cell(mono(std::to_string(number)), number); }

Cell event_cell(std::int64_t number) { return number > 0 ? number_cell(number) : cell(light("-"), Value()); }

Column word_column(const char* key, const std::string& title) {
    return {key, title, Align::left, Wrap::words, {{key}}};
}

Line number_line(const KeyParts& parts) {
    if (parts.prefix.empty()) return line_of(mono(parts.count));
    return line_of(mono(parts.prefix + ' ', Weight::light), mono(parts.count));
}

Column key_column() {
    return {"key",
            "First / last frame",
            Align::left,
            Wrap::none,
            {{"key_first"}, {"key_last"}, {"film_known"}, {"tolerance", "frames"}}};
}

Cell key_cell(const std::vector<FilmRun>& runs, bool black, int handles) {
    Cell made;
    if (black || runs.empty()) {
        made.lines = vector_of<Line>(line_of(plain(black ? "black, no film" : "")));
        made.values.resize(4);
        return made;
    }
    const std::vector<Ends> ends = ends_of(runs, &FilmRun::key, handles);
    for (std::size_t i = 0; i < runs.size(); ++i)
        append(made.lines, key_lines(runs[i], ends[i], runs.size() == 1));
    const auto surest = [](const FilmRun& a, const FilmRun& b) { return a.strip->sureness < b.strip->sureness; };
    const FilmRun& least = *std::max_element(runs.begin(), runs.end(), surest);
    made.values = vector_of<Value>(value_of(ends.front().first.label), value_of(ends.back().last.label),
                                   std::string(sureness_names[static_cast<std::size_t>(least.strip->sureness)]),
                                   std::int64_t{least.strip->off});
    return made;
}

Column label_column() { return {"key", "First / last frame", Align::left, Wrap::none, {{"key_first"}, {"key_last"}}}; }

Cell label_cell(LabelPoint first, LabelPoint last, bool first_missing, bool last_missing) {
    Cell made;
    const auto add = [&made](LabelPoint& point, bool missing) {
        const bool film = std::string_view(point.get_prefix()).substr(0, 2) != "__"; // else black
        const bool known = film && point.is_useful() && !missing;
        const char* const none = film ? "no key number" : "black, no film";
        made.lines.push_back(known ? number_line(parts_of(point)) : line_of(mono(none, Weight::strong)));
        made.values.push_back(known ? value_of(point.get_string()) : Value());
    };
    add(first, first_missing);
    add(last, last_missing);
    return made;
}

Column ink_column() { return {"ink", "Ink numbers", Align::left, Wrap::none, {{"ink_first"}, {"ink_last"}}}; }

Cell ink_cell(const std::vector<FilmRun>& runs, int handles) {
    if (runs.empty()) return blank_cell(2);
    Cell made;
    const std::vector<Ends> ends = ends_of(runs, &FilmRun::ink, handles);
    for (std::size_t i = 0; i < runs.size(); ++i)
        if (runs[i].ink) append(made.lines, number_lines(ends[i], runs.size() == 1));
    made.values = vector_of<Value>(value_of(ends.front().first.label), value_of(ends.back().last.label));
    return made;
}

Column tape_column() {
    return {"tape", "Tape and timecode", Align::left, Wrap::none, {{"tape"}, {"timecode_first"}, {"timecode_last"}}};
}

Cell tape_cell(const std::vector<FilmRun>& runs) {
    if (runs.empty()) return blank_cell(3);
    Cell made;
    const FilmRun &head = runs.front(), &tail = runs.back();
    std::string first = head.first(head.timecode), last = tail.last(tail.timecode);
    Line line;
    if (!head.strip->rolls.tape.empty()) line.push_back(plain(head.strip->rolls.tape + ' '));
    if (!first.empty()) line.push_back(mono(first));
    if (!line.empty()) made.lines.push_back(std::move(line));
    if (!last.empty()) made.lines.push_back(line_of(mono("to " + last, Weight::light)));
    made.values =
        vector_of<Value>(value_of(head.strip->rolls.tape), value_of(std::move(first)), value_of(std::move(last)));
    return made;
}

Column shot_column() { return {"shot", "Shot", Align::left, Wrap::words, {{"shot"}, {"scene"}, {"take"}}, true}; }

Cell shot_cell(const film::Strip& strip) {
    Cell made;
    const std::string name = strip.black ? "Black" : strip.name;
    if (!name.empty()) made.lines.push_back(line_of(plain(name)));
    const bool scene = !strip.scene.empty() || !strip.take.empty();
    const std::string words = strip.scene + (strip.take.empty() ? "" : '/' + strip.take);
    if (scene && words != name) made.lines.push_back(line_of(light("scene " + words)));
    made.values = vector_of<Value>(value_of(name), value_of(strip.scene), value_of(strip.take));
    return made;
}

Column roll_column() {
    return {"roll",
            "Roll",
            Align::left,
            Wrap::anywhere,
            {{"roll"}, {"camera_roll"}, {"lab_roll"}, {"daily_roll"}, {"sound_roll"}}};
}

Cell roll_cell(const film::Strip& strip) {
    Cell made = word_cell(strip.rolls.listed, Weight::strong);
    made.values.reserve(5);
    for (const std::string* roll : {&strip.rolls.camera, &strip.rolls.lab, &strip.rolls.daily, &strip.rolls.sound})
        made.values.push_back(value_of(*roll));
    return made;
}

Column speed_column() { return {"speed", "Speed", Align::right, Wrap::none, {{"speed"}}}; }

Cell speed_cell(const film::Strip& strip) {
    if (strip.black) return blank_cell();
    return cell(strip.speed == Fraction(1) ? Run() : strong(percent_text(strip.speed)),
                Value(fraction_text(strip.speed)));
}

std::optional<std::int64_t> film_frames(const std::vector<FilmRun>& runs) {
    std::int64_t all = 0;
    for (const FilmRun& run : runs) {
        const std::optional<std::int64_t> frames = run.film_frames();
        if (!frames) return std::nullopt;
        all += *frames;
    }
    return all;
}

std::optional<Note> speed_note(const Units& units, const std::vector<FilmRun>& runs) {
    if (runs.empty() || runs.front().strip->black) return std::nullopt;
    const Fraction speed = runs.front().strip->speed;
    if (speed == Fraction(1)) return std::nullopt;
    const std::int64_t shown = runs.back().end - runs.front().start;
    const std::optional<std::int64_t> film = film_frames(runs);
    Note note;
    note.mark = Mark::speed;
    note.code = "speed";
    const bool back = speed < Fraction(0);
    note.head = speed == Fraction(0) ? "Held frame"
                : back               ? "Backwards at " + percent_text(-speed)
                                     : "Speed " + percent_text(speed);
    const std::string reel = counted(shown, "frame", "frames") + " of the reel.";
    if (!film) {
        note.text = "Makes " + reel;
        return note;
    }
    note.text = counted(*film, "frame", "frames") + " of film";
    if (units.feet()) note.text += " (" + units.length(*film) + ")";
    note.text += (*film == 1 ? " makes " : " make ") + reel;
    return note;
}

std::optional<Note> parted_note(const std::vector<FilmRun>& runs) {
    if (runs.size() < 2) return std::nullopt;
    Note note;
    note.mark = Mark::doubt;
    note.code = "parted";
    note.head = "In " + std::to_string(runs.size()) + " stretches of film";
    note.text = "Its numbers don't run on; the film changes after ";
    for (std::size_t i = 0; i + 1 < runs.size(); ++i)
        note.text += (i == 0 ? "" : ", ") + film::frames_text(runs[i].end - runs.front().start);
    note.text += ".";
    return note;
}

const char* head_of(film::Code code) { return code_heads[static_cast<std::size_t>(code)]; }

Note finding_note(const film::Finding& finding, bool advice) {
    Note note;
    note.mark = mark_of(finding);
    note.code = film::info_of(finding.code).name;
    note.head = head_of(finding.code);
    note.text = with_capital(finding.what) + ".";
    if (advice) note.advice = with_capital(finding.advice()) + ".";
    return note;
}

} // namespace documents
