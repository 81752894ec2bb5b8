#include "reports/optical_drawing.h"

#include "reports/report_context.h"

#include "base/code_text.h"
#include "base/format_text.h"
#include "base/frame_math.h"
#include "host/fixed_text.h"

#include <cmath>
#include <cstdarg>

namespace {

constexpr int drawing_stops[] = {40, 0};

constexpr char no_key[] = "NO KEYKODE";
constexpr double slack = 1e-6;

/// What stands in a column of the drawing, by side.
struct ColumnForm {
    const char* colon;
    const char* vee;
    const char* before_spacer;
    const char* before_text;
};

constexpr ColumnForm columns[] = {
    {"                  :", "                  V", "     ", ""},
    {"                   :", "                   V", "      ", "  "},
};

struct Cell {
    char text[160] = "";
};

/// One drawing operation's view of both rolls: its own, which `side` names, and the other one.
class Rolls {
public:
    Rolls(report& out, int side, int& left_end, int& right_end)
        : own_end(side ? right_end : left_end), other_end(side ? left_end : right_end), out_(out), own_(side ? 1 : 0) {}

    const char* own_colon() const { return columns[own_].colon; }
    const char* own_vee() const { return columns[own_].vee; }
    const char* other_colon() const { return columns[other()].colon; }

    Cell own_spacer(int frames) const { return spacer(own_, frames); }
    Cell other_spacer(int frames) const { return spacer(other(), frames); }
    Cell own_text(const char* format, ...) const __attribute__((format(printf, 2, 3))) {
        va_list values;
        va_start(values, format);
        const Cell cell = text(own_, format, values);
        va_end(values);
        return cell;
    }
    Cell other_text(const char* format, ...) const __attribute__((format(printf, 2, 3))) {
        va_list values;
        va_start(values, format);
        const Cell cell = text(other(), format, values);
        va_end(values);
        return cell;
    }

    void line(const char* own, const char* other) const {
        out_.print("%s\t%s\n", own_ ? other : own, own_ ? own : other);
    }
    /// The same as two pieces of text, so that a bar at the end of the left one takes nothing of the right.
    void line_in_two(const char* own, const char* other) const {
        out_.print("%s", own_ ? other : own);
        out_.print("\t%s\n", own_ ? own : other);
    }
    void colons() const { line(own_colon(), other_colon()); }

    int& own_end;
    int& other_end;

private:
    int other() const { return 1 - own_; }

    static Cell spacer(int column, int frames) {
        Cell cell;
        format_text(cell.text, "%s-----SPACER %d FRAMES-----", columns[column].before_spacer, frames);
        return cell;
    }
    static Cell text(int column, const char* format, va_list values) {
        Cell cell;
        const std::size_t indent = format_text(cell.text, "%s", columns[column].before_text);
        format_text(cell.text + indent, sizeof cell.text - indent, format, values);
        return cell;
    }

    report& out_;
    int own_;
};

void print_roll_heads(report& out, int layer) {
    out.print("               %c-ROLL\t                 %c-ROLL\n", layer * 2 + 63, layer * 2 + 64);
    out.print("-----------------------------------          ----------------------------------\n");
    out.print("\n");
}

bool has_own_speed(const cut_report& cut) { return std::fabs(1.0 - cut.speed) > slack; }

/// A shot's length, and its speed where that isn't normal.
ListText length_and_speed(const cut_report& cut) {
    ListText out;
    const int length = frame_difference(cut.edit_out, cut.edit_in);
    if (has_own_speed(cut)) {
        format_text(out.text, "length: %d  **SPEED %d%%**", length, whole_part(cut.speed * 100));
    } else {
        format_text(out.text, "length: %d", length);
    }
    return out;
}

ListText key_text(LabelPoint point, int with_prefix) {
    ListText out;
    code_text(out.text, point, with_prefix);
    return out;
}

LabelPoint moved(LabelPoint point, int frames) {
    const int samples = frame_product(point.cvt()->samples_per_frame(), frames);
    point.set_sample(frame_sum(point.sample, samples));
    return point;
}

int film_frames(double edit_frames, double speed) { return whole_part(round_frames(edit_frames * speed) + slack); }

/// The key numbers of a shot. Those that only one side of a transition has are left empty on the other.
struct ShotKeys {
    ListText begin;
    ListText transition;
    ListText end;
};

ShotKeys no_keys() {
    ShotKeys keys;
    for (ListText* text : {&keys.begin, &keys.transition, &keys.end})
        put_text(text->text, no_key);
    return keys;
}

ShotKeys plain_keys(const cut_report& cut) {
    if (cut.keycode_missing) return no_keys();
    return {key_text(cut.cut_key_in, 1), {}, last_frame_text(cut.cut_key_out, cut.speed, slack)};
}

ShotKeys outgoing_keys(const cut_report& cut) {
    ShotKeys keys = plain_keys(cut);
    if (cut.keycode_missing) return keys;
    const int frames = film_frames(cut.fx_len_out, cut.speed);
    keys.transition = key_text(moved(cut.cut_key_out, frame_difference(0, frames)), 1);
    return keys;
}

ShotKeys incoming_keys(const cut_report& cut) {
    ShotKeys keys = plain_keys(cut);
    if (cut.keycode_missing) return keys;
    keys.transition = key_text(moved(cut.cut_key_in, film_frames(cut.fx_len_in - 1.0, cut.speed)), 0);
    return keys;
}

int last_frame(const cut_report& cut) { return frame_difference(cut.edit_out, 1); }

LightweightString<char> shot_name(const cut_report& cut) { return toUTF8(cut.shot_name); }

void print_gap_above_shot(const Rolls& rolls, int gap) {
    rolls.colons();
    if (gap > 0) rolls.line(rolls.own_spacer(gap).text, rolls.other_colon());
    rolls.colons();
}

void print_shot_body(Rolls& rolls, const cut_report& cut, bool spaced) {
    Cell other;
    put_text(other.text, rolls.other_colon());
    if (spaced) {
        other = rolls.other_spacer(frame_difference(cut.edit_out, rolls.other_end));
        rolls.other_end = cut.edit_out;
    }
    const ShotKeys keys = plain_keys(cut);
    const char* const colon = rolls.other_colon();
    const Cell name = rolls.own_text("SHOT: %.11s roll: %.12s", shot_name(cut).c_str(), cut.cam_reel);
    rolls.line_in_two(name.text, other.text);
    rolls.line(rolls.own_text("%s", length_and_speed(cut).text).text, colon);
    if (cut.utr_fx_present) rolls.line(rolls.own_text("** clip FX: %.25s **", cut.utr_fx_name).text, colon);
    const ListText begin = position_text(cut.edit_in);
    const ListText end = position_text(last_frame(cut));
    rolls.line(rolls.own_text("begin: %s   %s", begin.text, keys.begin.text).text, colon);
    rolls.line(rolls.own_text("end:   %s   %s", end.text, keys.end.text).text, colon);
}

// The outgoing shot came in by the transition before, so only the gap ahead of the next one is left to draw.
void print_gap_beside(const Rolls& rolls, int gap) {
    rolls.line(rolls.own_vee(), rolls.other_colon());
    if (gap >= 1) rolls.line(rolls.own_vee(), rolls.other_spacer(gap).text);
}

void print_outgoing_head(const Rolls& rolls, const cut_report& cut, const ShotKeys& keys, int gap) {
    const char* const colon = rolls.other_colon();
    const Cell name = rolls.own_text("SHOT: %.11s roll: %.12s", shot_name(cut).c_str(), cut.cam_reel);
    rolls.line(name.text, gap < 1 ? colon : rolls.other_spacer(gap).text);
    rolls.line(rolls.own_text("%s", length_and_speed(cut).text).text, colon);
    if (cut.utr_fx_present) rolls.line(rolls.own_text("** clip FX: %.25s **", cut.utr_fx_name).text, colon);
    const ListText begin = position_text(cut.edit_in);
    rolls.line(rolls.own_text("begin:    %s %s", begin.text, keys.begin.text).text, colon);
}

void print_incoming_head(const Rolls& rolls, const cut_report& cut) {
    const char* const vee = rolls.own_vee();
    const Cell name = rolls.other_text("SHOT: %.11s roll: %.12s", shot_name(cut).c_str(), cut.cam_reel);
    rolls.line(vee, name.text);
    rolls.line(vee, rolls.other_text("%s", length_and_speed(cut).text).text);
    if (cut.utr_fx_present) rolls.line(vee, rolls.other_text("** Clip FX: %.25s **", cut.utr_fx_name).text);
}

void print_fx_block(report& out, const cut_report& outgoing, const cut_report& incoming, const ListText& start,
                    const ListText& end) {
    out.print("%s\t%s\n", columns[0].vee, columns[1].vee);
    out.print("   *%.25s* ", outgoing.fx_name_out);
    out.print(" FX start %s   FX end %s   FX len %d\n", start.text, end.text,
              frame_difference(outgoing.edit_out, incoming.edit_in));
    out.print("                         ~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~\n");
}

void print_key_line(const Rolls& rolls, const char* what, const ListText& in, const ListText& in_key,
                    const ListText& out, const ListText& out_key) {
    rolls.line(rolls.own_text("%s OUT:%s %s", what, out.text, out_key.text).text,
               rolls.other_text("%s IN:%s %s", what, in.text, in_key.text).text);
}

} // namespace

void print_optical_shot(report& out, cut_report& cut, int& side, int& left_end, int& right_end, int first_on_layer,
                        int layer, int more_on_track) {
    out.tab_stops = drawing_stops;
    Rolls rolls(out, side, left_end, right_end);
    out.need_lines(7);
    if (first_on_layer) {
        print_roll_heads(out, layer);
        left_end = cut.edit_out;
    } else {
        print_gap_above_shot(rolls, frame_difference(cut.edit_in, rolls.own_end));
        rolls.own_end = cut.edit_out;
    }
    print_shot_body(rolls, cut, !first_on_layer || more_on_track);
    side = !side;
}

void print_optical_transition(report& out, cut_report& outgoing, cut_report& incoming, int& side, int& left_end,
                              int& right_end, int first_on_layer, int layer) {
    out.tab_stops = drawing_stops;
    Rolls rolls(out, side, left_end, right_end);
    const ShotKeys out_keys = outgoing_keys(outgoing);
    const ShotKeys in_keys = incoming_keys(incoming);
    const ListText fx_start = position_text(frame_difference(outgoing.edit_out, outgoing.fx_len_out));
    const ListText fx_end = position_text(last_frame(outgoing));
    const ListText full = position_text(frame_difference(frame_sum(incoming.edit_in, incoming.fx_len_in), 1));

    out.need_lines(12);
    if (first_on_layer) {
        print_roll_heads(out, layer);
        left_end = right_end = outgoing.edit_in;
    }
    const int gap = frame_difference(incoming.edit_in, rolls.other_end);
    if (outgoing.fx_op_in[0] && !first_on_layer) {
        print_gap_beside(rolls, gap);
    } else {
        if (!first_on_layer) rolls.colons();
        print_outgoing_head(rolls, outgoing, out_keys, gap);
    }
    rolls.line(rolls.own_vee(), rolls.other_colon());
    rolls.own_end = outgoing.edit_out;
    rolls.other_end = incoming.edit_out;

    print_incoming_head(rolls, incoming);
    print_fx_block(out, outgoing, incoming, fx_start, fx_end);
    print_key_line(rolls, "start", position_text(incoming.edit_in), in_keys.begin, fx_start, out_keys.transition);
    print_key_line(rolls, "full ", full, in_keys.transition, fx_end, out_keys.end);
    if (incoming.fx_op_out[0]) {
        side = !side;
        return;
    }
    const ListText end = position_text(last_frame(incoming));
    rolls.line(rolls.own_colon(), rolls.other_text("end:     %s %s", end.text, in_keys.end.text).text);
}
