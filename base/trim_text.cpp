#include "base/trim_text.h"

#include "host/ascii_text.h"

#include <cstring>

void trim_text(char* text) {
    if (!text) return;
    const std::string_view kept = ascii::trimmed(text);
    std::memmove(text, kept.data(), kept.size());
    text[kept.size()] = '\0';
}
