#include "formats/plain_json.h"

#include "host/ascii_text.h"
#include "host/decimal_number.h"

#include <array>
#include <cstdint>
#include <string>

namespace formats {
namespace {

constexpr std::array<bool, 256> make_plain_characters() {
    std::array<bool, 256> plain{};
    for (std::size_t byte = ' '; byte < plain.size(); ++byte)
        plain[byte] = byte != '"' && byte != '\\';
    return plain;
}

/// Those of a string that stand for themselves.
constexpr std::array<bool, 256> plain_characters = make_plain_characters();

constexpr std::string_view escaped = "\"\\/bfnrt";
constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";

void append_utf8(std::string& out, unsigned code) {
    const auto put = [&out](unsigned byte) { out += static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        put(0x80 | (code & 0x3F));
    } else {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

class PlainReader {
public:
    PlainReader(std::string_view text, JsonTree& tree)
        : at_(text.data()), end_(text.data() + text.size()), tree_(tree) {}

    bool read() {
        if (!value()) return false;
        skip_blanks();
        return at_ == end_;
    }

private:
    using Size = rapidjson::SizeType;

    char peek() const { return at_ != end_ ? *at_ : '\0'; }
    bool take(char wanted) {
        if (peek() != wanted) return false;
        ++at_;
        return true;
    }
    void skip_blanks() {
        while (at_ != end_ && (*at_ == ' ' || *at_ == '\n' || *at_ == '\r' || *at_ == '\t'))
            ++at_;
    }
    bool take_behind_blanks(char wanted) {
        skip_blanks();
        return take(wanted);
    }
    bool word(std::string_view wanted) {
        if (!std::string_view(at_, static_cast<std::size_t>(end_ - at_)).starts_with(wanted)) return false;
        at_ += wanted.size();
        return true;
    }

    bool value();
    bool object();
    bool array();
    bool string();
    bool string_with_escapes(const char* first);
    bool escape(std::string& out);
    bool number();
    bool number_with_fraction(const char* first);
    bool digits() {
        const char* const first = at_;
        while (at_ != end_ && ascii::is_digit(*at_))
            ++at_;
        return at_ != first;
    }

    const char* at_;
    const char* const end_;
    JsonTree& tree_;
    unsigned depth_ = 0;
};

bool PlainReader::value() {
    skip_blanks();
    switch (peek()) {
    case '"':
        return string();
    case '{':
        return object();
    case '[':
        return array();
    case 't':
        return word("true") && tree_.Bool(true);
    case 'f':
        return word("false") && tree_.Bool(false);
    case 'n':
        return word("null") && tree_.Null();
    default:
        return number();
    }
}

bool PlainReader::object() {
    ++at_;
    if (++depth_ > json_depth_limit || !tree_.StartObject()) return false;
    Size members = 0;
    if (!take_behind_blanks('}')) {
        do {
            skip_blanks();
            if (peek() != '"' || !string() || !take_behind_blanks(':') || !value()) return false;
            ++members;
        } while (take_behind_blanks(','));
        if (!take('}')) return false;
    }
    --depth_;
    return tree_.EndObject(members);
}

bool PlainReader::array() {
    ++at_;
    if (++depth_ > json_depth_limit || !tree_.StartArray()) return false;
    Size elements = 0;
    if (!take_behind_blanks(']')) {
        do {
            if (!value()) return false;
            ++elements;
        } while (take_behind_blanks(','));
        if (!take(']')) return false;
    }
    --depth_;
    return tree_.EndArray(elements);
}

bool PlainReader::string() {
    const char* const first = ++at_;
    while (at_ != end_ && plain_characters[static_cast<unsigned char>(*at_)])
        ++at_;
    if (peek() == '\\') return string_with_escapes(first);
    const auto length = static_cast<Size>(at_ - first);
    return take('"') && tree_.String(first, length, false);
}

bool PlainReader::string_with_escapes(const char* first) {
    std::string text(first, at_);
    while (!take('"')) {
        if (take('\\')) {
            if (!escape(text)) return false;
        } else if (plain_characters[static_cast<unsigned char>(peek())]) {
            text += *at_++;
        } else {
            return false;
        }
    }
    return tree_.String(text.data(), static_cast<Size>(text.size()), true);
}

bool PlainReader::escape(std::string& out) {
    if (const std::size_t known = escaped.find(peek()); known != std::string_view::npos) {
        out += meanings[known];
        ++at_;
        return true;
    }
    constexpr std::ptrdiff_t hex_digits = 4;
    unsigned code = 0;
    if (!take('u') || end_ - at_ < hex_digits) return false;
    if (std::from_chars(at_, at_ + hex_digits, code, 16).ptr != at_ + hex_digits) return false;
    at_ += hex_digits;
    const bool surrogate = code >= 0xD800 && code < 0xE000;
    if (!surrogate) append_utf8(out, code);
    return !surrogate;
}

bool PlainReader::number() {
    const char* const first = at_;
    take('-');
    const char* const whole = at_;
    if (!digits() || (*whole == '0' && at_ - whole > 1)) return false;
    if (peek() == '.' || peek() == 'e' || peek() == 'E') return number_with_fraction(first);
    std::int64_t value = 0;
    return std::from_chars(first, at_, value).ec == std::errc() && tree_.Int64(value);
}

// Most are whole, as 24.0.
bool PlainReader::number_with_fraction(const char* first) {
    if (take('.') && !digits()) return false;
    if (take('e') || take('E')) {
        if (!take('-')) take('+');
        if (!digits()) return false;
    }
    double value = 0;
    return decimal::read(first, at_, value).ec == std::errc() && tree_.Double(value);
}

} // namespace

bool read_plain_json(std::string_view text, JsonTree& tree) { return PlainReader(text, tree).read(); }

} // namespace formats
