// Any bytes as an earlier order: refused with the file's name, or pieces within bounds, which as needs lack nothing,
// and written again are the same.

#include "tool/new_rolls.h"
#include "tool/order_file.h"
#include "tool/tool_error.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

constexpr std::size_t longest_order = 1 << 14;
constexpr const char* path = "one.json";

void check(bool holds) {
    if (!holds) std::abort();
}

bool read(const std::string& bytes, std::vector<film::HadPiece>& pieces) {
    std::vector<std::string> names;
    try {
        tool::read_order_bytes(bytes, path, pieces, names);
    } catch (const tool::JobError& refusal) {
        check(std::string(refusal.what()).compare(0, std::string(path).size(), path) == 0);
        return false;
    }
    check(names.size() == pieces.size());
    return true;
}

/// Where pieces lie on new rolls, each has its frames there for itself.
void check_rolls(const std::string& bytes) {
    std::vector<tool::PieceOnRoll> pieces;
    try {
        pieces = tool::read_pieces_on_rolls_bytes(bytes, path);
    } catch (const tool::JobError& refusal) {
        return check(std::string(refusal.what()).compare(0, std::string(path).size(), path) == 0);
    }
    const tool::NewRolls rolls(pieces);
    for (const tool::PieceOnRoll& piece : pieces)
        for (const std::int64_t timecode : {piece.first, piece.last()}) {
            const tool::PieceOnRoll* there = rolls.at(piece.roll, timecode);
            check(there && there->run == piece.run && there->frames == piece.frames);
        }
}

/// An order that is for just these pieces.
film::OrderToTell order_of(const std::vector<film::HadPiece>& pieces) {
    film::OrderToTell order;
    order.reels.resize(1);
    for (const film::HadPiece& piece : pieces) {
        film::FilmNeed need;
        need.run = piece.run;
        need.frames = piece.frames;
        order.needs.push_back(need);
        order.pieces.push_back({piece.run, piece.frames, piece.frames, {order.needs.size() - 1}});
    }
    return order;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > longest_order) return 0;
    std::vector<film::HadPiece> pieces, again;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    check_rolls(bytes);
    if (!read(bytes, pieces)) return 0;
    for (const film::HadPiece& piece : pieces)
        check(piece.frames.length() > 0 && !piece.run.text_at(piece.frames.first).empty());
    const film::OrderToTell order = order_of(pieces);
    const film::ChangeOrder change = film::change_order(order.needs, pieces, {}, true);
    check(change.pieces.empty() && change.unused.empty());
    check(film::prove_cover({}, pieces, order.needs).failures.empty());
    check(read(tool::order_document(order), again) && again.size() == pieces.size());
    for (std::size_t i = 0; i < pieces.size(); ++i)
        check(again[i].run.kind == pieces[i].run.kind && again[i].frames == pieces[i].frames);
    return 0;
}
