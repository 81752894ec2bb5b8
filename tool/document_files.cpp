#include "tool/document_files.h"

#include "documents/csv.h"
#include "documents/html.h"
#include "documents/json.h"
#include "documents/plain_text.h"
#include "documents/svg.h"
#include "host/settings.h"
#include "tool/file_bytes.h"
#include "tool/output_files.h"
#include "tool/pdf_library.h"
#include "tool/tool_error.h"

#include <set>

namespace tool {
namespace {

/// What every folder of drawings has: it is held for all of them.
constexpr const char* first_drawing = "reel.svg";

struct OutputFile {
    const char* option;
    std::string path;
};

std::vector<OutputFile> files_of(const DocumentFiles& files, const char* json_option,
                                 const std::vector<std::string>& lists) {
    std::vector<OutputFile> all;
    const std::pair<const char*, const std::optional<std::string>*> single[] = {
        {"--html", &files.html}, {"--pdf", &files.pdf}, {json_option, &files.json}, {"--text", &files.text}};
    for (const auto& [option, path] : single)
        if (*path) all.push_back({option, **path});
    if (files.csv)
        for (const std::string& list : lists)
            all.push_back({"--csv", *files.csv + '/' + list + ".csv"});
    if (files.svg) all.push_back({"--svg", *files.svg + '/' + first_drawing});
    return all;
}

constexpr std::pair<const char*, documents::Paper> papers[] = {{"a4", documents::Paper::a4},
                                                               {"letter", documents::Paper::letter}};

std::string made_now() {
    date_def now;
    now.convert(present_time());
    return now.get_named_date();
}

/// All drawings of a document, each once.
std::vector<documents::DrawingPtr> drawings_of(const documents::Document& document) {
    std::vector<documents::DrawingPtr> drawings;
    std::set<std::string> ids;
    const auto add = [&](const std::vector<documents::DrawingPtr>& more) {
        for (const documents::DrawingPtr& drawing : more)
            if (ids.insert(drawing->id).second) drawings.push_back(drawing);
    };
    for (const documents::List& list : document.lists) {
        add(list.drawings);
        for (const documents::Part& part : list.parts)
            add(part.drawings);
    }
    return drawings;
}

void write_drawings(const std::string& folder, const documents::Document& document, bool overwrite) {
    std::vector<std::string> paths;
    const std::vector<documents::DrawingPtr> drawings = drawings_of(document);
    for (const documents::DrawingPtr& drawing : drawings)
        paths.push_back(folder + '/' + drawing->id + ".svg");
    hold_outputs(paths, overwrite);
    for (std::size_t i = 0; i < drawings.size(); ++i)
        deliver_bytes(paths[i], documents::svg_of(*drawings[i]));
}

} // namespace

void add_document_options(OptionTable& options, DocumentFiles& files, const char* json_option, bool drawings) {
    options.add({
        {"--html", "FILE", "Lists as one page for a browser and for paper", files.html},
        {"--pdf", "FILE", "The same as pages to be printed", files.pdf},
    });
    if (drawings)
        options.add({{"--svg", "DIR", "The drawings of these lists, an SVG file each, into a folder", files.svg}});
    options.add({
        {"--csv", "DIR", "A CSV file of each list, into a folder", files.csv},
        {json_option, "FILE", "Lists as one JSON document", files.json},
        {"--text", "FILE", "Lists as text in aligned columns, names whole", files.text},
        {"--for", "WHOM", "Which of these lists and columns: assistant, cutter, lab, optical, scan, sound or all",
         one_of(documents::profile_names(), [&files](const std::string& text) { files.profile_name = text; })},
        {"--profile", "FILE", "The same by a file of one's own", files.profile_file},
        {"--columns", "NAMES", "The columns of these lists, in order, by the names that CSV and JSON have",
         OneText{[&files](const std::string& text) { files.columns = documents::words_of(text); }}},
        {"--paper", "SIZE", "What pages are printed on: a4 or letter", one_of(papers, files.paper)},
        {"--feet", "", "These lists in feet and frames, whatever the profile says", files.feet},
    });
    options.add_check([&files] {
        if (!files.profile_name.empty() && files.profile_file) throw UsageError("--for and --profile choose the same");
    });
}

documents::Profile profile_of(const DocumentFiles& files) {
    if (!files.profile_file) return *documents::profile_named(files.profile_name);
    std::string why;
    check_readable(*files.profile_file);
    const auto profile = documents::read_profile(bytes_of(*files.profile_file), &why);
    if (!profile) throw JobError(*files.profile_file + ": " + why);
    return *profile;
}

std::vector<std::string> check_document_files(const DocumentFiles& files, const char* json_option,
                                              const std::vector<std::string>& lists,
                                              const std::vector<std::string>& inputs,
                                              const std::vector<std::string>& others) {
    for (const std::optional<std::string>* folder : {&files.csv, &files.svg})
        if (*folder) check_folder(**folder);
    std::vector<std::string> taken = others, read = inputs, made;
    if (files.profile_file) read.push_back(*files.profile_file);
    for (const OutputFile& file : files_of(files, json_option, lists)) {
        check_output(file.option, file.path, read, taken);
        taken.push_back(file.path);
        if (!is_stream(file.path)) made.push_back(file.path);
    }
    return made;
}

bool counts_frames(const DocumentFiles& files, const documents::Profile& profile, bool frames) {
    if (frames) return true;
    return !files.feet && profile.frames.value_or(false);
}

void write_document(const DocumentFiles& files, documents::Document document, bool overwrite) {
    document.title.made = made_now();
    if (files.paper) document.paper = *files.paper;
    if (!files.columns.empty())
        for (documents::List& list : document.lists)
            documents::choose_columns(list, files.columns);
    if (files.html) deliver_bytes(*files.html, documents::html_of(document));
    if (files.pdf) deliver_bytes(*files.pdf, loaded_pdf_of(document, {present_time()}));
    if (files.svg) write_drawings(*files.svg, document, overwrite);
    if (files.json) deliver_bytes(*files.json, documents::json_of(document));
    if (files.text) deliver_bytes(*files.text, documents::plain_text_of(document));
    if (!files.csv) return;
    for (const documents::NamedFile& file : documents::csv_files(document))
        deliver_bytes(*files.csv + '/' + file.name, file.bytes);
}

} // namespace tool
