#include "embedded/output_path.h"

#include "embedded/file_calls.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace embedded {
namespace {

constexpr int most_links = 40;

/// True where others than the folder's owner may plant a link.
bool anyone_may_write(const std::string& folder) {
    struct stat status = {};
    return ::stat(folder.c_str(), &status) == 0 && (status.st_mode & S_IWOTH) != 0;
}

bool real_folder(const std::string& path, std::string* real) {
    char text[PATH_MAX];
    if (!::realpath(path.c_str(), text)) return false;
    *real = text;
    return true;
}

std::string target_of_link(const std::string& link) {
    char text[PATH_MAX];
    const ssize_t length = ::readlink(link.c_str(), text, sizeof text);
    return length > 0 ? std::string(text, static_cast<std::size_t>(length)) : "";
}

} // namespace

OutputPath::OutputPath(const std::string& path) {
    struct stat status = {};
    const bool is_there = ::stat(path.c_str(), &status) == 0;
    is_device = is_there && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
    if (is_there && S_ISDIR(status.st_mode)) {
        refusal = std::strerror(EISDIR);
    } else if (name_of_path(path).empty()) {
        refusal = std::strerror(ENOENT);
    } else if (!follow(path) && (!is_device || !refusal.empty())) {
        if (refusal.empty()) refusal = std::strerror(errno);
    }
    if (!is_device) return;
    folder.clear();
    name = path;
}

// False with a refusal where a link isn't followed, and with the error where the way ends.
bool OutputPath::follow(std::string path) {
    for (int links = 0; links < most_links; ++links) {
        if (!real_folder(folder_of_path(path), &folder)) return false;
        name = name_of_path(path);
        struct stat status = {};
        const std::string here = (folder == "/" ? "" : folder) + '/' + name;
        if (::lstat(here.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return true;
        if (anyone_may_write(folder)) {
            refusal = "is a link in a folder where anyone may write, and isn't followed";
            return false;
        }
        const std::string to = target_of_link(here);
        path = to.substr(0, 1) == "/" ? to : (folder == "/" ? "" : folder) + '/' + to;
    }
    errno = ELOOP;
    return false;
}

} // namespace embedded
