#pragma once
// Rows of a comparison as its passes leave them, on 35mm film.

#include "changelist/change_record.h"
#include "changelist/chgdb.h"
#include "host/fixed_text.h"
#include "tests/changelist/bench_kit.h"
#include "tests/support/recording_logger.h"

#include <string>

namespace change_rows {

struct Row {
    const char* kind = "";
    int event1 = 0;
    int relpos1 = 0;
    int event2 = 0;
    int relpos2 = 0;
    int length = 0;
    int film = 0; ///< frame of the roll
    int old_reel = 0;
    int old_frame = 0;
    int new_reel = 0;
    int new_frame = 0;
    double speed = 1.0;
    int missing = 0;
    int optical = 0;
    int ink = -1; ///< frame; -1: none
    std::string roll = "KJ123456";
};

inline void add(chgdb& table, const Row& made) {
    ChangeRecord row(table.film_std());
    put_text(row.record_type, made.kind);
    row.event1 = made.event1;
    row.relpos1 = made.relpos1;
    row.event2 = made.event2;
    row.relpos2 = made.relpos2;
    row.optical = made.optical;
    row.edit_length = made.length;
    row.old_reel_seq = made.old_reel;
    row.old_edit_in = made.old_frame;
    row.reel_seq = made.new_reel;
    row.edit_in = made.new_frame;
    row.speed = made.speed;
    row.keycode_missing = made.missing;
    row.keycode_in = bench_kit::key_at(made.roll, made.film);
    row.inkcode_in = LabelPoint();
    if (made.ink >= 0) {
        row.inkcode_in = LabelPoint(made.ink * bench_kit::perforations, label_t_to_ink_label_t(table.film_std()));
        row.inkcode_in.set_prefix("AA12");
    }
    row.set_outs();
    put_text(row.cam_reel, made.roll.substr(0, 4));
    row.shot_name = fromUTF8("shot", -1);
    put_text(row.scene, "12A");
    put_text(row.take, "3");
    row.write(*table.get_record(static_cast<unsigned>(table.add_records(1))));
}

/// The table of one test.
struct Table {
    Table() = default;
    explicit Table(const std::vector<Row>& made) {
        for (const Row& row : made)
            add(rows, row);
    }

    RecordingLogger logger;
    chgdb rows{label_key_35mm_4p, &logger};
};

inline Vector<change_step> steps_of(const std::vector<Row>& made) {
    const Table table(made);
    Vector<change_step> steps;
    keep_detailed_steps(table.rows, steps);
    return steps;
}

} // namespace change_rows
