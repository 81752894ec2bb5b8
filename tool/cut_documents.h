#pragma once
// The lists of one cut as pages and as tables for scripts: what `cutlist` and `print` share.

#include "film/film_strip.h"
#include "film/finding.h"
#include "host/recdb.h"
#include "tool/document_files.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tool {

/// --html to --feet, and that these don't contradict --frames.
void add_cut_document_options(OptionTable& options, DocumentFiles& files, const std::function<bool()>& asks_for_frames);

/// The files that are wanted, to be held with the report; see `check_document_files`.
std::vector<std::string> check_cut_documents(const DocumentFiles& files, const std::vector<std::string>& inputs,
                                             const std::vector<std::string>& others);

/// What the lists of a cut are made of.
struct ListedCut {
    std::shared_ptr<const recdb> table; ///< with all its records
    film::Strips strips;
    film::Findings findings;
    bool by_table = false; ///< strips and findings are those of the table alone
    bool frames = false;   ///< the line asks for frames
};

/// Writes what is wanted of them; nothing where nothing is.
void write_cut_documents(const DocumentFiles& files, ListedCut cut, const LibraryOptions& options, bool overwrite);

} // namespace tool
