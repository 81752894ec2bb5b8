#include "embedded/held_input.h"

#include "embedded/services.h"
#include "host/settings.h"

#include <fcntl.h>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace embedded {
namespace {

std::map<std::string, std::string>& held_inputs() {
    static std::map<std::string, std::string> inputs;
    return inputs;
}

} // namespace

const char* const standard_input = "(standard input)";

const std::string* held_input(const std::string& path) {
    const auto found = held_inputs().find(path);
    return found == held_inputs().end() ? nullptr : &found->second;
}

bool is_stream(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode);
}

void hold_input(const std::string& path, const std::string& bytes) { held_inputs()[path] = bytes; }

Descriptor open_input(const std::string& path) {
    return path == standard_input ? Descriptor(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)) : open_file(path, O_RDONLY);
}

std::int64_t time_of_input(const std::string& path) {
    struct stat status {};
    const bool plain = ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return plain ? status.st_mtime : present_time();
}

} // namespace embedded
