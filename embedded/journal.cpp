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
    const int changed = retried([&] { return ::fchmod(made.number(), status.st_mode & 07777U); });
    return changed != 0 ? errno : made.close();
}

// What is poured into changes the file under all its names, so only a copy keeps it.
int keep(Placing::Kind kind, const std::string& target, const std::string& kept) {
    if (kind == Placing::Kind::pour) return copy_file(target, kept);
    if (retried([&] { return ::link(target.c_str(), kept.c_str()); }) == 0) return 0;
    return links_are_refused(errno) ? copy_file(target, kept) : errno;
}

} // namespace

FileFailure::FileFailure(const std::string& of, int what) noexcept : error(what) {
    if (what == 0) return;
    try {
        path = of;
    } catch (...) {
    }
}

Journal::Journal(std::string folder)
    : folder_(std::move(folder)), path_(folder_ + journal_name), beside_(path_ + "-new") {}

Journal::Way Journal::way_of(const Placing& placing) const {
    const std::string beside = (placing.folder.empty() ? folder_ : placing.folder) + '/';
    const std::string folder = placing.target_folder.empty() ? folder_of_path(folder_) : placing.target_folder;
    return {placing.kind, placing.staged.empty() ? "" : beside + placing.staged,
            placing.kept.empty() ? "" : beside + placing.kept, (folder == "/" ? "" : folder) + '/' + placing.target};
}

void Journal::make_ready() {
    ways_.clear();
    std::set<std::string> folders;
    for (const Placing& placing : placings) {
        ways_.push_back(way_of(placing));
        folders.insert(folder_of_path(ways_.back().target));
    }
    target_folders_.assign(folders.begin(), folders.end());
    forward_text_ = text_of(forward);
    back_text_ = text_of(back);
}

FileFailure Journal::keep_former() {
    make_ready();
    for (const Way& way : ways_) {
        const int error = way.kept.empty() ? 0 : keep(way.kind, way.target, way.kept);
        if (error != 0) return {way.target, error};
    }
    return {};
}

std::string Journal::text_of(char direction) const {
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
    return bytes;
}

FileFailure Journal::write(const std::string& text) const {
    int error = write_new_file(beside_, text);
    if (error == 0) error = rename_file(beside_, path_);
    if (error == 0) error = sync_path(folder_);
    return {path_, error};
}

bool Journal::read(char* direction) {
    std::string bytes, text;
    if (!read_file(path_, &bytes, nullptr)) return false;
    std::string_view rest(bytes);
    if (!take(rest, &text) || text != mark || !take(rest, &text) || text.size() != 1) return false;
    *direction = text[0];
    for (Placing placing; take(rest, &placing);)
        placings.push_back(placing);
    make_ready();
    return rest.empty();
}

FileFailure Journal::begin() const { return write(forward_text_); }

int Journal::place(const Way& way) {
    if (way.kind == Placing::Kind::remove) return remove_file(way.target);
    if (!stands(way.staged)) return 0;
    if (way.kind == Placing::Kind::rename) return rename_file(way.staged, way.target);
    const int error = pour(way.staged, way.target);
    return error != 0 ? error : remove_file(way.staged);
}

int Journal::bring_back(const Way& way) {
    if (way.kept.empty()) return stands(way.staged) ? 0 : remove_file(way.target);
    // What couldn't be replaced is still the former file, and couldn't be replaced by it either.
    if (!stands(way.kept) || hold_same_bytes(way.kept, way.target)) return 0;
    return way.kind == Placing::Kind::pour ? pour(way.kept, way.target) : rename_file(way.kept, way.target);
}

FileFailure Journal::sync_targets() const {
    for (const std::string& folder : target_folders_)
        if (const int error = sync_path(folder)) return {folder, error};
    return {};
}

FileFailure Journal::carry_out() const {
    for (const Way& way : ways_)
        if (const int error = place(way)) return {way.target, error};
    return sync_targets();
}

FileFailure Journal::take_back() const {
    FileFailure first = write(back_text_);
    for (const Way& way : ways_) {
        const int error = first ? 0 : bring_back(way);
        if (error != 0) first = {way.target, error};
    }
    return first ? std::move(first) : sync_targets();
}

FileFailure Journal::end() const { return {folder_, remove_file(path_)}; }

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
