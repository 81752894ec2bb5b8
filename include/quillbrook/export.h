#pragma once
// Marks what the library shows to the programs that link it.

#if defined(__GNUC__)
#define QUILLBROOK_API __attribute__((visibility("default")))
#else
#define QUILLBROOK_API
#endif
