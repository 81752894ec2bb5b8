#include "documents/film_count.h"
#include "documents/pdf_text.h"
#include "documents/sketch_draft.h"

#include <cairo.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using namespace documents;

RC_GTEST_PROP(Spread, neverLaysOneTextOverAnother, (std::vector<int> places)) {
    std::sort(places.begin(), places.end());
    std::vector<Wanted> wanted;
    for (const int place : places)
        wanted.push_back({place % 100000, 20});
    std::sort(wanted.begin(), wanted.end(), [](const Wanted& a, const Wanted& b) { return a.centre < b.centre; });
    const std::vector<std::int64_t> centres = spread(wanted, 0);
    RC_ASSERT(centres.size() == wanted.size());
    for (std::size_t i = 0; i < centres.size(); ++i)
        RC_ASSERT(centres[i] >= (i == 0 ? 10 : centres[i - 1] + 20));
}

TEST(Spread, LeavesWhatHasRoomWhereItIs) {
    EXPECT_EQ(spread({{50, 20}, {100, 20}}, 0), (std::vector<std::int64_t>{50, 100}));
    EXPECT_EQ(spread({{100, 20}, {100, 20}}, 0), (std::vector<std::int64_t>{90, 110}));
    EXPECT_EQ(spread({{5, 20}}, 0), (std::vector<std::int64_t>{10}));
}

TEST(TextRows, TakeTheFirstRowWithRoom) {
    TextRows rows(2);
    EXPECT_EQ(rows.take(0, 50), 0);
    EXPECT_EQ(rows.take(40, 90), 1);
    EXPECT_EQ(rows.take(50, 60), 0);
    EXPECT_EQ(rows.take(45, 55), -1);
    EXPECT_EQ(rows.take_existing(60, 70), 0);
}

TEST(Ruler, CountsFeetOfTheFilm) {
    const auto texts = [](label_t film, const Stretch& over, std::int64_t least) {
        std::string all;
        for (const RulerMark& mark : ruler_marks(film, over, 1, least))
            all += mark.text + '@' + std::to_string(mark.frame) + ' ';
        return all;
    };
    EXPECT_EQ(texts(label_key_35mm_4p, {0, 48}, 1), "0@0 1@16 2@32 3@48 ");
    EXPECT_EQ(texts(label_key_35mm_4p, {100, 200}, 30), "8@128 10@160 12@192 ");
    EXPECT_EQ(texts(edlstr_to_label_type("35mm-3p"), {0, 64}, 1), "0@0 1@21 2@42 3@64 ");
    EXPECT_EQ(texts(edlstr_to_label_type("16mm-1p"), {0, 80}, 1), "0@0 1@40 2@80 ");
    EXPECT_EQ(texts(edlstr_to_label_type("65mm-5p120"), {0, 100}, 40), "0@0 50@50 100@100 ");
}

RC_GTEST_PROP(Ruler, agreesWithTheLabelsOfTheFilm, (int raw)) {
    for (const char* kind : {"35mm-4p", "35mm-3p", "35mm-2p", "35mm-8p", "16mm-1p"}) {
        const label_t film = edlstr_to_label_type(kind);
        const std::int64_t foot = std::abs(raw % 9999);
        const std::string text = position_text(film, feet_of(film).first_frame(foot));
        RC_ASSERT(std::stol(text.substr(0, text.find('+'))) == foot);
        RC_ASSERT(text.substr(text.find('+') + 1, 2) == "00");
        RC_ASSERT(feet_of(film).foot_of(feet_of(film).first_frame(foot)) == foot);
        RC_ASSERT(foot == 0 || feet_of(film).foot_of(feet_of(film).first_frame(foot) - 1) == foot - 1);
    }
}

TEST(KeyNumbers, AreGrouped) {
    film::Count count;
    count.kind = label_key_35mm_4p;
    count.prefix = "KJ291010";
    count.first = film::Fraction(5867 * 16 + 5);
    EXPECT_EQ(key_parts(count, 0).whole(), "KJ 29 1010 5867+05");
    EXPECT_EQ(key_parts(count, 11).count, "5868+00");
    EXPECT_EQ(grouped_prefix("__BLACK_"), "__BLACK_");
    EXPECT_EQ(key_parts({}, 0).whole(), "");
}

TEST(TextWidth, CountsWideAndNarrowCharacters) {
    EXPECT_EQ(text_width("灯台", Letters::sans), 2080);
    EXPECT_EQ(text_width("10+04", Letters::mono), 5 * 602);
    EXPECT_EQ(text_width("e\xCC\x81", Letters::sans), text_width("e", Letters::sans));
    EXPECT_GT(text_width("Wm", Letters::bold), text_width("Wm", Letters::sans));
}

// Pictures are laid out by these, and pages put down with the font itself.
TEST(TextWidth, IsThatOfTheFontOfPages) {
    cairo_surface_t* const surface = cairo_recording_surface_create(CAIRO_CONTENT_COLOR, nullptr);
    cairo_t* const page = cairo_create(surface);
    {
        PdfText text(page);
        const std::pair<Letters, PdfStyle> faces[] = {{Letters::sans, {PdfSize::body, Weight::plain, false}},
                                                      {Letters::bold, {PdfSize::body, Weight::strong, false}},
                                                      {Letters::mono, {PdfSize::body, Weight::plain, true}}};
        for (const auto& [letters, style] : faces)
            for (char c = ' '; c <= '~'; ++c) {
                const double width = text.width_of(std::string(1, c), style) * 1000.0 / points_of(PdfSize::body);
                EXPECT_NEAR(static_cast<double>(text_width(std::string(1, c), letters)), width, 0.6) << c;
            }
    }
    cairo_destroy(page);
    cairo_surface_destroy(surface);
}

RC_GTEST_PROP(TextWidth, shortenedTextsAreNoWiderThanAsked, (const std::string& text, unsigned char room)) {
    const std::int64_t width = 1000 + room * 20;
    const std::string cut = shortened(text, Letters::bold, width);
    RC_ASSERT(text_width(cut, Letters::bold) <= width);
    if (text_width(text, Letters::bold) <= width) RC_ASSERT(cut == text);
}

} // namespace
