#include "tool/output_files.h"

#include "embedded/services.h"
#include "host/settings.h"
#include "tool/tool_error.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace tool {
namespace {

namespace fs = std::filesystem;

std::string folder_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

bool same_file(const std::string& a, const std::string& b) {
    std::error_code ignored;
    if (fs::equivalent(a, b, ignored)) return true;
    return fs::weakly_canonical(a, ignored) == fs::weakly_canonical(b, ignored);
}

void check_named(const std::string& path) {
    const fs::path name = fs::path(path).filename();
    if (name.empty() || name == "." || name == "..")
        throw JobError("-o " + (path.empty() ? "\"\"" : path) + ": names no file");
}

void check_folder(const std::string& path) {
    const std::string folder = folder_of(path);
    std::error_code trouble;
    // With the slash at its end a file would count as missing.
    const std::string name = folder.size() > 1 ? folder.substr(0, folder.size() - 1) : folder;
    if (!fs::exists(name, trouble)) throw JobError(folder + ": no such directory");
    if (!fs::is_directory(name, trouble)) throw JobError(folder + ": not a directory");
    if (access(folder.c_str(), W_OK | X_OK) != 0) throw JobError(folder + ": " + std::strerror(errno));
}

void check_not_folder(const std::string& path) {
    std::error_code ignored;
    if (fs::is_directory(path, ignored)) throw JobError(path + ": is a directory");
}

} // namespace

std::string beside_report(const std::string& report, const char* extension) {
    const LightweightString<wchar_t> stem = stripExtension(fromUTF8(LightweightString<char>(report.c_str())));
    return std::string(toUTF8(stem).c_str()) + extension;
}

void check_readable(const std::string& path) {
    std::error_code trouble;
    if (fs::is_directory(path, trouble)) throw JobError(path + ": is a directory");
    if (access(path.c_str(), R_OK) != 0) throw JobError(path + ": " + std::strerror(errno));
}

void check_outputs(const std::string& input, const Output& output, const std::vector<std::string>& beside) {
    const std::string& report = output.report;
    check_named(report);
    if (same_file(report, input)) throw JobError(report + ": the report would replace what it is made from");
    for (const std::string& file : beside) {
        if (same_file(file, report)) throw JobError(report + ": a file of that name goes beside the report");
        if (same_file(file, input)) throw JobError(file + ": would replace what it is made from");
        check_not_folder(file);
    }
    check_folder(report);
    check_not_folder(report);
    std::error_code ignored;
    if (!output.overwrite && fs::exists(fs::symlink_status(report, ignored)))
        throw JobError(report + ": is there already; --overwrite replaces it");
}

void check_written() {
    std::string name;
    if (embedded::take_write_failure(&name)) throw JobError(name + ": couldn't be written");
}

} // namespace tool
