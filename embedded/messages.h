#pragma once
// The texts that the library's messages have in this host.

#include <string>

namespace embedded {

/// Another text for a message, by its number: in another language, say. Headings have texts of their own.
void set_message(int id, bool heading, const std::wstring& text);
/// Brings all texts of this host back.
void clear_messages();

} // namespace embedded
