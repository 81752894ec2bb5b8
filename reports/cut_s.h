#pragma once
// A cutlist record in memory, and the same with the positions that lists print.

#include "host/counted.h"
#include "host/labels.h"
#include "host/text.h"

#include <cstdint>

class dbrecord;

/// Values of `cut_s::special`.
enum cut_special : std::int32_t {
    special_none = 0,
    special_black = 98,
    special_starred = 102,
    special_no_material = 110
};

/// One record of a cutlist: an event of a track, a component of an optical, or an optical's master. Frames
/// are whole film frames of the master edit; every out is exclusive.
class cut_s : public iVirtual {
public:
    cut_s();
    ~cut_s() override;

    /// Writes the row; the result is that of the last field set.
    virtual int to_record(dbrecord& row) const;
    /// Reads the row. A field without text leaves its member as it was.
    virtual void from_record(dbrecord& row);
    /// The same without what most lists don't print: timecodes, their reels, and what a log says of the shot.
    void read_listed(const dbrecord& row);
    /// Only what says where the film of the record lies: positions, transitions, speed and key numbers.
    void read_film(const dbrecord& row);

    std::int32_t event = 0;
    std::int32_t optical_record = 0;
    std::int32_t optical_ref = 0;
    std::int32_t track = 0;
    std::int32_t optical_tracks = 0;
    std::int32_t optical_layer_count = 0;
    std::int32_t optical_error = 0;
    std::int32_t special = 0;
    std::int32_t edit_in = 0;
    std::int32_t edit_out = 0;
    std::int32_t optical_in = 0;
    std::int32_t optical_out = 0;
    char optical_name[31] = "";
    LightweightString<wchar_t> shot_name;
    char src_reelid[9] = "";
    char aud_reelid[9] = "";
    char src24P_reelid[9] = "";
    char cam_reel[9] = "";
    LabelPoint keycode_in;
    LabelPoint keycode_out;
    std::int32_t keycode_missing = 0;
    LabelPoint inkcode_in;
    LabelPoint inkcode_out;
    std::int32_t direction = 1; ///< -1 when the key numbers run backward
    char fx_op_in[3] = "";
    char fx_mod_in[6] = "";
    char fx_op_out[3] = "";
    char fx_mod_out[6] = "";
    char fx_name_out[31] = "";
    std::int32_t fx_len_in = 0;
    std::int32_t fx_len_out = 0;
    double speed = 1.0;
    char cookie[9] = "";
    EditLabel prim_tc;
    EditLabel aud_tc;
    EditLabel src24P_tc;
    char scene[24] = "";
    char take[24] = "";
    char description[128] = "";
    std::int32_t clip_cue = 0;
    char cue_description[128] = "";
    std::int32_t utr_fx_present = 0;
    char utr_fx_name[31] = "";
};

/// A record as a list prints it: widened by its transitions.
///
///     stored:         |-- event --|
///     printed:    |in-|-- event --|-out|        with the shares that the list gives it
class cut_report : public cut_s {
public:
    cut_report();
    ~cut_report() override;

    /// Stores `edit_out` one higher than the member, which stays as it is.
    int to_record(dbrecord& row) const override;
    /// Reads a row and derives the printing positions. Transitions other than fades are shared between both
    /// sides when `widen_halves` isn't 0.
    void load(dbrecord& row, int widen_halves, int chan_type, int audio_opticals);
    /// The same of what `read_listed` and `read_film` read.
    void load_listed(const dbrecord& row, int widen_halves, int chan_type, int audio_opticals);
    void load_film(const dbrecord& row, int widen_halves, int chan_type, int audio_opticals);

    std::int32_t reduced = 0; ///< nothing of the event is left
    LabelPoint cut_key_in;
    LabelPoint cut_key_out; ///< exclusive
    LabelPoint cut_ink_in;
    LabelPoint cut_ink_out;
    std::int32_t cut_length = 0;

private:
    void derive_positions(int widen_halves, int chan_type, int audio_opticals);
};

/// Does to a row that `to_record` wrote, with points of one kind at both ends, what reading and writing it again would.
void rewrite_record(dbrecord& row);

/// The whole part of a cut frame: `x` where its fraction is below 0.05, else rounded away from 0.
double round_frames(double x);
