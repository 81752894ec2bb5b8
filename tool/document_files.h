#pragma once
// Lists as pages and as tables for scripts, beside a command's report.

#include "documents/document.h"
#include "documents/profile.h"
#include "tool/job_parts.h"
#include "tool/option_table.h"

#include <optional>
#include <string>
#include <vector>

namespace tool {

/// What the line says of them. A file that isn't wanted has no name.
struct DocumentFiles {
    std::optional<std::string> html, pdf, json, text;
    std::optional<std::string> csv, svg; ///< folders
    std::string profile_name;            ///< empty: the usual one
    std::optional<std::string> profile_file;
    std::vector<std::string> columns; ///< of all lists; empty: the profile's
    std::optional<documents::Paper> paper;
    bool feet = false; ///< whatever the profile says

    bool wanted() const { return html || pdf || json || text || csv || svg; }
};

/// --html to --feet. The JSON document has the name `json_option`, as some commands write one of another kind.
/// `drawings`: the lists have some.
void add_document_options(OptionTable& options, DocumentFiles& files, const char* json_option, bool drawings = true);

/// Throws `JobError` where the profile's file can't be read or understood.
documents::Profile profile_of(const DocumentFiles& files);

/// The files that are wanted; streams are left out. `lists` are those that the document will hold. Throws `JobError`
/// where one takes the place of one of `inputs` or of one of the `others` that the run makes. They aren't held yet.
std::vector<std::string> check_document_files(const DocumentFiles& files, const char* json_option,
                                              const std::vector<std::string>& lists,
                                              const std::vector<std::string>& inputs,
                                              const std::vector<std::string>& others);

/// Whether lists count frames: `frames` as the line says, else as the profile does.
bool counts_frames(const DocumentFiles& files, const documents::Profile& profile, bool frames);

/// Chooses columns and paper, and writes what is wanted. Which drawings there are is known only now, so that they are
/// held only now, behind the first of them; `overwrite` as of `hold_outputs`.
void write_document(const DocumentFiles& files, documents::Document document, bool overwrite = false);

} // namespace tool
