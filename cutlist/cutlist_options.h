#pragma once
// The options of a cutlist run, and the small text helpers that go with them: `trim_text` and those below.

#include "base/trim_text.h"
#include "host/channel_kinds.h"
#include "host/text.h"

class configb;

/// All options of a run, named as their keys, with the values that they have when the library is loaded. A
/// key that a block lacks keeps the field, so options last from run to run.
struct CutlistOptions {
    char proj_name[64] = "";
    char proj_file[64] = "";
    char edg_file[64] = "";
    char log_file[64] = "";
    int chan_type = 0; ///< `picture_channel` or `sound_channel`; the reader turns 0 into the first
    int chan_num = 1;  ///< place among the channels of that type, from 0; absolute once the entry resolved it
    int roll_list = 1;
    int pull_list = 1;
    int assembly_list = 1;
    int optical_list = 1;
    int one_page_optical = 1;
    int fsl_type1_file = 0;
    int fsl_type2_file = 0;
    int fsl_type3_file = 0;
    int fsl_type4_file = 0;
    int film_code = 4;
    int audio_code = 6;
    int film_reel = 2;
    int audio_reel = 4;
    int inkcode_in_keycode_field = 0;
    int report_with_tc = 0;
    int long_keycode = 3; ///< extra digits of the key count, 0 to 2; the reader turns all else into -1
    int guess_black = 1;
    int pull_handle = 0; ///< frames
    int optical_handle = 32;
    int butt = 1; ///< frames
    int audio_opticals = 0;
    int use_cookies = 0;
    int optical_fencepost = 0;
    int wpflag = 0;
    int pagelength = 66;
    int some_lists = 0;
    int pull_match_assembly = 1; ///< not 0: a cutting-copy list, 0: a neg-cut list
    int edit_units = 0;          ///< 1 frames, any other value feet and frames
    int floppy_flag = 0;
    char pgm_id[64] = "";
    int pull_sort_by_keycode = 0;

    char channel_str[64] = "";
    LightweightString<wchar_t> output_file;
};

/// The record of the run in progress; it outlives the run.
CutlistOptions& cutlist_options();

void read_cutlist_options(const configb* block);
/// Empties `out`, then fetches the key; an absent key leaves it empty.
LightweightString<char>& read_string_option(const configb* block, LightweightString<char>& out,
                                            const LightweightString<char>& key);
/// "A" or "V" and two digits, in a buffer that the next call overwrites. A type of 0 becomes `picture_channel`.
const char* channel_text(int& type, const int& number);
/// The inverse: type 0 and number 1 for an empty text; numbers outside 1 to 16 become 1.
void parse_channel_text(const char* text, int& type, int& number);
