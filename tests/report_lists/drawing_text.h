#pragma once
// Lines of an optical's drawing as a test writes them.

#include <string>

constexpr char left_colon[] = "                  :";
constexpr char left_vee[] = "                  V";
constexpr char right_colon[] = "                   :";
constexpr char right_vee[] = "                   V";

/// A line of two columns; the right one begins at column 40.
inline std::string row(std::string left, const std::string& right) {
    if (left.size() < 40) left.resize(40, ' ');
    return left + right + "\n";
}

inline std::string colons() { return row(left_colon, right_colon); }

inline std::string roll_heads(char left, char right) {
    return row(std::string("               ") + left + "-ROLL", std::string("                 ") + right + "-ROLL") +
           "-----------------------------------          ----------------------------------\n\n";
}
