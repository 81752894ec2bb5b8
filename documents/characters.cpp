#include "documents/characters.h"

#include "embedded/visible_text.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace documents {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD"; // U+FFFD

struct Span {
    char32_t first, last;
};

// East Asian wide and full-width characters, and emoji.
constexpr Span wide[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x23E9, 0x23EC},   {0x25FD, 0x25FE},
    {0x2614, 0x2615},   {0x2648, 0x2653},   {0x26AA, 0x26AB},   {0x2705, 0x2705},   {0x274C, 0x274C},
    {0x2753, 0x2755},   {0x2795, 0x2797},   {0x2B1B, 0x2B1C},   {0x2E80, 0x303E},   {0x3041, 0x33FF},
    {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},   {0xA960, 0xA97F},   {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},   {0xFE10, 0xFE19},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
    {0x16FE0, 0x18AFF}, {0x1B000, 0x1B2FF}, {0x1F004, 0x1F004}, {0x1F18E, 0x1F18E}, {0x1F191, 0x1F19A},
    {0x1F200, 0x1F320}, {0x1F32D, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x1FA70, 0x1FAFF},
    {0x20000, 0x3FFFD},
};

// Combining marks of the scripts that names come in, and characters without a width.
constexpr Span narrow[] = {
    {0x00AD, 0x00AD}, {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x05BF, 0x05BF},   {0x05C1, 0x05C2},
    {0x05C4, 0x05C5}, {0x05C7, 0x05C7}, {0x0610, 0x061A}, {0x061C, 0x061C}, {0x064B, 0x065F},   {0x0670, 0x0670},
    {0x06D6, 0x06DC}, {0x06DF, 0x06E4}, {0x06E7, 0x06E8}, {0x06EA, 0x06ED}, {0x0711, 0x0711},   {0x0730, 0x074A},
    {0x07A6, 0x07B0}, {0x0816, 0x082D}, {0x0859, 0x085B}, {0x08D3, 0x0902}, {0x093A, 0x093A},   {0x093C, 0x093C},
    {0x0941, 0x0948}, {0x094D, 0x094D}, {0x0951, 0x0957}, {0x0962, 0x0963}, {0x0981, 0x0981},   {0x09BC, 0x09BC},
    {0x09C1, 0x09C4}, {0x09CD, 0x09CD}, {0x0A01, 0x0A02}, {0x0A3C, 0x0A51}, {0x0A81, 0x0A82},   {0x0ABC, 0x0ABC},
    {0x0AC1, 0x0ACD}, {0x0B3C, 0x0B3F}, {0x0B82, 0x0B82}, {0x0BC0, 0x0BC0}, {0x0BCD, 0x0BCD},   {0x0C3E, 0x0C40},
    {0x0C46, 0x0C56}, {0x0D41, 0x0D44}, {0x0E31, 0x0E31}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E},   {0x0EB1, 0x0EB1},
    {0x0EB4, 0x0EBC}, {0x0EC8, 0x0ECD}, {0x0F71, 0x0F84}, {0x102D, 0x1037}, {0x1039, 0x103A},   {0x1160, 0x11FF},
    {0x135D, 0x135F}, {0x17B4, 0x17B5}, {0x17B7, 0x17BD}, {0x17C6, 0x17D3}, {0x180B, 0x180E},   {0x1AB0, 0x1AFF},
    {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x206F}, {0x20D0, 0x20F0},   {0x302A, 0x302D},
    {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}, {0xE0000, 0xE01EF},
};

template <std::size_t n> bool lies_in(const Span (&spans)[n], char32_t code) {
    const Span* const found = std::lower_bound(std::begin(spans), std::end(spans), code,
                                               [](const Span& span, char32_t c) { return span.last < c; });
    return found != std::end(spans) && found->first <= code;
}

/// Bytes of a character by its first one; 0 where none begins so.
std::size_t bytes_of(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead < 0xC2) return 0;
    if (lead < 0xE0) return 2;
    return lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
}

/// Neither too long a form, nor half of a pair, nor one of the two codes that no document may hold.
bool is_character(char32_t code, std::size_t bytes) {
    constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code >= least[bytes] && code <= 0x10FFFF && !surrogate && (code & 0xFFFE) != 0xFFFE;
}

std::string as_utf8(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const CodePoint next = next_code(text);
        const bool kept = next.code != 0xFFFD || next.bytes == replacement.size();
        out += kept ? text.substr(0, next.bytes) : replacement;
        text.remove_prefix(next.bytes);
    }
    return out;
}

bool is_plain_ascii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 0x7F; });
}

} // namespace

CodePoint next_code(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t bytes = bytes_of(lead);
    if (bytes == 1) return {lead, 1};
    if (bytes == 0 || bytes > text.size()) return {};
    char32_t code = lead & (0x7FU >> bytes);
    for (std::size_t i = 1; i < bytes; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0U) != 0x80) return {};
        code = code << 6U | (byte & 0x3FU);
    }
    return is_character(code, bytes) ? CodePoint{code, bytes} : CodePoint{};
}

std::string clean(std::string_view text) {
    if (is_plain_ascii(text)) return std::string(text);
    return embedded::visible(as_utf8(text));
}

int display_width(char32_t code) {
    if (code < 0xAD) return 1;
    if (lies_in(narrow, code)) return 0;
    return lies_in(wide, code) ? 2 : 1;
}

std::size_t display_width(std::string_view text) {
    if (is_plain_ascii(text)) return text.size();
    std::size_t width = 0;
    while (!text.empty()) {
        const CodePoint next = next_code(text);
        width += static_cast<std::size_t>(display_width(next.code));
        text.remove_prefix(next.bytes);
    }
    return width;
}

// All marks of direction begin with the same byte, which few texts hold.
std::string closed_directions(std::string text) {
    if (text.find('\xE2') == std::string::npos) return text;
    constexpr char32_t first_embedding = 0x202A, pop = 0x202C, last_override = 0x202E;
    constexpr char32_t first_isolate = 0x2066, last_isolate = 0x2068, pop_isolate = 0x2069;
    std::vector<const char*> open;
    for (std::string_view rest = text; !rest.empty();) {
        const CodePoint next = next_code(rest);
        const bool closes = next.code == pop || next.code == pop_isolate;
        if (closes && !open.empty())
            open.pop_back();
        else if (next.code >= first_isolate && next.code <= last_isolate)
            open.push_back("\xE2\x81\xA9");
        else if (next.code >= first_embedding && next.code <= last_override && !closes)
            open.push_back("\xE2\x80\xAC");
        rest.remove_prefix(next.bytes);
    }
    for (auto end = open.rbegin(); end != open.rend(); ++end)
        text += *end;
    return text;
}

} // namespace documents
