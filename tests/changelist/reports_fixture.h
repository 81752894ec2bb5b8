#pragma once
// The lists of changes on tables made in code: options and run state fresh, the clock still, pages in memory.

#include "changelist/change_record.h"
#include "changelist/change_reports.h"
#include "changelist/changelist_options.h"
#include "changelist/chgdb.h"
#include "changelist/run_state.h"
#include "host/fixed_text.h"
#include "reports/report.h"
#include "tests/support/environment.h"
#include "tests/support/memory_files.h"
#include "tests/support/plain_lines.h"
#include "tests/support/recording_logger.h"

#include <gtest/gtest.h>

#include <string>

namespace reports_test {

/// A row with its place among the steps.
struct MadeRow {
    const char* kind = "";
    int event1 = 0;
    int relpos1 = 0;
    int event2 = 0;
    int relpos2 = 0;
    int length = 0;
    const char* key_in = "";
    const char* key_out = "";
    const char* name = "";
    const char* scene = "";
    const char* take = "";
    const char* clip_in = "01:00:00:00";
    const char* clip_out = "01:00:00:00";
    const char* clip_kind = "24fps";
    int subevent1 = 0;
    int edit_in = 0;
    int reel = 1;
    const char* fx_op1 = "";
    int fx_len1 = 0;
    const char* fx_op2 = "";
    int fx_len2 = 0;
    int missing = 0;
    int optical = 0;
};

inline std::string rule() { return "\n" + std::string(129, '_') + "\n"; }

class ChangeListTest : public testing::Test {
protected:
    ChangeListTest() {
        changelist_options() = ChangelistOptions();
        change_run() = ChangeRun();
        set_sequence("24fps", "01:00:00:00");
    }
    ~ChangeListTest() override {
        changelist_options() = ChangelistOptions();
        change_run() = ChangeRun();
    }

    static ChangelistOptions& options() { return changelist_options(); }

    static void set_sequence(const char* kind, const char* start) {
        EditLabel& label = change_run().old_side.reel_label[0];
        label.set_MediumRoll(MediumRollIdent(8, 1));
        label.set_type(edlstr_to_label_type(kind));
        label.set_start(start);
    }
    static void use_feet() { options().units_frames = 0, options().units_feet = 1; }
    static void use_timecode() { options().units_frames = 0, options().units_timecode = 1; }

    static void add(chgdb& to, const MadeRow& made) {
        ChangeRecord row(to.film_std());
        put_text(row.record_type, made.kind);
        row.event1 = made.event1;
        row.subevent1 = made.subevent1;
        row.relpos1 = made.relpos1;
        row.event2 = made.event2;
        row.relpos2 = made.relpos2;
        row.edit_length = made.length;
        row.edit_in = made.edit_in;
        row.reel_seq = made.reel;
        row.old_reel_seq = made.reel;
        row.keycode_missing = made.missing;
        row.keycode_in.set_sample(made.key_in);
        row.keycode_out.set_sample(made.key_out);
        row.shot_name = fromUTF8(made.name, -1);
        put_text(row.scene, made.scene);
        put_text(row.take, made.take);
        row.prim_tc_in.set_type(edlstr_to_label_type(made.clip_kind));
        row.prim_tc_out.set_type(row.prim_tc_in.type());
        row.prim_tc_in.set_sample(made.clip_in);
        row.prim_tc_out.set_sample(made.clip_out);
        put_text(row.fx_op1, made.fx_op1);
        put_text(row.fx_op2, made.fx_op2);
        row.fx_len1 = made.fx_len1;
        row.fx_len2 = made.fx_len2;
        row.optical = made.optical;
        row.speed = 1;
        row.write(*to.get_record(static_cast<unsigned>(to.add_records(1))));
    }
    void add(const MadeRow& made) { add(table, made); }

    /// What a printing operation writes.
    template <class Printer> static std::string printed(Printer printer) {
        MemoryStream::Contents contents;
        {
            report out{Qb::Ptr<stream>(new MemoryStream(contents))};
            out.top_margin = out.bottom_margin = 1;
            printer(out);
        }
        return plain_lines(contents.bytes);
    }
    std::string summary() {
        return printed([&](report& out) { write_summary(out, table, logger); });
    }
    std::string new_material() {
        return printed([&](report& out) { write_new_material(out, table, logger); });
    }
    std::string changes() {
        return printed([&](report& out) { write_changes(out, table, logger); });
    }
    std::string transitions() {
        return printed([&](report& out) { write_transitions(out, table, logger); });
    }

    /// The rows of a list: what stands below the rule under its heads.
    static std::string below_heads(const std::string& list) {
        const std::size_t heads_end = list.find(rule());
        return heads_end == std::string::npos ? "no rule" : list.substr(heads_end + rule().size() + 1);
    }

    EnvironmentValue zone{"TZ", "UTC"};
    EnvironmentValue now{"SOURCE_DATE_EPOCH", "1000000000"};
    RecordingLogger logger;
    chgdb table{label_key_35mm_4p, &logger};
};

} // namespace reports_test
