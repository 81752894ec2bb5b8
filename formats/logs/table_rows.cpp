#include "formats/logs/table_rows.h"

#include "formats/text_lines.h"

#include <algorithm>

namespace formats {

std::vector<LogCell> cells_between(std::string_view line, char delimiter) {
    std::vector<LogCell> cells;
    cells.reserve(static_cast<std::size_t>(std::count(line.begin(), line.end(), delimiter)) + 1);
    int column = 1;
    for (std::size_t begin = 0;;) {
        const std::size_t end = std::min(line.find(delimiter, begin), line.size());
        const std::string_view text = line.substr(begin, end - begin);
        cells.push_back({text, column});
        if (end == line.size()) return cells;
        column += static_cast<int>(characters_of(text)) + 1;
        begin = end + 1;
    }
}

std::vector<std::string_view> texts_of(const std::vector<LogCell>& cells) {
    std::vector<std::string_view> texts;
    for (const LogCell& cell : cells)
        texts.push_back(cell.text);
    return texts;
}

int first_extra_cell(const std::vector<LogCell>& cells, std::size_t known) {
    for (std::size_t i = known; i < cells.size(); ++i)
        if (!without_blanks_around(cells[i].text).empty()) return cells[i].column;
    return 0;
}

} // namespace formats
