#include "formats/key_number.h"

#include "host/ascii_text.h"

namespace formats {
namespace {

std::string capitals_without_blanks(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        // The no-break space comes along when numbers are pasted from documents.
        if (text.substr(i, 2) == "\xC2\xA0")
            ++i;
        else if (!ascii::is_white(text[i]))
            result += ascii::upper(text[i]);
    }
    return result;
}

/// How many digits, two at most, end the first `length` characters.
std::size_t digits_at_end(const std::string& text, std::size_t length) {
    std::size_t count = 0;
    while (count < 2 && count < length && ascii::is_digit(text[length - count - 1]))
        ++count;
    return count;
}

/// Takes "(c)", ".c", ",c" or "Pc" off the end and gives the digits of c; `text` stays as it is without one.
std::string take_perforation(std::string& text) {
    const bool bracket = !text.empty() && text.back() == ')';
    const std::size_t end = text.size() - (bracket ? 1 : 0);
    const std::size_t count = digits_at_end(text, end);
    if (count == 0 || end <= count) return {};
    const std::size_t mark = end - count - 1;
    const char sign = text[mark];
    if (bracket ? sign != '('
                : sign != '.' && sign != ',' && !(sign == 'P' && mark > 0 && ascii::is_digit(text[mark - 1])))
        return {};
    std::string digits = text.substr(mark + 1, count);
    text.erase(mark);
    return digits;
}

bool parts_frames(char c) { return c == '+' || c == '&' || c == '-' || c == ':'; }

/// Where the sign stands that one or two digits at the end follow; npos without one.
std::size_t frames_sign(const std::string& text) {
    const std::size_t count = digits_at_end(text, text.size());
    if (count == 0 || text.size() <= count) return std::string::npos;
    const std::size_t sign = text.size() - count - 1;
    return parts_frames(text[sign]) ? sign : std::string::npos;
}

void drop_phase_letter(std::string& text) {
    if (text.size() < 2 || !ascii::is_capital(text.back())) return;
    const std::string without = text.substr(0, text.size() - 1);
    if (frames_sign(without) != std::string::npos) text = without;
}

} // namespace

std::string plain_key_number(std::string_view written) {
    std::string text = capitals_without_blanks(written);
    drop_phase_letter(text);
    const std::string whole = text;
    const std::string perforation = take_perforation(text);
    const std::size_t sign = frames_sign(text);
    if (sign == std::string::npos && !perforation.empty()) text = whole;

    std::string frames;
    if (sign != std::string::npos) {
        frames = "+" + text.substr(sign + 1);
        if (!perforation.empty()) frames += "." + perforation;
        text.erase(sign);
    }
    std::erase(text, '-');
    return text + frames;
}

} // namespace formats
