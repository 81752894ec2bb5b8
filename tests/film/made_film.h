#pragma once
// Lists made of an edit and read back, and short ways to look at strips.

#include "cutlist/cutlist_options.h"
#include "embedded/edit_builder.h"
#include "embedded/services.h"
#include "film/film_uses.h"
#include "film/log_rows.h"
#include "quillbrook/cutlist.h"
#include "tests/logging/film_tables.h"
#include "tests/support/recording_logger.h"
#include "tests/support/scratch_directory.h"

#include <memory>
#include <string>

namespace film_test {

/// The table that the lists make of an edit.
class MadeList {
public:
    MadeList(const EditPtr& edit, const film::UseOptions& options, const std::string& log_bytes = "") {
        cutlist_options() = CutlistOptions();
        embedded::settings_block block;
        block.set("chan_type", std::to_string(options.kind));
        block.set("chan_num", std::to_string(options.number - 1));
        block.set("edit_units", "1");
        block.set("pull_match_assembly", options.neg_cut ? "0" : "1");
        block.set("film_reel", std::to_string(options.film_reel));
        block.set("output_file", folder_.file("l.txt"));
        if (!log_bytes.empty()) {
            put_bytes(folder_.file("l.rdb"), log_bytes);
            block.set("log_file", folder_.file("l.rdb"));
        }
        RecordingLogger logger;
        made = make_cutlist_from_edit(edit, logger, log_bytes.empty() ? 0 : 1, &block,
                                      embedded::EditBuilder::cues_of(edit), false);
        cutlist_options() = CutlistOptions();
        if (made) table = std::make_unique<recdb>(wide(folder_.file("l.cdb")), 1 << 30, false);
    }

    bool made = false;
    std::unique_ptr<recdb> table;

private:
    ScratchDirectory folder_;
};

/// "1 cut 0-48 A001 KJ1234560100+00" for each strip: number, role, frames, roll, first number.
inline std::string drawn(const film::Strip& strip) {
    static constexpr const char* roles[] = {"cut", "out", "in", "layer"};
    std::string text = std::to_string(strip.event) + " " + roles[static_cast<int>(strip.role)] + " " +
                       std::to_string(strip.start) + "-" + std::to_string(strip.end);
    if (strip.layer > 0) text += " V" + std::to_string(strip.layer + 1);
    if (strip.black) return text + " black";
    if (!strip.rolls.listed.empty()) text += " " + strip.rolls.listed;
    return text + (strip.key ? " " + strip.key.text_at(0) : "");
}

inline std::vector<std::string> drawn(const film::Strips& strips) {
    std::vector<std::string> lines;
    for (const film::Strip& strip : strips)
        lines.push_back(drawn(strip));
    return lines;
}

} // namespace film_test
