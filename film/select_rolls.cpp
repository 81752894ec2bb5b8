#include "film/select_rolls.h"

#include "embedded/film_feet.h"
#include "film/cut_uses.h"
#include "film/stretches.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace film {
namespace {

using embedded::perforations_of_foot;

std::int64_t frames_of_leader(label_t kind, int feet) {
    return ceiling_quotient(std::int64_t{feet} * perforations_of_foot(kind), perforations_of_frame(kind));
}

std::string text_of(const OrderPiece& piece) {
    return (piece.run.roll.empty() ? "" : piece.run.roll + ' ') + piece.run.text_at(piece.frames.first) + " to " +
           piece.run.text_at(piece.frames.last);
}

std::string name_of_roll(const std::string& begin, std::size_t number) {
    char digits[24];
    std::snprintf(digits, sizeof digits, "%03zu", number);
    return begin + digits;
}

class Laying {
public:
    Laying(const OrderPieces& pieces, const RollBuilding& building) : pieces_(pieces) { made_.building = building; }

    SelectRolls run() {
        for (std::size_t i = 0; i < pieces_.size() && made_.fault.empty(); ++i)
            lay(i);
        return std::move(made_);
    }

private:
    void lay(std::size_t place);
    SelectRoll& roll_for(label_t kind, std::int64_t frames, std::int64_t most);

    const OrderPieces& pieces_;
    SelectRolls made_;
    std::map<label_t, std::size_t> open_; ///< the roll of each kind that was begun last
};

void Laying::lay(std::size_t place) {
    const OrderPiece& piece = pieces_[place];
    const label_t kind = piece.run.kind;
    const std::int64_t most = frames_in_feet(kind, made_.building.feet);
    const std::int64_t leader = frames_of_leader(kind, made_.building.leader_feet), length = piece.frames.length();
    if (perforations_of_foot(kind) == 0) {
        made_.places.emplace_back();
        return;
    }
    if (leader + length > most)
        made_.fault = text_of(piece) + ": " + std::to_string(length) + " frames and the leader's " +
                      std::to_string(leader) + " are longer than a roll of " + std::to_string(made_.building.feet) +
                      " feet, which holds " + std::to_string(most);
    if (!made_.fault.empty()) return;
    SelectRoll& roll = roll_for(kind, length, most);
    const std::int64_t first =
        roll.pieces.empty() ? leader : roll.frames + frames_of_splice(kind, made_.building.splices);
    roll.pieces.push_back(place);
    roll.frames = first + length;
    made_.places.push_back({open_[kind], {first, first + length - 1}});
}

SelectRoll& Laying::roll_for(label_t kind, std::int64_t frames, std::int64_t most) {
    const auto open = open_.find(kind);
    const std::int64_t splice = frames_of_splice(kind, made_.building.splices);
    if (open == open_.end() || made_.rolls[open->second].frames + splice + frames > most) {
        open_[kind] = made_.rolls.size();
        SelectRoll& roll = made_.rolls.emplace_back();
        roll.name = name_of_roll(made_.building.name, made_.rolls.size());
        roll.kind = kind;
    }
    return made_.rolls[open_[kind]];
}

/// What is behind the leader or behind the piece before, with the splice.
void check_place(const SelectRolls& rolls, const SelectRoll& roll, std::size_t at, const OrderPieces& pieces,
                 std::vector<std::string>& failures) {
    const OrderPiece& piece = pieces[roll.pieces[at]];
    const FrameRange& place = rolls.places[roll.pieces[at]].frames;
    const auto fail = [&](const char* what) { failures.push_back(roll.name + ": " + text_of(piece) + ": " + what); };
    const std::int64_t perforations = perforations_of_frame(roll.kind);
    const std::int64_t foot = perforations_of_foot(roll.kind);
    if (piece.run.kind != roll.kind) fail("is another kind of film");
    if (place.length() != piece.frames.length()) fail("is of another length there");
    if (at == 0 && place.first * perforations < foot * rolls.building.leader_feet) fail("lies on the leader");
    if (at > 0) {
        const FrameRange& before = rolls.places[roll.pieces[at - 1]].frames;
        const std::int64_t between = (place.first - before.last - 1) * perforations;
        if (between < 2 * rolls.building.splices.spent_on_a_side(roll.kind)) fail("leaves no room for its splice");
    }
    if ((place.last + 1) * perforations > foot * rolls.building.feet) fail("goes beyond the end of the roll");
}

} // namespace

std::string SelectRolls::timecode_at(std::int64_t place) const {
    return FilmRun{"", building.timecode, "", 0}.text_at(building.start + place);
}

std::int64_t frames_in_feet(label_t kind, std::int64_t feet) {
    return feet * perforations_of_foot(kind) / perforations_of_frame(kind);
}

std::int64_t frames_of_splice(label_t kind, const SpliceRules& splices) {
    return ceiling_quotient(2 * std::int64_t{splices.spent_on_a_side(kind)}, perforations_of_frame(kind));
}

SelectRolls build_rolls(const OrderPieces& pieces, const RollBuilding& building) {
    return Laying(pieces, building).run();
}

std::vector<std::string> prove_rolls(const SelectRolls& rolls, const OrderPieces& pieces) {
    std::vector<std::string> failures;
    if (rolls.places.size() != pieces.size()) return {"not every piece has a place on a roll"};
    std::vector<int> laid(pieces.size(), 0);
    for (std::size_t number = 0; number < rolls.rolls.size(); ++number) {
        const SelectRoll& roll = rolls.rolls[number];
        for (std::size_t at = 0; at < roll.pieces.size(); ++at) {
            if (rolls.places[roll.pieces[at]].roll == number) ++laid[roll.pieces[at]];
            check_place(rolls, roll, at, pieces, failures);
        }
    }
    for (std::size_t i = 0; i < pieces.size(); ++i)
        if (laid[i] != (perforations_of_foot(pieces[i].run.kind) > 0 ? 1 : 0))
            failures.push_back(text_of(pieces[i]) + ": lies on no roll, or twice");
    return failures;
}

} // namespace film
