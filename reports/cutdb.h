#pragma once
// The cutlist database: the table that joins the generator to every list.

#include "host/recdb.h"

class LoggerHandle;

constexpr int cutdb_revision = 22;

/// Columns of a cutlist, by number. Two names stand twice in the schema, so columns are never looked up.
enum cutdb_field : int {
    cf_event = 0,
    cf_optical_record,
    cf_optical_ref,
    cf_track,
    cf_optical_tracks,
    cf_optical_layer_count,
    cf_optical_error,
    cf_edit_in,
    cf_edit_out,
    cf_optical_in,
    cf_optical_out,
    cf_optical_name,
    cf_shot_name,
    cf_src_reelid,
    cf_aud_reelid,
    cf_src24P_reelid,
    cf_cam_reel,
    cf_keycode_in,
    cf_keycode_out,
    cf_keycode_missing,
    cf_inkcode_in,
    cf_inkcode_out,
    cf_keylabeltype,
    cf_inklabeltype,
    cf_fx_op_in,
    cf_fx_mod_in,
    cf_fx_len_in,
    cf_fx_op_out,
    cf_fx_mod_out,
    cf_fx_len_out,
    cf_fx_name_out,
    cf_speed,
    cf_cookie,
    cf_special,
    cf_flags,
    cf_prim_tc_in,
    cf_prim_tc_out,
    cf_prim_tc_std,
    cf_prim_tc_medium,
    cf_aud_tc_in,
    cf_aud_tc_out,
    cf_aud_tc_std,
    cf_aud_tc_medium,
    cf_src24P_tc_in,
    cf_src24P_tc_out,
    cf_src24P_tc_std,
    cf_src24P_tc_medium,
    cf_scene,
    cf_take,
    cf_description,
    cf_clip_cue,
    cf_cue_description,
    cf_utr_fx_present,
    cf_utr_fx_name,
    cf_count
};

class cutdb : public recdb {
public:
    /// A new empty table with its revision parameter. The logger isn't owned.
    explicit cutdb(LoggerHandle* log);
    /// Reads a file; not valid when it can't be read or has another revision, which is logged.
    cutdb(LightweightString<wchar_t> filename, LoggerHandle* log);

private:
    LoggerHandle* log_;
};

/// The whole number in a field of a row; 0 where there is none.
int number_in(const dbrecord& row, cutdb_field field);
/// The text in a field of a row; empty where there is none. The row's own.
const char* text_in(const dbrecord& row, cutdb_field field);

/// Neither empty nor one of the "__" words.
int is_real_reel(const char* reel);
/// One of the "__" words, which stand for no roll.
int is_pseudo_reel(const char* reel);
