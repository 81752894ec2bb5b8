#include "tool/order_scans.h"

#include "film/film_difference.h"
#include "formats/edl/edl_reader.h"
#include "formats/edl/edl_writer.h"
#include "formats/logs/ale_writer.h"
#include "formats/otio/otio_writer.h"
#include "formats/scans/cut_file_writer.h"

namespace tool {
namespace {

using film::OrderToTell;
using formats::Written;

constexpr int only_channel = 0;

void add(embedded::Warnings& all, const embedded::Warnings& more) { all.insert(all.end(), more.begin(), more.end()); }

/// What the pieces lack is told ahead of what the file can't hold.
Written with_warnings(embedded::Warnings warnings, Written written) {
    add(warnings, written.warnings);
    written.warnings = std::move(warnings);
    return written;
}

std::string title_of(const OrderToTell& order) {
    std::string title;
    for (const film::OrderInput& reel : order.reels)
        title += (title.empty() ? "Order for " : ", ") + reel.edit;
    return title;
}

void compare_again(const EditPtr& edit, Written& written) {
    const formats::ReadResult again = formats::read_edl_texts({{written.text, "the written list", 0}}, {});
    if (again.edit)
        add(written.warnings, film::film_differences(edit, nullptr, again.edit, {}));
    else
        written.error = "what was written can't be read again: " + again.error;
}

} // namespace

Written edl_of_order(const OrderToTell& order, const ScanWriting& writing) {
    OrderEditing editing{"--edl", title_of(order)};
    editing.reel = writing.edl_reel;
    editing.fields = false;
    editing.one_rate = true;
    embedded::Warnings warnings;
    const EditPtr edit = edit_of_order(order, editing, warnings);
    formats::EdlWriting edl;
    edl.channel = only_channel;
    edl.keys = writing.keys;
    edl.last_keys = true;
    Written written = formats::write_edl(edit, edl);
    if (written.error.empty()) compare_again(edit, written);
    return with_warnings(std::move(warnings), std::move(written));
}

Written ale_of_order(const OrderToTell& order, const ScanWriting& writing) {
    OrderEditing editing{"--ale", title_of(order)};
    editing.needs_timecode = true;
    embedded::Warnings warnings;
    const EditPtr edit = edit_of_order(order, editing, warnings);
    formats::AleWriting ale;
    ale.channels = {only_channel};
    ale.keys = writing.keys;
    ale.cycles = false;
    return with_warnings(std::move(warnings), formats::write_ale(edit, ale));
}

Written otio_of_order(const OrderToTell& order, const ScanWriting& writing) {
    const FileNames files = writing.files.value_or(FileNames());
    OrderEditing editing{"--otio", title_of(order)};
    editing.shown = OrderEditing::Shown::needed;
    editing.files = &files;
    editing.numbers = writing.numbers;
    embedded::Warnings warnings;
    const EditPtr edit = edit_of_order(order, editing, warnings);
    return with_warnings(std::move(warnings), formats::write_otio(edit, *writing.keys));
}

Written cut_file_of_order(const OrderToTell& order, const ScanWriting&) {
    std::vector<formats::CutFileRow> rows;
    embedded::Warnings warnings;
    for (std::size_t i = 0; i < order.pieces.size(); ++i) {
        const film::OrderPiece& piece = order.pieces[i];
        const int number = static_cast<int>(i) + 1;
        if (piece.run.has_key())
            rows.push_back({piece.run.point_at(piece.frames.first), piece.frames.length(), piece.run.roll, number});
        else
            warnings.push_back({embedded::WarningKind::dropped,
                                "piece " + std::to_string(number) + ": left out, as there is no key number"});
    }
    return with_warnings(std::move(warnings), formats::write_cut_file(title_of(order), rows));
}

} // namespace tool
