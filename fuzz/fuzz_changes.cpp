// Compares any two files as the cutlists of two cuts, in each form of the lists, and carries the steps out. The
// second file begins at the last header line of a table.

#include "changelist/changelist_options.h"
#include "changelist/run_state.h"
#include "embedded/services.h"
#include "quillbrook/changelist.h"
#include "tests/support/environment.h"
#include "tests/support/scratch_directory.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

constexpr std::size_t longest_input = 1 << 16;

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

struct Form {
    const char* units;
    const char* scene_take;
    const char* keys;
};

constexpr Form forms[] = {{"0", "0", "1"}, {"1", "1", "1"}, {"2", "0", "0"}};

void compare(const Form& form, const ScratchDirectory& scratch, const std::string& old_file,
             const std::string& new_file) {
    changelist_options() = ChangelistOptions();
    change_run() = ChangeRun();
    embedded::settings_block block;
    for (const char* key :
         {"chg_summary_list", "chg_pull_list", "chg_verbose_list", "chg_dissolve_list", "chg_bench_list"})
        block.set(key, "1");
    block.set("chg_lengthunits", form.units);
    block.set("chg_useshotscenetake", form.scene_take);
    block.set("chg_showedgecodes", form.keys);
    const auto old_name = fromUTF8(old_file.c_str(), -1);
    const auto new_name = fromUTF8(new_file.c_str(), -1);
    // The first reel of each side lies on the other side's second reel too.
    changelist_reels reels{{old_name, new_name}, {new_name, old_name}};
    SilentLogger logger;
    mr_make_changelist(reels, fromUTF8(scratch.file("changes.txt").c_str(), -1), &block, logger);
    for (const change_list list : {detailed_changes, bench_changes}) {
        const change_proof proof = prove_change_steps(list);
        if (!proof.proved && proof.reason[0] == '\0') std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchDirectory scratch;
    static const EnvironmentValue now("SOURCE_DATE_EPOCH", "1000000000");
    if (size > longest_input) return 0;
    embedded::set_lists_directory(scratch.path());
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t second = bytes.rfind("%recdb");
    const std::size_t cut = second == std::string::npos ? 0 : second;
    put_bytes(scratch.file("old.cdb"), cut == 0 ? bytes : bytes.substr(0, cut));
    put_bytes(scratch.file("new.cdb"), bytes.substr(cut));
    for (const Form& form : forms)
        compare(form, scratch, scratch.file("old.cdb"), scratch.file("new.cdb"));
    return 0;
}
