#pragma once
// Finds the first shot, in the table's order, that holds a stretch of samples on a reel.

#include "host/text.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

class LogShot;

/// Shots of one reel in the table's order, in blocks of 1, 2, 4, ... shots. A block keeps its shots by where
/// they begin, each with the furthest end so far, so one search tells whether any of them holds a stretch:
///
///     low      10   25   40   70        shots that begin at or before the stretch
///     furthest 60   60   90   95        and how far the best of them reaches
class shot_intervals {
public:
    void add(std::int64_t low, std::int64_t high, std::size_t shot);
    /// After the last shot.
    void build();
    /// The first shot with `low` <= `from` and `to` <= `high`, or `none`.
    std::size_t first_holding(std::int64_t from, std::int64_t to) const;

    static constexpr std::size_t none = SIZE_MAX;

private:
    struct reach {
        std::int64_t low;
        std::int64_t furthest;
    };
    struct interval {
        std::int64_t low;
        std::int64_t high;
        std::size_t shot;
    };
    using level = Vector<reach>;

    level merge_blocks(const level& finer, std::size_t block) const;
    bool block_holds(std::size_t depth, std::size_t block, std::int64_t from, std::int64_t to) const;

    Vector<interval> intervals_;
    /// Level `d` in blocks of 2^d shots.
    Vector<level> levels_;
};

/// All shots of a list by reel. A stretch's reel must begin with the shot's whole reel.
class shot_index {
public:
    /// The shots must outlive the index.
    void build(const Vector<std::unique_ptr<LogShot>>& shots);
    /// `reel` in upper case. Null when no shot holds both samples.
    LogShot* find(int start, int end, std::string_view reel) const;

private:
    struct reel_shots {
        std::string_view reel;
        shot_intervals intervals;
    };

    const reel_shots* find_reel(std::string_view reel) const;

    const Vector<std::unique_ptr<LogShot>>* shots_ = nullptr;
    /// By reel.
    Vector<reel_shots> reels_;
};
