#include "base/format_text.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstring>

namespace {

constexpr int unset = -1;

/// What stands between a percent sign and its letter.
struct Form {
    bool left = false;
    bool zeros = false;
    int width = 0;
    int precision = unset;
};

const char* read_number(const char* format, int& number) {
    for (number = 0; ascii::is_digit(*format); ++format)
        number = number * 10 + (*format - '0');
    return format;
}

/// The result is the place of the letter.
const char* read_form(const char* format, Form& form) {
    for (; *format == '-' || *format == '0'; ++format)
        (*format == '-' ? form.left : form.zeros) = true;
    format = read_number(format, form.width);
    return *format == '.' ? read_number(format + 1, form.precision) : format;
}

class Writer {
public:
    Writer(char* out, std::size_t size) : out_(out), at_(out), last_(out + size - 1) {}

    void put(const char* text, std::size_t length) {
        length = std::min(length, static_cast<std::size_t>(last_ - at_));
        std::memcpy(at_, text, length);
        at_ += length;
    }
    void fill(char c, int count) {
        if (count <= 0) return;
        char* const end = at_ + std::min<std::ptrdiff_t>(count, last_ - at_);
        std::fill(at_, end, c);
        at_ = end;
    }
    void put_padded(const char* text, std::size_t length, const Form& form) {
        const int padding = form.width - static_cast<int>(std::min<std::size_t>(length, INT_MAX));
        if (!form.left) fill(' ', padding);
        put(text, length);
        if (form.left) fill(' ', padding);
    }
    void put_number(int value, const Form& form);
    std::size_t close() {
        *at_ = '\0';
        return static_cast<std::size_t>(at_ - out_);
    }

private:
    char* const out_;
    char* at_;
    char* const last_;
};

// Zeros fill the width only where no precision says how many digits there are.
void Writer::put_number(int value, const Form& form) {
    char digits[12];
    const bool negative = value < 0;
    const unsigned magnitude = negative ? 0U - static_cast<unsigned>(value) : static_cast<unsigned>(value);
    const bool empty = value == 0 && form.precision == 0;
    const int length =
        empty ? 0 : static_cast<int>(std::to_chars(digits, digits + sizeof digits, magnitude).ptr - digits);
    const bool to_width = form.zeros && !form.left && form.precision == unset;
    const int zeros = std::max(0, (to_width ? form.width - negative : form.precision) - length);
    const int padding = form.width - negative - zeros - length;
    if (!form.left) fill(' ', padding);
    if (negative) put("-", 1);
    fill('0', zeros);
    put(digits, static_cast<std::size_t>(length));
    if (form.left) fill(' ', padding);
}

/// Values in the order in which a format asks for them.
class Values {
public:
    explicit Values(va_list values) { va_copy(values_, values); }
    ~Values() { va_end(values_); }
    Values(const Values&) = delete;
    Values& operator=(const Values&) = delete;

    int number() { return va_arg(values_, int); }
    const char* text() { return va_arg(values_, const char*); }

private:
    va_list values_;
};

std::size_t shown_length(const char* text, const Form& form) {
    return form.precision == unset ? std::strlen(text) : ::strnlen(text, static_cast<std::size_t>(form.precision));
}

/// False for what this doesn't write.
bool put_value(Writer& writer, char letter, const Form& form, Values& values) {
    if (letter == 's') {
        const char* const text = values.text();
        if (text) writer.put_padded(text, shown_length(text, form), form);
        return text != nullptr;
    }
    if (letter == 'd') {
        writer.put_number(values.number(), form);
    } else if (letter == 'c') {
        const char byte = static_cast<char>(values.number());
        writer.put_padded(&byte, 1, form);
    } else if (letter == '%') {
        writer.put(&letter, 1);
    } else {
        return false;
    }
    return true;
}

bool put_all(Writer& writer, const char* format, Values& values) {
    for (;; ++format) {
        const char* const literal = format;
        while (*format != '\0' && *format != '%')
            ++format;
        writer.put(literal, static_cast<std::size_t>(format - literal));
        if (*format == '\0') return true;
        Form form;
        format = read_form(format + 1, form);
        if (!put_value(writer, *format, form, values)) return false;
    }
}

} // namespace

std::size_t format_text(char* out, std::size_t size, const char* format, va_list values) {
    Writer writer(out, size);
    Values taken(values);
    if (put_all(writer, format, taken)) return writer.close();
    const int length = std::vsnprintf(out, size, format, values);
    if (length < 0) *out = '\0';
    return length < 0 ? 0 : std::min(static_cast<std::size_t>(length), size - 1);
}
