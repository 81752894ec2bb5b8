#include "embedded/private_folder.h"
#include "embedded/services.h"
#include "embedded/transaction.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <sys/stat.h>

namespace embedded {
namespace {

LightweightString<wchar_t> wide(const std::string& bytes) {
    return fromUTF8(LightweightString<char>(std::string_view(bytes)));
}

constexpr const char* work_prefix = "quillbrook-";

std::string temporary_folder() {
    const char* folder = std::getenv("TMPDIR");
    return folder && *folder ? folder : "/tmp";
}

/// Where working files lie. One that we made ourselves goes with the process that made it.
class WorkDirectory {
public:
    void choose(const std::string& path) {
        chosen_ = path;
        path_made_ = own_ && path.empty();
    }

    bool is(const std::string& path) const {
        if (!path_made_) return false;
        char real[PATH_MAX];
        return ::realpath((chosen_.empty() ? path_ : chosen_).c_str(), real) && path == real;
    }

    const std::string& path() {
        if (!path_made_) make();
        return chosen_.empty() ? path_ : chosen_;
    }

    std::string fault() {
        (void)path();
        return own_ && own_->error() != 0 ? temporary_folder() + ": " + std::strerror(own_->error()) : "";
    }

private:
    void make() {
        path_made_ = true;
        if (chosen_.empty()) {
            make_own();
        } else {
            std::error_code ignored;
            std::filesystem::create_directories(chosen_, ignored);
        }
    }

    // Where no directory can be made the name still stands, and writing to it fails with its reason.
    void make_own() {
        own_ = std::make_unique<PrivateFolder>(temporary_folder(), work_prefix);
        path_ = own_->error() == 0 ? own_->path() : temporary_folder() + '/' + work_prefix + "none";
    }

    std::string chosen_;
    std::string path_;
    bool path_made_ = false;
    std::unique_ptr<PrivateFolder> own_;
};

WorkDirectory& work() {
    static WorkDirectory directory;
    return directory;
}

struct Directories {
    std::string lists; ///< empty: the working directory
    LightweightString<wchar_t> wide_lists;
    LightweightString<wchar_t> record_tables = L"./";
};

// Never destroyed: the services that its texts came from may be gone by then.
Directories& directories() {
    static auto& chosen = *new Directories;
    return chosen;
}

bool ends_a_directory(const LightweightString<wchar_t>& path) { return !path.empty() && path.view().back() == L'/'; }

} // namespace

void set_work_directory(const std::string& path) { work().choose(path); }

const std::string& work_directory() { return work().path(); }

std::string fault_of_work_directory() { return work().fault(); }

void sweep_work_directories() { sweep_private_folders(temporary_folder(), work_prefix); }

bool is_work_directory(const std::string& path) { return work().is(path); }

void set_lists_directory(const std::string& path) { directories().lists = path; }

void set_record_table_directory(const std::string& path) {
    LightweightString<wchar_t> directory = wide(path.empty() ? "." : path);
    if (!ends_a_directory(directory)) directory += std::wstring_view(L"/");
    directories().record_tables = directory;
}

} // namespace embedded

const LightweightString<wchar_t>& getListsDirectory() {
    auto& chosen = embedded::directories();
    chosen.wide_lists = embedded::wide(chosen.lists.empty() ? embedded::work_directory() : chosen.lists);
    return chosen.wide_lists;
}

const LightweightString<wchar_t>& getRDBDirectory(iSettings::eType) { return embedded::directories().record_tables; }

LightweightString<wchar_t> joinPaths(const LightweightString<wchar_t>& left, const LightweightString<wchar_t>& right) {
    if (left.empty()) return right;
    if (right.empty() || embedded::ends_a_directory(left)) return left + right;
    return left + L"/" + right;
}

LightweightString<wchar_t> stripExtension(const LightweightString<wchar_t>& path) {
    const std::wstring_view whole = path.view();
    const std::size_t slash = whole.rfind(L'/');
    const std::size_t name = slash == std::wstring_view::npos ? 0 : slash + 1;
    const std::size_t point = whole.rfind(L'.');
    // A point that opens the name hides a file and begins no extension.
    const bool has_extension =
        point != std::wstring_view::npos && point > name && whole.find_first_not_of(L'.', name) < point;
    return has_extension ? LightweightString<wchar_t>(whole.substr(0, point)) : path;
}

bool fileExists(const LightweightString<wchar_t>& path) {
    struct stat status = {};
    const std::string name = toUTF8(path).c_str();
    embedded::Transaction* run = embedded::Transaction::current();
    return ::stat((run ? run->seen(name) : name).c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}
