#include "formats/logs/keylog_reader.h"

#include "formats/logs/column_names.h"
#include "formats/logs/film_values.h"
#include "formats/logs/fixed_fields.h"
#include "formats/logs/log_builder.h"
#include "host/ascii_text.h"

#include <algorithm>

namespace formats {
namespace {

// In the description of the standards line.
constexpr std::size_t second_gauge_at = 5;
constexpr std::size_t standard_at = 17;

struct StandardName {
    std::string_view name;
    double rate;
    bool drop;
};

constexpr StandardName standard_names[] = {
    {"pal", 25, false},    {"ntsc", 29.97, false}, {"ntsc_drop_frame", 29.97, true},
    {"pal_24", 24, false}, {"ntsc_24", 24, false}, {"ntsc_drop_frame_24", 24, false},
};

bool is_header(std::string_view line) { return ascii::begins(line, "record#") && ascii::holds(line, "camroll"); }

bool is_word_character(char c) { return c != ' ' && c != '\t'; }

/// A key number in one go, with its two digits of frames behind the count and no sign between.
bool lacks_sign(std::string_view text) {
    constexpr std::size_t whole = 14;
    const std::string_view digits = text.substr(std::min<std::size_t>(2, text.size()));
    return text.size() == whole && digits.find_first_not_of("0123456789") == std::string_view::npos;
}

class KeylogReader {
public:
    KeylogReader(const TextLines& text, const std::string& path, const LogOptions& options, Log& log)
        : text_(text), builder_(log, path, options) {}

    void read() {
        if (find_header() && check_columns()) read_lines();
        builder_.finish();
    }

private:
    static constexpr std::size_t no_column = SIZE_MAX;

    bool find_header() {
        while (at_ < text_.count() && !is_header(text_.line(at_)))
            ++at_;
        if (at_ == text_.count()) {
            builder_.refuse(0, "no header that begins \"Record#\" and names CAMROLL");
            return false;
        }
        header_line_ = static_cast<int>(at_) + 1;
        std::string header = lower_case(text_.line(at_++));
        const bool whole = header.find("dur_fr") != std::string::npos;
        lines_in_row_ = !whole && ascii::holds(text_.line(at_), "dur_fr") ? 2 : 1;
        if (lines_in_row_ == 2) header += lower_case(text_.line(at_++));
        find_columns(PlacedLine(header).text());
        return true;
    }

    // Names are single words, so each begins behind a blank.
    void find_columns(std::string_view header) {
        for (std::size_t i = 0; i < header.size(); ++i) {
            if (!is_word_character(header[i]) || (i > 0 && is_word_character(header[i - 1]))) continue;
            const std::size_t end = std::min(header.find(' ', i), header.size());
            names_.emplace_back(header.substr(i, end - i));
            begins_.push_back(i);
        }
        std::vector<std::string_view> views(names_.begin(), names_.end());
        columns_ = LogColumns(views);
        for (const std::string& name : columns_.doubled())
            builder_.warn(header_line_, 1,
                          "column " + name + " stands twice; the second counts where the first is empty");
    }

    std::size_t index_of(std::string_view name) const {
        const auto found = std::find(names_.begin(), names_.end(), name);
        return found == names_.end() ? no_column : static_cast<std::size_t>(found - names_.begin());
    }

    bool check_columns() {
        if (!columns_.has(LogField::start))
            builder_.refuse(header_line_, "no column VTTC_IN");
        else if (!columns_.has(LogField::key_start) && !columns_.has(LogField::ink_start))
            builder_.refuse(header_line_, "neither a column KEYIN nor INK_IN");
        return !builder_.refused();
    }

    LogCell cell(const PlacedLine& line, std::size_t column) const {
        if (column == no_column) return {};
        return line.cell(begins_[column], column + 1 < begins_.size() ? begins_[column + 1] : line.length());
    }

    void read_lines() {
        bool first = true;
        for (; at_ < text_.count() && !builder_.refused(); ++at_) {
            if (without_blanks_around(text_.line(at_)).empty()) continue;
            const int number = static_cast<int>(at_) + 1;
            std::string joined(text_.line(at_));
            if (lines_in_row_ == 2) joined += text_.line(++at_);
            const PlacedLine line(joined);
            if (first && is_standards_line(line)) {
                read_standards(line, number);
            } else {
                if (first && !check_rate(number)) return;
                read_row(line, number);
            }
            first = false;
        }
        if (first) builder_.refuse(header_line_, "nothing stands behind the header");
    }

    bool is_standards_line(const PlacedLine& line) const {
        return cell(line, index_of("vttc_in")).text.empty() && !cell(line, index_of("descript")).text.empty();
    }

    void read_standards(const PlacedLine& line, int number) {
        const std::size_t from = begins_[index_of("descript")];
        const LogCell gauge = line.cell(from, from + second_gauge_at);
        const LogCell perforations = line.cell(from + second_gauge_at, from + standard_at);
        read_film(gauge, perforations, number);
        const std::size_t comments = index_of("comments");
        const LogCell standard =
            line.cell(from + standard_at, comments == no_column ? line.length() : begins_[comments]);
        const std::string name = lower_case(standard.text.substr(0, standard.text.find(' ')));
        for (const StandardName& known : standard_names) {
            if (known.name != name) continue;
            head_.rate = embedded::nearest_rate(known.rate);
            head_.drop = known.drop;
        }
        if (!head_.rate && !name.empty())
            builder_.warn(number, standard.column, "standard \"" + name + "\" isn't known",
                          embedded::WarningKind::rate);
        read_reel(cell(line, comments).text);
        check_rate(number);
    }

    void read_film(const LogCell& gauge, const LogCell& perforations, int number) {
        head_.film = film_kind_of_text(gauge.text);
        const bool three = head_.film == label_key_35mm_4p && perforations.text.substr(0, 1) == "3";
        if (three) head_.film = film_kind_of_text("35mm 3 perf");
        if (!head_.film && !gauge.text.empty())
            builder_.warn(number, gauge.column, "gauge \"" + std::string(gauge.text) + "\" isn't known");
    }

    void read_reel(std::string_view comments) {
        for (const std::string_view word : {"vtroll", "vtr"}) {
            if (!ascii::begins(comments, word)) continue;
            const std::string_view reel = without_blanks_around(comments.substr(word.size()));
            head_.reel = reel.substr(0, reel.find(' '));
            return;
        }
    }

    bool check_rate(int number) {
        builder_.set_head(head_);
        if (!builder_.knows_rate() && !columns_.has(LogField::rate))
            builder_.refuse(number, "no standards line that names PAL or NTSC; name the frame rate with --rate");
        return !builder_.refused();
    }

    void read_row(const PlacedLine& line, int number) {
        if (builder_.refused()) return;
        std::vector<LogCell> cells;
        for (std::size_t i = 0; i < begins_.size(); ++i)
            cells.push_back(cell(line, i));
        LogCells row;
        row.line = number;
        row.drop = cell(line, index_of("vttc_drop")).text.find('T') != std::string_view::npos;
        row.snd_drop = cell(line, index_of("nagra_drop")).text.find('T') != std::string_view::npos;
        columns_.fill(cells, row);
        std::string start, end;
        part_frames(row[LogField::key_start], start);
        part_frames(row[LogField::key_end], end);
        builder_.add(row);
    }

    static void part_frames(LogCell& number, std::string& storage) {
        if (!lacks_sign(number.text)) return;
        storage.assign(number.text).insert(number.text.size() - 2, 1, '+');
        number.text = storage;
    }

    const TextLines& text_;
    LogBuilder builder_;
    LogHead head_;
    std::size_t at_ = 0;
    int header_line_ = 0;
    int lines_in_row_ = 1;
    std::vector<std::string> names_; ///< in lower case
    std::vector<std::size_t> begins_;
    LogColumns columns_{{}};
};

} // namespace

Log read_keylog(const TextLines& text, const std::string& path, const LogOptions& options) {
    Log log;
    KeylogReader(text, path, options, log).read();
    return log;
}

bool looks_like_keylog(const TextLines& text) {
    for (std::size_t i = 0; i < text.count(); ++i)
        if (is_header(text.line(i))) return true;
    return false;
}

} // namespace formats
