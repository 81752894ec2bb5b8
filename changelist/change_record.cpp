#include "changelist/change_record.h"

#include "base/frame_math.h"
#include "base/plain_columns.h"
#include "changelist/row_fields.h"
#include "host/ascii_text.h"
#include "host/fixed_text.h"

#include <cmath>

namespace {

constexpr double speed_tolerance = 0.01;

/// What events are matched by, and what that needs to tell of those that match.
constexpr PlainColumn<ChangeRecord> columns_for_match[] = {
    plain_column<&ChangeRecord::edit_in>(hf_edit_in),
    plain_column<&ChangeRecord::edit_length>(hf_edit_length),
    plain_column<&ChangeRecord::speed>(hf_speed),
    plain_column<&ChangeRecord::keycode_missing>(hf_keycode_missing),
    plain_column<&ChangeRecord::cam_reel>(hf_cam_reel),
    plain_column<&ChangeRecord::fx_op1>(hf_fx_op1),
    plain_column<&ChangeRecord::fx_op2>(hf_fx_op2),
    plain_column<&ChangeRecord::fx_len1>(hf_fx_len1),
    plain_column<&ChangeRecord::fx_len2>(hf_fx_len2),
    plain_column<&ChangeRecord::reel_seq>(hf_reel_seq),
};

constexpr PlainColumn<ChangeRecord> other_columns[] = {
    plain_column<&ChangeRecord::event1>(hf_event1),
    plain_column<&ChangeRecord::event2>(hf_event2),
    plain_column<&ChangeRecord::subevent1>(hf_subevent1),
    plain_column<&ChangeRecord::subevent2>(hf_subevent2),
    plain_column<&ChangeRecord::optical>(hf_optical),
    plain_column<&ChangeRecord::record_type>(hf_record_type),
    plain_column<&ChangeRecord::old_edit_in>(hf_old_edit_in),
    plain_column<&ChangeRecord::scene>(hf_scene),
    plain_column<&ChangeRecord::take>(hf_take),
    plain_column<&ChangeRecord::description>(hf_description),
    plain_column<&ChangeRecord::fx_name2>(hf_fx_name2),
    plain_column<&ChangeRecord::fx_pos>(hf_fx_pos),
    plain_column<&ChangeRecord::xref_recnum>(hf_xref_recnum),
    plain_column<&ChangeRecord::relpos1>(hf_relpos1),
    plain_column<&ChangeRecord::relpos2>(hf_relpos2),
    plain_column<&ChangeRecord::old_reel_seq>(hf_old_reel_seq),
};

void read_ink(const dbrecord& row, chgdb_field field, LabelPoint& point) {
    if (*text_field(row, field)) {
        parse_code(row, field, point);
    } else {
        point = get_invalid_label()->get_label_point(0);
    }
}

// A count of its own length only belongs to a real key number.
void read_key(const dbrecord& row, chgdb_field field, bool missing, LabelPoint& point) {
    if (missing) point.modify_count_length(missing_key_digits);
    parse_code(row, field, point);
}

void read_brackets(const dbrecord& row, ChangeRecord& record) {
    parse_code(row, hf_bracket_in, record.bracket_in);
    parse_code(row, hf_bracket_out, record.bracket_out);
}

/// Of black its neighbours, too, as it is matched by them.
void read_place_on_film(const dbrecord& row, ChangeRecord& record) {
    read_key(row, hf_keycode_in, record.keycode_missing != 0, record.keycode_in);
    if (is_filler(record.keycode_in)) read_brackets(row, record);
}

void read_timecodes(const dbrecord& row, ChangeRecord& record) {
    record.prim_tc_in.set_type(timecode_kind(row));
    record.prim_tc_out.set_type(record.prim_tc_in.type());
    parse_timecode(row, hf_prim_tc_in, record.prim_tc_in);
    parse_timecode(row, hf_prim_tc_out, record.prim_tc_out);
}

void read_name_and_other_labels(const dbrecord& row, ChangeRecord& record) {
    record.shot_name = shot_name_field(row);
    read_key(row, hf_keycode_out, record.keycode_missing != 0, record.keycode_out);
    read_ink(row, hf_inkcode_in, record.inkcode_in);
    read_ink(row, hf_inkcode_out, record.inkcode_out);
    read_timecodes(row, record);
    if (!is_filler(record.keycode_in)) read_brackets(row, record);
}

void write_text(dbrecord& row, chgdb_field field, const char* text) { row.set_field(field, text, true); }

void write_point(dbrecord& row, chgdb_field field, LabelPoint point) { write_text(row, field, point.get_string()); }

// Film frames that an event covers, one past its last. A held frame covers one.
int frames_covered(const ChangeRecord& record) {
    if (!record.varispeed()) return record.edit_length;
    const int covered = whole_part(std::ceil(std::fabs(record.edit_length * record.speed)) + 0.002);
    return covered < 1 && record.edit_length != 0 ? 1 : covered;
}

int frames_to_last(const ChangeRecord& record) {
    if (!record.varispeed()) return frame_difference(record.edit_length, 1);
    return whole_part(std::fabs(record.edit_length * record.speed) + 0.002);
}

int sample_after(const ChangeRecord& record, int start, int step, int frames) {
    const int span = frame_product(step, frames);
    return record.speed < 0 ? frame_difference(start, span) : frame_sum(start, span);
}

} // namespace

ChangeRecord::ChangeRecord(label_t film_std) {
    clear();
    keycode_in.set_type(film_std);
    keycode_out = bracket_in = bracket_out = keycode_in;
    inkcode_in.set_type(label_t_to_ink_label_t(film_std));
    inkcode_out = inkcode_in;
}

void ChangeRecord::clear() {
    event1 = subevent1 = relpos1 = event2 = subevent2 = relpos2 = optical = 0;
    old_edit_in = old_reel_seq = edit_in = reel_seq = edit_length = 0;
    fx_len1 = fx_len2 = xref_recnum = 0;
    keycode_missing = 1;
    speed = 0;
    for (char* text : {record_type, cam_reel, scene, take, description, fx_op1, fx_op2, fx_name2, fx_pos})
        *text = '\0';
    shot_name = LightweightString<wchar_t>();
    const LabelPoint blank = get_invalid_label()->get_label_point(0);
    for (LabelPoint* point :
         {&keycode_in, &keycode_out, &inkcode_in, &inkcode_out, &prim_tc_in, &prim_tc_out, &bracket_in, &bracket_out})
        *point = blank;
}

void ChangeRecord::read(const dbrecord& row) {
    read_for_match(row);
    read_rest(row);
}

void ChangeRecord::read_for_match(const dbrecord& row) {
    for (const PlainColumn<ChangeRecord>& plain : columns_for_match)
        plain.read(*this, row, plain.field);
    read_place_on_film(row, *this);
}

void ChangeRecord::read_rest(const dbrecord& row) {
    for (const PlainColumn<ChangeRecord>& plain : other_columns)
        plain.read(*this, row, plain.field);
    read_name_and_other_labels(row, *this);
}

void ChangeRecord::read_names_and_labels(const dbrecord& row) {
    read_place_on_film(row, *this);
    read_name_and_other_labels(row, *this);
}

void ChangeRecord::write(dbrecord& row) const {
    for (const PlainColumn<ChangeRecord>& plain : columns_for_match)
        plain.write(*this, row, plain.field);
    for (const PlainColumn<ChangeRecord>& plain : other_columns)
        plain.write(*this, row, plain.field);
    write_names_and_labels(row);
}

void ChangeRecord::write_names_and_labels(dbrecord& row) const {
    write_text(row, hf_shot_name, toUTF8(shot_name).c_str());
    write_point(row, hf_keycode_in, keycode_in);
    write_point(row, hf_keycode_out, keycode_out);
    if (inkcode_in.is_valid()) write_point(row, hf_inkcode_in, inkcode_in);
    if (inkcode_out.is_valid()) write_point(row, hf_inkcode_out, inkcode_out);
    write_point(row, hf_prim_tc_in, prim_tc_in);
    write_point(row, hf_prim_tc_out, prim_tc_out);
    write_text(row, hf_prim_tc_std, label_type_to_edlstr(prim_tc_in.type()));
    write_point(row, hf_bracket_in, bracket_in);
    write_point(row, hf_bracket_out, bracket_out);
}

int ChangeRecord::key_step() const { return samples_per_frame(keycode_in); }

int ChangeRecord::ink_step() const { return samples_per_frame(inkcode_in); }

bool ChangeRecord::varispeed() const { return !same_speed(speed, 1.0); }

int ChangeRecord::key_in() const { return keycode_in.is_valid() ? keycode_in.sample : 0; }

int ChangeRecord::ink_in() const { return inkcode_in.is_valid() ? inkcode_in.sample : 0; }

int ChangeRecord::key_end() const {
    return keycode_in.is_valid() ? sample_after(*this, key_in(), key_step(), frames_covered(*this)) : 0;
}

int ChangeRecord::ink_end() const {
    return inkcode_in.is_valid() ? sample_after(*this, ink_in(), ink_step(), frames_covered(*this)) : 0;
}

int ChangeRecord::key_last() const {
    return keycode_in.is_valid() ? sample_after(*this, key_in(), key_step(), frames_to_last(*this)) : 0;
}

int ChangeRecord::ink_last() const {
    return inkcode_in.is_valid() ? sample_after(*this, ink_in(), ink_step(), frames_to_last(*this)) : 0;
}

void ChangeRecord::set_key_in(int sample) {
    if (keycode_in.is_valid()) keycode_in.set_sample(sample);
}

void ChangeRecord::set_ink_in(int sample) {
    if (inkcode_in.is_valid()) inkcode_in.set_sample(sample);
}

void ChangeRecord::set_outs() {
    keycode_out = keycode_in;
    keycode_out.set_sample(key_last());
    inkcode_out = inkcode_in;
    inkcode_out.set_sample(ink_last());
}

bool same_event(const ChangeRecord& a, const ChangeRecord& b) {
    return same_speed(a.speed, b.speed) && a.keycode_in == b.keycode_in && a.edit_length == b.edit_length &&
           ascii::same(a.cam_reel, b.cam_reel);
}

bool overlaps(const ChangeRecord& a, const ChangeRecord& b) {
    if (!ascii::same(a.keycode_in.get_prefix(), b.keycode_in.get_prefix())) return false;
    if (!ascii::same(a.cam_reel, b.cam_reel)) return false;
    if (a.varispeed()) {
        if (!same_speed(a.speed, b.speed)) return false;
        if (a.speed < 0) return a.key_end() < b.key_in() && a.key_in() > b.key_end();
    }
    return a.key_in() < b.key_end() && a.key_end() > b.key_in();
}

bool is_filler(const LabelPoint& point) {
    const char* prefix = point.get_prefix();
    return prefix[0] == '_' && prefix[1] == '_';
}

int samples_per_frame(const LabelPoint& point) { return point.is_valid() ? point.cvt()->samples_per_frame() : 1; }

bool same_speed(double a, double b) { return std::fabs(a - b) <= speed_tolerance; }
