#include "tool/order_text.h"

#include "embedded/film_feet.h"
#include "tool/select_rolls_text.h"
#include "tool/text_table.h"
#include "tool/tool_logger.h"

#include <map>

namespace tool {
namespace {

using film::FilmRun;
using film::OrderPiece;
using Align = TextTable::Align;

std::string name_of(const FilmRun& run) { return run.roll.empty() ? "no roll" : one_line(run.roll); }

/// A roll's pieces and frames, in all.
struct Total {
    std::int64_t pieces = 0, frames = 0;
    void add(const OrderPiece& piece) {
        ++pieces;
        frames += piece.frames.length();
    }
};

std::string count_of(std::int64_t count, const char* one, const char* many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::string text_of(const FilmRun& run, const Total& total) {
    const std::string feet = embedded::feet_text(run.kind, total.frames);
    return count_of(total.pieces, "piece", "pieces") + ", " + count_of(total.frames, "frame", "frames") +
           (feet.empty() ? "" : ", " + feet + " feet");
}

std::string handle_text(std::int64_t given, const film::OrderOptions& options) {
    return std::to_string(given) + (given < options.min_handles ? " short" : "");
}

void add_columns(TextTable& table) {
    constexpr std::pair<const char*, Align> columns[] = {
        {"No.", Align::right},        {"Roll", Align::left},     {"First", Align::left}, {"Last", Align::left},
        {"Frames", Align::right},     {"Feet", Align::right},    {"Head", Align::right}, {"Tail", Align::right},
        {"From start", Align::right}, {"Lab roll", Align::left}, {"Tape", Align::left},  {"In", Align::left},
        {"Out", Align::left},         {"Scene", Align::left},    {"Take", Align::left},  {"Name", Align::left},
        {"Used in", Align::left}};
    for (const auto& [heading, align] : columns)
        table.add_column(heading, align);
}

void add_piece(TextTable& table, const OrderToTell& order, const OrderPiece& piece, std::size_t number) {
    const film::PieceFacts facts = film::facts_of(order, piece);
    const std::int64_t frames = piece.frames.length();
    table.add_row({std::to_string(number), order.by_roll ? "" : name_of(piece.run),
                   piece.run.text_at(piece.frames.first), piece.run.text_at(piece.frames.last), std::to_string(frames),
                   embedded::feet_text(piece.run.kind, frames), handle_text(piece.head(), order.options),
                   handle_text(piece.tail(), order.options), facts.from_take < 0 ? "" : std::to_string(facts.from_take),
                   one_line(facts.lab_roll), one_line(facts.tape), facts.timecode_in, facts.timecode_out,
                   one_line(facts.scenes), one_line(facts.takes), one_line(facts.names), facts.used});
}

std::string head_of(const OrderToTell& order) {
    std::string text = order.had.empty() ? "ORDER\n\n" : "ORDER OF WHAT IS MISSING\n\n";
    int number = 0;
    for (const OrderInput& reel : order.reels)
        text += "Reel " + std::to_string(++number) + ": " + one_line(reel.edit) + ", " + one_line(reel.file) + '\n';
    if (!order.log.empty()) text += "Log: " + one_line(order.log) + '\n';
    const film::OrderOptions& options = order.options;
    text += "Handles: " + (options.whole_takes ? "whole takes where they are known, else " : std::string()) +
            count_of(options.handles, "frame", "frames") + "; pieces with fewer than " +
            count_of(options.join, "frame", "frames") + " between them are one\n";
    return text + "The last frame is included; timecode out is that of the frame behind it.\n";
}

/// Whether a piece stands in the table of the one before it.
bool stand_together(const OrderToTell& order, const OrderPiece& a, const OrderPiece& b) {
    return !order.by_roll || (a.run.roll == b.run.roll && a.run.kind == b.run.kind);
}

std::string heading_of(const OrderToTell& order, const OrderPiece& first) {
    if (!order.by_roll) return "\n";
    return "\nROLL " + name_of(first.run) + "  " + label_type_to_edlstr(first.run.kind) + '\n';
}

/// One table after another, as the rolls of the pieces change.
std::string pieces_text(const OrderToTell& order) {
    std::string text;
    for (std::size_t i = 0; i < order.pieces.size();) {
        const OrderPiece& first = order.pieces[i];
        TextTable table;
        add_columns(table);
        Total total;
        for (; i < order.pieces.size() && stand_together(order, first, order.pieces[i]); ++i) {
            add_piece(table, order, order.pieces[i], i + 1);
            total.add(order.pieces[i]);
        }
        text += heading_of(order, first) + table.text();
        if (order.by_roll) text += "  " + text_of(first.run, total) + '\n';
    }
    return text;
}

std::string totals_text(const OrderToTell& order) {
    std::map<label_t, std::pair<FilmRun, Total>> totals;
    for (const OrderPiece& piece : order.pieces) {
        auto& [run, total] = totals[piece.run.kind];
        run = piece.run;
        total.add(piece);
    }
    std::string text = order.pieces.empty() ? "\nNothing is to be pulled.\n" : "\n";
    for (const auto& [kind, total] : totals)
        text += std::string("IN ALL  ") + label_type_to_edlstr(kind) + "  " + text_of(total.first, total.second) + '\n';
    return text;
}

std::string stretch_of(const film::HadPiece& piece) {
    return name_of(piece.run) + ' ' + piece.run.text_at(piece.frames.first) + " to " +
           piece.run.text_at(piece.frames.last);
}

std::string had_text(const OrderToTell& order) {
    std::string text;
    if (!order.longer.empty()) text += "\nLONGER THAN WHAT WAS HAD\n";
    for (const film::ChangeOrder::Longer& longer : order.longer)
        text += "  piece " + std::to_string(longer.piece + 1) + ": " + one_line(order.had_names[longer.had]) + ", " +
                stretch_of(order.had[longer.had]) + '\n';
    if (!order.unused.empty()) text += "\nUSED BY NO REEL ANY MORE\n";
    for (const std::size_t place : order.unused)
        text += "  " + one_line(order.had_names[place]) + ": " + stretch_of(order.had[place]) + '\n';
    return text;
}

std::string unknown_text(const OrderToTell& order) {
    std::string text;
    if (!order.unknown.empty()) text += "\nCAN'T BE ORDERED: neither key number nor timecode\n";
    for (const film::UnknownFilm& film : order.unknown)
        text += "  reel " + std::to_string(film.reel + 1) + ", " + one_line(film.strip.where) + ": frames " +
                std::to_string(film.strip.start) + " to " + std::to_string(film.strip.end - 1) +
                (film.strip.name.empty() ? "" : ", \"" + one_line(film.strip.name) + '"') + '\n';
    return text;
}

} // namespace

std::string order_text(const OrderToTell& order) {
    return head_of(order) + pieces_text(order) + totals_text(order) + select_rolls_text(order) + had_text(order) +
           unknown_text(order);
}

} // namespace tool
