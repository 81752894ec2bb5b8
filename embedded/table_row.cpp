#include "embedded/eight_bytes.h"
#include "embedded/table_data.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace embedded {
namespace {

constexpr std::size_t size_limit = std::size_t{1} << 31U; // texts are shorter

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

void RowMemory::add_block(std::size_t least) {
    blocks_.emplace_back();
    const std::size_t size = std::max(least, block_size_);
    blocks_.back().reset(new char[size]);
    next_ = blocks_.back().get();
    left_ = size;
    block_size_ = std::min(2 * block_size_, largest_block);
}

RowFields::RowFields(RowMemory& memory, std::size_t count)
    : memory_(&memory), texts_(reinterpret_cast<Text*>(memory.take(count * sizeof(Text)))),
      count_(static_cast<std::uint32_t>(count)) {
    std::memset(texts_, 0, count * sizeof(Text));
}

void RowFields::clear() {
    for (std::size_t field = 0; field < count_; ++field)
        texts_[field].size = 0;
}

// What a text had room for stays behind, as the new one may lie there; so room that grows at all grows by half at
// least.
void RowFields::make_room(Text& kept, std::size_t size) {
    if (size >= size_limit) throw std::bad_alloc();
    const std::size_t room = std::max<std::size_t>(size + 1, kept.room + kept.room / 2);
    kept.room = static_cast<std::uint32_t>((room + 7) / 8 * 8);
    kept.at = memory_->take(kept.room);
}

void RowFields::keep(Text& kept, std::string_view text) {
    if (text.empty()) {
        kept.size = 0;
        return;
    }
    if (text.size() >= kept.room) make_room(kept, text.size());
    std::memmove(kept.at, text.data(), text.size());
    kept.at[text.size()] = '\0';
    kept.size = static_cast<std::uint32_t>(text.size());
}

bool RowFields::set(std::size_t field, std::string_view text) {
    if (field >= count_) return false;
    keep(texts_[field], text);
    return true;
}

void RowFields::assign(const RowFields& other) {
    for (std::size_t field = 0; field < count_; ++field)
        keep(texts_[field], other.view(field));
}

/// Of a line without an escape: the fields stay where they are, parted by zeros in place of tabs.
bool RowFields::decode_plain(char* line, char* end) {
    *end = '\t'; // closes the last field as those before it
    Text* text = texts_;
    const Text* const behind = texts_ + count_;
    char* start = line;
    for (char* eight = line;; eight += 8) {
        for (std::uint64_t tabs = places_of('\t', word_of(eight)); tabs != 0; tabs &= tabs - 1) {
            if (text == behind) return false;
            char* const tab = eight + first_place(tabs);
            const auto size = static_cast<std::uint32_t>(tab - start);
            *tab = '\0';
            *text++ = {start, size, size + 1};
            if (tab == end) return text == behind;
            start = tab + 1;
        }
    }
}

// A text ends at a zero, which escapes and bytes of a file may bring in.
bool RowFields::decode_escaped(const char* line, const char* end, char* out) {
    char* start = out;
    std::size_t field = 0;
    for (const char* at = line; at <= end; ++at) {
        if (at == end || *at == '\t') {
            if (field == count_) return false;
            *out++ = '\0';
            texts_[field++] = {start, static_cast<std::uint32_t>(std::strlen(start)),
                               static_cast<std::uint32_t>(out - start)};
            start = out;
        } else if (*at != '\\') {
            *out++ = *at;
        } else {
            ++at;
            *out = at < end ? plain_character(*at) : '\0';
            if (!*out++) return false;
        }
    }
    return field == count_;
}

bool RowFields::decode(char* line, std::size_t size, bool plain) {
    if (size >= size_limit) throw std::bad_alloc();
    return plain ? decode_plain(line, line + size) : decode_escaped(line, line + size, line);
}

} // namespace embedded
