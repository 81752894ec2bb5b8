// The library's own allocation operators: everything goes to the host's memory service. They stay local to the
// library, so a program that loads it keeps its own.

#include "base/guard.h"
#include "host/os.h"

#include <cstddef>
#include <new>

namespace {

void* block_or_null(std::size_t size) noexcept {
    void* block = nullptr;
    survives([&] { block = OS()->memory().allocate(size); });
    return block;
}

} // namespace

void* operator new(std::size_t size) { return Qb::allocate_block(size); }
void* operator new[](std::size_t size) { return Qb::allocate_block(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return block_or_null(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return block_or_null(size); }
void operator delete(void* block) noexcept { Qb::free_block(block); }
void operator delete[](void* block) noexcept { Qb::free_block(block); }
void operator delete(void* block, std::size_t) noexcept { Qb::free_block(block); }
void operator delete[](void* block, std::size_t) noexcept { Qb::free_block(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Qb::free_block(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { Qb::free_block(block); }
