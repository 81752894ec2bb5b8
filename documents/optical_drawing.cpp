#include "documents/optical_drawing.h"

#include "documents/film_cells.h"
#include "documents/film_count.h"
#include "documents/piece_looks.h"

#include <algorithm>
#include <map>

namespace documents {
namespace {

using film::Piece;

/// Rolls beside each other in one drawing, where films lie over each other that shouldn't.
constexpr int most_rolls = 6;

std::string roll_name(int number) {
    if (number < 26) return std::string(1, static_cast<char>('A' + number)) + " roll";
    return "Roll " + std::to_string(number + 1);
}

std::string frames_from(std::int64_t start, std::int64_t end, std::int64_t origin) {
    return std::to_string(start - origin) + "–" + std::to_string(end - 1 - origin);
}

class OpticalSheet {
public:
    OpticalSheet(const CutFilm& cut, const LabOptical& optical, std::vector<const Piece*> pieces, int layer)
        : cut_(cut), optical_(optical), pieces_(std::move(pieces)), layer_(layer) {}

    Drawing run(int layers) {
        drawing_.id = film_name(optical_) + (layers > 1 ? "-layer-" + std::to_string(layer_ + 1) : "");
        drawing_.way = Way::down;
        drawing_.film = cut_.film;
        set_range();
        for (const Piece* piece : pieces_)
            lay(*piece);
        for (std::size_t roll = 0; roll < ends_.size(); ++roll)
            drawing_.lanes.push_back({roll_name(2 * layer_ + static_cast<int>(roll)), ""});
        for (const Joint& joint : cut_.joints)
            join(joint);
        if (layer_ == 0) add_effects();
        std::stable_sort(drawing_.pieces.begin(), drawing_.pieces.end(), [](const DrawnPiece& a, const DrawnPiece& b) {
            return std::pair(a.lane, a.start) < std::pair(b.lane, b.start);
        });
        drawing_.patterns = patterns_of(drawing_);
        tell(layers);
        return std::move(drawing_);
    }

private:
    void set_range() {
        drawing_.begin = optical_.start;
        drawing_.end = optical_.end;
        for (const Piece* piece : pieces_) {
            drawing_.begin = std::min(drawing_.begin, piece->start);
            drawing_.end = std::max(drawing_.end, piece->end);
        }
    }

    /// By turns on two rolls; on another where film lies there still.
    std::size_t roll_for(const Piece& piece) {
        const std::size_t turn = rolls_.size() % 2;
        for (const std::size_t roll : {turn, 1 - turn})
            if (roll < ends_.size() ? ends_[roll] <= piece.start : roll == ends_.size()) return roll;
        for (std::size_t roll = 2; roll < ends_.size(); ++roll)
            if (ends_[roll] <= piece.start) return roll;
        return std::min<std::size_t>(ends_.size(), most_rolls - 1);
    }

    void lay(const Piece& piece) {
        const std::size_t roll = roll_for(piece);
        if (roll == ends_.size()) ends_.push_back(drawing_.begin);
        rolls_[&piece] = static_cast<int>(roll);
        if (piece.start > ends_[roll]) add_spacer(static_cast<int>(roll), ends_[roll], piece.start);
        ends_[roll] = std::max(ends_[roll], piece.end);
        drawing_.pieces.push_back(drawn(piece, static_cast<int>(roll)));
    }

    void add_spacer(int roll, std::int64_t start, std::int64_t end) {
        DrawnPiece spacer;
        spacer.lane = roll;
        spacer.start = start;
        spacer.length = end - start;
        spacer.stuff = Stuff::spacer;
        spacer.name = "spacer " + std::to_string(spacer.length);
        spacer.told = spacer.name;
        drawing_.pieces.push_back(std::move(spacer));
    }

    DrawnPiece drawn(const Piece& piece, int roll) const {
        DrawnPiece shot = looks_of(piece);
        shot.film = film_name(cut_, piece);
        shot.lane = roll;
        shot.start = piece.start;
        shot.length = piece.end - piece.start;
        const std::string roll_of_shot = piece.first().rolls.listed;
        if (!roll_of_shot.empty()) shot.name += (shot.name.empty() ? "" : " · ") + roll_of_shot;
        shot.details.insert(shot.details.begin(), film::frames_text(shot.length) + ", " +
                                                      frames_from(piece.start, piece.end, optical_.start));
        add_number(shot, piece, piece.start, piece.start);
        if (piece.end > piece.start) add_number(shot, piece, piece.end, piece.end - 1);
        shot.told = shot.name;
        for (const std::string& detail : shot.details)
            shot.told += ", " + detail;
        for (const DrawnNumber& number : shot.numbers)
            shot.told += (&number == shot.numbers.data() ? ", " : " to ") + number.text;
        return shot;
    }

    /// The number of a frame; its strip is named by the first.
    static void add_number(DrawnPiece& shot, const Piece& piece, std::int64_t edge, std::int64_t frame) {
        if (piece.black() || !piece.numbered()) return;
        const film::Strip &strip = piece.at(frame), &first = piece.first();
        const KeyParts key = key_parts(strip.key, frame - strip.start);
        const bool same = frame > piece.start && key.prefix == key_parts(first.key, 0).prefix;
        shot.numbers.push_back({edge, same ? key.count : key.whole()});
    }

    DrawnPiece* shot_of(const Piece* piece) {
        const auto found = std::find_if(drawing_.pieces.begin(), drawing_.pieces.end(), [&](const DrawnPiece& shot) {
            return shot.stuff != Stuff::spacer && shot.start == piece->start && shot.lane == rolls_.at(piece) &&
                   shot.film == film_name(cut_, *piece);
        });
        return found == drawing_.pieces.end() ? nullptr : &*found;
    }

    void join(const Joint& joint) {
        const bool out = rolls_.count(joint.before) > 0, in = rolls_.count(joint.behind) > 0;
        if (!out && !in) return;
        DrawnTransition transition;
        const Piece& known = out ? *joint.before : *joint.behind;
        transition.film = film_name(cut_, known);
        transition.from = rolls_.at(out ? joint.before : joint.behind);
        transition.to = rolls_.at(in ? joint.behind : joint.before);
        transition.start = joint.start;
        transition.length = joint.length;
        transition.name = joint.name + (joint.name.find_last_of("0123456789") == joint.name.size() - 1 ? ", " : " ") +
                          std::to_string(joint.length);
        transition.detail = frames_from(joint.start, joint.start + joint.length, optical_.start);
        drawing_.transitions.push_back(std::move(transition));
        const std::int64_t end = joint.start + joint.length;
        if (out) number_inside(*joint.before, joint.start, joint.start);
        if (in) number_inside(*joint.behind, end, end - 1);
    }

    void number_inside(const Piece& piece, std::int64_t edge, std::int64_t frame) {
        DrawnPiece* const shot = shot_of(&piece);
        if (shot == nullptr || edge <= shot->start || edge >= shot->start + shot->length) return;
        add_number(*shot, piece, edge, frame);
        std::stable_sort(shot->numbers.begin(), shot->numbers.end(),
                         [](const DrawnNumber& a, const DrawnNumber& b) { return a.edge < b.edge; });
    }

    void add_effects() {
        for (const LabEffect& effect : optical_.effects) {
            DrawnPiece bar;
            bar.lane = static_cast<int>(drawing_.lanes.size());
            bar.film = film_name(optical_);
            bar.start = std::max(effect.start, drawing_.begin);
            bar.length = std::min(effect.end, drawing_.end) - bar.start;
            bar.stuff = Stuff::effect;
            bar.fill = Fill::dots;
            bar.name = effect.name;
            bar.details = {film::frames_text(effect.end - effect.start) + ", " +
                           frames_from(effect.start, effect.end, optical_.start)};
            bar.told = "Effect: " + bar.name + ", " + bar.details.front();
            if (bar.length > 0) effects_.push_back(bar);
        }
        if (effects_.empty()) return;
        drawing_.lanes.push_back({"Effect", ""});
        drawing_.pieces.insert(drawing_.pieces.end(), effects_.begin(), effects_.end());
    }

    void tell(int layers) {
        drawing_.title = "Optical " + std::to_string(optical_.number);
        if (layers > 1) drawing_.title += ", layer " + std::to_string(layer_ + 1) + " of " + std::to_string(layers);
        std::string& text = drawing_.description;
        text = film::frames_text(drawing_.length()) + " from " + position_text(drawing_.film, drawing_.begin) + '.';
        for (const DrawnPiece& piece : drawing_.pieces)
            text += ' ' + drawing_.lanes[static_cast<std::size_t>(piece.lane)].name + ": " + piece.told + '.';
        for (const DrawnTransition& transition : drawing_.transitions)
            text += ' ' + transition.name + ": " + transition.detail + '.';
    }

    const CutFilm& cut_;
    const LabOptical& optical_;
    const std::vector<const Piece*> pieces_;
    const int layer_;
    Drawing drawing_;
    std::vector<std::int64_t> ends_; ///< of the film on each roll
    std::map<const Piece*, int> rolls_;
    std::vector<DrawnPiece> effects_;
};

} // namespace

std::vector<Drawing> drawings_of(const CutFilm& cut, const LabOptical& optical) {
    std::map<int, std::vector<const Piece*>> layers;
    for (const Piece* piece : cut.pieces_of_optical(optical.number))
        layers[piece->first().layer].push_back(piece);
    std::vector<Drawing> drawings;
    for (auto& [layer, pieces] : layers)
        drawings.push_back(OpticalSheet(cut, optical, std::move(pieces), static_cast<int>(drawings.size()))
                               .run(static_cast<int>(layers.size())));
    return drawings;
}

} // namespace documents
