#pragma once
// Puts names into the places that message texts keep for them.

#include "host/text.h"

/// A copy of `text` with each `pattern` replaced by `value`, which isn't searched again.
LightweightString<wchar_t> substitute(LightweightString<wchar_t> text, const wchar_t* pattern,
                                      const LightweightString<wchar_t>& value);
