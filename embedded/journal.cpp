#include "embedded/journal.h"

#include "embedded/file_calls.h"
#include "embedded/services.h"

#include <cstdio>
#include <fcntl.h>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace embedded {
namespace {

constexpr const char* journal_name = "/journal";
constexpr const char* pointer_name = "/journal-at";
constexpr std::string_view mark = "quillbrook journal 1";
constexpr char forward = 'f';
constexpr char back = 'b';

void put(std::string& out, std::string_view text) {
    out += text;
    out += '\0';
}

/// The next text of a journal; each ends in a zero.
bool take(std::string_view& bytes, std::string* text) {
    const std::size_t end = bytes.find('\0');
    if (end == std::string_view::npos) return false;
    *text = bytes.substr(0, end);
    bytes.remove_prefix(end + 1);
    return true;
}

bool take(std::string_view& bytes, Placing* placing) {
    std::string kind;
    if (!take(bytes, &kind) || kind.size() != 1) return false;
    placing->kind = static_cast<Placing::Kind>(kind[0]);
    return take(bytes, &placing->folder) && take(bytes, &placing->staged) && take(bytes, &placing->kept) &&
           take(bytes, &placing->target_folder) && take(bytes, &placing->target);
}

int write_new_file(const std::string& path, const std::string& bytes) {
    Descriptor file = open_file(path, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW, 0600);
    if (!file.is_open()) return errno;
    if (const int error = write_all(file.number(), bytes.data(), bytes.size())) return error;
    if (retried([&] { return ::fsync(file.number()); }) != 0) return errno;
    return file.close();
}

bool links_are_refused(int error) {
    return error == EPERM || error == EMLINK || error == ENOTSUP || error == EOPNOTSUPP || error == ENOSYS;
}

int copy_file(const std::string& from, const std::string& to) {
    struct stat status = {};
    if (::stat(from.c_str(), &status) != 0) return errno;
    Descriptor made = open_file(to, O_WRONLY | O_CREAT | O_EXCL, 0600);
    if (!made.is_open()) return errno;
    if (const int error = pour(from, to)) return error;
    (void)!::fchown(made.number(), status.st_uid, status.st_gid);
    return ::fchmod(made.number(), status.st_mode & 07777U) != 0 ? errno : made.close();
}

// What is poured into changes the file under all its names, so only a copy keeps it.
int keep(Placing::Kind kind, const std::string& target, const std::string& kept) {
    if (kind == Placing::Kind::pour) return copy_file(target, kept);
    if (retried([&] { return ::link(target.c_str(), kept.c_str()); }) == 0) return 0;
    return links_are_refused(errno) ? copy_file(target, kept) : errno;
}

} // namespace

std::string Journal::staged_path(const Placing& placing, const std::string& name) const {
    return (placing.folder.empty() ? folder_ : placing.folder) + '/' + name;
}

std::string Journal::target_path(const Placing& placing) const {
    const std::string folder = placing.target_folder.empty() ? folder_of_path(folder_) : placing.target_folder;
    return (folder == "/" ? "" : folder) + '/' + placing.target;
}

FileFailure Journal::keep_former() const {
    for (const Placing& placing : placings) {
        const std::string target = target_path(placing);
        const int error = placing.kept.empty() ? 0 : keep(placing.kind, target, staged_path(placing, placing.kept));
        if (error != 0) return {target, error};
    }
    return {};
}

FileFailure Journal::write(char direction) const {
    std::string bytes;
    put(bytes, mark);
    put(bytes, {&direction, 1});
    for (const Placing& placing : placings) {
        const char kind = static_cast<char>(placing.kind);
        put(bytes, {&kind, 1});
        for (const std::string* text :
             {&placing.folder, &placing.staged, &placing.kept, &placing.target_folder, &placing.target})
            put(bytes, *text);
    }
    const std::string path = folder_ + journal_name, beside = path + "-new";
    int error = write_new_file(beside, bytes);
    if (error == 0) error = rename_file(beside, path);
    if (error == 0) error = sync_path(folder_);
    return {path, error};
}

bool Journal::read(char* direction) {
    std::string bytes, text;
    if (!read_file(folder_ + journal_name, &bytes, nullptr)) return false;
    std::string_view rest(bytes);
    if (!take(rest, &text) || text != mark || !take(rest, &text) || text.size() != 1) return false;
    *direction = text[0];
    for (Placing placing; take(rest, &placing);)
        placings.push_back(placing);
    return rest.empty();
}

FileFailure Journal::begin() const { return write(forward); }

int Journal::place(const Placing& placing) const {
    const std::string target = target_path(placing);
    if (placing.kind == Placing::Kind::remove) return remove_file(target);
    const std::string staged = staged_path(placing, placing.staged);
    if (!stands(staged)) return 0;
    if (placing.kind == Placing::Kind::rename) return rename_file(staged, target);
    const int error = pour(staged, target);
    return error != 0 ? error : remove_file(staged);
}

int Journal::bring_back(const Placing& placing) const {
    const std::string target = target_path(placing), kept = staged_path(placing, placing.kept);
    if (placing.kept.empty()) return stands(staged_path(placing, placing.staged)) ? 0 : remove_file(target);
    if (!stands(kept)) return 0;
    return placing.kind == Placing::Kind::pour ? pour(kept, target) : rename_file(kept, target);
}

FileFailure Journal::sync_targets() const {
    std::set<std::string> folders;
    for (const Placing& placing : placings)
        folders.insert(folder_of_path(target_path(placing)));
    for (const std::string& folder : folders)
        if (const int error = sync_path(folder)) return {folder, error};
    return {};
}

FileFailure Journal::carry_out() const {
    for (const Placing& placing : placings)
        if (const int error = place(placing)) return {target_path(placing), error};
    return sync_targets();
}

FileFailure Journal::take_back() const {
    FileFailure first = write(back);
    for (const Placing& placing : placings) {
        const int error = first ? 0 : bring_back(placing);
        if (error != 0) first = {target_path(placing), error};
    }
    return first ? first : sync_targets();
}

FileFailure Journal::end() const { return {folder_, remove_file(folder_ + journal_name)}; }

bool has_journal(const std::string& folder) { return stands(folder + journal_name); }

bool finish_journal(const std::string& folder) {
    std::string at;
    if (read_file(folder + pointer_name, &at, nullptr)) return !stands(at + journal_name) || finish_journal(at);
    if (!has_journal(folder)) return true;
    Journal journal(folder);
    char direction = forward;
    if (!journal.read(&direction)) return false;
    const FileFailure failure = direction == back ? journal.take_back() : journal.carry_out();
    return !failure && !journal.end();
}

FileFailure point_to_journal(const std::string& folder, const std::string& journal_folder) {
    return {folder, write_new_file(folder + pointer_name, journal_folder)};
}

} // namespace embedded
