#pragma once
// Reads the reels of a programme, edits and cutlist tables alike, for the commands that take several.

#include "film/edit_film.h"
#include "film/order_facts.h"
#include "tool/film_check.h"
#include "tool/job_parts.h"

#include <memory>
#include <string>

namespace tool {

/// How reels are read.
struct ReelReading {
    EditInput edit; ///< without paths
    ChannelName channel;
    std::string log; ///< empty without one
    LibraryOptions options;
    CheckChoices checks;
    bool quiet = false;         ///< only what is wrong of an edit is told
    bool tells_meetings = true; ///< also of film that is used twice or too close
};

struct ReelFilm {
    film::OrderInput input;
    film::EditFilm film;
    const film::LogRows* log = nullptr; ///< that its numbers came from, the reader's; null without one
    bool sound = false;                 ///< a table of a sound channel
};

/// Opens the log once for all reels.
class ReelReader {
public:
    explicit ReelReader(const ReelReading& reading)
        : reading_(reading), log_(reading.log.empty() ? nullptr : open_log_rows(reading.log)) {}

    /// Tells what is found of an edit on standard error. Throws `JobError`.
    ReelFilm read(const std::string& path) const;

private:
    ReelFilm read_table(const std::string& path) const;
    ReelFilm read_edit(const std::string& path) const;

    const ReelReading reading_;
    const std::shared_ptr<const film::LogRows> log_;
};

} // namespace tool
