#include "tool/order_outputs.h"

#include "documents/list_kinds.h"
#include "tool/output_files.h"
#include "tool/run_setup.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <map>

namespace tool {
namespace {

using film::OrderToTell;
using formats::Written;
using Reel = OrderEditing::Reel;

/// --json is the order itself.
constexpr const char* json_option = "--lists-json";

constexpr std::pair<const char*, Reel> reels[] = {{"roll", Reel::roll}, {"lab", Reel::lab}, {"tape", Reel::tape}};

struct ScanFile {
    const char* option;
    std::optional<std::string> OrderOutputs::*path;
    Written (*write)(const OrderToTell& order, const ScanWriting& writing);
};

constexpr ScanFile scan_files[] = {{"--ale", &OrderOutputs::ale, ale_of_order},
                                   {"--edl", &OrderOutputs::edl, edl_of_order},
                                   {"--otio", &OrderOutputs::otio, otio_of_order},
                                   {"--cut-file", &OrderOutputs::cut_file, cut_file_of_order}};

/// "piece 3: why"
bool is_of_piece(const std::string& text, std::string& piece, std::string& why) {
    constexpr std::string_view head = "piece ";
    const std::size_t colon = text.find(": ");
    if (text.compare(0, head.size(), head) != 0 || colon == std::string::npos) return false;
    piece = text.substr(head.size(), colon - head.size());
    why = text.substr(colon + 2);
    return true;
}

/// What is told of several pieces alike, as one: "pieces 3, 4 and 12 more: why".
embedded::Warnings grouped(const embedded::Warnings& warnings) {
    constexpr std::size_t most_named = 8;
    embedded::Warnings made;
    std::map<std::string, std::pair<std::size_t, std::size_t>> places; ///< by what is told: where, and of how many
    for (const embedded::Warning& warning : warnings) {
        std::string piece, why;
        if (!is_of_piece(warning.text, piece, why)) {
            made.push_back(warning);
            continue;
        }
        const auto [known, fresh] = places.try_emplace(why, made.size(), 1);
        if (fresh) {
            made.push_back({warning.kind, piece});
        } else if (++known->second.second <= most_named) {
            made[known->second.first].text += ", " + piece;
        }
    }
    for (const auto& [why, place] : places) {
        std::string& text = made[place.first].text;
        text.insert(0, place.second == 1 ? "piece " : "pieces ");
        if (place.second > most_named) text += " and " + std::to_string(place.second - most_named) + " more";
        text += ": " + why;
    }
    return made;
}

void write_scan_file(const ScanFile& file, const OrderOutputs& outputs, const OrderToTell& order, bool quiet) {
    const std::string& path = *(outputs.*file.path);
    Written written;
    if (order.pieces.empty())
        written.warnings.push_back({embedded::WarningKind::note, "isn't written, as nothing is to be pulled"});
    else
        written = file.write(order, outputs.scans);
    if (!written.error.empty()) throw JobError(std::string(file.option) + ' ' + path + ": " + written.error);
    embedded::Warnings warnings = grouped(written.warnings);
    for (embedded::Warning& warning : warnings)
        warning.text.insert(0, path + ": ");
    tell_warnings(warnings, quiet);
    if (!order.pieces.empty()) deliver_bytes(path, written.text);
}

/// Only where they were asked for: nobody knows what scans will be called.
std::vector<std::string> names_of_files(const OrderOutputs& outputs, const OrderToTell& order) {
    std::vector<std::string> names;
    for (std::size_t i = 0; outputs.scans.files && i < order.pieces.size(); ++i)
        names.push_back(outputs.scans.files->name_of(order, i));
    return names;
}

void write_documents(const OrderOutputs& outputs, const OrderToTell& order, bool change) {
    const documents::Profile profile = profile_of(outputs.documents);
    documents::OrderFilm film;
    film.title = documents::title_of(order);
    film.order = order;
    film.files = names_of_files(outputs, order);
    film.change = change;
    film.frames = counts_frames(outputs.documents, profile, false);
    write_document(outputs.documents, documents::document_of(film, profile));
}

} // namespace

void add_order_outputs(OptionTable& options, OrderOutputs& outputs) {
    options.add({
        {"--edl", "FILE", "The pieces as an edit list, with key numbers in comments", outputs.edl},
        {"--ale", "FILE", "The pieces as a log", outputs.ale},
        {"--otio", "FILE", "The pieces as OpenTimelineIO, with the images that they are to be scanned to",
         outputs.otio},
        {"--cut-file", "FILE", "The pieces as a cut list in fixed columns (.cut)", outputs.cut_file},
        {"--keys", "SPELLING", "How these write key numbers: plain, dashed, roll, stock or apart",
         one_of(
             formats::key_spelling_names(),
             [&outputs](const std::string& text) { outputs.scans.keys = formats::key_spelling_named(text); }, "plain")},
        {"--edl-reel", "WHICH", "What the reels of the edit list are: roll, lab or tape",
         one_of(reels, outputs.scans.edl_reel, "roll")},
        {"--file-name", "PATTERN",
         "What scans are called, by {roll}, {lab}, {tape}, {scan}, {scene}, {take}, {clip} "
         "and {frame}, or {frame:6}; by default {roll}_{frame}.dpx",
         OneText{[&outputs](const std::string& text) {
             if (!text.empty()) outputs.scans.files = FileNames(text);
         }}},
        {"--frames-from", "WHAT", "What the numbers of these files count: timecode, take or key",
         one_of(frame_numberings, outputs.scans.numbers, "timecode")},
    });
    add_document_options(options, outputs.documents, json_option, false);
}

std::vector<std::string> check_order_outputs(const OrderOutputs& outputs, bool change, bool rolls,
                                             const std::vector<std::string>& inputs,
                                             const std::vector<std::string>& others) {
    std::vector<std::string> taken = others, made;
    for (const ScanFile& file : scan_files) {
        const std::optional<std::string>& path = outputs.*file.path;
        if (!path) continue;
        check_output(file.option, *path, inputs, taken);
        taken.push_back(*path);
        if (!is_stream(*path)) made.push_back(*path);
    }
    if (!outputs.documents.wanted()) return made;
    const std::vector<std::string> lists =
        documents::order_list_ids(profile_of(outputs.documents).lists, change, rolls);
    if (lists.empty()) throw JobError("the profile names no list of an order");
    return joined(made, check_document_files(outputs.documents, json_option, lists, inputs, taken));
}

void write_order_outputs(const OrderOutputs& outputs, const OrderToTell& order, bool change, bool quiet) {
    for (const ScanFile& file : scan_files)
        if (outputs.*file.path) write_scan_file(file, outputs, order, quiet);
    if (outputs.documents.wanted()) write_documents(outputs, order, change);
}

} // namespace tool
