// What patterns and shapes of a page look like, as pixels of an image.

#include "documents/pdf_strokes.h"

#include "documents/pdf_sketch.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using namespace documents;

/// A white page, a pixel for each point; what is drawn on it is as dark as its ink covers a pixel.
class Image {
public:
    static constexpr int width = 240, height = 240;

    explicit Image(const std::function<void(cairo_t*)>& draw)
        : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height), cairo_surface_destroy) {
        const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> page(cairo_create(surface_.get()), cairo_destroy);
        cairo_set_source_rgb(page.get(), 1.0, 1.0, 1.0);
        cairo_paint(page.get());
        cairo_set_source_rgb(page.get(), 0.0, 0.0, 0.0);
        draw(page.get());
        cairo_surface_flush(surface_.get());
    }

    /// 0 of white, 1 of black.
    double dark(int x, int y) const {
        const unsigned char* const row =
            cairo_image_surface_get_data(surface_.get()) + y * cairo_image_surface_get_stride(surface_.get());
        return 1.0 - row[x * 4 + 1] / 255.0;
    }

    double dark_of(int left, int top, int right, int bottom) const {
        double sum = 0.0;
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x)
                sum += dark(x, y);
        return sum / ((right - left) * (bottom - top));
    }

private:
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
};

/// How far two images differ at most, inside an area.
double difference(const PdfArea& area, const std::function<double(int, int)>& one,
                  const std::function<double(int, int)>& other) {
    double most = 0.0;
    for (int y = static_cast<int>(area.top); y < area.bottom; ++y)
        for (int x = static_cast<int>(area.left); x < area.right; ++x)
            most = std::max(most, std::abs(one(x, y) - other(x, y)));
    return most;
}

Image hatched(const PdfArea& area, double slope, double step = 16.0, double width = 4.0) {
    return Image([&](cairo_t* page) { put_hatch(page, area, step, width, slope); });
}

constexpr PdfArea hatch_area{48.0, 40.0, 176.0, 120.0};
constexpr PdfArea inside_hatch{66.0, 58.0, 158.0, 102.0};

TEST(Hatch, RisesToTheSideThatItsSlopeNames) {
    for (const int slope : {1, -1}) {
        const Image image = hatched(hatch_area, slope);
        const auto as_it_is = [&](int x, int y) { return image.dark(x, y); };
        const auto one_row_up = [&](int x, int y) { return image.dark(x + slope, y - 1); };
        const auto one_step_on = [&](int x, int y) { return image.dark(x + 16, y); };
        const auto the_other_way = [&](int x, int y) { return image.dark(x - slope, y - 1); };
        EXPECT_LT(difference(inside_hatch, as_it_is, one_row_up), 0.02) << slope;
        EXPECT_LT(difference(inside_hatch, as_it_is, one_step_on), 0.02) << slope;
        EXPECT_GT(difference(inside_hatch, as_it_is, the_other_way), 0.5) << slope;
    }
}

TEST(Hatch, LinesAreAsThickAsTheyShouldBe) {
    for (const double width : {2.0, 4.0}) {
        const Image image = hatched(hatch_area, 1.0, 16.0, width);
        EXPECT_NEAR(image.dark_of(66, 58, 66 + 64, 58 + 32), width * std::sqrt(2.0) / 16.0, 0.02);
    }
}

TEST(Hatch, GoesThroughTheLeftEdgeAtTheBottom) {
    for (const double slope : {1.0, -1.0}) {
        const Image image = hatched({0.0, 40.0, 176.0, 120.0}, slope);
        for (int line = 2; line < 8; ++line) {
            EXPECT_GT(image.dark(line * 16, 119), 0.5) << slope;
            EXPECT_EQ(image.dark(line * 16 + 8, 119), 0.0) << slope;
        }
    }
}

TEST(Hatch, AreasSideBySideGoOnInEachOther) {
    for (const double slope : {1.0, -1.0}) {
        const Image whole = hatched(hatch_area, slope);
        const PdfArea behind{101.0, hatch_area.top, hatch_area.right, hatch_area.bottom};
        const Image part = hatched(behind, slope);
        const PdfArea shared{119.0, 58.0, 158.0, 102.0};
        EXPECT_LT(
            difference(
                shared, [&](int x, int y) { return whole.dark(x, y); }, [&](int x, int y) { return part.dark(x, y); }),
            0.02);
    }
}

TEST(Dots, LieInTheMiddleOfTheirSquaresWhicheverWayRowsRun) {
    for (const PdfArea& area : {PdfArea{32.0, 32.0, 208.0, 96.0}, PdfArea{32.0, 32.0, 96.0, 208.0}}) {
        const Image image([&](cairo_t* page) { put_dots(page, area, 16.0, 6.0); });
        for (int y = 32; y < area.bottom; y += 16)
            for (int x = 32; x < area.right; x += 16) {
                EXPECT_GT(image.dark(x + 8, y + 8), 0.9) << x << ' ' << y;
                EXPECT_EQ(image.dark(x, y), 0.0) << x << ' ' << y;
                EXPECT_NEAR(image.dark_of(x, y, x + 16, y + 16), 9.0 * 3.14159 / 256.0, 0.02);
            }
    }
}

TEST(Dots, AreasSideBySideGoOnInEachOther) {
    const Image whole([](cairo_t* page) { put_dots(page, {0.0, 0.0, 240.0, 240.0}, 16.0, 6.0); });
    for (const PdfArea& area : {PdfArea{107.0, 150.0, 238.0, 210.0}, PdfArea{185.0, 90.0, 230.0, 238.0}}) {
        const Image part([&](cairo_t* page) { put_dots(page, area, 16.0, 6.0); });
        EXPECT_LT(
            difference(
                area, [&](int x, int y) { return whole.dark(x, y); }, [&](int x, int y) { return part.dark(x, y); }),
            0.02);
    }
}

TEST(Dots, RowsRunTheLongerWayOfTheAreaWhereverItLies) {
    // Rows go on by up to a step behind the area, across they don't.
    const Image tall([](cairo_t* page) { put_dots(page, {96.0, 16.0, 128.0, 112.0}, 16.0, 6.0); });
    const Image wide([](cairo_t* page) { put_dots(page, {16.0, 96.0, 112.0, 128.0}, 16.0, 6.0); });
    EXPECT_EQ(tall.dark_of(132, 0, 240, 240), 0.0);
    EXPECT_EQ(wide.dark_of(0, 132, 240, 240), 0.0);
}

/// A square of 160 points, drawn at its own size.
Image square(Ink ink, Pen pen, bool light = false) {
    return Image([=](cairo_t* page) {
        PdfText text(page);
        SketchPart part;
        const auto side = static_cast<std::int64_t>(160 / points_of_unit);
        SketchShape shape;
        shape.points = {{0, 0}, {side, 0}, {side, side}, {0, side}};
        shape.ink = ink;
        shape.pen = pen;
        shape.light = light;
        part.shapes = {shape};
        if (light) cairo_paint(page);
        draw_sketch(page, text, part, 40.0, 40.0, 1.0);
    });
}

TEST(SketchOnPages, InksAreAsDarkAsThePatternsAre) {
    const struct {
        Ink ink;
        double dark;
    } inks[] = {{Ink::none, 0.0},
                {Ink::white, 0.0},
                {Ink::grey, 0.12},
                {Ink::black, 0.93},
                // a dot of 2/7 across in its square, of grey 0.33; lines of 11/56 or twice 8/56, slanted, of grey 0.4
                {Ink::dots, 0.043},
                {Ink::hatched, 0.167},
                {Ink::crossed, 0.218}};
    for (const auto& [ink, dark] : inks)
        EXPECT_NEAR(square(ink, Pen::none).dark_of(56, 56, 184, 184), dark, 0.006) << static_cast<int>(ink);
}

TEST(SketchOnPages, PatternsEndWithTheirShape) {
    for (const Ink ink : {Ink::dots, Ink::hatched, Ink::crossed}) {
        const Image image = square(ink, Pen::none);
        EXPECT_EQ(image.dark_of(0, 0, 240, 39), 0.0);
        EXPECT_EQ(image.dark_of(0, 0, 39, 240), 0.0);
        EXPECT_EQ(image.dark_of(201, 0, 240, 240), 0.0);
        EXPECT_EQ(image.dark_of(0, 201, 240, 240), 0.0);
        EXPECT_GT(image.dark_of(40, 40, 200, 60), 0.02);
    }
}

TEST(SketchOnPages, OutlinesGoAroundTheShape) {
    const Image film = square(Ink::none, Pen::film), strong = square(Ink::none, Pen::strong);
    const Image nothing = square(Ink::none, Pen::none);
    EXPECT_EQ(nothing.dark_of(0, 0, 240, 240), 0.0);
    for (const Image* image : {&film, &strong}) {
        EXPECT_EQ(image->dark_of(45, 45, 195, 195), 0.0);
        for (const double side : {image->dark_of(50, 36, 190, 44), image->dark_of(50, 196, 190, 204),
                                  image->dark_of(36, 50, 44, 190), image->dark_of(196, 50, 204, 190)})
            EXPECT_GT(side, 0.05);
    }
    EXPECT_GT(strong.dark_of(50, 36, 190, 44), 2.0 * film.dark_of(50, 36, 190, 44));
    EXPECT_LT(square(Ink::none, Pen::film, true).dark(100, 40), 0.5) << "white, over black";
}

} // namespace
