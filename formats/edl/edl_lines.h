#pragma once
// The lines of a CMX 3600 edit list, and the words that stand on them.

#include "formats/text_lines.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace formats::edl {

/// A line without its end and the blanks around it. Views point into the text that was split.
struct Line {
    int number = 0; ///< from 1, as editors count: LF, CR and CR LF each end one line
    std::string_view text;
};

enum class LineKind { blank, title, fcm, split, event, speed, audio, comment, unknown };

/// The lines of a text, one after the other; control characters count as blanks, so the mark that ends old files leaves
/// nothing behind.
class LineReader {
public:
    explicit LineReader(std::string_view bytes);
    /// False behind the last line.
    bool next(Line& line);

private:
    std::string_view bytes_;
    LineEnds ends_;
    std::size_t begin_ = 0;
    int number_ = 0;
};

/// All lines.
std::vector<Line> split_lines(std::string_view bytes);
LineKind kind_of(std::string_view line);

std::string_view trimmed(std::string_view text);
using Words = std::vector<std::string_view>;
Words words_of(std::string_view text);
/// The same into `words`, whose room is used again.
void split_words(std::string_view text, Words& words);
/// What follows `head`, without blanks around it, where the text begins with it in any case.
std::optional<std::string_view> behind(std::string_view text, std::string_view head);
bool all_digits(std::string_view text);
/// A whole number of at most 9 digits.
std::optional<int> whole_number(std::string_view text);

} // namespace formats::edl
