#pragma once
// How film is said in cells and notes, the same in all lists.

#include "documents/cut_film.h"
#include "documents/document.h"
#include "documents/film_count.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace documents {

/// How a list counts: feet of one film, or frames.
struct Units {
    label_t film = label_none;
    bool frames = false;

    bool feet() const;
    std::string position(std::int64_t frame) const;
    /// "3+00" or "48".
    std::string length(std::int64_t frames) const;
    /// "3+00, 48 frames" or "48 frames".
    std::string both(std::int64_t frames) const;
    /// "Feet + frames, 16 frames a foot.", as the foot of a page says it.
    std::string counting() const;
};

Units units_of(const CutFilm& cut);

/// "66 2/3%" of 2/3.
std::string percent_text(const film::Fraction& speed);
/// "2/3", for scripts.
std::string fraction_text(const film::Fraction& fraction);
/// "1 piece", "1,204 pieces".
std::string counted(std::int64_t number, const char* one, const char* many);
/// "Its film" of "its film".
std::string with_capital(std::string text);

// Columns and their cells.

Column position_column(const char* key, const std::string& title);
Cell position_cell(const Units& units, std::int64_t frame);
Column length_column(const char* key, const std::string& title);
/// Empty where nothing is known.
Cell length_cell(const Units& units, std::optional<std::int64_t> frames);
/// The film of something that is `shown` frames long; pages have it only where it is another length.
Cell film_cell(const Units& units, std::optional<std::int64_t> film, std::int64_t shown);
/// Takes a column from pages where no row fills it.
void show_where_filled(List& list, const char* key);
Column number_column(const char* key, const std::string& title);
Cell number_cell(std::int64_t number);
/// Without a number where it is 0 or below.
Cell event_cell(std::int64_t number);
Column word_column(const char* key, const std::string& title);

/// A number in its groups: what tells the strip lighter than what tells the frame.
Line number_line(const KeyParts& parts);
/// First and last key number, for each run where they are several; where there is none tape and timecode in its place.
Column key_column();
Cell key_cell(const std::vector<FilmRun>& runs, bool black, int handles = 0);
/// The same of labels that steps name; a missing one is said to be so.
Column label_column();
Cell label_cell(LabelPoint first, LabelPoint last, bool first_missing, bool last_missing);
Column ink_column();
Cell ink_cell(const std::vector<FilmRun>& runs, int handles = 0);
/// Tape with timecode of the first and last frame.
Column tape_column();
Cell tape_cell(const std::vector<FilmRun>& runs);
/// Shot, scene and take. Notes stand here.
Column shot_column();
Cell shot_cell(const film::Strip& strip);
Column roll_column();
Cell roll_cell(const film::Strip& strip);
Column speed_column();
Cell speed_cell(const film::Strip& strip);

/// Frames of film of all runs; nothing where one isn't known.
std::optional<std::int64_t> film_frames(const std::vector<FilmRun>& runs);

/// Film at another speed: how much of it makes how much of the reel. Nothing at play-speed.
std::optional<Note> speed_note(const Units& units, const std::vector<FilmRun>& runs);
/// Film whose numbers don't run on inside a piece.
std::optional<Note> parted_note(const std::vector<FilmRun>& runs);
/// What was found, with its kind as the head. `advice` says what to do.
Note finding_note(const film::Finding& finding, bool advice);
/// "No key number" for `Code::no_key`.
const char* head_of(film::Code code);

} // namespace documents
