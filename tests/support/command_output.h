#pragma once
// What other programs say of a file.

#include <array>
#include <cstdio>
#include <string>

/// All that a line of the shell prints, its complaints too.
inline std::string output_of(const std::string& command) {
    std::string out;
    std::FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
    std::array<char, 4096> buffer{};
    for (std::size_t read = 0; (read = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        out.append(buffer.data(), read);
    pclose(pipe);
    return out;
}
