#include "formats/logs/ale_reader.h"

#include "formats/logs/column_names.h"
#include "formats/logs/film_values.h"
#include "formats/logs/log_builder.h"
#include "formats/logs/table_rows.h"
#include "host/ascii_text.h"

#include <algorithm>

namespace formats {
namespace {

constexpr std::string_view section_names[] = {"heading", "column", "data"};

bool is_blank(std::string_view line) { return without_blanks_around(line).empty(); }

bool is_section(std::string_view line, std::string_view name) { return ascii::same(without_blanks_around(line), name); }

bool is_any_section(std::string_view line) {
    return std::any_of(std::begin(section_names), std::end(section_names),
                       [&](std::string_view name) { return is_section(line, name); });
}

class AleReader {
public:
    AleReader(const TextLines& text, const std::string& path, const LogOptions& options, Log& log)
        : text_(text), builder_(log, path, options) {}

    void read() {
        if (read_heading() && read_columns() && check_columns()) read_data();
        builder_.finish();
    }

private:
    int number() const { return static_cast<int>(at_) + 1; }
    bool at_end() const { return at_ >= text_.count(); }

    bool refuse(const char* why) {
        builder_.refuse(std::min(number(), static_cast<int>(text_.count())), why);
        return false;
    }

    void skip_blank_lines() {
        while (!at_end() && is_blank(text_.line(at_)))
            ++at_;
    }

    bool read_heading() {
        skip_blank_lines();
        if (!is_section(text_.line(at_), "heading")) return refuse("no line \"Heading\"");
        for (++at_; !at_end() && !is_any_section(text_.line(at_)); ++at_)
            read_heading_line(text_.line(at_));
        builder_.set_head(head());
        return true;
    }

    // One pair a line, or all of them on one.
    void read_heading_line(std::string_view line) {
        if (is_blank(line)) return;
        if (line.find('\t') == std::string_view::npos) {
            const std::size_t blank = line.find(' ');
            if (blank != std::string_view::npos) set_value(line.substr(0, blank), line.substr(blank), 1);
            return;
        }
        const std::vector<LogCell> cells = cells_between(line, '\t');
        for (std::size_t i = 0; i + 1 < cells.size(); i += 2)
            set_value(cells[i].text, cells[i + 1].text, cells[i + 1].column);
    }

    void set_value(std::string_view written_key, std::string_view written_value, int column) {
        const std::string key = lower_case(without_blanks_around(written_key));
        const std::string value(without_blanks_around(written_value));
        const auto tell = [&](const char* what) {
            builder_.warn(number(), column, key + " \"" + value + "\" " + what);
        };
        if (value.empty()) return;
        if (key == "fps") {
            rate_ = rate_of_text(value, &drop_);
            if (!rate_) tell("isn't a frame rate");
        } else if (key == "video_format") {
            video_format_ = lower_case(value);
        } else if (key == "film_format") {
            film_ = film_kind_of_text(value);
            if (!film_) tell("isn't a kind of film that is known");
        } else if (key == "tape") {
            tape_ = value;
        } else if (key == "field_delim" && !ascii::same(value, "tabs")) {
            if (ascii::begins(value, "comma"))
                delimiter_ = ',';
            else
                tell("isn't known; taken as TABS");
        }
    }

    LogHead head() const {
        LogHead head;
        head.rate = rate_;
        if (!rate_ && video_format_ == "ntsc") head.rate = embedded::nearest_rate(29.97);
        if (!rate_ && video_format_ == "pal") head.rate = embedded::nearest_rate(25);
        head.drop = drop_;
        head.film = film_;
        head.reel = tape_;
        return head;
    }

    bool read_columns() {
        if (!is_section(text_.line(at_), "column")) return refuse("no line \"Column\" behind the heading");
        ++at_;
        skip_blank_lines();
        if (at_end() || is_any_section(text_.line(at_))) return refuse("no names behind \"Column\"");
        names_ = texts_of(cells_between(text_.line(at_), delimiter_));
        while (!names_.empty() && is_blank(names_.back()))
            names_.pop_back();
        columns_ = LogColumns(names_);
        for (const std::string& name : columns_.doubled())
            builder_.warn(number(), 1,
                          "column \"" + name + "\" stands twice; the second counts where the first is empty");
        return true;
    }

    bool check_columns() {
        if (!columns_.has(LogField::start)) return refuse("no column \"Start\"");
        const bool has_end =
            columns_.has(LogField::end) || columns_.has(LogField::duration) || columns_.has(LogField::frames);
        if (!has_end) return refuse("neither a column \"End\" nor \"Duration\"");
        if (!builder_.knows_rate() && !columns_.has(LogField::rate))
            return refuse("no frame rate, neither FPS in the heading nor a column; name it with --rate");
        ++at_;
        skip_blank_lines();
        return is_section(text_.line(at_), "data") || refuse("no line \"Data\" behind the columns");
    }

    void read_data() {
        for (++at_; !at_end() && !builder_.refused(); ++at_)
            if (!is_blank(text_.line(at_))) read_row(text_.line(at_));
    }

    void read_row(std::string_view line) {
        const std::vector<LogCell> cells = cells_between(line, delimiter_);
        if (const int extra = first_extra_cell(cells, names_.size()))
            builder_.warn(number(), extra, "more cells than there are columns; left out");
        LogCells row;
        row.line = number();
        columns_.fill(cells, row);
        builder_.add(row);
    }

    const TextLines& text_;
    LogBuilder builder_;
    std::size_t at_ = 0;
    char delimiter_ = '\t';
    const embedded::RateInfo* rate_ = nullptr;
    bool drop_ = false;
    label_t film_ = label_none;
    std::string tape_, video_format_;
    std::vector<std::string_view> names_;
    LogColumns columns_{{}};
};

} // namespace

Log read_ale(const TextLines& text, const std::string& path, const LogOptions& options) {
    Log log;
    AleReader(text, path, options, log).read();
    return log;
}

bool looks_like_ale(const TextLines& text) {
    for (std::size_t i = 0; i < text.count(); ++i)
        if (!is_blank(text.line(i))) return is_section(text.line(i), "heading");
    return false;
}

} // namespace formats
