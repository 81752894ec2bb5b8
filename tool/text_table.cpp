#include "tool/text_table.h"

#include <algorithm>
#include <utility>

namespace tool {
namespace {

// Characters of a UTF-8 text: all bytes but those that continue one.
std::size_t width_of(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

} // namespace

void TextTable::add_column(std::string heading, Align align) { columns_.push_back({std::move(heading), align}); }

void TextTable::add_row(std::vector<std::string> cells) {
    cells.resize(columns_.size());
    for (std::size_t i = 0; i < cells.size(); ++i)
        columns_[i].width = std::max(columns_[i].width, width_of(cells[i]));
    rows_.push_back(std::move(cells));
}

std::string TextTable::line(const std::vector<std::string>& cells) const {
    std::string text;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const Column& column = columns_[i];
        if (column.width == 0) continue;
        const std::string blanks(std::max(column.width, width_of(column.heading)) - width_of(cells[i]), ' ');
        text += "  " + (column.align == Align::left ? cells[i] + blanks : blanks + cells[i]);
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text + '\n';
}

std::string TextTable::text() const {
    std::vector<std::string> headings;
    for (const Column& column : columns_)
        headings.push_back(column.heading);
    std::string all = line(headings);
    for (const std::vector<std::string>& row : rows_)
        all += line(row);
    return all;
}

} // namespace tool
