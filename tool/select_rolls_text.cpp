#include "tool/select_rolls_text.h"

#include "embedded/film_feet.h"
#include "film/finding.h"
#include "tool/text_table.h"
#include "tool/tool_logger.h"

namespace tool {
namespace {

using film::OrderPiece;
using film::SelectRoll;
using film::SelectRolls;
using Align = TextTable::Align;

constexpr std::pair<const char*, Align> columns[] = {
    {"Frame", Align::right}, {"Feet", Align::right},   {"In", Align::left},
    {"Out", Align::left},    {"Frames", Align::right}, {"Piece", Align::right},
    {"Roll", Align::left},   {"First", Align::left},   {"Last", Align::left}};

std::string head_text(const SelectRolls& selects) {
    const film::RollBuilding& building = selects.building;
    return "\nROLLS OF SELECTS of at most " + film::counted(building.feet, "foot", "feet") + ", with " +
           film::counted(building.leader_feet, "foot", "feet") + " of leader at the head\n" +
           "Frame and feet count from the head of the roll, which has timecode " + selects.timecode_at(0) +
           "; timecode out is that of the frame behind.\n";
}

std::string heading_of(const SelectRoll& roll, const SelectRolls& selects) {
    const std::string feet = embedded::feet_text(roll.kind, roll.frames);
    const std::int64_t splice = film::frames_of_splice(roll.kind, selects.building.splices);
    return "\nNEW ROLL " + one_line(roll.name) + "  " + label_type_to_edlstr(roll.kind) + "  " +
           film::counted(static_cast<std::int64_t>(roll.pieces.size()), "piece", "pieces") + ", " +
           film::frames_text(roll.frames) + (feet.empty() ? "" : ", " + feet + " feet") + ", " +
           film::frames_text(splice) + " at each splice\n";
}

std::string roll_text(const film::OrderToTell& order, const SelectRoll& roll) {
    TextTable table;
    for (const auto& [heading, align] : columns)
        table.add_column(heading, align);
    for (const std::size_t number : roll.pieces) {
        const OrderPiece& piece = order.pieces[number];
        const film::FrameRange& place = order.selects.places[number].frames;
        table.add_row({std::to_string(place.first), embedded::feet_text(roll.kind, place.first),
                       order.selects.timecode_at(place.first), order.selects.timecode_at(place.last + 1),
                       std::to_string(place.length()), std::to_string(number + 1), one_line(piece.run.roll),
                       piece.run.text_at(piece.frames.first), piece.run.text_at(piece.frames.last)});
    }
    return heading_of(roll, order.selects) + table.text();
}

std::string left_out_text(const film::OrderToTell& order) {
    std::string text;
    for (std::size_t i = 0; i < order.pieces.size(); ++i)
        if (!order.selects.places[i].is_laid()) text += (text.empty() ? "" : ", ") + std::to_string(i + 1);
    return text.empty()
               ? ""
               : "\nON NO NEW ROLL, for without key numbers they have no length in feet: pieces " + text + '\n';
}

} // namespace

std::string select_rolls_text(const film::OrderToTell& order) {
    if (order.selects.building.feet == 0) return "";
    std::string text = head_text(order.selects);
    for (const SelectRoll& roll : order.selects.rolls)
        text += roll_text(order, roll);
    return text + left_out_text(order);
}

} // namespace tool
