// Pages as other programs read them: pdftotext, pdffonts, pdfinfo and qpdf.

#include "documents/drawing.h"
#include "documents/pdf.h"
#include "documents/pdf_pages.h"
#include "tests/support/command_output.h"
#include "tests/support/scratch_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <sstream>

namespace {

using namespace documents;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

Column column(const char* key, const std::string& title, Wrap wrap, Align align = Align::left) {
    Column made;
    made.key = key;
    made.title = title;
    made.wrap = wrap;
    made.align = align;
    return made;
}

Row row(int event, const std::string& shot, const std::string& key) {
    Row made;
    made.id = "assembly-" + std::to_string(event);
    made.film = "event-" + std::to_string(event);
    made.tick = true;
    made.cells = {cell(plain(std::to_string(event)), std::int64_t{event}), word_cell(shot), cell(mono(key), key)};
    return made;
}

List assembly(int rows) {
    List list;
    list.id = "assembly";
    list.title = "Assembly, negative";
    list.aside = "Reel 4";
    list.counting = "Both frames belong to the piece. Feet + frames, 16 frames a foot.";
    list.facts = {{"Events", {strong(std::to_string(rows))}}, {"Length", {mono("0128+11", Weight::strong)}}};
    list.columns = {column("event", "Event", Wrap::none, Align::right), column("shot", "Shot", Wrap::words),
                    column("key", "First / last frame", Wrap::none)};
    list.columns[1].notes = true;
    list.parts.emplace_back();
    for (int i = 1; i <= rows; ++i)
        list.parts[0].rows.push_back(
            row(i, "Shot " + std::to_string(i), "KJ 51 2040 " + std::to_string(1000 + i) + "+04"));
    return list;
}

Document document(std::vector<List> lists) {
    Document made;
    made.title.edit = "The Lantern R4";
    made.title.reel = "4";
    made.title.cut_date = "20 September 2026";
    made.lists = std::move(lists);
    return made;
}

std::shared_ptr<Drawing> drawing_of(int pieces) {
    auto drawing = std::make_shared<Drawing>();
    drawing->id = "reel";
    drawing->title = "The reel";
    drawing->film = label_key_35mm_4p;
    drawing->end = pieces * 100;
    drawing->lanes.emplace_back();
    for (int i = 0; i < pieces; ++i) {
        DrawnPiece piece;
        piece.film = "event-" + std::to_string(i + 1);
        piece.start = i * 100;
        piece.length = 100;
        piece.name = "Film " + std::to_string(i);
        piece.fill = static_cast<Fill>(i % 3 + 1);
        drawing->pieces.push_back(piece);
    }
    return drawing;
}

/// Where a word stands on its page, in points from the upper left.
struct WordPlace {
    double left = 0.0, top = 0.0, right = 0.0, bottom = 0.0;
};

/// The words of all pages, in their order.
std::vector<std::pair<std::string, WordPlace>> placed_words(const std::string& path) {
    std::vector<std::pair<std::string, WordPlace>> words;
    std::istringstream boxes(output_of("pdftotext -bbox " + path + " -"));
    for (std::string line; std::getline(boxes, line);) {
        WordPlace place;
        char word[64];
        const char* const format = " <word xMin=\"%lf\" yMin=\"%lf\" xMax=\"%lf\" yMax=\"%lf\">%63[^<]";
        if (std::sscanf(line.c_str(), format, &place.left, &place.top, &place.right, &place.bottom, word) == 5)
            words.emplace_back(word, place);
    }
    return words;
}

/// The first of each word.
std::map<std::string, WordPlace> first_words(const std::string& path) {
    const auto words = placed_words(path);
    return {words.begin(), words.end()};
}

class Pdf : public testing::Test {
protected:
    std::string file_of(const Document& document) {
        const std::string path = scratch_.file("pages.pdf");
        PdfOptions options;
        options.made = 1790000000;
        put_bytes(path, pdf_of(document, options));
        return path;
    }
    std::string text_of(const Document& document) { return output_of("pdftotext -layout " + file_of(document) + " -"); }
    static int pages_of(const std::string& path) {
        const std::string info = output_of("pdfinfo " + path);
        const std::size_t at = info.find("Pages:");
        return at == std::string::npos ? 0 : std::atoi(info.c_str() + at + 6);
    }

private:
    ScratchDirectory scratch_;
};

TEST_F(Pdf, IsWholeAndItsFontsAreInside) {
    const std::string path = file_of(document({assembly(100)}));
    EXPECT_THAT(output_of("qpdf --check " + path), HasSubstr("No syntax or stream encoding errors found"));
    std::istringstream fonts(output_of("pdffonts " + path));
    std::string line;
    int count = 0;
    for (int i = 0; std::getline(fonts, line); ++i) {
        if (i < 2) continue;
        EXPECT_THAT(line, HasSubstr("yes yes yes")) << "embedded, a subset, with its characters";
        ++count;
    }
    EXPECT_GE(count, 3);
}

TEST_F(Pdf, HoldsEachKeyNumberAndName) {
    Document made = document({assembly(400)});
    const std::vector<std::string> names = {"Анна и фонарь", "Σοφίτα 15/6", "灯台 14B/1", "Tomáš 13A/2", "a<b>&\"c\""};
    for (std::size_t i = 0; i < names.size(); ++i)
        made.lists[0].parts[0].rows[i * 70].cells[1] = word_cell(names[i]);
    const std::string text = text_of(made);
    for (const std::string& name : names)
        EXPECT_THAT(text, HasSubstr(name));
    for (int i = 1; i <= 400; ++i)
        EXPECT_THAT(text, HasSubstr("KJ 51 2040 " + std::to_string(1000 + i) + "+04"));
}

TEST_F(Pdf, HoldsNamesThatAreWrittenFromRightToLeft) {
    Document made = document({assembly(3)});
    made.lists[0].parts[0].rows[1].cells[1] = word_cell("شمس");
    made.lists[0].parts[0].rows[2].cells[1] = word_cell("נר");
    const std::string text = text_of(made);
    EXPECT_THAT(text, HasSubstr("شمس"));
    EXPECT_THAT(text, HasSubstr("נר"));
}

TEST_F(Pdf, HeadsStandOnEachPageAndFeetCountThem) {
    const Document made = document({assembly(120)});
    const int pages = pages_of(file_of(made));
    ASSERT_GT(pages, 2);
    for (int i = 1; i <= pages; ++i) {
        const std::string number = std::to_string(i);
        const std::string text =
            output_of("pdftotext -layout -f " + number + " -l " + number + ' ' + file_of(made) + " -");
        EXPECT_THAT(text, HasSubstr("First / last frame")) << number;
        EXPECT_THAT(text, HasSubstr("page " + number + " of " + std::to_string(pages)));
        EXPECT_THAT(text, HasSubstr("16 frames a foot"));
        EXPECT_THAT(text, HasSubstr("Reel 4")) << number;
        EXPECT_THAT(text, HasSubstr("20 September 2026")) << number;
    }
}

/// The objects of a file as qpdf writes them, by their numbers.
std::map<int, std::string> objects_of(const std::string& path) {
    const std::string plain = output_of("qpdf --qdf --object-streams=disable " + path + " -");
    std::map<int, std::string> objects;
    const std::string begin = " 0 obj\n";
    for (std::size_t at = plain.find(begin); at != std::string::npos; at = plain.find(begin, at + 1)) {
        const std::size_t number = plain.rfind('\n', at) + 1;
        objects[std::atoi(plain.c_str() + number)] = plain.substr(at, plain.find("\nendobj", at) - at);
    }
    return objects;
}

/// What stands behind a key of an object, to the end of its line.
std::string entry(const std::string& object, const std::string& key) {
    const std::size_t at = object.find("  " + key + ' ');
    if (at == std::string::npos) return "";
    const std::size_t value = at + key.size() + 3;
    return object.substr(value, object.find('\n', value) - value);
}

TEST_F(Pdf, ListsAreBookmarkedAndTheirPartsBelowThem) {
    List pull = assembly(5);
    pull.id = "pull";
    pull.title = "Pull by roll";
    pull.parts[0].title = "Roll A040";
    const std::map<int, std::string> objects = objects_of(file_of(document({assembly(5), pull})));
    std::map<std::string, std::string> parents;
    for (const auto& [number, object] : objects)
        if (const std::string parent = entry(object, "/Parent"); !entry(object, "/Title").empty() && !parent.empty())
            parents[entry(object, "/Title")] = entry(objects.at(std::atoi(parent.c_str())), "/Title");
    const std::map<std::string, std::string> expected{
        {"(Assembly, negative)", ""}, {"(Pull by roll)", ""}, {"(Roll A040)", "(Pull by roll)"}};
    EXPECT_EQ(parents, expected);
}

TEST_F(Pdf, RowsOfLaterListsLeadToTheirFilmsFirstRow) {
    List pull = assembly(5);
    pull.id = "pull";
    const std::string path = file_of(document({assembly(7), pull}));
    std::map<std::string, int> heights;
    std::istringstream places(output_of("pdfinfo -dests " + path));
    for (std::string line; std::getline(places, line);) {
        int page = 0, left = 0, top = 0;
        char name[40];
        if (std::sscanf(line.c_str(), "%d [ XYZ %d %d null ] \"%39[^\"]", &page, &left, &top, name) != 4) continue;
        EXPECT_EQ(page, 1) << "of the first list";
        heights[name] = top;
    }
    ASSERT_EQ(heights.size(), 7U);
    for (int i = 2; i <= 7; ++i)
        EXPECT_LT(heights["film-event-" + std::to_string(i)], heights["film-event-" + std::to_string(i - 1)]);
    std::vector<std::string> links;
    for (const auto& [number, object] : objects_of(path))
        if (object.find("/Subtype /Link") != std::string::npos) links.push_back(entry(object, "/Dest"));
    EXPECT_THAT(links, testing::UnorderedElementsAre("(film-event-1)", "(film-event-2)", "(film-event-3)",
                                                     "(film-event-4)", "(film-event-5)"));
}

TEST_F(Pdf, BoxesToTickHaveTheirRoomAheadOfTheFirstColumn) {
    List list = assembly(3);
    list.columns[0].align = Align::left;
    const double ticked = first_words(file_of(document({list})))["Event"].left;
    for (Row& one : list.parts[0].rows)
        one.tick = false;
    EXPECT_NEAR(first_words(file_of(document({list})))["Event"].left + 17.0, ticked, 0.5);
}

TEST_F(Pdf, FactsStandAboveTheTableHoweverManyThereAre) {
    List list = assembly(3);
    for (int i = 0; i < 15; ++i)
        list.facts.push_back({"Fact", {plain("fact" + std::to_string(i))}});
    std::map<std::string, WordPlace> words = first_words(file_of(document({list})));
    EXPECT_GT(words["First"].top, words["fact14"].bottom);
    EXPECT_GT(words["fact14"].top, words["fact0"].bottom);
}

/// The darkest of a place's pixels, 0 to 255.
int darkest(const std::string& path, const WordPlace& place) {
    const std::string image = output_of("pdftoppm -gray -r 288 -l 1 " + path);
    int width = 0, height = 0, read = 0, darkest = 255;
    if (std::sscanf(image.c_str(), "P5 %d %d 255%n", &width, &height, &read) != 2) return -1;
    const auto pixel = [](double points) { return static_cast<int>(points * 4); };
    for (int y = pixel(place.top); y < pixel(place.bottom); ++y)
        for (int x = pixel(place.left); x < pixel(place.right); ++x)
            darkest = std::min<int>(
                darkest, static_cast<unsigned char>(image[static_cast<std::size_t>(read + 1 + y * width + x)]));
    return darkest;
}

TEST_F(Pdf, LightTextIsLighter) {
    List list = assembly(2);
    list.parts[0].rows[0].cells[1].lines = {{plain("plainword")}, {light("lightword")}};
    list.parts[0].rows[1].cells[1].lines = {{plain("слово")}, {light("сила")}};
    const std::string path = file_of(document({list}));
    std::map<std::string, WordPlace> words = first_words(path);
    for (const auto& [dark, pale] : {std::pair("plainword", "lightword"), std::pair("слово", "сила")}) {
        ASSERT_TRUE(words.count(dark) && words.count(pale)) << dark;
        EXPECT_LT(darkest(path, words[dark]), 40);
        EXPECT_GT(darkest(path, words[pale]), 60);
    }
}

TEST_F(Pdf, NotesStandWithTheirRow) {
    Document made = document({assembly(30)});
    made.lists[0].parts[0].rows[25].notes.push_back(
        {Mark::reused, "Used twice", "Frames 1413+00 to 1413+07 are also in event 17.", "Order a duplicate.", ""});
    const std::string text = text_of(made);
    EXPECT_THAT(text, HasSubstr("Used twice. Frames 1413+00 to 1413+07 are also in event 17. Order a duplicate."));
}

TEST_F(Pdf, DrawingsAreVectorsWithTheirTexts) {
    const std::shared_ptr<Drawing> drawing = drawing_of(3);
    drawing->marks.push_back({"", 0, 100, 100, "plainwords", false, true});
    List list = assembly(3);
    list.parts[0].rows[0].cells[1] = word_cell("plainwords");
    list.drawings.push_back(drawing);
    const std::string path = file_of(document({list}));
    const std::string text = output_of("pdftotext -layout " + path + " -");
    for (const char* name : {"Film 0", "Film 1", "Film 2", "To scale: one foot is"})
        EXPECT_THAT(text, HasSubstr(name));
    // One face at two sizes: as wide for its height in both places.
    std::vector<double> shapes;
    for (const auto& [word, place] : placed_words(path))
        if (word == "plainwords") shapes.push_back((place.right - place.left) / (place.bottom - place.top));
    ASSERT_EQ(shapes.size(), 2U);
    EXPECT_NEAR(shapes[0], shapes[1], 0.05);
    EXPECT_THAT(output_of("pdfimages -list " + path), Not(HasSubstr("image ")));
    EXPECT_THAT(output_of("qpdf --check " + path), HasSubstr("No syntax"));
}

TEST_F(Pdf, TheSameDocumentGivesTheSameBytes) {
    PdfOptions options;
    options.made = 0;
    EXPECT_EQ(pdf_of(document({assembly(50)}), options), pdf_of(document({assembly(50)}), options));
    EXPECT_THAT(output_of("TZ=UTC pdfinfo -isodates " + file_of(document({assembly(1)}))), HasSubstr("2026-09-21T"));
}

TEST_F(Pdf, LongNamesAreBrokenAndNeverCut) {
    Document made = document({assembly(3)});
    std::string name;
    for (int i = 0; i < 500; ++i)
        name += static_cast<char>('a' + i % 26);
    made.lists[0].parts[0].rows[0].cells[1] = word_cell(name + name + name + name);
    std::string text = output_of("pdftotext -raw " + file_of(made) + " -");
    const auto letters = [](const std::string& from) {
        std::string only;
        for (const char c : from)
            if (c >= 'a' && c <= 'z') only += c;
        return only;
    };
    EXPECT_THAT(letters(text), HasSubstr(letters(name + name)));
    EXPECT_THAT(output_of("qpdf --check " + file_of(made)), HasSubstr("No syntax"));
}

TEST_F(Pdf, LettersAreShownAndPaperIsChosen) {
    Document made = document({assembly(2)});
    made.lists[0].parts[0].rows[0].cells[1] = word_cell("a\x01\n\xFF"
                                                        "b");
    EXPECT_THAT(text_of(made), HasSubstr("a"));
    EXPECT_THAT(output_of("pdfinfo " + file_of(made)), HasSubstr("A4"));
    made.paper = Paper::letter;
    EXPECT_THAT(output_of("pdfinfo " + file_of(made)), HasSubstr("612 x 792"));
}

TEST_F(Pdf, NothingAtAllIsAPageStill) {
    EXPECT_EQ(pages_of(file_of(Document())), 1);
    List empty = assembly(0);
    empty.empty = "Nothing is missing.";
    EXPECT_THAT(text_of(document({empty})), HasSubstr("Nothing is missing."));
}

// On all pages inside the edges, and above or below nothing else.
TEST_F(Pdf, LongHeadsFeetAndFactsAreWrapped) {
    Document made = document({assembly(60)});
    std::string name;
    for (int i = 1; i <= 40; ++i)
        name += (i == 1 ? "word" : " word") + std::to_string(i);
    made.title.edit = made.title.reel = name;
    List& list = made.lists[0];
    list.parts[0].title = name;
    list.facts[1].value = {plain(name)};
    list.counting = name + " end";
    const std::string path = file_of(made), first = output_of("pdftotext -l 1 " + path + " -");
    EXPECT_THAT(first, HasSubstr("word40\n")) << "of the fact or the edit";
    std::map<std::string, int> shown;
    const PdfPaper paper = paper_of(Paper::a4);
    for (const auto& [word, place] : placed_words(path)) {
        ++shown[word];
        EXPECT_GT(place.left, paper.left() - 1.0) << word;
        EXPECT_LT(place.right, paper.right() + 1.0) << word;
        EXPECT_GT(place.top, 30.0) << word;
        EXPECT_LT(place.bottom, paper.height - 3.0) << word;
    }
    const int pages = pages_of(path);
    EXPECT_EQ(shown["end"], pages) << "how it counts, whole on each";
    EXPECT_EQ(shown["page"], pages);
    // Edit, part and fact on the first page, and how it counts on each; a comma ends the reel.
    EXPECT_EQ(shown["word40"], 3 + pages);
    EXPECT_EQ(shown["word40,"], 1);
    EXPECT_GE(shown["word1"], 4 + 4 * (pages - 1)) << "names begin again on each";
}

TEST_F(Pdf, NumbersArePartedAtTheirBlanksWhereThePageIsTooNarrow) {
    Document made = document({assembly(3)});
    List& list = made.lists[0];
    list.parts[0].rows[0].cells[1] = word_cell("Averylongwordthatmaybebrokenwherethatisneeded");
    for (int i = 0; i < 6; ++i) {
        list.columns.push_back(column("more", "More", Wrap::none));
        for (Row& one : list.parts[0].rows)
            one.cells.push_back(cell(mono("KJ 51 2040 0001+0" + std::to_string(i)), Value()));
    }
    const std::string text = text_of(made);
    for (const char* whole : {"1001+04", "1002+04", "0001+00", "0001+05", "Shot"})
        EXPECT_THAT(text, HasSubstr(whole));
    EXPECT_THAT(text, Not(HasSubstr("2040 0001")));
}

TEST_F(Pdf, PicturesStandFirstWhereTheListSaysSo) {
    List list = assembly(3);
    list.drawings.push_back(drawing_of(200));
    const auto behind = [this](const List& one) {
        const std::string text = text_of(document({one}));
        return text.find("The reel") > text.find("Shot 1");
    };
    EXPECT_TRUE(behind(list)) << "it takes pages";
    list.picture_first = true;
    EXPECT_FALSE(behind(list));
}

PdfBlock block(double height, bool with_next = false) {
    PdfBlock made;
    made.height = height;
    made.with_next = with_next;
    made.row = true;
    made.draw = [](double) {};
    return made;
}

std::string places_text(const std::vector<PdfPage>& pages) {
    std::string text;
    for (const PdfPage& page : pages) {
        for (const PdfPlace& place : page.places)
            text += std::to_string(static_cast<int>(place.y)) + ' ';
        text += "| ";
    }
    return text;
}

TEST(PdfPages, KeepTogetherWhatBelongsTogether) {
    const List list;
    const PdfPaper paper{500.0, 400.0}; // blocks from 40 to 348
    std::vector<PdfPage> pages;
    const std::vector<PdfBlock> blocks = {block(100), block(100), block(40, true), block(40), block(20)};
    paginate(list, blocks, {20.0, 10.0, 8.0}, paper, pages);
    EXPECT_EQ(places_text(pages), "68 168 268 308 | 58 | ");
    pages.clear();
    const std::vector<PdfBlock> higher = {block(100), block(100), block(40, true), block(60), block(20)};
    paginate(list, higher, {20.0, 10.0, 8.0}, paper, pages);
    EXPECT_EQ(places_text(pages), "68 168 | 58 98 158 | ");
}

TEST(PdfPages, PartWhatIsHigherThanAPage) {
    const List list;
    const PdfPaper paper{500.0, 400.0};
    std::vector<PdfPage> pages;
    const std::vector<PdfBlock> blocks(8, block(100, true));
    paginate(list, blocks, {20.0, 10.0, 8.0}, paper, pages);
    EXPECT_EQ(pages.size(), 4U);
}

} // namespace
