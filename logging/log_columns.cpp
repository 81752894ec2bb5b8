#include "logging/log_columns.h"

#include <cstddef>

namespace {

struct column {
    const char* name;
    DBFieldTypes::eType type;
};

constexpr DBFieldTypes::eType a = DBFieldTypes::text;
constexpr DBFieldTypes::eType t = DBFieldTypes::timecode;

constexpr column film_columns[] = {
    {"name", a},          {"reel", a},           {"start time", t},    {"end time", t},    {"label_std", a},
    {"frame origin", a},  {"pulldown", a},       {"sequence", a},      {"chans", a},       {"start 24p code", t},
    {"24p reel", a},      {"cam reel", a},       {"start keycode", a}, {"start perf", a},  {"film label_std", a},
    {"start camcode", t}, {"cam label_std", a},  {"cam_date", a},      {"snd reel", a},    {"snd start", t},
    {"snd label_std", a}, {"orig soundfile", a}, {"lab reel", a},      {"comp reel", a},   {"start inkcode", a},
    {"scene", a},         {"shot", a},           {"who", a},           {"description", a}, {"notes", a},
    {"tag", a},           {"duration", t},
};

constexpr column video_columns[] = {
    {"name", a},     {"reel", a},      {"start time", t}, {"end time", t},    {"chans", a},
    {"pic qual", a}, {"label_std", a}, {"snd reel", a},   {"snd start", t},   {"snd label_std", a},
    {"scene", a},    {"shot", a},      {"who", a},        {"description", a}, {"notes", a},
};

template <std::size_t N> struct Schema {
    DBFieldDesc fields[N + 1]; ///< closed by one without a name

    explicit Schema(const column (&columns)[N]) {
        for (std::size_t i = 0; i < N; ++i)
            fields[i] = {columns[i].name, columns[i].type};
    }
};

// Never taken down: tables may be made until the very end of the process.
template <std::size_t N> DBFieldDesc* build_fields(const column (&columns)[N]) {
    return (new Schema<N>(columns))->fields;
}

} // namespace

DBFieldDesc* filmdb_fields() {
    static DBFieldDesc* const fields = build_fields(film_columns);
    return fields;
}

DBFieldDesc* videolog_fields() {
    static DBFieldDesc* const fields = build_fields(video_columns);
    return fields;
}

const char* const filmdb_required_fields[] = {"NAME",      "REEL",     "START TIME",    "END TIME",
                                              "LABEL_STD", "CAM REEL", "START KEYCODE", nullptr};
