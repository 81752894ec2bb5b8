#include "base/frame_math.h"
#include "reports/film_overlap.h"
#include "reports/reuse_scan.h"
#include "tests/report_lists/reuse_fixture.h"

#include <rapidcheck.h>

#include <climits>
#include <cstring>
#include <vector>

namespace {

class ReuseScanTest : public ReuseTest {};

TEST_F(ReuseScanTest, SharedFramesAreOneCase) {
    add(film("first", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    add(film("second", "A001", "KJ1234560011+13", "KJ1234560014+00"));
    EXPECT_EQ(cases(), (Cases{{"second", "A001", "KJ1234560011+13", "KJ1234560011+15", "0", "35mm-4p", "2/1"}}));
    EXPECT_EQ(flags(), "TT");
    EXPECT_TRUE(logger.said("Looking for film that is used more than once", 0));
}

TEST_F(ReuseScanTest, PiecesThatTouchAreACaseWithAMarginOfOne) {
    add(film("first", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    add(film("second", "A001", "KJ1234560012+00", "KJ1234560014+00"));
    EXPECT_EQ(cases(), (Cases{{"second", "A001", "KJ1234560012+00", "KJ1234560011+15", "0", "35mm-4p", "2/1"}}));
}

TEST_F(ReuseScanTest, PiecesThatTouchAreNoneWithoutAMargin) {
    options().butt = 0;
    add(film("first", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    add(film("second", "A001", "KJ1234560012+00", "KJ1234560014+00"));
    EXPECT_EQ(cases(), Cases());
    EXPECT_EQ(flags(), "..");
}

TEST_F(ReuseScanTest, AFrameBetweenIsOutsideAMarginOfOne) {
    add(film("first", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    add(film("second", "A001", "KJ1234560012+01", "KJ1234560014+00"));
    EXPECT_EQ(cases(), Cases());
    options().butt = 2;
    EXPECT_EQ(cases().size(), 1u);
}

TEST_F(ReuseScanTest, EachLaterRecordFindsTheFirstEarlierOne) {
    add(film("a", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    add(film("b", "A001", "KJ1234560010+04", "KJ1234560012+00"));
    add(film("c", "A001", "KJ1234560010+08", "KJ1234560012+00"));
    EXPECT_EQ(cases(), (Cases{{"b", "A001", "KJ1234560010+04", "KJ1234560011+15", "0", "35mm-4p", "2/1"},
                              {"c", "A001", "KJ1234560010+08", "KJ1234560011+15", "0", "35mm-4p", "3/1"}}));
    EXPECT_EQ(flags(), "TTT");
}

TEST_F(ReuseScanTest, CasesStandByRollAndThenByKey) {
    for (const char* roll : {"B002", "A001"}) {
        const std::string prefix = std::string("KJ12345") + roll[0];
        add(film("x", roll, prefix + "0010+00", prefix + "0012+00"));
        add(film("y", roll, prefix + "0011+00", prefix + "0012+00"));
        add(film("z", roll, prefix + "0010+08", prefix + "0012+00"));
    }
    std::string order;
    for (const auto& one : cases())
        order += one[1] + one[0] + " ";
    EXPECT_EQ(order, "A001z A001y B002z B002y ");
}

TEST_F(ReuseScanTest, ARollThatTheLastRecordBeginsIsPassedOver) {
    add(film("a", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    add(film("b", "A001", "KJ1234560011+00", "KJ1234560012+00"));
    add(film("c", "B001", "KK1234560010+00", "KK1234560012+00"));
    ASSERT_EQ(cases().size(), 1u);
    EXPECT_EQ(flags(), "TT.");
    EXPECT_EQ(scan->last_frame, 12 * 16) << "the span is that of the roll before";
}

TEST_F(ReuseScanTest, ARecordWithoutARollBeginsNoneButCanBelongToOne) {
    add(film("a", "__BLACK", "KJ1234560010+00", "KJ1234560012+00"));
    add(film("b", "A001", "KJ1234560010+04", "KJ1234560012+00"));
    add(film("c", "__NOLOG", "KJ1234560010+08", "KJ1234560012+00"));
    EXPECT_EQ(cases(), (Cases{{"c", "__NOLOG", "KJ1234560010+08", "KJ1234560011+15", "0", "35mm-4p", "3/2"}}));
    EXPECT_EQ(flags(), ".TT");
}

TEST_F(ReuseScanTest, ARollOfTheSameNameButOtherFilmIsAnotherRoll) {
    add(film("a", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    add(film("b", "A001", "KJ1234570010+00", "KJ1234570012+00"));
    add(film("c", "A001", "KJ1234580010+00", "KJ1234580012+00"));
    EXPECT_EQ(cases(), Cases());
}

TEST_F(ReuseScanTest, MastersAndUpperTracksAreNotCompared) {
    add(film("a", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    cut_s master = film("m", "A001", "KJ1234560010+01", "KJ1234560012+00");
    master.optical_record = 1;
    add(master);
    cut_s upper = film("u", "A001", "KJ1234560010+02", "KJ1234560012+00");
    upper.track = 2;
    upper.optical_ref = 1;
    add(upper);
    EXPECT_EQ(cases(), Cases());
    options().pull_match_assembly = 0;
    EXPECT_EQ(cases().size(), 1u) << "film inside opticals is pulled too";
    EXPECT_EQ(flags(), "T.T");
}

TEST_F(ReuseScanTest, TheOverlapEndsALastFrameAheadAtTheEarlierRecordsSpeed) {
    cut_s slow = film("a", "A001", "KJ1234560010+00", "KJ1234560012+00");
    slow.speed = 2.0;
    add(slow);
    add(film("b", "A001", "KJ1234560011+00", "KJ1234560014+00"));
    EXPECT_EQ(cases()[0][3], "KJ1234560011+14");
}

TEST_F(ReuseScanTest, AKeyBelowZeroIsWarnedOfAndComparedAllTheSame) {
    add(film("a", "A001", "KJ1234560000-04", "KJ1234560012+00"));
    add(film("b", "A001", "KJ1234560001+00", "KJ1234560014+00"));
    EXPECT_EQ(cases().size(), 1u);
    EXPECT_TRUE(logger.said("An event has a key number below zero and is left out of the scan for re-use", 2));
    EXPECT_EQ(scan->first_frame, 16);
    EXPECT_EQ(scan->last_frame, 14 * 16);
    EXPECT_EQ(scan->frame_span, 13 * 16);
}

TEST_F(ReuseScanTest, KeysThatRunBackwardAreComparedAsTheyStand) {
    add(film("a", "A001", "KJ1234560010+00", "KJ1234560014+00"));
    add(film("b", "A001", "KJ1234560012+00", "KJ1234560011+00"));
    EXPECT_EQ(cases().size(), 1u);
}

TEST_F(ReuseScanTest, LongEventNumbersAreCut) {
    add(film("a", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    add(film("b", "A001", "KJ1234560011+00", "KJ1234560014+00"));
    table.set_field(0, cf_event, "1234567890");
    table.set_field(1, cf_event, "9876543210");
    EXPECT_EQ(cases()[0][6], "9876543210/1234");
}

TEST_F(ReuseScanTest, AnEmptyTableHasNoCases) { EXPECT_EQ(cases(), Cases()); }

TEST_F(ReuseScanTest, TheScanOfARunIsMadeOnce) {
    add(film("a", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    ReuseScan& first = run_reuse_scan(table, logger);
    EXPECT_EQ(&run_reuse_scan(table, logger), &first);
    release_reuse_scan();
    EXPECT_EQ(report_context().reuse_scan, nullptr);
}

/// The same question, asked of each pair.
Vector<std::uint32_t> overlaps_by_pairs(const Vector<FilmPiece>& pieces, int margin_frames) {
    Vector<std::uint32_t> result(pieces.size(), no_piece);
    for (std::uint32_t later = 0; later < pieces.size(); ++later) {
        const FilmPiece& b = pieces[later];
        const std::int64_t margin = std::int64_t{b.in.cvt()->samples_per_frame()} * margin_frames;
        for (std::uint32_t earlier = 0; earlier < later; ++earlier) {
            const FilmPiece& a = pieces[earlier];
            if (std::strcmp(a.in.get_prefix(), b.in.get_prefix()) != 0) continue;
            if (b.in.sample - margin >= a.out || b.out < a.in.sample - margin) continue;
            result[later] = earlier;
            break;
        }
    }
    return result;
}

rc::Gen<FilmPiece> any_piece(int span) {
    return rc::gen::apply(
        [](int start, int length, int prefix, int kind) {
            FilmPiece piece;
            piece.in = LabelPoint(start, static_cast<label_t>(kind));
            piece.in.set_prefix(prefix ? "KJ123456" : "KK123456");
            piece.out = wrapped(std::int64_t{start} + length);
            return piece;
        },
        rc::gen::inRange(-span, span), rc::gen::inRange(-20, 40), rc::gen::inRange(0, 2),
        rc::gen::element(10, 11, 12, 0));
}

TEST(FilmOverlap, EqualsTheComparisonOfAllPairs) {
    EXPECT_TRUE(rc::check([] {
        const int span = *rc::gen::element(20, 300, INT_MAX);
        const auto some = *rc::gen::container<std::vector<FilmPiece>>(any_piece(span));
        const Vector<FilmPiece> pieces(some.begin(), some.end());
        const int margin = *rc::gen::element(0, 1, 2, -1, 7, INT_MAX, INT_MIN);
        RC_ASSERT(first_overlaps(pieces, margin) == overlaps_by_pairs(pieces, margin));
    }));
}

/// A scan that compares every record with all ahead of it, loading both anew.
class PlainScan {
public:
    explicit PlainScan(recdb& table) : table_(table) {}

    Cases run() {
        const unsigned count = table_.get_num_records();
        std::string previous;
        for (unsigned i = 0; i + 1 < count; ++i) {
            const std::string roll = field(i, cf_cam_reel);
            if (roll.empty() || roll.rfind("__", 0) == 0 || !eligible(i)) continue;
            if (field(i, cf_keycode_in).substr(0, 8) == previous.substr(0, 8)) continue;
            previous = field(i, cf_keycode_in);
            unsigned last = i;
            for (unsigned j = i + 1; j < count; ++j) {
                if (!eligible(j)) continue;
                if (field(j, cf_keycode_in).substr(0, 8) != previous.substr(0, 8)) break;
                last = j;
            }
            for (unsigned k = last; k > i; --k) {
                if (eligible(k)) compare_with_earlier(i, k);
            }
        }
        return found_;
    }

private:
    std::string field(unsigned record, unsigned number) const { return table_.getField(record, number).c_str(); }
    int number(unsigned record, unsigned column) const { return std::atoi(field(record, column).c_str()); }
    bool eligible(unsigned record) const {
        if (number(record, cf_optical_record) == 1) return false;
        return number(record, cf_track) == 1 ||
               (!cutlist_options().pull_match_assembly && number(record, cf_optical_ref) != 0);
    }
    cut_report load(unsigned record) const {
        const CutlistOptions& options = cutlist_options();
        cut_report cut;
        cut.load(*table_.get_record(record), options.pull_match_assembly, options.chan_type, options.audio_opticals);
        return cut;
    }
    void compare_with_earlier(unsigned from, unsigned later) {
        const cut_report b = load(later);
        const int step = b.cut_key_in.cvt()->samples_per_frame();
        const int margin = step * cutlist_options().butt;
        for (unsigned j = from; j < later; ++j) {
            if (!eligible(j)) continue;
            const cut_report a = load(j);
            if (std::strcmp(a.cut_key_in.get_prefix(), b.cut_key_in.get_prefix()) != 0) continue;
            if (b.cut_key_in.sample - margin >= a.cut_key_out.sample) continue;
            if (b.cut_key_out.sample < a.cut_key_in.sample - margin) continue;
            LabelPoint low = b.cut_key_in;
            LabelPoint high = b.cut_key_in;
            low.set_sample(std::max(a.cut_key_in.sample, b.cut_key_in.sample));
            high.set_sample(std::min(a.cut_key_out.sample, b.cut_key_out.sample) - static_cast<int>(step * a.speed));
            table_.set_field(later, cf_flags, "T");
            table_.set_field(j, cf_flags, "T");
            found_.push_back({field(later, cf_shot_name), field(later, cf_cam_reel), low.get_string(),
                              high.get_string(), std::to_string(b.keycode_missing),
                              label_type_to_edlstr(b.cut_key_in.type()), field(later, 0) + "/" + field(j, 0)});
            return;
        }
    }

    recdb& table_;
    Cases found_;
};

// Nothing comes behind it that it could be compared with, so its key number isn't looked at.
TEST_F(ReuseScanTest, TheLastRecordStartsNoRoll) {
    cut_s last = film("last", "B001", "KK1234560000+00", "KK1234560002+00");
    last.keycode_in.set_sample(-64);
    const std::string told = toUTF8(resourceStrW(10474)).c_str();
    add(film("first", "A001", "KJ1234560010+00", "KJ1234560012+00"));
    add(last);
    EXPECT_EQ(cases(), Cases());
    EXPECT_EQ(table.getField(1, cf_cam_reel), "B001");
    EXPECT_FALSE(logger.said(told, 2));
    add(film("behind", "C001", "KL1234560010+00", "KL1234560012+00"));
    EXPECT_EQ(cases(), Cases());
    EXPECT_TRUE(logger.said(told, 2));
}

void fill_with_any_events(recdb& table, int count) {
    for (int event = 1; event <= count; ++event) {
        const int start = *rc::gen::inRange(0, 400);
        cut_s cut;
        cut.event = event;
        cut.track = *rc::gen::weightedElement<int>({{5, 1}, {1, 2}});
        cut.optical_ref = *rc::gen::weightedElement<int>({{3, 0}, {1, 1}});
        cut.optical_record = *rc::gen::weightedElement<int>({{6, 0}, {1, 1}});
        put_text(cut.cam_reel, *rc::gen::element<const char*>("A001", "B002", "__BLACK", ""));
        cut.keycode_in = LabelPoint(start * 4, label_key_35mm_4p);
        cut.keycode_in.set_prefix(*rc::gen::element<const char*>("KJ123456", "KK123456"));
        cut.keycode_out = cut.keycode_in;
        cut.keycode_out.set_sample((start + *rc::gen::inRange(-5, 60)) * 4);
        put_text(cut.fx_op_in, *rc::gen::element<const char*>("", "D", "FI"));
        cut.fx_len_in = *rc::gen::inRange(0, 12);
        cut.speed = *rc::gen::element(1.0, 0.5, 1.5, 0.0);
        cut.to_record(*table.get_record(static_cast<unsigned>(table.add_records(1))));
    }
}

TEST_F(ReuseScanTest, FindsWhatComparingAllPairsFinds) {
    EXPECT_TRUE(rc::check([this] {
        cutdb fresh(&logger);
        fill_with_any_events(fresh, *rc::gen::inRange(0, 40));
        options().butt = *rc::gen::inRange(0, 4);
        options().pull_match_assembly = *rc::gen::inRange(0, 2);
        // Both sort in the same way, so the plain scan runs on a sorted copy.
        const std::unique_ptr<ReuseScan> made = scan_reuse(fresh, logger);
        recdb copy(fresh, 1);
        for (unsigned record = 0; record < copy.get_num_records(); ++record)
            copy.set_field(record, cf_flags, "");
        Cases plain = PlainScan(copy).run();
        std::stable_sort(plain.begin(), plain.end(),
                         [](const auto& a, const auto& b) { return std::tie(a[1], a[2]) < std::tie(b[1], b[2]); });
        RC_ASSERT(cases_of(*made) == plain);
        RC_ASSERT(made->reuse_count == static_cast<int>(plain.size()));
        RC_ASSERT(made->case_count == made->reuse_count);
        RC_ASSERT(flags_of(fresh) == flags_of(copy));
    }));
}

} // namespace
