#include "formats/fcp7xml/fcp7_film.h"

#include "formats/key_number.h"
#include "host/ascii_text.h"

#include <algorithm>

namespace formats::fcp7 {
namespace {

using embedded::LabelDescription;
using embedded::SourceDescription;

struct Standard {
    std::string_view written, film;
};

constexpr Standard standards[] = {
    {"35mm4p", "35mm-4p"}, {"35mm3p", "35mm-3p"}, {"35mm2p", "35mm-2p"},
    {"35mm8p", "35mm-8p"}, {"16mm20", "16mm-1p"}, {"", "35mm-4p"},
};

struct Roll {
    std::string_view element;
    embedded::ReelLabel medium;
};

constexpr Roll rolls[] = {
    {"cameraroll", embedded::camera_reel}, {"labroll", embedded::lab_reel}, {"dailyroll", embedded::composite_reel}};

/// Of the item or its clip, else of the clip of the bin.
Element child_of(const Media& media, std::string_view name) {
    for (const Element& object : {media.clip, media.item, media.master})
        if (const Element found = object.child(name); found.first_child()) return found;
    return {};
}

std::string without_blanks(std::string_view text) {
    std::string result;
    std::copy_if(text.begin(), text.end(), std::back_inserter(result), [](char c) { return !ascii::is_white(c); });
    return result;
}

constexpr std::size_t feet_digits = 4, frame_digits = 2;

bool are_digits(std::string_view text) { return std::all_of(text.begin(), text.end(), ascii::is_digit); }

/// "5867+07" of feet and frames, also of those without the sign between them; empty where it is none of them.
std::string plain_frames(std::string_view written) {
    std::string text = plain_key_number(written);
    if (text.size() == feet_digits + frame_digits && are_digits(text)) text.insert(feet_digits, "+");
    const std::size_t sign = std::min(text.find('+'), text.size());
    if (sign == 0 || !are_digits(text.substr(0, sign)) || (sign == text.size() && sign > feet_digits)) return {};
    if (sign < feet_digits) text.insert(0, feet_digits - sign, '0');
    return text;
}

/// Two letters and six digits, also in groups; empty where it is something else, which would shift the digits behind
/// it.
std::string plain_prefix(std::string_view written) {
    constexpr std::size_t letters = 2, length = 8;
    std::string text = without_blanks(written);
    std::erase(text, '-');
    std::transform(text.begin(), text.end(), text.begin(), ascii::upper);
    const bool is_one = text.size() == length && std::all_of(text.begin(), text.begin() + letters, ascii::is_capital) &&
                        are_digits(text.substr(letters));
    return is_one ? text : std::string();
}

/// One reading of one `filmdata`.
class FilmData {
public:
    FilmData(const Element& data, const Media& media, const Context& context, SourceDescription& source)
        : data_(data), media_(media), context_(context), source_(source), film_(film()) {}

    void add() {
        for (const Roll& roll : rolls)
            if (const std::string_view text = data_.text_of(roll.element); !text.empty())
                source_.reels[roll.medium] = std::string(text);
        add_film_rate();
        if (!film_.empty()) {
            source_.key = key();
            source_.ink = ink();
        } else if (!written_in("keycode").empty() || !written_in("inknumber").empty()) {
            context_.teller.dropped(media_.item,
                                    "\"" + std::string(data_.text_of("filmstandard")) +
                                        "\" is no film standard that is known, so its numbers are left out");
        }
    }

private:
    std::string film() const {
        const std::string_view written = data_.text_of("filmstandard");
        const auto found = std::find_if(std::begin(standards), std::end(standards),
                                        [&](const Standard& one) { return ascii::same(one.written, written); });
        return found == std::end(standards) ? std::string() : std::string(found->film);
    }

    std::optional<LabelDescription> label(label_t type, const std::string& text, std::string_view what) const {
        std::string fault;
        std::optional<LabelDescription> label = timeline::label_of_text(type, text, what, fault);
        if (!label) context_.teller.dropped(media_.item, fault);
        return label;
    }

    std::string_view written_in(std::string_view number) const { return data_.child(number).text_of("feetframes"); }

    void drop(std::string_view prefix, std::string_view written, const char* what) const {
        context_.teller.dropped(media_.item, "\"" + std::string(prefix) + "\", \"" + std::string(written) +
                                                 "\" can't be read as its " + what + ", which is left out");
    }

    std::string perforation(const Element& number) const {
        const std::string_view offset = number.text_of("perfoffset");
        return offset.empty() || offset == "0" ? std::string() : "." + std::string(offset);
    }

    std::optional<LabelDescription> key() const {
        const Element number = data_.child("keycode");
        const std::string_view written = written_in("keycode");
        if (written.empty()) {
            if (number.text_of("prefix").empty()) return std::nullopt;
            context_.teller.dropped(media_.item, "its key number has no feet and frames");
            return std::nullopt;
        }
        if (truth_in(number, "reversed", false)) {
            context_.teller.dropped(media_.item, "its key numbers run backwards, which no list can follow, so they are "
                                                 "left out");
            return std::nullopt;
        }
        if (subclip_start() != Fraction(0))
            context_.teller.doubt(media_.item, "it is a subclip; its key number is taken for that of its file's first "
                                               "frame");
        const std::string prefix = plain_prefix(number.text_of("prefix")), frames = plain_frames(written);
        if (prefix.empty() || frames.empty()) {
            drop(number.text_of("prefix"), written, "key number");
            return std::nullopt;
        }
        return label(edlstr_to_label_type(film_.c_str(), user_label_key), prefix + frames + perforation(number),
                     "key number");
    }

    Fraction subclip_start() const {
        return number_in(media_.item.child("subclipinfo"), "startoffset", context_.teller).value_or(Fraction(0));
    }

    std::optional<LabelDescription> ink() const {
        const Element number = data_.child("inknumber");
        const std::string_view written = written_in("inknumber");
        if (written.empty()) return std::nullopt;
        constexpr std::size_t length = 4;
        std::string prefix = without_blanks(number.text_of("prefix"));
        const std::string frames = plain_frames(written);
        if (prefix.size() > length || frames.empty()) {
            drop(prefix, written, "ink number");
            return std::nullopt;
        }
        if (!prefix.empty()) prefix.resize(length, '_');
        return label(edlstr_to_label_type(film_.c_str(), user_label_ink), prefix + frames, "ink number");
    }

    /// Film at 24 on 30 video frames went through a pulldown; at 30 it is there frame for frame.
    void add_film_rate() const {
        const std::optional<Fraction> speed = number_in(data_, "telecinespeed", context_.teller);
        if (!speed) return;
        const Fraction nominal(source_.rate->nominal);
        if (*speed <= Fraction(0)) return;
        if (nominal < *speed) {
            context_.teller.rate(media_.item, "its telecine speed is above its video's rate and doesn't count");
            return;
        }
        const Fraction rate = *speed * source_.rate->rate() / nominal;
        if (rate != embedded::film_rate_of(*source_.rate)) source_.film_rate = rate;
    }

    const Element data_;
    const Media& media_;
    const Context& context_;
    SourceDescription& source_;
    std::string film_;
};

/// The bin's clip may have been changed since, or the item: both can't be right.
void compare_with_master(const Media& media, const Element& data, const Context& context) {
    const Element other = media.master.child("filmdata");
    if (!other.first_child() || other == data) return;
    for (const std::string_view part : {"prefix", "feetframes"})
        if (other.child("keycode").text_of(part) != data.child("keycode").text_of(part)) {
            context.teller.doubt(media.item, "its key number isn't that of its clip in the bin; its own counts");
            return;
        }
}

} // namespace

void add_film(const Media& media, const Context& context, SourceDescription& source) {
    const Element data = child_of(media, "filmdata");
    if (!data) return;
    compare_with_master(media, data, context);
    FilmData(data, media, context, source).add();
}

void add_log(const Media& media, SourceDescription& source) {
    const auto fill = [](std::string& field, std::initializer_list<std::string_view> texts) {
        for (const std::string_view text : texts)
            if (field.empty()) field = text;
    };
    for (const Element& object : {media.clip, media.item, media.master}) {
        const Element slate = object.child("filmdata").child("filmslate");
        const Element log = object.child("logginginfo");
        fill(source.scene, {slate.text_of("scene"), log.text_of("scene")});
        fill(source.take, {slate.text_of("take"), log.text_of("shottake")});
        fill(source.description, {log.text_of("description"), log.text_of("lognote")});
    }
}

} // namespace formats::fcp7
