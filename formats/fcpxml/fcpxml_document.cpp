#include "formats/fcpxml/fcpxml_document.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace formats::fcpxml {
namespace {

struct StoryName {
    std::string_view name;
    Story story;
};

constexpr StoryName story_names[] = {
    {"asset-clip", Story::asset_clip}, {"audio", Story::audio},         {"audition", Story::audition},
    {"caption", Story::caption},       {"clip", Story::clip},           {"gap", Story::gap},
    {"live-drawing", Story::caption},  {"mc-clip", Story::mc_clip},     {"ref-clip", Story::ref_clip},
    {"spine", Story::spine},           {"sync-clip", Story::sync_clip}, {"title", Story::title},
    {"transition", Story::transition}, {"video", Story::video},
};

/// What hangs on items and stands nowhere in time.
constexpr std::string_view detail_names[] = {
    "audio-channel-source",
    "audio-role-source",
    "bookmark",
    "chapter-marker",
    "conform-rate",
    "hidden-clip-marker",
    "keyword",
    "marker",
    "mc-source",
    "metadata",
    "note",
    "object-tracker",
    "param",
    "rating",
    "reserved",
    "sync-source",
    "text",
    "timeMap",
    "text-style-def",
    "text-style",
    "analysis-marker",
    "data",
    "mask-data",
    "media-rep",
    "locator",
};

bool begins(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }

bool is_detail(std::string_view name) {
    return begins(name, "adjust-") || begins(name, "filter-") ||
           std::find(std::begin(detail_names), std::end(detail_names), name) != std::end(detail_names);
}

/// Rates as the names of formats end in them.
struct NamedRate {
    std::string_view digits;
    std::int64_t num, den;
};

constexpr NamedRate named_rates[] = {
    {"2398", 24000, 1001}, {"24", 24, 1}, {"25", 25, 1}, {"2997", 30000, 1001}, {"30", 30, 1},
    {"4795", 48000, 1001}, {"48", 48, 1}, {"50", 50, 1}, {"5994", 60000, 1001}, {"60", 60, 1},
};

/// "FFVideoFormat1080p2398": the digits behind the last letter. Interlaced names may count fields.
std::optional<Fraction> rate_of_name(std::string_view name) {
    const std::size_t letter = name.find_last_not_of("0123456789");
    if (letter == std::string_view::npos || (name[letter] != 'p' && name[letter] != 'i')) return std::nullopt;
    const std::string_view digits = name.substr(letter + 1);
    const auto* found = std::find_if(std::begin(named_rates), std::end(named_rates),
                                     [&](const NamedRate& known) { return known.digits == digits; });
    if (found == std::end(named_rates)) return std::nullopt;
    const Fraction rate(found->num, found->den);
    return name[letter] == 'i' && Fraction(48) < rate ? rate / 2 : rate;
}

std::optional<Fraction> rate_of_format(const Element& format) {
    if (!format.has_attribute("frameDuration")) return rate_of_name(format.attribute("name"));
    const std::optional<Fraction> frame = parse_time(format.attribute("frameDuration"));
    if (!frame || *frame <= Fraction(0)) refuse(format, "its \"frameDuration\" isn't a length");
    return Fraction(1) / *frame;
}

Format read_format(const Element& format) {
    Format read = format_at(rate_of_format(format));
    read.still = format.attribute("name").find("RateUndefined") != std::string_view::npos;
    return read;
}

/// The address of the medium itself, rather than that of a small copy.
std::string_view source_of(const Element& asset) {
    if (asset.has_attribute("src")) return asset.attribute("src");
    std::string_view any;
    for (const Element child : asset.children()) {
        if (child.name() != "media-rep") continue;
        const std::string_view kind = child.attribute("kind");
        if (kind.empty() || kind == "original-media") return child.attribute("src");
        any = child.attribute("src");
    }
    return any;
}

} // namespace

Format format_at(const std::optional<Fraction>& rate) {
    Format format;
    format.rate = rate;
    if (rate) format.info = embedded::nearest_rate(rate->to_double());
    if (format.info) format.rate = format.info->rate();
    return format;
}

std::string place_of(const Element& element) {
    std::string text = "line " + std::to_string(element.line()) + ": " + std::string(element.name());
    const std::string_view name = element.attribute("name");
    return name.empty() ? text : text + " \"" + std::string(name) + "\"";
}

std::string name_or(const Element& element, std::string_view other) {
    const std::string_view own = element.attribute("name");
    return std::string(own.empty() ? other : own);
}

void refuse(const Element& element, const std::string& reason) { throw ReadError{place_of(element) + ": " + reason}; }

Story story_of(const Element& element) {
    const std::string_view name = element.name();
    const auto* found =
        std::lower_bound(std::begin(story_names), std::end(story_names), name,
                         [](const StoryName& known, std::string_view wanted) { return known.name < wanted; });
    if (found != std::end(story_names) && found->name == name) return found->story;
    return is_detail(name) ? Story::none : Story::unknown;
}

int lane_of(const Element& element) {
    const std::string_view text = element.attribute("lane");
    constexpr int farthest = 10'000;
    int lane = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), lane);
    if (error != std::errc() || end != text.data() + text.size()) return 0;
    return std::clamp(lane, -farthest, farthest);
}

std::string decoded(std::string_view address) {
    const auto digit = [](char c) { return std::string_view("0123456789abcdef").find(ascii::lower(c)); };
    std::string plain;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const bool coded =
            address[i] == '%' && i + 2 < address.size() && digit(address[i + 1]) < 16 && digit(address[i + 2]) < 16;
        plain += coded ? static_cast<char>(digit(address[i + 1]) * 16 + digit(address[i + 2])) : address[i];
        if (coded) i += 2;
    }
    return plain;
}

Resources::Resources(const Element& root, embedded::Warnings& warnings) {
    for (const Element child : root.children()) {
        if (child.name() == "resources") add(child, warnings);
        if (child.name() == "project") add(child.child("resources"), warnings);
    }
}

void Resources::add(const Element& resources, embedded::Warnings& warnings) {
    for (const Element child : resources.children()) {
        const std::string_view id = child.attribute("id");
        if (id.empty() || by_id_.try_emplace(id, child).second) continue;
        warnings.push_back(place_of(child) + ": there is another resource \"" + std::string(id) +
                           "\" before it, which counts");
    }
}

Element Resources::find(std::string_view id) const {
    const auto found = by_id_.find(id);
    return found == by_id_.end() ? Element() : found->second;
}

std::optional<Fraction> Context::time(const Element& element, std::string_view attribute) const {
    if (!element.has_attribute(attribute)) return std::nullopt;
    const std::optional<Fraction> seconds = parse_time(element.attribute(attribute));
    if (!seconds)
        refuse(element, "its \"" + std::string(attribute) + "\" of \"" + std::string(element.attribute(attribute)) +
                            "\" isn't a time as \"1001/24000s\", or is beyond ten years");
    return *seconds * scale;
}

std::optional<Fraction> Context::length(const Element& element, std::string_view attribute) const {
    const std::optional<Fraction> seconds = time(element, attribute);
    if (seconds && *seconds < Fraction(0)) refuse(element, "its \"" + std::string(attribute) + "\" is below 0");
    return seconds;
}

Format Context::format_of(const Element& element) const {
    const Element format = resources.find(element.attribute("format"));
    return format.name() == "format" ? read_format(format) : Format();
}

Asset Context::read_asset(const Element& element) const {
    Asset asset;
    asset.element = element;
    asset.name = element.attribute("name");
    asset.src = source_of(element);
    asset.start = time(element, "start").value_or(Fraction(0));
    asset.duration = length(element, "duration");
    asset.has_audio = element.attribute("hasAudio") == "1";
    asset.has_video = element.attribute("hasVideo") == "1" || (!element.has_attribute("hasVideo") && !asset.has_audio);
    asset.format = format_of(element);
    asset.format.still = asset.has_video && (asset.format.still || (asset.duration && *asset.duration == Fraction(0)));
    asset.identity = asset.src;
    if (asset.identity.empty()) asset.identity = element.attribute("uid");
    if (asset.identity.empty()) asset.identity = "name:" + asset.name;
    return asset;
}

const Asset* Context::asset_of(const Element& element) const {
    const Element found = resources.find(element.attribute("ref"));
    if (found.name() != "asset") return nullptr;
    const auto known = assets_.find(found.number());
    if (known != assets_.end()) return &known->second;
    return &assets_.emplace(found.number(), read_asset(found)).first->second;
}

void Context::left_out(const Element& element) const { left_out_[std::string(element.name())].add(element); }

void Context::unused_marker(const Element& owner) const { unused_markers_.add(owner); }

void Context::tell_of_left_out() const {
    const auto and_more = [](const LeftOut& kind) {
        return kind.count > 1 ? "; so with " + std::to_string(kind.count - 1) + " more" : std::string();
    };
    for (const auto& [name, kind] : left_out_)
        warn(kind.first, "left out, as nothing of it comes into a list" + and_more(kind),
             embedded::WarningKind::dropped);
    if (unused_markers_.count > 0)
        warn(unused_markers_.first, "a marker lies outside what is used of it" + and_more(unused_markers_),
             embedded::WarningKind::note);
}

} // namespace formats::fcpxml
