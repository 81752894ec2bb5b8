#include "changelist/chgdb.h"

#include "base/lasting.h"
#include "base/number_text.h"
#include "base/text_columns.h"
#include "host/settings.h"

#include <cstdio>
#include <limits>

namespace {

constexpr const char* column_names[hf_count] = {
    "event1",       "subevent1",   "relpos1",     "event2",          "subevent2",   "relpos2",
    "optical",      "record_type", "edit_in",     "reel_seq",        "edit_length", "old_edit_in",
    "old_reel_seq", "keycode_in",  "keycode_out", "keycode_missing", "inkcode_in",  "inkcode_out",
    "speed",        "cam_reel",    "shot_name",   "scene",           "take",        "description",
    "fx_op1",       "fx_len1",     "fx_op2",      "fx_len2",         "fx_name2",    "fx_pos",
    "xref_recnum",  "prim_tc_in",  "prim_tc_out", "prim_tc_std",     "bracket_in",  "bracket_out",
};

const DBFieldDesc* change_columns() {
    static const Lasting<TextColumns<hf_count>> schema(column_names);
    return schema.value().columns;
}

} // namespace

chgdb::chgdb(const recdb& other, LoggerHandle* logger, int copy_records) : recdb(other, copy_records), log(logger) {}

chgdb::chgdb(LightweightString<wchar_t> file, LoggerHandle* logger)
    : recdb(file, std::numeric_limits<int>::max(), false), log(logger) {
    if (!get_valid()) return;
    set_valid(0);
    const char* parameter = get_param_val("CHGDB");
    if (!parameter) return;
    const int revision = revision_number(parameter);
    if (revision < chgdb_revision) {
        log->Out("ERROR: Old CHGDB (rev %d) : cannot process\n", revision);
    } else {
        set_valid(1);
    }
}

chgdb::chgdb(label_t film_std, LoggerHandle* logger) : recdb(change_columns()), log(logger) {
    char revision[16];
    std::snprintf(revision, sizeof revision, "Rev %d", chgdb_revision);
    add_param("CHGDB", revision);
    add_param("FILMLAB_STD_", label_type_to_edlstr(film_std));
}

label_t chgdb::film_std() const {
    const char* standard = get_param_val("FILMLAB_STD_");
    return edlstr_to_label_type(standard ? standard : "");
}

void show_all(recdb& table) {
    table.set_all_tags(0);
    table.set_show_tags_only(0);
}

void show_events(recdb& table) {
    show_all(table);
    tag_rows(table, hf_optical, "1", 0);
    table.invert_all_tags();
    table.set_show_tags_only(1);
}

void tag_rows(recdb& table, chgdb_field field, const char* value, int add) {
    dbrecord* query = table.make_dummy_record();
    query->set_field(field, value, true);
    table.set_query(query);
    table.tag_matching_records(add);
}
