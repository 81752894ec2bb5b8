#pragma once
// Numbers as settings and tables hold them: decimal text, the same in every locale.

#include <string>

namespace embedded {

/// What `atoi` gives, for numbers of any size.
int int_of_text(const char* text);
/// What `atof` gives for decimal text; 0 when there is none.
double double_of_text(const char* text);
/// 15 digits, or 16 or 17 where fewer don't read back to the same value.
std::string text_of_double(double value);

} // namespace embedded
