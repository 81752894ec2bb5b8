#include "formats/edit_readers.h"

#include "formats/aaf/aaf_reader.h"
#include "formats/bundle/otio_bundle.h"
#include "formats/edl/edl_reader.h"
#include "formats/fcp7xml/fcp7_reader.h"
#include "formats/fcpxml/fcpxml_reader.h"
#include "formats/otio/otio_reader.h"
#include "formats/sequence_choice.h"
#include "host/ascii_text.h"
#include "host/text.h"

#include <algorithm>

namespace formats {
namespace {

using Paths = std::vector<std::string>;

template <ReadResult (*read)(const std::string&, const ReadOptions&)>
ReadResult read_first(const Paths& paths, const ReadOptions& options) {
    return read(paths.front(), options);
}

constexpr EditReader readers[] = {
    {FileKind::otio, ".otio", false, read_first<read_otio>},
    {FileKind::edl, ".edl", true, read_edl},
    {FileKind::fcpxml, ".fcpxml", false, read_first<read_fcpxml>},
    {FileKind::fcp7xml, ".xml", false, read_first<read_fcp7xml>},
    {FileKind::aaf, ".aaf", false, read_first<read_aaf>},
    {FileKind::otioz, ".otioz", false, read_first<read_otioz>},
};

bool tells_nothing(FileKind kind) {
    return kind == FileKind::text || kind == FileKind::wide_text || kind == FileKind::binary || kind == FileKind::xml;
}

std::string extension_of(const std::string& path) {
    const std::size_t point = path.find_last_of("./");
    const bool has = point != std::string::npos && path[point] == '.';
    return has ? ascii::lower_case(path.substr(point)) : std::string();
}

Sequence sequence_of(const EditPtr& edit) {
    return {toUTF8(edit->getName()).c_str(), "", embedded::rate_info(edit->getSourceFrameRate())};
}

} // namespace

const EditReader* edit_reader_of(FileKind kind, const std::string& path) {
    if (kind == FileKind::json) kind = FileKind::otio;
    const std::string extension = extension_of(path);
    const auto found = std::find_if(std::begin(readers), std::end(readers), [&](const EditReader& reader) {
        return reader.kind == kind || (tells_nothing(kind) && extension == reader.extension);
    });
    return found == std::end(readers) ? nullptr : found;
}

std::string edits_wanted() {
    std::string text;
    for (const EditReader& reader : readers)
        text += (text.empty() ? "" : ", ") + std::string(reader.extension);
    return "an edit (" + text + ")";
}

ReadResult read_edit(const EditReader& reader, const Paths& paths, const ReadOptions& options) {
    ReadResult result = reader.read(paths, options);
    if (!result.edit || !result.sequences.empty()) return result;
    const std::vector<Sequence> only{sequence_of(result.edit)};
    const bool taken = result.sequence_chosen || choose_sequence(only, options, paths.front(), result).has_value();
    if (options.list_only) result.sequences = only;
    if (options.list_only || !taken) result.edit = EditPtr();
    return result;
}

} // namespace formats
