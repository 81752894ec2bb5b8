#include "tool/film_check.h"

#include "embedded/edit_builder.h"
#include "embedded/services.h"
#include "film/log_rows.h"
#include "tool/cutlist_table.h"
#include "tool/log_match.h"
#include "tool/open_edit.h"
#include "tool/open_logs.h"
#include "tool/option_table.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <algorithm>
#include <climits>
#include <map>
#include <ostream>
#include <utility>

namespace tool {
namespace {

/// "EDIT: line 12", whatever of it the reader's words hold already.
std::string source_of(const film::FoundAt& place) {
    if (place.where.compare(0, place.file.size(), place.file) == 0) return place.where;
    return place.file + (place.where.empty() ? "" : ": ") + place.where;
}

std::string place_text(const film::FoundAt& place) {
    std::string text = source_of(place);
    if (place.frame < 0) return text;
    text += text.empty() ? "" : ": ";
    text += place.event > 0 ? "event " + std::to_string(place.event) + " of " + place.channel : place.channel;
    text += " at frame " + std::to_string(place.frame);
    if (!place.timecode.empty()) text += " (" + place.timecode + ")";
    if (!place.name.empty()) text += ", \"" + place.name + "\"";
    return text;
}

std::size_t count_of(const film::Findings& findings, film::Severity severity) {
    return static_cast<std::size_t>(std::count_if(
        findings.begin(), findings.end(), [severity](const auto& finding) { return finding.severity == severity; }));
}

} // namespace

void add_check_options(OptionTable& options, CheckChoices& choices) {
    constexpr int most_splice_frames = 100;
    options.add({
        {"--strict", "", "Doubts fail the run too, before anything is written", choices.strict},
        {"--splice-frames", "FRAMES", "Frames that must lie between two pieces of one take on the negative",
         WholeNumber{choices.splice_frames, 0, most_splice_frames}},
    });
}

std::unique_ptr<film::LogRows> open_log_rows(const std::string& table) {
    std::string bytes;
    if (!embedded::read_file(table, &bytes, nullptr)) throw JobError(table + ": couldn't be read");
    const MatchedLog* matched = matched_log(table);
    const recdb rows(wide_path(matched ? matched->path : table), INT_MAX, false);
    if (!rows.get_valid()) throw JobError(table + ": isn't a logging table");
    return std::make_unique<film::LogRows>(rows, film::line_of_first_record(bytes),
                                           matched ? &matched->places : nullptr);
}

namespace {

/// Of the lists that a run with these options prints.
void take_list_options(const LibraryOptions& library, bool neg_cut, film::CheckOptions& options) {
    const std::string form = library.value("pull_match_assembly");
    options.uses.neg_cut = form.empty() ? neg_cut : !library.is_on("pull_match_assembly");
    const std::string reel = library.value("film_reel");
    if (!reel.empty()) options.uses.film_reel = std::atoi(reel.c_str());
    const bool prints_ink = options.uses.kind == sound_kind || !options.uses.neg_cut;
    const bool goes_by_ink = prints_ink && library.is_on("pull_sort_by_keycode");
    options.ink = goes_by_ink ? film::InkNeed::all : prints_ink ? film::InkNeed::where_used : film::InkNeed::none;
}

} // namespace

film::CheckOptions check_options(const EditInput& edit, const ChannelName& channel, const std::string& log,
                                 bool neg_cut, const LibraryOptions& library, const CheckChoices& choices) {
    film::CheckOptions options;
    options.uses.kind = channel.kind;
    options.uses.number = channel.number;
    take_list_options(library, neg_cut, options);
    options.edit_file = edit.paths.front();
    options.log_file = log;
    options.splice_frames = choices.splice_frames;
    options.low_is_first = edit.reverse_from_first;
    options.edl = is_edit_list(edit.paths.front());
    return options;
}

film::Findings check_film(const ListedFilm& film, const film::CheckOptions& options,
                          const embedded::Warnings& warnings) {
    embedded::Warnings all = warnings;
    for (embedded::Warning& warning : embedded::take_warnings_of_copy())
        all.push_back(std::move(warning));
    return film::check_edit(film.edit(), options, film.log(), all);
}

film::Findings check_table(const std::string& table, const LibraryOptions& options) {
    return check_table(recdb(wide_path(table), INT_MAX, false), table, options);
}

film::Findings check_table(const recdb& table, const std::string& name, const LibraryOptions& options) {
    const CutlistTable head(table);
    film::CheckOptions checked;
    checked.edit_file = name;
    if (head.is_sound()) checked.uses.kind = sound_kind;
    if (head.is_sound()) checked.uses.number = head.channel_number();
    take_list_options(options, head.parameter("cutlist_type") == "neg-cut", checked);
    return film::check_table(table, checked);
}

std::string line_of(const film::Finding& finding) {
    const std::string place = place_text(finding.place);
    return one_line(std::string(film::name_of(finding.severity)) + ": " + film::info_of(finding.code).name + ": " +
                    place + (place.empty() ? "" : ": ") + finding.what + "; " + finding.advice());
}

std::string tally_of(const film::Findings& findings) {
    const std::size_t wrong = count_of(findings, film::Severity::wrong);
    const std::size_t doubts = count_of(findings, film::Severity::doubt);
    const std::size_t notes = count_of(findings, film::Severity::note);
    return std::to_string(wrong) + " wrong, " + std::to_string(doubts) + (doubts == 1 ? " doubt, " : " doubts, ") +
           std::to_string(notes) + (notes == 1 ? " note" : " notes");
}

void tell_kinds(const film::Findings& findings, bool only_wrong, std::ostream& out) {
    std::map<std::pair<film::Severity, film::Code>, int> counts;
    for (const film::Finding& finding : findings)
        ++counts[{finding.severity, finding.code}];
    for (const film::Finding& finding : findings) {
        if (only_wrong && finding.severity != film::Severity::wrong) continue;
        const auto known = counts.find({finding.severity, finding.code});
        if (known == counts.end()) continue;
        out << line_of(finding);
        if (known->second > 1) out << " (" << known->second - 1 << " more)";
        out << '\n';
        counts.erase(known);
    }
}

bool fails(const film::Findings& findings, bool strict) {
    return count_of(findings, film::Severity::wrong) > 0 || (strict && count_of(findings, film::Severity::doubt) > 0);
}

} // namespace tool
