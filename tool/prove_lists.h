#pragma once
// The proof of a printed report for the commands that write one.

#include "film/film_strip.h"
#include "host/recdb.h"
#include "tool/film_check.h"
#include "tool/job_parts.h"

#include <iosfwd>
#include <memory>
#include <string>

namespace tool {

/// The channel of an edit that a table lists. Throws `JobError` where the edit has no such channel.
ChannelName channel_of_table(const EditPtr& edit, const std::string& table);
/// The film that a table's channel needs, by the edit that the table was made of. Throws `JobError` as that.
film::Strips film_of_edit(const ListedFilm& film, const std::string& table, const LibraryOptions& options);
/// The same by the table alone.
film::Strips film_of_table(const std::string& table);
/// All of a table, for what looks at it more than once.
std::shared_ptr<const recdb> table_with_records(const std::string& table);

/// Reads the report back, holds it against the film, and tells `out` what came of it. The exit status.
int prove_lists(const std::string& report, const std::string& table, const film::Strips& strips,
                const LibraryOptions& options, std::ostream& out);

} // namespace tool
