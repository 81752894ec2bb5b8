#pragma once
// What the sources use of the standard library and the one for browsers lacks, for code that runs on one thread. It is
// included ahead of every source of that build, and holds only what a later library brings itself.

#include <array>
#include <atomic>
#include <bit>
#include <compare>
#include <cstddef>
#include <cstring>
#include <string>

namespace std {

#ifndef __cpp_lib_bit_cast
template <class To, class From> To bit_cast(const From& from) noexcept {
    static_assert(sizeof(To) == sizeof(From));
    To to;
    std::memcpy(&to, &from, sizeof to);
    return to;
}
#endif

#ifndef __cpp_lib_atomic_ref
template <class Value> class atomic_ref {
public:
    explicit atomic_ref(Value& value) : value_(value) {}

    Value load(memory_order = memory_order_seq_cst) const { return value_; }
    Value fetch_add(Value more, memory_order = memory_order_seq_cst) const {
        const Value before = value_;
        value_ += more;
        return before;
    }
    Value fetch_sub(Value less, memory_order = memory_order_seq_cst) const {
        const Value before = value_;
        value_ -= less;
        return before;
    }

private:
    Value& value_;
};
#endif

#ifndef __cpp_lib_three_way_comparison
inline strong_ordering operator<=>(const string& a, const string& b) { return a.compare(b) <=> 0; }

template <class Value, size_t size>
constexpr auto operator<=>(const array<Value, size>& a, const array<Value, size>& b) {
    for (size_t i = 0; i < size; ++i)
        if (const auto order = a[i] <=> b[i]; order != 0) return order;
    return a[0] <=> a[0];
}
#endif

} // namespace std
