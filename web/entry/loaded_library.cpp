// A browser loads no libraries beside the command; pages are printed there by the browser itself.

#include "tool/loaded_library.h"

#include "tool/tool_error.h"

#include <string>

namespace tool {

void* loaded_entry(const char*, const char*, const char* what) {
    throw JobError(std::string(what) + " in a browser, which prints and serves pages itself");
}

} // namespace tool
