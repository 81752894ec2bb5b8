#pragma once
// Tables of events and opticals made in code, and the single-layer lists of them as text.

#include "cutlist/cutlist_options.h"
#include "cutlist/single_layer_lists.h"
#include "host/fixed_text.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"
#include "tests/support/recording_logger.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

class LayerTest : public testing::Test {
protected:
    using Writer = void (*)(cutdb*, LoggerHandle&);

    LayerTest() {
        cutlist_options() = CutlistOptions();
        cutlist_options().output_file = fromUTF8(scratch.file("reel.txt").c_str(), -1);
    }
    ~LayerTest() override { cutlist_options() = CutlistOptions(); }

    static LabelPoint key(const char* text) {
        LabelPoint point(0, static_cast<label_t>(10));
        point.set_sample(text);
        return point;
    }

    /// A clip on 35mm whose film begins at the frame `key_in` of a roll.
    static cut_s clip(int track, int in, int out, const char* name, int key_in = 0) {
        cut_s cut;
        cut.track = track;
        cut.edit_in = in;
        cut.edit_out = out;
        cut.shot_name = fromUTF8(name, -1);
        put_text(cut.cam_reel, "A001");
        cut.keycode_in = key("KJ1234560100+00");
        cut.keycode_in += 4 * key_in;
        cut.keycode_out = cut.keycode_in;
        cut.keycode_out += 4 * (out - in);
        return cut;
    }
    static cut_s with_in(cut_s cut, const char* operation, int frames) {
        put_text(cut.fx_op_in, operation);
        cut.fx_len_in = frames;
        return cut;
    }
    static cut_s with_out(cut_s cut, const char* operation, int frames) {
        put_text(cut.fx_op_out, operation);
        cut.fx_len_out = frames;
        return cut;
    }
    static cut_s with_cue(cut_s cut, const char* text) {
        cut.clip_cue = 1;
        put_text(cut.cue_description, text);
        return cut;
    }
    static cut_s black(int in, int out) {
        cut_s cut;
        cut.track = 1;
        cut.edit_in = in;
        cut.edit_out = out;
        cut.special = special_black;
        put_text(cut.cam_reel, "__BLACK");
        return cut;
    }
    static cut_s rendered(int track, int in, int out) {
        cut_s cut = clip(track, in, out, "");
        cut.special = special_no_material;
        put_text(cut.cam_reel, "RENDERED");
        return cut;
    }
    static cut_s optical(int in, int out, const char* name) {
        cut_s cut;
        cut.optical_record = 1;
        cut.edit_in = cut.optical_in = in;
        cut.edit_out = cut.optical_out = out;
        put_text(cut.optical_name, name);
        return cut;
    }

    void add(const cut_s& cut) { cut.to_record(*table.get_record(static_cast<unsigned>(table.add_records(1)))); }

    bool stands(const char* extension) const {
        return std::filesystem::exists(scratch.file(std::string("reel.") + extension));
    }

    /// A list with its columns parted by "|", as no test's text holds tabs.
    std::string list(Writer write, const char* extension) {
        write(&table, logger);
        std::string text = bytes_of_file(scratch.file(std::string("reel.") + extension));
        std::replace(text.begin(), text.end(), '\t', '|');
        return text;
    }
    std::string sl1() { return list(write_sl1_file, "sl1"); }
    std::string sl2() { return list(write_sl2_file, "sl2"); }
    std::string sl3() { return list(write_sl3_file, "sl3"); }
    std::string sl4() { return list(write_sl4_file, "sl4"); }

    ScratchDirectory scratch;
    RecordingLogger logger;
    cutdb table{&logger};
};
