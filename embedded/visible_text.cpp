#include "embedded/visible_text.h"

#include <algorithm>
#include <array>
#include <atomic>

namespace embedded {
namespace {

std::atomic<std::size_t> longest_name{65536};

struct Sign {
    std::size_t length = 0; ///< bytes that it stands for; 0: none
    std::string_view text;
};

constexpr std::string_view line_end_sign = "\xE2\x90\xA4";    // U+2424
constexpr std::string_view delete_sign = "\xE2\x90\xA1";      // U+2421
constexpr std::string_view replacement_sign = "\xEF\xBF\xBD"; // U+FFFD

constexpr unsigned char byte_at(std::string_view text, std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

// U+0080 to U+009F, of which U+0085 is a line end; U+2028 and U+2029 part lines and paragraphs.
Sign sign_of_wide_control(std::string_view text, std::size_t at) {
    const unsigned char first = byte_at(text, at), second = byte_at(text, at + 1), third = byte_at(text, at + 2);
    if (first == 0xC2 && second == 0x85) return {2, line_end_sign};
    if (first == 0xC2 && second >= 0x80 && second <= 0x9F) return {2, replacement_sign};
    if (first == 0xE2 && second == 0x80 && (third == 0xA8 || third == 0xA9)) return {3, line_end_sign};
    return {};
}

/// What bytes may begin, as bits. Parting bytes are control characters as well.
enum : unsigned char { begins_control = 1, begins_page_mark = 2 };

constexpr std::array<unsigned char, 256> make_beginnings() {
    std::array<unsigned char, 256> table{};
    for (std::size_t byte = 0; byte < ' '; ++byte)
        table[byte] = begins_control;
    for (const unsigned byte : {0x7FU, 0xC2U, 0xE2U})
        table[byte] = begins_control;
    table['|'] = begins_page_mark;
    return table;
}

constexpr std::array<unsigned char, 256> beginnings = make_beginnings();

/// Of all its bytes.
unsigned beginnings_in(std::string_view text) {
    unsigned found = 0;
    for (const char c : text)
        found |= beginnings[static_cast<unsigned char>(c)];
    return found;
}

/// 1 for what a control character, a page mark or an escape begins with; tabs and line ends, which part fields and
/// rows, aren't meant.
constexpr unsigned doubt_of(unsigned char byte) {
    const bool other_control = (byte < ' ') & (byte != '\t') & (byte != '\n');
    const bool control = other_control | (byte == 0x7F) | (byte == 0xC2) | (byte == 0xE2);
    return (control | (byte == '|') | (byte == '\\')) ? 1U : 0U;
}

// Whole files go through here; blocks of one size are what compilers look through many bytes at a time.
bool any_doubtful(std::string_view text) {
    constexpr std::size_t block = 64;
    for (; text.size() >= block; text.remove_prefix(block)) {
        unsigned char found = 0;
        for (std::size_t i = 0; i < block; ++i)
            found = static_cast<unsigned char>(found | doubt_of(static_cast<unsigned char>(text[i])));
        if (found != 0) return true;
    }
    return std::any_of(text.begin(), text.end(), [](char c) { return doubt_of(static_cast<unsigned char>(c)) != 0; });
}

bool may_hold_control(std::string_view text) { return (beginnings_in(text) & begins_control) != 0; }

void put_sign(std::string& out, unsigned char control) {
    if (control == 0x7F) {
        out += delete_sign;
    } else {
        out += "\xE2\x90"; // U+2400 and the code
        out += static_cast<char>(0x80 + control);
    }
}

// Between two characters, where the text is UTF-8.
std::size_t end_of_cut(std::string_view text, std::size_t longest) {
    std::size_t end = longest;
    while (end > 0 && longest - end < 4 && (byte_at(text, end) & 0xC0) == 0x80)
        --end;
    return end;
}

} // namespace

bool make_visible(std::string& text) {
    if (!may_hold_control(text)) return false;
    std::string out;
    bool found = false;
    for (std::size_t at = 0; at < text.size();) {
        const unsigned char byte = byte_at(text, at);
        const Sign wide = sign_of_wide_control(text, at);
        const bool control = byte < ' ' || byte == 0x7F;
        found = found || control || wide.length > 0;
        if (control)
            put_sign(out, byte);
        else if (wide.length > 0)
            out += wide.text;
        else
            out += text[at];
        at += wide.length > 0 ? wide.length : 1;
    }
    if (found) text = std::move(out);
    return found;
}

std::string visible(std::string text) {
    make_visible(text);
    return text;
}

void set_longest_name(std::size_t bytes) { longest_name = bytes; }

bool is_surely_plain(std::string_view name) {
    return name.size() <= longest_name && (beginnings_in(name) & (begins_control | begins_page_mark)) == 0;
}

// A name is no longer than its file; with a longest name that short, each has to be looked at.
bool are_surely_plain(std::string_view lines) {
    constexpr std::size_t longest_line = 4096;
    if (longest_name < longest_line) return false;
    std::size_t from = 0;
    for (std::size_t end = lines.find('\n'); end != std::string_view::npos; end = lines.find('\n', from)) {
        if (end - from > longest_line) return false;
        from = end + 1;
    }
    return lines.size() - from <= longest_line && !any_doubtful(lines);
}

Received receive(std::string& name) {
    Received what;
    what.cut = name.size() > longest_name;
    if (what.cut) name.resize(end_of_cut(name, longest_name));
    what.control_characters = make_visible(name);
    what.page_marks = name.find("|d") != std::string::npos || name.find("|p") != std::string::npos;
    return what;
}

Warnings told(const Received& what, const std::string& owner, const std::string& name) {
    constexpr std::size_t shown_bytes = 64;
    const std::string shown = name.size() <= shown_bytes ? name : name.substr(0, end_of_cut(name, shown_bytes)) + "...";
    const std::string head = owner + " \"" + shown + "\": ";
    Warnings lines;
    if (what.control_characters)
        lines.push_back({WarningKind::text, head + "control characters are shown by signs in their place"});
    if (what.page_marks)
        lines.push_back({WarningKind::text, head + "lists print \"|d\" as the date and \"|p\" as the page number"});
    if (what.cut)
        lines.push_back({WarningKind::dropped, head + "cut after " + std::to_string(longest_name) + " bytes"});
    return lines;
}

void receive(std::string& name, const std::string& owner, Warnings& warnings) {
    if (is_surely_plain(name)) return;
    const Received what = receive(name);
    if (what.is_plain()) return;
    for (Warning& line : told(what, owner, name))
        warnings.push_back(std::move(line));
}

} // namespace embedded
