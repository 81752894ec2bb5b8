#pragma once
// Edits of one log, checked.

#include "embedded/edit_builder.h"
#include "film/find.h"
#include "film/log_rows.h"
#include "tests/shots/logged_edit.h"

#include <string>
#include <vector>

namespace film_test {

using namespace logged;
using film::Code;
using film::Finding;
using film::Findings;
using film::Severity;

/// A row of a log: reel, times, camera roll, key number.
inline std::vector<std::string> row(const std::string& reel, const std::string& start, const std::string& end,
                                    const std::string& roll, const std::string& key) {
    return {"", reel, start, end, roll, "", "", key, "", "", "", ""};
}

/// A transfer as `logged::transfer` makes it, without a key number of its own.
inline SourceDescription tape(const std::string& reel) {
    SourceDescription source = transfer(reel);
    source.key.reset();
    source.reels[{2, 1}] = "A001";
    return source;
}

inline SourceDescription keyed(const std::string& name, const std::string& key) {
    SourceDescription source = tape(name);
    source.name = name;
    source.key = LabelDescription{label_key_35mm_4p, key, {}, {}};
    return source;
}

class Checked {
public:
    Checked() { options.edit_file = "reel.otio"; }

    Findings run(const Records& rows = {}) {
        const EditPtr edit = builder.finish();
        const embedded::Warnings& warnings = builder.warnings();
        if (rows.empty()) return film::check_edit(edit, options, nullptr, warnings);
        const MadeTable table(log_params(), log_columns(), rows);
        const film::LogRows log(table, 9);
        options.log_file = "show.rdb";
        return film::check_edit(edit, options, &log, warnings);
    }
    /// The tape's frames from one o'clock on.
    void play(const std::string& reel, int first, int length, const Fraction& speed = 1) {
        builder.add_event(v1, event_of(builder.add_source(tape(reel)), first, length, speed));
    }

    EditBuilder builder{edit_24()};
    int v1 = builder.add_channel(1);
    film::CheckOptions options;
};

/// "wrong log-overrun 48" for each finding: severity, code, position.
inline std::vector<std::string> drawn(const Findings& findings) {
    std::vector<std::string> lines;
    for (const Finding& finding : findings)
        lines.push_back(std::string(film::name_of(finding.severity)) + " " + film::info_of(finding.code).name + " " +
                        std::to_string(finding.place.frame));
    return lines;
}

} // namespace film_test
