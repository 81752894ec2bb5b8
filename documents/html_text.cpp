#include "documents/html_text.h"

#include "documents/characters.h"

namespace documents {
namespace {

bool is_name_character(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

} // namespace

std::string html_text(std::string_view text) {
    std::string plain = clean(text);
    if (plain.find_first_of("&<>\"'") == std::string::npos) return plain;
    std::string out;
    for (const char c : plain) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&#39;";
            break;
        default:
            out += c;
        }
    }
    return out;
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
