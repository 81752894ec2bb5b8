#pragma once
// Labels: key numbers, ink numbers, feet and frames, and timecodes.
//
// A point is a count of samples on a kind of label; its text is derived. Film kinds count perforations,
// timecode kinds count frames. Positions are doubles: seconds on edits, timecode and sound, film frames on
// the film and ink media.

#include "host/text.h"

#include <cstdint>

class EditPtr;
class label_cvt;

/// The kind of a label. The library names these; every other value comes from the host's own functions.
enum label_t : std::int32_t {
    label_none = 0,
    label_frames = 3,
    label_tc_24 = 8,
    label_key_35mm_4p = 10,
};

enum UserLabelType : std::int32_t { user_label_timecode = 3, user_label_key = 4, user_label_ink = 6 };

/// The medium on which a position is expressed.
enum MediumRollMedium : std::int32_t {
    medium_source_picture = 1,
    medium_film = 2,
    medium_sound = 4,
    medium_video = 8,
    medium_ink = 10,
    medium_edit = 12,
    medium_24p = 13,
    medium_header_24p = 14,
    medium_source_24p = 15,
    medium_edit_24p = 28,
};

/// A medium and a roll on it, from 1.
struct MediumRollIdent {
    MediumRollMedium medium = medium_source_picture;
    std::int32_t roll = 1;

    MediumRollIdent() = default;
    MediumRollIdent(int medium_number, int roll_number)
        : medium(static_cast<MediumRollMedium>(medium_number)), roll(roll_number) {}
    bool operator==(const MediumRollIdent&) const = default;
};

namespace Qb {
/// 0 unset; the host gives the others their meaning.
enum FrameRate : std::int32_t { frame_rate_unset = 0, frame_rate_25 = 3 };

namespace Image {
enum ScanMode : std::int32_t { scan_unset = 0 };
}
} // namespace Qb

/// A timecode standard; not set while `rate` is 0.
struct TCInf {
    Qb::FrameRate rate = Qb::frame_rate_unset;
    std::uint8_t drop = 0;
};

enum film_gauge : std::int32_t { gauge_35mm_4p = 1, gauge_16mm = 2, gauge_35mm_3p = 3, gauge_unset = 4 };

/// A position on a labelled medium: a kind, a roll prefix and a count of samples.
class LabelPoint {
public:
    LabelPoint() = default;
    LabelPoint(int sample, label_t type);
    LabelPoint(int sample, label_cvt* cvt);

    /// Non-zero when the point has a kind.
    int is_valid() const { return type_ != label_none; }
    /// Non-zero when it is valid and has been given a sample by number, arithmetic or text.
    int is_useful() const { return is_valid() && given_; }
    /// Same kind, prefix and sample.
    bool operator==(const LabelPoint& other) const;
    void operator+=(int samples);
    void operator-=(int samples);

    void set_sample(int sample);
    /// Parses the text in the point's own kind. A text that can't be parsed sets sample 0, leaves the prefix
    /// as it was, and the point isn't useful.
    void set_sample(const char* text);
    void set_type(label_t type);
    label_t type() const { return type_; }
    /// The text, empty for an invalid point; the point's own, good until the next call on it.
    const char* get_string();
    /// The roll prefix, exactly as long as the kind's.
    const char* get_prefix() const { return prefix_; }
    void set_prefix(const char* prefix);
    /// To the kind of the same family with that many digits in its count, where there is one.
    void modify_count_length(int digits);
    /// Never null; for an invalid point a converter of kind 0 with one sample a frame.
    label_cvt* cvt() const;

    int sample = 0;

private:
    void fit_prefix(const char* prefix);

    label_t type_ = label_none;
    bool given_ = false;
    char prefix_[9] = {};
    char text_[40] = {};
};

/// A labelled medium: a start point and a length in samples.
class Label {
public:
    Label();
    explicit Label(label_t type);

    label_t type() const { return start_.type(); }
    /// `samples` from the start.
    LabelPoint get_label_point(int samples) const;
    /// At a position counted from the start, clipped to the label where its end is set.
    LabelPoint get_label_point(double posn) const;
    LabelPoint get_unbounded_label_point(double posn) const;
    /// The text of the point `samples` from the start; the label's own, good until the next call on it.
    const char* get_string(int samples) const;
    /// The absolute sample of an offset from the start.
    int get_sample(int samples) const;
    double sample_to_posn(int samples) const;
    /// Rounds down, after adding 1e-6 of a sample.
    int posn_to_sample(double posn) const;
    /// The start's sample plus `samples`, as a position.
    double get_abs_posn(int samples) const;
    /// The position of a point, counted from the start.
    double get_posn(const LabelPoint& point) const;
    void set_prefix(const char* prefix);
    /// Takes an absolute sample, stores the length up to it and marks the end as set.
    void set_end(int sample);

    /// Samples between start and end.
    int end = 0;
    /// One sample on the label's position scale: seconds, or film frames.
    double posn_step = 1.0;
    /// Non-zero while `end` is set.
    std::uint8_t end_set = 0;
    /// The host's; the library only clears it.
    int start_offset = 0;

protected:
    LabelPoint start_;

private:
    mutable LabelPoint shown_;
};

/// A label bound to a medium and roll.
class EditLabel : public Label {
public:
    EditLabel() = default;
    EditLabel(label_t type, const MediumRollIdent& ident) : Label(type), ident_(ident) {}

    /// Also sets `posn_step` to the kind's own.
    void set_type(label_t type);
    void set_MediumRoll(const MediumRollIdent& ident) { ident_ = ident; }
    MediumRollIdent& get_MediumRoll() { return ident_; }
    const MediumRollIdent& get_MediumRoll() const { return ident_; }
    void set_start(int sample);
    /// An absolute position.
    void set_start(double posn);
    void set_start(const char* text);
    /// Takes over kind, prefix and sample, and keeps `posn_step`.
    void set_start(const LabelPoint& point);
    bool is_valid() const { return start_.is_valid() != 0; }
    /// The start's digits; see `LabelPoint::modify_count_length`.
    void modify_count_length(int digits) { start_.modify_count_length(digits); }

private:
    MediumRollIdent ident_;
};

/// The converter of a kind between samples and text. The order of the operations is the host's interface.
class label_cvt {
public:
    virtual ~label_cvt() = default;
    virtual label_t label_type() const = 0;
    /// Writes the text of a sample behind `prefix` into `out`, closed and never more than `size` bytes.
    virtual void format(int sample, const char* prefix, char* out, unsigned size) const = 0;
    /// Reads a text; false leaves `sample` alone. `prefix` takes the text's own prefix and holds
    /// `prefix_length()` + 1 bytes.
    virtual bool parse(const char* text, int& sample, char* prefix) const = 0;
    /// Leading characters of a point's text that are its roll prefix.
    virtual int prefix_length() const = 0;
    virtual int count_digits() const = 0;
    virtual int samples_per_count() const = 0;
    /// Never 0.
    virtual int samples_per_frame() const = 0;
};

/// Shared, and not the caller's. `get_label_point(0)` of the first is the invalid point.
Label* get_invalid_label();
EditLabel* invalid_edit_label();
label_cvt* get_static_label_cvt(label_t type);

/// The kind of a text, without regard to case; 0 if unknown.
label_t edlstr_to_label_type(const char* text);
/// The same in key (4) or ink (6) form.
label_t edlstr_to_label_type(const char* text, UserLabelType form);
/// At most 11 characters, static.
const char* label_type_to_edlstr(label_t type);
label_t label_t_to_foot_label_t(label_t type);
label_t label_t_to_key_label_t(label_t type);
label_t label_t_to_ink_label_t(label_t type);
label_t TvStd_to_label_type(const TCInf& standard);
const char* tv_standard_to_edlstr(TCInf standard);
TCInf edlstr_to_tv_standard(const char* text);
const char* film_gauge_to_edlstr(film_gauge gauge);
film_gauge edlstr_to_film_gauge(const char* text);
film_gauge int_to_film_gauge(int number);
/// A timecode text as seconds, for `tc_to_frames`; 0 when it can't be parsed.
double string_to_tc(const char* text, const TCInf& standard);
int tc_to_frames(double time, Qb::FrameRate rate, int, int);
/// Frames of the pulldown cycle.
int pd_cycle_size(Qb::FrameRate rate);
MediumRollMedium getMediumRollfromOutputDetails(Qb::Image::ScanMode scan, Qb::FrameRate rate);

/// Parameters of a translation without an edit; with both rates unset the target label's rate decides.
class MPosn_Xlate_Params {
public:
    MPosn_Xlate_Params(Qb::FrameRate from, Qb::FrameRate to) : from_(from), to_(to) {}
    Qb::FrameRate from() const { return from_; }
    Qb::FrameRate to() const { return to_; }

private:
    Qb::FrameRate from_;
    Qb::FrameRate to_;
};

/// A position on one medium as a position on another. Seconds to film frames gives whole frames, rounded
/// down after adding 1e-6 of a frame; an empty `edit` takes the film rate of the edit being listed.
double mPosn_Xlate(double posn, MediumRollMedium from, MediumRollMedium to, const EditPtr& edit);
double mPosn_Xlate(double posn, MediumRollMedium from, const EditLabel* to, const EditPtr& edit);
double mPosn_Xlate(double posn, MediumRollMedium from, const EditLabel* to, const MPosn_Xlate_Params& params);
