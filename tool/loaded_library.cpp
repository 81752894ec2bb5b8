#include "tool/loaded_library.h"

#include "tool/tool_error.h"

#include <dlfcn.h>

#include <string>

namespace tool {

void* loaded_entry(const char* library, const char* entry, const char* what) {
    void* loaded = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void* found = loaded ? dlsym(loaded, entry) : nullptr;
    if (!found) throw JobError(std::string(what) + ": " + dlerror());
    return found;
}

} // namespace tool
