#pragma once
// Film in the order of its key numbers, and where a piece of film first meets some of it.

#include "changelist/steps/film_fields.h"

/// A piece of film at normal speed. The outs are of its last frame.
struct FilmSpan {
    LabelPoint key_in;
    LabelPoint ink_in;
    LabelPoint key_out;
    LabelPoint ink_out;
    int missing = 1;
    int length = 0; ///< frames

    int key_start() const { return key_in.is_valid() ? key_in.sample : 0; }
    int key_end() const;
    int ink_end() const;
    int frame_step() const;
    /// Another length; the outs follow.
    void set_length(int frames);
    /// Begins where `other` does.
    void take_start(const FilmSpan& other);
    /// Begins at these samples, on the same rolls.
    void start_at(int key, int ink);
    void outs_from_ins();
};

/// One row of a table as film.
struct FilmRow {
    FilmSpan span;
    bool varispeed = false;
    bool filler = false; ///< no film behind it

    bool is_film() const { return !varispeed && !filler; }
};

/// The rows that the table shows.
Vector<FilmRow> film_rows(const chgdb& table);

/// Finds the first of the rows that doesn't end ahead of a key number, by their texts without regard to case.
class FilmByKeyOut {
public:
    explicit FilmByKeyOut(const Vector<FilmRow>& rows);

    /// At or behind `from`, among film at normal speed; null if there is none, or if its film doesn't meet the
    /// span's.
    const FilmSpan* first_meeting(FilmSpan& span, std::size_t from) const;

private:
    struct KeyText {
        char text[40] = "";
    };

    std::size_t later_end(std::size_t a, std::size_t b) const;
    bool ends_ahead(std::size_t row, const char* key) const;
    std::size_t first_not_ahead(std::size_t from, const char* key) const;

    static constexpr std::size_t no_row = static_cast<std::size_t>(-1);

    const Vector<FilmRow>& rows_;
    Vector<KeyText> outs_;
    std::size_t leaves_ = 1;   ///< a power of two
    Vector<std::size_t> last_; ///< a tree: the row below each node that ends last
};
