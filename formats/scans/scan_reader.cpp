#include "formats/scans/scan_reader.h"

#include "embedded/visible_text.h"
#include "formats/scans/scan_stretches.h"

#include <filesystem>

namespace formats {
namespace {

namespace fs = std::filesystem;

/// The name of a folder, also of one that is only pointed to, as ".".
std::string name_of_folder(const std::string& path) {
    std::error_code ignored;
    const fs::path whole = fs::absolute(path, ignored).lexically_normal();
    return (whole.has_filename() ? whole : whole.parent_path()).filename().string();
}

/// "A012_[0001-0960].dpx"
std::string name_of_stretch(const ScanFiles& files, std::size_t first, std::size_t last) {
    const std::string& name = files.files[first].name;
    const std::string digits = files.digits(first);
    const std::size_t dot = name.rfind('.');
    return name.substr(0, dot - digits.size()) + "[" + digits + "-" + files.digits(last) + "]" + name.substr(dot);
}

class ScanReader {
public:
    ScanReader(const ScanOptions& options, Log& log) : options_(options), log_(log) {}

    void read(const std::string& folder) {
        const std::vector<ScanFiles> found = find_scans(folder, log_.warnings, log_.error);
        if (log_.error.empty() && found.empty()) log_.error = folder + ": holds no DPX or OpenEXR pictures";
        for (const ScanFiles& files : found)
            if (log_.error.empty()) read_sequence(files);
    }

private:
    void read_sequence(const ScanFiles& files) {
        ScanFrames scan = read_frames(files, options_, told_, log_.warnings, log_.error);
        if (!log_.error.empty()) return;
        const std::vector<Stretch> stretches = stretches_of(files, scan, log_.warnings);
        for (std::size_t i = 0; i < stretches.size(); ++i)
            add_row(files, scan, stretches[i], stretches.size() == 1 ? "" : "-" + std::to_string(i + 1));
    }

    std::string reel_of(const ScanFiles& files, const ScanFrames& scan) const {
        for (const std::string& reel : {options_.reel, scan.reel, files.stem})
            if (!reel.empty()) return reel;
        return name_of_folder(files.folder);
    }

    void add_row(const ScanFiles& files, const ScanFrames& scan, const Stretch& stretch, const std::string& number) {
        LogRow row;
        const ScanFrame& first = scan.frames[stretch.first];
        row.file = files.path(first.file);
        row.line = 1;
        row[LogField::reel] = row[LogField::cam_reel] = reel_of(files, scan);
        row[LogField::name] = row[LogField::reel] + number;
        row[LogField::description] = scan.slate;
        row[LogField::notes] = name_of_stretch(files, first.file, scan.frames[stretch.last].file);
        row.standard = first.standard;
        row.film = scan.film;
        set_times(row, first, stretch.last - stretch.first + 1);
        set_key(row, scan, first);
        receive_texts(row);
        log_.rows.push_back(std::move(row));
    }

    void set_times(LogRow& row, const ScanFrame& first, std::size_t frames) {
        if (!first.time) {
            log_.warnings.emplace_back(embedded::WarningKind::dropped,
                                       row.file + ": no timecode; the row has no start");
            return;
        }
        const label_t kind = TvStd_to_label_type(row.standard);
        const int start = static_cast<int>(*first.time), length = static_cast<int>(frames);
        row.start = LabelPoint(start, kind);
        row.end = LabelPoint(start + length, kind);
        row[LogField::start] = row.start.get_string();
        row[LogField::end] = row.end.get_string();
        row[LogField::duration] = LabelPoint(length, kind).get_string();
    }

    static void set_key(LogRow& row, const ScanFrames& scan, const ScanFrame& first) {
        if (!first.key) return;
        row.key_start = scan.key_point(*first.key);
        row[LogField::key_start] = row.key_start.get_string();
    }

    void receive_texts(LogRow& row) {
        for (std::string& text : row.texts)
            embedded::receive(text, row.file, log_.warnings);
    }

    const ScanOptions& options_;
    Log& log_;
    ScanTold told_;
};

} // namespace

Log read_scans(const std::vector<std::string>& folders, const ScanOptions& options) {
    Log log;
    ScanReader reader(options, log);
    for (const std::string& folder : folders)
        if (log.error.empty()) reader.read(folder);
    if (log.error.empty() && log.rows.empty()) log.error = folders.front() + ": holds no picture that can be used";
    if (!log.error.empty()) log.rows.clear();
    return log;
}

} // namespace formats
