#include "logging/log_shot_columns.h"

#include "base/messages.h"
#include "host/recdb.h"

#include <cstddef>

namespace {

constexpr const char* slot_names[] = {
    "name",          "reel",       "start time",     "end time",  "label_std",     "cam reel",       "snd reel",
    "start keycode", "start perf", "film label_std", "lab reel",  "comp reel",     "start inkcode",  "pulldown",
    "sequence",      "snd reel",   "24p reel",       "snd start", "snd label_std", "start 24p code",
};
static_assert(sizeof slot_names / sizeof *slot_names == slot_film_roll);

struct roll_choice {
    int film_reel;
    log_slot slot;
};

constexpr roll_choice roll_choices[] = {
    {2, slot_cam_reel}, {3, slot_reel}, {4, slot_snd_reel}, {10, slot_lab_reel}, {11, slot_comp_reel},
};

int slots[slot_count];

bool is_mandatory(int slot) { return slot == slot_name || slot == slot_start_time || slot == slot_end_time; }

bool resolve_names(const recdb& log, LoggerHandle& logger) {
    bool all_there = true;
    for (int slot = 0; slot < slot_film_roll; ++slot) {
        slots[slot] = log.get_fieldnum(slot_names[slot]);
        if (slots[slot] != -1 || !is_mandatory(slot)) continue;
        logger.Out("ERROR: Loglist has missing field: \"%s\"\n", slot_names[slot]);
        all_there = false;
    }
    return all_there;
}

// An unknown choice keeps the column of the load before.
void choose_roll(int film_reel) {
    for (const roll_choice& choice : roll_choices) {
        if (choice.film_reel == film_reel) slots[slot_film_roll] = slots[choice.slot];
    }
}

} // namespace

int resolve_log_columns(recdb& log, LoggerHandle& logger, int film_reel) {
    int result = resolve_names(log, logger) ? 0 : -1;
    if (slots[slot_start_inkcode] == -1 && slots[slot_start_keycode] == -1) {
        say(logger, "ERROR: The database has no useful film labels\n", level_progress);
        result = -1;
    }
    choose_roll(film_reel);
    if (slots[slot_film_roll] != -1) return result;
    say(logger, "ERROR: Loglist has no field for the requested REEL ID\n", level_progress);
    return -1;
}

int log_column(log_slot slot) { return slots[slot]; }
