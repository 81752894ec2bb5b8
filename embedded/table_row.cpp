#include "embedded/table_data.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace embedded {
namespace {

/// Room for the texts of a usual row, so that a row that is filled field by field takes two blocks in all.
constexpr std::size_t usual_block = 384;
/// What a row that was copied may still grow by.
constexpr std::size_t spare_room = 64;

char* put_copy(char* to, std::string_view text) {
    std::memcpy(to, text.data(), text.size());
    to[text.size()] = '\0';
    return to;
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
    for (std::size_t field = 0; has_blocks_of_their_own_ && texts_ && field < count_; ++field)
        release(texts_[field]);
    texts_.reset();
    block_.reset();
    block_size_ = block_used_ = 0;
    has_blocks_of_their_own_ = false;
}

void RowFields::make_block(std::size_t size) {
    block_.reset(new char[size]);
    block_size_ = size;
    block_used_ = 0;
}

char* RowFields::keep(std::string_view text) {
    if (!texts_ && !block_) make_block(usual_block);
    if (text.size() >= block_size_ - block_used_) {
        has_blocks_of_their_own_ = true;
        return put_copy(new char[text.size() + 1], text);
    }
    char* room = block_.get() + block_used_;
    block_used_ += text.size() + 1;
    return put_copy(room, text);
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
        place(field, keep(text));
        release(old);
    }
    return true;
}

void RowFields::assign(const RowFields& other) {
    if (this == &other) return;
    clear();
    if (other.texts_ && !other.has_blocks_of_their_own_) return copy_block(other);
    std::size_t room = spare_room;
    for (std::size_t field = 0; field < count_; ++field) {
        if (const char* text = other.get(field)) room += std::strlen(text) + 1;
    }
    make_block(room);
    for (std::size_t field = 0; field < count_; ++field) {
        if (const char* text = other.get(field)) place(field, keep(text));
    }
}

/// Of a row whose texts all lie in its block.
void RowFields::copy_block(const RowFields& other) {
    make_block(other.block_used_ + spare_room);
    std::memcpy(block_.get(), other.block_.get(), other.block_used_);
    block_used_ = other.block_used_;
    texts_ = std::make_unique<char*[]>(count_);
    const std::size_t common = std::min(count_, other.count_);
    for (std::size_t field = 0; field < common; ++field) {
        if (const char* text = other.texts_[field]) texts_[field] = block_.get() + (text - other.block_.get());
    }
}

/// Of a line without an escape: the fields lie in the block as they stand, parted by zeros in place of tabs.
bool RowFields::decode_plain(std::string_view line) {
    char* start = put_copy(block_.get(), line);
    char* const end = start + line.size();
    *end = '\t'; // closes the last field as those before it
    texts_ = std::make_unique<char*[]>(count_);
    std::size_t field = 0;
    bool any = false;
    for (char* at = start;; ++at) {
        while (*at != '\t')
            ++at;
        if (field == count_) return false;
        *at = '\0';
        texts_[field++] = at == start ? nullptr : start;
        any = any || at != start;
        if (at == end) break;
        start = at + 1;
    }
    if (!any) clear();
    return field == count_;
}

bool RowFields::decode(std::string_view line) {
    make_block(line.size() + 1);
    block_used_ = block_size_;
    if (line.find('\\') == std::string_view::npos && line.find('\0') == std::string_view::npos)
        return decode_plain(line);
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
