#include "formats/fcpxml/fcpxml_project.h"

#include "formats/file_names.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace formats::fcpxml {
namespace {

bool is_clip(const Element& element) {
    const Story story = story_of(element);
    return story == Story::asset_clip || story == Story::clip || story == Story::ref_clip || story == Story::mc_clip ||
           story == Story::sync_clip || story == Story::audition;
}

/// A library's folder is called after it.
std::string library_name(const Element& library) {
    std::string_view location = library.attribute("location");
    while (!location.empty() && location.back() == '/')
        location.remove_suffix(1);
    return stem_of(decoded(location));
}

class Search {
public:
    explicit Search(const Context& context, const std::string& stem) : context_(context), stem_(stem) {}

    std::vector<Project> run(const Element& root, const std::string& wanted) {
        look_into(root, {});
        std::vector<Project>& usual = projects_.empty() ? clips_ : projects_;
        if (wanted.empty() || holds(usual, wanted)) return std::move(usual);
        if (holds(clips_, wanted)) return std::move(clips_);
        look_for_compounds(root);
        return std::move(holds(compounds_, wanted) ? compounds_ : usual);
    }

private:
    /// Libraries, events and, of old, projects hold what can be read.
    void look_into(const Element& holder, const std::string& library) {
        for (const Element child : holder.children()) {
            const std::string_view name = child.name();
            if (name == "library") look_into(child, library_name(child));
            if (name == "event") look_into(child, library.empty() ? std::string(child.attribute("name")) : library);
            if (name == "project") add_project(child, library);
            if (is_clip(child)) add_clip(child, library);
        }
    }

    void look_for_compounds(const Element& holder) {
        for (const Element child : holder.children()) {
            if (child.name() == "resources" || child.name() == "project") look_for_compounds(child);
            if (child.name() != "media" || !child.child("sequence")) continue;
            const Element sequence = child.child("sequence");
            compounds_.push_back({child, sequence, name_of(child), {}, context_.format_of(sequence)});
        }
    }

    static bool holds(const std::vector<Project>& projects, const std::string& name) {
        return std::any_of(projects.begin(), projects.end(), [&](const Project& one) { return one.name == name; });
    }

    void add_project(const Element& project, const std::string& library) {
        const Element sequence = project.child("sequence");
        if (!sequence) return look_into(project, library);
        if (sequence.child("spine").first_child())
            projects_.push_back({project, sequence, name_of(project), library, context_.format_of(sequence)});
    }

    void add_clip(const Element& clip, const std::string& library) {
        const Element media = context_.resources.find(clip.attribute("ref"));
        Project found{clip, media.child("sequence"), name_of(clip), library, {}};
        if (found.sequence)
            found.format = context_.format_of(found.sequence);
        else if (media.child("multicam"))
            found.format = context_.format_of(media.child("multicam"));
        else
            found.format = format_of_clip(clip);
        clips_.push_back(std::move(found));
    }

    Format format_of_clip(const Element& clip) const {
        const Format own = context_.format_of(clip);
        if (own.info) return own;
        if (const Asset* asset = context_.asset_of(clip)) return asset->format;
        for (const Element child : clip.children())
            if (story_of(child) != Story::none && lane_of(child) == 0)
                if (const Format inner = format_of_clip(child); inner.info) return inner;
        return own;
    }

    std::string name_of(const Element& element) const {
        const std::string_view name = element.attribute("name");
        return name.empty() ? stem_ : std::string(name);
    }

    const Context& context_;
    const std::string& stem_;
    std::vector<Project> projects_, clips_, compounds_;
};

/// Days from the epoch of a date of our calendar: years begin in March, so that the day too many comes last.
std::int64_t days_to(std::int64_t year, std::int64_t month, std::int64_t day) {
    year -= month <= 2 ? 1 : 0;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t year_of_era = year - era * 400;
    const std::int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year - 719468;
}

} // namespace

std::vector<Project> projects_of(const Element& root, const Context& context, const std::string& stem,
                                 const std::string& wanted) {
    return Search(context, stem).run(root, wanted);
}

std::vector<Sequence> sequences_of(const std::vector<Project>& projects) {
    std::vector<Sequence> sequences;
    for (const Project& project : projects)
        sequences.push_back({project.name, "line " + std::to_string(project.element.line()), project.format.info});
    return sequences;
}

std::int64_t parse_date(std::string_view text) {
    constexpr std::string_view pattern = "dddd-dd-dd dd:dd:dd +dddd";
    if (text.size() != pattern.size()) return 0;
    std::array<std::int64_t, 7> numbers{};
    std::size_t number = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (pattern[i] == 'd') {
            if (!ascii::is_digit(text[i])) return 0;
            numbers[number] = numbers[number] * 10 + (text[i] - '0');
        } else {
            if (pattern[i] != text[i] && !(pattern[i] == '+' && text[i] == '-')) return 0;
            if (i > 0 && pattern[i - 1] == 'd') ++number;
        }
    }
    const auto [year, month, day, hour, minute, second, zone] = numbers;
    if (month < 1 || month > 12 || day < 1 || day > 31) return 0;
    const std::int64_t offset = (zone / 100 * 60 + zone % 100) * 60;
    const std::int64_t local = ((days_to(year, month, day) * 24 + hour) * 60 + minute) * 60 + second;
    return text[pattern.find('+')] == '-' ? local + offset : local - offset;
}

} // namespace formats::fcpxml
