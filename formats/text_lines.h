#pragma once
// The lines of a text file, whatever program wrote it.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

/// A text as UTF-8 and its lines without their ends. The lines point into the text, so it stays where it is.
class TextLines {
public:
    /// Line ends are LF, CR LF or CR, also mixed. A byte order mark goes. Text that isn't UTF-8 is taken as
    /// Latin-1, and `was_latin` tells.
    explicit TextLines(std::string_view bytes);
    TextLines(const TextLines&) = delete;
    TextLines& operator=(const TextLines&) = delete;

    std::size_t count() const { return lines_.size(); }
    /// Empty behind the last line.
    std::string_view line(std::size_t index) const {
        return index < lines_.size() ? lines_[index] : std::string_view();
    }
    bool was_latin() const { return was_latin_; }
    /// Why the bytes are no text; empty where they are.
    const char* trouble() const { return trouble_.c_str(); }

private:
    void split();

    std::string text_;
    std::vector<std::string_view> lines_;
    bool was_latin_ = false;
    std::string trouble_;
};

/// Where lines end, asked for from the front to the back; LF, CR LF and CR each end one.
class LineEnds {
public:
    explicit LineEnds(std::string_view bytes) : bytes_(bytes) {}
    /// The end of the line that begins at `begin`, which never goes back.
    std::size_t end_of_line(std::size_t begin) {
        if (feed_ < begin || !looked_) feed_ = bytes_.find('\n', begin);
        if (return_ < begin || !looked_) return_ = bytes_.find('\r', begin);
        looked_ = true;
        return std::min({feed_, return_, bytes_.size()});
    }
    /// Behind a line that ends at `end`; behind the last line as well.
    std::size_t behind(std::size_t end) const { return end + (bytes_.substr(end, 2) == "\r\n" ? 2 : 1); }

private:
    std::string_view bytes_;
    std::size_t feed_ = 0; ///< the next LF, `npos` behind the last; of CR likewise
    std::size_t return_ = 0;
    bool looked_ = false;
};

/// Which line is longer than is read, in words; empty where none is.
std::string fault_of_lines(std::string_view bytes);
bool is_utf8(std::string_view text);
/// Characters of a UTF-8 text: bytes but those that continue one.
std::size_t characters_of(std::string_view text);
/// Without blanks, tabs and no-break spaces at its ends.
std::string_view without_blanks_around(std::string_view text);
/// Letters A to Z only, so it is the same in any locale.
std::string lower_case(std::string_view text);

} // namespace formats
