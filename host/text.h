#pragma once
// The host's text values and the small operations on them.
//
// Texts of both widths pass between the library and its host by value. Their memory comes from `OS()->memory()` and
// their use counts go through `OS()->counts()`, so either side may free what the other made. Offsets and lengths count
// characters of the type, bytes for `char`; nothing here knows about letters.

#include "host/os.h"

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A counted text, `T` being `char` (UTF-8 or plain bytes) or `wchar_t`. A null handle and a text of length
/// 0 count alike; both read as an empty literal. Copies share one block; the characters of a shared block
/// never change.
/// A block is bound to no thread, as its users are counted by the host: copies may go to other threads. One value
/// itself belongs to one thread at a time. A length fits 32 bits.
template <class T> class LightweightString {
public:
    /// Empty, without a block: no memory is taken.
    LightweightString() = default;
    /// A copy of a zero-terminated text; null makes an empty one.
    LightweightString(const T* text) : LightweightString(view_of(text)) {}
    /// A copy of `length` characters, which may hold zeros. `text` may be null where `length` is 0.
    LightweightString(const T* text, std::size_t length) : LightweightString(std::basic_string_view<T>(text, length)) {}
    /// A copy of what the view shows.
    explicit LightweightString(std::basic_string_view<T> text) { assign(text); }

    /// One user more of the same block; no characters are copied.
    LightweightString(const LightweightString& other) : count_(other.count_), block_(other.block_) {
        if (block_) OS()->counts().add_ref(*count_);
    }
    /// Takes the block over; `other` is empty afterwards.
    LightweightString(LightweightString&& other) noexcept
        : count_(std::exchange(other.count_, nullptr)), block_(std::exchange(other.block_, nullptr)) {}
    /// The last user frees the block.
    ~LightweightString() { drop(); }

    /// Shares the other's block; what this value held keeps its other users.
    LightweightString& operator=(LightweightString other) noexcept {
        std::swap(count_, other.count_);
        std::swap(block_, other.block_);
        return *this;
    }

    /// Zero-terminated characters, good while this value lives unchanged. Never null.
    /// A text with zeros in it seems shorter here than `size` says.
    const T* c_str() const {
        static constexpr T empty[1] = {};
        return block_ ? block_->characters : empty;
    }
    /// Characters without the closing zero.
    std::size_t size() const { return block_ ? block_->length : 0; }
    /// True with or without a block.
    bool empty() const { return size() == 0; }
    /// The characters, good while this value lives unchanged.
    std::basic_string_view<T> view() const { return {c_str(), size()}; }

    /// Reuses the block if nobody else holds it and the text fits; otherwise leaves it to its other users.
    /// `text` may lie in this value's own block. Throws `std::bad_alloc` without memory, and then the value stays as it
    /// was.
    void assign(std::basic_string_view<T> text) {
        if (text.empty()) {
            *this = LightweightString();
            return;
        }
        if (!block_ || others_hold_it() || text.size() >= block_->capacity) {
            LightweightString fresh;
            fresh.make_block(text.size());
            fresh.fill(text);
            *this = std::move(fresh);
        } else {
            fill(text);
        }
    }

    /// Makes a new block each time; other users of the old one keep it. `more` may lie in this text.
    /// Without memory the value stays as it was, and `std::bad_alloc` passes on.
    LightweightString& operator+=(std::basic_string_view<T> more) {
        if (more.empty()) return *this;
        LightweightString joined;
        joined.make_block(size() + more.size());
        std::char_traits<T>::copy(joined.block_->characters, c_str(), size());
        std::char_traits<T>::copy(joined.block_->characters + size(), more.data(), more.size());
        joined.close(size() + more.size());
        return *this = std::move(joined);
    }
    /// The same with a counted text, which may be this one.
    LightweightString& operator+=(const LightweightString& more) { return *this += more.view(); }

    /// The same characters, in the same case.
    friend bool operator==(const LightweightString& a, const LightweightString& b) { return a.view() == b.view(); }
    /// Both behind each other as a new text; neither changes. Of the plain text in the next two, null counts as empty.
    friend LightweightString operator+(const LightweightString& a, const LightweightString& b) {
        LightweightString joined(a);
        joined += b.view();
        return joined;
    }
    friend LightweightString operator+(const T* a, const LightweightString& b) { return LightweightString(a) + b; }
    friend LightweightString operator+(const LightweightString& a, const T* b) { return a + LightweightString(b); }

private:
    /// One allocation: this head, then the characters.
    struct Block {
        /// Right behind this head, zero-terminated.
        T* characters;
        /// Characters, the closing zero not counted.
        std::uint32_t length;
        /// Characters that fit, the closing zero among them.
        std::uint32_t capacity;
        /// Values that share the block.
        use_count users;
    };

    static std::basic_string_view<T> view_of(const T* text) {
        return text ? std::basic_string_view<T>(text) : std::basic_string_view<T>();
    }

    // The characters lie behind the block in the same allocation; the capacity is the first power of two
    // above the length.
    void make_block(std::size_t length) {
        const std::size_t capacity = std::bit_ceil(length + 1);
        Qb::BlockHolder memory(sizeof(Block) + capacity * sizeof(T));
        Block* const block = new (memory.get()) Block{nullptr, 0, static_cast<std::uint32_t>(capacity), {}};
        block->characters = reinterpret_cast<T*>(block + 1);
        OS()->counts().add_ref(block->users);
        memory.take_over();
        block_ = block;
        count_ = &block->users;
    }
    /// Asked before the characters are written, as a shared block never changes.
    bool others_hold_it() const { return std::atomic_ref<int>(count_->users).load(std::memory_order_acquire) > 1; }
    /// Room must be there. Copies as `memmove` does, so `text` may lie in the block.
    void fill(std::basic_string_view<T> text) {
        std::char_traits<T>::move(block_->characters, text.data(), text.size());
        close(text.size());
    }
    /// Puts the zero behind the characters and notes their number.
    void close(std::size_t length) {
        block_->characters[length] = T();
        block_->length = static_cast<std::uint32_t>(length);
    }
    /// Gives up this user's share.
    void drop() {
        if (block_ && Qb::release_last(*count_)) Qb::free_block(block_);
    }

    /// Points into the block; null exactly where `block_` is.
    use_count* count_ = nullptr;
    /// Null for an empty text.
    Block* block_ = nullptr;
};

/// The host's growing list, on the host's memory. Indexes from 0.
/// Both sides share this type: the host fills lists that it is handed.
template <class T> using Vector = std::vector<T, host_allocator<T>>;

/// A set of characters of one byte.
/// It takes no memory, and asking it changes nothing, so one set may serve all threads. The library has one: the bytes
/// that a timecode text may hold.
class isset {
public:
    /// Of all bytes of a zero-terminated text; the zero is no member.
    /// Null makes a set without members.
    explicit isset(const char* members);
    /// Non-zero if `c` is a member.
    int operator()(unsigned char c) const;

private:
    /// By byte.
    /// True for a member.
    bool member_[256] = {};
};

/// A holder for a text that `configb::in` fills. Reads as empty until it is filled.
/// It holds a share of the text, so the text stays good when the block of settings goes.
class strp_field {
public:
    strp_field() = default;
    /// Zero-terminated, never null, good until the next `fill`.
    operator const char*() const { return text_.c_str(); }
    /// For the host's `configb::in`.
    /// What it held before is gone.
    void fill(const LightweightString<char>& text) { text_ = text; }

private:
    LightweightString<char> text_;
};

/// A text that grows by appending.
/// Records of an `Array` print themselves into one; the library reads it nowhere.
class GrowString {
public:
    /// Adds a zero-terminated text at the end; the same object, so that calls can follow each other.
    /// Null adds nothing. Throws `std::bad_alloc` without memory.
    GrowString& append(const char* text);
    /// Good until the next `append`.
    /// Zero-terminated, never null.
    const char* c_str() const { return text_.c_str(); }
    /// Bytes, without the closing zero.
    std::size_t size() const { return text_.size(); }

private:
    std::basic_string<char, std::char_traits<char>, host_allocator<char>> text_;
};

// Bytes that aren't UTF-8 pass through both conversions unchanged.
/// Wide text, a character each, as UTF-8.
/// A value above U+10FFFF comes out as U+FFFD, a lone byte that `fromUTF8` kept as that byte.
LightweightString<char> toUTF8(const LightweightString<wchar_t>& text);
/// `length` -1 means zero-terminated; null counts as empty.
/// `length` counts bytes, which may hold zeros; any number below 0 counts as -1. A byte that is no part of a character
/// stands as U+DC00 plus the byte, so the text finds its way back.
LightweightString<wchar_t> fromUTF8(const char* text, int length);
/// The same of a counted text.
LightweightString<wchar_t> fromUTF8(const LightweightString<char>& text);
/// Decimal, with a minus sign below 0 and no leading zeros.
LightweightString<char> StringFromInteger(int value);

namespace Qb {
/// Widens a zero-terminated text; null counts as empty.
/// Text of UTF-8 comes out right too: it is read as `fromUTF8` does.
LightweightString<wchar_t> WStringFromAscii(const char* text);
/// Decimal, as above.
LightweightString<wchar_t> WStringFromInteger(std::int64_t value);
/// Fills `count` bytes; nothing where `count` is 0, whatever `target` is.
/// `value` goes into each byte. `target` must hold `count` of them.
void Memset(void* target, unsigned char value, unsigned int count);
} // namespace Qb
