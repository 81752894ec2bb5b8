#include "tool/wrong_file.h"

#include "formats/bundle/folder_bundle.h"
#include "formats/logs/log_reader.h"
#include "tool/file_bytes.h"
#include "tool/output_files.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <algorithm>

namespace tool {

using formats::FileKind;

FileKind kind_of(const std::string& path) {
    const std::string file = formats::file_of_bundle(path);
    check_readable(file);
    return formats::kind_of_file(bytes_of(file));
}

void refuse_kind(const std::string& path, FileKind kind, const char* wanted) {
    throw JobError(path + ": " + formats::told_kind(kind) + "; " + wanted + " is wanted");
}

void check_kind(const std::string& path, const std::vector<FileKind>& taken, const char* wanted) {
    const FileKind kind = kind_of(path);
    if (std::find(taken.begin(), taken.end(), kind) == taken.end()) refuse_kind(path, kind, wanted);
}

void check_is_log_table(const std::string& path) {
    check_kind(path, {FileKind::logging_table}, "a logging table (.RDB)");
    const formats::Log log = formats::read_log(path);
    if (!log.error.empty()) throw JobError(one_line(log.error));
}

} // namespace tool
