#include "documents/svg.h"
#include "tests/documents/svg_picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using namespace documents;
using documents_test::SvgElement;
using documents_test::SvgPicture;
using testing::Contains;
using testing::HasSubstr;

DrawnPiece piece(int lane, std::int64_t start, std::int64_t length, const std::string& name = "40/1") {
    DrawnPiece made;
    made.film = "event-" + std::to_string(start);
    made.lane = lane;
    made.start = start;
    made.length = length;
    made.name = name;
    return made;
}

/// Pieces of these lengths, one behind the other.
Drawing strip(const std::vector<std::int64_t>& lengths, Way way = Way::along) {
    Drawing drawing;
    drawing.id = "strip";
    drawing.title = "A strip";
    drawing.description = "Its pieces";
    drawing.film = label_key_35mm_4p;
    drawing.way = way;
    drawing.lanes.emplace_back();
    for (const std::int64_t length : lengths) {
        drawing.pieces.push_back(piece(0, drawing.end, length));
        drawing.end += length;
    }
    return drawing;
}

/// Frames of each film by its name, as the picture's lengths have them.
std::map<std::string, long> frames_in(const SvgPicture& picture, const char* side) {
    std::map<std::string, long> frames;
    const long unit = picture.root().number("data-units");
    for (const SvgElement& film : picture.of_kind("film")) {
        EXPECT_EQ(film.number(side), film.number("data-frames") * unit);
        frames[film.at("data-film")] += film.number(side) / unit;
    }
    return frames;
}

RC_GTEST_PROP(SvgLengths, areTheFramesOfTheFilm, (std::vector<int> raw, bool down)) {
    std::vector<std::int64_t> lengths;
    for (const int length : raw)
        lengths.push_back(1 + std::abs(length % 500));
    const Drawing drawing = strip(lengths, down ? Way::down : Way::along);
    const SvgPicture picture(svg_of(drawing));
    RC_ASSERT(!picture.elements.empty());
    const auto frames = frames_in(picture, down ? "height" : "width");
    for (const DrawnPiece& drawn : drawing.pieces)
        RC_ASSERT(frames.at(drawn.film) == drawn.length);
}

TEST(Svg, PiecesLieWhereTheirFramesAre) {
    const SvgPicture picture(svg_of(strip({48, 60, 24})));
    const std::vector<SvgElement> films = picture.of_kind("film");
    ASSERT_EQ(films.size(), 3U);
    const long unit = picture.root().number("data-units");
    EXPECT_EQ(films[1].number("x") - films[0].number("x"), 48 * unit);
    EXPECT_EQ(films[2].number("x") - films[0].number("x"), 108 * unit);
    EXPECT_EQ(films[2].number("data-start"), 108);
}

TEST(Svg, ALongReelWrapsIntoLinesOfOneScale) {
    const SvgPicture picture(svg_of(strip(std::vector<std::int64_t>(300, 50))));
    EXPECT_LE(picture.root().number("width"), 700);
    EXPECT_GT(picture.root().number("height"), 1000);
    std::map<long, int> heights;
    for (const SvgElement& film : picture.of_kind("film"))
        ++heights[film.number("height")];
    EXPECT_EQ(heights.size(), 1U);
}

TEST(Svg, TransitionsAreTiedAndTold) {
    Drawing drawing;
    drawing.way = Way::down;
    drawing.film = label_key_35mm_4p;
    drawing.end = 120;
    drawing.lanes = {{"A roll", ""}, {"B roll", ""}};
    drawing.pieces = {piece(0, 0, 72), piece(1, 48, 72, "42/3")};
    drawing.transitions = {{"event-0", 0, 1, 48, 24, "Dissolve 24", "48–71"}};
    const SvgPicture picture(svg_of(drawing));
    const std::vector<SvgElement> diagonals = picture.of_kind("transition");
    ASSERT_EQ(diagonals.size(), 2U);
    const long unit = picture.root().number("data-units");
    for (const SvgElement& diagonal : diagonals) {
        EXPECT_EQ(diagonal.number("y2") - diagonal.number("y1"), 24 * unit);
        EXPECT_NE(diagonal.number("x1"), diagonal.number("x2"));
    }
    EXPECT_THAT(picture.texts(), Contains("Dissolve 24"));
    EXPECT_THAT(svg_of(drawing), HasSubstr("stroke-dasharray=\"10 24\""));
}

TEST(Svg, BandsTieTheFramesThatStay) {
    Drawing drawing = strip({48, 66, 60});
    drawing.lanes = {{"Old", ""}, {"New", ""}};
    drawing.pieces.push_back(piece(1, 0, 48));
    drawing.pieces.push_back(piece(1, 48, 60));
    drawing.bands = {{0, 0, 0, 48}, {0, 114, 48, 60}};
    const SvgPicture picture(svg_of(drawing));
    const std::vector<SvgElement> bands = picture.of_kind("band");
    ASSERT_EQ(bands.size(), 2U);
    EXPECT_EQ(bands[1].number("data-start"), 114);
    EXPECT_EQ(bands[1].number("data-frames"), 60);
}

TEST(Svg, BandsToAnotherLineOnlyBegin) {
    Drawing drawing = strip({40000, 500});
    drawing.lanes = {{"Old", ""}, {"New", ""}};
    drawing.pieces.push_back(piece(1, 0, 500));
    drawing.bands = {{0, 40000, 0, 500}};
    const SvgPicture picture(svg_of(drawing));
    EXPECT_TRUE(picture.of_kind("band").empty());
    EXPECT_THAT(svg_of(drawing), HasSubstr("polygon"));
}

TEST(Svg, PatternsAreDrawnAndNamedOnlyWhereTheyAreUsed) {
    Drawing drawing = strip({48, 60});
    EXPECT_EQ(svg_of(drawing).find("<pattern"), std::string::npos);
    drawing.pieces[1].fill = Fill::hatched;
    EXPECT_THAT(svg_of(drawing), HasSubstr("<pattern id=\"hatched\""));
    EXPECT_THAT(svg_of(drawing, {{}, true}), HasSubstr("fill=\"url(#strip-hatched)\""));
    EXPECT_EQ(svg_of(drawing).find("\"crossed\""), std::string::npos);
}

TEST(Svg, TitleAndDescriptionSayTheSame) {
    const SvgPicture picture(svg_of(strip({48})));
    ASSERT_GE(picture.elements.size(), 3U);
    EXPECT_EQ(picture.elements[1].name, "title");
    EXPECT_EQ(picture.elements[1].text, "A strip");
    EXPECT_EQ(picture.elements[2].name, "desc");
}

TEST(Svg, TheFootTellsTheScale) {
    // 48 frames of 64 eighths of a pixel: a foot is 128 pixels, 33.9 mm.
    EXPECT_THAT(SvgPicture(svg_of(strip({48}))).texts(), Contains("To scale: one foot is 33.9 mm."));
}

TEST(Svg, IsAsWideAsItsFoot) {
    Drawing drawing = strip({8});
    drawing.patterns = "Dots: " + std::string(200, 'W');
    const SvgPicture picture(svg_of(drawing));
    const std::int64_t foot = text_width(picture.texts().back(), Letters::sans) * 10;
    EXPECT_GE(picture.root().number("width"), foot / 1000);
    EXPECT_LE(picture.root().number("width"), foot / 1000 + 4);
}

/// What stands beside its part of a picture.
std::vector<std::string> texts_outside(const Sketch& sketch) {
    std::vector<std::string> outside;
    for (const SketchPart& part : sketch.parts)
        for (const SketchText& text : part.texts) {
            const std::int64_t width = text_width(text.text, text.letters) * text.size / 1000;
            const std::int64_t ahead = text.anchor == Anchor::start    ? 0
                                       : text.anchor == Anchor::middle ? width / 2
                                                                       : width;
            const bool inside = text.at.x - ahead >= 0 && text.at.x - ahead + width <= sketch.width &&
                                text.at.y - text.size / 2 >= 0 && text.at.y <= part.height;
            if (!inside) outside.push_back(text.text);
        }
    return outside;
}

RC_GTEST_PROP(Sketches, haveAllTheirTextsInside, (std::vector<int> raw, bool down)) {
    std::vector<std::int64_t> lengths{16};
    for (const int length : raw)
        lengths.push_back(1 + std::abs(length % 60));
    Drawing drawing = strip(lengths, down ? Way::down : Way::along);
    for (DrawnPiece& piece : drawing.pieces) {
        piece.details = {"roll A001", "tape T1"};
        if (down) piece.numbers = {{piece.start, "KJ 12 3456 0100+00"}, {piece.start + piece.length, "0103+04"}};
    }
    RC_ASSERT(texts_outside(sketch_of(drawing)) == std::vector<std::string>());
}

TEST(Svg, NamesDontBreakOut) {
    for (const std::string& name : {std::string("</text><script>x</script>"), std::string("a\"b'c&d"),
                                    std::string("\x01\x7F\xFF\xC0\x80"), std::string("\n]]>"),
                                    std::string("\xE2\x80\xAE"
                                                "abc"),
                                    std::string(2000, 'W')}) {
        Drawing drawing = strip({48, 400});
        drawing.title = name;
        drawing.pieces[1].name = name;
        drawing.pieces[1].told = name;
        drawing.pieces[1].film = name;
        for (const Way way : {Way::along, Way::down}) {
            drawing.way = way;
            const SvgPicture picture(svg_of(drawing));
            ASSERT_FALSE(picture.elements.empty()) << name;
            for (const SvgElement& element : picture.elements)
                EXPECT_NE(element.name, "script");
            EXPECT_LE(picture.root().number("width"), 900) << name;
        }
    }
}

TEST(Svg, NamesStayWholeInWhatIsToldOfAPiece) {
    Drawing drawing = strip({48});
    drawing.pieces[0].told = "Анна <1>";
    const SvgPicture picture(svg_of(drawing));
    std::vector<std::string> titles;
    for (const SvgElement& element : picture.elements)
        if (element.name == "title") titles.push_back(element.text);
    EXPECT_THAT(titles, testing::ElementsAre("A strip", "Анна <1>"));
}

TEST(Svg, TheSameDrawingGivesTheSameBytes) { EXPECT_EQ(svg_of(strip({48, 60, 24})), svg_of(strip({48, 60, 24}))); }

TEST(Svg, WhatIsTooLongIsSaidAndNotDrawn) {
    Drawing drawing = strip({48});
    drawing.end = std::int64_t{1} << 40;
    const SvgPicture picture(svg_of(drawing));
    EXPECT_THAT(picture.texts(), Contains("Too long to be drawn: 1099511627776 frames"));
}

} // namespace
