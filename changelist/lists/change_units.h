#pragma once
// Lengths and positions of film as the change lists print them.

#include "base/code_text.h"

/// A length or position as a list shows it; what doesn't fit is cut.
struct LengthText {
    char text[20] = "";

    LengthText() = default;
    LengthText(const char* lead, const char* number);
};

enum class LengthUnit : unsigned char { frames, feet, timecode };

/// The unit that the options ask for.
LengthUnit list_unit();

/// Turns frames into texts, in the unit of the options. Holds copies of the labels, so make one a list.
class ChangeUnits {
public:
    explicit ChangeUnits(label_t film_std);

    LengthUnit unit() const { return unit_; }
    /// In the columns of the lists.
    LengthText length(int frames) const;
    /// With "-" or "+" ahead of the magnitude; 0 has neither.
    LengthText signed_length(int frames) const;
    /// Behind a text of the caller's.
    LengthText behind(const char* lead, int frames) const;
    /// Timecode of a frame of the sequence, good until the next call.
    const char* sequence_timecode(int frame) const { return seq_label_.get_string(frame); }

private:
    LengthUnit unit_;
    EditLabel seq_label_;
    EditLabel zero_label_;
    label_t foot_kind_;
};

/// Frames as feet and frames of a foot kind, without a lead.
ListText foot_text(label_t foot_kind, int frames);

/// The value without its sign.
int magnitude(int frames);
