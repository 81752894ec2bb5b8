#include "tool/order_file.h"

#include "embedded/label_kinds.h"
#include "embedded/services.h"
#include "host/ascii_text.h"
#include "tool/film_json.h"
#include "tool/select_rolls_json.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <iterator>
#include <map>
#include <utility>

namespace tool {
namespace {

using film::FrameRange;
using film::OrderPiece;

constexpr int document_version = 1;
constexpr const char* document_format = "quillbrook order";

void put_uses(JsonWriter& out, const OrderToTell& order, const OrderPiece& piece) {
    out.begin_array("uses");
    for (const std::size_t place : piece.uses) {
        const film::FilmNeed& need = order.needs[place];
        out.begin_object();
        out.put("reel", need.reel + 1);
        out.put_if("event", need.strip.event > 0, need.strip.event);
        out.put("track", need.strip.layer + 1);
        out.put("position", need.strip.start);
        out.put("length", need.strip.length());
        put_range(out, "first_frame", "last_frame", need.frames);
        out.end_object();
    }
    out.end_array();
}

void put_piece(JsonWriter& out, const OrderToTell& order, const OrderPiece& piece, int number) {
    const film::PieceFacts facts = film::facts_of(order, piece);
    out.begin_object();
    out.put("piece", number);
    put_stretch(out, piece.run, piece.frames);
    put_range(out, "needed_first", "needed_last", piece.needed);
    out.put("first", piece.run.text_at(piece.frames.first));
    out.put("last", piece.run.text_at(piece.frames.last));
    out.put_if("from_take", facts.from_take >= 0, facts.from_take);
    out.put_or_null("lab_roll", facts.lab_roll);
    out.put_or_null("tape", facts.tape);
    out.put_or_null("timecode_in", facts.timecode_in);
    out.put_or_null("timecode_out", facts.timecode_out);
    out.put_or_null("name", facts.names);
    out.put_or_null("scene", facts.scenes);
    out.put_or_null("take", facts.takes);
    put_uses(out, order, piece);
    put_roll_place(out, order.selects, static_cast<std::size_t>(number) - 1);
    out.end_object();
}

void put_had(JsonWriter& out, const OrderToTell& order) {
    out.begin_array("longer");
    for (const film::ChangeOrder::Longer& longer : order.longer) {
        out.begin_object();
        out.put("piece", static_cast<std::int64_t>(longer.piece) + 1);
        out.put("had", order.had_names[longer.had]);
        out.end_object();
    }
    out.end_array();
    out.begin_array("unused");
    for (const std::size_t place : order.unused) {
        out.begin_object();
        out.put("had", order.had_names[place]);
        put_stretch(out, order.had[place].run, order.had[place].frames);
        out.end_object();
    }
    out.end_array();
}

void put_all_unknown(JsonWriter& out, const OrderToTell& order) {
    out.begin_array("unknown");
    for (const film::UnknownFilm& film : order.unknown) {
        out.begin_object();
        put_unknown(out, film);
        out.end_object();
    }
    out.end_array();
}

void put_head(JsonWriter& out, const OrderToTell& order) {
    out.put("format", document_format);
    out.put("version", document_version);
    put_reels(out, order.reels);
    out.put_or_null("log", order.log);
    out.put("handles", order.options.handles);
    out.put("join", order.options.join);
}

[[noreturn]] void refuse(const std::string& path, const std::string& what) { throw JobError(path + ": " + what); }

std::int64_t whole_number(const formats::JsonValue& piece, const char* key, const std::string& place) {
    const formats::JsonValue* value = formats::json_member(piece, key);
    if (!value || !value->IsInt64()) throw JobError(place + ": \"" + key + "\" isn't a whole number");
    return value->GetInt64();
}

std::string text_member(const formats::JsonValue& piece, const char* key, const std::string& place) {
    const formats::JsonValue* value = formats::json_member(piece, key);
    if (!value || !value->IsString()) throw JobError(place + ": \"" + key + "\" isn't a text");
    return std::string(formats::json_string(value));
}

/// Frames of an order lie within what labels can count.
constexpr std::int64_t most_frame = 1'000'000'000;

film::HadPiece piece_of(const formats::JsonValue& value, const std::string& place) {
    film::HadPiece piece;
    piece.run.roll = text_member(value, "roll", place);
    piece.run.prefix = text_member(value, "prefix", place);
    const std::string kind = text_member(value, "kind", place);
    piece.run.kind = edlstr_to_label_type(kind.c_str());
    if (piece.run.kind == label_none) throw JobError(place + ": \"kind\" names no kind of film or timecode");
    const std::int64_t perforation = whole_number(value, "perforation", place);
    if (perforation < 0 || perforation >= get_static_label_cvt(piece.run.kind)->samples_per_frame())
        throw JobError(place + ": \"perforation\" is none that a frame of its film has");
    piece.run.perforation = static_cast<int>(perforation);
    piece.frames = {whole_number(value, "first_frame", place), whole_number(value, "last_frame", place)};
    if (piece.frames.length() <= 0 || piece.frames.first < -most_frame || piece.frames.last > most_frame)
        throw JobError(place + ": its frames are no stretch of film");
    return piece;
}

PieceOnRoll piece_on_roll(const formats::JsonValue& value, const formats::JsonValue& on_roll,
                          const std::string& place) {
    PieceOnRoll piece;
    static_cast<film::HadPiece&>(piece) = piece_of(value, place);
    piece.roll = formats::json_string(formats::json_member(on_roll, "roll"));
    const std::string kind(formats::json_string(formats::json_member(on_roll, "timecode_kind")));
    piece.timecode = edlstr_to_label_type(kind.c_str());
    piece.first = whole_number(on_roll, "first_timecode", place);
    if (piece.roll.empty() || !embedded::timecode_base(piece.timecode) || piece.first < 0 || piece.first > most_frame)
        throw JobError(place + ": \"on_roll\" names no place on a roll");
    return piece;
}

/// No two may lie on one frame of a roll: what is there couldn't be told.
void check_places(const std::vector<PieceOnRoll>& pieces, const std::string& path) {
    std::map<std::pair<std::string, std::int64_t>, std::int64_t> ends; ///< by roll and first frame
    for (const PieceOnRoll& piece : pieces) {
        const std::pair<std::string, std::int64_t> place{ascii::upper_case(piece.roll), piece.first};
        const auto next = ends.lower_bound(place);
        const bool ahead_of_next =
            next == ends.end() || next->first.first != place.first || piece.last() < next->first.second;
        const bool behind = next == ends.begin() || std::prev(next)->first.first != place.first ||
                            std::prev(next)->second < piece.first;
        if (!ahead_of_next || !behind) refuse(path, "two of its pieces lie on one place of the roll " + piece.roll);
        ends.emplace(place, piece.last());
    }
}

/// Of an order; refuses what is none.
std::string bytes_of_order(const std::string& path) {
    std::string bytes, why;
    if (!embedded::read_file(path, &bytes, &why)) refuse(path, why);
    return bytes;
}

template <class Take> void each_piece(const std::string& bytes, const std::string& path, const Take& take) {
    formats::JsonDocument document;
    if (!document.parse(bytes)) refuse(path, "isn't an order: " + document.error());
    const formats::JsonValue& root = document.root();
    if (formats::json_string(formats::json_member(root, "format")) != document_format) refuse(path, "isn't an order");
    const std::int64_t version = whole_number(root, "version", path);
    if (version < 1) refuse(path, "isn't an order");
    if (version > document_version) refuse(path, "is an order of a newer version, " + std::to_string(version));
    const formats::JsonValue* all = formats::json_member(root, "pieces");
    if (!all || !all->IsArray()) refuse(path, "holds no pieces");
    for (rapidjson::SizeType i = 0; i < all->Size(); ++i)
        take((*all)[i], path + ": piece " + std::to_string(i + 1));
}

} // namespace

std::string order_document(const OrderToTell& order) {
    JsonWriter out;
    out.begin_object();
    put_head(out, order);
    out.begin_array("pieces");
    int number = 0;
    for (const OrderPiece& piece : order.pieces)
        put_piece(out, order, piece, ++number);
    out.end_array();
    put_select_rolls(out, order.selects);
    put_had(out, order);
    put_all_unknown(out, order);
    out.end_object();
    return out.document();
}

void read_order(const std::string& path, std::vector<film::HadPiece>& pieces, std::vector<std::string>& names) {
    read_order_bytes(bytes_of_order(path), path, pieces, names);
}

void read_order_bytes(const std::string& bytes, const std::string& path, std::vector<film::HadPiece>& pieces,
                      std::vector<std::string>& names) {
    each_piece(bytes, path, [&](const formats::JsonValue& value, const std::string& name) {
        pieces.push_back(piece_of(value, name));
        names.push_back(name);
    });
}

std::vector<PieceOnRoll> read_pieces_on_rolls(const std::string& path) {
    return read_pieces_on_rolls_bytes(bytes_of_order(path), path);
}

std::vector<PieceOnRoll> read_pieces_on_rolls_bytes(const std::string& bytes, const std::string& path) {
    std::vector<PieceOnRoll> pieces;
    each_piece(bytes, path, [&](const formats::JsonValue& value, const std::string& name) {
        const formats::JsonValue* on_roll = formats::json_member(value, "on_roll");
        if (on_roll) pieces.push_back(piece_on_roll(value, *on_roll, name));
    });
    if (pieces.empty()) refuse(path, "none of its pieces lies on a new roll; order with --build-rolls");
    check_places(pieces, path);
    return pieces;
}

} // namespace tool
