#include "changelist/held_labels.h"

#include <algorithm>
#include <string_view>

namespace {

/// Nothing that reads tables takes offence at these, or shows them in another form.
bool is_plain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

bool is_same(const LabelPoint& read, const LabelPoint& written) {
    return read == written && is_plain(written.get_prefix());
}

/// A point without a kind has no text, whatever its sample.
bool is_same_timecode(const LabelPoint& read, const LabelPoint& written) {
    return is_same(read, written) || (!read.is_valid() && !written.is_valid());
}

bool is_name_held(const dbrecord& row) {
    const std::string_view text = text_field(row, hf_shot_name);
    return (text.size() <= shot_name_chars && is_plain(text)) || toUTF8(shot_name_field(row)).view() == text;
}

bool are_timecodes_held(const ChangeRecord& record, const dbrecord& row) {
    LabelPoint in;
    in.set_type(timecode_kind(row));
    LabelPoint out = in;
    parse_timecode(row, hf_prim_tc_in, in);
    parse_timecode(row, hf_prim_tc_out, out);
    return is_same_timecode(in, record.prim_tc_in) && is_same_timecode(out, record.prim_tc_out);
}

} // namespace

bool HeldLabels::are_held(const ChangeRecord& record, const dbrecord& row) const {
    return is_same(labels_.key(row, hf_keycode_in), record.keycode_in) &&
           is_same(labels_.key(row, hf_keycode_out), record.keycode_out) &&
           is_same(labels_.ink(row, hf_inkcode_in), record.inkcode_in) &&
           is_same(labels_.ink(row, hf_inkcode_out), record.inkcode_out) && are_timecodes_held(record, row) &&
           is_name_held(row);
}

bool HeldLabels::is_bracket_in_held(const ChangeRecord& record, const dbrecord& row) const {
    return is_same(labels_.bracket(row, hf_bracket_in), record.bracket_in);
}
