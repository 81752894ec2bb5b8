#include "tool/log_use.h"

#include "embedded/services.h"
#include "formats/logs/log_table.h"
#include "host/labels.h"
#include "host/recdb.h"
#include "tool/open_logs.h"
#include "tool/output_files.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <climits>

namespace tool {

std::string fault_of_film(const std::string& path) {
    const recdb log(wide_path(path), INT_MAX, false);
    const char* header = log.get_param_val("film label_std");
    std::string film = header ? header : "";
    const int column = log.get_fieldnum("film label_std");
    if (column != -1 && log.get_num_records() != 0) {
        const char* of_first_row = log.get_record(0)->get_field(static_cast<unsigned short>(column));
        if (of_first_row && *of_first_row) film = of_first_row;
    }
    if (film.empty() || edlstr_to_label_type(film.c_str()) != label_none) return {};
    return path + ": \"" + one_line(film) + "\" of \"film label_std\" is no kind of film";
}

} // namespace tool
