// Names that the lists cut, and texts that can't be printed.

#include "film/finder.h"

#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace film {
namespace {

/// Bytes of rolls that tables keep, and of shot names in the assembly list.
constexpr std::size_t roll_width = 8, shot_width = 9;

std::string quoted(const std::string& text) { return '"' + text + '"'; }

int bytes_behind(unsigned char lead) {
    if (lead < 0x80) return 0;
    if (lead >= 0xC2 && lead < 0xE0) return 1;
    if (lead >= 0xE0 && lead < 0xF0) return 2;
    return lead >= 0xF0 && lead < 0xF5 ? 3 : -1;
}

/// What is wrong with a text; empty where nothing is.
std::string fault_of(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c < ' ' || c == 0x7F) return "a control character";
        const int behind = bytes_behind(c);
        if (behind < 0) return "bytes that aren't UTF-8";
        for (int more = 0; more < behind; ++more)
            if (++i == text.size() || (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U)
                return "bytes that aren't UTF-8";
    }
    return {};
}

/// Without what `fault_of` finds.
std::string printable(const std::string& text) {
    std::string plain;
    for (const char c : text)
        plain += static_cast<unsigned char>(c) < ' ' || static_cast<unsigned char>(c) >= 0x7F ? '?' : c;
    return plain;
}

/// The first event of each name, by what is left of the name.
class CutNames {
public:
    explicit CutNames(std::size_t width) : width_(width) {}

    /// The name met before that is the same when both are cut; null where there is none, or it was told.
    const std::string* meet(const std::string& name) {
        if (name.empty() || !known_.insert(name).second) return nullptr;
        const auto [first, fresh] = first_.emplace(name.substr(0, width_), name);
        return fresh ? nullptr : &first->second;
    }

private:
    const std::size_t width_;
    std::unordered_set<std::string> known_;
    std::unordered_map<std::string, std::string> first_;
};

} // namespace

void Finder::find_cut_names() {
    CutNames rolls(roll_width), tapes(roll_width), shots(shot_width);
    for (const Strip& strip : film_.strips) {
        const FilmEvent& event = film_.events[static_cast<std::size_t>(strip.item)];
        const struct {
            CutNames& names;
            const std::string& name;
            const char* what;
            std::size_t width;
            Severity severity;
        } looks[] = {{rolls, strip.rolls.listed, "roll", roll_width, Severity::doubt},
                     {tapes, strip.rolls.tape, "tape", roll_width, Severity::doubt},
                     {shots, strip.name, "shot", shot_width, Severity::note}};
        for (const auto& look : looks) {
            const std::string* other = look.names.meet(look.name);
            if (other)
                find(Code::name_cut, look.severity, event, strip.start,
                     std::string(look.what) + " " + quoted(look.name) + " is printed like " + quoted(*other) +
                         ", as lists keep " + std::to_string(look.width) + " bytes of it");
        }
    }
}

void Finder::find_bad_texts() {
    std::set<std::string> told;
    for (const Strip& strip : film_.strips) {
        const FilmEvent& event = film_.events[static_cast<std::size_t>(strip.item)];
        for (const std::string* text :
             {&strip.name, &strip.scene, &strip.take, &strip.rolls.listed, &strip.rolls.tape}) {
            const std::string fault = fault_of(*text);
            if (fault.empty() || !told.insert(*text).second) continue;
            find(Code::bad_text, Severity::note, event, strip.start, quoted(printable(*text)) + " holds " + fault);
        }
    }
}

} // namespace film
