#pragma once
// Runs made of film by hand: events on reels, and pieces that match.

#include "changelist/steps/kept_steps.h"
#include "host/fixed_text.h"

#include <string>
#include <vector>

namespace bench_kit {

constexpr label_t key_kind = label_key_35mm_4p;
constexpr int perforations = 4;

inline LabelPoint key_at(const std::string& roll, int frame) {
    LabelPoint point(frame * perforations, key_kind);
    point.set_prefix(roll.c_str());
    return point;
}

/// Film of one roll: `length` frames of the cut from film frame `film` on.
struct Film {
    int reel = 1;
    int frame = 0;
    int length = 0;
    int film = 0;
    std::string roll = "KJ123456";
    double speed = 1.0;
    int ink = -1; ///< frame of its first ink number; -1: none
    std::string name = "shot";
};

inline CutEvent event_of(const Film& film) {
    CutEvent event;
    event.key_in = key_at(film.roll, film.film);
    if (film.ink >= 0) {
        event.ink_in = LabelPoint(film.ink * perforations, label_t_to_ink_label_t(key_kind));
        event.ink_in.set_prefix("AA12");
    }
    put_text(event.cam_reel, film.roll.substr(0, 4));
    event.speed = film.speed;
    event.reel = film.reel;
    event.frame = film.frame;
    event.length = film.length;
    event.shot_name = fromUTF8(film.name.c_str(), -1);
    put_text(event.scene, "12A");
    put_text(event.take, "3");
    return event;
}

/// Events one behind the other, each reel from frame 0.
inline Vector<CutEvent> cut_of(std::vector<Film> films) {
    Vector<CutEvent> cut;
    int reel = 0;
    int frame = 0;
    for (Film& film : films) {
        if (film.reel != reel) frame = 0;
        reel = film.reel;
        film.frame = frame;
        frame += film.length;
        cut.push_back(event_of(film));
    }
    return cut;
}

/// What a step does, in words: "lift 10 at 0 of 1", "pick up 5 at 3 of 1 to 4".
inline std::string words_of(const change_step& step) {
    static const char* const actions[] = {"lift", "pick up", "put down", "insert"};
    std::string words = std::string(actions[step.action]) + " " + std::to_string(step.length) + " at " +
                        std::to_string(step.position) + " of " + std::to_string(step.reel);
    if (step.action == change_pick_up) words += " to " + std::to_string(step.other_step);
    if (step.action == change_put_down) words += " from " + std::to_string(step.other_step);
    return words;
}

inline std::vector<std::string> words_of(const Vector<change_step>& steps) {
    std::vector<std::string> words;
    for (const change_step& step : steps)
        words.push_back(words_of(step));
    return words;
}

} // namespace bench_kit
