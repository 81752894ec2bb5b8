#include "fuzz/mutators/structures.h"

#include <algorithm>

namespace fuzz {
namespace {

const Words words = {"C",
                     "D",
                     "W001",
                     "W112",
                     "K",
                     "KB",
                     "K B",
                     "KO",
                     "V",
                     "A",
                     "A2",
                     "AA",
                     "B",
                     "AA/V",
                     "NONE",
                     "V1",
                     "000",
                     "012",
                     "255",
                     "BL",
                     "AX",
                     "BLACK",
                     "BARS",
                     "M2",
                     "TITLE:",
                     "FCM:",
                     "DROP",
                     "NON-DROP",
                     "FRAME",
                     "AUD",
                     "* FROM CLIP NAME:",
                     "* TO CLIP NAME:",
                     "* KEY:",
                     "* KEY NUMBER:",
                     "* COMMENT:",
                     "GPI",
                     "SPLIT:",
                     "AUDIO",
                     "DELAY=",
                     "EFFECTS NAME IS",
                     "REEL",
                     "01:00:00:00",
                     "01:00:00;02",
                     "23:59:59:24",
                     "-024.0",
                     "025.0",
                     "000.0",
                     "KJ",
                     "KJ 12 3456-0100+00",
                     "EASM6789-0100+00",
                     "0",
                     "1",
                     "-1",
                     "99999999999",
                     "",
                     "--",
                     "Heading",
                     "Column",
                     "Data",
                     "FIELD_DELIM",
                     "TABS",
                     "FPS",
                     "25",
                     "29.97"};

const Words fields = {"",
                      "0",
                      "1",
                      "-1",
                      "24fps",
                      "25fps",
                      "35mm-4p",
                      "35mm-3p",
                      "16mm-20fr",
                      "01:00:00:00",
                      "23:59:59:24",
                      "05:00:00:00",
                      "99999999999",
                      "2147483648",
                      "KJ1234560100+00",
                      "????????0000+00",
                      "__BLACK_0000+00",
                      "ABCD0100+00",
                      "neg-cut",
                      "cutting-copy",
                      "\\n",
                      "\\t",
                      "\xE2\x90\xA4",
                      "A001",
                      "DISSOLVE",
                      "V01",
                      "KJ 12 3456-0100+00",
                      "29.97"};

/// Words stand well where others of their look stand.
enum Look { line_look, number_look, timecode_look, key_look, word_look, parameter_look, column_look };

bool is_digit(char c) { return c >= '0' && c <= '9'; }

Look look_of(std::string_view word) {
    if (std::all_of(word.begin(), word.end(), is_digit)) return number_look;
    if (std::count(word.begin(), word.end(), ':') >= 2) return timecode_look;
    if (word.find('+') != std::string_view::npos && is_digit(word.back())) return key_look;
    return word_look;
}

/// Calls with the bounds of each line, its line end behind them.
template <class Use> void each_line(std::string_view text, Use use) {
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        use(begin, end);
        begin = end + 1;
    }
}

Piece line_piece(std::string_view text, std::size_t begin, std::size_t end) {
    const std::size_t behind = std::min(end + 1, text.size());
    return {begin, behind, line_look, nullptr, true, begin, behind};
}

void add_words(std::string_view text, std::size_t begin, std::size_t end, std::vector<Piece>& pieces) {
    constexpr std::string_view blanks = " \t\r";
    while (begin < end) {
        const std::size_t first = std::min(text.find_first_not_of(blanks, begin), end);
        const std::size_t last = std::min(text.find_first_of(blanks, first), end);
        if (first < last)
            pieces.push_back({first, last, look_of(text.substr(first, last - first)), &words, true, begin, last});
        begin = std::max(last, begin + 1);
    }
}

/// The fields of the same number of each line are of one kind.
void add_fields(std::string_view text, std::size_t begin, std::size_t end, char mark, std::vector<Piece>& pieces) {
    for (int column = column_look; begin <= end; ++column) {
        const std::size_t last = std::min(text.find(mark, begin), end);
        pieces.push_back({begin, last, column, &fields, false, 0, 0});
        begin = last + 1;
    }
}

void add_parameter(std::size_t equals, std::size_t end, std::vector<Piece>& pieces) {
    pieces.push_back({equals + 1, end, parameter_look, &fields, false, 0, 0});
}

} // namespace

Structure line_structure(std::string_view text) {
    Structure structure{{}, "", "\n"};
    each_line(text, [&](std::size_t begin, std::size_t end) {
        structure.pieces.push_back(line_piece(text, begin, end));
        add_words(text, begin, end, structure.pieces);
    });
    return structure;
}

Structure column_structure(std::string_view text, char mark) {
    Structure structure{{}, "", "\n\t"};
    each_line(text, [&](std::size_t begin, std::size_t end) {
        structure.pieces.push_back(line_piece(text, begin, end));
        const std::string_view line = text.substr(begin, end - begin);
        const std::size_t equals = line.find('=');
        if (line.find(mark) != std::string_view::npos)
            add_fields(text, begin, end, mark, structure.pieces);
        else if (equals != std::string_view::npos)
            add_parameter(begin + equals, end, structure.pieces);
    });
    return structure;
}

} // namespace fuzz
