#pragma once
// What all searches share: the film of the edit, and how a finding tells where it is.

#include "film/edit_film.h"
#include "film/film_pieces.h"
#include "film/find.h"
#include "film/list_arithmetic.h"
#include "film/log_rows.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace film {

/// The timecode of the edit at one of its film frames; empty where it isn't known.
using Clock = std::function<std::string(std::int64_t frame)>;

/// A strip's film on its roll, in whole frames, both inclusive.
struct FilmPiece {
    const Strip* strip;
    std::int64_t first, last;
};

class Finder {
public:
    Finder(EditFilm film, Clock clock, const CheckOptions& options, const LogRows* log);

    Findings run(const embedded::Warnings& warnings);

private:
    // What readers told.
    void take_warnings(const embedded::Warnings& warnings);
    // One event against its log, its media and its numbers.
    void look_at_log();
    void look_at_row(std::size_t i);
    void find_reel(const FilmEvent& event, const LogRow& listed);
    void find_overrun(std::size_t i, const LogRow& listed);
    void find_ambiguous(std::size_t i);
    void find_conflict(std::size_t i);
    void find_counting(const FilmEvent& event, const LogRow& row, Severity severity);
    void find_film_kind(const FilmEvent& event, const LogRow& listed);
    void look_at_film();
    void find_numbers(std::size_t i);
    void find_media(std::size_t i);
    void find_speed(std::size_t i);
    void find_reverse(std::size_t i);
    /// A row holds all of the event when it is moved by so many frames of film.
    bool listed_row_holds(const FilmEvent& event, std::int64_t film_frames) const;
    void find_key_range(std::size_t i);
    void find_not_listed(std::size_t i);
    void find_optical_errors();
    // Film that lists leave out by the way they count transitions.
    void find_lost_film();
    void find_unnamed(const Piece& piece);
    bool find_unnamed(const Piece& piece, Count Strip::*number, const Shares& shares);
    /// A transition between two events is told of the one behind it, if that tells anything.
    void find_between_frames(const Piece& piece, bool behind_too);
    void find_cut_short(const FilmEvent& event, const Strip& first, const Strip& last);
    // The film of all events together.
    void find_meetings();
    void find_meetings(std::vector<FilmPiece>& pieces);
    /// `frames` used by both, or as many below 0 between them.
    void tell_meeting(const FilmPiece& a, const FilmPiece& b, std::int64_t frames);
    // Names.
    void find_cut_names();
    void find_bad_texts();

    const LogRow* listed_row(const FilmEvent& event) const;
    std::string row_text(const LogRow& row) const;
    std::string near_miss(const FilmEvent& event) const;
    std::string channel_of(int layer) const;
    bool needs_ink(const Strip& strip) const;
    std::int64_t frames_of(std::size_t event) const;
    const Strip* strip_at(const FilmEvent& event, std::int64_t frame) const;
    FoundAt place_at(const FilmEvent& event, std::int64_t frame) const;
    void find(Code code, Severity severity, const FilmEvent& event, std::int64_t frame, std::string what);
    const FilmEvent& event_of(const Piece& piece) const {
        return film_.events[static_cast<std::size_t>(piece.first().item)];
    }
    /// The strips of an event, in order.
    const std::vector<const Strip*>& strips_of(std::size_t event) const { return strips_of_[event]; }

    const EditFilm film_;
    const Clock clock_;
    const CheckOptions& options_;
    const LogRows* const log_;
    const std::set<std::string> inked_rolls_; ///< with ink numbers on some of their film
    std::vector<std::vector<const Strip*>> strips_of_;
    Findings findings_;
};

} // namespace film
