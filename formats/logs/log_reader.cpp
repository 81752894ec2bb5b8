#include "formats/logs/log_reader.h"

#include "embedded/services.h"
#include "formats/logs/ale_reader.h"
#include "formats/logs/delimited_reader.h"
#include "formats/logs/flex_reader.h"
#include "formats/logs/keylog_reader.h"
#include "formats/logs/log_table.h"
#include "formats/text_lines.h"

namespace formats {
namespace {

struct Extension {
    std::string_view name;
    LogKind kind;
};

constexpr Extension extensions[] = {{".ale", LogKind::ale},       {".flx", LogKind::flex},
                                    {".flex", LogKind::flex},     {".ftl", LogKind::keylog},
                                    {".kl", LogKind::keylog},     {".rdb", LogKind::table},
                                    {".csv", LogKind::delimited}, {".tsv", LogKind::delimited},
                                    {".tab", LogKind::delimited}, {".txt", LogKind::delimited}};

LogKind kind_of_extension(std::string_view path) {
    const std::size_t dot = path.rfind('.');
    const std::string extension = dot == std::string_view::npos ? std::string() : lower_case(path.substr(dot));
    for (const Extension& known : extensions)
        if (known.name == extension) return known.kind;
    return LogKind::delimited;
}

LogKind kind_of(const TextLines& text, std::string_view path) {
    if (looks_like_ale(text)) return LogKind::ale;
    if (looks_like_keylog(text)) return LogKind::keylog;
    const LogKind by_name = kind_of_extension(path);
    if (by_name != LogKind::ale && by_name != LogKind::keylog && looks_like_flex(text)) return LogKind::flex;
    return by_name;
}

Log refused(const std::string& path, const std::string& why) {
    Log log;
    log.error = path + ": " + why;
    return log;
}

Log read_text(const TextLines& text, const std::string& path, const LogOptions& options) {
    switch (kind_of(text, path)) {
    case LogKind::ale:
        return read_ale(text, path, options);
    case LogKind::flex:
        return read_flex(text, path, options);
    case LogKind::keylog:
        return read_keylog(text, path, options);
    case LogKind::delimited:
        return read_delimited(text, path, options);
    case LogKind::table:
    case LogKind::unknown:
        break;
    }
    return refused(path, "isn't a log that is understood");
}

} // namespace

Log read_log(const std::string& path, const LogOptions& options) {
    std::string bytes, why;
    if (!embedded::read_file(path, &bytes, &why)) return refused(path, why);
    return read_log_bytes(bytes, path, options);
}

Log read_log_bytes(std::string_view bytes, const std::string& path, const LogOptions& options) {
    if (is_table(bytes)) return read_log_table(bytes, path);
    const TextLines text(bytes);
    if (*text.trouble()) return refused(path, text.trouble());
    Log log = read_text(text, path, options);
    if (text.was_latin() && log.error.empty())
        log.warnings.insert(log.warnings.begin(),
                            {embedded::WarningKind::text, path + ": isn't UTF-8; taken as Latin-1"});
    if (log.error.empty() && log.rows.empty()) log.error = path + ": holds no rows";
    return log;
}

} // namespace formats
