// What the bench list costs, whatever it was asked to save.

#include "changelist/bench/common_shots.h"
#include "changelist/bench/film_overlaps.h"
#include "changelist/bench/kept_pieces.h"
#include "changelist/bench/plan_cost.h"
#include "changelist/bench/what_stays.h"
#include "changelist/proof/proof.h"
#include "tests/changelist/random_runs.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <numeric>
#include <set>

namespace {

using bench_kit::cut_of;
using bench_kit::Film;
using random_runs::any_run;
using random_runs::number;

constexpr bench_goal all_goals[] = {bench_usual, bench_fewest_moves, bench_fewest_splices, bench_least_film};

std::int64_t of_goal(const change_cost& cost, bench_goal goal) {
    if (goal == bench_fewest_moves) return cost.moves;
    if (goal == bench_fewest_splices) return cost.splices;
    return goal == bench_least_film ? cost.frames : cost.steps;
}

/// A frame on the bench: one of the old cut, or one that a step brought.
struct Frame {
    int old_index = -1;
    int step = 0; ///< that put it there

    bool follows(const Frame& ahead) const {
        if (step != ahead.step) return false;
        return old_index < 0 || old_index == ahead.old_index + 1;
    }
};

using Reels = std::map<int, std::vector<Frame>>;

/// Carries steps out on single frames.
class Copy {
public:
    explicit Copy(const Vector<CutEvent>& cut) {
        for (const CutEvent& event : cut) {
            for (int i = 0; i < event.length; ++i)
                reels_[event.reel].push_back({frames_++});
        }
        old_ = reels_;
    }

    void carry_out(const Vector<change_step>& steps) {
        for (const change_step& step : steps) {
            std::vector<Frame>& reel = reels_[step.reel];
            const auto at = reel.begin() + step.position;
            std::vector<Frame> film(static_cast<std::size_t>(step.length), {-1, step.step});
            if (step.action == change_put_down) {
                film = hands_[step.other_step];
                for (Frame& frame : film)
                    frame.step = step.step;
            }
            if (step.action == change_put_down || step.action == change_insert) {
                reel.insert(at, film.begin(), film.end());
                continue;
            }
            hands_[step.step].assign(at, at + step.length);
            reel.erase(at, at + step.length);
        }
    }

    /// Places of the old cut that were parted, and joins that weren't there.
    std::int64_t splices() const {
        std::set<int> kept, joined;
        std::int64_t count = 0;
        for (const auto& [number, reel] : reels_) {
            for (std::size_t i = 0; i < reel.size(); ++i) {
                kept.insert(reel[i].old_index);
                if (i == 0) continue;
                if (reel[i].follows(reel[i - 1])) {
                    joined.insert(reel[i].old_index);
                } else {
                    ++count;
                }
            }
        }
        for (const auto& [number, reel] : old_) {
            for (std::size_t i = 1; i < reel.size(); ++i) {
                const bool both_gone = !kept.contains(reel[i].old_index) && !kept.contains(reel[i - 1].old_index);
                count += !both_gone && !joined.contains(reel[i].old_index);
            }
        }
        return count;
    }

private:
    int frames_ = 0;
    Reels reels_;
    Reels old_;
    std::map<int, std::vector<Frame>> hands_;
};

change_cost cost_of_steps(const KeptRun& run) {
    change_cost cost;
    for (const change_step& step : run.bench) {
        ++cost.steps;
        if (step.action == change_put_down) continue;
        ++cost.moves;
        cost.frames += step.length;
    }
    Copy copy(run.old_cut);
    copy.carry_out(run.bench);
    cost.splices = copy.splices();
    return cost;
}

TEST(BenchCost, EveryPlanProvesAndCostsNoMoreThanDeletingAndInserting) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = any_run();
        for (const bench_goal goal : all_goals) {
            plan_bench_steps(run, goal);
            const change_proof proof = prove_steps(run, run.bench);
            RC_LOG() << goal << ' ' << proof.reason << '\n';
            RC_ASSERT(proof.proved);
            if (goal != bench_usual) RC_ASSERT(of_goal(run.bench_cost, goal) <= of_goal(run.simple_cost, goal));
        }
    }));
}

TEST(BenchCost, IsWhatTheStepsCost) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = any_run();
        for (const bench_goal goal : all_goals) {
            plan_bench_steps(run, goal);
            const change_cost counted = cost_of_steps(run);
            RC_ASSERT(run.bench_cost.steps == counted.steps);
            RC_ASSERT(run.bench_cost.moves == counted.moves);
            RC_ASSERT(run.bench_cost.frames == counted.frames);
            RC_ASSERT(run.bench_cost.splices == counted.splices);
        }
    }));
}

/// The longest common run by the table of all prefixes.
template <class Row, class Same> std::size_t longest_common(const Row& a, const Row& b, Same same) {
    std::vector<std::vector<std::size_t>> best(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t j = 0; j < b.size(); ++j)
            best[i + 1][j + 1] = same(a[i], b[j]) ? best[i][j] + 1 : std::max(best[i + 1][j], best[i][j + 1]);
    }
    return best[a.size()][b.size()];
}

/// Black isn't told by itself.
bool is_same_shot(const CutEvent& a, const CutEvent& b) {
    const std::string roll = a.key_in.get_prefix();
    return !roll.starts_with("__") && roll == b.key_in.get_prefix() && a.length == b.length &&
           a.key_in.sample == b.key_in.sample && a.speed == b.speed;
}

std::size_t shots_that_differ(const KeptRun& run) {
    std::size_t differ = run.old_cut.size() + run.new_cut.size();
    for (int reel = 1; reel <= 4; ++reel) {
        std::vector<CutEvent> olds, news;
        std::copy_if(run.old_cut.begin(), run.old_cut.end(), std::back_inserter(olds),
                     [&](const CutEvent& event) { return event.reel == reel; });
        std::copy_if(run.new_cut.begin(), run.new_cut.end(), std::back_inserter(news),
                     [&](const CutEvent& event) { return event.reel == reel; });
        differ -= 2 * longest_common(olds, news, is_same_shot);
    }
    return differ;
}

TEST(BenchCost, TheUsualPlanNeedsNoMoreStepsThanShotsDiffer) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = any_run();
        plan_bench_steps(run);
        RC_LOG() << run.bench.size() << " steps, " << shots_that_differ(run) << " shots\n";
        RC_ASSERT(run.bench.size() <= shots_that_differ(run));
    }));
}

/// Uses of one take, cut again: some trimmed, some moved, some replaced.
KeptRun reused_run() {
    std::vector<Film> films(static_cast<std::size_t>(number(1, 20)));
    for (Film& film : films) {
        film.film = number(0, 12);
        film.length = number(1, 8);
    }
    KeptRun run;
    run.old_cut = cut_of(films);
    for (int changes = number(0, 6); changes > 0; --changes) {
        Film& film = films[static_cast<std::size_t>(number(0, static_cast<int>(films.size()) - 1))];
        const int what = number(0, 2);
        if (what == 0) film = random_runs::part_of(film);
        if (what == 1) film.film = number(0, 12);
        if (what == 2) std::swap(film, films.back());
    }
    run.new_cut = cut_of(films);
    run.matched = frame_by_frame::match(run.old_cut, run.new_cut);
    return run;
}

TEST(BenchCost, OfFilmUsedAgainIsBoundedTheSame) {
    EXPECT_TRUE(rc::check([] {
        KeptRun run = reused_run();
        for (const bench_goal goal : all_goals) {
            plan_bench_steps(run, goal);
            RC_ASSERT(prove_steps(run, run.bench).proved);
            if (goal == bench_usual) RC_ASSERT(run.bench.size() <= shots_that_differ(run));
            if (goal != bench_usual) RC_ASSERT(of_goal(run.bench_cost, goal) <= of_goal(run.simple_cost, goal));
        }
    }));
}

/// Whole shots of unlike film on one reel, by number; each in a cut at most once.
struct Shuffle {
    std::vector<int> old_shots;
    std::vector<int> new_shots;
    std::array<int, 9> length{};
};

Shuffle any_shuffle() {
    Shuffle shuffle;
    for (int shot = 0; shot < static_cast<int>(shuffle.length.size()); ++shot) {
        shuffle.length[static_cast<std::size_t>(shot)] = number(1, 6);
        const int where = number(0, 5);
        if (where != 0) shuffle.old_shots.push_back(shot);
        if (where == 1) continue;
        const int at = number(0, static_cast<int>(shuffle.new_shots.size()));
        shuffle.new_shots.insert(shuffle.new_shots.begin() + at, shot);
    }
    return shuffle;
}

KeptRun run_of(const Shuffle& shuffle) {
    const auto films = [&](const std::vector<int>& shots) {
        std::vector<Film> all;
        for (const int shot : shots) {
            Film film;
            film.film = 1000 * shot;
            film.length = shuffle.length[static_cast<std::size_t>(shot)];
            all.push_back(film);
        }
        return all;
    };
    KeptRun run;
    run.old_cut = cut_of(films(shuffle.old_shots));
    run.new_cut = cut_of(films(shuffle.new_shots));
    run.matched = frame_by_frame::match(run.old_cut, run.new_cut);
    return run;
}

enum class Fate { stays, moves, replaced };

/// One way to make the new order; shots of one cut alone are replaced.
class Way {
public:
    Way(const Shuffle& shuffle, std::vector<Fate> fates) : shuffle_(shuffle), fates_(std::move(fates)) {}

    bool stays_in_order() const {
        std::vector<int> olds, news;
        for (const int shot : shuffle_.old_shots)
            if (is(shot, Fate::stays)) olds.push_back(shot);
        for (const int shot : shuffle_.new_shots)
            if (is(shot, Fate::stays)) news.push_back(shot);
        return olds == news;
    }
    std::int64_t moves() const {
        std::int64_t count = 0;
        bool lifting = false;
        int ahead = nobody;
        for (const int shot : shuffle_.old_shots) {
            if (is(shot, Fate::stays)) lifting = false;
            if (is(shot, Fate::moves)) count += !(ahead != nobody && is(ahead, Fate::moves) && follows(ahead, shot));
            ahead = shot;
            if (!is(shot, Fate::replaced)) continue;
            count += !lifting;
            lifting = true;
        }
        return count + std::count_if(shuffle_.new_shots.begin(), shuffle_.new_shots.end(),
                                     [&](int shot) { return is(shot, Fate::replaced); });
    }
    std::int64_t splices() const {
        std::set<std::pair<int, int>> kept;
        std::int64_t count = 0;
        for (std::size_t i = 1; i < shuffle_.old_shots.size(); ++i)
            kept.insert({shuffle_.old_shots[i - 1], shuffle_.old_shots[i]});
        std::set<std::pair<int, int>> joined;
        for (std::size_t i = 1; i < shuffle_.new_shots.size(); ++i) {
            const std::pair<int, int> both(shuffle_.new_shots[i - 1], shuffle_.new_shots[i]);
            const bool together =
                kept.contains(both) && !is(both.first, Fate::replaced) && fate(both.first) == fate(both.second);
            if (together) joined.insert(both);
            count += !together;
        }
        for (const std::pair<int, int>& both : kept) {
            const bool gone = is(both.first, Fate::replaced) && is(both.second, Fate::replaced);
            count += !gone && !joined.contains(both);
        }
        return count;
    }
    std::int64_t frames() const {
        std::int64_t count = 0;
        for (const int shot : shuffle_.old_shots)
            if (!is(shot, Fate::stays)) count += shuffle_.length[static_cast<std::size_t>(shot)];
        for (const int shot : shuffle_.new_shots)
            if (is(shot, Fate::replaced)) count += shuffle_.length[static_cast<std::size_t>(shot)];
        return count;
    }

private:
    static constexpr int nobody = -1;

    /// In the new cut. Shots that are neighbours in both are moved as one.
    bool follows(int ahead, int shot) const {
        const std::vector<int>& news = shuffle_.new_shots;
        const auto at = std::find(news.begin(), news.end(), ahead);
        return at != news.end() && at + 1 != news.end() && at[1] == shot;
    }
    Fate fate(int shot) const { return fates_[static_cast<std::size_t>(shot)]; }
    bool is(int shot, Fate wanted) const { return fate(shot) == wanted; }

    const Shuffle& shuffle_;
    std::vector<Fate> fates_;
};

struct Least {
    std::int64_t moves = INT64_MAX;
    std::int64_t frames = INT64_MAX;
    std::int64_t splices_without_moves = INT64_MAX;
};

/// The shots that stay where what differs is deleted and inserted.
std::set<int> shots_in_order(const KeptRun& run, const Shuffle& shuffle) {
    const BenchCuts cuts(run);
    const FilmInBoth film = film_in_both(cuts, run.matched, false);
    std::set<int> shots;
    std::int64_t at = 0;
    for (const int shot : shuffle.old_shots) {
        for (const KeptPiece& piece : film.in_order)
            if (piece.old_at <= at && at < piece.old_end()) shots.insert(shot);
        at += shuffle.length[static_cast<std::size_t>(shot)];
    }
    return shots;
}

Least least_of_all_ways(const Shuffle& shuffle, const std::set<int>& in_order) {
    std::vector<int> common;
    for (const int shot : shuffle.old_shots)
        if (std::count(shuffle.new_shots.begin(), shuffle.new_shots.end(), shot) > 0) common.push_back(shot);
    int ways = 1;
    for (std::size_t i = 0; i < common.size(); ++i)
        ways *= 3;
    Least least;
    for (int number = 0; number < ways; ++number) {
        std::vector<Fate> fates(shuffle.length.size(), Fate::replaced);
        bool moves = false;
        for (int rest = number; const int shot : common) {
            fates[static_cast<std::size_t>(shot)] = static_cast<Fate>(rest % 3);
            moves = moves || rest % 3 == static_cast<int>(Fate::moves);
            rest /= 3;
        }
        const Way way(shuffle, fates);
        if (!way.stays_in_order()) continue;
        least.moves = std::min(least.moves, way.moves());
        least.frames = std::min(least.frames, way.frames());
        const bool keeps = std::all_of(in_order.begin(), in_order.end(),
                                       [&](int shot) { return fates[static_cast<std::size_t>(shot)] == Fate::stays; });
        if (!moves && keeps) least.splices_without_moves = std::min(least.splices_without_moves, way.splices());
    }
    return least;
}

TEST(BenchCost, OfWholeShotsIsTheLeastOfAllWays) {
    EXPECT_TRUE(rc::check([] {
        const Shuffle shuffle = any_shuffle();
        KeptRun run = run_of(shuffle);
        const Least least = least_of_all_ways(shuffle, shots_in_order(run, shuffle));
        plan_bench_steps(run, bench_fewest_moves);
        RC_ASSERT(run.bench_cost.moves == least.moves);
        plan_bench_steps(run, bench_least_film);
        RC_ASSERT(run.bench_cost.frames == least.frames);
        plan_bench_steps(run, bench_fewest_splices);
        RC_ASSERT(run.bench_cost.splices <= least.splices_without_moves);
        RC_ASSERT(run.bench_cost.frames <= run.simple_cost.frames);
    }));
}

bool stays_rise(const KeptPieces& pieces) {
    std::map<std::size_t, FilmPlace> last;
    for (const KeptPiece& piece : pieces) {
        if (!piece.stays) continue;
        if (piece.old_reel != piece.new_reel || piece.new_at < last[piece.old_reel]) return false;
        last[piece.old_reel] = piece.new_end();
    }
    return true;
}

/// Over all choices of what stays.
template <class Cost> std::int64_t least_of_choices(KeptPieces pieces, Cost cost) {
    std::int64_t least = INT64_MAX;
    for (unsigned choice = 0; choice < 1U << pieces.size(); ++choice) {
        for (std::size_t i = 0; i < pieces.size(); ++i)
            pieces[i].stays = (choice >> i & 1U) != 0;
        if (stays_rise(pieces)) least = std::min(least, cost(pieces));
    }
    return least;
}

KeptPieces without_moved(KeptPieces pieces) {
    std::erase_if(pieces, [](const KeptPiece& piece) { return !piece.stays; });
    return pieces;
}

/// Shots of unlike film, whole and in part, on two reels.
KeptRun trimmed_run() {
    std::vector<Film> films;
    for (int shot = number(1, 8); shot > 0; --shot) {
        Film film;
        film.film = 1000 * shot;
        film.length = number(1, 6);
        films.push_back(film);
    }
    std::vector<Film> recut;
    for (const Film& film : films) {
        if (number(0, 4) == 0) continue;
        const auto end = static_cast<int>(recut.size());
        const int at = number(0, 2) == 0 ? number(0, end) : end;
        recut.insert(recut.begin() + at, number(0, 2) == 0 ? random_runs::part_of(film) : film);
    }
    KeptRun run;
    const int reels = number(1, 2);
    run.old_cut = cut_of(random_runs::onto_reels(films, reels));
    run.new_cut = cut_of(random_runs::onto_reels(recut, reels));
    return run;
}

TEST(WhatStays, IsTheBestOfAllChoices) {
    EXPECT_TRUE(rc::check([] {
        for (int times = 0; times < 20; ++times) {
            KeptRun run = trimmed_run();
            const BenchCuts cuts(run);
            KeptPieces pieces = film_in_both(cuts, run.matched, true).all;
            for (KeptPiece& piece : pieces)
                piece.in_order = false;
            const auto moves = [&](const KeptPieces& tried) { return cost_of(cuts, tried).moves; };
            const auto splices = [&](const KeptPieces& tried) { return cost_of(cuts, without_moved(tried)).splices; };
            const auto frames = [&](const KeptPieces& tried) { return cost_of(cuts, tried).frames; };
            KeptPieces chosen = pieces;
            keep_for_fewest_moves(cuts, chosen);
            RC_ASSERT(stays_rise(chosen));
            RC_ASSERT(moves(chosen) == least_of_choices(pieces, moves));
            chosen = pieces;
            keep_for_fewest_splices(cuts, chosen);
            RC_ASSERT(stays_rise(chosen));
            RC_ASSERT(splices(chosen) == least_of_choices(pieces, splices));
            chosen = pieces;
            keep_most_film(chosen);
            RC_ASSERT(frames(chosen) == least_of_choices(pieces, frames));
        }
    }));
}

Saving saving_by(const change_cost& with, const change_cost& without) {
    return {with.steps - without.steps, with.moves - without.moves, with.splices - without.splices};
}

/// Gives up one moved piece after the other, and compares what each saves with what the steps cost ahead and behind.
TEST(PlanLedger, KnowsWhatIsSavedByGivingUpAMove) {
    EXPECT_TRUE(rc::check([] {
        for (int times = 0; times < 20; ++times) {
            KeptRun run = trimmed_run();
            const BenchCuts cuts(run);
            KeptPieces pieces = film_in_both(cuts, run.matched, true).all;
            keep_most_film(pieces);
            PlanLedger ledger(cuts, pieces);
            for (std::size_t i = 0; i < pieces.size(); ++i) {
                if (pieces[i].stays || number(0, 3) == 0) continue;
                const change_cost with = cost_of(cuts, ledger.kept_pieces());
                const Saving told = ledger.saved_without(i);
                ledger.drop(i);
                const Saving found = saving_by(with, cost_of(cuts, ledger.kept_pieces()));
                RC_ASSERT(told.steps == found.steps);
                RC_ASSERT(told.moves == found.moves);
                RC_ASSERT(told.splices == found.splices);
            }
        }
    }));
}

/// Unlike film trimmed and shuffled: what can stay is the longest common run of single frames.
TEST(BenchCost, OfFilmThatIsUsedOnceIsTheLeastInFrames) {
    EXPECT_TRUE(rc::check([] {
        Shuffle shuffle = any_shuffle();
        KeptRun run = run_of(shuffle);
        std::vector<Film> trimmed;
        for (const int shot : shuffle.new_shots) {
            Film film;
            film.film = 1000 * shot;
            film.length = shuffle.length[static_cast<std::size_t>(shot)];
            trimmed.push_back(number(0, 1) ? random_runs::part_of(film) : film);
        }
        run.new_cut = cut_of(trimmed);
        run.matched.clear();
        const auto frames = [](const Vector<CutEvent>& cut) {
            std::vector<int> all;
            for (const CutEvent& event : cut) {
                for (int i = 0; i < event.length; ++i)
                    all.push_back(event.key_in.sample / bench_kit::perforations + i);
            }
            return all;
        };
        const std::vector<int> olds = frames(run.old_cut), news = frames(run.new_cut);
        const std::set<int> old_set(olds.begin(), olds.end());
        const auto both = std::count_if(news.begin(), news.end(), [&](int frame) { return old_set.contains(frame); });
        const auto stays = static_cast<std::int64_t>(longest_common(olds, news, std::equal_to<>()));
        plan_bench_steps(run, bench_least_film);
        RC_ASSERT(run.bench_cost.frames == static_cast<std::int64_t>(olds.size() + news.size()) - both - stays);
    }));
}

Vector<std::uint32_t> any_row(int longest, int shots) {
    Vector<std::uint32_t> row;
    for (int left = number(0, longest); left > 0; --left)
        row.push_back(static_cast<std::uint32_t>(number(1, shots)));
    return row;
}

bool is_common_run(const Vector<ShotPair>& run, const Vector<std::uint32_t>& olds, const Vector<std::uint32_t>& news) {
    for (std::size_t i = 0; i < run.size(); ++i) {
        if (olds[run[i].old_shot] != news[run[i].new_shot]) return false;
        if (i > 0 && (run[i].old_shot <= run[i - 1].old_shot || run[i].new_shot <= run[i - 1].new_shot)) return false;
    }
    return true;
}

TEST(CommonShots, AreTheLongestRunOfRowsThatRepeatLittle) {
    EXPECT_TRUE(rc::check([] {
        const Vector<std::uint32_t> olds = any_row(30, 6), news = any_row(30, 6);
        const Vector<ShotPair> run = common_shots(olds, news);
        RC_ASSERT(is_common_run(run, olds, news));
        RC_ASSERT(run.size() == longest_common(olds, news, std::equal_to<>()));
    }));
}

TEST(CommonShots, OfRowsThatRepeatMuchAreARunAllTheSame) {
    Vector<std::uint32_t> olds, news;
    for (std::uint32_t i = 0; i < 3000; ++i) {
        olds.push_back(i % 7 == 0 ? 1 : 2 + i % 3);
        news.push_back(i % 5 == 0 ? 9 : 2 + (i / 2) % 3);
    }
    const Vector<ShotPair> run = common_shots(olds, news);
    EXPECT_TRUE(is_common_run(run, olds, news));
    EXPECT_GT(2 * run.size(), longest_common(olds, news, std::equal_to<>()));
}

Vector<BenchSpan> any_spans() {
    Vector<BenchSpan> spans;
    for (int left = number(0, 30); left > 0; --left)
        spans.push_back({static_cast<std::uint64_t>(number(1, 2)), number(-5, 20), number(1, 25), 100 * left});
    return spans;
}

TEST(FilmOverlaps, AreAllThatThereAre) {
    EXPECT_TRUE(rc::check([] {
        Vector<BenchSpan> olds = any_spans(), news = any_spans();
        std::set<std::pair<std::size_t, std::size_t>> found, wanted;
        const Vector<SpanPair> pairs = film_overlaps(olds, news);
        for (const SpanPair& pair : pairs)
            found.insert({pair.old_span, pair.new_span});
        for (std::size_t i = 0; i < olds.size(); ++i) {
            for (std::size_t j = 0; j < news.size(); ++j) {
                const std::int64_t from = std::max(olds[i].first_frame, news[j].first_frame);
                const std::int64_t to = std::min(olds[i].end_frame(), news[j].end_frame());
                if (olds[i].film == news[j].film && from < to) wanted.insert({i, j});
            }
        }
        RC_ASSERT(found == wanted);
        RC_ASSERT(pairs.size() == wanted.size());
    }));
}

TEST(FilmOverlaps, OfVeryMuchFilmAreSomeOfThem) {
    Vector<BenchSpan> olds, news;
    for (int i = 0; i < 500; ++i) {
        olds.push_back({1, i % 50, 100, 100 * i});
        news.push_back({1, i * 3 % 50, 90, 100 * i});
    }
    const Vector<SpanPair> pairs = film_overlaps(olds, news);
    EXPECT_GE(pairs.size(), 500U);
    EXPECT_LE(pairs.size(), 16U * 1000);
}

} // namespace
