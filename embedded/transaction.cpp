#include "embedded/transaction.h"

#include "embedded/output_path.h"
#include "embedded/replacement_file.h"
#include "embedded/services.h"

#include <csignal>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace embedded {
namespace {

constexpr std::string_view staging_prefix = ".quillbrook-";
constexpr FolderCare journal_care{has_journal, finish_journal};

Transaction* the_current = nullptr;

/// Holds back the signals that end a run, so that none does while files get to their places.
class SignalsHeld {
public:
    SignalsHeld() {
        sigset_t ending;
        sigemptyset(&ending);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
            sigaddset(&ending, signal);
        ::pthread_sigmask(SIG_BLOCK, &ending, &before_);
    }
    ~SignalsHeld() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

private:
    sigset_t before_ = {};
};

/// Gives a new file the mode and owner of the one that it replaces. False where the owner can't be given.
bool take_over(const std::string& staged, const struct stat& former) {
    struct stat made = {};
    if (::stat(staged.c_str(), &made) != 0) return false;
    const bool same = made.st_uid == former.st_uid && made.st_gid == former.st_gid;
    if (!same && retried([&] { return ::chown(staged.c_str(), former.st_uid, former.st_gid); }) != 0) return false;
    return retried([&] { return ::chmod(staged.c_str(), former.st_mode & 07777U); }) == 0;
}

/// As for a file that the process makes itself.
int give_usual_mode(const std::string& staged) {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return retried([&] { return ::chmod(staged.c_str(), 0666U & ~mask); }) != 0 ? errno : 0;
}

std::string told(const FileFailure& failure) { return failure.path + ": " + std::strerror(failure.error); }

} // namespace

struct Transaction::Folder {
    PrivateFolder staging;
    std::map<std::string, OutputLock> locks; ///< by name

    explicit Folder(const std::string& path) : staging(path, staging_prefix) {}
};

struct Transaction::File {
    std::string folder; ///< of the target; empty of a device
    std::string target;
    std::string name; ///< that of the target
    std::string number;
    std::string staged;
    bool removed = false;

    bool is_device() const { return folder.empty(); }
};

Transaction::Transaction() {
    is_current_ = the_current == nullptr;
    if (!is_current_) return;
    the_current = this;
    sweep_work_directories();
}

Transaction::~Transaction() {
    if (is_current_) the_current = nullptr;
}

Transaction* Transaction::current() { return the_current; }

// What dead runs left is finished or removed before anything there is read or written.
void Transaction::visit(const std::string& folder) {
    if (!visited_.emplace(folder, true).second) return;
    sweep_private_folders(folder, staging_prefix, &journal_care);
    sweep_output_locks(folder);
}

Transaction::Folder* Transaction::folder_at(const std::string& path, std::string* why) {
    const auto found = folders_.find(path);
    if (found != folders_.end()) return found->second.get();
    visit(path);
    auto made = std::make_unique<Folder>(path);
    int error = made->staging.error();
    if (error == 0 && !first_folder_.empty()) {
        const FileFailure failure = point_to_journal(made->staging.path(), first_folder_);
        error = failure.error;
    }
    if (error != 0) {
        *why = std::strerror(error);
        return nullptr;
    }
    if (first_folder_.empty()) first_folder_ = made->staging.path();
    return (folders_[path] = std::move(made)).get();
}

Transaction::File* Transaction::file_at(const std::string& path, std::string* why) {
    const OutputPath at(path);
    if (!at.refusal.empty()) {
        *why = at.refusal;
        return nullptr;
    }
    const auto found = files_.find(at.full());
    if (found != files_.end()) return found->second.get();
    auto file = std::make_unique<File>();
    file->number = std::to_string(files_.size());
    file->target = at.full();
    if (at.is_device) {
        file->staged = work_directory() + "/device-" + file->number;
    } else {
        Folder* folder = folder_at(at.folder, why);
        if (!folder) return nullptr;
        *why = folder->locks[at.name].hold(at.folder, at.name);
        if (!why->empty()) {
            folder->locks.erase(at.name);
            return nullptr;
        }
        file->folder = at.folder;
        file->name = at.name;
        file->staged = folder->staging.path() + "/f" + file->number;
    }
    return (files_[file->target] = std::move(file)).get();
}

bool Transaction::hold(const std::string& path, std::string* why) {
    std::string told;
    const bool held = file_at(path, &told) != nullptr;
    if (why) *why = told;
    return held;
}

std::string Transaction::stage(const std::string& path, std::string* why) {
    const OutputPath at(path);
    if (at.refusal.empty() && is_work_directory(at.folder)) return path;
    File* file = file_at(path, why);
    if (!file) return "";
    file->removed = false;
    return file->staged;
}

std::string Transaction::seen(const std::string& path) {
    const OutputPath at(path);
    if (!at.refusal.empty() || at.is_device) return path;
    if (!is_work_directory(at.folder)) visit(at.folder);
    const auto found = files_.find(at.full());
    if (found == files_.end()) return path;
    if (found->second->removed) return "";
    return stands(found->second->staged) ? found->second->staged : path;
}

void Transaction::remove(const std::string& path) {
    const OutputPath at(path);
    std::string why;
    if (at.is_device || (!at.folder.empty() && is_work_directory(at.folder))) {
        if (!at.is_device) (void)remove_file(path);
        return;
    }
    // Nothing stands there, nor will: no need of a folder.
    if (at.refusal.empty() && !stands(at.full()) && files_.count(at.full()) == 0) return;
    File* file = file_at(path, &why);
    if (!file) return note_write_failure(path, why);
    (void)remove_file(file->staged);
    file->removed = true;
}

FileFailure Transaction::prepare(File& file, Journal& journal) {
    const bool is_written = stands(file.staged);
    struct stat former = {};
    const bool replaces = ::stat(file.target.c_str(), &former) == 0;
    if (!is_written && !(file.removed && replaces)) return {};
    Placing placing;
    placing.kind = is_written ? Placing::Kind::rename : Placing::Kind::remove;
    const std::string folder = folders_[file.folder]->staging.path();
    if (folder != first_folder_) {
        placing.folder = folder;
        placing.target_folder = file.folder;
    }
    placing.staged = "f" + file.number;
    placing.target = file.name;
    if (replaces) placing.kept = "k" + file.number;
    if (is_written && replaces && (former.st_nlink > 1 || !take_over(file.staged, former)))
        placing.kind = Placing::Kind::pour;
    journal.placings.push_back(placing);
    int error = is_written ? sync_path(file.staged) : 0;
    if (error == 0 && is_written && !replaces) error = give_usual_mode(file.staged);
    return {file.target, error};
}

FileFailure Transaction::pour_into_devices() {
    for (const auto& [target, file] : files_) {
        const int error = file->is_device() && stands(file->staged) ? pour(file->staged, target) : 0;
        if (error != 0) return {target, error};
    }
    return {};
}

// Where neither way is open, the next run finds the journal and goes on.
void Transaction::leave_to_next_run() {
    for (const auto& [path, folder] : folders_)
        folder->staging.leave();
    is_left_ = true;
}

FileFailure Transaction::carry_out(Journal& journal) {
    FileFailure failure = journal.carry_out();
    if (failure && journal.take_back()) leave_to_next_run();
    return failure;
}

FileFailure Transaction::place_by_journal(Journal& journal) {
    for (const auto& [path, folder] : folders_)
        if (const int error = sync_path(folder->staging.path())) return {path, error};
    FileFailure failure = journal.keep_former();
    // A single new name is put in place at once by itself.
    const bool alone = journal.placings.size() == 1 && journal.placings.front().kind == Placing::Kind::rename;
    if (!failure && !alone) failure = journal.begin();
    if (failure) return failure;
    failure = carry_out(journal);
    if (!is_left_) (void)journal.end();
    return failure;
}

FileFailure Transaction::place_all() {
    Journal journal(first_folder_);
    for (const auto& [target, file] : files_) {
        const FileFailure failure = file->is_device() ? FileFailure{} : prepare(*file, journal);
        if (failure) return failure;
    }
    if (const FileFailure failure = pour_into_devices()) return failure;
    if (journal.placings.empty()) return {};
    const SignalsHeld held;
    return place_by_journal(journal);
}

bool Transaction::commit(std::string* why) {
    const FileFailure failure = place_all();
    for (const auto& [target, file] : files_)
        if (file->is_device()) (void)remove_file(file->staged);
    files_.clear();
    folders_.clear();
    first_folder_.clear();
    if (failure && why) *why = told(failure);
    return !failure;
}

} // namespace embedded
