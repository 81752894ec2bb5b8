#include "documents/html_text.h"

#include "documents/characters.h"

#include <algorithm>
#include <iterator>

namespace documents {
namespace {

bool is_name_character(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

struct Special {
    char character;
    const char* text;
};
constexpr Special specials[] = {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&#39;"}};

/// A character that stands for itself wherever it is.
bool is_plain(char c) { return c >= ' ' && c < 0x7F && c != '&' && c != '<' && c != '>' && c != '"' && c != '\''; }

} // namespace

std::string html_text(std::string_view text) {
    std::string out;
    put_html_text(out, text);
    return out;
}

void put_html_text(std::string& out, std::string_view text) {
    if (std::all_of(text.begin(), text.end(), is_plain)) {
        out += text;
        return;
    }
    for (const char c : clean(text)) {
        const auto* const special = std::find_if(std::begin(specials), std::end(specials),
                                                 [c](const Special& one) { return one.character == c; });
        if (special != std::end(specials))
            out += special->text;
        else
            out += c;
    }
}

// A style element ends at "</", wherever that stands.
std::string css_string(std::string_view text) {
    std::string out = "\"";
    for (const char c : clean(text)) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '<') {
            out += "\\3c ";
        } else {
            out += c;
        }
    }
    return out + '"';
}

std::string html_name(std::string_view text) {
    std::string out;
    for (const char c : text)
        out += is_name_character(c) ? c : '-';
    return out;
}

} // namespace documents
