#pragma once
// Libraries of ours that are loaded only when they are asked for, as what they need is much and seldom wanted.

namespace tool {

/// The entry of a library, which stays loaded. Throws `JobError` that begins with `what` where it isn't there.
void* loaded_entry(const char* library, const char* entry, const char* what);

} // namespace tool
