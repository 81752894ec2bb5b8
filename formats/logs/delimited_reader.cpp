#include "formats/logs/delimited_reader.h"

#include "formats/logs/column_names.h"
#include "formats/logs/log_builder.h"
#include "formats/logs/table_rows.h"
#include "host/ascii_text.h"

#include <deque>

namespace formats {
namespace {

constexpr char delimiters[] = {'\t', ',', ';'};
/// A quote that isn't closed within so many lines is one of feet or inches.
constexpr std::size_t longest_quoted = 50;

class DelimitedReader {
public:
    DelimitedReader(const TextLines& text, const std::string& path, const LogOptions& options, Log& log)
        : text_(text), builder_(log, path, options) {}

    void read() {
        if (find_header() && check_columns()) read_rows();
        builder_.finish();
    }

private:
    static int number(std::size_t index) { return static_cast<int>(index) + 1; }

    bool find_header() {
        for (at_ = 0; at_ < text_.count(); ++at_) {
            for (const char delimiter : delimiters) {
                delimiter_ = delimiter;
                if (text_.line(at_).find(delimiter) != std::string_view::npos && take_header()) return true;
            }
        }
        builder_.refuse(text_.count() > 0 ? 1 : 0,
                        "no header row that names a start, such as \"Start\" or \"start time\"");
        return false;
    }

    bool take_header() {
        header_.clear();
        const std::size_t last = split(at_, header_);
        names_ = texts_of(header_);
        LogColumns columns(names_);
        if (!columns.has(LogField::start)) return false;
        columns_ = columns;
        header_line_ = number(at_);
        for (const std::string& name : columns_.doubled())
            builder_.warn(header_line_, 1,
                          "column \"" + name + "\" stands twice; the second counts where the first is empty");
        at_ = last + 1;
        return true;
    }

    bool check_columns() {
        if (!columns_.has(LogField::end) && !columns_.has(LogField::duration) && !columns_.has(LogField::frames))
            builder_.refuse(header_line_, "no column for the end or the duration");
        else if (!builder_.knows_rate() && !columns_.has(LogField::rate))
            builder_.refuse(header_line_, "no column for the frame rate; name it with --rate");
        return !builder_.refused();
    }

    /// Sound, black and gaps of an index of events are no film.
    static bool is_film(const LogCells& row) {
        const std::string_view track = row[LogField::track].text;
        const bool sound = !track.empty() && (track.front() == 'A' || track.front() == 'a');
        return !sound && !row[LogField::start].text.empty() && !ascii::same(row[LogField::reel].text, "BL");
    }

    void read_rows() {
        for (; at_ < text_.count() && !builder_.refused(); ++at_) {
            if (without_blanks_around(text_.line(at_)).empty()) continue;
            const std::size_t first = at_;
            cells_.clear();
            joined_.clear();
            at_ = split(at_, cells_);
            if (is_empty_row()) continue;
            LogCells row;
            row.line = number(first);
            if (const int extra = first_extra_cell(cells_, names_.size()))
                builder_.warn(row.line, extra, "more cells than there are columns; left out");
            columns_.fill(cells_, row);
            row.event = columns_.has(LogField::record_in);
            if (!row.event || is_film(row)) builder_.add(row);
        }
    }

    bool is_empty_row() const { return first_extra_cell(cells_, 0) == 0; }

    /// Cuts a row that begins on a line and gives its last line. Quoted cells may hold delimiters and line ends.
    std::size_t split(std::size_t index, std::vector<LogCell>& cells) {
        if (text_.line(index).find('"') == std::string_view::npos) {
            cells = cells_between(text_.line(index), delimiter_);
            return index;
        }
        std::string_view rest = text_.line(index);
        int column = 1;
        for (;;) {
            const std::string_view before = rest;
            if (!rest.empty() && rest.front() == '"')
                take_quoted(index, rest, cells, column);
            else
                take_plain(rest, cells, column);
            if (rest.empty()) return index;
            column += static_cast<int>(characters_of(before)) - static_cast<int>(characters_of(rest)) + 1;
            rest.remove_prefix(1);
            if (rest.empty()) {
                cells.push_back({rest, column});
                return index;
            }
        }
    }

    void take_plain(std::string_view& rest, std::vector<LogCell>& cells, int column) const {
        const std::size_t end = std::min(rest.find(delimiter_), rest.size());
        cells.push_back({rest.substr(0, end), column});
        rest.remove_prefix(end);
    }

    // `rest` is left at the delimiter behind the cell. What stands between the closing quote and it is kept.
    void take_quoted(std::size_t& index, std::string_view& rest, std::vector<LogCell>& cells, int column) {
        std::string& text = joined_.emplace_back();
        std::size_t line = index;
        std::string_view from = rest.substr(1);
        while (!take_until_quote(from, text)) {
            if (line + 1 >= text_.count() || line - index >= longest_quoted) {
                builder_.warn(number(index), column, "a quote isn't closed; taken as it stands",
                              embedded::WarningKind::doubt);
                return take_plain(rest, cells, column);
            }
            text += ' ';
            from = text_.line(++line);
        }
        index = line;
        const std::size_t end = std::min(from.find(delimiter_), from.size());
        text += from.substr(0, end);
        rest = from.substr(end);
        cells.push_back({text, column});
    }

    /// Appends up to the closing quote and moves behind it; false at the end of the line.
    static bool take_until_quote(std::string_view& from, std::string& text) {
        for (;;) {
            const std::size_t quote = from.find('"');
            text += from.substr(0, quote);
            if (quote == std::string_view::npos) return false;
            from.remove_prefix(quote + 1);
            if (from.empty() || from.front() != '"') return true;
            text += '"';
            from.remove_prefix(1);
        }
    }

    const TextLines& text_;
    LogBuilder builder_;
    std::size_t at_ = 0;
    char delimiter_ = '\t';
    int header_line_ = 0;
    std::vector<LogCell> header_, cells_;
    std::deque<std::string> joined_; ///< texts of quoted cells; a deque, so that they stay where they are
    std::vector<std::string_view> names_;
    LogColumns columns_{{}};
};

} // namespace

Log read_delimited(const TextLines& text, const std::string& path, const LogOptions& options) {
    Log log;
    DelimitedReader(text, path, options, log).read();
    return log;
}

} // namespace formats
