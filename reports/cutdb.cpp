#include "reports/cutdb.h"

#include "base/lasting.h"
#include "base/number_text.h"
#include "base/text_columns.h"
#include "host/settings.h"

#include <cstdio>
#include <cstring>
#include <limits>

namespace {

// Two names stand twice: the audio start and the audio type carry names of their neighbours.
constexpr const char* column_names[cf_count] = {
    "event",
    "optical_record",
    "optical_ref",
    "track",
    "optical_tracks",
    "optical_layer_count",
    "optical_error",
    "edit_in",
    "edit_out",
    "optical_in",
    "optical_out",
    "optical_name",
    "shot_name",
    "src_reelid",
    "aud_reelid",
    "src24P_reelid",
    "cam_reel",
    "keycode_in",
    "keycode_out",
    "keycode_missing",
    "inkcode_in",
    "inkcode_out",
    "keylabeltype",
    "inklabeltype",
    "fx_op_in",
    "fx_mod_in",
    "fx_len_in",
    "fx_op_out",
    "fx_mod_out",
    "fx_len_out",
    "fx_name_out",
    "speed",
    "cookie",
    "special",
    "flags",
    "prim_tc_in",
    "prim_tc_out",
    "prim_tc_std",
    "prim_tc_medium",
    "src24P_tc_in",
    "aud_tc_out",
    "aud_tc_out",
    "aud_tc_medium",
    "src24P_tc_in",
    "src24P_tc_out",
    "src24P_tc_std",
    "src24P_tc_medium",
    "scene",
    "take",
    "description",
    "clip_cue",
    "cue_description",
    "utr_fx_present",
    "utr_fx_name",
};

const DBFieldDesc* cutlist_columns() {
    static const Lasting<TextColumns<cf_count>> schema(column_names);
    return schema.value().columns;
}

int begins_as_word(const char* reel) { return std::strncmp(reel, "__", 2) == 0; }

} // namespace

cutdb::cutdb(LoggerHandle* log) : recdb(cutlist_columns()), log_(log) {
    char revision[16];
    std::snprintf(revision, sizeof revision, "Rev %d", cutdb_revision);
    add_param("CUTDB", revision);
}

cutdb::cutdb(LightweightString<wchar_t> filename, LoggerHandle* log)
    : recdb(filename, std::numeric_limits<int>::max(), false), log_(log) {
    if (!get_valid()) return;
    set_valid(0);
    const char* parameter = get_param_val("cutdb");
    if (!parameter) return;
    const int revision = revision_number(parameter);
    if (revision == cutdb_revision) {
        set_valid(1);
    } else {
        log_->Out("ERROR: incorrect cutlist (.CDB) file (rev %d) : cannot process\n", revision);
    }
}

int number_in(const dbrecord& row, cutdb_field field) {
    return decimal_number(row.get_field(static_cast<unsigned short>(field)));
}

const char* text_in(const dbrecord& row, cutdb_field field) {
    const char* const text = row.get_field(static_cast<unsigned short>(field));
    return text ? text : "";
}

int is_real_reel(const char* reel) { return reel && *reel && !begins_as_word(reel); }

int is_pseudo_reel(const char* reel) { return reel && *reel && begins_as_word(reel); }
