#include "film/list_proof.h"

#include "film/plain_number.h"
#include "film/proof_run.h"

#include <algorithm>

namespace film {
namespace {

constexpr std::size_t heading_bytes = 25, date_bytes = 26;

std::string with_commas(std::int64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3)
        text.insert(at - 3, ",");
    return text;
}

std::string counted(std::int64_t number, const char* what) {
    return with_commas(number) + ' ' + what + (number == 1 ? "" : "s");
}

void tell_faults(ProofRun& run) {
    for (const ReadFault& fault : run.report.faults) {
        ProofFinding finding;
        finding.list = fault.list.empty() ? "report" : fault.list;
        finding.page = fault.place.page;
        finding.line = fault.place.line;
        finding.what = fault.what;
        run.proof.failures.push_back(std::move(finding));
    }
}

/// As headings print it.
std::string upper_case(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return text;
}

void check_headings(ProofRun& run) {
    const ListHeading& first = *run.report.heading();
    const std::string edit = upper_case(run.options.edit).substr(0, heading_bytes);
    if (!edit.empty() && edit.find('|') == std::string::npos && trimmed(edit) != first.edit)
        run.fail({run.report.pages.lists.front().list, {1, 1}, ""}, -1,
                 "is headed \"" + std::string(first.edit) + "\", but the edit is \"" + edit + '"');
    const std::string_view dated = std::string_view(run.options.dated).substr(0, date_bytes);
    if (!dated.empty() && trimmed(dated) != first.dated)
        run.fail({run.report.pages.lists.front().list, {1, 2}, ""}, -1,
                 "is dated \"" + std::string(first.dated) + "\", but the edit is of \"" + run.options.dated + '"');
    for (const ListPages& pages : run.report.pages.lists) {
        const ListHeading& heading = pages.heading;
        const bool same = heading.edit == first.edit && heading.dated == first.dated &&
                          heading.project == first.project && heading.format == first.format &&
                          heading.cutting_copy == first.cutting_copy && heading.sound_track == first.sound_track;
        if (!same) run.fail({pages.list, {1, 0}, ""}, -1, "its heading isn't that of the first list");
    }
}

// In a negative list what an optical covers has its number.
void index_pieces(ProofRun& run) {
    for (const Piece& piece : run.pieces) {
        if (piece.first().layer == 0) run.main.emplace(piece.first().event, &piece);
        if (piece.first().optical > 0) run.in_optical[piece.first().optical].push_back(&piece);
    }
}

// A cutting copy shows the main track alone; what opticals take of upper tracks is only called out.
void tell_upper_tracks(ProofRun& run) {
    for (const Piece& piece : run.pieces) {
        const Strip& strip = piece.first();
        if (strip.layer == 0 || piece.black() || piece.unknown()) continue;
        const EntryName entry{PrintedList::pulls, {}, "V" + std::to_string(strip.layer + 1)};
        const std::string what = "\"" + strip.name + "\" on roll \"" + strip.rolls.listed + "\" stands in no list";
        if (strip.optical == 0)
            run.fail(entry, piece.start, what, Rule::upper_track);
        else if (run.cutting_copy)
            run.except(entry, piece.start, what, Rule::upper_layers);
    }
}

void count_up(ProofRun& run) {
    std::int64_t end = 0;
    for (const Piece& piece : run.pieces) {
        run.proof.events += piece.first().layer == 0 ? 1 : 0;
        if (piece.first().layer == 0) end = std::max(end, piece.end);
    }
    run.proof.frames = end;
}

void prove_all(ProofRun& run) {
    check_headings(run);
    index_pieces(run);
    prove_rolls(run);
    prove_pulls(run);
    prove_reuse(run);
    prove_assembly(run);
    prove_timecodes(run);
    prove_opticals(run);
    prove_doubts(run);
    if (run.report.pulls && !run.sound) tell_upper_tracks(run);
}

std::multimap<int, std::string> effects_of(const recdb& table) {
    constexpr unsigned short is_effect = 1, optical = 2, name = 11;
    std::multimap<int, std::string> effects;
    for (unsigned i = 0; i < table.get_num_records(); ++i) {
        const dbrecord& record = *table.get_record(i);
        const auto text = [&record](unsigned short column) {
            const char* field = record.get_field(column);
            return std::string(field ? field : "");
        };
        if (plain_number(text(is_effect)).value_or(0) != 0)
            effects.emplace(plain_number(text(optical)).value_or(0), text(name));
    }
    return effects;
}

std::string parameter(const recdb& table, const char* name) {
    const char* value = table.get_param_val(name);
    return value ? value : "";
}

} // namespace

const std::vector<ListRule>& list_rules() {
    static const std::vector<ListRule> rules = {
        {"upper-track", "film of an upper track that no optical draws on stands in no list"},
        {"transition-at-speed", "a transition of a shot at a speed of its own is counted in whole frames of film"},
        {"from-zero", "a count that begins at zero can't be widened to the front, and is moved on instead"},
        {"black-wipe", "a transition to or from black that is no dissolve counts whole on black and by half beside it"},
        {"log-row", "all film of an event is counted from the row of its log that was found for it"},
        {"roll-carried", "a list doesn't name a roll again that the list ahead of it ended with"},
        {"inexact", "numbers through a pulldown or a speed may be off by a frame"},
        {"no-ink-kind", "film of a kind that has no feet is listed without its ink numbers"},
        {"fx-end", "in frames the end of an effect is the frame behind its last"},
        {"unplaced",
         "an effect that no event was found for has number 0, and is drawn with all shots outside opticals"},
        {"undrawn", "a drawing ends at a shot whose transition leads to no other"},
        {"undrawn-gap", "a gap ahead of a shot that begins a chain of transitions isn't drawn"},
        {"upper-layers", "a cutting copy pulls the main track alone"},
        {"name-cut", "a name with a bar or a control character isn't printed as it is"},
        {"between-frames", "a transition between two frames of film is cut to whole frames, its length by itself"},
    };
    return rules;
}

void take_header(const recdb& table, ProofOptions& options) {
    options.edit = parameter(table, "edit_name");
    options.dated = parameter(table, "edit_date");
    options.effects = effects_of(table);
    options.film = edlstr_to_label_type(parameter(table, "film label_std").c_str(), user_label_key);
    options.timecode = edlstr_to_label_type(parameter(table, "edit_vidtc_std").c_str());
    options.timecode_start = parameter(table, "edit_vidtc_start");
}

ListProof prove_report(std::string_view bytes, const Strips& strips, const ProofOptions& options) {
    ListProof proof;
    const PrintedReport report = read_report(bytes);
    const std::vector<Piece> pieces = pieces_of(strips);
    ProofRun run{report, options, pieces, proof, ReelUnits(options.film), false, false, {}, {}, {}};
    tell_faults(run);
    if (!report.heading()) return proof;
    run.sound = report.heading()->sound_track >= 0;
    run.cutting_copy = report.heading()->cutting_copy || run.sound;
    count_up(run);
    run.find_between();
    prove_all(run);
    return proof;
}

std::string line_of(const ProofFinding& finding) {
    std::string line = finding.list;
    if (finding.page > 0) line += ", page " + std::to_string(finding.page);
    if (finding.line > 0) line += ", line " + std::to_string(finding.line);
    if (!finding.entry.empty()) line += ", " + finding.entry;
    if (finding.frame >= 0) line += ", frame " + std::to_string(finding.frame);
    line += ": " + finding.what;
    if (finding.rule) line += " (rule " + std::string(finding.rule->name) + ": " + finding.rule->text + ')';
    return line;
}

std::string summary_of(const ListProof& proof) {
    const std::string what =
        counted(static_cast<std::int64_t>(proof.events), "event") + ", " + counted(proof.frames, "frame");
    if (proof.proved()) return "proved: " + what;
    return "not proved: " + counted(static_cast<std::int64_t>(proof.failures.size()), "failure") + " in " + what;
}

} // namespace film
