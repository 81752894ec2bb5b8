#pragma once
// The memory of a table's rows and their texts.

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace embedded {

/// Blocks that are handed out piece by piece and go all together. No piece is given back: whoever needs another for the
/// same thing has used up the first, and asks for twice as much.
class RowMemory {
public:
    /// Aligned for pointers. Throws `std::bad_alloc` where there is no memory.
    char* take(std::size_t size) {
        const std::size_t whole = (size + alignment - 1) / alignment * alignment;
        if (whole > left_) add_block(whole);
        left_ -= whole;
        return std::exchange(next_, next_ + whole);
    }

private:
    static constexpr std::size_t alignment = alignof(void*);
    static constexpr std::size_t first_block = 4 * 1024;
    static constexpr std::size_t largest_block = 256 * 1024;

    void add_block(std::size_t least);

    std::vector<std::unique_ptr<char[]>> blocks_;
    char* next_ = nullptr;
    std::size_t left_ = 0;
    std::size_t block_size_ = first_block;
};

} // namespace embedded
