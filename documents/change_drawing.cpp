#include "documents/change_drawing.h"

#include "documents/bench_reels.h"
#include "documents/film_cells.h"
#include "documents/film_count.h"

#include <algorithm>
#include <iterator>

namespace documents {
namespace {

constexpr const char* patterns = "Crossed: out. Hatched: new. Dots: moved";
/// Reels up to that long are drawn whole for each step; of longer ones so many frames at both sides of it.
constexpr std::int64_t whole_reel = 1400, around = 320;

std::string step_name(int step) { return "step-" + std::to_string(step); }

label_t film_of(const Recut& recut) {
    for (const std::vector<CutFilmPtr>* reels : {&recut.old_reels, &recut.new_reels})
        if (!reels->empty()) return reels->front()->film;
    return label_none;
}

std::size_t count_of_reels(const Recut& recut) { return std::max(recut.old_reels.size(), recut.new_reels.size()); }

Bench bench_of(const Recut& recut) {
    std::vector<std::int64_t> lengths;
    for (const CutFilmPtr& reel : recut.old_reels)
        lengths.push_back(reel->length());
    return {lengths, count_of_reels(recut)};
}

/// Shots of a cut that lie in some of its frames: each with the frames that it has there.
struct NamedFrames {
    std::string name;
    bool black = false;
    std::int64_t start = 0, length = 0;
};

std::vector<NamedFrames> names_in(const CutFilm& cut, std::int64_t from, std::int64_t to) {
    auto share = std::partition_point(cut.shares.begin(), cut.shares.end(),
                                      [from](const Share& one) { return one.end <= from; });
    std::vector<NamedFrames> names;
    for (; share != cut.shares.end() && share->start < to; ++share) {
        const std::int64_t begin = std::max(from, share->start), end = std::min(to, share->end);
        if (begin < end) names.push_back({share->piece->first().name, share->piece->black(), begin, end - begin});
    }
    return names;
}

/// What became of a run, as it is drawn.
struct Fate {
    Fill fill = Fill::plain;
    const char* word = "stays";
    int step = 0;
};

class LaneOfRuns {
public:
    LaneOfRuns(Drawing& drawing, const Recut& recut, int lane) : drawing_(drawing), recut_(recut), lane_(lane) {}

    /// Draws a run at a place of its lane, a piece for each of its shots.
    void draw(const BenchRun& run, std::int64_t at, const Fate& fate) {
        if (run.old_reel == 0) {
            add({name_of_step(run.step), false, at, run.length}, fate);
        } else {
            const CutFilm& old = *recut_.old_reels[static_cast<std::size_t>(run.old_reel) - 1];
            for (NamedFrames shot : names_in(old, run.old_start, run.old_start + run.length)) {
                shot.start += at - run.old_start;
                add(shot, fate);
            }
        }
        if (fate.step > 0) mark(at, run.length, fate);
    }

private:
    std::string name_of_step(int step) const {
        const auto found = std::partition_point(recut_.steps.begin(), recut_.steps.end(),
                                                [step](const change_step& one) { return one.step < step; });
        if (found != recut_.steps.end() && found->step == step) return toUTF8(found->shot_name).c_str();
        return "";
    }

    void add(const NamedFrames& shot, const Fate& fate) {
        DrawnPiece piece;
        piece.lane = lane_;
        piece.start = shot.start;
        piece.length = shot.length;
        piece.name = shot.black ? "" : shot.name;
        if (fate.step > 0) piece.film = step_name(fate.step);
        piece.fill = fate.fill;
        if (shot.black && fate.fill == Fill::plain) piece.stuff = Stuff::black;
        piece.told = (shot.black ? "black" : shot.name) + ", " + film::frames_text(shot.length) + " from " +
                     position_text(drawing_.film, shot.start) + ": " + fate.word +
                     (fate.step > 0 ? ", step " + std::to_string(fate.step) : "");
        drawing_.pieces.push_back(std::move(piece));
    }

    // Neighbours with one fate are told together.
    void mark(std::int64_t at, std::int64_t length, const Fate& fate) {
        std::vector<DrawnMark>& marks = drawing_.marks;
        const std::string film = step_name(fate.step);
        if (!marks.empty() && marks.back().lane == lane_ && marks.back().film == film &&
            marks.back().start + marks.back().length == at) {
            marks.back().length += length;
        } else {
            marks.push_back({film, lane_, at, length, "", false, true});
        }
        marks.back().text = std::string(fate.word) + ", " + std::to_string(marks.back().length);
    }

    Drawing& drawing_;
    const Recut& recut_;
    const int lane_;
};

class ReelChange {
public:
    ReelChange(const Recut& recut, const Bench& bench, std::size_t reel, bool whole)
        : recut_(recut), bench_(bench), reel_(reel), whole_(whole) {}

    Drawing run() {
        const std::string number = std::to_string(reel_ + 1);
        drawing_.id = "changes-reel-" + number;
        drawing_.title = "Reel " + number + ", old and new";
        drawing_.film = film_of(recut_);
        drawing_.patterns = patterns;
        drawing_.end = std::max(old_length(), new_length());
        drawing_.lanes = {{"Old reel " + number, length_words(old_length())},
                          {"New reel " + number, length_words(new_length())}};
        if (fits()) {
            draw_old();
            draw_new();
        } else {
            draw_as_they_are();
        }
        tell();
        return std::move(drawing_);
    }

private:
    std::int64_t old_length() const { return reel_ < recut_.old_reels.size() ? recut_.old_reels[reel_]->length() : 0; }
    std::int64_t new_length() const { return reel_ < recut_.new_reels.size() ? recut_.new_reels[reel_]->length() : 0; }
    std::string length_words(std::int64_t length) const {
        return position_text(drawing_.film, length) + ", " + film::frames_text(length);
    }
    bool fits() const { return whole_ && length_of(bench_.reels()[reel_]) == new_length(); }

    static Fate fate_of_new(const BenchRun& run) {
        if (run.old_reel == 0) return {Fill::hatched, "new", run.step};
        if (run.fetched > 0) return {Fill::dots, "moved", run.step};
        return {};
    }

    /// All runs of this reel of the old cut, wherever they are now, by their place in it.
    struct OldRun {
        BenchRun run;
        Fate fate;
    };
    std::vector<OldRun> old_runs() const {
        const int reel = static_cast<int>(reel_) + 1;
        std::vector<OldRun> runs;
        for (const BenchRun& run : bench_.gone())
            if (run.old_reel == reel) runs.push_back({run, {Fill::crossed, "out", run.fetched}});
        for (const BenchReel& now : bench_.reels())
            for (const BenchRun& run : now)
                if (run.old_reel == reel)
                    runs.push_back({run, run.fetched > 0 ? Fate{Fill::dots, "moved", run.fetched} : Fate{}});
        std::stable_sort(runs.begin(), runs.end(),
                         [](const OldRun& a, const OldRun& b) { return a.run.old_start < b.run.old_start; });
        return runs;
    }

    void draw_old() {
        LaneOfRuns lane(drawing_, recut_, 0);
        for (const OldRun& old : old_runs())
            lane.draw(old.run, old.run.old_start, old.fate);
    }

    void draw_new() {
        LaneOfRuns lane(drawing_, recut_, 1);
        std::int64_t at = 0;
        for (const BenchRun& run : bench_.reels()[reel_]) {
            lane.draw(run, at, fate_of_new(run));
            if (run.old_reel == static_cast<int>(reel_) + 1) tie(run, at);
            at += run.length;
        }
    }

    void tie(const BenchRun& run, std::int64_t at) {
        std::vector<DrawnBand>& bands = drawing_.bands;
        const bool moved = run.fetched > 0;
        if (!bands.empty() && bands.back().from + bands.back().length == run.old_start &&
            bands.back().to + bands.back().length == at && bands.back().moved == moved)
            bands.back().length += run.length;
        else
            bands.push_back({0, run.old_start, at, run.length, moved});
    }

    // Both cuts without what ties them.
    void draw_as_they_are() {
        LaneOfRuns(drawing_, recut_, 0).draw({static_cast<int>(reel_) + 1, 0, old_length(), 0, 0}, 0, {});
        if (reel_ >= recut_.new_reels.size()) return;
        for (const NamedFrames& shot : names_in(*recut_.new_reels[reel_], 0, new_length())) {
            DrawnPiece piece;
            piece.lane = 1;
            piece.start = shot.start;
            piece.length = shot.length;
            piece.name = shot.black ? "" : shot.name;
            if (shot.black) piece.stuff = Stuff::black;
            piece.told = shot.name + ", " + film::frames_text(shot.length);
            drawing_.pieces.push_back(std::move(piece));
        }
    }

    void tell() {
        std::string& text = drawing_.description;
        text = "The old reel has " + film::frames_text(old_length()) + ", the new one " +
               film::frames_text(new_length()) + '.';
        if (!fits()) text += " The steps don't make the new reel, so nothing ties the two.";
        for (const DrawnMark& mark : drawing_.marks)
            text += std::string(mark.lane == 0 ? " Old " : " New ") + position_text(drawing_.film, mark.start) + ": " +
                    mark.text + " frames, " + mark.film.substr(0, 4) + ' ' + mark.film.substr(5) + '.';
    }

    const Recut& recut_;
    const Bench& bench_;
    const std::size_t reel_;
    const bool whole_; ///< all steps could be carried out
    Drawing drawing_;
};

constexpr const char* action_words[] = {"delete", "pick up", "put down", "insert"};

/// The reel around a step.
class StepChange {
public:
    StepChange(const Recut& recut, const change_step& step, const BenchReel& before, const BenchReel& after)
        : recut_(recut), step_(step), before_(before), after_(after) {}

    Drawing run() {
        drawing_.id = step_name(step_.step);
        drawing_.film = film_of(recut_);
        drawing_.title = "Step " + std::to_string(step_.step) + ": " + action_words[step_.action] + ", " +
                         film::frames_text(step_.length) + " at " + position_text(drawing_.film, step_.position);
        drawing_.patterns = patterns;
        const std::int64_t longest = std::max(length_of(before_), length_of(after_));
        const std::int64_t end = std::int64_t{step_.position} + step_.length;
        drawing_.begin = longest > whole_reel ? std::max<std::int64_t>(step_.position - around, 0) : 0;
        drawing_.end = longest > whole_reel ? std::min(end + around, longest) : longest;
        drawing_.lanes = {lane_of("Before", before_), lane_of("After", after_)};
        draw(before_, 0, takes());
        draw(after_, 1, !takes());
        tie();
        drawing_.description = drawing_.title + ". Reel " + std::to_string(step_.reel) + " is then " +
                               drawing_.lanes.back().about + " long.";
        return std::move(drawing_);
    }

private:
    bool takes() const { return step_.action == change_remove || step_.action == change_pick_up; }

    DrawnLane lane_of(const char* name, const BenchReel& reel) const {
        const std::int64_t length = length_of(reel);
        return {name, position_text(drawing_.film, length) + ", " + film::frames_text(length)};
    }

    Fate fate() const {
        if (step_.action == change_remove) return {Fill::crossed, "out", step_.step};
        if (step_.action == change_insert) return {Fill::hatched, "new", step_.step};
        return {Fill::dots, takes() ? "to be moved" : "moved here", step_.step};
    }

    void draw(const BenchReel& reel, int lane, bool with_step) {
        LaneOfRuns runs(drawing_, recut_, lane);
        const std::int64_t from = step_.position, to = from + (with_step ? step_.length : 0);
        const std::int64_t edges[] = {drawing_.begin, from, to, drawing_.end};
        for (int i = 0; i < 3; ++i) {
            std::int64_t at = edges[i];
            for (const BenchRun& run : part_of(reel, edges[i], edges[i + 1])) {
                runs.draw(run, at, with_step && i == 1 ? fate() : Fate{});
                at += run.length;
            }
        }
    }

    void tie() {
        const std::int64_t from = step_.position, behind = from + step_.length;
        if (from > drawing_.begin) drawing_.bands.push_back({0, drawing_.begin, drawing_.begin, from - drawing_.begin});
        const std::int64_t rest = std::min(length_of(takes() ? after_ : before_) - from, drawing_.end - from);
        const std::int64_t old_start = takes() ? behind : from, new_start = takes() ? from : behind;
        if (rest > 0) drawing_.bands.push_back({0, old_start, new_start, rest});
    }

    const Recut& recut_;
    const change_step& step_;
    const BenchReel &before_, &after_;
    Drawing drawing_;
};

} // namespace

std::vector<Drawing> change_drawings(const Recut& recut) {
    Bench bench = bench_of(recut);
    const bool whole = std::all_of(recut.steps.begin(), recut.steps.end(),
                                   [&bench](const change_step& step) { return bench.carry_out(step); });
    std::vector<Drawing> drawings;
    for (std::size_t reel = 0; reel < count_of_reels(recut); ++reel)
        drawings.push_back(ReelChange(recut, bench, reel, whole).run());
    return drawings;
}

std::vector<Drawing> step_drawings(const Recut& recut) {
    Bench bench = bench_of(recut);
    std::vector<Drawing> drawings;
    for (const change_step& step : recut.steps) {
        if (step.reel < 1 || static_cast<std::size_t>(step.reel) > bench.reels().size()) break;
        const std::size_t reel = static_cast<std::size_t>(step.reel) - 1;
        const BenchReel before = bench.reels()[reel];
        if (!bench.carry_out(step)) break;
        drawings.push_back(StepChange(recut, step, before, bench.reels()[reel]).run());
    }
    return drawings;
}

} // namespace documents
