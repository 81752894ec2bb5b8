// A cutlist record to and from its row.

#include "base/plain_columns.h"
#include "host/recdb.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"

#include <cstring>

namespace {

/// Where a record's film lies, together with its key numbers.
constexpr PlainColumn<cut_s> film_columns[] = {
    plain_column<&cut_s::edit_in>(cf_edit_in),
    plain_column<&cut_s::edit_out>(cf_edit_out),
    plain_column<&cut_s::keycode_missing>(cf_keycode_missing),
    plain_column<&cut_s::fx_op_in>(cf_fx_op_in),
    plain_column<&cut_s::fx_len_in>(cf_fx_len_in),
    plain_column<&cut_s::fx_op_out>(cf_fx_op_out),
    plain_column<&cut_s::fx_len_out>(cf_fx_len_out),
    plain_column<&cut_s::speed>(cf_speed),
    plain_column<&cut_s::special>(cf_special),
};

/// What no list prints but that of timecodes.
constexpr PlainColumn<cut_s> unlisted_columns[] = {
    plain_column<&cut_s::src_reelid>(cf_src_reelid),
    plain_column<&cut_s::aud_reelid>(cf_aud_reelid),
    plain_column<&cut_s::src24P_reelid>(cf_src24P_reelid),
    plain_column<&cut_s::cookie>(cf_cookie),
    plain_column<&cut_s::scene>(cf_scene),
    plain_column<&cut_s::take>(cf_take),
    plain_column<&cut_s::description>(cf_description),
};

constexpr PlainColumn<cut_s> listed_columns[] = {
    plain_column<&cut_s::event>(cf_event),
    plain_column<&cut_s::optical_record>(cf_optical_record),
    plain_column<&cut_s::optical_ref>(cf_optical_ref),
    plain_column<&cut_s::track>(cf_track),
    plain_column<&cut_s::optical_tracks>(cf_optical_tracks),
    plain_column<&cut_s::optical_layer_count>(cf_optical_layer_count),
    plain_column<&cut_s::optical_error>(cf_optical_error),
    plain_column<&cut_s::optical_in>(cf_optical_in),
    plain_column<&cut_s::optical_out>(cf_optical_out),
    plain_column<&cut_s::optical_name>(cf_optical_name),
    plain_column<&cut_s::cam_reel>(cf_cam_reel),
    plain_column<&cut_s::fx_mod_in>(cf_fx_mod_in),
    plain_column<&cut_s::fx_mod_out>(cf_fx_mod_out),
    plain_column<&cut_s::fx_name_out>(cf_fx_name_out),
    plain_column<&cut_s::clip_cue>(cf_clip_cue),
    plain_column<&cut_s::cue_description>(cf_cue_description),
    plain_column<&cut_s::utr_fx_present>(cf_utr_fx_present),
    plain_column<&cut_s::utr_fx_name>(cf_utr_fx_name),
};

/// A field copied out of a row; empty when the field is.
template <std::size_t N> struct FieldText {
    char text[N + 1];

    FieldText(const dbrecord& row, cutdb_field field) {
        text[0] = '\0';
        row.in_field(field, text, static_cast<int>(N));
    }
};

constexpr int label_length = 19;
constexpr int name_length = 1023;
using LabelText = FieldText<label_length>;
using NameText = FieldText<name_length>;

label_t read_kind(const dbrecord& row, cutdb_field field) {
    return edlstr_to_label_type(FieldText<11>(row, field).text);
}

void read_point(LabelPoint& point, const dbrecord& row, cutdb_field field, label_t kind) {
    const LabelText text(row, field);
    if (text.text[0]) {
        point.set_type(kind);
        point.set_sample(text.text);
    } else {
        point = get_invalid_label()->get_label_point(0);
    }
}

int key_direction(const cut_s& cut) {
    const bool known = cut.keycode_in.is_valid() && cut.keycode_out.is_valid();
    return known && cut.keycode_out.sample < cut.keycode_in.sample ? -1 : 1;
}

// The kind is written with the in point alone.
void write_points(dbrecord& row, LabelPoint in, LabelPoint out, cutdb_field in_field, cutdb_field out_field,
                  cutdb_field kind_field) {
    if (in.is_valid()) {
        row.set_field(in_field, in.get_string(), true);
        row.set_field(kind_field, label_type_to_edlstr(in.type()), true);
    }
    if (out.is_valid()) row.set_field(out_field, out.get_string(), true);
}

struct TimecodeColumns {
    cutdb_field in, out, kind, medium;
};

constexpr TimecodeColumns prim_columns = {cf_prim_tc_in, cf_prim_tc_out, cf_prim_tc_std, cf_prim_tc_medium};
constexpr TimecodeColumns aud_columns = {cf_aud_tc_in, cf_aud_tc_out, cf_aud_tc_std, cf_aud_tc_medium};
constexpr TimecodeColumns src24P_columns = {cf_src24P_tc_in, cf_src24P_tc_out, cf_src24P_tc_std, cf_src24P_tc_medium};

void write_timecode(dbrecord& row, const EditLabel& label, const TimecodeColumns& columns) {
    row.set_field(columns.in, label.get_string(0), true);
    row.set_field(columns.out, label.get_string(label.end), true);
    row.set_field(columns.kind, label_type_to_edlstr(label.type()), true);
    row.set_field(columns.medium, static_cast<int>(label.get_MediumRoll().medium));
}

void read_timecode(EditLabel& label, const dbrecord& row, const TimecodeColumns& columns,
                   const MediumRollIdent& ident) {
    const label_t kind = read_kind(row, columns.kind);
    label.set_type(kind);
    label.set_MediumRoll(ident);
    label.set_start(LabelText(row, columns.in).text);
    LabelPoint end(0, kind);
    end.set_sample(LabelText(row, columns.out).text);
    label.set_end(end.sample);
}

template <std::size_t N> void read_columns(cut_s& cut, const PlainColumn<cut_s> (&columns)[N], const dbrecord& row) {
    for (const PlainColumn<cut_s>& plain : columns)
        plain.read(cut, row, plain.field);
}

template <std::size_t N> int write_columns(const cut_s& cut, const PlainColumn<cut_s> (&columns)[N], dbrecord& row) {
    int result = 0;
    for (const PlainColumn<cut_s>& plain : columns)
        result = plain.write(cut, row, plain.field);
    return result;
}

constexpr cutdb_field label_fields[] = {cf_keycode_in,   cf_keycode_out,  cf_inkcode_in, cf_inkcode_out,
                                        cf_prim_tc_in,   cf_prim_tc_out,  cf_aud_tc_in,  cf_aud_tc_out,
                                        cf_src24P_tc_in, cf_src24P_tc_out};

bool is_read_whole(const dbrecord& row, cutdb_field field, int length) {
    const char* const text = row.get_field(static_cast<unsigned short>(field));
    return !text || ::strnlen(text, static_cast<std::size_t>(length) + 1) <= static_cast<std::size_t>(length);
}

bool are_texts_read_whole(const dbrecord& row) {
    for (const cutdb_field field : label_fields)
        if (!is_read_whole(row, field, label_length)) return false;
    return is_read_whole(row, cf_shot_name, name_length);
}

} // namespace

int cut_s::to_record(dbrecord& row) const {
    row.set_field(cf_shot_name, toUTF8(shot_name).c_str(), true);
    write_points(row, keycode_in, keycode_out, cf_keycode_in, cf_keycode_out, cf_keylabeltype);
    write_points(row, inkcode_in, inkcode_out, cf_inkcode_in, cf_inkcode_out, cf_inklabeltype);
    write_timecode(row, prim_tc, prim_columns);
    write_timecode(row, aud_tc, aud_columns);
    write_timecode(row, src24P_tc, src24P_columns);
    write_columns(*this, film_columns, row);
    write_columns(*this, unlisted_columns, row);
    return write_columns(*this, listed_columns, row);
}

void cut_s::read_film(const dbrecord& row) {
    read_columns(*this, film_columns, row);
    const label_t kind = read_kind(row, cf_keylabeltype);
    read_point(keycode_in, row, cf_keycode_in, kind);
    read_point(keycode_out, row, cf_keycode_out, kind);
    direction = key_direction(*this);
}

void cut_s::read_listed(const dbrecord& row) {
    read_film(row);
    read_columns(*this, listed_columns, row);
    shot_name = fromUTF8(NameText(row, cf_shot_name).text, -1);
    const label_t kind = read_kind(row, cf_inklabeltype);
    read_point(inkcode_in, row, cf_inkcode_in, kind);
    read_point(inkcode_out, row, cf_inkcode_out, kind);
}

void cut_s::from_record(dbrecord& row) {
    read_listed(row);
    read_columns(*this, unlisted_columns, row);
    // Only the primary timecode has its medium in the table; those of the others are fixed.
    std::int32_t medium = prim_tc.get_MediumRoll().medium;
    plain_columns::read(medium, row, cf_prim_tc_medium);
    read_timecode(prim_tc, row, prim_columns, MediumRollIdent(medium, 2));
    read_timecode(aud_tc, row, aud_columns, MediumRollIdent(medium_sound, 3));
    read_timecode(src24P_tc, row, src24P_columns, MediumRollIdent(medium_24p, 1));
}

// What a record writes reads back as it was, but for texts that are longer than a record takes, and for the media of
// the timecodes but the first.
void rewrite_record(dbrecord& row) {
    if (are_texts_read_whole(row)) {
        row.set_field(cf_aud_tc_medium, medium_sound);
        row.set_field(cf_src24P_tc_medium, medium_24p);
        return;
    }
    cut_s record;
    record.from_record(row);
    record.to_record(row);
}
