#include "documents/row_notes.h"

#include "documents/film_count.h"

#include <algorithm>
#include <utility>

namespace documents {
namespace {

using film::Piece;

bool belongs(const film::Finding& finding, const Piece& piece) {
    if (piece.first().layer != 0) return false;
    return finding.place.frame < 0 || (piece.start <= finding.place.frame && finding.place.frame < piece.end);
}

/// Rows tell of re-use by themselves, with both places; and no list here cuts a name.
bool stands_in_rows(const film::Finding& finding) {
    using film::Code;
    for (const Code other : {Code::used_twice, Code::too_close, Code::name_cut, Code::bad_text})
        if (finding.code == other) return false;
    return finding.severity != film::Severity::note || finding.code == Code::inexact || finding.code == Code::reverse;
}

} // namespace

RowNotes::RowNotes(const CutFilm& cut) : units_(units_of(cut)) {
    for (const film::Finding& finding : cut.findings)
        if (finding.place.event > 0 && stands_in_rows(finding)) findings_.emplace(finding.place.event, &finding);
    for (const Meeting& meeting : cut.meetings) {
        met_.emplace(meeting.first, &meeting);
        met_.emplace(meeting.second, &meeting);
    }
}

Note RowNotes::reuse_note(const Meeting& meeting, const Piece& piece) const {
    const Piece& other = meeting.first == &piece ? *meeting.second : *meeting.first;
    const int event = other.first().event;
    const std::string where =
        (event > 0 ? "event " + std::to_string(event) : "another piece") + " (" + units_.position(other.start) + ")";
    Note note;
    note.mark = Mark::reused;
    note.code = meeting.shared > 0 ? "used-twice" : "too-close";
    note.head = meeting.shared > 0 ? "Used twice" : "Too close";
    if (meeting.shared > 0)
        note.text = with_capital(film::frames_text(meeting.shared)) + " from " + key_parts(meeting.key, 0).whole() +
                    (meeting.shared == 1 ? " on is" : " on are") + " also in " + where + ".";
    else
        note.text = "On the negative " + film::frames_text(meeting.apart) + (meeting.apart == 1 ? " lies" : " lie") +
                    " between it and " + where + ".";
    return note;
}

std::vector<Note> RowNotes::of(const Piece& piece, const std::vector<FilmRun>& runs) const {
    std::vector<Note> notes;
    const auto [begin, end] = findings_.equal_range(piece.first().event);
    for (auto finding = begin; finding != end; ++finding)
        if (belongs(*finding->second, piece)) notes.push_back(finding_note(*finding->second, false));
    if (std::optional<Note> note = parted_note(runs)) notes.push_back(std::move(*note));
    const auto [first, last] = met_.equal_range(&piece);
    for (auto meeting = first; meeting != last; ++meeting)
        notes.push_back(reuse_note(*meeting->second, piece));
    if (std::optional<Note> note = speed_note(units_, runs)) notes.push_back(std::move(*note));
    std::stable_sort(notes.begin(), notes.end(), [](const Note& a, const Note& b) { return a.mark < b.mark; });
    return notes;
}

} // namespace documents
