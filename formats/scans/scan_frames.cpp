#include "formats/scans/scan_frames.h"

#include "embedded/file_calls.h"
#include "embedded/label_kinds.h"
#include "formats/logs/film_values.h"
#include "formats/scans/dpx_header.h"
#include "formats/scans/exr_header.h"
#include "formats/scans/most_frequent.h"
#include "formats/scans/scan_rhythm.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace formats {
namespace {

using embedded::WarningKind;

constexpr std::size_t first_exr_bytes = 4096;
constexpr int mark_of_drop_frame = 40; ///< what bit 6 adds to the frames of a timecode
constexpr int slow_counting = 30;      ///< up to here no second has as many frames

/// Reads up to a number of bytes; false when the file can't be read.
bool read_up_to(int file, std::size_t wanted, std::string& bytes) {
    std::size_t have = bytes.size();
    bytes.resize(wanted);
    while (have < wanted) {
        const ssize_t count = embedded::retried(
            [&] { return ::pread(file, bytes.data() + have, wanted - have, static_cast<off_t>(have)); });
        if (count <= 0) {
            bytes.resize(have);
            return count == 0;
        }
        have += static_cast<std::size_t>(count);
    }
    return true;
}

HeaderReading read_open_header(int file, ScanKind kind, std::string& why) {
    std::string bytes;
    std::size_t wanted = kind == ScanKind::dpx ? dpx_header_bytes : first_exr_bytes;
    for (;;) {
        if (!read_up_to(file, wanted, bytes)) {
            why = std::strerror(errno);
            return {};
        }
        HeaderReading reading = kind == ScanKind::dpx ? read_dpx_header(bytes) : read_exr_header(bytes);
        if (reading.wanted == 0) return reading;
        if (bytes.size() < wanted) {
            reading.trouble = "ends inside its header";
            return reading;
        }
        wanted = reading.wanted;
    }
}

/// By how much most frames are ahead of the one before; nothing where no frame shows it.
std::optional<std::int64_t> usual_step(const ScanFiles& files, const std::vector<ScanFrame>& frames,
                                       std::optional<std::int64_t> ScanFrame::*count) {
    std::map<std::int64_t, std::size_t> steps;
    for (std::size_t i = 1; i < frames.size(); ++i) {
        const auto &before = frames[i - 1].*count, &here = frames[i].*count;
        const bool neighbours = files.files[frames[i - 1].file].number + 1 == files.files[frames[i].file].number;
        if (neighbours && before && here) ++steps[*here - *before];
    }
    return most_frequent(steps);
}

std::string text_of(const HeaderTime& time) {
    char text[24];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d:%02d", time.parts[0], time.parts[1], time.parts[2], time.parts[3]);
    return text;
}

class FrameReader {
public:
    FrameReader(const ScanFiles& files, const ScanOptions& options, ScanTold& told, embedded::Warnings& warnings)
        : files_(files), options_(options), told_(told), warnings_(warnings) {}

    ScanFrames read(std::string& why) {
        read_headers();
        if (headers_.empty()) return std::move(made_);
        if (!find_rate(why)) return std::move(made_);
        tell_faulty("a key number that can't be read", &ScanHeader::key_faulty);
        find_film();
        for (std::size_t i = 0; i < headers_.size(); ++i)
            add_frame(i);
        tell_faulty("a timecode that can't be read", &ScanHeader::time_faulty);
        keep_only_what_counts();
        return std::move(made_);
    }

private:
    void tell(std::size_t file, const std::string& what, WarningKind kind = WarningKind::dropped) {
        warnings_.emplace_back(kind, files_.path(file) + ": " + what);
    }
    void tell(const std::string& what) { tell(file_of_.front(), what); }

    void read_headers() {
        for (std::size_t file = 0; file < files_.files.size(); ++file) {
            std::string why;
            HeaderReading reading = read_header(files_.path(file), files_.kind, why);
            if (why.empty() && reading.trouble) why = reading.trouble;
            if (!why.empty()) {
                tell(file, why + "; left out");
                continue;
            }
            take_texts(reading.header);
            headers_.push_back(std::move(reading.header));
            file_of_.push_back(file);
        }
    }

    void take_texts(const ScanHeader& header) {
        if (made_.reel.empty()) made_.reel = header.reel;
        if (made_.slate.empty()) made_.slate = header.slate;
    }

    bool find_rate(std::string& why) {
        rate_ = options_.rate;
        for (const ScanHeader& header : headers_)
            if (!rate_) rate_ = header.rate;
        if (!rate_) why = files_.path(file_of_.front()) + ": no frame rate in the header; name it with --rate";
        return rate_ != nullptr;
    }

    void tell_faulty(const std::string& what, bool ScanHeader::*faulty) {
        const auto count =
            std::count_if(headers_.begin(), headers_.end(), [&](const ScanHeader& header) { return header.*faulty; });
        if (count == 0) return;
        const auto first =
            std::find_if(headers_.begin(), headers_.end(), [&](const ScanHeader& header) { return header.*faulty; });
        const std::size_t file = file_of_[static_cast<std::size_t>(first - headers_.begin())];
        const std::string others = count == 1   ? ""
                                   : count == 2 ? ", as has another"
                                                : ", as have " + std::to_string(count - 1) + " others";
        tell(file, "has " + what + others + "; left out");
    }

    bool are_neighbours(std::size_t i) const {
        return files_.files[file_of_[i - 1]].number + 1 == files_.files[file_of_[i]].number;
    }

    ScanRhythm rhythm() const {
        RhythmTaker taker;
        for (std::size_t i = 1; i < headers_.size(); ++i)
            if (headers_[i - 1].key && headers_[i].key && are_neighbours(i))
                taker.take(*headers_[i - 1].key, *headers_[i].key);
        return taker.rhythm();
    }

    /// What the caller says, or else the headers. Texts that key numbers speak against, as "35mm" of 3 perforations,
    /// don't count.
    label_t named_film(const ScanRhythm& shown) const {
        if (options_.film) return options_.film;
        for (const ScanHeader& header : headers_) {
            if (header.frame_perforations > 0 && header.count_perforations > 0)
                return film_of_rhythm({header.frame_perforations, header.count_perforations});
            const label_t film = film_kind_of_text(header.film_format);
            if (film && offset_unit(shown, film) != OffsetUnit::neither) return film;
        }
        return label_none;
    }

    bool has_keys() const {
        return std::any_of(headers_.begin(), headers_.end(), [](const ScanHeader& header) { return !!header.key; });
    }

    // Without a key number nothing depends on the film, so only the caller's word counts then.
    void find_film() {
        made_.film = options_.film;
        if (!has_keys()) return tell("no key numbers in the headers");
        const ScanRhythm shown = rhythm();
        const label_t named = named_film(shown);
        made_.film = named ? named : shown.step ? film_of_rhythm(shown) : label_none;
        if (!made_.film) return refuse_film(shown);
        const embedded::LabelKind& kind = embedded::label_kind(made_.film);
        const OffsetUnit unit = offset_unit(shown, made_.film);
        if (unit == OffsetUnit::neither) return refuse_rhythm(shown, kind);
        if (unit == OffsetUnit::frames)
            tell(file_of_.front(), "offsets of key numbers count frames in place of perforations; taken as that",
                 WarningKind::note);
        in_frame_ = made_.frame_perforations = kind.samples_per_frame;
        in_count_ = kind.samples_per_count;
        in_offset_ = unit == OffsetUnit::frames ? in_frame_ : 1;
    }

    void refuse_film(const ScanRhythm& shown) {
        tell((shown.step ? "key numbers step by " + std::to_string(*shown.step) +
                               " perforations, which doesn't tell the kind of film"
                         : std::string("nothing tells the kind of film")) +
             "; key numbers are left out; name it with --film");
    }

    void refuse_rhythm(const ScanRhythm& shown, const embedded::LabelKind& kind) {
        std::string what = "key numbers step by " + std::to_string(*shown.step) + " perforations a frame";
        if (shown.count) what += " and " + std::to_string(*shown.count) + " a count";
        tell(what + ", not by " + std::to_string(kind.samples_per_frame) + " and " +
             std::to_string(kind.samples_per_count) + " as " + kind.text + "; key numbers are left out");
    }

    /// Empty where nobody knows them.
    std::string letters_of(const std::string& film) {
        if (!film.empty() && film.find_first_of("0123456789") == std::string::npos) return film;
        for (const std::string& key : {film, std::string()})
            if (const auto known = options_.letters.find(key); known != options_.letters.end()) return known->second;
        if (told_.film_without_letters.insert(film).second)
            tell(film.empty() ? "the header names neither maker nor stock; name their letters with --letters, as KJ"
                              : "maker and stock " + film + " are digits; name their letters with --letters, as " +
                                    film + "=KJ");
        return {};
    }

    std::optional<std::int64_t> key_of(const HeaderKey& key) {
        if (in_count_ == 0 || key.offset * in_offset_ >= in_count_) return std::nullopt;
        const std::string letters = letters_of(key.film);
        if (letters.empty()) return std::nullopt;
        const std::string prefix = letters + key.prefix;
        auto& prefixes = made_.prefixes;
        auto found = std::find(prefixes.begin(), prefixes.end(), prefix);
        if (found == prefixes.end()) found = prefixes.insert(prefixes.end(), prefix);
        return (found - prefixes.begin()) * prefix_span + key.count * in_count_ + key.offset * in_offset_;
    }

    /// Sets also how it counts. One that doesn't exist at its rate is faulty.
    std::optional<std::int64_t> time_of(ScanHeader& header, TCInf& standard) const {
        const embedded::RateInfo* rate = options_.rate || !header.rate ? rate_ : header.rate;
        standard.rate = rate->code;
        if (!header.time) return std::nullopt;
        HeaderTime time = *header.time;
        int& frames = time.parts[3];
        if (rate->nominal <= slow_counting && frames >= mark_of_drop_frame) {
            frames -= mark_of_drop_frame;
            time.drop = true;
        }
        standard.drop = static_cast<std::uint8_t>(time.drop && rate->can_drop());
        LabelPoint point;
        point.set_type(TvStd_to_label_type(standard));
        point.set_sample(text_of(time).c_str());
        header.time_faulty = !point.is_useful() || time.parts[0] > 23;
        return header.time_faulty ? std::nullopt : std::optional<std::int64_t>(point.sample);
    }

    std::optional<std::int64_t> time_of_name(std::size_t file, const TCInf& standard) const {
        const std::uint64_t number = files_.files[file].number;
        const embedded::TimecodeBase* base = embedded::timecode_base(TvStd_to_label_type(standard));
        if (!base || number >= static_cast<std::uint64_t>(base->day())) return std::nullopt;
        return static_cast<std::int64_t>(number);
    }

    void add_frame(std::size_t index) {
        ScanHeader& header = headers_[index];
        ScanFrame frame{file_of_[index], {}, {}, {}, {}};
        if (header.key) frame.key = key_of(*header.key);
        frame.time = time_of(header, frame.standard);
        if (options_.time_from_names) {
            frame.standard.drop = 0;
            frame.time = time_of_name(frame.file, frame.standard);
            header.time_faulty = false;
        }
        if (header.position) frame.position = *header.position;
        made_.frames.push_back(frame);
    }

    void drop(std::optional<std::int64_t> ScanFrame::*count) {
        for (ScanFrame& frame : made_.frames)
            frame.*count = std::nullopt;
    }

    // Programs write one timecode into all headers, or number each of them 0.
    void keep_only_what_counts() {
        const auto time_step = usual_step(files_, made_.frames, &ScanFrame::time);
        if (time_step && *time_step != 1) {
            tell("timecodes step by " + std::to_string(*time_step) + " frames from file to file; left out");
            drop(&ScanFrame::time);
        }
        const auto position_step = usual_step(files_, made_.frames, &ScanFrame::position);
        if (position_step != 1) drop(&ScanFrame::position);
    }

    const ScanFiles& files_;
    const ScanOptions& options_;
    ScanTold& told_;
    embedded::Warnings& warnings_;
    std::vector<ScanHeader> headers_;
    std::vector<std::size_t> file_of_; ///< of each header
    const embedded::RateInfo* rate_ = nullptr;
    std::int64_t in_frame_ = 0, in_count_ = 0, in_offset_ = 1; ///< perforations; 0 where key numbers can't be used
    ScanFrames made_;
};

} // namespace

LabelPoint ScanFrames::key_point(std::int64_t key) const {
    LabelPoint point(static_cast<int>(key % prefix_span), film);
    point.set_prefix(prefixes[static_cast<std::size_t>(key / prefix_span)].c_str());
    return point;
}

HeaderReading read_header(const std::string& path, ScanKind kind, std::string& why) {
    const embedded::Descriptor file = embedded::open_file(path, O_RDONLY);
    if (!file.is_open()) {
        why = std::strerror(errno);
        return {};
    }
    return read_open_header(file.number(), kind, why);
}

ScanFrames read_frames(const ScanFiles& files, const ScanOptions& options, ScanTold& told, embedded::Warnings& warnings,
                       std::string& why) {
    return FrameReader(files, options, told, warnings).read(why);
}

} // namespace formats
