#pragma once
// One row of a comparison in memory: a stretch of film with its place in the old cut, in the new one or in both.

#include "host/labels.h"
#include "host/text.h"

#include <cstdint>

class dbrecord;

class ChangeRecord {
public:
    /// An empty record whose key and ink numbers are of the film standard's kinds.
    explicit ChangeRecord(label_t film_std);

    void clear();
    /// Fills the members from a row. A number that the row lacks leaves its member as it was.
    void read(const dbrecord& row);
    /// Fills the row. An invalid ink number leaves the row's own field as it was.
    void write(dbrecord& row) const;
    /// The same of name and labels alone, which a row holds in a form of its own: read again they may have changed.
    void read_names_and_labels(const dbrecord& row);
    void write_names_and_labels(dbrecord& row) const;
    /// `read` in two halves, for most of what is matched needs but the first.
    void read_for_match(const dbrecord& row);
    void read_rest(const dbrecord& row);

    // Samples of the film. The ends are exclusive, and lie below the start where the event runs backward.
    int key_step() const;
    int ink_step() const;
    bool varispeed() const;
    int key_in() const;
    int ink_in() const;
    int key_end() const;
    int ink_end() const;
    int key_last() const; ///< of the last frame
    int ink_last() const;
    void set_key_in(int sample);
    void set_ink_in(int sample);
    /// The outs are the ins of the record's own film, at its last frame.
    void set_outs();

    std::int32_t event1 = 0;
    std::int32_t subevent1 = 0;
    std::int32_t relpos1 = 0; ///< frames
    std::int32_t event2 = 0;
    std::int32_t subevent2 = 0;
    std::int32_t relpos2 = 0;
    std::int32_t optical = 0;
    char record_type[4] = "";
    std::int32_t old_edit_in = 0; ///< frames of the old cut's reel
    std::int32_t old_reel_seq = 0;
    char cam_reel[10] = "";
    LightweightString<wchar_t> shot_name;
    char scene[30] = "";
    char take[30] = "";
    char description[140] = "";
    LabelPoint keycode_in;
    LabelPoint keycode_out; ///< of the last frame
    std::int32_t keycode_missing = 1;
    LabelPoint inkcode_in;
    LabelPoint inkcode_out;
    std::int32_t edit_in = 0; ///< frames of the new cut's reel
    std::int32_t reel_seq = 0;
    std::int32_t edit_length = 0; ///< frames
    double speed = 0;
    char fx_op1[4] = "";
    char fx_op2[4] = "";
    std::int32_t fx_len1 = 0; ///< frames within the event
    std::int32_t fx_len2 = 0;
    char fx_name2[31] = "";
    char fx_pos[4] = "";
    std::int32_t xref_recnum = 0;
    LabelPoint prim_tc_in;
    LabelPoint prim_tc_out;
    LabelPoint bracket_in;  ///< last key number of the event before
    LabelPoint bracket_out; ///< first key number of the event behind
};

/// The same film at the same length: equal key numbers, lengths, camera rolls and (within 0.01) speeds.
bool same_event(const ChangeRecord& a, const ChangeRecord& b);
/// The key ranges overlap on one roll. A varispeed `a` overlaps nothing of another speed.
bool overlaps(const ChangeRecord& a, const ChangeRecord& b);

/// The text of a point begins with "__", so there is no film behind it.
bool is_filler(const LabelPoint& point);
/// Samples of a frame on the point's kind of film; 1 where the point is invalid.
int samples_per_frame(const LabelPoint& point);
/// Both speeds differ by at most 0.01.
bool same_speed(double a, double b);
