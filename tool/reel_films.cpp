#include "tool/reel_films.h"

#include "embedded/crc32.h"
#include "embedded/edit_facts.h"
#include "film/edit_walk.h"
#include "formats/bundle/folder_bundle.h"
#include "tool/cut_tables.h"
#include "tool/cutlist_table.h"
#include "tool/event_rows.h"
#include "tool/file_bytes.h"
#include "tool/open_edit.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <algorithm>
#include <climits>
#include <iostream>

namespace tool {
namespace {

film::OrderInput input_of(const std::string& path, const std::string& name, const embedded::RateInfo* rate) {
    return {path, name, embedded::crc32(bytes_of(formats::file_of_bundle(path))), rate};
}

void leave_out_meetings(film::Findings& findings) {
    std::erase_if(findings, [](const film::Finding& finding) {
        return finding.code == film::Code::used_twice || finding.code == film::Code::too_close;
    });
}

/// No list, and so no order, looks at these tracks.
void tell_unlisted(const EditPtr& edit, const std::string& path, bool quiet) {
    embedded::Warnings warnings;
    for (const int chan : film::channels_of(edit, 1)) {
        if (edit->getChanSubtype(chan) != chan_unlisted) continue;
        const auto& events = embedded::facts_of_channel(edit, chan);
        const auto shots = std::count_if(events.begin(), events.end(), [](const embedded::EventFacts& event) {
            return event.kind == embedded::EventFacts::Kind::material;
        });
        if (shots > 0)
            warnings.push_back(
                {embedded::WarningKind::doubt, path + ": a picture track of sub-type 4 isn't listed; the film of its " +
                                                   film::counted(shots, "shot", "shots") + " isn't counted"});
    }
    tell_warnings(warnings, quiet);
}

} // namespace

ReelFilm ReelReader::read(const std::string& path) const { return is_edit(path) ? read_edit(path) : read_table(path); }

ReelFilm ReelReader::read_table(const std::string& path) const {
    check_kind(path, {formats::FileKind::cutlist}, "an edit or a cutlist table (.cdb)");
    const CutlistTable head(path, 1);
    if (!head.is_readable()) throw JobError(path + ": couldn't be read");
    const TCInf video = edlstr_to_tv_standard(head.parameter("edit_vidtc_std").c_str());
    return {input_of(path, head.parameter("edit_name"), embedded::rate_info(video.rate)),
            film::film_of_table(recdb(wide_path(path), INT_MAX, false)), nullptr, head.is_sound()};
}

ReelFilm ReelReader::read_edit(const std::string& path) const {
    EditInput input = reading_.edit;
    input.paths = {path};
    embedded::Warnings warnings;
    const EditPtr edit = open_edit(input, warnings);
    const ListedFilm film(edit, log_);
    const film::CheckOptions check =
        check_options(input, reading_.channel, reading_.log, false, reading_.options, reading_.checks);
    film::Findings findings = check_film(film, check, warnings);
    if (!reading_.tells_meetings) leave_out_meetings(findings);
    tell_kinds(findings, reading_.quiet, std::cerr);
    tell_unlisted(edit, path, reading_.quiet);
    if (reading_.checks.strict && fails(findings, true)) throw JobError(path + ": is in doubt");
    return {input_of(path, narrow(edit->getName()), embedded::rate_info(edit->getFrameRate())),
            film::film_of_edit(film.edit(), check.uses, film.log()), film.log(), false};
}

} // namespace tool
