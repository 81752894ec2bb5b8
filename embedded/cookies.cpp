// Cookies: the names of stored edits, black and effects.

#include "embedded/edit_data.h"
#include "host/ascii_text.h"

#include <cstdio>
#include <cstring>

using embedded::ObjectKind;

namespace embedded {

namespace {

constexpr char black_identity[] = "BLACK";

Cookie cookie_of(ObjectKind kind) {
    Cookie cookie;
    cookie.type = static_cast<char>(cookie_edit);
    cookie.object = static_cast<std::uint8_t>(kind);
    return cookie;
}

ObjectKind kind_of(const Cookie& cookie) { return static_cast<ObjectKind>(cookie.object); }

int digit_value(char c) {
    if (ascii::is_digit(c)) return c - '0';
    const char letter = ascii::lower(c);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

// Eight hex digits; false for anything else.
bool read_hash(const char* text, std::uint32_t* hash) {
    if (std::strlen(text) != 8) return false;
    for (const char* at = text; *at; ++at) {
        const int digit = digit_value(*at);
        if (digit < 0) return false;
        *hash = *hash << 4 | static_cast<std::uint32_t>(digit);
    }
    return true;
}

} // namespace

std::uint32_t fnv1a(const std::string& bytes) {
    std::uint32_t hash = 2166136261U;
    for (const char byte : bytes)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
    return hash;
}

Cookie cookie_of_edit(const std::string& identity, std::uint32_t serial) {
    Cookie cookie = cookie_of(ObjectKind::edit);
    cookie.identity[0] = fnv1a(identity);
    cookie.identity[1] = serial;
    return cookie;
}

Cookie cookie_of_black() {
    Cookie cookie = cookie_of(ObjectKind::black);
    cookie.identity[0] = fnv1a(black_identity);
    return cookie;
}

Cookie cookie_of_transition(const TransitionDescription& transition) {
    using Kind = TransitionDescription::Kind;
    switch (transition.kind) {
    case Kind::dissolve:
        return cookie_of(ObjectKind::dissolve);
    case Kind::film_dissolve:
        return cookie_of(ObjectKind::film_dissolve);
    case Kind::other:
        return cookie_of(ObjectKind::other_effect);
    case Kind::wipe:
        break;
    }
    Cookie cookie = cookie_of(ObjectKind::wipe);
    // The member is too narrow for every number that files carry.
    cookie.identity[3] = static_cast<std::uint32_t>(transition.pattern);
    cookie.pattern = static_cast<std::uint16_t>(transition.pattern);
    cookie.reversed = transition.reversed ? 1 : 0;
    return cookie;
}

} // namespace embedded

Cookie::Cookie(const char* text, bool) {
    std::uint32_t hash = 0;
    if (!text || !embedded::read_hash(text, &hash)) return;
    *this = embedded::cookie_of_black();
    if (identity[0] == hash) return;
    *this = embedded::cookie_of(ObjectKind::edit);
    identity[0] = hash;
}

LightweightString<char> Cookie::asString(bool) const {
    if (!isBlack() && embedded::kind_of(*this) != ObjectKind::edit) return {};
    char text[9];
    std::snprintf(text, sizeof text, "%08X", identity[0]);
    return text;
}

bool Cookie::isBlack() const { return embedded::kind_of(*this) == ObjectKind::black; }
bool Cookie::isEffect() const { return embedded::kind_of(*this) >= ObjectKind::dissolve; }
bool Cookie::isWipe() const { return embedded::kind_of(*this) == ObjectKind::wipe; }
bool Cookie::isDissolve() const { return embedded::kind_of(*this) == ObjectKind::dissolve; }
bool Cookie::isFilmDissolve() const { return embedded::kind_of(*this) == ObjectKind::film_dissolve; }
unsigned Cookie::wipeType() const { return identity[3]; }
Wipe_Direction Cookie::wipeDirection() const { return reversed ? wipe_reversed : wipe_forward; }

Cookie convertCookie(const Cookie& cookie, CookieType type, unsigned char) {
    Cookie converted = cookie;
    converted.type = static_cast<char>(type);
    return converted;
}
