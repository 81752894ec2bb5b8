#pragma once
// A directory of its own for one test, gone with it.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class ScratchDirectory {
public:
    ScratchDirectory() : path_((std::filesystem::temp_directory_path() / "scratch-XXXXXX").string()) {
        if (!::mkdtemp(path_.data())) std::abort();
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + "/" + name; }
    std::size_t count_files() const {
        const std::filesystem::directory_iterator all(path_);
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

private:
    std::string path_;
};

inline std::string bytes_of_file(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void put_bytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}
