#include "formats/logs/log_check.h"

#include "embedded/label_kinds.h"
#include "formats/logs/log_builder.h"
#include "formats/text_lines.h"

#include <algorithm>
#include <map>
#include <set>

namespace formats {
namespace {

/// Frames; longer shots are kept, and warned of, when a list of shots is made.
constexpr int longest_shot = 108000;
/// Characters of a reel that a list of shots compares.
constexpr std::size_t reel_compared = 15;

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string place_of(const LogRow& row, const LogRow& seen_from) {
    const std::string line = "line " + std::to_string(row.line);
    return row.file == seen_from.file ? line : line + " of " + row.file;
}

bool has_length(const LogRow& row) {
    return row.start.is_useful() && row.end.is_useful() && row.start.sample < row.end.sample;
}

std::string text_of(LabelPoint point) { return point.get_string(); }

class LogCheck {
public:
    LogCheck(const std::vector<LogRow>& rows, int tolerance) : rows_(rows), tolerance_(tolerance) {}

    std::vector<LogFinding> run() {
        no_keys_ = std::none_of(rows_.begin(), rows_.end(), has_film_number);
        some_rolls_ = std::any_of(rows_.begin(), rows_.end(), has_roll);
        for (const LogRow& row : rows_) {
            check_timecode(row);
            check_day(row);
            check_reel(row);
            check_roll(row);
            check_film_number(row);
            check_key_end(row);
            check_length(row);
            check_film_kind(row);
        }
        check_reels();
        return sorted();
    }

private:
    static bool has_film_number(const LogRow& row) {
        return row.key_start.is_useful() || row.key_refused || !row[LogField::ink_start].empty();
    }

    void find(const LogRow& row, LogProblem problem, std::string text) {
        findings_.push_back({&row, {problem, row.file, row.line, std::move(text)}});
    }

    void check_timecode(const LogRow& row) {
        const std::string& start = row[LogField::start];
        const std::string& end = row[LogField::end];
        if (!row.start.is_useful())
            find(row, LogProblem::faulty_timecode, "start " + quoted(start) + " isn't a timecode");
        else if (!row.end.is_useful())
            find(row, LogProblem::faulty_timecode, "end " + quoted(end) + " isn't a timecode");
        else if (row.end.sample < row.start.sample)
            find(row, LogProblem::end_before_start,
                 "end " + text_of(row.end) + " is before start " + text_of(row.start));
        else if (row.end.sample == row.start.sample)
            find(row, LogProblem::zero_length, "start and end are both " + text_of(row.start));
        else if (row.end.sample - row.start.sample > longest_shot)
            find(row, LogProblem::very_long,
                 text_of(row.start) + " to " + text_of(row.end) + " is over " + std::to_string(longest_shot) +
                     " frames");
    }

    static bool has_roll(const LogRow& row) {
        return !row[LogField::cam_reel].empty() || !row[LogField::lab_reel].empty();
    }

    // Timecode begins again at midnight; a number behind it is never looked up.
    void check_day(const LogRow& row) {
        for (const auto& [point, field] : {std::pair(row.start, LogField::start), std::pair(row.end, LogField::end)}) {
            const embedded::TimecodeBase* base = embedded::timecode_base(point.type());
            if (base && point.is_useful() && point.sample > base->day())
                return find(row, LogProblem::past_day, quoted(row[field]) + " lies past 24 hours");
        }
    }

    void check_roll(const LogRow& row) {
        if (some_rolls_ && !has_roll(row))
            find(row, LogProblem::no_roll, "no camera roll, so its reel is listed in its place");
    }

    void check_reel(const LogRow& row) {
        if (row[LogField::reel].empty())
            find(row, LogProblem::no_reel, "no reel, so it is taken for material of any reel");
    }

    void check_film_number(const LogRow& row) {
        if (row.key_refused)
            find(row, LogProblem::bad_key, "key number " + quoted(row[LogField::key_start]) + " can't be read");
        else if (no_keys_ && &row == &rows_.front())
            find(row, LogProblem::no_key, "no row has a key number or an ink number");
        else if (!no_keys_ && !has_film_number(row))
            find(row, LogProblem::no_key, "no key number");
    }

    void check_key_end(const LogRow& row) {
        if (!row.key_start.is_useful() || !row.key_end.is_useful()) return;
        const std::string numbers = text_of(row.key_start) + " to " + text_of(row.key_end);
        if (std::string_view(row.key_start.get_prefix()) != row.key_end.get_prefix())
            find(row, LogProblem::prefix_changes, "the prefix changes inside the take, " + numbers);
        else if (row.key_end.sample < row.key_start.sample)
            find(row, LogProblem::key_end_before_start, "the key numbers run backwards, " + numbers);
    }

    // Video frames v are film frames v, or 4/5 of v with pulldown; how that rounds depends on the phases of both ends.
    void check_length(const LogRow& row) {
        if (!row.key_frames || *row.key_frames < 0 || !has_length(row)) return;
        const embedded::Fraction film = film_frames_of(row.end.sample - row.start.sample, row.standard);
        const embedded::Fraction off = film - embedded::Fraction(*row.key_frames);
        const embedded::Fraction most(film.den() == 1 && !row.pulldown ? 0 : tolerance_);
        if (!(most < off) && !(off < -most)) return;
        find(row, LogProblem::length_differs,
             "its length is " + std::to_string(film.nearest()) + " frames of film by timecode and " +
                 std::to_string(*row.key_frames) + " by key numbers");
    }

    // The first row settles it for all when a list of shots is made.
    void check_film_kind(const LogRow& row) {
        if (row.film == label_none || row.film == rows_.front().film) return;
        const char* first = label_type_to_edlstr(rows_.front().film ? rows_.front().film : label_key_35mm_4p);
        const char* own = label_type_to_edlstr(row.film);
        if (std::string_view(first) == own) return;
        find(row, LogProblem::film_differs,
             "its film is " + std::string(own) + ", and it will be read as " + first + ", the kind of the first row");
    }

    void check_reels() {
        std::map<std::string, std::vector<const LogRow*>> reels;
        for (const LogRow& row : rows_)
            if (!row[LogField::reel].empty()) reels[lower_case(row[LogField::reel])].push_back(&row);
        std::map<std::string, const LogRow*> cut;
        for (auto& [reel, rows] : reels) {
            check_reel_length(*rows.front(), cut.emplace(reel.substr(0, reel_compared), rows.front()).first->second);
            check_one_reel(rows);
        }
        for (const auto& [reel, rows] : reels)
            check_beginnings(reel, rows, reels);
    }

    using Reels = std::map<std::string, std::vector<const LogRow*>>;

    // An event of reel "10" takes a row of reel "1" at its time where that comes first. What is cut to the same text is
    // told by itself.
    void check_beginnings(const std::string& reel, const std::vector<const LogRow*>& rows, const Reels& reels) {
        for (std::size_t length = std::min(reel.size(), reel_compared) - 1; length > 0; --length) {
            const auto other = reels.find(reel.substr(0, length));
            if (other == reels.end()) continue;
            const LogRow* met = row_at_the_time_of(rows, other->second);
            if (!met || rows.empty()) continue;
            find(*rows.front(), LogProblem::reel_begins,
                 "reel " + quoted((*rows.front())[LogField::reel]) + " begins with reel " +
                     quoted((*met)[LogField::reel]) + " of " + place_of(*met, *rows.front()) +
                     ", which has the same times, so events may be listed with its film");
            return;
        }
    }

    // Both are in the order of their starts.
    static const LogRow* row_at_the_time_of(const std::vector<const LogRow*>& rows,
                                            const std::vector<const LogRow*>& others) {
        constexpr int overrun_of_events = 30;
        std::size_t next = 0;
        for (const LogRow* row : rows) {
            while (next < others.size() && others[next]->end.sample + overrun_of_events <= row->start.sample)
                ++next;
            if (next < others.size() && others[next]->start.sample - overrun_of_events < row->end.sample)
                return others[next];
        }
        return nullptr;
    }

    void check_reel_length(const LogRow& row, const LogRow* other) {
        if (other == &row) return;
        find(row, LogProblem::reel_cut,
             "reel " + quoted(row[LogField::reel]) + " is the same as " + quoted((*other)[LogField::reel]) +
                 " in its first " + std::to_string(reel_compared) + " characters");
    }

    // In the order of their starts, each against the one of those before that reaches furthest:
    //
    //     |-------------|            furthest
    //        |---|                   overlaps it
    //                |------|        overlaps it, and is the furthest then
    //
    // and against the one right before it too, so that a row that reaches too far hides no other.
    void check_one_reel(std::vector<const LogRow*>& rows) {
        std::erase_if(rows, [](const LogRow* row) { return !has_length(*row); });
        check_standards(rows);
        std::stable_sort(rows.begin(), rows.end(), [](const LogRow* a, const LogRow* b) {
            return std::pair(a->start.type(), a->start.sample) < std::pair(b->start.type(), b->start.sample);
        });
        const LogRow* furthest = nullptr;
        const LogRow* before = nullptr;
        for (const LogRow* row : rows) {
            if (furthest && overlap(*furthest, *row)) tell_overlap(*row, *furthest);
            if (before && before != furthest && overlap(*before, *row)) tell_overlap(*row, *before);
            before = row;
            if (!furthest || furthest->start.type() != row->start.type() || furthest->end.sample < row->end.sample)
                furthest = row;
        }
    }

    static bool overlap(const LogRow& before, const LogRow& row) {
        return before.start.type() == row.start.type() && row.start.sample < before.end.sample;
    }

    // Events are looked up by frame numbers alone, so rows that count otherwise take events of one another.
    void check_standards(const std::vector<const LogRow*>& rows) {
        std::set<label_t> told;
        for (const LogRow* row : rows) {
            const LogRow& first = *rows.front();
            if (row->start.type() == first.start.type() || !told.insert(row->start.type()).second) continue;
            find(*row, LogProblem::standard_differs,
                 "reel " + quoted((*row)[LogField::reel]) + " counts " + label_type_to_edlstr(row->start.type()) +
                     " here and " + label_type_to_edlstr(first.start.type()) + " in " + place_of(first, *row));
        }
    }

    void tell_overlap(const LogRow& row, const LogRow& other) {
        const bool same = row.start.sample == other.start.sample && row.end.sample == other.end.sample &&
                          row[LogField::key_start] == other[LogField::key_start];
        if (same)
            find(row, LogProblem::doubled, "the same as " + place_of(other, row));
        else
            find(row, LogProblem::overlap,
                 "overlaps " + place_of(other, row) + " on reel " + quoted(row[LogField::reel]) + ", " +
                     text_of(other.start) + " to " + text_of(other.end));
    }

    // By row; what concerns one row stays in the order in which it was found.
    std::vector<LogFinding> sorted() {
        std::stable_sort(findings_.begin(), findings_.end(),
                         [](const Found& a, const Found& b) { return a.row < b.row; });
        std::vector<LogFinding> result;
        for (Found& found : findings_)
            result.push_back(std::move(found.finding));
        return result;
    }

    struct Found {
        const LogRow* row; ///< an element of `rows_`, so rows compare by place
        LogFinding finding;
    };

    const std::vector<LogRow>& rows_;
    const int tolerance_;
    bool no_keys_ = false;
    bool some_rolls_ = false;
    std::vector<Found> findings_;
};

} // namespace

std::vector<LogFinding> check_log(const std::vector<LogRow>& rows, int tolerance) {
    if (rows.empty()) return {};
    return LogCheck(rows, tolerance).run();
}

} // namespace formats
