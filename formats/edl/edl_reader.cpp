#include "formats/edl/edl_reader.h"

#include "embedded/services.h"
#include "formats/edl/edl_build.h"
#include "formats/file_names.h"
#include "formats/text_lines.h"

#include <algorithm>

namespace formats {
namespace {

using edl::NamedList;

/// One reading of the lists of one programme.
class Reading {
public:
    Reading(const std::vector<EdlText>& texts, const ReadOptions& options) : texts_(texts), options_(options) {}

    ReadResult run();

private:
    bool parse();
    bool is_readable(const EdlText& text);
    bool has_events(const NamedList& list);
    bool find_rate();
    const embedded::RateInfo* rate_by_the_lists() const;
    void warn_of_drop();
    std::string names_of_lists() const;
    embedded::EditDescription description() const;

    const std::vector<EdlText>& texts_;
    ReadOptions options_;
    std::vector<NamedList> lists_;
    ReadResult result_;
};

bool Reading::is_readable(const EdlText& text) {
    const std::string_view mark = text.bytes.substr(0, 2);
    if (mark != "\xFF\xFE" && mark != "\xFE\xFF") return true;
    result_.error = text.path + ": line 1: UTF-16 text; save it as UTF-8 or plain text";
    return false;
}

bool Reading::has_events(const NamedList& list) {
    if (!list.list.events.empty()) return true;
    result_.error = list.path + ": holds no event that can be read";
    if (!list.list.warnings.empty())
        result_.error += "; line " + std::to_string(list.list.warnings[0].line) + ": " + list.list.warnings[0].text;
    return false;
}

bool Reading::parse() {
    for (const EdlText& text : texts_) {
        if (!is_readable(text)) return false;
        lists_.push_back({text.path, edl::parse_list(text.bytes)});
        if (!has_events(lists_.back())) return false;
        for (const edl::Warning& warning : lists_.back().list.warnings)
            result_.warnings.push_back({warning.kind, edl::place_of(text.path, warning.line) + ": " + warning.text});
    }
    if (!lists_.empty()) return true;
    result_.error = "no edit list is given";
    return false;
}

const embedded::RateInfo* Reading::rate_by_the_lists() const {
    bool drop = false;
    int largest = 0;
    for (const NamedList& one : lists_) {
        if (one.list.rate) return embedded::nearest_rate(*one.list.rate);
        drop = drop || one.list.drop_line != 0;
        largest = std::max(largest, one.list.largest_frames);
    }
    if (!drop) return nullptr;
    return embedded::nearest_rate(largest < 30 ? 29.97 : 59.94);
}

std::string Reading::names_of_lists() const {
    std::string names;
    for (const NamedList& one : lists_)
        names += (names.empty() ? "" : ", ") + one.path;
    return names;
}

bool Reading::find_rate() {
    if (!options_.rate) options_.rate = rate_by_the_lists();
    if (options_.rate) return true;
    int largest = 0;
    for (const NamedList& one : lists_)
        largest = std::max(largest, one.list.largest_frames);
    result_.error = names_of_lists() +
                    ": an edit list doesn't tell its frames a second, and these timecodes go up to " +
                    std::to_string(largest) + " frames";
    result_.rate_missing = true;
    return false;
}

void Reading::warn_of_drop() {
    if (options_.rate->can_drop()) return;
    for (const NamedList& one : lists_)
        if (one.list.drop_line != 0)
            result_.warnings.push_back({embedded::WarningKind::rate,
                                        edl::place_of(one.path, one.list.drop_line) + ": there is no drop-frame at " +
                                            options_.rate->name + " a second; counted without"});
}

embedded::EditDescription Reading::description() const {
    embedded::EditDescription edit;
    edit.name = lists_.front().list.title.empty() ? stem_of(lists_.front().path) : lists_.front().list.title;
    edit.rate = options_.rate;
    for (const EdlText& text : texts_)
        edit.modification_time = std::max(edit.modification_time, text.file_time);
    return edit;
}

ReadResult Reading::run() {
    if (!parse() || !find_rate()) return std::move(result_);
    warn_of_drop();
    const edl::Tracks tracks = edl::lay_out_tracks(lists_, *options_.rate, options_.reverse_from_first);
    result_.warnings.insert(result_.warnings.end(), tracks.warnings.begin(), tracks.warnings.end());
    if (tracks.empty()) {
        result_.error = result_.warnings.empty() ? names_of_lists() + ": no event has a length and a channel"
                                                 : "no event can be listed; " + result_.warnings.back().text;
        return std::move(result_);
    }
    result_.edit = edl::build_edit(lists_, tracks, description(), options_.all_effects, result_.warnings);
    return std::move(result_);
}

} // namespace

ReadResult read_edl_texts(const std::vector<EdlText>& texts, const ReadOptions& options) {
    return Reading(texts, options).run();
}

ReadResult read_edl(const std::vector<std::string>& paths, const ReadOptions& options) {
    std::vector<std::string> bytes(paths.size());
    std::vector<EdlText> texts;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        std::string why;
        if (!embedded::read_file(paths[i], &bytes[i], &why)) {
            ReadResult result;
            result.error = paths[i] + ": " + why;
            return result;
        }
        why = fault_of_lines(bytes[i]);
        if (!why.empty()) {
            ReadResult result;
            result.error = paths[i] + ": " + why;
            return result;
        }
        texts.push_back({bytes[i], paths[i], embedded::time_of_input(paths[i])});
    }
    return read_edl_texts(texts, options);
}

ReadResult read_edl(const std::string& path, const ReadOptions& options) {
    return read_edl(std::vector<std::string>{path}, options);
}

bool looks_like_edl(std::string_view bytes) {
    edl::LineReader lines(bytes);
    edl::Words words;
    for (edl::Line line; lines.next(line);) {
        const edl::LineKind kind = edl::kind_of(line.text);
        if (kind == edl::LineKind::fcm) return true;
        if (kind != edl::LineKind::event) continue;
        try {
            edl::split_words(line.text, words);
            edl::parse_event_line(line, words);
            return true;
        } catch (const edl::BadLine&) {
            continue;
        }
    }
    return false;
}

} // namespace formats
