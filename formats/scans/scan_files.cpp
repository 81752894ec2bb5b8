#include "formats/scans/scan_files.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <tuple>

namespace formats {
namespace {

namespace fs = std::filesystem;

constexpr int deepest_folder = 16;
constexpr std::size_t most_digits = 18;
constexpr std::string_view parting_signs = "._- ";

struct Extension {
    std::string_view name;
    ScanKind kind;
};

constexpr Extension extensions[] = {{".dpx", ScanKind::dpx}, {".exr", ScanKind::exr}};

/// A file's name in its parts: what stands before the digits, and those.
struct Name {
    std::string_view before, digits, extension;
};

Name parts_of(std::string_view name) {
    const std::size_t dot = std::min(name.rfind('.'), name.size());
    std::size_t first = dot;
    while (first > 0 && ascii::is_digit(name[first - 1]))
        --first;
    return {name.substr(0, first), name.substr(first, dot - first), name.substr(dot)};
}

const Extension* extension_of(std::string_view text) {
    for (const Extension& known : extensions)
        if (ascii::same(known.name, text)) return &known;
    return nullptr;
}

std::uint64_t number_of(std::string_view digits) {
    std::uint64_t number = 0;
    for (const char c : digits)
        number = number * 10 + static_cast<std::uint64_t>(c - '0');
    return number;
}

std::string stem_of(std::string_view before) {
    const std::size_t last = before.find_last_not_of(parting_signs);
    const bool parted = last != std::string_view::npos && last + 1 < before.size();
    return parted ? std::string(before.substr(0, last + 1)) : std::string();
}

class Finder {
public:
    explicit Finder(embedded::Warnings& warnings) : warnings_(warnings) {}

    void look_into(const std::string& folder, int depth, std::string& why) {
        std::vector<fs::directory_entry> entries;
        std::error_code error;
        for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
            entries.push_back(*at);
        if (error) {
            why = folder + ": " + error.message();
            return;
        }
        std::sort(entries.begin(), entries.end());
        std::vector<std::string> folders;
        for (const fs::directory_entry& entry : entries)
            take(folder, entry, folders);
        finish(folder);
        for (const std::string& inner : folders)
            look_further(folder + "/" + inner, depth);
    }

    std::vector<ScanFiles> take_found() { return std::move(found_); }

private:
    // The name before the number as it stands, so that A_1 and A.1 stay apart.
    using Key = std::tuple<std::string, ScanKind>;

    void look_further(const std::string& folder, int depth) {
        std::string why;
        if (depth < deepest_folder)
            look_into(folder, depth + 1, why);
        else
            why = folder + ": lies too deep to be looked into";
        if (!why.empty()) tell(why);
    }

    void tell(const std::string& what) { warnings_.emplace_back(embedded::WarningKind::dropped, what); }

    // Links to folders aren't followed: they might lead back.
    void take(const std::string& folder, const fs::directory_entry& entry, std::vector<std::string>& folders) {
        std::error_code ignored;
        const std::string name = entry.path().filename().string();
        if (name.front() == '.') return;
        if (entry.is_directory(ignored)) {
            if (entry.is_symlink(ignored))
                tell(folder + "/" + name + ": is a link to a folder, which isn't followed");
            else
                folders.push_back(name);
            return;
        }
        const Name parts = parts_of(name);
        const Extension* extension = extension_of(parts.extension);
        if (!extension) return;
        if (!entry.is_regular_file(ignored))
            tell(folder + "/" + name + ": isn't a plain file; left out");
        else if (parts.digits.empty() || parts.digits.size() > most_digits)
            tell(folder + "/" + name + ": has no frame number in its name; left out");
        else
            by_name_[Key(parts.before, extension->kind)].push_back({number_of(parts.digits), name});
    }

    void finish(const std::string& folder) {
        for (auto& [key, files] : by_name_) {
            std::sort(files.begin(), files.end(), [](const ScanFile& a, const ScanFile& b) {
                return std::tie(a.number, a.name) < std::tie(b.number, b.name);
            });
            drop_doubles(folder, files);
            found_.push_back({folder, stem_of(std::get<0>(key)), std::get<1>(key), std::move(files)});
        }
        by_name_.clear();
    }

    void drop_doubles(const std::string& folder, std::vector<ScanFile>& files) {
        const auto doubled = [&](const ScanFile& a, const ScanFile& b) {
            if (a.number == b.number) tell(folder + "/" + b.name + ": has the number of " + a.name + "; left out");
            return a.number == b.number;
        };
        files.erase(std::unique(files.begin(), files.end(), doubled), files.end());
    }

    embedded::Warnings& warnings_;
    std::map<Key, std::vector<ScanFile>> by_name_;
    std::vector<ScanFiles> found_;
};

} // namespace

std::string ScanFiles::digits(std::size_t index) const { return std::string(parts_of(files[index].name).digits); }

std::vector<ScanFiles> find_scans(const std::string& folder, embedded::Warnings& warnings, std::string& why) {
    Finder finder(warnings);
    const std::size_t last = folder.find_last_not_of('/');
    finder.look_into(last == std::string::npos ? folder : folder.substr(0, last + 1), 0, why);
    return finder.take_found();
}

bool is_picture_name(const std::string& path) { return extension_of(parts_of(path).extension) != nullptr; }

} // namespace formats
