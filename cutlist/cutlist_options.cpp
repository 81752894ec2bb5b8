#include "cutlist/cutlist_options.h"

#include "base/lasting.h"
#include "host/fixed_text.h"
#include "host/settings.h"
#include "quillbrook/cutlist.h"

#include <climits>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::size_t text_size = 64;

/// One key of the block and the field that it fills: a number, a text, or neither.
struct option_field {
    const char* name;
    int CutlistOptions::*number;
    char (CutlistOptions::*text)[text_size];
    bool used;
};

constexpr option_field number(const char* name, int CutlistOptions::*field, bool used = true) {
    return {name, field, nullptr, used};
}
constexpr option_field text(const char* name, char (CutlistOptions::*field)[text_size], bool used = true) {
    return {name, nullptr, field, used};
}
constexpr option_field word(const char* name) { return {name, nullptr, nullptr, false}; }

constexpr bool kept = false;

// In the order in which the block is read. The words at the end belong to the vocabulary and fill nothing.
constexpr option_field option_fields[] = {
    text("proj_name", &CutlistOptions::proj_name),
    text("proj_file", &CutlistOptions::proj_file, kept),
    text("edg_file", &CutlistOptions::edg_file, kept),
    text("log_file", &CutlistOptions::log_file),
    number("chan_type", &CutlistOptions::chan_type),
    number("chan_num", &CutlistOptions::chan_num),
    number("roll_list", &CutlistOptions::roll_list),
    number("pull_list", &CutlistOptions::pull_list),
    number("assembly_list", &CutlistOptions::assembly_list),
    number("optical_list", &CutlistOptions::optical_list),
    number("one_page_optical", &CutlistOptions::one_page_optical),
    number("fsl_type1_file", &CutlistOptions::fsl_type1_file),
    number("fsl_type2_file", &CutlistOptions::fsl_type2_file),
    number("fsl_type3_file", &CutlistOptions::fsl_type3_file),
    number("fsl_type4_file", &CutlistOptions::fsl_type4_file),
    number("film_code", &CutlistOptions::film_code, kept),
    number("audio_code", &CutlistOptions::audio_code, kept),
    number("film_reel", &CutlistOptions::film_reel),
    number("audio_reel", &CutlistOptions::audio_reel, kept),
    number("inkcode_in_keycode_field", &CutlistOptions::inkcode_in_keycode_field, kept),
    number("report_with_tc", &CutlistOptions::report_with_tc, kept),
    number("long_keycode", &CutlistOptions::long_keycode),
    number("guess_black", &CutlistOptions::guess_black, kept),
    number("pull_handle", &CutlistOptions::pull_handle),
    number("optical_handle", &CutlistOptions::optical_handle, kept),
    number("butt", &CutlistOptions::butt),
    number("audio_opticals", &CutlistOptions::audio_opticals),
    number("use_cookies", &CutlistOptions::use_cookies, kept),
    number("optical_fencepost", &CutlistOptions::optical_fencepost, kept),
    number("wpflag", &CutlistOptions::wpflag, kept),
    number("pagelength", &CutlistOptions::pagelength, kept),
    number("some_lists", &CutlistOptions::some_lists),
    number("pull_match_assembly", &CutlistOptions::pull_match_assembly),
    number("edit_units", &CutlistOptions::edit_units),
    number("floppy_flag", &CutlistOptions::floppy_flag, kept),
    text("pgm_id", &CutlistOptions::pgm_id),
    number("pull_sort_by_keycode", &CutlistOptions::pull_sort_by_keycode),
    word("reprint_list"),
    word("printer"),
    word("split_rolls"),
    word("reprint_gap"),
    word("cdf_flag"),
};
constexpr std::size_t option_count = std::size(option_fields);

bool is_text_word(const option_field& field) { return std::string_view(field.name) == "printer"; }

void read_field(const configb& block, const option_field& field, CutlistOptions& options) {
    if (field.number) {
        block.in(field.name, options.*field.number);
    } else if (field.text) {
        LightweightString<char> value;
        if (block.in(field.name, value) != -1) put_text(options.*field.text, value.c_str());
    }
}

} // namespace

CutlistOptions& cutlist_options() {
    static Lasting<CutlistOptions> options;
    return options.value();
}

void read_cutlist_options(const configb* block) {
    CutlistOptions& options = cutlist_options();
    if (!block) return;
    for (const option_field& field : option_fields) {
        read_field(*block, field, options);
        if (field.number == &CutlistOptions::long_keycode && static_cast<unsigned>(options.long_keycode) > 2)
            options.long_keycode = -1;
    }
    put_text(options.channel_str, channel_text(options.chan_type, options.chan_num));
    LightweightString<char> path;
    options.output_file = fromUTF8(read_string_option(block, path, "output_file"));
}

LightweightString<char>& read_string_option(const configb* block, LightweightString<char>& out,
                                            const LightweightString<char>& key) {
    out = LightweightString<char>();
    if (block->in(key, out) == -1) out = LightweightString<char>();
    return out;
}

const char* channel_text(int& type, const int& number) {
    static char buffer[32];
    if (type == 0) type = picture_channel;
    std::snprintf(buffer, sizeof buffer, "%c%02d", type == sound_channel ? 'A' : 'V', number);
    return buffer;
}

void parse_channel_text(const char* text, int& type, int& number) {
    constexpr long highest_channel = 16;
    type = 0;
    number = 1;
    if (!text || !*text) return;
    type = *text == 'V' || *text == 'v' ? picture_channel : sound_channel;
    const long value = std::strtol(text + 1, nullptr, 10);
    if (value >= 1 && value <= highest_channel) number = static_cast<int>(value);
}

const cutlist_option_key* cutlist_option_keys() {
    struct key_table {
        cutlist_option_key keys[option_count + 1] = {};
        key_table() {
            for (std::size_t i = 0; i < option_count; ++i) {
                const option_field& field = option_fields[i];
                keys[i] = {field.name, field.text != nullptr || is_text_word(field), field.used};
            }
        }
    };
    static const key_table table;
    return table.keys;
}
