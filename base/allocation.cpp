// The library's own allocation operators: everything goes to the host's memory service. They stay local to the
// library, so a program that loads it keeps its own.

#include "host/os.h"

#include <cstddef>
#include <new>

void* operator new(std::size_t size) { return OS()->memory().allocate(size); }
void* operator new[](std::size_t size) { return OS()->memory().allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return OS()->memory().allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return OS()->memory().allocate(size); }
void operator delete(void* block) noexcept { OS()->memory().free(block); }
void operator delete[](void* block) noexcept { OS()->memory().free(block); }
void operator delete(void* block, std::size_t) noexcept { OS()->memory().free(block); }
void operator delete[](void* block, std::size_t) noexcept { OS()->memory().free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { OS()->memory().free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { OS()->memory().free(block); }
