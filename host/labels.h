#pragma once
// Labels: key numbers, ink numbers, feet and frames, and timecodes.
//
// A point is a count of samples on a kind of label; its text is derived. Film kinds count perforations,
// timecode kinds count frames. Positions are doubles: seconds on edits, timecode and sound, film frames on
// the film and ink media.
//
//     key number      KJ123456 1234+05        prefix, count, frames behind the count: one label, 16 frames of 4 samples
//     feet, frames        1234+05             the same without a prefix
//     timecode        01:00:00:12             one sample a frame
//
// Nothing here reports an error but by what it gives back: kind 0, a point that isn't useful, an invalid label. Texts
// that are the object's own last until the next call on it, so a point isn't shared between threads.

#include "host/text.h"

#include <cstdint>

class EditPtr;
class label_cvt;

/// The kind of a label. The library names these; every other value comes from the host's own functions.
enum label_t : std::int32_t {
    /// No label, or a text that can't be read as one.
    label_none = 0,
    /// Whole frames without feet; as the foot form of a film kind it means that there is none.
    label_frames = 3,
    /// Timecode that counts 24; what logs without a standard use.
    label_tc_24 = 8,
    /// Key numbers of 35mm with 4 perforations a frame; what logs without a kind of film use.
    label_key_35mm_4p = 10,
};

/// Which of an edit's labels is meant.
/// An edit may have one of each for a medium.
enum UserLabelType : std::int32_t { user_label_timecode = 3, user_label_key = 4, user_label_ink = 6 };

/// The medium on which a position is expressed.
enum MediumRollMedium : std::int32_t {
    /// Timecode of a source: roll 2 the video's, as the reel of roll 2 is the tape.
    medium_source_picture = 1,
    /// Film frames: key numbers and feet, on roll 1.
    medium_film = 2,
    /// Timecode of the sound, on roll 3.
    medium_sound = 4,
    /// The video timecode of an edit that a cutlist was made of.
    medium_video = 8,
    /// Film frames again, by ink numbers.
    medium_ink = 10,
    /// Seconds on the edit itself.
    medium_edit = 12,
    /// 24-frame timecode of a source, as a cutlist holds it.
    medium_24p = 13,
    /// Kept for 24-frame timecode in the header of a cutlist; nothing is read on it.
    medium_header_24p = 14,
    /// 24-frame timecode of a source, as its edit has it.
    medium_source_24p = 15,
    /// 24-frame timecode of an edit.
    medium_edit_24p = 28,
};

/// A medium and a roll on it. Rolls count from 1; `Edit::getReelId` takes -1 for the one that the medium has.
/// A plain value; two are the same when both numbers are.
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
/// How a picture is scanned; passed on, never looked at.
enum ScanMode : std::int32_t { scan_unset = 0 };
} // namespace Image
} // namespace Qb

/// A timecode standard; not set while `rate` is 0.
struct TCInf {
    /// How many frames it counts in a second.
    Qb::FrameRate rate = Qb::frame_rate_unset;
    /// Not 0: labels are left out to keep up with the clock.
    /// It counts only at rates that can drop.
    std::uint8_t drop = 0;
};

/// Width of the film and perforations of a frame, as logs name them. `gauge_unset` leaves the header of a log alone.
enum film_gauge : std::int32_t { gauge_35mm_4p = 1, gauge_16mm = 2, gauge_35mm_3p = 3, gauge_unset = 4 };

/// A position on a labelled medium: a kind, a roll prefix and a count of samples.
class LabelPoint {
public:
    LabelPoint() = default;
    /// A useful point of that kind, without a prefix; an invalid one where the kind is 0.
    LabelPoint(int sample, label_t type);
    /// The same of the converter's kind.
    /// Null makes an invalid one.
    LabelPoint(int sample, label_cvt* cvt);

    /// Non-zero when the point has a kind.
    int is_valid() const { return type_ != label_none; }
    /// Non-zero when it is valid and has been given a sample by number, arithmetic or text.
    int is_useful() const { return is_valid() && given_; }
    /// Same kind, prefix and sample.
    bool operator==(const LabelPoint& other) const;
    /// Steps the sample; the kind and prefix stay.
    /// Held within the limits of `int`. The point is useful afterwards.
    void operator+=(int samples);
    void operator-=(int samples);

    /// Makes the point useful.
    void set_sample(int sample);
    /// Parses the text in the point's own kind. A text that can't be parsed sets sample 0, leaves the prefix
    /// as it was, and the point isn't useful.
    void set_sample(const char* text);
    /// The sample stays; the prefix is cut or filled up to the length of the new kind's.
    void set_type(label_t type);
    /// 0 for an invalid point.
    label_t type() const { return type_; }
    /// The text, empty for an invalid point; the point's own, good until the next call on it.
    const char* get_string();
    /// The roll prefix, exactly as long as the kind's.
    const char* get_prefix() const { return prefix_; }
    /// Cut or filled up to the kind's length. A prefix that begins with "__" stands for no film.
    void set_prefix(const char* prefix);
    /// To the kind of the same family with that many digits in its count, where there is one.
    void modify_count_length(int digits);
    /// Never null; for an invalid point a converter of kind 0 with one sample a frame.
    label_cvt* cvt() const;

    /// Perforations on film, frames of timecode; may be below 0. It counts from the label's zero, whatever roll the
    /// prefix names.
    int sample = 0;

private:
    /// To the length of the kind's prefix.
    /// An empty prefix is filled with blanks, any other with underscores.
    void fit_prefix(const char* prefix);

    label_t type_ = label_none;
    /// Set once a sample was given, which makes a valid point useful.
    bool given_ = false;
    /// At most 8 characters and the closing zero.
    char prefix_[9] = {};
    /// What `get_string` gave last.
    char text_[40] = {};
};

/// A labelled medium: a start point and a length in samples.
class Label {
public:
    /// Invalid: of kind 0.
    Label();
    /// From sample 0, without an end.
    explicit Label(label_t type);

    /// The kind of its start.
    label_t type() const { return start_.type(); }
    /// `samples` from the start.
    LabelPoint get_label_point(int samples) const;
    /// At a position counted from the start, clipped to the label where its end is set.
    LabelPoint get_label_point(double posn) const;
    /// The same without clipping.
    LabelPoint get_unbounded_label_point(double posn) const;
    /// The text of the point `samples` from the start; the label's own, good until the next call on it.
    const char* get_string(int samples) const;
    /// The absolute sample of an offset from the start.
    int get_sample(int samples) const;
    /// From the start, as is the next; so 0 is 0.
    double sample_to_posn(int samples) const;
    /// Rounds down, after adding 1e-6 of a sample.
    /// Held within the limits of `int`; 0 where `posn_step` is 0.
    int posn_to_sample(double posn) const;
    /// The start's sample plus `samples`, as a position.
    /// So it counts from the label's zero, in seconds or film frames.
    double get_abs_posn(int samples) const;
    /// The position of a point, counted from the start.
    /// Goes by the point's sample alone; its kind and prefix aren't looked at.
    double get_posn(const LabelPoint& point) const;
    void set_prefix(const char* prefix);
    /// Takes an absolute sample, stores the length up to it and marks the end as set.
    /// An end before the start makes the length negative.
    void set_end(int sample);

    /// Samples between start and end.
    /// Looked at only while `end_set` is on.
    int end = 0;
    /// One sample on the label's position scale: seconds, or film frames.
    double posn_step = 1.0;
    /// Non-zero while `end` is set.
    std::uint8_t end_set = 0;
    /// The host's; the library only clears it.
    int start_offset = 0;

protected:
    /// Where positions count from.
    LabelPoint start_;

private:
    /// Keeps the text of `get_string`; so one label isn't shared between threads.
    mutable LabelPoint shown_;
};

/// A label bound to a medium and roll.
/// A plain value: the library copies those of an edit before it changes them.
class EditLabel : public Label {
public:
    EditLabel() = default;
    EditLabel(label_t type, const MediumRollIdent& ident) : Label(type), ident_(ident) {}

    /// Also sets `posn_step` to the kind's own.
    void set_type(label_t type);
    /// What it labels; the start stays.
    void set_MediumRoll(const MediumRollIdent& ident) { ident_ = ident; }
    MediumRollIdent& get_MediumRoll() { return ident_; }
    const MediumRollIdent& get_MediumRoll() const { return ident_; }
    /// An absolute sample.
    void set_start(int sample);
    /// An absolute position.
    /// In the label's unit, counted from its zero.
    void set_start(double posn);
    /// A text in the label's own kind, by the rules of `LabelPoint::set_sample`.
    void set_start(const char* text);
    /// Takes over kind, prefix and sample, and keeps `posn_step`.
    void set_start(const LabelPoint& point);
    /// False for a label of no kind, above all after `set_type` with one that the host doesn't know.
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
    /// The kind that it converts.
    virtual label_t label_type() const = 0;
    /// Writes the text of a sample behind `prefix` into `out`, closed and never more than `size` bytes.
    virtual void format(int sample, const char* prefix, char* out, unsigned size) const = 0;
    /// Reads a text; false leaves `sample` alone. `prefix` takes the text's own prefix and holds
    /// `prefix_length()` + 1 bytes.
    virtual bool parse(const char* text, int& sample, char* prefix) const = 0;
    /// Leading characters of a point's text that are its roll prefix.
    virtual int prefix_length() const = 0;
    /// Digits of the count behind the prefix; 0 for timecode.
    virtual int count_digits() const = 0;
    /// Samples from one printed count to the next: 64 perforations of 35mm.
    /// 1 for what isn't film.
    virtual int samples_per_count() const = 0;
    /// Never 0.
    /// Perforations of a film frame; 1 for timecode and plain frames.
    virtual int samples_per_frame() const = 0;
};

/// Shared, and not the caller's. `get_label_point(0)` of the first is the invalid point.
/// Converters are never null and hold no state, so all threads may ask them.
Label* get_invalid_label();
EditLabel* invalid_edit_label();
label_cvt* get_static_label_cvt(label_t type);

/// The kind of a text, without regard to case; 0 if unknown.
label_t edlstr_to_label_type(const char* text);
/// The same in key (4) or ink (6) form.
label_t edlstr_to_label_type(const char* text, UserLabelType form);
/// At most 11 characters, static.
/// Empty for a kind that isn't known.
const char* label_type_to_edlstr(label_t type);
/// The kind that counts feet and frames on the same film; 0 where there is none.
label_t label_t_to_foot_label_t(label_t type);
/// The key kind of a film kind; a key kind is its own.
label_t label_t_to_key_label_t(label_t type);
/// The ink kind of a film kind; 0 where there is none.
label_t label_t_to_ink_label_t(label_t type);
/// The timecode kind of a standard; 0 where it isn't set.
/// The drop kind where the standard drops and its rate has one.
label_t TvStd_to_label_type(const TCInf& standard);
/// The text of a standard as tables hold it, static; the next reads it back.
const char* tv_standard_to_edlstr(TCInf standard);
TCInf edlstr_to_tv_standard(const char* text);
/// The text of a gauge as tables hold it, static; the next reads it back, `gauge_unset` where it isn't known.
const char* film_gauge_to_edlstr(film_gauge gauge);
film_gauge edlstr_to_film_gauge(const char* text);
/// From the number in a Keylog file, millimetres; `gauge_unset` where it isn't known.
film_gauge int_to_film_gauge(int number);
/// A timecode text as seconds, for `tc_to_frames`; 0 when it can't be parsed.
double string_to_tc(const char* text, const TCInf& standard);
/// Frames of a time in seconds. The last two are the host's; the library passes 0.
int tc_to_frames(double time, Qb::FrameRate rate, int, int);
/// Frames of the pulldown cycle.
int pd_cycle_size(Qb::FrameRate rate);
/// The medium of an edit's output timecode.
MediumRollMedium getMediumRollfromOutputDetails(Qb::Image::ScanMode scan, Qb::FrameRate rate);

/// Parameters of a translation without an edit; with both rates unset the target label's rate decides.
class MPosn_Xlate_Params {
public:
    /// Of the medium that is left and of the one that is wanted.
    MPosn_Xlate_Params(Qb::FrameRate from, Qb::FrameRate to) : from_(from), to_(to) {}
    Qb::FrameRate from() const { return from_; }
    Qb::FrameRate to() const { return to_; }

private:
    /// `frame_rate_unset` where that side's rate isn't known.
    Qb::FrameRate from_;
    Qb::FrameRate to_;
};

/// A position on one medium as a position on another. Seconds to film frames gives whole frames, rounded
/// down after adding 1e-6 of a frame; an empty `edit` takes the film rate of the edit being listed.
/// Film frames to seconds isn't rounded, and between two media of one unit the position stays as it is.
double mPosn_Xlate(double posn, MediumRollMedium from, MediumRollMedium to, const EditPtr& edit);
/// The same to the medium of a label, which is read during the call only; null leaves the position as it is.
double mPosn_Xlate(double posn, MediumRollMedium from, const EditLabel* to, const EditPtr& edit);
double mPosn_Xlate(double posn, MediumRollMedium from, const EditLabel* to, const MPosn_Xlate_Params& params);
