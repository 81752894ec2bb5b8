#include "tool/scan_files.h"

#include "tool/tool_error.h"

#include <algorithm>
#include <charconv>

namespace tool {
namespace {

constexpr const char* usual_pattern = "{roll}_{frame}.dpx";
constexpr const char* number_word = "{frame}";

/// What a word in braces stands for.
struct Named {
    const film::OrderPiece& piece;
    const film::PieceFacts& facts;
    std::size_t place;
};

std::string three_digits(std::size_t number) {
    constexpr std::size_t digits = 3;
    std::string text = std::to_string(number);
    return std::string(text.size() < digits ? digits - text.size() : 0, '0') + text;
}

struct Word {
    const char* word;
    std::string (*text)(const Named& named);
};

constexpr Word words[] = {
    {"roll", [](const Named& named) { return named.piece.run.roll; }},
    {"lab", [](const Named& named) { return named.facts.lab_roll; }},
    {"tape", [](const Named& named) { return named.facts.tape; }},
    {"scan", [](const Named& named) { return three_digits(named.place + 1); }},
    {"scene", [](const Named& named) { return named.facts.scenes; }},
    {"take", [](const Named& named) { return named.facts.takes; }},
    {"clip", [](const Named& named) { return named.facts.names; }},
};

const Word* word_named(const std::string& name) {
    const auto* const found =
        std::find_if(std::begin(words), std::end(words), [&name](const Word& one) { return name == one.word; });
    return found == std::end(words) ? nullptr : found;
}

/// Fit for one part of a path on all systems.
std::string file_part(const std::string& text) {
    constexpr std::string_view refused = "/\\:*?\"<>|{}";
    std::string part = text;
    for (char& c : part)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F || refused.find(c) != std::string_view::npos) c = '_';
    return part.empty() || part == "." || part == ".." ? "_" : part;
}

[[noreturn]] void refuse(const std::string& pattern, const std::string& why) {
    throw UsageError("--file-name " + pattern + ": " + why);
}

/// The width that "{frame:6}" asks for.
int digits_of(const std::string& pattern, const std::string& word) {
    constexpr std::size_t head = 6; // "frame:"
    constexpr int most_digits = 12;
    int digits = 0;
    const char* const end = word.data() + word.size();
    const auto [stopped, error] = std::from_chars(word.data() + head, end, digits);
    if (error != std::errc() || stopped != end || digits < 1 || digits > most_digits)
        refuse(pattern, "{" + word + "} names no number of digits from 1 to 12");
    return digits;
}

/// Where a word in braces stands, from `at` on.
struct Braces {
    std::size_t begin, end; ///< `end` is behind the closing one
};

std::optional<Braces> next_braces(const std::string& text, std::size_t at) {
    const std::size_t begin = text.find('{', at);
    if (begin == std::string::npos) return std::nullopt;
    const std::size_t end = text.find('}', begin);
    return Braces{begin, end == std::string::npos ? text.size() : end + 1};
}

std::string word_in(const std::string& text, const Braces& braces) {
    return text.substr(braces.begin + 1, braces.end - braces.begin - 2);
}

} // namespace

FileNames::FileNames() : pattern_(usual_pattern) {}

FileNames::FileNames(const std::string& pattern) {
    std::size_t at = 0, numbers = 0;
    while (const auto braces = next_braces(pattern, at)) {
        if (pattern[braces->end - 1] != '}') refuse(pattern, "a brace isn't closed");
        const std::string word = word_in(pattern, *braces);
        const bool wide = word.compare(0, 6, "frame:") == 0, number = wide || word == "frame";
        if (wide) digits_ = digits_of(pattern, word);
        if (!number && !word_named(word)) refuse(pattern, "there is no {" + word + "}");
        numbers += number ? 1 : 0;
        pattern_ += pattern.substr(at, braces->begin - at) + (number ? number_word : "{" + word + "}");
        at = braces->end;
    }
    pattern_ += pattern.substr(at);
    if (numbers != 1) refuse(pattern, "it needs one {frame}");
    if (pattern_.find('/', pattern_.find(number_word)) != std::string::npos)
        refuse(pattern, "{frame} belongs into the name of the file");
}

std::string FileNames::name_of(const film::OrderToTell& order, std::size_t place) const {
    const film::OrderPiece& piece = order.pieces[place];
    const film::PieceFacts facts = film::facts_of(order, piece);
    std::string name;
    std::size_t at = 0;
    while (const auto braces = next_braces(pattern_, at)) {
        const Word* word = word_named(word_in(pattern_, *braces));
        name += pattern_.substr(at, braces->begin - at);
        name += word ? file_part(word->text({piece, facts, place})) : number_word;
        at = braces->end;
    }
    return name + pattern_.substr(at);
}

std::int64_t first_number_of(const film::OrderToTell& order, const film::OrderPiece& piece, FrameNumbers numbers,
                             std::string& fault) {
    const std::int64_t by_key = piece.frames.first;
    if (numbers == FrameNumbers::timecode && piece.run.has_key()) {
        const film::Count timecode = film::timecode_of(order, piece).count;
        if (timecode && timecode.step == film::Fraction(1)) return timecode.frame_at(0);
        fault = timecode ? "the timecode isn't frame for frame with the film" : "there is no timecode";
    }
    if (numbers == FrameNumbers::take) {
        const std::int64_t from_take = film::facts_of(order, piece).from_take;
        if (from_take >= 0) return from_take;
        fault = "nothing tells where the take begins";
    }
    if (!fault.empty()) fault += ", so files count from number 0 of the roll's prefix";
    return by_key;
}

} // namespace tool
