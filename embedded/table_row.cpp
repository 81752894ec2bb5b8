#include "embedded/table_data.h"

#include <cstring>
#include <functional>

namespace embedded {
namespace {

char* copy_of(std::string_view text) {
    char* copy = new char[text.size() + 1];
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

/// The character that an escape stands for; zero for an escape that doesn't exist.
char plain_character(char escape) {
    switch (escape) {
    case '\\':
        return '\\';
    case 't':
        return '\t';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    default:
        return '\0';
    }
}

} // namespace

RowFields::~RowFields() { clear(); }

void RowFields::clear() {
    for (std::size_t field = 0; texts_ && field < count_; ++field)
        release(texts_[field]);
    texts_.reset();
    block_.reset();
    block_size_ = 0;
}

void RowFields::release(char* text) {
    const std::less<const char*> before;
    const bool in_block = block_ && !before(text, block_.get()) && before(text, block_.get() + block_size_);
    if (!in_block) delete[] text;
}

void RowFields::place(std::size_t field, char* text) {
    if (!texts_) texts_ = std::make_unique<char*[]>(count_);
    texts_[field] = text;
}

bool RowFields::set(std::size_t field, std::string_view text) {
    if (field >= count_) return false;
    char* old = texts_ ? texts_[field] : nullptr;
    if (text.empty()) {
        if (old) place(field, nullptr);
        release(old);
    } else if (old && text.size() <= std::strlen(old)) {
        std::memmove(old, text.data(), text.size());
        old[text.size()] = '\0';
    } else {
        place(field, copy_of(text));
        release(old);
    }
    return true;
}

bool RowFields::decode(std::string_view line) {
    block_size_ = line.size() + 1;
    block_ = std::make_unique_for_overwrite<char[]>(block_size_);
    char* out = block_.get();
    char* start = out;
    std::size_t field = 0;
    for (std::size_t i = 0; i <= line.size(); ++i) {
        if (i == line.size() || line[i] == '\t') {
            if (field == count_) return false;
            *out++ = '\0';
            if (*start) place(field, start);
            start = out;
            ++field;
        } else if (line[i] != '\\') {
            *out++ = line[i];
        } else {
            ++i;
            *out = i < line.size() ? plain_character(line[i]) : '\0';
            if (!*out++) return false;
        }
    }
    if (!texts_) clear();
    return field == count_;
}

} // namespace embedded
