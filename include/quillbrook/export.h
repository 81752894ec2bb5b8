#pragma once
// Marks what the library shows to the programs that link it. All else is hidden: two versions of the library, or a
// program with the same names, don't get in each other's way. Compilers that hide nothing by themselves need no mark.

#if defined(__GNUC__)
#define QUILLBROOK_API __attribute__((visibility("default")))
#else
#define QUILLBROOK_API
#endif
