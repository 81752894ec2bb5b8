// Prints any bytes as a saved cutlist, in each form of the lists. No list may leave its pages.

#include "cutlist/cutlist_options.h"
#include "quillbrook/cutlist.h"
#include "tests/support/environment.h"
#include "tests/support/memory_files.h"
#include "tests/support/scratch_directory.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

constexpr std::size_t longest_table = 1 << 16;
constexpr int page_width = 130;

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

struct Form {
    int chan_type;
    int pull_match_assembly;
    int edit_units;
    int by_timecode;
};

constexpr Form forms[] = {{1, 1, 0, 0}, {1, 0, 0, 0}, {1, 1, 1, 0}, {2, 1, 0, 0}, {2, 0, 1, 1}};

void choose(const Form& form) {
    CutlistOptions& options = cutlist_options();
    options = CutlistOptions();
    options.chan_type = form.chan_type;
    options.pull_match_assembly = form.pull_match_assembly;
    options.edit_units = form.edit_units;
    embedded::set_host_setting("audio_cutlist_by_timecode_test", form.by_timecode);
}

void check_width(const std::string& bytes) {
    int column = 0;
    for (const char c : bytes) {
        if (c == '\r' || c == '\f') column = 0;
        if (static_cast<signed char>(c) >= 32 && ++column > page_width) std::abort();
    }
}

void print_in_form(const Form& form, const std::string& path) {
    MemoryFileSystem system;
    SilentLogger logger;
    choose(form);
    const bool made = print_cutlist_reports(fromUTF8(path.c_str(), -1), fromUTF8("report", -1), logger, false, nullptr);
    if (made != (system.disc.files.count("report") != 0)) std::abort();
    if (made) check_width(system.disc.files["report"]->bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchDirectory scratch;
    static const EnvironmentValue now("SOURCE_DATE_EPOCH", "1000000000");
    if (size > longest_table) return 0;
    const std::string path = scratch.file("table.cdb");
    put_bytes(path, std::string(reinterpret_cast<const char*>(data), size));
    for (const Form& form : forms)
        print_in_form(form, path);
    return 0;
}
