// "quillbrook export": an edit as a file that other programs take.

#include "formats/otio/otio_writer.h"
#include "tool/command.h"
#include "tool/key_values.h"
#include "tool/listed_edit.h"
#include "tool/open_edit.h"
#include "tool/output_files.h"
#include "tool/run_setup.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include "embedded/edit_builder.h"
#include "host/ascii_text.h"

namespace tool {
namespace {

enum class Format { otio };

struct FormatName {
    const char* name; ///< as --as takes it, and without its point the extension of its files
    Format format;
};

constexpr FormatName format_names[] = {{"otio", Format::otio}};

struct ExportJob {
    EditInput edit;
    Output output;
    std::optional<Format> as;
    Settings settings;
};

std::optional<Format> format_named(std::string_view name) {
    for (const FormatName& known : format_names)
        if (ascii::same(name, known.name)) return known.format;
    return std::nullopt;
}

std::string names_of_formats() {
    std::string names;
    for (const FormatName& known : format_names)
        names += (names.empty() ? "" : ", ") + std::string(known.name);
    return names;
}

Format format_of(const ExportJob& job) {
    if (job.as) return *job.as;
    const std::string& file = job.output.report;
    const std::size_t point = file.rfind('.');
    const auto by_name = point == std::string::npos ? std::nullopt : format_named(file.substr(point + 1));
    if (!by_name) throw JobError(file + ": its name tells no format; name one with --as (" + names_of_formats() + ")");
    return *by_name;
}

void check_files(const ExportJob& job) {
    for (const std::string& input : job.edit.paths) {
        check_readable(input);
        check_outputs(input, job.output, {});
    }
}

formats::Written written_as(Format format, const EditPtr& edit) {
    switch (format) {
    case Format::otio:
        return formats::write_otio(edit);
    }
    return {};
}

void note_rendered(const EditPtr& edit, const EditPtr& listed, embedded::Warnings& warnings) {
    if (edit.get() == listed.get()) return;
    warnings.push_back({embedded::WarningKind::note, "rendered clips are written as what they were rendered from; "
                                                     "--config allow_auto_unrender=0 writes the clips themselves"});
}

int run(const ExportJob& job) {
    const Format format = format_of(job);
    check_files(job);
    apply_settings(job.settings);
    embedded::Warnings warnings;
    const EditPtr edit = open_edit(job.edit, warnings);
    const ListedEdit listed(edit);
    note_rendered(edit, listed.edit(), warnings);
    for (embedded::Warning& warning : embedded::take_warnings_of_copy())
        warnings.push_back(std::move(warning));
    formats::Written written = written_as(format, listed.edit());
    if (!written.error.empty()) throw JobError(job.edit.paths.front() + ": " + written.error);
    for (embedded::Warning& warning : written.warnings)
        warnings.push_back({warning.kind, job.output.report + ": " + warning.text});
    tell_warnings(warnings, job.output.quiet);
    deliver_bytes(job.output.report, written.text);
    return exit_done;
}

Option format_option(std::optional<Format>& as) {
    return {"--as", "FORMAT", "The format, in place of what the name of FILE says: otio",
            OneText{[&as](const std::string& text) { as = format_named(text); },
                    {},
                    [](const std::string& text) {
                        return format_named(text) ? std::string() : "it is none of " + names_of_formats();
                    }}};
}

void add_options(OptionTable& options, ExportJob& job) {
    add_edit_input(options, job.edit);
    options.add({
        output_file(job.output, "The file to write"),
        format_option(job.as),
        overwrite(job.output, "Replace a file that is there"),
        quiet(job.output),
        {"--config", "KEY=VALUE", "A host-wide setting",
         EachText{[&job](const std::vector<std::string>& pairs) { job.settings = parse_settings(pairs); }}},
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook export reel1.edl --rate 24 -o reel1.otio
      with all that lists are made of: its cutlist is that of the edit)";

} // namespace

extern const Command export_command{"export", "Write an edit as a file that other programs take", examples,
                                    prepare<ExportJob, add_options, run>};

} // namespace tool
