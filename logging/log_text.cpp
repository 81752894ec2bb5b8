// The texts of logs, put right in place.

#include "base/trim_text.h"
#include "host/ascii_text.h"
#include "host/fixed_text.h"
#include "quillbrook/logging_tables.h"

#include <cstring>

namespace {

constexpr std::size_t prefix_length = 8;

const isset timecode_characters("0123456789:.;,");

} // namespace

void filmdb::fix_prefix(char* text) {
    trim_text(text);
    const std::size_t length = std::strlen(text);
    if (length < prefix_length) std::memset(text + length, '_', prefix_length - length);
    text[prefix_length] = '\0';
    ascii::make_upper(text);
}

void loggingdb::drop_fix(char* text, int drop) {
    for (char* c = text; *c; ++c) {
        if (!ascii::is_digit(*c)) *c = ':';
    }
    if (char* last = std::strrchr(text, ':')) *last = drop ? ';' : '.';
}

void loggingdb::input_clean(char* text) {
    std::size_t length = std::strlen(text);
    while (length > 0 && ascii::is_white(text[length - 1]))
        --length;
    text[length] = '\0';

    char clean[256];
    std::size_t used = 0;
    for (const char* c = text; *c && used < sizeof clean - 1; ++c) {
        if (*c != '"') clean[used++] = *c;
    }
    std::memcpy(text, clean, used);
    text[used] = '\0';
}

int loggingdb::tc_clean(char* text) {
    int digits = 0;
    bool foreign = false;
    for (const char* c = text; *c; ++c) {
        if (ascii::is_digit(*c)) ++digits;
        if (!timecode_characters(static_cast<unsigned char>(*c))) foreign = true;
    }
    if (foreign || digits == 0) *text = '\0';
    return foreign ? 1 : 0;
}
