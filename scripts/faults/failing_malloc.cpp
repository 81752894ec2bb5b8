// Preloaded into a process, fails one of its allocations or all from one on: FAIL_ALLOCATION=N, and
// FAIL_ALL_BEHIND=1 for the latter. With COUNT_ALLOCATIONS the number of allocations is written there at the
// end.

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

extern "C" void* __libc_malloc(std::size_t);
extern "C" void* __libc_calloc(std::size_t, std::size_t);
extern "C" void* __libc_realloc(void*, std::size_t);
extern "C" void* __libc_memalign(std::size_t, std::size_t);

namespace {

long asked = 0;

long number_of(const char* name) {
    const char* text = environ ? std::getenv(name) : nullptr;
    return text ? std::atol(text) : 0;
}

bool fails() {
    static const long at = number_of("FAIL_ALLOCATION");
    static const long on = number_of("FAIL_ALL_BEHIND");
    const long number = __atomic_add_fetch(&asked, 1, __ATOMIC_RELAXED);
    if (at == 0 || (on ? number < at : number != at)) return false;
    errno = ENOMEM;
    return true;
}

__attribute__((destructor)) void tell_count() {
    const char* path = std::getenv("COUNT_ALLOCATIONS");
    const int file = path ? ::open(path, O_WRONLY | O_CREAT | O_TRUNC, 0600) : -1;
    if (file < 0) return;
    char text[24];
    const int length = std::snprintf(text, sizeof text, "%ld\n", asked);
    (void)!::write(file, text, static_cast<std::size_t>(length));
    ::close(file);
}

} // namespace

extern "C" {
void* malloc(std::size_t size) { return fails() ? nullptr : __libc_malloc(size); }
void* calloc(std::size_t count, std::size_t size) { return fails() ? nullptr : __libc_calloc(count, size); }
void* realloc(void* block, std::size_t size) { return fails() ? nullptr : __libc_realloc(block, size); }
void* memalign(std::size_t alignment, std::size_t size) { return fails() ? nullptr : __libc_memalign(alignment, size); }
void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }
}
