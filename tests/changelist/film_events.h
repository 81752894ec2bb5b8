#pragma once
// Tables of events for the tests of the comparison.

#include "changelist/change_analysis.h"
#include "changelist/held_labels.h"
#include "host/fixed_text.h"
#include "tests/support/recording_logger.h"

#include <string>
#include <vector>

/// One event of 35mm film, key numbers as text.
struct FilmEvent {
    std::string key;
    int length = 0;
    int edit_in = 0;
    int reel = 1;
    double speed = 1.0;
    std::string cam_reel = "A001";
    std::string fx_op1 = "";
    int fx_len1 = 0;
    std::string fx_op2 = "";
    int fx_len2 = 0;
    std::string ink = "";
    std::string behind = "";   ///< last key number of the event before
    std::string ahead_of = ""; ///< first key number of the event behind
    int timecode = 0;
    int optical = 0;
};

inline ChangeRecord record_of(const FilmEvent& event) {
    ChangeRecord record(label_key_35mm_4p);
    record.keycode_in.set_sample(event.key.c_str());
    record.keycode_missing = is_filler(record.keycode_in) ? 1 : 0;
    record.edit_length = event.length;
    record.edit_in = event.edit_in;
    record.reel_seq = event.reel;
    record.speed = event.speed;
    record.optical = event.optical;
    put_text(record.cam_reel, event.cam_reel);
    put_text(record.fx_op1, event.fx_op1);
    put_text(record.fx_op2, event.fx_op2);
    record.fx_len1 = event.fx_len1;
    record.fx_len2 = event.fx_len2;
    record.bracket_in.set_sample(event.behind.c_str());
    record.bracket_out.set_sample(event.ahead_of.c_str());
    for (LabelPoint* ink : {&record.inkcode_in, &record.inkcode_out}) {
        if (event.ink.empty()) {
            *ink = LabelPoint();
        } else {
            ink->set_sample(event.ink.c_str());
        }
    }
    for (LabelPoint* timecode : {&record.prim_tc_in, &record.prim_tc_out})
        timecode->set_type(label_tc_24);
    record.prim_tc_in.set_sample(event.timecode);
    record.prim_tc_out.set_sample(event.timecode + event.length);
    record.set_outs();
    return record;
}

inline void append(chgdb& table, const ChangeRecord& record) {
    record.write(*table.get_record(static_cast<unsigned>(table.add_records(1))));
}

inline ChangeRecord read_row(const chgdb& table, unsigned index) {
    ChangeRecord record(table.film_std());
    record.read(*table.get_record(index));
    return record;
}

/// A table of 35mm film with its logger.
struct EventTable {
    RecordingLogger logger;
    chgdb table{label_key_35mm_4p, &logger};

    EventTable() = default;
    explicit EventTable(const std::vector<FilmEvent>& events) {
        for (const FilmEvent& event : events)
            append(table, record_of(event));
    }
};

/// None of the table's labels changes when it is read and written again.
inline bool are_labels_held(const chgdb& table) {
    const HeldLabels labels(table.film_std());
    for (unsigned index = 0; index < table.get_num_records(); ++index) {
        if (!labels.are_held(read_row(table, index), *table.get_record(index))) return false;
    }
    return true;
}

/// A row with its fields parted by bars.
inline std::string line_of(const chgdb& table, unsigned index) {
    std::string line;
    for (unsigned field = 0; field < hf_count; ++field)
        line += std::string(table.getField(index, field).view()) + "|";
    return line;
}

inline std::vector<std::string> lines_of(const chgdb& table) {
    std::vector<std::string> lines;
    for (unsigned index = 0; index < table.get_num_records(); ++index)
        lines.push_back(line_of(table, index));
    return lines;
}

/// What became of the film, in short: kind, key number, length, and the places in the old and the new cut.
inline std::string summary_of(const chgdb& table, unsigned index) {
    ChangeRecord row = read_row(table, index);
    const std::string kind = *row.record_type ? row.record_type : "==";
    std::string text = kind + " " + row.keycode_in.get_string() + " " + std::to_string(row.edit_length);
    if (kind == "FX") {
        return text + " " + row.fx_pos + " " + row.fx_op1 + std::to_string(row.fx_len1) + ">" + row.fx_op2 +
               std::to_string(row.fx_len2);
    }
    if (kind != "I") text += " old " + std::to_string(row.old_reel_seq) + ":" + std::to_string(row.old_edit_in);
    if (kind != "DU") text += " new " + std::to_string(row.reel_seq) + ":" + std::to_string(row.edit_in);
    return text;
}

inline std::vector<std::string> summaries_of(const chgdb& table) {
    std::vector<std::string> lines;
    for (unsigned index = 0; index < table.get_num_records(); ++index)
        lines.push_back(summary_of(table, index));
    return lines;
}

/// Both cuts compared.
struct Comparison {
    EventTable old_cut;
    EventTable new_cut;
    EventTable changes;

    Comparison(const std::vector<FilmEvent>& old_events, const std::vector<FilmEvent>& new_events,
               bool labels_held = false)
        : old_cut(old_events), new_cut(new_events) {
        merge_events(old_cut.table, new_cut.table, changes.table, changes.logger, labels_held);
    }
    std::vector<std::string> rows() const { return summaries_of(changes.table); }
};
