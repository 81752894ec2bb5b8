#include "tool/prove_lists.h"

#include "film/edit_walk.h"
#include "film/film_uses.h"
#include "film/list_proof.h"
#include "host/settings.h"
#include "tool/cutlist_table.h"
#include "tool/file_bytes.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <algorithm>
#include <ostream>

namespace tool {
namespace {

int number_or(const std::string& text, int otherwise) { return text.empty() ? otherwise : std::atoi(text.c_str()); }

film::ProofOptions proof_options(const std::string& table, const LibraryOptions& options) {
    film::ProofOptions proof;
    film::take_header(recdb(wide_path(table), INT_MAX, false), proof);
    if (config_int("audio_cutlist_24P", 0, INT_MIN, INT_MAX) != 0) {
        const CutlistTable head(table, 1);
        proof.timecode = edlstr_to_label_type(head.parameter("edit_24ptc_std").c_str());
        proof.timecode_start = head.parameter("edit_24ptc_start");
    }
    proof.handles = number_or(options.value("pull_handle"), proof.handles);
    proof.butt = number_or(options.value("butt"), proof.butt);
    return proof;
}

/// Key numbers of a log with as many digits as the option asks for: 0 to 2 for 4 to 6.
void set_digits(film::Strips& strips, const std::string& option) {
    const int more = number_or(option, -1);
    if (more < 0 || more > 2) return;
    for (film::Strip& strip : strips) {
        if (!strip.key) continue;
        LabelPoint point(0, strip.key.kind);
        point.modify_count_length(4 + more);
        strip.key.kind = point.type();
    }
}

// What no film is lost by is told by its rule alone.
void tell_exceptions(const film::ListProof& proof, std::ostream& out) {
    for (const film::ListRule& rule : film::list_rules()) {
        const auto is_of_rule = [&rule](const film::ProofFinding& finding) { return finding.rule == &rule; };
        const auto first = std::find_if(proof.exceptions.begin(), proof.exceptions.end(), is_of_rule);
        if (first == proof.exceptions.end()) continue;
        const auto count = std::count_if(first, proof.exceptions.end(), is_of_rule);
        out << "by a rule: " << line_of(*first);
        if (count > 1) out << " and " << count - 1 << " more";
        out << '\n';
    }
}

} // namespace

// Tables keep the absolute number of a channel, as in "A03".
ChannelName channel_of_table(const EditPtr& edit, const std::string& path) {
    const CutlistTable table(path, 1);
    if (!table.is_sound()) return {};
    const std::string text = table.parameter("channel");
    const std::vector<int> channels = film::channels_of(edit, sound_kind);
    const auto found =
        std::find(channels.begin(), channels.end(), number_or(text.substr(std::min<std::size_t>(1, text.size())), -1));
    if (found == channels.end()) throw JobError(path + ": lists channel " + text + ", which the edit hasn't");
    return {sound_kind, static_cast<int>(found - channels.begin()) + 1};
}

film::Strips film_of_edit(const ListedFilm& film, const std::string& table, const LibraryOptions& options) {
    const ChannelName channel = channel_of_table(film.edit(), table);
    film::UseOptions use;
    use.kind = channel.kind;
    use.number = channel.number;
    use.film_reel = number_or(options.value("film_reel"), use.film_reel);
    use.neg_cut = CutlistTable(table, 1).parameter("cutlist_type") == "neg-cut";
    film::Strips strips = film::uses_of_edit(film.edit(), use, film.log());
    if (film.log()) set_digits(strips, options.value("long_keycode"));
    return strips;
}

film::Strips film_of_table(const std::string& table) { return film::uses_of_table(*table_with_records(table)); }

std::shared_ptr<const recdb> table_with_records(const std::string& table) {
    return std::make_shared<const recdb>(wide_path(table), INT_MAX, false);
}

int prove_lists(const std::string& report, const std::string& table, const film::Strips& strips,
                const LibraryOptions& options, std::ostream& out) {
    const film::ListProof proof = film::prove_report(bytes_of(report), strips, proof_options(table, options));
    out << film::summary_of(proof) << '\n';
    for (const film::ProofFinding& failure : proof.failures)
        out << one_line(film::line_of(failure)) << '\n';
    tell_exceptions(proof, out);
    return proof.proved() ? exit_done : exit_not_proved;
}

} // namespace tool
