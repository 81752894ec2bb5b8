#include "tool/json_writer.h"

#include <cmath>

namespace tool {
namespace {

constexpr wchar_t replacement_character = 0xFFFD;

/// Bytes that are no characters stand in wide text among the surrogates.
std::string clean(const LightweightString<wchar_t>& text) {
    std::wstring characters(text.view());
    for (wchar_t& c : characters)
        if (c >= 0xD800 && c <= 0xDFFF) c = replacement_character;
    return std::string(toUTF8(LightweightString<wchar_t>(std::wstring_view(characters))).view());
}

} // namespace

void JsonWriter::add(std::string_view text) {
    const std::string plain = clean(fromUTF8(LightweightString<char>(text)));
    out_.String(plain.data(), static_cast<rapidjson::SizeType>(plain.size()));
}

void JsonWriter::put(const char* key, std::int64_t number) {
    out_.Key(key);
    out_.Int64(number);
}

void JsonWriter::put(const char* key, const LightweightString<wchar_t>& text) {
    const std::string plain = clean(text);
    out_.Key(key);
    out_.String(plain.data(), static_cast<rapidjson::SizeType>(plain.size()));
}

void JsonWriter::put(const char* key, std::string_view text) { put(key, fromUTF8(LightweightString<char>(text))); }

void JsonWriter::put_null(const char* key) {
    out_.Key(key);
    out_.Null();
}

void JsonWriter::put_number(const char* key, double number) {
    if (!std::isfinite(number)) return put_null(key);
    out_.Key(key);
    out_.Double(number);
}

} // namespace tool
