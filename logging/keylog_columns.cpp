#include "logging/keylog_columns.h"

#include <cstring>

namespace {

struct standard_name {
    const char* name;
    TCInf standard;
};

constexpr auto rate_24 = static_cast<Qb::FrameRate>(2);
constexpr auto rate_2997 = static_cast<Qb::FrameRate>(5);

constexpr standard_name standard_names[] = {
    {"pal", {Qb::frame_rate_25, 0}}, {"ntsc", {rate_2997, 0}},  {"ntsc_drop_frame", {rate_2997, 1}},
    {"pal_24", {rate_24, 0}},        {"ntsc_24", {rate_24, 0}}, {"ntsc_drop_frame_24", {rate_24, 1}},
};

} // namespace

const char keylog_header[] = "Record#  EVENT CAMROLL SOUNDROLL DOP      SCENE  TAKE VTTC_IN     VTTC_OUT    "
                             "DURATION NAGRA_IN    VTTC_DROP NAGRA_DROP KEYIN          KEYOUT         "
                             "PULLIN PULLOUT FOOTAGE  DESCRIPT                            COMMENTS";
static_assert(sizeof keylog_header == keylog_header_length + 1);

const char* const keylog_names[] = {
    "event",    "camroll",  "soundroll", "dop",        "scene",   "take",   "vttc_in",    "vttc_out",
    "duration", "nagra_in", "vttc_drop", "nagra_drop", "keyin",   "keyout", "pullin",     "pullout",
    "footage",  "descript", "comments",  "printed",    "load",    "loaded", "dur_frames", "perfin",
    "perfout",  "ink_in",   "ink_out",   "labroll",    "dlyroll", "slate",
};
static_assert(sizeof keylog_names / sizeof *keylog_names == kc_none);

const char* const keylog_short_dur_frames = "dur_fr";

const char* const keylog_optional_names[] = {"perfin", "perfout", "ink_in",  "ink_out",
                                             "slate",  "labroll", "dlyroll", nullptr};

// Ten columns a row; the rows of the log rely on each of these as it stands.
const int keylog_column_map[] = {
    4,  30, 6,  7,  10, 30, 30, 14, 30, 30, //
    30, 30, 1,  12, 23, 30, 30, 30, 30, 2,  //
    9,  11, 28, 27, 25, 30, 30, 30, 17, 18, //
    30, 30, 30, 30, 30,
};

TCInf keylog_tv_standard(const char* name) {
    for (const standard_name& known : standard_names) {
        if (std::strcmp(name, known.name) == 0) return known.standard;
    }
    return {};
}
