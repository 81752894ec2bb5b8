#include "golden_changes.h"

#include "golden_list.h"
#include "table_file.h"

#include "embedded/services.h"
#include "formats/otio/otio_reader.h"
#include "quillbrook/changelist.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <ostream>
#include <sstream>

namespace golden {
namespace {

constexpr int reels = 2;

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

std::string reel_name(const char* cut, int reel) { return std::string("weir-") + cut + "-r" + std::to_string(reel); }

LightweightString<wchar_t> wide(const std::string& path) { return fromUTF8(LightweightString<char>(path)); }

LightweightString<wchar_t> table_of(const char* cut, int reel) {
    return wide(recut_folder() + "/expected/" + reel_name(cut, reel) + ".cdb");
}

/// The text behind "edit_cookie=" in a table.
std::string cookie_of(const char* cut) {
    const std::string key = "edit_cookie=";
    for (const std::string& line : lines_of_file(recut_folder() + "/expected/" + reel_name(cut, 1) + ".cdb"))
        if (line.rfind(key, 0) == 0) return line.substr(key.size());
    return {};
}

embedded::settings_block block_of(const Changes& changes) {
    embedded::settings_block block;
    block.set("CHAN_TYPE", "1");
    block.set("CHAN_NUM", "0");
    block.set("old_cookie", cookie_of("old"));
    block.set("new_cookie", cookie_of("new"));
    for (const auto& [key, value] : changes.options)
        block.set(key.c_str(), value);
    return block;
}

void write_proofs(const std::string& file) {
    std::ofstream out(file);
    for (const change_list list : {detailed_changes, bench_changes}) {
        const change_proof proof = prove_change_steps(list);
        out << (list == detailed_changes ? "changes" : "bench") << '\t' << (proof.proved ? "proved" : "parts") << '\t'
            << proof.steps << '\t' << proof.step << '\t' << proof.reel << '\t' << proof.position << '\n';
    }
}

bool make_here(const Changes& changes, const std::string& file) {
    pin_surroundings(file + ".work", false);
    embedded::set_lists_directory(embedded::work_directory());
    // The names in the banner come from edits that are open.
    const formats::ReadResult old_edit = formats::read_otio(recut_folder() + "/" + reel_name("old", 1) + ".otio", {});
    const formats::ReadResult new_edit = formats::read_otio(recut_folder() + "/" + reel_name("new", 1) + ".otio", {});
    changelist_reels tables;
    for (int reel = 1; reel <= reels; ++reel)
        tables.emplace_back(table_of("old", reel), table_of("new", reel));
    embedded::settings_block options = block_of(changes);
    SilentLogger logger;
    if (const char* error = mr_make_changelist(tables, wide(file), &options, logger)) {
        std::fprintf(stderr, "%s\n", error);
        return false;
    }
    write_proofs(file + ".proof");
    return true;
}

bool is_rule(const std::string& line) { return line.rfind("____", 0) == 0; }

std::string words_of(const std::string& lines) {
    std::istringstream in(lines);
    std::string words;
    for (std::string word; in >> word;)
        words += (words.empty() ? "" : " ") + word;
    return words;
}

} // namespace

void PrintTo(const Changes& changes, std::ostream* out) { *out << changes.name; }

std::string test_name_of(const Changes& changes) {
    std::string name = changes.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

std::vector<Changes> all_changes() {
    const auto form = [](const char* units, const char* keys, const char* scene_take, const char* bench) {
        return std::vector<std::pair<std::string, std::string>>{
            {"chg_summary_list", "1"},   {"chg_pull_list", "1"},
            {"chg_verbose_list", "1"},   {"chg_dissolve_list", "1"},
            {"chg_bench_list", bench},   {"chg_lengthunits", units},
            {"chg_showedgecodes", keys}, {"chg_useshotscenetake", scene_take}};
    };
    return {{"changes-frames", form("0", "1", "0", "1")},
            {"changes-feet", form("1", "1", "1", "1")},
            {"changes-timecode", form("2", "0", "0", "0")}};
}

std::vector<Changes> all_costs() {
    const auto form = [](const char* cost) {
        return std::vector<std::pair<std::string, std::string>>{{"chg_bench_list", "1"}, {"chg_bench_cost", cost}};
    };
    return {{"changes-cost-moves", form("1")}, {"changes-cost-splices", form("2")}, {"changes-cost-frames", form("3")}};
}

std::string recut_folder() { return examples_folder() + "/recut"; }

std::string expected_file(const Changes& changes) { return recut_folder() + "/expected/" + changes.name + ".txt"; }

bool make_changes(const Changes& changes, const std::string& file) {
    return in_own_process([&] { return make_here(changes, file); });
}

std::vector<std::string> rows_of_list(const std::string& file, const std::string& title, std::size_t lines) {
    std::vector<std::string> report = lines_of_file(file), rows;
    for (std::string& line : report)
        if (!line.empty() && line.back() == '\r') line.pop_back();
    auto at = std::find(report.begin(), report.end(), title + ":");
    at = std::find_if(at, report.end(), is_rule);
    if (at == report.end()) return rows;
    std::size_t taken = 0;
    for (++at; at != report.end() && !is_rule(*at); ++at) {
        if (words_of(*at).empty()) continue;
        if (taken++ % lines == 0) rows.emplace_back();
        rows.back() = words_of(rows.back() + " " + *at);
    }
    return rows;
}

} // namespace golden
