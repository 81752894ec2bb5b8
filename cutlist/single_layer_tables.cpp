#include "cutlist/single_layer_tables.h"

#include "base/lasting.h"
#include "base/messages.h"
#include "cutlist/cutlist_options.h"
#include "cutlist/single_layer_records.h"
#include "host/os.h"
#include "host/settings.h"
#include "reports/cutdb.h"

#include <cstddef>
#include <cstdio>
#include <iterator>

namespace {

constexpr int clip_column_count = 13;

/// The columns that all tables end with, from the edit position on.
constexpr const char* clip_columns[clip_column_count] = {
    "AT_EDIT_FRAME",     "TRANSITION_IN", "TRNS_IN_LENGTH", "TRANSITION_OUT",      "TRNS_OUT_LENGTH",
    "CLIP_LENGTH",       "REEL_ID",       "FILM_CODE_IN",   "FILM_CODE_OUT(incl)", "CLIP_SPEED",
    "CLIP_MODIFICATION", "SHOT_NAME",     "COMMENTS(CUES)",
};

/// Places of those columns, counted from the first of them.
enum clip_column : int {
    clip_at_edit_frame = 0,
    clip_transition_in,
    clip_trns_in_length,
    clip_transition_out,
    clip_trns_out_length,
    clip_length_column,
    clip_reel_id,
    clip_film_code_in,
    clip_film_code_out,
    clip_speed,
    clip_modification_column,
    clip_shot_name,
    clip_comments
};

/// A schema: columns of the table's own, then those of the clip.
template <std::size_t Own> struct layer_schema {
    DBFieldDesc columns[Own + clip_column_count + 1];

    explicit layer_schema(const char* const (&own)[Own]) {
        for (std::size_t i = 0; i < Own; ++i)
            columns[i] = {own[i], DBFieldTypes::text};
        for (std::size_t i = 0; i < clip_column_count; ++i)
            columns[Own + i] = {clip_columns[i], DBFieldTypes::text};
    }
};

constexpr const char* sl1_columns[] = {"FX_NUM", "FX_TYPE", "TRACK_NUM(A/B Roll)"};
constexpr const char* sl2_columns[] = {"EVENT_NUM", "TYPE(CLIP/FX)", "TRACK_NUM(A/B Roll)"};
constexpr const char* sl3_columns[] = {"TRACK_NUM"};

template <std::size_t Own> constexpr int own_columns(const char* const (&)[Own]) { return static_cast<int>(Own); }

/// The schema of the table whose own columns these are.
template <const auto& Own> const DBFieldDesc* schema_of() {
    static const Lasting<layer_schema<std::size(Own)>> schema(Own);
    return schema.value().columns;
}

dbrecord& new_row(recdb& list) { return *list.get_record(static_cast<unsigned>(list.add_records(1))); }

void set_text(dbrecord& row, int column, const char* text) { row.set_field(column, text, true); }

void set_code(dbrecord& row, int column, LabelPoint code) {
    if (code.is_valid()) set_text(row, column, code.get_string());
}

void set_transition(dbrecord& row, int column, const char* name, int length) {
    if (length == 0) return;
    set_text(row, column, name);
    row.set_field(column + 1, length);
}

void set_clip(dbrecord& row, int first, int at_edit_frame, const clip_part& clip) {
    row.set_field(first + clip_at_edit_frame, at_edit_frame);
    set_transition(row, first + clip_transition_in, clip.transition_in, clip.trns_in_length);
    set_transition(row, first + clip_transition_out, clip.transition_out, clip.trns_out_length);
    row.set_field(first + clip_length_column, clip.clip_length);
    set_text(row, first + clip_reel_id, clip.reel_id);
    set_code(row, first + clip_film_code_in, clip.film_code_in);
    set_code(row, first + clip_film_code_out, clip.film_code_out);
    row.set_field(first + clip_speed, clip.speed);
    set_text(row, first + clip_modification_column, clip.clip_modification);
    set_text(row, first + clip_shot_name, toUTF8(clip.shot_name).c_str());
    set_text(row, first + clip_comments, clip.comments);
}

void set_track(dbrecord& row, int column, int track, char ab_roll) {
    if (!ab_roll) {
        row.set_field(column, track);
        return;
    }
    char text[24];
    std::snprintf(text, sizeof text, "%1d(%c)", track, ab_roll);
    set_text(row, column, text);
}

} // namespace

sl1db::sl1db() : recdb(schema_of<sl1_columns>()) {}
sl2db::sl2db() : recdb(schema_of<sl2_columns>()) {}
sl3db::sl3db() : recdb(schema_of<sl3_columns>()) {}

void append(sl1db& list, const sl1_rec& piece) {
    dbrecord& row = new_row(list);
    row.set_field(0, piece.fx_num);
    set_text(row, 1, piece.fx_type);
    set_track(row, 2, piece.track, piece.ab_roll);
    set_clip(row, own_columns(sl1_columns), piece.at_edit_frame, piece.clip);
}

void append(sl2db& list, const sl2_rec& piece) {
    dbrecord& row = new_row(list);
    row.set_field(0, piece.event_num);
    char type[24] = "clip";
    if (piece.type == 'F') std::snprintf(type, sizeof type, "FX(%d)", piece.fx_num);
    set_text(row, 1, type);
    if (piece.track > 0) set_track(row, 2, piece.track, piece.ab_roll);
    set_clip(row, own_columns(sl2_columns), piece.at_edit_frame, piece.clip);
}

void append(sl3db& list, const sl3_rec& piece) {
    dbrecord& row = new_row(list);
    if (piece.track > 0) set_track(row, 0, piece.track, 0);
    set_clip(row, own_columns(sl3_columns), piece.at_edit_frame, piece.clip);
}

bool begin_list(recdb& list, int number, cutdb& db, LoggerHandle& logger) {
    char extension[] = ".sl0";
    char message[] = "Creating sl0 file ";
    extension[3] = message[11] = static_cast<char>('0' + number);
    list.set_filename(stripExtension(cutlist_options().output_file) + Qb::WStringFromAscii(extension));
    logger.message(Qb::WStringFromAscii(message) + list.get_filename(), level_progress);

    int order[] = {cf_optical_record, cf_track, cf_edit_in, -1};
    db.set_sortfields(order);
    db.sort(1, 0);
    return db.get_num_records() != 0;
}

void save_list(recdb& list) {
    if (list.get_num_records() == 0) return;
    OS()->files().remove(list.get_filename());
    list.save_text_without_header();
}
