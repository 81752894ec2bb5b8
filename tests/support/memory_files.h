#pragma once
// Output files that are kept in memory.

#include "embedded/services.h"
#include "host/counted.h"
#include "host/os.h"
#include "host/text.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

/// Appends to a text that outlives it. `writes` counts the calls, `closed` turns true when the stream goes.
class MemoryStream : public stream {
public:
    struct Contents {
        std::string bytes;
        int writes = 0;
        unsigned longest_write = 0;
        bool closed = false;
    };

    explicit MemoryStream(Contents& contents) : contents_(contents) {}
    ~MemoryStream() override { contents_.closed = true; }

    void write(const void* data, unsigned int count) override {
        contents_.bytes.append(static_cast<const char*>(data), count);
        ++contents_.writes;
        if (count > contents_.longest_write) contents_.longest_write = count;
    }

private:
    Contents& contents_;
};

/// Files by path, in UTF-8. Opening replaces, and each call is noted.
class MemoryFiles : public file_service {
public:
    void remove(LightweightString<wchar_t> path) override {
        calls.push_back("remove " + std::string(toUTF8(path).c_str()));
        files.erase(toUTF8(path).c_str());
    }

    Qb::Ptr<stream> open(LightweightString<wchar_t> path, int access, int creation, int sharing, int flags) override {
        const std::string name = toUTF8(path).c_str();
        calls.push_back("open " + name + " " + std::to_string(access) + " " + std::to_string(creation) + " " +
                        std::to_string(sharing) + " " + std::to_string(flags));
        if (refuses) return nullptr;
        files[name] = std::make_unique<MemoryStream::Contents>();
        return Qb::Ptr<stream>(new MemoryStream(*files[name]));
    }

    std::map<std::string, std::unique_ptr<MemoryStream::Contents>> files;
    std::vector<std::string> calls;
    bool refuses = false;
};

/// Puts files in memory behind `OS()` while it lives; memory and counts stay the standard ones.
class MemoryFileSystem : public operating_system {
public:
    MemoryFileSystem() { embedded::use_operating_system(this); }
    ~MemoryFileSystem() override { embedded::use_operating_system(nullptr); }

    memory_service& memory() override { return embedded::standard_operating_system().memory(); }
    file_service& files() override { return disc; }
    count_service& counts() override { return embedded::standard_operating_system().counts(); }

    MemoryFiles disc;
};
