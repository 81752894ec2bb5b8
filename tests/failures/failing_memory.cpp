#include "tests/failures/failing_memory.h"

#include <cstdlib>
#include <new>

namespace {

struct Countdown {
    long left = 0; ///< allocations until one fails; 0: none does
    bool for_good = false;
    bool reached = false;
};

Countdown countdown;

void* block_of(std::size_t size) noexcept { return allocation_fails() ? nullptr : std::malloc(size > 0 ? size : 1); }

void* block_or_throw(std::size_t size) {
    if (void* block = block_of(size)) return block;
    throw std::bad_alloc();
}

} // namespace

bool allocation_fails() {
    if (countdown.reached) return countdown.for_good;
    if (countdown.left == 0 || --countdown.left > 0) return false;
    return countdown.reached = true;
}

LastAllocation::LastAllocation(long number, MemoryEnds how) {
    countdown = {number, how == MemoryEnds::for_good, false};
}

LastAllocation::~LastAllocation() { countdown = {}; }

bool LastAllocation::reached() { return countdown.reached; }

void* operator new(std::size_t size) { return block_or_throw(size); }
void* operator new[](std::size_t size) { return block_or_throw(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return block_of(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return block_of(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }
