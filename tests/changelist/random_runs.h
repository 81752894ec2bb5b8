#pragma once
// Random cuts and recuts of them, as a run keeps them. To be called inside a property.

#include "tests/changelist/bench_kit.h"
#include "tests/changelist/frame_by_frame.h"

#include <rapidcheck.h>

namespace random_runs {

using bench_kit::Film;

inline int number(int from, int to) { return *rc::gen::inRange(from, to + 1); }

inline Film any_film() {
    Film film;
    film.length = number(1, 12);
    film.film = number(0, 60);
    film.roll = *rc::gen::element<std::string>("KJ123456", "KJ123456", "EA000001", "__BLACK_");
    film.speed = *rc::gen::element(1.0, 1.0, 1.0, 2.0, -1.0, 0.5, 1.5);
    film.ink = number(-20, 40);
    return film;
}

/// A part of an event; what runs at a speed of its own begins on the film frame that is nearest.
inline Film part_of(const Film& film) {
    Film part = film;
    const int offset = number(0, film.length - 1);
    part.length = number(1, film.length - offset);
    part.film += static_cast<int>(offset * film.speed);
    return part;
}

inline std::vector<Film> onto_reels(std::vector<Film> films, int reels) {
    std::vector<Film> laid;
    for (int reel = 1; reel <= reels; ++reel) {
        for (std::size_t i = 0; i < films.size(); ++i) {
            Film film = films[i];
            film.reel = reel;
            const bool here = static_cast<int>(i) * reels / static_cast<int>(films.size()) == reel - 1;
            if (here) laid.push_back(film);
        }
    }
    return laid;
}

/// What an editor might have made of a cut: events kept whole or in part, doubled, moved, dropped, new film.
inline std::vector<Film> recut_of(const std::vector<Film>& old_films) {
    std::vector<Film> films;
    for (const Film& film : old_films) {
        const int fate = number(0, 9);
        if (fate < 5) films.push_back(film);
        if (fate >= 5 && fate < 8) films.push_back(part_of(film));
        if (fate == 6 || fate == 9) films.push_back(part_of(film));
        if (number(0, 3) == 0) films.push_back(any_film());
    }
    for (int moves = number(0, 4); moves > 0 && films.size() > 1; --moves) {
        const auto from = static_cast<std::size_t>(number(0, static_cast<int>(films.size()) - 1));
        const Film moved = films[from];
        films.erase(films.begin() + static_cast<std::ptrdiff_t>(from));
        films.insert(films.begin() + number(0, static_cast<int>(films.size())), moved);
    }
    return films;
}

/// Room that the cutlists count and no film fills.
inline void leave_gaps(Vector<CutEvent>& cut) {
    int room = 0;
    for (CutEvent& event : cut) {
        room += number(0, 9) == 0 ? number(1, 5) : 0;
        event.frame += room;
    }
}

inline KeptRun any_run() {
    std::vector<Film> old_films;
    for (int events = number(0, 14); events > 0; --events)
        old_films.push_back(any_film());
    KeptRun run;
    run.old_cut = bench_kit::cut_of(onto_reels(old_films, number(1, 4)));
    run.new_cut = bench_kit::cut_of(onto_reels(recut_of(old_films), number(1, 4)));
    leave_gaps(run.old_cut);
    leave_gaps(run.new_cut);
    run.matched = frame_by_frame::match(run.old_cut, run.new_cut);
    return run;
}

} // namespace random_runs
