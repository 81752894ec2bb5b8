// Ours but for what a program likes to do itself: memory, files, messages and settings. Its services live in `main` and
// die there: whoever calls them later ends the program.

#include <embedded/edit_builder.h>
#include <embedded/services.h>
#include <quillbrook/cutlist.h>

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <map>
#include <string>

namespace {

bool over = false;
int settings_asked_for = 0;

void expect_alive() {
    if (!over) return;
    std::cerr << "a service was called behind main\n";
    std::_Exit(3);
}

class OwnMemory : public memory_service {
public:
    ~OwnMemory() override { over = true; }
    void* allocate(std::size_t size) override {
        expect_alive();
        ++made;
        return std::malloc(size ? size : 1);
    }
    void free(void* block) override {
        expect_alive();
        std::free(block);
    }
    unsigned long made = 0;
};

using Disc = std::map<std::string, std::string>;

class OwnFile : public stream {
public:
    explicit OwnFile(std::string& bytes) : bytes_(bytes) {}
    void write(const void* data, unsigned int count) override { bytes_.append(static_cast<const char*>(data), count); }

private:
    std::string& bytes_;
};

/// Reports go to a map in place of the disc. Tables are the host's record tables, which write their own files.
class OwnFiles : public file_service {
public:
    void remove(LightweightString<wchar_t> path) override {
        expect_alive();
        disc.erase(toUTF8(path).c_str());
    }
    Qb::Ptr<stream> open(LightweightString<wchar_t> path, int, int, int, int) override {
        expect_alive();
        std::string& bytes = disc[toUTF8(path).c_str()];
        bytes.clear();
        return Qb::Ptr<stream>(new OwnFile(bytes));
    }
    Disc disc;
};

class OwnCounts : public count_service {
public:
    void add_ref(use_count& count) override {
        expect_alive();
        ++count.users;
    }
    int release_ref(use_count& count) override {
        expect_alive();
        return --count.users;
    }
};

class OwnSystem : public operating_system {
public:
    memory_service& memory() override { return blocks; }
    file_service& files() override { return reports; }
    count_service& counts() override { return users; }

    OwnMemory blocks;
    OwnFiles reports;
    OwnCounts users;
};

class OwnLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>& text, int level) override {
        ++lines;
        if (level == 4) std::cerr << toUTF8(text).c_str() << '\n';
    }
    int lines = 0;
};

/// Settings as a table of texts: the least that a block must do.
class OwnSettings : public configb {
public:
    std::map<std::string, std::string, std::less<>> values;

    int in(const LightweightString<char>& key, int& value) const override { return number(key, value); }
    int in(const LightweightString<char>& key, unsigned int& value) const override { return number(key, value); }
    int in(const LightweightString<char>& key, bool& value) const override { return number(key, value); }
    int in(const LightweightString<char>& key, LightweightString<char>& value) const override {
        const std::string* text = find(key);
        if (text) value = LightweightString<char>(text->c_str());
        return text ? 0 : -1;
    }
    int in(const LightweightString<char>& key, char* value) const override {
        const std::string* text = find(key);
        if (text) std::strcpy(value, text->c_str());
        return text ? 0 : -1;
    }
    int in(const LightweightString<char>& key, strp_field& value) const override {
        const std::string* text = find(key);
        if (text) value.fill(text->c_str());
        return text ? 0 : -1;
    }

private:
    const std::string* find(const LightweightString<char>& key) const {
        const auto found = values.find(key.c_str());
        return found == values.end() ? nullptr : &found->second;
    }
    template <class Number> int number(const LightweightString<char>& key, Number& value) const {
        const std::string* text = find(key);
        if (text) value = static_cast<Number>(std::atoi(text->c_str()));
        return text ? 0 : -1;
    }
};

EditPtr one_shot() {
    embedded::SourceDescription source;
    source.identity = source.name = "A001";
    source.reels[{2, 1}] = "A001";
    source.key = embedded::LabelDescription{label_key_35mm_4p, "KJ1234560100+00", {}, {}};
    embedded::EditBuilder builder({});
    builder.add_channel(1);
    embedded::EventDescription event;
    event.source = builder.add_source(source);
    event.duration = 2;
    builder.add_event(0, event);
    return builder.finish();
}

bool lists_are_made(const std::string& folder, OwnSystem& system) {
    OwnSettings options;
    options.values = {{"chan_type", "1"}, {"chan_num", "0"}, {"output_file", folder + "/own.txt"}};
    OwnLogger logger;
    if (!make_cutlist_from_edit(one_shot(), logger, 0, &options, nullptr, false)) return false;
    const Disc& disc = system.reports.disc;
    const auto report = disc.find(folder + "/own.txt");
    const bool listed = report != disc.end() && report->second.find("KJ123456") != std::string::npos;
    return listed && logger.lines != 0 && system.blocks.made != 0 && settings_asked_for != 0;
}

} // namespace

/// Stands before the function of that name in the embedded host.
int config_int(const char*, int fallback, int, int) {
    ++settings_asked_for;
    return fallback;
}

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    OwnSystem system;
    embedded::use_operating_system(&system);
    if (lists_are_made(argv[1], system)) return 0;
    std::cerr << "the lists aren't as they should be\n";
    return 1;
}
