// Whole runs: any bytes as an edit (.otio or .edl), from the reader to the lists, with and without a log. The first
// byte chooses. Whatever the names hold, a list holds no control characters but its own line ends and pages, and stays
// within its width.

#include "cutlist/cutlist_options.h"
#include "embedded/edit_builder.h"
#include "embedded/services.h"
#include "formats/edl/edl_reader.h"
#include "formats/logs/log_reader.h"
#include "formats/logs/log_table.h"
#include "formats/otio/otio_reader.h"
#include "quillbrook/cutlist.h"
#include "quillbrook/logging_tables.h"
#include "tests/support/environment.h"
#include "tests/support/scratch_directory.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

constexpr std::size_t longest_edit = 1 << 14;
constexpr int page_width = 130;

constexpr char log_text[] = "Heading\nFIELD_DELIM\tTABS\nVIDEO_FORMAT\tPAL\nFPS\t25\n\nColumn\nName\tTape\tStart\tEnd\t"
                            "Camroll\tKN Start\n\nData\none\tR1\t01:00:00:00\t02:00:00:00\tA001\tKJ 12 3456-0100+00\n"
                            "two\tR2\t01:00:00:00\t02:00:00:00\tA002\tKJ 12 3457-0100+00\n";

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

void save_log(const std::string& path) {
    const formats::Log log = formats::read_log_bytes(log_text, "days.ale");
    const LightweightString<wchar_t> name = fromUTF8(path.c_str(), -1);
    filmdb table(name, name);
    formats::fill_table(table, log.rows);
    if (log.rows.size() != 2 || table.save_text() != 0) std::abort();
}

EditPtr read_edit(std::string_view bytes, bool is_list) {
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(25.0);
    options.all_effects = true;
    return is_list ? formats::read_edl_texts({{bytes, "a.edl", 0}}, options).edit
                   : formats::read_otio_bytes(bytes, "a.otio", 0, options).edit;
}

void check_list(const std::string& path, bool is_paged) {
    std::string bytes;
    embedded::read_file(path, &bytes, nullptr);
    int column = 0;
    for (const char c : bytes) {
        if (c == '\r' || c == '\f' || c == '\n') column = 0;
        const bool own = c == '\n' || (is_paged ? c == '\r' || c == '\f' : c == '\t');
        if (static_cast<unsigned char>(c) < 32 && !own) std::abort();
        if (is_paged && static_cast<signed char>(c) >= 32 && ++column > page_width) std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchDirectory scratch;
    static const EnvironmentValue now("SOURCE_DATE_EPOCH", "1000000000");
    static const bool logged = (save_log(scratch.file("days.RDB")), true);
    if (size == 0 || size > longest_edit) return 0;
    const int choice = data[0];
    const EditPtr edit = read_edit({reinterpret_cast<const char*>(data) + 1, size - 1}, (choice & 1) != 0);
    if (!edit) return 0;
    cutlist_options() = CutlistOptions();
    embedded::settings_block block;
    block.set("chan_type", choice & 2 ? "2" : "1");
    block.set("chan_num", "0");
    block.set("pull_match_assembly", choice & 4 ? "1" : "0");
    block.set("edit_units", choice & 8 ? "1" : "0");
    block.set("log_file", scratch.file("days.RDB"));
    block.set("output_file", scratch.file("a.txt"));
    for (const char* list : {"fsl_type1_file", "fsl_type2_file", "fsl_type3_file", "fsl_type4_file"})
        block.set(list, "1");
    SilentLogger logger;
    const int use_log = logged && (choice & 16) ? 1 : 0;
    if (!make_cutlist_from_edit(edit, logger, use_log, &block, embedded::EditBuilder::cues_of(edit), true)) return 0;
    check_list(scratch.file("a.txt"), true);
    for (const char* name : {"a.sl1", "a.sl2", "a.sl3", "a.sl4"})
        check_list(scratch.file(name), false);
    return 0;
}
