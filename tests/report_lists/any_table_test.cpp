// Tables that no generator writes: every list must come to its end on them.

#include "reports/opticals_list.h"
#include "reports/pull_list.h"
#include "tests/report_lists/reuse_fixture.h"

#include <rapidcheck.h>

#include <climits>

namespace {

class AnyTable : public ReuseTest {
protected:
    static std::string any_field() {
        return *rc::gen::weightedElement<std::string>({{6, "0"},
                                                       {6, "1"},
                                                       {4, "2"},
                                                       {2, "-1"},
                                                       {4, ""},
                                                       {3, "A001"},
                                                       {3, "D"},
                                                       {6, "KJ1234560010+00"},
                                                       {3, "KJ12345633554431+15"},
                                                       {3, "KJ1234560000-05"},
                                                       {1, "+99.9"},
                                                       {6, "35mm-4p"},
                                                       {2, "35mm-3p"},
                                                       {2, "30df"},
                                                       {2, "2147483647"},
                                                       {2, "-2147483648"},
                                                       {1, "1e300"},
                                                       {1, "nan"},
                                                       {1, "|p%s|"},
                                                       {1, std::string(300, 'x')}});
    }
    void fill() {
        table.delete_records(0, table.get_num_records());
        const int count = *rc::gen::inRange(0, 12);
        for (int record = 0; record < count; ++record) {
            dbrecord& row = *table.get_record(static_cast<unsigned>(table.add_records(1)));
            for (int field = 0; field < cf_count; ++field)
                row.set_field(field, any_field().c_str(), true);
            row.set_field(cf_optical_record, *rc::gen::weightedElement<int>({{3, 0}, {1, 1}}));
            row.set_field(cf_special, *rc::gen::weightedElement<int>({{3, 0}, {1, 98}}));
            row.set_field(cf_keylabeltype, "35mm-4p", true);
        }
        options().pull_match_assembly = *rc::gen::inRange(0, 2);
        options().pull_sort_by_keycode = *rc::gen::inRange(0, 2);
        options().chan_type = *rc::gen::inRange(1, 3);
        options().edit_units = *rc::gen::inRange(0, 2);
        options().butt = *rc::gen::element(0, 1, INT_MAX, INT_MIN);
        options().pull_handle = *rc::gen::element(0, 24, INT_MAX, INT_MIN);
    }
};

TEST_F(AnyTable, HasPullLists) {
    EXPECT_TRUE(rc::check([this] {
        fill();
        release_reuse_scan();
        const std::string text = printed([this](report& out) { print_pull_list(out, table, logger); });
        RC_ASSERT(text.find("End of pull list") != text.npos);
        RC_ASSERT(text.substr(text.size() - 5) == "<FF>\n");
        const bool both = options().pull_match_assembly == 0 && options().chan_type == 1;
        RC_ASSERT((text.find("End of opticals pull list") != text.npos) == both);
    }));
}

TEST_F(AnyTable, HasAnOpticalsList) {
    EXPECT_TRUE(rc::check([this] {
        fill();
        options().one_page_optical = 0;
        bool any = false;
        for (unsigned record = 0; record < table.get_num_records(); ++record)
            any = any || table.getField(record, cf_optical_record) == "1";
        const std::string text = printed([this](report& out) { print_opticals_list(out, table, logger); });
        RC_ASSERT((text.find("The reel contains no opticals\n<FF>\n") == text.npos) == any);
        RC_ASSERT((text.find("OPTICAL#") != text.npos) == any);
    }));
}

} // namespace
