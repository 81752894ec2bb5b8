#pragma once
// What is installed beside the command, from the tables that its help is made from: so that none of them says
// anything else.

#include <string>

namespace tool {

/// Writes man1/NAME.1, and the scripts completions/bash/quillbrook, completions/zsh/_quillbrook and
/// completions/fish/quillbrook.fish below a folder. Throws `JobError`.
void write_help_files(const std::string& folder);

} // namespace tool
