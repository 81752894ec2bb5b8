#include "documents/cut_film.h"

#include "documents/meetings.h"
#include "documents/table_head.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <tuple>
#include <utility>

namespace documents {
namespace {

using film::Count;
using film::Fraction;
using film::Piece;
using film::Strip;

constexpr Count FilmRun::*run_counts[] = {&FilmRun::key, &FilmRun::ink, &FilmRun::timecode, &FilmRun::source};
constexpr Count Strip::*strip_counts[] = {&Strip::key, &Strip::ink, &Strip::timecode, &Strip::source};
constexpr std::size_t number_of_counts = 4;

FilmRun run_of(const Strip& strip, std::int64_t from, std::int64_t to) {
    FilmRun run;
    run.strip = &strip;
    run.start = std::max(from, strip.start);
    run.end = std::min(to, strip.end);
    for (std::size_t i = 0; i < number_of_counts; ++i) {
        run.*run_counts[i] = strip.*strip_counts[i];
        (run.*run_counts[i]).first = (strip.*strip_counts[i]).at(run.start - strip.start);
    }
    return run;
}

bool goes_on(const Count& count, std::int64_t length, const Count& next) {
    if (count.kind != next.kind) return false;
    if (!count) return true;
    return count.prefix == next.prefix && count.perforation == next.perforation && count.step == next.step &&
           count.at(length) == next.first;
}

bool goes_on(const FilmRun& run, const FilmRun& next) {
    if (run.strip->rolls.listed != next.strip->rolls.listed) return false;
    if (run.strip->sureness != next.strip->sureness || run.strip->off != next.strip->off) return false;
    for (std::size_t i = 0; i < number_of_counts; ++i)
        if (!goes_on(run.*run_counts[i], run.length(), next.*run_counts[i])) return false;
    return true;
}

/// The names of transitions, by layer and first frame.
using JointNames = std::map<std::pair<int, std::int64_t>, std::string>;

std::string joint_name(const TableRow& row) {
    if (row.transition_name.empty()) return row.transition_kind == "WO" ? "Wipe" : "Transition";
    if (row.transition_kind != "WO") return row.transition_name;
    // "1.004" is pattern 4, "2.004" the same the other way round.
    const std::size_t point = row.transition_mode.find('.');
    if (point == std::string::npos) return row.transition_name;
    const std::string pattern = std::to_string(std::atoi(row.transition_mode.c_str() + point + 1));
    return row.transition_name + ' ' + pattern + (row.transition_mode[0] == '2' ? " reversed" : "");
}

JointNames names_of(const std::vector<TableRow>& rows) {
    JointNames names;
    for (const TableRow& row : rows)
        if (!row.is_optical && row.transition_length > 0) names[{row.layer, row.end}] = joint_name(row);
    return names;
}

std::vector<Joint> joints_of(const std::vector<Piece>& pieces, const JointNames& names) {
    std::vector<Joint> joints;
    for (std::size_t i = 0; i + 1 < pieces.size(); ++i) {
        const Piece &before = pieces[i], &behind = pieces[i + 1];
        const int layer = before.first().layer;
        if (layer != behind.first().layer || before.end <= behind.start) continue;
        const auto name = names.find({layer, behind.start});
        joints.push_back({layer, behind.start, before.end - behind.start,
                          name == names.end() ? "Transition" : name->second, &before, &behind});
    }
    return joints;
}

/// Of a joint, the frames that stay with the piece before it.
std::int64_t kept_before(const Joint& joint) {
    if (joint.before->black() != joint.behind->black()) return joint.before->black() ? 0 : joint.length;
    return (joint.length + 1) / 2;
}

std::vector<Share> shares_of(const std::vector<Piece>& pieces, const std::vector<Joint>& joints) {
    std::vector<Share> shares;
    for (const Piece& piece : pieces) {
        if (piece.first().layer != 0) break;
        shares.push_back({&piece, piece.start, piece.end, nullptr});
    }
    auto share = shares.begin();
    for (const Joint& joint : joints) {
        if (joint.layer != 0) break;
        while (share != shares.end() && share->piece != joint.before)
            ++share;
        if (share == shares.end() || share + 1 == shares.end()) break;
        share->end = joint.start + kept_before(joint);
        share->out = &joint;
        (share + 1)->start = share->end;
    }
    return shares;
}

/// A row for each effect; they are put together by number.
std::vector<LabOptical> opticals_of(const std::vector<TableRow>& rows, const std::vector<Piece>& pieces) {
    std::map<int, LabOptical> by_number;
    for (const TableRow& row : rows) {
        if (!row.is_optical) continue;
        LabOptical& optical = by_number[row.optical];
        optical.number = row.optical;
        optical.start = row.optical_start;
        optical.end = row.optical_end;
        optical.misplaced = optical.misplaced || row.optical_error;
        if (row.has_effect) optical.effects.push_back({row.optical_name, row.start, row.end});
    }
    for (const Piece& piece : pieces) {
        const auto optical = by_number.find(piece.first().optical);
        if (piece.first().layer != 0 || optical == by_number.end()) continue;
        if (optical->second.event == 0) optical->second.event = piece.first().event;
    }
    std::vector<LabOptical> opticals;
    for (auto& [number, optical] : by_number)
        opticals.push_back(std::move(optical));
    return opticals;
}

} // namespace

std::optional<std::int64_t> FilmRun::film_frames() const {
    if (!strip->has_film()) return std::nullopt;
    const Count& count = key ? key : source;
    if (!count || length() < 1) return std::nullopt;
    return std::abs(count.frame_at(length() - 1) - count.frame_at(0)) + 1;
}

std::vector<FilmRun> runs_of(const Piece& piece, std::int64_t from, std::int64_t to) {
    std::vector<FilmRun> runs;
    for (const Strip* strip : piece.strips) {
        if (strip->end <= from || to <= strip->start) continue;
        const FilmRun run = run_of(*strip, from, to);
        if (!runs.empty() && goes_on(runs.back(), run))
            runs.back().end = run.end;
        else
            runs.push_back(run);
    }
    return runs;
}

std::int64_t CutFilm::length() const {
    std::int64_t end = 0;
    for (const Share& share : shares)
        end = std::max(end, share.end);
    return end;
}

const LabOptical* CutFilm::optical(int number) const {
    const auto found = std::lower_bound(opticals.begin(), opticals.end(), number,
                                        [](const LabOptical& one, int wanted) { return one.number < wanted; });
    return number > 0 && found != opticals.end() && found->number == number ? &*found : nullptr;
}

std::vector<const Piece*> CutFilm::pieces_of_optical(int number) const {
    std::vector<const Piece*> found;
    const auto [begin, end] = in_optical.equal_range(number);
    for (auto piece = begin; piece != end; ++piece)
        found.push_back(piece->second);
    return found;
}

CutFilmPtr cut_film(film::Strips strips, const recdb& table, film::Findings findings, const CutOptions& options) {
    const auto cut = std::make_shared<CutFilm>();
    const TableHead head = head_of(table);
    const std::vector<TableRow> rows = rows_of(table);
    cut->title = title_of(head);
    cut->title.reel = options.reel;
    cut->options = options;
    cut->film = head.film;
    cut->neg_cut = head.neg_cut;
    cut->sound = head.sound;
    cut->strips = std::move(strips);
    cut->pieces = film::pieces_of(cut->strips);
    for (const Piece& piece : cut->pieces)
        if (piece.first().optical > 0) cut->in_optical.emplace(piece.first().optical, &piece);
    cut->joints = joints_of(cut->pieces, names_of(rows));
    cut->shares = shares_of(cut->pieces, cut->joints);
    cut->opticals = opticals_of(rows, cut->pieces);
    cut->findings = std::move(findings);
    cut->meetings = meetings_of(*cut);
    return cut;
}

std::string film_name(const CutFilm& cut, const Piece& piece) {
    const Strip& strip = piece.first();
    const bool shared = cut.neg_cut && strip.optical > 0; // all pieces of an optical then have one number
    if (strip.event > 0 && strip.layer == 0 && !shared) return "event-" + std::to_string(strip.event);
    return "piece-" + std::to_string(&piece - cut.pieces.data() + 1);
}

std::string film_name(const LabOptical& optical) { return "optical-" + std::to_string(optical.number); }

} // namespace documents
