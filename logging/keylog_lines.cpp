#include "logging/keylog_lines.h"

namespace {

int next_character(std::FILE* file) {
    const int c = std::getc(file);
    if (c != '\r') return c;
    const int behind = std::getc(file);
    if (behind == '\n') return behind;
    if (behind != EOF) std::ungetc(behind, file);
    return c;
}

} // namespace

line_read read_line(std::FILE* file, char* out, int limit) {
    line_read read;
    int used = 0;
    while (used < limit - 1) {
        const int c = next_character(file);
        if (c == EOF) {
            read.at_end = true;
            break;
        }
        out[used++] = static_cast<char>(c);
        if (c == '\n') break;
    }
    read.got = used > 0 || !read.at_end;
    if (read.got) out[used] = '\0';
    return read;
}
