// Edits of every shape, with sane and with absurd numbers.

#include "reports/cut_s.h"
#include "tests/generator/any_edit.h"
#include "tests/generator/generator_fixture.h"

#include <rapidcheck.h>

using namespace generator_test;

namespace {

class RandomEdits : public GeneratorTest {
protected:
    std::string table_bytes() const {
        std::string bytes;
        embedded::read_file(scratch.file("list.cdb"), &bytes, nullptr);
        return bytes;
    }
    void choose_options() {
        block.set("chan_type", std::to_string(number(1, 3)));
        block.set("chan_num", std::to_string(one_in(5) ? number(-1, 4) : 0));
        block.set("pull_match_assembly", std::to_string(number(0, 2)));
        block.set("long_keycode", std::to_string(number(-1, 4)));
        embedded::set_host_setting("allow_auto_unrender", one_in(4) ? 1 : 0);
    }
};

TEST_F(RandomEdits, AreListedTheSameWayTwiceOrRefusedWithoutAFile) {
    EXPECT_TRUE(rc::check([this] {
        choose_options();
        const EditPtr edit = any_edit();
        std::filesystem::remove(scratch.file("list.cdb"));
        logger.lines.clear();
        const bool made = make(edit, EditBuilder::cues_of(edit));
        const std::string first = table_bytes();
        RC_CLASSIFY(made);
        RC_ASSERT(made == stands("list.cdb"));
        RC_ASSERT(!made || !logger.said_at(4));
        RC_ASSERT(make(edit, EditBuilder::cues_of(edit)) == made);
        RC_ASSERT(table_bytes() == first);
    }));
}

// Tracks, kinds and positions of the rows are in order up to the chains at the end, and a record of a track
// that follows a transition of that track tells its other half.
TEST_F(RandomEdits, TransitionsAreToldOnBothSides) {
    EXPECT_TRUE(rc::check([this] {
        choose_options();
        block.set("chan_type", "1");
        const EditPtr edit = any_edit();
        if (!make(edit, EditBuilder::cues_of(edit))) return;
        const cutdb& list = table();
        cut_s before;
        for (unsigned row = 0; row < list.get_num_records(); ++row) {
            cut_s now;
            now.from_record(*list.get_record(row));
            const std::string out(now.fx_op_out), in(now.fx_op_in);
            RC_ASSERT(out.empty() || out == "DO" || out == "WO" || out == "FO");
            RC_ASSERT(in.empty() || in == "DI" || in == "WI" || in == "FI");
            if (now.track != 0 && now.track == before.track && now.edit_in > before.edit_in) {
                RC_ASSERT(in.empty() == (before.fx_op_out[0] == '\0'));
                RC_ASSERT(now.fx_len_in == before.fx_len_out);
            }
            before = now;
        }
    }));
}

} // namespace
