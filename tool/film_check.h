#pragma once
// Looks for what is wrong or doubtful of an edit, for the commands that list and check edits.

#include "embedded/warning.h"
#include "film/find.h"
#include "film/log_rows.h"
#include "host/edit.h"
#include "host/recdb.h"
#include "tool/job_parts.h"
#include "tool/listed_edit.h"
#include "tool/option_table.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <utility>

namespace tool {

/// What the line says of the checks themselves.
struct CheckChoices {
    bool strict = false; ///< doubts fail a run too
    int splice_frames = 1;
};

/// The switches --strict and --splice-frames.
void add_check_options(OptionTable& options, CheckChoices& choices);

/// A logging table's rows, read for `film`.
std::unique_ptr<film::LogRows> open_log_rows(const std::string& table);

/// What lists are made of, opened once for all that looks at it: the edit without its rendered material, and the log.
class ListedFilm {
public:
    /// `log` is empty without one. Throws `JobError`.
    ListedFilm(const EditPtr& edit, const std::string& log)
        : ListedFilm(edit, std::shared_ptr<const film::LogRows>(log.empty() ? nullptr : open_log_rows(log))) {}
    /// The same with a log that is open already, for several edits; null without one.
    ListedFilm(const EditPtr& edit, std::shared_ptr<const film::LogRows> log) : listed_(edit), log_(std::move(log)) {}

    const EditPtr& edit() const { return listed_.edit(); }
    /// Null without one.
    const film::LogRows* log() const { return log_.get(); }

private:
    const ListedEdit listed_;
    const std::shared_ptr<const film::LogRows> log_;
};

/// How a channel is checked, by the options that its lists have.
film::CheckOptions check_options(const EditInput& edit, const ChannelName& channel, const std::string& log,
                                 bool neg_cut, const LibraryOptions& library, const CheckChoices& choices);

/// What the reader told stands among the findings.
film::Findings check_film(const ListedFilm& film, const film::CheckOptions& options,
                          const embedded::Warnings& warnings);
/// What the table alone tells; `options` are those of its lists.
film::Findings check_table(const std::string& table, const LibraryOptions& options);
/// The same of a table that is open; `name` is its file.
film::Findings check_table(const recdb& table, const std::string& name, const LibraryOptions& options);

/// "wrong: log-overrun: reel.edl: line 12: event 4 of V1 at 240 (00:00:10:00), "name": what; what to do".
std::string line_of(const film::Finding& finding);
/// "2 wrong, 3 doubts, 1 note".
std::string tally_of(const film::Findings& findings);
/// A line for each kind, with its count and its first place. `only_wrong` leaves out doubts and notes.
void tell_kinds(const film::Findings& findings, bool only_wrong, std::ostream& out);
/// There is something wrong, or with `strict` doubtful.
bool fails(const film::Findings& findings, bool strict);

} // namespace tool
