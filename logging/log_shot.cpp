#include "logging/log_shot.h"

#include "base/number_text.h"
#include "host/ascii_text.h"
#include "host/fixed_text.h"
#include "host/recdb.h"
#include "logging/log_shot_columns.h"
#include "logging/log_shot_list.h"

#include <cstdio>

namespace {

constexpr int longest_shot = 108000; ///< frames: an hour at 30 a second
constexpr std::size_t message_size = 128;

constexpr int severity_dubious = 1;
constexpr int severity_bad = 2;

constexpr std::int32_t rate_with_pulldown = 7;
constexpr std::int32_t rate_without_pulldown = 3;

// Empty where the row or the whole table has no such field.
const char* text_of(const dbrecord& row, log_slot slot) {
    const char* text = row.get_field(static_cast<unsigned short>(log_column(slot)));
    return text ? text : "";
}

template <std::size_t N> void read_upper(char (&target)[N], const dbrecord& row, log_slot slot) {
    put_text(target, text_of(row, slot));
    ascii::make_upper(target);
}

label_t label_type_of(const dbrecord& row, log_slot slot, label_t otherwise) {
    const char* text = text_of(row, slot);
    return *text ? TvStd_to_label_type(edlstr_to_tv_standard(text)) : otherwise;
}

void read_point(LabelPoint& point, const dbrecord& row, log_slot slot, label_t type) {
    point.set_type(type);
    point.set_sample(text_of(row, slot));
}

int phase_of(const char* text) {
    const int phase = decimal_number(text);
    return phase < 0 ? 0 : phase;
}

void turn_off(LogShotPulldown& pulldown) {
    pulldown.on = 0;
    pulldown.rate = rate_without_pulldown;
    pulldown.sequence = 0;
}

bool says_on(const char* text) { return *text == 'Y' || *text == 'y' || *text == '1'; }
bool says_off(const char* text) { return *text == '0' || *text == 'N' || *text == 'n'; }

} // namespace

LogShot::LogShot(LogShotList& owner, dbrecord& row, bool first) : list(&owner), record(&row) {
    read_texts();
    read_label_types();
    read_timecodes();
    film_label_type = list->film_label_type;
    if (first) settle_film_label_type();
    read_film_codes();
    read_pulldown();
    check();
}

void LogShot::read_texts() {
    put_text(name, text_of(*record, slot_name));
    put_text(film_roll, text_of(*record, slot_film_roll));
    read_upper(reel, *record, slot_reel);
    read_upper(snd_reel, *record, slot_snd_reel_again);
    read_upper(reel_24p, *record, slot_24p_reel);
}

void LogShot::read_label_types() {
    vid_label_type = label_type_of(*record, slot_label_std, list->vid_label_type);
    snd_label_type = label_type_of(*record, slot_snd_label_std, list->snd_label_type);
}

void LogShot::read_timecodes() {
    read_point(start, *record, slot_start_time, vid_label_type);
    read_point(end, *record, slot_end_time, vid_label_type);
    read_point(snd_start, *record, slot_snd_start, snd_label_type);
    read_point(start_24p, *record, slot_start_24p, code_24p_label_type);
}

// What the first row says holds for all others, whatever they say.
void LogShot::settle_film_label_type() {
    const char* text = text_of(*record, slot_film_label_std);
    if (*text) film_label_type = edlstr_to_label_type(text);
    keycode.set_type(film_label_type);
    if (list->long_keycode >= 0) keycode.modify_count_length(list->long_keycode + 4);
    film_label_type = list->film_label_type = keycode.type();
}

void LogShot::read_film_codes() {
    const LabelPoint blank = get_invalid_label()->get_label_point(0);
    if (*text_of(*record, slot_start_keycode))
        read_point(keycode, *record, slot_start_keycode, film_label_type);
    else
        keycode = blank;
    if (*text_of(*record, slot_start_inkcode))
        read_point(inkcode, *record, slot_start_inkcode, label_t_to_ink_label_t(list->film_label_type));
    else if (log_column(slot_start_inkcode) != -1)
        inkcode = blank;
}

void LogShot::read_pulldown() {
    pulldown.on = list->pulldown;
    pulldown.sequence = list->sequence;
    pulldown.rate = list->pulldown_rate;
    read_pulldown_columns();
    roll_pulldown_to_start();
}

// A row that says no can still carry a phase; a negative phase takes the pulldown off a row that says yes.
void LogShot::read_pulldown_columns() {
    const char* phase = text_of(*record, slot_sequence);
    if (log_column(slot_pulldown) == -1) {
        if (*phase) pulldown.sequence = phase_of(phase);
        return;
    }
    const char* text = text_of(*record, slot_pulldown);
    if (says_on(text)) {
        pulldown.on = 1;
        pulldown.rate = rate_with_pulldown;
    } else if (says_off(text)) {
        turn_off(pulldown);
    }
    if (!*phase) return;
    pulldown.sequence = decimal_number(phase);
    if (pulldown.sequence < 0) turn_off(pulldown);
}

// From the phase at midnight to that of the first frame.
void LogShot::roll_pulldown_to_start() {
    if (pulldown.on != 1) return;
    const int cycle = pulldown.rate == 2 ? 25 : 5;
    pulldown.sequence = static_cast<std::int32_t>((std::int64_t{pulldown.sequence} + start.sample) % cycle);
}

void LogShot::check() {
    if (!start.is_useful() || !end.is_useful()) return set_message("Faulty timecode", severity_bad);
    if (end.sample < start.sample) return set_message("End time before start time", severity_bad);
    if (start == end) return set_message("Zero-length shot", severity_bad);
    valid = 1;
    if (std::int64_t{end.sample} - start.sample > longest_shot) set_message("Very int32_t shot", severity_dubious);
}

void LogShot::set_message(const char* text, int severity) {
    message.reset(new char[message_size]);
    put_text(message.get(), message_size, text);
    if (severity > severity_dubious) valid = 0;
}

const char* describe_shot(const LogShot& shot) {
    static char text[128];
    LabelPoint from = shot.start;
    LabelPoint to = shot.end;
    std::snprintf(text, sizeof text, "name <%s> from <%s> to <%s>\n", shot.name, from.get_string(), to.get_string());
    return text;
}
