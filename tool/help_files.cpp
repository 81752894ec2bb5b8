#include "tool/help_files.h"

#include "embedded/services.h"
#include "tool/completions.h"
#include "tool/man_pages.h"
#include "tool/tool_error.h"

#include <filesystem>

namespace tool {
namespace {

namespace fs = std::filesystem;

void write_one(const fs::path& path, const std::string& text) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    std::string why = error.message();
    if (error || !embedded::write_file_whole(path.string(), text, &why)) throw JobError(path.string() + ": " + why);
}

} // namespace

void write_help_files(const std::string& folder) {
    for (const ManPage& page : man_pages())
        write_one(fs::path(folder) / "man1" / (page.name + ".1"), page.text);
    const fs::path completions = fs::path(folder) / "completions";
    write_one(completions / "bash/quillbrook", bash_completion());
    write_one(completions / "zsh/_quillbrook", zsh_completion());
    write_one(completions / "fish/quillbrook.fish", fish_completion());
}

} // namespace tool
