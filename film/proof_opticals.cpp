// Each optical's drawing adds up, and its shots are the film of the optical.

#include "film/proof_run.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace film {
namespace {

constexpr std::size_t name_bytes = 11;
constexpr const char* no_key = "NO KEYKODE";
constexpr double slack = 1e-6;

bool begins_chain(const DrawnShot& shot) { return static_cast<bool>(shot.start_out) && !shot.start_in; }

class OpticalProof {
public:
    OpticalProof(ProofRun& run, const OpticalEntry& optical)
        : run_(run), optical_(optical), name_{PrintedList::opticals, optical.place, optical_name(optical.number)} {
        const auto found = run.in_optical.find(optical.number);
        if (found == run.in_optical.end()) return;
        for (const Piece* piece : found->second)
            open_.emplace(std::pair(piece->start, piece->end), piece);
    }

    void run() {
        prove_range();
        if (!optical_.name.empty()) run_.check_effect(name_, optical_.name, optical_.number);
        for (const DrawnEffect& effect : optical_.effects)
            prove_effect(effect);
        if (optical_.in_error) return;
        int number = 0;
        for (const DrawnLayer& layer : optical_.layers) {
            if (layer.number != 0) run_.expect_number(at(layer.place), "layer", layer.number, ++number);
            prove_layer(layer);
        }
        tell_undrawn();
    }

private:
    EntryName at(const Place& place) const { return {PrintedList::opticals, place, name_.text}; }

    void prove_range() {
        const std::int64_t begin = run_.frame_in(name_, optical_.begin), end = run_.frame_in(name_, optical_.end);
        if (begin < 0 || end < 0) return;
        run_.expect_number(name_, "frame length", optical_.length, end - begin + 1, begin);
        if (optical_.in_error) return;
        std::int64_t first = INT64_MAX, last = 0;
        for (const auto& [ends, piece] : open_) {
            if (piece->first().layer > 0) continue;
            first = std::min(first, piece->cut_in);
            last = std::max(last, piece->cut_out);
        }
        if (first <= last) {
            run_.expect_number(name_, "begins at", begin, first, begin);
            run_.expect_number(name_, "ends at", end, last - 1, end);
        }
        const auto shown =
            std::find_if(open_.begin(), open_.end(), [](const auto& open) { return open.second->first().layer == 0; });
        if (!run_.cutting_copy && shown != open_.end())
            run_.expect_number(name_, "assembly event", optical_.event, shown->second->first().event, begin);
    }

    // In frames the end is the frame behind the last.
    void prove_effect(const DrawnEffect& effect) {
        const EntryName name = at(effect.place);
        run_.check_effect(name, effect.name, optical_.number);
        const std::int64_t start = run_.frame_in(name, effect.start), end = run_.frame_in(name, effect.end);
        if (start < 0 || end < 0) return;
        const bool feet = effect.end.find('+') != std::string_view::npos;
        run_.expect_number(name, "FX length", effect.length, end - start + (feet ? 1 : 0), start);
        if (!feet) run_.except(name, start, "FX end " + std::string(effect.end), Rule::fx_end);
    }

    /// "A-ROLL", "B-ROLL", and the next letters for each further layer.
    void prove_head(const DrawnLayer& layer) {
        const int letter = 'A' + 2 * (std::max(layer.number, 1) - 1);
        const std::string left{static_cast<char>(letter)}, right{static_cast<char>(letter + 1)};
        if (layer.head.substr(0, 6) != left + "-ROLL" && !layer.head.empty())
            run_.fail(at(layer.place), -1, "its first roll should be roll " + left);
        if (layer.head.size() < 6 || layer.head.substr(layer.head.size() - 6) != right + "-ROLL")
            run_.fail(at(layer.place), -1, "its second roll should be roll " + right);
    }

    void prove_layer(const DrawnLayer& layer) {
        prove_head(layer);
        for (const DrawnShot& shot : layer.shots)
            prove_shot(shot);
        prove_rolls(layer);
        const Joints out = joints_of(layer, &DrawnShot::start_out, &DrawnShot::full_out);
        const Joints in = joints_of(layer, &DrawnShot::start_in, &DrawnShot::full_in);
        for (const DrawnTransition& transition : layer.transitions)
            prove_transition(transition, out, in);
    }

    /// The first and last frames of transitions, as the shots of one of their sides give them.
    using Joints = std::set<std::pair<std::int64_t, std::int64_t>>;

    Joints joints_of(const DrawnLayer& layer, DrawnPoint DrawnShot::*first, DrawnPoint DrawnShot::*last) const {
        Joints joints;
        for (const DrawnShot& shot : layer.shots) {
            const auto from = run_.units.frame_of((shot.*first).position),
                       to = run_.units.frame_of((shot.*last).position);
            if (from && to) joints.emplace(*from, *to);
        }
        return joints;
    }

    struct Ends {
        std::int64_t from = -1, to = -1;
    };

    /// The frames of a shot, the last one excluded; -1 where they can't be read.
    Ends ends_of(const DrawnShot& shot) const {
        const DrawnPoint& first = shot.begin ? shot.begin : shot.start_in;
        const DrawnPoint& last = shot.end ? shot.end : shot.full_out;
        const auto from = run_.units.frame_of(first.position), to = run_.units.frame_of(last.position);
        if (!first || !last || !from || !to) return {};
        return {*from, *to + 1};
    }

    void prove_shot(const DrawnShot& shot) {
        const EntryName name = at(shot.place);
        const Ends ends = ends_of(shot);
        if (ends.from < 0) return run_.fail(name, -1, "its first or last position is missing or no position");
        run_.expect_number(name, "length", shot.length, ends.to - ends.from, ends.from);
        const Piece* const piece = take_piece(shot, ends);
        if (!piece)
            return run_.fail_place(name, ends.from,
                                   "no shot of the optical lies at frames " + std::to_string(ends.from) + " to " +
                                       std::to_string(ends.to - 1));
        run_.check_roll(name, shot.roll, *piece);
        run_.check_name(name, shot.name, *piece, name_bytes);
        prove_speed(name, shot, *piece);
        if (!piece->black() && !piece->unknown()) prove_film(name, shot, *piece);
        if (shot.start_out) prove_position(name, shot.start_out, piece->cut_out);
        if (shot.full_in) prove_position(name, shot.full_in, piece->cut_in - 1);
    }

    void prove_position(const EntryName& name, const DrawnPoint& point, std::int64_t should) {
        const std::int64_t frame = run_.frame_in(name, point.position);
        if (frame >= 0) run_.expect_number(name, "a transition at frame", frame, should, frame);
    }

    /// The piece at these frames; of several the one with the shot's film.
    const Piece* take_piece(const DrawnShot& shot, const Ends& ends) {
        const auto [first, last] = open_.equal_range({ends.from, ends.to});
        if (first == last) return nullptr;
        const std::string_view key = (shot.begin ? shot.begin : shot.start_in).key;
        auto found = std::find_if(first, last, [&](const auto& open) {
            return open.second->first().rolls.listed == shot.roll && code_at_start(*open.second) == key;
        });
        if (found == last) found = first;
        const Piece* const piece = found->second;
        open_.erase(found);
        return piece;
    }

    static std::string code_at_start(const Piece& piece) {
        const Codes codes = listed_codes(piece, &Strip::key, {Share::whole, Share::whole}, 0, slack);
        return codes ? code_of(codes.kind, codes.prefix, codes.first) : no_key;
    }

    void prove_speed(const EntryName& name, const DrawnShot& shot, const Piece& piece) {
        if (piece.unknown()) return;
        const Fraction speed = piece.first().speed;
        const auto percent = static_cast<int>(speed.to_double() * 100);
        const std::string should = piece.black() || speed == Fraction(1) ? "" : std::to_string(percent);
        if (shot.speed != should)
            run_.fail(name, piece.start, "speed \"" + std::string(shot.speed) + "\", should be \"" + should + '"');
    }

    void prove_film(const EntryName& name, const DrawnShot& shot, const Piece& piece) {
        const Shares whole{Share::whole, Share::whole};
        const DrawnPoint& first = shot.begin ? shot.begin : shot.start_in;
        const DrawnPoint& last = shot.end ? shot.end : shot.full_out;
        run_.check_codes(name, piece, &Strip::key, whole, 0, {first.key, last.key, no_key}, slack);
        if (!piece.numbered()) return;
        const Codes codes = listed_codes(piece, &Strip::key, whole, 0, slack);
        const double speed = piece.first().speed.to_double();
        const int step = get_static_label_cvt(codes.kind)->samples_per_frame();
        const std::int64_t behind = codes.last + static_cast<std::int64_t>(step * speed + slack);
        if (shot.start_out)
            prove_code(name, shot.start_out, piece, codes,
                       behind - listed_film_frames(double(piece.out_length()), speed) * step);
        if (shot.full_in)
            prove_code(name, shot.full_in, piece, codes,
                       codes.first + listed_film_frames(double(piece.in_length()) - 1.0, speed) * step);
    }

    void prove_code(const EntryName& name, const DrawnPoint& point, const Piece& piece, const Codes& codes,
                    std::int64_t should) {
        const auto stands = sample_of(codes.kind, codes.prefix, point.key);
        if (stands == should) return;
        const Strip& strip = piece.at(piece.cut_in);
        const int step = get_static_label_cvt(codes.kind)->samples_per_frame();
        const bool near =
            stands && strip.sureness == Sureness::within && std::abs(*stands - should) <= strip.off * step;
        const std::string what =
            "transition at " + std::string(point.key) + ", should be " + code_of(codes.kind, codes.prefix, should);
        if (near)
            run_.except(name, piece.start, what, Rule::inexact);
        else
            run_.fail(name, piece.start, what);
    }

    // Along each roll shots and spacers follow each other without a gap.
    void prove_rolls(const DrawnLayer& layer) {
        if (layer.shots.empty()) return;
        const std::int64_t start = ends_of(layer.shots.front()).from;
        for (const auto& roll : layer.rolls) {
            std::int64_t at_frame = start;
            for (const DrawnPart& part : roll) {
                if (part.shot < 0) {
                    at_frame += part.spacer;
                    continue;
                }
                const DrawnShot& shot = layer.shots[static_cast<std::size_t>(part.shot)];
                const Ends ends = ends_of(shot);
                if (ends.from < 0) return;
                prove_joint(shot, at_frame, ends.from);
                at_frame = ends.to;
            }
            prove_roll_end(layer, at_frame);
        }
    }

    void prove_joint(const DrawnShot& shot, std::int64_t filled, std::int64_t from) {
        if (filled == from) return;
        const std::string what =
            "the roll is filled up to frame " + std::to_string(filled) + ", the shot begins at " + std::to_string(from);
        const bool gap = from > filled && begins_chain(shot);
        run_.fail_place(at(shot.place), filled, what, gap ? Rule::undrawn_gap : Rule::none);
    }

    // A roll ends with the layer, or with its last shot.
    void prove_roll_end(const DrawnLayer& layer, std::int64_t filled) {
        std::int64_t end = 0;
        for (const DrawnShot& shot : layer.shots)
            end = std::max(end, ends_of(shot).to);
        if (filled > end)
            run_.fail_place(at(layer.place), end,
                            "a roll is filled up to frame " + std::to_string(filled) + ", the layer ends at " +
                                std::to_string(end));
    }

    void prove_transition(const DrawnTransition& transition, const Joints& out, const Joints& in) {
        const EntryName name = at(transition.place);
        const std::int64_t start = run_.frame_in(name, transition.start), end = run_.frame_in(name, transition.end);
        if (start < 0 || end < 0) return;
        run_.expect_number(name, "FX len", transition.length, end - start + 1, start);
        if (out.count({start, end}) == 0 || in.count({start, end}) == 0)
            run_.fail_place(name, start, "no two shots overlap by this transition");
    }

    void tell_undrawn() {
        for (const auto& [ends, piece] : open_) {
            const Strip& last = *piece->strips.back();
            const Rule rule = last.layer == 0 && last.role == Role::outgoing ? Rule::undrawn : Rule::none;
            run_.fail_place(name_, piece->start, "shot \"" + piece->first().name + "\" isn't drawn", rule);
        }
    }

    ProofRun& run_;
    const OpticalEntry& optical_;
    const EntryName name_;
    std::multimap<std::pair<std::int64_t, std::int64_t>, const Piece*> open_; ///< what wasn't met yet, by its frames
};

} // namespace

void prove_opticals(ProofRun& run) {
    if (!run.report.opticals) return;
    std::vector<int> numbers;
    for (const OpticalEntry& optical : run.report.opticals->opticals) {
        const EntryName name{PrintedList::opticals, optical.place, optical_name(optical.number)};
        if (optical.number == 0) run.fail(name, -1, "is none of the reel's opticals", Rule::unplaced);
        if (optical.number == 0) continue;
        OpticalProof(run, optical).run();
        numbers.push_back(optical.number);
    }
    std::sort(numbers.begin(), numbers.end());
    const EntryName list{PrintedList::opticals, {}, ""};
    for (std::size_t i = 1; i < numbers.size(); ++i)
        if (numbers[i] == numbers[i - 1]) run.fail(list, -1, optical_name(numbers[i]) + " stands here twice");
    for (const auto& [number, pieces] : run.in_optical)
        if (!std::binary_search(numbers.begin(), numbers.end(), number))
            run.fail(list, -1, optical_name(number) + " is missing");
}

} // namespace film
