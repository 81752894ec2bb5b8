// Random cuts of random gauges against a model that looks at single perforations and frames.

#include "tests/conform/made_uses.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <set>

using film::Conflict;
using film::CutUse;
using film::CutUses;
using film::FrameRange;
using film::Mend;
using film::Mending;
using film::Side;
using film::Trouble;

namespace {

using Numbers = std::set<std::int64_t>;

/// The negative as single perforations of one strand.
struct Model {
    std::int64_t loss = 0;
    Numbers spent, printed, heads, tails;

    void carry_out(const CutUses& uses);
    bool stands(const CutUse& use, Side side) const;
    bool end_is_good(const CutUse& use, Side side) const;
    Numbers gone(const CutUse& use) const;
    bool fits(const CutUse& use) const {
        return gone(use).empty() && end_is_good(use, Side::head) && end_is_good(use, Side::tail);
    }
};

std::int64_t frame_length(const CutUse& use) { return get_static_label_cvt(use.run.kind)->samples_per_frame(); }
std::int64_t first_of(const CutUse& use) { return use.frames.first * frame_length(use) + use.run.perforation; }
std::int64_t last_of(const CutUse& use) { return first_of(use) + use.frames.length() * frame_length(use) - 1; }

Numbers beyond(const CutUse& use, Side side, std::int64_t loss) {
    Numbers taken;
    for (std::int64_t i = 1; i <= loss; ++i)
        taken.insert(side == Side::head ? first_of(use) - i : last_of(use) + i);
    return taken;
}

void Model::carry_out(const CutUses& uses) {
    Numbers taken, used;
    for (const CutUse& use : uses) {
        for (std::int64_t i = first_of(use); i <= last_of(use); ++i)
            (use.printed ? printed : used).insert(i);
        for (const Side side : {Side::head, Side::tail})
            if (!use.printed && !stands(use, side)) taken.merge(beyond(use, side, loss));
    }
    for (const std::int64_t i : taken)
        if (!used.count(i)) spent.insert(i);
    for (const CutUse& use : uses) {
        if (use.printed) continue;
        heads.insert(first_of(use));
        tails.insert(last_of(use));
    }
}

bool Model::stands(const CutUse& use, Side side) const {
    return side == Side::head ? heads.count(first_of(use)) > 0 : tails.count(last_of(use)) > 0;
}

bool Model::end_is_good(const CutUse& use, Side side) const {
    if (stands(use, side)) return true;
    for (const std::int64_t i : beyond(use, side, loss))
        if (spent.count(i)) return false;
    return true;
}

Numbers Model::gone(const CutUse& use) const {
    Numbers frames;
    for (std::int64_t i = first_of(use); i <= last_of(use); ++i)
        if (spent.count(i) && !(use.printed && printed.count(i)))
            frames.insert(use.frames.first + (i - first_of(use)) / frame_length(use));
    return frames;
}

Numbers numbers_of(const film::Stretches& stretches) {
    Numbers numbers;
    for (const FrameRange& range : stretches)
        for (std::int64_t i = range.first; i <= range.last; ++i)
            numbers.insert(i);
    return numbers;
}

CutUse between(CutUse use, std::int64_t first, std::int64_t last) {
    use.frames = {first, last};
    return use;
}

CutUse shortened(const CutUse& use, const Mend& mend) {
    return between(use, use.frames.first + mend.head, use.frames.last - mend.tail);
}

/// The length of the longest part of a use that could be cut.
std::int64_t longest_part(const Model& model, const CutUse& use) {
    std::int64_t longest = 0;
    for (std::int64_t first = use.frames.first; first <= use.frames.last; ++first)
        for (std::int64_t last = first; last <= use.frames.last; ++last)
            if (model.fits(between(use, first, last))) longest = std::max(longest, last - first + 1);
    return longest;
}

struct Random {
    film::SpliceRules rules;
    std::vector<CutUses> cuts; ///< the last one is held
};

Random some_cuts() {
    static constexpr const char* kinds[] = {"35mm-4p",   "35mm-3p",   "35mm-2p",    "35mm-8p",    "16mm-1p",
                                            "65mm-5p80", "65mm-8p80", "65mm-10p80", "65mm-5p120", "65mm-15p120"};
    Random made;
    const std::string kind = *rc::gen::elementOf(std::vector<std::string>(std::begin(kinds), std::end(kinds)));
    const int frame = get_static_label_cvt(edlstr_to_label_type(kind.c_str()))->samples_per_frame();
    const bool one_offset = *rc::gen::inRange(0, 3) > 0;
    const int offset = *rc::gen::inRange(0, frame);
    made.rules.own = film::SpliceLoss{*rc::gen::inRange(0, 5), *rc::gen::arbitrary<bool>()};
    const int cuts = *rc::gen::inRange(1, 5);
    for (int i = 0; i < cuts; ++i) {
        CutUses uses;
        const auto drawn_uses = *rc::gen::container<std::vector<std::tuple<int, int, int, int>>>(rc::gen::tuple(
            rc::gen::inRange(-10, 40), rc::gen::inRange(1, 14), rc::gen::inRange(0, 5), rc::gen::inRange(0, frame)));
        for (const auto& [first, length, print, own_offset] : drawn_uses) {
            CutUse use = conform_test::use(first, first + length - 1, 0, kind);
            use.run.perforation = one_offset ? offset : own_offset;
            use.printed = print == 0;
            uses.push_back(use);
        }
        made.cuts.push_back(std::move(uses));
    }
    return made;
}

void check_gone(const CutUses& uses, const Model& model, const film::Conform& conform) {
    std::map<std::size_t, Numbers> told;
    for (const Conflict& conflict : conform.conflicts)
        if (conflict.trouble == Trouble::gone) {
            RC_ASSERT(told.emplace(conflict.use, numbers_of(conflict.frames)).second);
            RC_ASSERT(conflict.lacking == static_cast<std::int64_t>(told[conflict.use].size()));
        }
    for (std::size_t i = 0; i < uses.size(); ++i)
        RC_ASSERT(told[i] == model.gone(uses[i]));
}

void check_mends(const CutUses& uses, const Model& model, const Conflict& conflict) {
    const CutUse& use = uses[conflict.use];
    bool shortens = false;
    for (const Mend& mend : conflict.mends) {
        if (mend.mending != Mending::shorten) continue;
        shortens = true;
        const CutUse left = shortened(uses[mend.use], mend);
        RC_ASSERT(left.frames.length() > 0);
        if (conflict.trouble == Trouble::gone) {
            RC_ASSERT(model.fits(left));
            RC_ASSERT(left.frames.length() == longest_part(model, use));
        } else if (conflict.other == film::no_use) {
            RC_ASSERT(model.end_is_good(left, conflict.side));
        } else {
            CutUses both{uses[conflict.other], use};
            both[mend.use == conflict.use ? 1 : 0] = left;
            const std::int64_t apart = first_of(both[1]) - last_of(both[0]) - 1;
            RC_ASSERT(apart >= 2 * model.loss);
            RC_ASSERT(apart < 2 * model.loss + frame_length(use));
        }
    }
    if (conflict.trouble == Trouble::gone && !use.printed && !shortens) RC_ASSERT(longest_part(model, use) == 0);
    RC_ASSERT(!conflict.mends.empty());
}

/// In the order of their film.
bool goes_ahead(const CutUses& uses, std::size_t a, std::size_t b) {
    return std::tuple(first_of(uses[a]), last_of(uses[a]), a) < std::tuple(first_of(uses[b]), last_of(uses[b]), b);
}

bool end_is_told(const film::Conform& conform, std::size_t use, Side side) {
    return std::any_of(conform.conflicts.begin(), conform.conflicts.end(), [&](const Conflict& conflict) {
        if (conflict.use != use || conflict.other != film::no_use) return false;
        if (conflict.trouble == Trouble::gone) return side == Side::head ? conflict.at_head : conflict.at_tail;
        return conflict.side == side;
    });
}

void check_pairs(const CutUses& uses, const Model& model, const film::Conform& conform) {
    std::map<std::pair<std::size_t, Trouble>, const Conflict*> told;
    for (const Conflict& conflict : conform.conflicts)
        if (conflict.other != film::no_use) told[{conflict.use, conflict.trouble}] = &conflict;
    for (std::size_t i = 0; i < uses.size(); ++i) {
        if (uses[i].printed) continue;
        std::int64_t before = INT64_MIN;
        bool shares = false, settled = false;
        for (std::size_t j = 0; j < uses.size(); ++j) {
            if (j == i || uses[j].printed || !goes_ahead(uses, j, i)) continue;
            before = std::max(before, last_of(uses[j]));
            shares = shares || last_of(uses[j]) >= first_of(uses[i]);
        }
        // Of several that end there one is enough: the old splice that keeps its end from there keeps theirs too.
        for (std::size_t j = 0; j < uses.size(); ++j)
            if (j != i && !uses[j].printed && goes_ahead(uses, j, i) && last_of(uses[j]) == before)
                settled = settled || ((model.stands(uses[i], Side::head) && model.stands(uses[j], Side::tail)) ||
                                      end_is_told(conform, i, Side::head) || end_is_told(conform, j, Side::tail));
        const auto twice = told.find({i, Trouble::twice});
        RC_ASSERT((twice != told.end()) == shares);
        if (shares) {
            Numbers frames;
            const CutUse& other = uses[twice->second->other];
            for (std::int64_t k = first_of(uses[i]); k <= std::min(last_of(uses[i]), last_of(other)); ++k)
                frames.insert(uses[i].frames.first + (k - first_of(uses[i])) / frame_length(uses[i]));
            RC_ASSERT(last_of(other) == before);
            RC_ASSERT(numbers_of(twice->second->frames) == frames);
        }
        const bool close = !shares && before != INT64_MIN && first_of(uses[i]) - before - 1 < 2 * model.loss;
        if (!close || !settled) RC_ASSERT((told.count({i, Trouble::close}) > 0) == close);
    }
}

RC_GTEST_PROP(Conform, TellsWhatAModelOfSinglePerforationsTells, ()) {
    Random random = some_cuts();
    const CutUses uses = std::move(random.cuts.back());
    random.cuts.pop_back();
    const label_t kind = uses.empty() ? label_key_35mm_4p : uses.front().run.kind;
    Model model;
    model.loss = random.rules.spent_on_a_side(kind);
    for (const CutUses& cut : random.cuts)
        model.carry_out(cut);
    const film::SpentFilm spent = conform_test::negative(random.cuts, random.rules);
    const film::Conform conform = film::conform_of(uses, spent);
    for (const std::string& text : conform_test::drawn(conform))
        RC_LOG() << text << '\n';
    if (!uses.empty()) RC_ASSERT(numbers_of(spent.state_of(film::strand_of(uses.front().run)).spent) == model.spent);
    check_gone(uses, model, conform);
    check_pairs(uses, model, conform);
    for (const Conflict& conflict : conform.conflicts)
        check_mends(uses, model, conflict);
    std::int64_t standing = 0, ends = 0;
    for (std::size_t i = 0; i < uses.size(); ++i) {
        if (uses[i].printed) continue;
        for (const Side side : {Side::head, Side::tail}) {
            ++ends;
            standing += model.stands(uses[i], side) ? 1 : 0;
            if (model.gone(uses[i]).empty())
                RC_ASSERT(end_is_told(conform, i, side) == !model.end_is_good(uses[i], side));
        }
    }
    RC_ASSERT(conform.standing_ends == standing);
    RC_ASSERT(conform.new_ends == ends - standing);
}

/// What could be conformed stays so when it is carried out and held again, and no end is new.
RC_GTEST_PROP(Conform, OfWhatWasCarriedOutHoldsAndMakesNoSplice, ()) {
    Random random = some_cuts();
    film::SpentFilm spent(random.rules);
    for (const CutUses& cut : random.cuts) {
        const bool held = film::conform_of(cut, spent).conflicts.empty();
        spent.carry_out(cut);
        if (!held) continue;
        const film::Conform again = film::conform_of(cut, spent);
        RC_ASSERT(again.conflicts.empty());
        RC_ASSERT(again.new_ends == 0);
    }
}

} // namespace
