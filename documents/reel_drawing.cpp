#include "documents/reel_drawing.h"

#include "documents/film_cells.h"
#include "documents/film_count.h"
#include "documents/piece_looks.h"

#include <algorithm>
#include <map>

namespace documents {
namespace {

using film::Finding;
using film::Piece;
using film::Severity;

/// Not ink, which is put on later, and not what names look like in lists.
bool concerns_film(film::Code code) {
    return code != film::Code::no_ink && code != film::Code::name_cut && code != film::Code::bad_text;
}

class ReelStrip {
public:
    explicit ReelStrip(const CutFilm& cut) : cut_(cut) {
        for (const Finding& finding : cut.findings)
            if (finding.place.event > 0) found_[finding.place.event].push_back(&finding);
    }

    Drawing run() {
        drawing_.id = "reel";
        drawing_.film = cut_.film;
        drawing_.lanes.emplace_back();
        std::int64_t at = 0; // behind what is drawn
        for (const Piece& piece : cut_.pieces)
            if (piece.first().layer == 0) draw(piece, at);
        drawing_.end = at;
        for (const Joint& joint : cut_.joints)
            if (joint.layer == 0) draw(joint);
        for (const LabOptical& optical : cut_.opticals)
            draw(optical);
        std::stable_sort(drawing_.marks.begin(), drawing_.marks.end(),
                         [](const DrawnMark& a, const DrawnMark& b) { return a.start < b.start; });
        drawing_.patterns = patterns_of(drawing_);
        tell();
        return std::move(drawing_);
    }

private:
    /// A piece without its transitions, which have their frames to themselves.
    void draw(const Piece& piece, std::int64_t& at) {
        DrawnPiece shot = looks_of(piece);
        shot.film = film_name(cut_, piece);
        if (piece.start > at) draw_gap(at, piece.start);
        shot.start = std::max(piece.cut_in, at);
        shot.length = piece.cut_out - shot.start;
        at = std::max(at, piece.end);
        look_for_doubts(piece, shot);
        name_roll(piece, shot);
        if (shot.stuff == Stuff::black) shot.name.clear();
        shot.told = told(piece, shot);
        if (shot.length > 0) drawing_.pieces.push_back(std::move(shot));
    }

    void draw_gap(std::int64_t start, std::int64_t end) {
        DrawnPiece gap;
        gap.start = start;
        gap.length = end - start;
        gap.stuff = Stuff::spacer;
        gap.told = "Nothing, " + film::frames_text(gap.length) + " from " + position_text(cut_.film, start);
        drawing_.pieces.push_back(std::move(gap));
    }

    std::string told(const Piece& piece, const DrawnPiece& shot) const {
        std::string text = shot.stuff == Stuff::black ? "Black" : shot.name;
        const std::string& roll = piece.first().rolls.listed;
        if (!roll.empty()) text += (text.empty() ? "roll " : ", roll ") + roll;
        text += (text.empty() ? "" : ", ") + film::frames_text(piece.end - piece.start) + " from " +
                position_text(cut_.film, piece.start);
        for (const std::string& detail : shot.details)
            text += ", " + detail;
        return text;
    }

    void look_for_doubts(const Piece& piece, DrawnPiece& shot) {
        const auto found = found_.find(piece.first().event);
        if (found == found_.end() || piece.first().event == 0) return;
        std::string words;
        for (const Finding* finding : found->second) {
            if (finding->severity == Severity::note || !concerns_film(finding->code)) continue;
            shot.fill = finding->severity == Severity::wrong ? Fill::crossed : std::max(shot.fill, Fill::hatched);
            shot.strong = shot.strong || finding->severity == Severity::wrong;
            const std::string head = head_of(finding->code);
            if (words.find(head) == std::string::npos) words += (words.empty() ? "" : ", ") + head;
        }
        if (words.empty()) return;
        shot.details.push_back(words);
        drawing_.marks.push_back({shot.film, 0, piece.start, piece.end - piece.start, words, false, true});
    }

    /// Where the roll changes.
    void name_roll(const Piece& piece, const DrawnPiece& shot) {
        const std::string& roll = piece.first().rolls.listed;
        if (roll == roll_ || roll.empty()) return;
        roll_ = roll;
        drawing_.marks.push_back({shot.film, 0, piece.start, piece.end - piece.start, roll, false, false});
    }

    void draw(const Joint& joint) {
        const std::string name =
            joint.name + ", " + film::frames_text(joint.length) + " from " + position_text(cut_.film, joint.start);
        drawing_.transitions.push_back({film_name(cut_, *joint.before), 0, 0, joint.start, joint.length, name, ""});
    }

    void draw(const LabOptical& optical) {
        std::string text = "optical " + std::to_string(optical.number);
        for (const LabEffect& effect : optical.effects)
            text += ", " + effect.name;
        const std::int64_t start = std::max<std::int64_t>(optical.start, 0), end = std::min(optical.end, drawing_.end);
        if (start < end) drawing_.marks.push_back({film_name(optical), 0, start, end - start, text, true, true});
    }

    void tell() {
        drawing_.title = "The reel" + (cut_.title.edit.empty() ? "" : ": " + cut_.title.edit);
        drawing_.description = film::frames_text(drawing_.length()) + ", " +
                               counted(static_cast<std::int64_t>(drawing_.pieces.size()), "piece", "pieces") + " and " +
                               counted(static_cast<std::int64_t>(cut_.opticals.size()), "optical", "opticals") +
                               ", in the order of the assembly list, which says the same.";
    }

    const CutFilm& cut_;
    std::map<int, std::vector<const Finding*>> found_; ///< by event
    std::string roll_;
    Drawing drawing_;
};

} // namespace

Drawing reel_drawing(const CutFilm& cut) { return ReelStrip(cut).run(); }

} // namespace documents
