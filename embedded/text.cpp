#include "host/text.h"

#include <algorithm>
#include <charconv>

namespace {

// A byte that is no part of a character stands in wide text as this value plus the byte, among the values
// that no character has, so that it finds its way back.
constexpr std::uint32_t stray_byte = 0xDC00;

using Bytes = std::basic_string<char, std::char_traits<char>, host_allocator<char>>;
using Wide = std::basic_string<wchar_t, std::char_traits<wchar_t>, host_allocator<wchar_t>>;

/// What a first byte says of its character: how many bytes follow, its own bits, the least value.
struct Lead {
    unsigned following;
    std::uint32_t bits;
    std::uint32_t least;
};

Lead lead_of(unsigned char byte) {
    if (byte >= 0xC2 && byte <= 0xDF) return {1, byte & 0x1FU, 0x80};
    if (byte >= 0xE0 && byte <= 0xEF) return {2, byte & 0x0FU, 0x800};
    if (byte >= 0xF0 && byte <= 0xF4) return {3, byte & 0x07U, 0x10000};
    return {0, byte, byte};
}

bool is_character(std::uint32_t value, std::uint32_t least) {
    return value >= least && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

/// Takes one character, or one stray byte, from the front of `text`.
std::uint32_t take_character(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text.front());
    const Lead lead = lead_of(first);
    std::uint32_t value = lead.bits;
    std::size_t used = 1;
    while (used < text.size() && used <= lead.following && (text[used] & 0xC0) == 0x80) {
        value = value << 6 | (static_cast<unsigned char>(text[used]) & 0x3FU);
        ++used;
    }
    const bool whole = used == lead.following + 1 && (first < 0x80 || lead.following > 0);
    if (whole && is_character(value, lead.least)) {
        text.remove_prefix(used);
        return value;
    }
    text.remove_prefix(1);
    return stray_byte + first;
}

void put_byte(Bytes& out, std::uint32_t value) { out.push_back(static_cast<char>(value & 0xFF)); }
void put_following(Bytes& out, std::uint32_t value) { put_byte(out, 0x80 | (value & 0x3F)); }

void put_character(Bytes& out, std::uint32_t value) {
    if (value < 0x80) {
        put_byte(out, value);
    } else if (value >= stray_byte + 0x80 && value <= stray_byte + 0xFF) {
        put_byte(out, value - stray_byte);
    } else if (value < 0x800) {
        put_byte(out, 0xC0 | value >> 6);
        put_following(out, value);
    } else if (value < 0x10000) {
        put_byte(out, 0xE0 | value >> 12);
        put_following(out, value >> 6);
        put_following(out, value);
    } else if (value <= 0x10FFFF) {
        put_byte(out, 0xF0 | value >> 18);
        put_following(out, value >> 12);
        put_following(out, value >> 6);
        put_following(out, value);
    } else {
        put_character(out, 0xFFFD);
    }
}

template <class T> LightweightString<T> decimal(std::int64_t value) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    T text[sizeof digits] = {};
    std::copy(digits, end, text);
    return LightweightString<T>(text, static_cast<std::size_t>(end - digits));
}

/// Names and the like need no block of their own while they are converted.
constexpr std::size_t usual_text = 256;

LightweightString<wchar_t> widen(std::string_view text) {
    wchar_t usual[usual_text];
    Wide longer;
    if (text.size() > usual_text) longer.resize(text.size());
    wchar_t* const wide = longer.empty() ? usual : longer.data();
    wchar_t* end = wide;
    while (!text.empty()) {
        const auto byte = static_cast<unsigned char>(text.front());
        if (byte < 0x80) {
            text.remove_prefix(1);
            *end++ = static_cast<wchar_t>(byte);
        } else {
            *end++ = static_cast<wchar_t>(take_character(text));
        }
    }
    return LightweightString<wchar_t>(wide, static_cast<std::size_t>(end - wide));
}

/// What is the same in both widths: ASCII of the usual length. False for anything else.
bool narrow_plain(std::wstring_view text, char (&bytes)[usual_text]) {
    if (text.size() > usual_text) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (static_cast<std::uint32_t>(text[i]) >= 0x80) return false;
        bytes[i] = static_cast<char>(text[i]);
    }
    return true;
}

} // namespace

LightweightString<char> toUTF8(const LightweightString<wchar_t>& text) {
    char plain[usual_text];
    if (narrow_plain(text.view(), plain)) return LightweightString<char>(plain, text.size());
    Bytes bytes;
    bytes.reserve(text.size());
    for (const wchar_t value : text.view())
        put_character(bytes, static_cast<std::uint32_t>(value));
    return LightweightString<char>(bytes.data(), bytes.size());
}

LightweightString<wchar_t> fromUTF8(const char* text, int length) {
    if (!text) return {};
    return widen(length < 0 ? std::string_view(text) : std::string_view(text, static_cast<std::size_t>(length)));
}

LightweightString<wchar_t> fromUTF8(const LightweightString<char>& text) { return widen(text.view()); }

LightweightString<char> StringFromInteger(int value) { return decimal<char>(value); }

namespace Qb {

LightweightString<wchar_t> WStringFromAscii(const char* text) { return fromUTF8(text, -1); }

LightweightString<wchar_t> WStringFromInteger(std::int64_t value) { return decimal<wchar_t>(value); }

void Memset(void* target, unsigned char value, unsigned int count) {
    if (count > 0) std::memset(target, value, count);
}

} // namespace Qb

isset::isset(const char* members) {
    for (const char* c = members ? members : ""; *c; ++c)
        member_[static_cast<unsigned char>(*c)] = true;
}

int isset::operator()(unsigned char c) const { return member_[c] ? 1 : 0; }

GrowString& GrowString::append(const char* text) {
    if (text) text_.append(text);
    return *this;
}
