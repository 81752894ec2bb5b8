#pragma once
// Any bytes as the cutlists of two cuts, compared. The second file begins at the last header line of a table.

#include "changelist/changelist_options.h"
#include "changelist/run_state.h"
#include "embedded/services.h"
#include "quillbrook/changelist.h"
#include "tests/support/environment.h"
#include "tests/support/scratch_directory.h"

#include <string>

class ComparedTables {
public:
    /// How the lists are printed, as the options of the library say it.
    struct Form {
        const char* units;
        const char* scene_take;
        const char* keys;
    };

    void take(const std::string& bytes) {
        embedded::set_lists_directory(scratch_.path());
        const std::size_t second = bytes.rfind("%recdb");
        const std::size_t cut = second == std::string::npos ? 0 : second;
        put_bytes(old_file(), cut == 0 ? bytes : bytes.substr(0, cut));
        put_bytes(new_file(), bytes.substr(cut));
    }
    /// All lists of the two. The first reel of each side lies on the other side's second reel too.
    void compare(const Form& form) {
        changelist_options() = ChangelistOptions();
        change_run() = ChangeRun();
        embedded::settings_block block;
        for (const char* key :
             {"chg_summary_list", "chg_pull_list", "chg_verbose_list", "chg_dissolve_list", "chg_bench_list"})
            block.set(key, "1");
        block.set("chg_lengthunits", form.units);
        block.set("chg_useshotscenetake", form.scene_take);
        block.set("chg_showedgecodes", form.keys);
        const auto old_name = fromUTF8(old_file().c_str(), -1), new_name = fromUTF8(new_file().c_str(), -1);
        changelist_reels reels{{old_name, new_name}, {new_name, old_name}};
        SilentLogger logger;
        mr_make_changelist(reels, fromUTF8(scratch_.file("changes.txt").c_str(), -1), &block, logger);
    }

private:
    class SilentLogger : public LoggerHandle {
    public:
        void message(const LightweightString<wchar_t>&, int) override {}
    };

    std::string old_file() const { return scratch_.file("old.cdb"); }
    std::string new_file() const { return scratch_.file("new.cdb"); }

    ScratchDirectory scratch_;
    EnvironmentValue now_{"SOURCE_DATE_EPOCH", "1000000000"};
};
