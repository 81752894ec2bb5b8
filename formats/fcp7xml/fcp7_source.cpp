#include "formats/fcp7xml/fcp7_source.h"

#include "formats/fcp7xml/fcp7_film.h"
#include "formats/file_names.h"
#include "host/ascii_text.h"

#include <algorithm>

namespace formats::fcp7 {
namespace {

using embedded::LabelDescription;
using embedded::SourceDescription;

int hex_value(char c) {
    if (ascii::is_digit(c)) return c - '0';
    const char letter = ascii::lower(c);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

/// "D:/a b" of "D%3a/a%20b"; what isn't escaped as it should be stays.
std::string unescaped(std::string_view url) {
    std::string text;
    for (std::size_t i = 0; i < url.size(); ++i) {
        const int high = url[i] == '%' && i + 2 < url.size() ? hex_value(url[i + 1]) : -1;
        const int low = high >= 0 ? hex_value(url[i + 2]) : -1;
        text += low >= 0 ? static_cast<char>(high * 16 + low) : url[i];
        if (low >= 0) i += 2;
    }
    return text;
}

std::string stem_of_file(const Media& media) {
    const std::string_view name = media.file.text_of("name");
    if (!name.empty() && name.find('/') == std::string_view::npos) return stem_of(name);
    return stem_of(unescaped(media.file.text_of("pathurl")), "/\\");
}

std::string extension_of(const Media& media) {
    for (const std::string_view name : {media.file.text_of("pathurl"), media.file.text_of("name")}) {
        const std::size_t point = name.find_last_of("./\\");
        if (point != std::string_view::npos && name[point] == '.')
            return ascii::lower_case(std::string(name.substr(point)));
    }
    return {};
}

std::string reel_of(const Element& object) { return std::string(timecode_in(object).child("reel").text_of("name")); }

/// The reel that is given; without one the name of the file, by which its log calls it, and at last that of the clip.
std::string reel_of(const Media& media) {
    for (std::string reel :
         {reel_of(media.file), reel_of(media.clip), reel_of(media.item), reel_of(media.master), stem_of_file(media)})
        if (!reel.empty()) return reel;
    return name_of(media);
}

std::optional<Timecode> timecode_of_media(const Media& media, const Context& context) {
    for (const Element& object : {media.file, media.clip, media.item})
        if (std::optional<Timecode> found = object ? timecode_of(object, context.index, context.teller) : std::nullopt)
            return found;
    return std::nullopt;
}

/// Counted at a rate that there is no label for, timecode is told at the edit's.
LabelDescription label_of(const Timecode& timecode, const Media& media, const Context& context) {
    const Clock& clock = context.clock;
    const RateInfo* rate = clock.listed(timecode.rate);
    std::int64_t frame = timecode.frame;
    if (!rate) {
        rate = &clock.edit();
        frame = (Fraction(frame) * Fraction(rate->nominal, timecode.rate.timebase)).nearest();
        context.teller.rate(media.item, "no timecode counts " + std::to_string(timecode.rate.timebase) +
                                            " frames a second; counted in " + std::to_string(rate->nominal));
    }
    return {timecode.drop ? rate->drop_timecode : rate->timecode,
            {},
            timeline::sample_of(frame, rate->nominal),
            rate->rate()};
}

void add_timecode(const Media& media, const Context& context, SourceDescription& source) {
    const Rate rate = context.index.rate_of(media.file).value_or(media.rate);
    const RateInfo* listed = context.clock.listed(rate);
    source.rate = listed ? listed : &context.clock.edit();
    const auto timecode = timecode_of_media(media, context).value_or(Timecode{0, rate, false});
    source.video_timecode = label_of(timecode, media, context);
    const std::optional<Fraction> length = number_in(media.file, "duration", context.teller);
    if (length && Fraction(0) < *length) source.length = context.clock.seconds(*length, rate);
}

} // namespace

Media media_of(const Element& item, const Element& clip, const Rate& otherwise, const Context& context) {
    Media media;
    media.item = item;
    media.clip = clip;
    Element file = item.child("file");
    if (clip) {
        file = clip.child("file");
        if (!file) file = clip.child("media").child("video").child("track").child("clipitem").child("file");
    }
    media.file = context.index.full(file);
    media.master = context.index.master_clip(media.told_by());
    if (!media.master && clip) media.master = context.index.master_clip(item);
    media.rate = context.index.rate_of(item).value_or(otherwise);
    return media;
}

bool is_generated(const Media& media) { return !media.file.text_of("mediaSource").empty(); }

/// As "a.0001.dpx", one of many.
bool is_numbered(const Media& media) {
    const std::string stem = stem_of_file(media);
    return !stem.empty() && (ascii::is_digit(stem.back()) || stem.back() == ']');
}

bool is_still(const Media& media, const Fraction& in, Teller& teller) {
    static constexpr std::string_view pictures[] = {".png", ".psd", ".jpg", ".jpeg", ".tif", ".tiff",
                                                    ".tga", ".bmp", ".gif", ".exr",  ".dpx", ".ai"};
    const std::string extension = extension_of(media);
    if (std::find(std::begin(pictures), std::end(pictures), extension) == std::end(pictures)) return false;
    const std::optional<Fraction> length = number_from(media.file.text_of("duration"));
    if (!length || *length <= Fraction(1) || *length <= in) return true;
    if (!is_numbered(media))
        teller.doubt(media.item, "its file is a picture, but " + std::to_string(length->floor()) +
                                     " frames long; it is read as a series of pictures that move");
    return false;
}

bool is_named_black(std::string_view name) {
    while (!name.empty() && (ascii::is_digit(name.back()) || ascii::is_white(name.back())))
        name.remove_suffix(1);
    static constexpr std::string_view names[] = {"Slug", "Black", "Black Video"};
    return std::any_of(std::begin(names), std::end(names),
                       [&](std::string_view one) { return ascii::same(one, name); });
}

bool is_black(const Media& media) {
    return ascii::same(media.file.text_of("mediaSource"), "Slug") && is_named_black(name_of(media));
}

std::string name_of(const Media& media) {
    for (const Element& object : {media.clip, media.item, media.file})
        if (!object.text_of("name").empty()) return std::string(object.text_of("name"));
    return stem_of_file(media);
}

SourceDescription describe_source(const Media& media, const Context& context) {
    SourceDescription source;
    source.name = name_of(media);
    source.identity = std::string(media.file.text_of("pathurl"));
    if (source.identity.empty()) {
        const std::string_view file = media.file.text_of("name");
        source.identity = "name:" + (file.empty() ? source.name : std::string(file));
    }
    add_timecode(media, context, source);
    const std::string reel = reel_of(media);
    if (!reel.empty()) source.reels[embedded::tape_reel] = reel;
    add_film(media, context, source);
    add_log(media, source);
    // Film is conformed from its numbers: media that is lost still opens from them.
    source.opens = media.file || source.key || source.ink || !reel_of(media.item).empty();
    return source;
}

SourceDescription describe_rendered(const std::string& name, const std::string& identity, const Context& context) {
    SourceDescription source;
    source.name = name;
    source.identity = identity;
    source.rendered = true;
    source.rate = &context.clock.edit();
    return source;
}

} // namespace formats::fcp7
