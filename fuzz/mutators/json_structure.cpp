#include "fuzz/mutators/structures.h"

#include <algorithm>

namespace fuzz {
namespace {

const Words numbers = {"0",
                       "-1",
                       "1",
                       "24",
                       "25.0",
                       "23.976023976023978",
                       "29.97",
                       "0.1",
                       "1e308",
                       "-1e-308",
                       "2147483648",
                       "9007199254740993",
                       "18446744073709551616",
                       "null",
                       "true",
                       "{}",
                       "[]",
                       "\"\""};

const Words texts = {"Clip.2",
                     "Gap.1",
                     "Stack.1",
                     "Track.1",
                     "Timeline.1",
                     "SerializableCollection.1",
                     "Transition.1",
                     "LinearTimeWarp.1",
                     "FreezeFrame.1",
                     "Effect.1",
                     "Marker.2",
                     "MissingReference.1",
                     "ExternalReference.1",
                     "GeneratorReference.1",
                     "RationalTime.1",
                     "TimeRange.1",
                     "SMPTE_Dissolve",
                     "Video",
                     "Audio",
                     "DEFAULT_MEDIA",
                     "KJ 12 3456-0100+00",
                     "01:00:00:00",
                     "01:00:00;02",
                     "35mm,4perf",
                     "",
                     "\\u000a",
                     "\\u0085",
                     "\\ud83d\\ude00",
                     "\\t"};

enum Kind { value_kind, name_kind, member_kind, text_kind };

/// Goes through the text without recursion, and takes what it doesn't know for a value.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    Structure structure() {
        while (at_ < text_.size())
            step();
        return {std::move(pieces_), ",", "\"\\\n\r\t"};
    }

private:
    struct Open {
        std::size_t begin;      ///< of the object or array
        std::size_t item_begin; ///< of the item that is being read
        bool is_object;
        bool first;
    };

    void step() {
        const char c = text_[at_];
        if (c == '{' || c == '[') return open(c == '{');
        if (c == '}' || c == ']') return close();
        if (c == ',') return next_item();
        if (c == '"') return string();
        if (c == ':' || static_cast<unsigned char>(c) <= ' ') {
            ++at_;
            return;
        }
        plain();
    }
    void open(bool is_object) {
        open_.push_back({at_, at_ + 1, is_object, true});
        ++at_;
    }
    void close() {
        if (!open_.empty()) {
            end_item();
            const Open last = open_.back();
            open_.pop_back();
            add({last.begin, at_ + 1, value_kind});
        }
        ++at_;
    }
    void next_item() {
        if (!open_.empty()) {
            end_item();
            open_.back().item_begin = at_ + 1;
            open_.back().first = false;
        }
        ++at_;
    }
    /// A member, or an element as what can be left out; the comma goes with it.
    void end_item() {
        const Open& in = open_.back();
        if (text_.substr(in.item_begin, at_ - in.item_begin).find_first_not_of(" \t\r\n") == std::string_view::npos)
            return;
        Piece item{in.item_begin, at_, in.is_object ? member_kind : value_kind, nullptr, true, in.item_begin, at_};
        if (!in.first)
            --item.drop_begin;
        else if (text_[at_] == ',')
            ++item.drop_end;
        add(item);
    }
    void string() {
        const std::size_t begin = at_++;
        while (at_ < text_.size() && text_[at_] != '"')
            at_ += text_[at_] == '\\' ? 2 : 1;
        at_ = std::min(at_ + 1, text_.size());
        const std::size_t next = text_.find_first_not_of(" \t\r\n", at_);
        const bool is_name = next != std::string_view::npos && text_[next] == ':';
        add({begin, at_, is_name ? name_kind : value_kind});
        // Bytes change between the quotes alone.
        if (at_ - begin >= 2) add({begin + 1, at_ - 1, text_kind, &texts});
    }
    void plain() {
        const std::size_t begin = at_;
        at_ = std::min(text_.find_first_of(",]}: \t\r\n", at_), text_.size());
        add({begin, at_, value_kind, &numbers});
    }
    void add(const Piece& piece) { pieces_.push_back(piece); }

    std::string_view text_;
    std::size_t at_ = 0;
    std::vector<Open> open_;
    std::vector<Piece> pieces_;
};

} // namespace

Structure json_structure(std::string_view text) { return Scanner(text).structure(); }

} // namespace fuzz
