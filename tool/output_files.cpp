#include "tool/output_files.h"

#include "embedded/held_input.h"
#include "embedded/limits.h"
#include "embedded/output_path.h"
#include "embedded/services.h"
#include "embedded/transaction.h"
#include "formats/bundle/folder_bundle.h"
#include "host/settings.h"
#include "tool/file_bytes.h"
#include "tool/tool_error.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <system_error>
#include <unistd.h>

namespace tool {
namespace {

namespace fs = std::filesystem;

std::string folder_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

std::string shown(const std::string& path) { return path.empty() ? "\"\"" : path; }

bool same_file(const std::string& a, const std::string& b) {
    std::error_code ignored;
    if (a == embedded::standard_input || b == embedded::standard_input) return false;
    if (fs::equivalent(a, b, ignored)) return true;
    // Of a relative name nothing would be resolved while its first folder or file is missing. An empty one has no
    // place, and in a folder that was removed none has.
    const fs::path whole_a = fs::absolute(a, ignored), whole_b = fs::absolute(b, ignored);
    if (whole_a.empty() || whole_b.empty()) return a == b;
    return fs::weakly_canonical(whole_a, ignored) == fs::weakly_canonical(whole_b, ignored);
}

bool is_standard_output(const std::string& path) {
    return path == "-" || path == "/dev/stdout" || path == "/dev/fd/1" || path == "/proc/self/fd/1";
}

/// As messages name it.
std::string name_of_output(const std::string& path) { return is_standard_output(path) ? "standard output" : path; }

void write_to_standard_output(const std::string& bytes) {
    std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
    if (!std::cout) throw JobError(std::string("standard output couldn't be written: ") + std::strerror(errno));
}

void check_stream(const std::string& path) {
    if (!is_standard_output(path) && access(path.c_str(), W_OK) != 0)
        throw JobError(path + ": " + std::strerror(errno));
}

void check_named(const char* option, const std::string& path) {
    const fs::path name = fs::path(path).filename();
    if (name.empty() || name == "." || name == "..")
        throw JobError(std::string(option) + ' ' + shown(path) + ": names no file");
}

void check_not_folder(const std::string& path) {
    std::error_code ignored;
    if (fs::is_directory(path, ignored)) throw JobError(path + ": is a directory");
}

bool is_too_long(const std::string& path) {
    std::error_code trouble;
    (void)fs::symlink_status(path, trouble);
    return trouble == std::errc::filename_too_long;
}

/// What can be said of an output's place before it is held.
void check_place(const std::string& path) {
    check_folder(folder_of(path));
    check_not_folder(path);
    if (is_too_long(path)) throw JobError(path + ": " + std::strerror(ENAMETOOLONG));
}

void check_beside(const std::string& file, const std::string& report, const std::string& input) {
    if (same_file(file, report)) throw JobError(report + ": a file of that name goes beside the report");
    if (same_file(file, input)) throw JobError(file + ": would replace what it is made from");
    check_not_folder(file);
    if (is_too_long(file) && !is_too_long(report))
        throw JobError("-o " + report + ": too long a name for the file beside it that ends in " +
                       fs::path(file).extension().string());
}

void check_replaceable(const std::string& path) {
    std::error_code ignored;
    if (fs::exists(fs::symlink_status(path, ignored)))
        throw JobError(path + ": is there already; --overwrite replaces it");
}

std::vector<std::string> without_streams(std::vector<std::string> paths) {
    paths.erase(std::remove_if(paths.begin(), paths.end(), is_stream), paths.end());
    return paths;
}

// In one order in all runs.
void hold_all(std::vector<std::string> paths) {
    embedded::Transaction* run = embedded::Transaction::current();
    if (!run) return;
    std::sort(paths.begin(), paths.end(), [](const std::string& a, const std::string& b) {
        return embedded::OutputPath(a).full() < embedded::OutputPath(b).full();
    });
    std::string why;
    for (const std::string& path : paths)
        if (!run->hold(path, &why)) throw JobError(path + ": couldn't be written: " + why);
}

} // namespace

void check_folder(const std::string& folder) {
    std::error_code trouble;
    // With the slash at its end a file would count as missing.
    const bool slash = folder.size() > 1 && folder.back() == '/';
    const std::string name = slash ? folder.substr(0, folder.size() - 1) : folder;
    if (!fs::exists(name, trouble)) throw JobError(shown(folder) + ": no such directory");
    if (!fs::is_directory(name, trouble)) throw JobError(folder + ": not a directory");
    if (access(folder.c_str(), W_OK | X_OK) != 0) throw JobError(folder + ": " + std::strerror(errno));
}

std::string beside_report(const std::string& report, const char* extension) {
    const LightweightString<wchar_t> stem = stripExtension(fromUTF8(LightweightString<char>(report.c_str())));
    return std::string(toUTF8(stem).c_str()) + extension;
}

std::string fault_of_input(const std::string& path) {
    if (path.empty()) return "names no file";
    if (path == embedded::standard_input) return "";
    std::error_code trouble;
    const std::string file = formats::file_of_bundle(path);
    if (fs::is_directory(file, trouble)) return "is a directory";
    if (access(file.c_str(), R_OK) != 0) return std::strerror(errno);
    const auto size = fs::file_size(file, trouble);
    return trouble ? "" : embedded::fault_of_size(size);
}

void check_readable(const std::string& path) {
    const std::string fault = fault_of_input(path);
    if (!fault.empty()) throw JobError(shown(path) + ": " + fault);
}

bool is_stream(const std::string& path) {
    std::error_code ignored;
    return is_standard_output(path) || fs::is_other(path, ignored);
}

std::string made_at(const std::string& path) {
    if (!is_stream(path)) return path;
    return work_file("output.txt");
}

void deliver(const std::string& path) {
    if (!is_stream(path)) return;
    deliver_bytes(path, bytes_of(made_at(path)));
}

void deliver_bytes(const std::string& path, const std::string& bytes) {
    if (is_standard_output(path)) return write_to_standard_output(bytes);
    std::string why;
    if (!embedded::write_file_whole(path, bytes, &why)) throw JobError(path + ": couldn't be written: " + why);
}

std::string work_file(const char* name) {
    std::error_code trouble;
    fs::create_directories(embedded::work_directory(), trouble);
    if (trouble) throw JobError(embedded::work_directory() + ": " + trouble.message());
    return embedded::work_directory() + '/' + name;
}

std::string plain_copy_of(const std::string& input) {
    if (input != embedded::standard_input && !is_stream(input)) return input;
    const std::string copy = work_file("input.txt");
    std::string why;
    if (!embedded::write_file_whole(copy, bytes_of(input), &why))
        throw JobError(copy + ": couldn't be written: " + why);
    return copy;
}

std::vector<std::string> joined(std::vector<std::string> all, const std::vector<std::string>& more) {
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

void check_named_input(const std::string& path) {
    if (path.empty()) throw JobError(shown(path) + ": names no file");
}

void check_outputs(const std::string& input, const Output& output, const std::vector<std::string>& beside) {
    const std::string& report = output.report;
    if (is_stream(report)) return check_stream(report);
    check_named("-o", report);
    if (same_file(report, input)) throw JobError(report + ": the report would replace what it is made from");
    for (const std::string& file : beside)
        check_beside(file, report, input);
    std::vector<std::string> all{report};
    all.insert(all.end(), beside.begin(), beside.end());
    hold_outputs(all, output.overwrite);
}

void check_working_file(const std::string& path, const std::vector<std::string>& inputs) {
    for (const std::string& input : inputs)
        if (same_file(path, input)) throw JobError(path + ": would replace what the report is made from");
    check_not_folder(path);
}

void check_output(const char* option, const std::string& path, const std::vector<std::string>& inputs,
                  const std::vector<std::string>& others) {
    if (!is_stream(path)) check_named(option, path);
    for (const std::string& other : others)
        if (same_file(name_of_output(path), name_of_output(other)))
            throw JobError(name_of_output(path) + ": the run makes another file of that name");
    if (is_stream(path)) return check_stream(path);
    check_working_file(path, inputs);
}

void hold_outputs(const std::vector<std::string>& outputs, bool overwrite, const std::vector<std::string>& working) {
    const std::vector<std::string> files = without_streams(outputs);
    std::vector<std::string> all = files;
    all.insert(all.end(), working.begin(), working.end());
    for (const std::string& path : all)
        check_place(path);
    hold_all(all);
    if (overwrite) return;
    for (const std::string& path : files)
        check_replaceable(path);
}

void check_written() {
    std::string name, why;
    if (embedded::take_write_failure(&name, &why)) throw JobError(name + ": couldn't be written: " + why);
}

void check_tables_read() {
    std::string name, why;
    if (embedded::take_read_failure(&name, &why)) throw JobError(name + ": " + why);
}

} // namespace tool
