#pragma once
// A document: lists as people and scripts read them, before anything is known of pages, tags or files.
//
//     Document                      one run: the title block that stands on each page, then its lists
//       List                        "Assembly": its columns, its facts, how it counts
//         Part                      "Roll A012", "Optical 3": a heading, a drawing, its rows and their totals
//           Row                     cells in the order of the columns, marks, notes; or a band between two rows
//
// Whoever fills a document knows nothing of the emitters, and no emitter knows which list it writes. All texts are
// UTF-8 as they came; the emitters make them fit to be shown.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace documents {

struct Drawing; // documents/drawing.h

/// How a text is read: three weights, and one family for all that is compared by its figures.
enum class Weight : unsigned char { plain, strong, light };

struct Run {
    std::string text;
    Weight weight = Weight::plain;
    bool mono = false;
};

/// A line of runs, set one behind the other without blanks between.
using Line = std::vector<Run>;

/// The characters of a line.
std::string text_of(const Line& line);
/// Those of several lines, blanks between.
std::string text_of(const std::vector<Line>& lines);

/// What scripts get: nothing, a whole number, or a text. Lengths and positions are frames.
using Value = std::variant<std::monostate, std::int64_t, std::string>;

/// Nothing where the text is empty.
Value value_of(std::string text);
std::string text_of(const Value& value);

/// A value's name, which stays. Keys are lower-case words with underscores.
struct Field {
    const char* key;
    const char* unit = ""; ///< "frames", "percent"; empty for texts and plain numbers
};

enum class Align : unsigned char { left, right };

/// What becomes of a text that is longer than its column; none is ever cut.
enum class Wrap : unsigned char {
    words,    ///< between words, and inside one that is longer than the column
    anywhere, ///< between any two characters
    none,     ///< the column is as wide as its longest line
};

/// A column of pages, with the values that stand behind it. One without a title is for scripts alone.
struct Column {
    const char* key = "";
    std::string title;
    Align align = Align::left;
    Wrap wrap = Wrap::words;
    std::vector<Field> fields; ///< may be empty: then scripts don't see it
    bool notes = false;        ///< where pages put the notes of a row; the last column of words otherwise
};

struct Cell {
    std::vector<Line> lines;
    std::vector<Value> values; ///< one a field of its column, in order
};

/// What is to be seen of a row before it is read. Each is also said in words, by a note or in a cell.
enum class Mark : unsigned char { wrong, missing, doubt, reused, fresh, out, moved, speed };

const char* name_of(Mark mark);

/// What is the matter, then the facts, then what to do.
struct Note {
    Mark mark = Mark::doubt;
    std::string head; ///< "Used twice"; no full stop
    std::string text; ///< sentences
    std::string advice;
    std::string code; ///< a word for scripts; may be empty
};

std::string text_of(const Note& note);

enum class RowKind : unsigned char {
    item,
    band, ///< what joins the rows above and below; one line, and nothing to do. What it says stands in their values too
};

struct Row {
    RowKind kind = RowKind::item;
    /// Of items, unique in the document, of letters, digits and hyphens: "assembly-12". Drawings name the same film by
    /// the same `film`.
    std::string id;
    std::string film; ///< "event-12", "optical-3"; empty: nothing that is drawn
    bool tick = false;
    std::vector<Cell> cells; ///< one a column; of a band none
    std::vector<Note> notes;
    std::vector<Mark> marks; ///< beside those of the notes
    Line band;

    bool has(Mark mark) const;
};

using DrawingPtr = std::shared_ptr<const Drawing>;

struct Fact {
    std::string name;
    Line value;
};

/// A heading with its rows. A list of one part has no heading.
struct Part {
    std::string id;                   ///< unique in its list
    std::string title;                ///< empty: no heading
    std::string about;                ///< beside the title: "198 frames, 0003+00 to 0015+05"
    bool sheet = false;               ///< begins a page of its own
    std::vector<DrawingPtr> drawings; ///< none is null
    std::vector<Row> rows;
    std::vector<Row> totals; ///< items without a box, below the rows
};

struct List {
    std::string id;    ///< lower-case letters and hyphens; also the name of its file
    std::string title; ///< "Assembly, cutting copy"
    std::string aside; ///< at the right of the head: "Reel 4", "Count sheets"
    std::vector<Fact> facts;
    std::string counting; ///< how it counts, said once a page
    std::vector<Column> columns;
    std::vector<DrawingPtr> drawings; ///< of the list as a whole, ahead of its parts
    bool picture_first = false;       ///< pages have the drawings ahead of the rows though they take pages
    std::vector<Part> parts;
    std::vector<Row> totals; ///< of all parts together, below them
    std::vector<Note> notes; ///< of the list as a whole
    std::string empty;       ///< what is said where there are no rows
};

/// What stands on every page. What isn't known is empty.
struct TitleBlock {
    std::string edit, project;
    std::string track; ///< "picture 1"
    std::string gauge; ///< "35mm 4-perf"
    std::string rate;  ///< "24 fps"
    std::string reel;
    std::string cut_date; ///< of the edit
    std::string made;     ///< when the lists were made
};

enum class Paper : unsigned char { a4, letter };

struct Document {
    TitleBlock title;
    std::vector<List> lists;
    Paper paper = Paper::a4;
};

// Looking at documents.

std::size_t count_of_rows(const List& list);
/// All fields of the columns, in order.
std::vector<Field> fields_of(const List& list);
/// All values of a row's cells, one a field; nothing for cells that it lacks.
std::vector<Value> values_of(const List& list, const Row& row);
/// The same one by one, without copies.
template <class Each> void each_value(const List& list, const Row& row, const Each& each) {
    static const Value nothing;
    for (std::size_t i = 0; i < list.columns.size(); ++i)
        for (std::size_t k = 0; k < list.columns[i].fields.size(); ++k)
            each(i < row.cells.size() && k < row.cells[i].values.size() ? row.cells[i].values[k] : nothing);
}
/// Its own marks and those of its notes, each once, in the order of `Mark`.
std::vector<Mark> marks_of(const Row& row);
/// The places of the columns that pages have.
std::vector<std::size_t> shown_columns(const List& list);
/// All rows with their totals, from the first to the last.
template <class Each> void each_row(const List& list, const Each& each) {
    for (const Part& part : list.parts)
        for (const std::vector<Row>* rows : {&part.rows, &part.totals})
            for (const Row& row : *rows)
                each(row);
    for (const Row& row : list.totals)
        each(row);
}
/// Those of the texts that aren't empty, and something between them.
std::string joined(const std::vector<std::string>& texts, const char* between);
/// The place of the column that takes the notes of rows; it has a title. -1 where no column has one.
int column_of_notes(const List& list);

// Filling them.

inline Run plain(std::string text) { return {std::move(text), Weight::plain, false}; }
inline Run strong(std::string text) { return {std::move(text), Weight::strong, false}; }
inline Run light(std::string text) { return {std::move(text), Weight::light, false}; }
inline Run mono(std::string text, Weight weight = Weight::plain) { return {std::move(text), weight, true}; }

/// Lines, cells or values in their order. What is made for the call is moved, where braces alone would copy it.
template <class One, class... Parts> std::vector<One> vector_of(Parts&&... parts) {
    std::vector<One> all;
    all.reserve(sizeof...(parts));
    (all.emplace_back(std::forward<Parts>(parts)), ...);
    return all;
}
template <class... Runs> Line line_of(Runs&&... runs) { return vector_of<Run>(std::forward<Runs>(runs)...); }

/// A cell of one run, whose value is given.
Cell cell(Run run, Value value);
/// A cell that shows nothing; so many fields have nothing in it.
Cell blank_cell(std::size_t fields = 1);
/// A cell of words that is its own value.
Cell word_cell(const std::string& text, Weight weight = Weight::plain);
/// Takes the titles of the columns that `keys` doesn't name, so that pages leave them out and scripts don't. A list
/// that would be without one keeps all.
void show_columns(List& list, const std::vector<std::string>& keys);
/// Leaves out the columns that `keys` doesn't name, for pages and scripts, and puts the others in its order. A word
/// that names none is left alone; a list that would be without a column keeps all.
void choose_columns(List& list, const std::vector<std::string>& keys);

} // namespace documents
