#include "tool/change_faults.h"

#include "embedded/services.h"
#include "tool/cutlist_table.h"
#include "tool/output_files.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <optional>

namespace tool {
namespace {

/// Longest error that can name a table: what goes beyond is cut.
constexpr std::size_t longest_error = 127;

using Cause = std::optional<std::string>;

/// What to tell behind an error; nothing where the error can't mean this table.
Cause if_true(bool meant) { return meant ? Cause("") : std::nullopt; }

Cause unreadable(const std::string& path) {
    const std::string fault = fault_of_input(path);
    if (!fault.empty()) return ": " + fault;
    const formats::FileKind kind = kind_of(path);
    if (!formats::is_record_table(kind)) return ": " + formats::told_kind(kind);
    const std::string damage = embedded::fault_of_table(path);
    if (!damage.empty()) return ": " + damage;
    const CutlistTable table(path);
    if (table.parameter("CUTDB").empty()) return ": is a table, but no cutlist";
    return table.is_empty() ? Cause(": holds no event") : std::nullopt;
}

Cause other_version(const std::string& path) {
    const std::string version = CutlistTable(path).parameter("CUTDB");
    if (version == CutlistTable::own_version) return std::nullopt;
    return ": is a cutlist of another version, \"" + version + '"';
}

Cause no_film(const std::string& path) { return if_true(CutlistTable(path).film() == label_none); }

Cause mixed_film(const std::string& path) { return if_true(CutlistTable(path).parameter("mixed_kc_standard") == "1"); }

Cause film_without_feet(const std::string& path) {
    return if_true(label_t_to_foot_label_t(CutlistTable(path).film()) == label_none);
}

/// An error that names a table.
struct NamedError {
    const char* before;
    const char* behind;
    Cause (*cause)(const std::string& path);
};

constexpr NamedError named_errors[] = {
    {"Unable to read CUTDB database ", "", unreadable},
    {"CUTDB <", "> has an invalid film label standard", no_film},
    {"CUTDB <", "> has mixed film gauges - unsuitable for changelists", mixed_film},
    {"CUTDB <", "> - cannot currently generate changelists with this film gauge", film_without_feet},
    {"Unable to read CUTDB database ", "", other_version},
};

/// The error in full, where it names a table; otherwise empty. Paths that are cut may be alike, so the table is the
/// one that the error is true of.
std::string whole_error(const std::string& error, const std::vector<std::string>& reels) {
    for (const NamedError& named : named_errors) {
        for (const std::string& reel : reels) {
            const std::string text = named.before + reel + named.behind;
            if (error != one_line(text.substr(0, longest_error))) continue;
            if (const Cause cause = named.cause(reel)) return one_line(text + *cause);
        }
    }
    return "";
}

std::string kind_of_track(const CutlistTable& table) { return table.is_sound() ? "sound" : "picture"; }

std::string kind_of_film(const CutlistTable& table) { return table.parameter("film label_std"); }

/// The first table and the first that is of another kind.
std::string difference(const std::vector<std::string>& reels, std::string (*kind)(const CutlistTable&)) {
    const std::string first = kind(CutlistTable(reels.front()));
    for (const std::string& reel : reels) {
        const std::string other = kind(CutlistTable(reel));
        if (other != first) return reels.front() + " (" + first + "), " + reel + " (" + other + ')';
    }
    return "";
}

std::string tracks_that_differ(const std::vector<std::string>& reels) { return difference(reels, kind_of_track); }

std::string films_that_differ(const std::vector<std::string>& reels) { return difference(reels, kind_of_film); }

std::string first_neg_cut(const std::vector<std::string>& reels) {
    for (const std::string& reel : reels)
        if (CutlistTable(reel).parameter("cutlist_type") != "cutting-copy") return reel;
    return "";
}

/// An error that names no table, and which ones it means.
struct NamelessError {
    const char* text;
    std::string (*tables)(const std::vector<std::string>& reels);
};

constexpr NamelessError nameless_errors[] = {
    {"The cutlist was made for a NEG-CUT - must be a CUTTING-COPY", first_neg_cut},
    {"Cutlists were made for different picture/sound tracks", tracks_that_differ},
    {"The cutlists have different film standards", films_that_differ},
    {"The old and new cutlists have different film standards!", films_that_differ},
};

} // namespace

std::string told_error(const std::string& error, const std::vector<std::string>& reels) {
    const std::string whole = whole_error(error, reels);
    if (!whole.empty()) return whole;
    for (const NamelessError& nameless : nameless_errors) {
        const std::string tables = error == nameless.text ? nameless.tables(reels) : "";
        if (!tables.empty()) return error + (error.back() == '!' ? " " : ": ") + one_line(tables);
    }
    return error;
}

} // namespace tool
