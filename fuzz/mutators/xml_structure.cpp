#include "fuzz/mutators/structures.h"

#include <algorithm>

namespace fuzz {
namespace {

const Words texts = {"0",
                     "-1",
                     "1",
                     "24",
                     "25",
                     "30",
                     "60",
                     "9999999999",
                     "0.5",
                     "-100",
                     "TRUE",
                     "FALSE",
                     "DF",
                     "NDF",
                     "1s",
                     "0s",
                     "3600s",
                     "1001/24000s",
                     "1/3s",
                     "-5/2s",
                     "9223372036854775807/1s",
                     "start-black",
                     "end-black",
                     "center",
                     "timeremap",
                     "Cross Dissolve",
                     "video",
                     "audio",
                     "composite",
                     "black",
                     "KJ 12 3456-0100+00",
                     "01:00:00:00",
                     "01:00:00;02",
                     "",
                     "&#10;",
                     "&#x85;",
                     "&amp;",
                     "a",
                     "r1"};

enum Kind { element_kind, attribute_kind, value_kind, text_kind, tag_kind };

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view ends_of_name = " \t\r\n/>";

class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    Structure structure() {
        while (at_ < text_.size()) {
            if (text_[at_] == '<')
                tag();
            else
                text();
        }
        return {std::move(pieces_), "", "<>&\""};
    }

private:
    void text() {
        const std::size_t end = std::min(text_.find('<', at_), text_.size());
        const std::size_t begin = text_.find_first_not_of(blanks, at_);
        if (begin < end) add({begin, end, text_kind, &texts});
        at_ = end;
    }
    void tag() {
        const char next = at_ + 1 < text_.size() ? text_[at_ + 1] : '\0';
        if (next == '!' || next == '?') return declaration();
        if (next == '/') return closing();
        opening();
    }
    void declaration() {
        const std::size_t begin = at_;
        const bool is_comment = text_.substr(at_, 4) == "<!--";
        const std::size_t end = text_.find(is_comment ? "-->" : ">", at_);
        at_ = end == std::string_view::npos ? text_.size() : end + (is_comment ? 3 : 1);
        add({begin, at_, tag_kind, nullptr, true, begin, at_});
    }
    void closing() {
        const std::size_t end = text_.find('>', at_);
        at_ = end == std::string_view::npos ? text_.size() : end + 1;
        if (open_.empty()) return;
        add_element(open_.back());
        open_.pop_back();
    }
    void opening() {
        const std::size_t begin = at_;
        at_ = std::min(text_.find_first_of(ends_of_name, at_), text_.size());
        while (at_ < text_.size() && text_[at_] != '>' && text_[at_] != '/')
            attribute();
        const bool is_empty = text_.substr(at_, 2) == "/>";
        at_ = std::min(text_.find('>', at_), text_.size() - 1) + 1;
        if (is_empty)
            add_element(begin);
        else
            open_.push_back(begin);
    }
    void attribute() {
        const std::size_t blank = at_;
        at_ = std::min(text_.find_first_not_of(blanks, at_), text_.size());
        const std::size_t begin = at_;
        at_ = std::min(text_.find_first_of("=/> ", at_), text_.size());
        if (at_ >= text_.size() || text_[at_] != '=') {
            if (at_ == begin && at_ < text_.size() && text_[at_] != '/' && text_[at_] != '>') ++at_;
            return;
        }
        const std::size_t quote = at_ + 1;
        if (quote >= text_.size() || (text_[quote] != '"' && text_[quote] != '\'')) {
            ++at_;
            return;
        }
        const std::size_t close = std::min(text_.find(text_[quote], quote + 1), text_.size() - 1);
        at_ = close + 1;
        if (close <= quote) return;
        add({quote + 1, close, value_kind, &texts});
        add({begin, at_, attribute_kind, nullptr, true, blank, at_});
    }
    void add_element(std::size_t begin) { add({begin, at_, element_kind, nullptr, true, begin, at_}); }
    void add(const Piece& piece) { pieces_.push_back(piece); }

    std::string_view text_;
    std::size_t at_ = 0;
    std::vector<std::size_t> open_; ///< where the elements begin that aren't closed
    std::vector<Piece> pieces_;
};

} // namespace

Structure xml_structure(std::string_view text) { return Scanner(text).structure(); }

} // namespace fuzz
