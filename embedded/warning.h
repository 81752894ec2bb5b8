#pragma once
// What the reader of a file tells of it.

#include <concepts>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace embedded {

/// What became of the thing that a warning is about.
enum class WarningKind : unsigned char {
    doubt,    ///< it was read, but may not be what was meant
    note,     ///< it was read as it should be; worth knowing all the same
    dropped,  ///< it was left out or shortened
    replaced, ///< it was turned into something else: black, a gap, another effect
    rate,     ///< rates or counting differ
    text,     ///< a text held bytes or characters that it may not hold
};

/// One line for people: "FILE: line N: what" or "FILE: object: what". Texts become doubts by themselves.
struct Warning {
    WarningKind kind = WarningKind::doubt;
    std::string text;

    template <class Text>
    requires std::convertible_to<Text, std::string> &&
        (!std::same_as<std::remove_cvref_t<Text>, Warning>)Warning(Text&& line)
        : text(std::forward<Text>(line)) {}
    Warning(WarningKind what, std::string line) : kind(what), text(std::move(line)) {}
    /// Who only shows warnings needs no more than the line.
    operator const std::string&() const { return text; }
    friend bool operator==(const Warning& a, const Warning& b) = default;
    friend bool operator==(const Warning& a, const char* line) { return a.text == line; }
};

using Warnings = std::vector<Warning>;

} // namespace embedded
