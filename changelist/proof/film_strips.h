#pragma once
// Strips of film that are cut and spliced together, each in the time of log n.

#include "host/text.h"

#include <cstdint>

/// Film that runs through, cut from one event.
struct FilmStretch {
    std::size_t film = 0;    ///< which event's; the user of the strips knows
    std::int64_t offset = 0; ///< frames from that event's start
    std::int64_t length = 0; ///< frames
    int step = 0;            ///< that put it where it lies; 0 when it always lay there

    FilmStretch part(std::int64_t from, std::int64_t frames) const { return {film, offset + from, frames, step}; }
};

/// A strip is a number of its own. Cutting and splicing use up the strips that they are given.
class FilmStrips {
public:
    using Strip = std::uint32_t;
    static constexpr Strip no_film = 0;

    struct Halves {
        Strip head = no_film;
        Strip tail = no_film;
    };

    FilmStrips() : nodes_(1) {}

    Strip make(const FilmStretch& stretch);
    std::int64_t length(Strip strip) const { return nodes_[strip].length; }
    /// `frames` lies between 0 and the strip's length.
    Halves cut(Strip strip, std::int64_t frames);
    Strip splice(Strip head, Strip tail);
    /// Gives all of a strip's film to a step.
    void mark(Strip strip, int step);
    /// The stretches of a strip, head first.
    Vector<FilmStretch> stretches(Strip strip) const;

private:
    /// A heap by priority and, from left to right, the film from head to tail.
    struct Node {
        FilmStretch stretch;
        std::int64_t length = 0; ///< with all below it
        Strip left = no_film;
        Strip right = no_film;
        std::uint32_t priority = 0;
    };

    void measure(Strip strip);
    void collect(Strip strip, Vector<FilmStretch>& found) const;

    Vector<Node> nodes_; ///< the first is no film
    std::uint32_t random_ = 0x9e3779b9U;
};
