#pragma once
// Memory that ends: the allocations of the whole test program, those of the library and of the host alike.

/// How allocations fail from the one of that number on, counted from 1.
enum class MemoryEnds { once, for_good };

/// Memory ends at allocation `number` while this lives.
class LastAllocation {
public:
    LastAllocation(long number, MemoryEnds how);
    ~LastAllocation();
    LastAllocation(const LastAllocation&) = delete;
    LastAllocation& operator=(const LastAllocation&) = delete;

    /// Whether the allocation was asked for.
    static bool reached();
};

/// Counts one allocation; true when it has to fail.
bool allocation_fails();
