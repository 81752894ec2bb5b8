// Reads any bytes as an edit file, writes the edit as each format and reads that again: what was written must be an
// edit, and what wasn't must say why.

#include "formats/edit_writing.h"
#include "formats/edl/edl_reader.h"
#include "formats/edl/edl_writer.h"
#include "formats/logs/ale_reader.h"
#include "formats/logs/ale_writer.h"
#include "formats/otio/otio_reader.h"
#include "formats/otio/otio_writer.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    formats::ReadOptions options;
    options.rate = data[0] & 1 ? embedded::nearest_rate(29.97) : nullptr;
    options.all_effects = (data[0] & 2) != 0;
    const formats::ReadResult read = formats::read_otio_bytes(bytes, "a.otio", 0, options);
    if (!read.edit) return 0;
    const formats::Written written = formats::write_otio(read.edit);
    if (written.text.empty() == written.error.empty()) std::abort();
    if (written.error.empty() && !formats::read_otio_bytes(written.text, "b.otio", 0).edit) std::abort();
    for (int channel = 0; channel < read.edit->getNumChans(); ++channel) {
        const formats::Written list = formats::write_edl(read.edit, {channel, {}});
        if (list.text.empty() == list.error.empty()) std::abort();
        if (list.error.empty() && !formats::read_edl_texts({{list.text, "b.edl", 0}}).edit) std::abort();
        const formats::Written log = formats::write_ale(read.edit, {{channel}, {}});
        if (log.text.empty() == log.error.empty()) std::abort();
        const formats::TextLines lines(log.text);
        if (log.error.empty() && !formats::read_ale(lines, "b.ale").error.empty()) std::abort();
    }
    return 0;
}
