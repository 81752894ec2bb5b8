#include "base/substitute.h"

#include <string_view>

LightweightString<wchar_t> substitute(LightweightString<wchar_t> text, const wchar_t* pattern,
                                      const LightweightString<wchar_t>& value) {
    const std::wstring_view wanted(pattern);
    if (wanted.empty()) return text;
    LightweightString<wchar_t> result;
    std::wstring_view rest = text.view();
    for (std::size_t at = rest.find(wanted); at != rest.npos; at = rest.find(wanted)) {
        result += rest.substr(0, at);
        result += value;
        rest.remove_prefix(at + wanted.size());
    }
    result += rest;
    return result;
}
