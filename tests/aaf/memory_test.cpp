// How much memory reading takes: no more than some times the file, also of damaged ones.

// Sanitizers have an allocator of their own, and are built without.
#ifdef __has_feature
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define COUNTS_MEMORY 0
#endif
#endif
#ifndef COUNTS_MEMORY
#define COUNTS_MEMORY 1
#endif

#if COUNTS_MEMORY

#include "tests/aaf/aaf_edits.h"
#include "tests/support/aaf_samples.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::size_t> held{0}, most{0};

void* counted(std::size_t size) {
    void* block = std::malloc(std::max<std::size_t>(size, 1));
    if (!block) throw std::bad_alloc();
    const std::size_t now = held += malloc_usable_size(block);
    if (now > most) most = now;
    return block;
}

void released(void* block) noexcept {
    if (block) held -= malloc_usable_size(block);
    std::free(block);
}

} // namespace

void* operator new(std::size_t size) { return counted(size); }
void* operator new[](std::size_t size) { return counted(size); }
void operator delete(void* block) noexcept { released(block); }
void operator delete[](void* block) noexcept { released(block); }
void operator delete(void* block, std::size_t) noexcept { released(block); }
void operator delete[](void* block, std::size_t) noexcept { released(block); }

namespace {

/// Times the file's own bytes, which a reader may take on top of them.
constexpr std::size_t times_the_file = 16;

std::size_t taken_for(const std::string& bytes) {
    const std::size_t before = held;
    most = before;
    (void)formats::read_aaf_bytes(bytes, "a.aaf", 0);
    return most - before;
}

TEST(AafMemory, IsNoMoreThanSomeTimesTheFile) {
    const std::string bytes = aaf_writer::written(aaf_samples::long_cut(2000));
    const std::size_t taken = taken_for(bytes);
    EXPECT_GT(taken, bytes.size() / 10);
    EXPECT_LT(taken, times_the_file * bytes.size());
}

TEST(AafMemory, OfADamagedFileIsNoMore) {
    const std::string whole = aaf_writer::written(aaf_samples::everything());
    for (std::size_t at = 0; at < whole.size(); at += 97) {
        std::string changed = whole;
        changed[at] = static_cast<char>(~changed[at]);
        EXPECT_LT(taken_for(changed), times_the_file * whole.size()) << at;
        EXPECT_LT(taken_for(whole.substr(0, at)), times_the_file * whole.size()) << at;
    }
}

} // namespace

#endif
