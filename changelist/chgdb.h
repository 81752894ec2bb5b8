#pragma once
// The table of a comparison: the flattened events of a cut, or what becomes of them in the next one.

#include "host/labels.h"
#include "host/recdb.h"

class LoggerHandle;

constexpr int chgdb_revision = 8;

/// Columns by number.
enum chgdb_field : int {
    hf_event1 = 0,
    hf_subevent1,
    hf_relpos1,
    hf_event2,
    hf_subevent2,
    hf_relpos2,
    hf_optical,
    hf_record_type,
    hf_edit_in,
    hf_reel_seq,
    hf_edit_length,
    hf_old_edit_in,
    hf_old_reel_seq,
    hf_keycode_in,
    hf_keycode_out,
    hf_keycode_missing,
    hf_inkcode_in,
    hf_inkcode_out,
    hf_speed,
    hf_cam_reel,
    hf_shot_name,
    hf_scene,
    hf_take,
    hf_description,
    hf_fx_op1,
    hf_fx_len1,
    hf_fx_op2,
    hf_fx_len2,
    hf_fx_name2,
    hf_fx_pos,
    hf_xref_recnum,
    hf_prim_tc_in,
    hf_prim_tc_out,
    hf_prim_tc_std,
    hf_bracket_in,
    hf_bracket_out,
    hf_count
};

class chgdb : public recdb {
public:
    /// A table of the same shape; `copy_records` 1 brings the rows that `other` shows.
    chgdb(const recdb& other, LoggerHandle* log, int copy_records);
    /// Reads a saved table; not valid when it can't be read or has a revision below 8, which is logged.
    chgdb(LightweightString<wchar_t> file, LoggerHandle* log);
    /// A new empty table of a film standard. The logger isn't owned.
    chgdb(label_t film_std, LoggerHandle* log);

    label_t film_std() const;

    LoggerHandle* log;
};

/// Clears all tags and shows every row.
void show_all(recdb& table);
/// Shows the events alone, without the opticals.
void show_events(recdb& table);
/// Tags the rows whose field begins with `value`; `add` 0 starts afresh, 1 keeps the tags that stand.
void tag_rows(recdb& table, chgdb_field field, const char* value, int add);
/// Tags rows by the kind of change: "D" stands for "DU" and "DC".
inline void tag_kind(recdb& table, const char* kind, int add) { tag_rows(table, hf_record_type, kind, add); }
