#pragma once
// Tables of matched, new and gone film made in code, and what the passes make of them.

#include "changelist/change_record.h"
#include "changelist/run_state.h"
#include "changelist/steps/moves.h"
#include "host/fixed_text.h"
#include "tests/support/recording_logger.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

struct Place {
    int reel;
    int frame;
};

class MovesTest : public testing::Test {
protected:
    explicit MovesTest(label_t film_std = label_key_35mm_4p) : changes(film_std, &logger) { set_reels(1); }
    ~MovesTest() override { change_run() = ChangeRun(); }

    static void set_reels(int count) { change_run().reel_max = count; }

    ChangeRecord record(const char* kind, const char* key, int length) const {
        ChangeRecord row(changes.film_std());
        put_text(row.record_type, kind);
        row.speed = 1;
        row.keycode_missing = 0;
        row.keycode_in.set_sample(key);
        row.inkcode_in = get_invalid_label()->get_label_point(0);
        row.edit_length = length;
        row.set_outs();
        return row;
    }
    static void add_to(chgdb& table, const ChangeRecord& row) {
        row.write(*table.get_record(static_cast<unsigned>(table.add_records(1))));
    }

    /// Film in both cuts.
    ChangeRecord matched(Place old_place, Place new_place, int length, const char* key = "KJ1234560100+00") const {
        ChangeRecord row = record("", key, length);
        row.old_reel_seq = old_place.reel;
        row.old_edit_in = old_place.frame;
        row.reel_seq = new_place.reel;
        row.edit_in = new_place.frame;
        return row;
    }
    ChangeRecord moved(const char* kind, Place old_place, Place new_place, int length) const {
        ChangeRecord row = matched(old_place, new_place, length);
        put_text(row.record_type, kind);
        return row;
    }
    ChangeRecord inserted(Place place, int length, const char* key = "KJ1234560200+00") const {
        ChangeRecord row = record("I", key, length);
        row.reel_seq = place.reel;
        row.edit_in = place.frame;
        return row;
    }
    /// As the analysis leaves it: on its old reel on both sides, and with no place in the new cut.
    ChangeRecord gone(Place place, int length, const char* key = "KJ1234560300+00", const char* kind = "DU") const {
        ChangeRecord row = record(kind, key, length);
        row.reel_seq = row.old_reel_seq = place.reel;
        row.old_edit_in = place.frame;
        return row;
    }
    void add(const ChangeRecord& row) { add_to(changes, row); }

    /// All four passes, in their order.
    void run_all() {
        EXPECT_EQ(classify_moves(changes, logger), nullptr);
        EXPECT_EQ(merge_rows(changes, logger), nullptr);
        chgdb old_events(changes.film_std(), &logger);
        chgdb reused(changes.film_std(), &logger);
        EXPECT_EQ(find_reused_material(changes, old_events, reused, logger), nullptr);
        EXPECT_EQ(number_steps(changes, logger), nullptr);
    }

    static std::string field(const chgdb& table, unsigned row, chgdb_field column) {
        return table.getField(row, static_cast<unsigned>(column)).c_str();
    }
    std::vector<ChangeRecord> rows() const {
        std::vector<ChangeRecord> result;
        for (unsigned i = 0; i < changes.get_num_records(); ++i) {
            result.emplace_back(changes.film_std());
            result.back().read(*changes.get_record(i));
        }
        return result;
    }
    /// "KIND old place>new place" of each row that the table shows.
    std::vector<std::string> kinds() const {
        std::vector<std::string> result;
        for (const ChangeRecord& row : rows()) {
            result.push_back(std::string(row.record_type) + " " + std::to_string(row.old_reel_seq) + ":" +
                             std::to_string(row.old_edit_in) + ">" + std::to_string(row.reel_seq) + ":" +
                             std::to_string(row.edit_in));
        }
        return result;
    }
    /// "KIND step.part@position step.part@position" of each row that the table shows.
    std::vector<std::string> steps() const {
        std::vector<std::string> result;
        const auto one = [](int event, int part, int position) {
            return " " + std::to_string(event) + "." + std::to_string(part) + "@" + std::to_string(position);
        };
        for (const ChangeRecord& row : rows()) {
            result.push_back(row.record_type + one(row.event1, row.subevent1, row.relpos1) +
                             one(row.event2, row.subevent2, row.relpos2));
        }
        return result;
    }

    RecordingLogger logger;
    chgdb changes;
};

using Lines = std::vector<std::string>;
