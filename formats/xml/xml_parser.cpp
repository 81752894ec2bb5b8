#include "formats/xml/xml_document.h"

#include <expat.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <unordered_map>

namespace formats::xml {
namespace {

/// What Expat may hold for itself. It needs a few megabytes, and several times its longest tag or comment; only a file
/// that was made for it needs more.
constexpr std::size_t most_held = std::size_t{64} << 20;

/// Bytes of Expat's blocks, of the parser that this thread runs. Each block is headed by its size.
thread_local std::size_t held = 0;

constexpr std::size_t block_head = alignof(std::max_align_t);

void* resize_block(void* block, std::size_t size) {
    char* const whole = block ? static_cast<char*>(block) - block_head : nullptr;
    std::size_t before = 0;
    if (whole) std::memcpy(&before, whole, sizeof before);
    if (size > most_held || held - before > most_held - size) return nullptr;
    char* const moved = static_cast<char*>(std::realloc(whole, size + block_head));
    if (!moved) return nullptr;
    std::memcpy(moved, &size, sizeof size);
    held = held - before + size;
    return moved + block_head;
}

void* new_block(std::size_t size) { return resize_block(nullptr, size); }

void free_block(void* block) {
    if (!block) return;
    char* const whole = static_cast<char*>(block) - block_head;
    std::size_t size = 0;
    std::memcpy(&size, whole, sizeof size);
    held -= size;
    std::free(whole);
}

/// Bytes that most elements take at least; what is made room for and not used costs nothing.
constexpr std::size_t usual_element = 16;

struct ParserEnd {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserEnd>;

constexpr bool is_white(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

std::size_t without_white_behind(std::string_view text) {
    std::size_t size = text.size();
    while (size > 0 && is_white(text[size - 1]))
        --size;
    return size;
}

} // namespace

/// Takes what Expat finds in the order of the text.
class TreeBuilder {
public:
    TreeBuilder(Document& document, const Limits& limits) : document_(document), limits_(limits) {}

    bool run(std::string_view bytes);

private:
    using Number = std::uint32_t;

    /// An element whose end hasn't come yet.
    struct Open {
        Number number = 0, last_child = Document::none;
        std::string text; ///< that of its own so far
    };

    static TreeBuilder& of(void* user) { return *static_cast<TreeBuilder*>(user); }
    static void XMLCALL on_start(void* user, const XML_Char* name, const XML_Char** attributes) {
        of(user).guarded([&] { of(user).start(name, attributes); });
    }
    static void XMLCALL on_end(void* user, const XML_Char*) {
        of(user).guarded([&] { of(user).end(); });
    }
    static void XMLCALL on_text(void* user, const XML_Char* text, int size) {
        of(user).guarded([&] { of(user).add_text({text, static_cast<std::size_t>(size)}); });
    }
    static void XMLCALL on_declaration(void* user, const XML_Char*, const XML_Char* encoding, int) {
        if (encoding) of(user).guarded([&] { of(user).encoding_ = encoding; });
    }
    static void XMLCALL on_doctype(void* user, const XML_Char* name, const XML_Char*, const XML_Char*, int) {
        of(user).guarded([&] { of(user).document_.doctype_ = name; });
    }
    static void XMLCALL on_entity(void* user, const XML_Char* name, int, const XML_Char*, int, const XML_Char*,
                                  const XML_Char*, const XML_Char*, const XML_Char*) {
        of(user).guarded(
            [&] { of(user).refuse("defines the entity \"" + std::string(name) + "\", which isn't taken"); });
    }
    static void XMLCALL on_attributes(void* user, const XML_Char* name, const XML_Char*, const XML_Char*,
                                      const XML_Char*, int) {
        of(user).guarded(
            [&] { of(user).refuse("declares attributes for each \"" + std::string(name) + "\", which isn't taken"); });
    }
    static void XMLCALL on_skipped(void* user, const XML_Char* name, int) {
        of(user).guarded(
            [&] { of(user).refuse("uses the entity \"" + std::string(name) + "\", which the file doesn't hold"); });
    }

    /// Expat is C: nothing may be thrown through it.
    template <class Work> void guarded(Work work) {
        if (stopped_) return;
        try {
            work();
        } catch (const std::bad_alloc&) {
            refuse("takes more memory than there is");
        }
    }

    void start(const XML_Char* name, const XML_Char** attributes);
    void add_attributes(Document::Node& node, const XML_Char** attributes);
    void end();
    void add_text(std::string_view text);
    std::uint16_t name_number(std::string_view name);
    std::uint16_t searched_number(std::string_view name);
    bool store(std::string_view text, Number& start, Number& size);
    void refuse(const std::string& why);
    void set_handlers();
    bool feed(std::string_view bytes);
    std::string words_for_error() const;
    std::string line_text() const { return "line " + std::to_string(XML_GetCurrentLineNumber(parser_.get())) + ": "; }

    Document& document_;
    const Limits limits_;
    Parser parser_;
    std::vector<Open> open_; ///< the first `depth_` of them; the others keep their memory
    std::size_t depth_ = 0;
    std::unordered_map<std::string, std::uint16_t> numbers_of_names_;
    std::array<std::uint16_t, 256> recent_{};
    std::string searched_, encoding_;
    bool stopped_ = false;
};

void TreeBuilder::refuse(const std::string& why) {
    if (stopped_) return;
    stopped_ = true;
    document_.error_ = line_text() + why;
    XML_StopParser(parser_.get(), XML_FALSE);
}

/// Most names of a document were met shortly before: one place for those alike in length, first and last letter.
std::uint16_t TreeBuilder::name_number(std::string_view name) {
    const std::size_t likeness =
        name.size() * 7 + static_cast<unsigned char>(name.front()) * 3 + static_cast<unsigned char>(name.back());
    std::uint16_t& recent = recent_[likeness % recent_.size()];
    if (recent < document_.names_.size() && document_.names_[recent] == name) return recent;
    return recent = searched_number(name);
}

std::uint16_t TreeBuilder::searched_number(std::string_view name) {
    searched_ = name;
    const auto known = numbers_of_names_.find(searched_);
    if (known != numbers_of_names_.end()) return known->second;
    if (document_.names_.size() >= limits_.names || name.size() > limits_.name) {
        refuse("has names that are too long or too many");
        return 0;
    }
    const auto number = static_cast<std::uint16_t>(document_.names_.size());
    document_.names_.emplace_back(name);
    numbers_of_names_.emplace(searched_, number);
    return number;
}

bool TreeBuilder::store(std::string_view text, Number& start, Number& size) {
    std::string& all = document_.texts_;
    if (text.size() > limits_.text || text.size() > Document::none - all.size()) {
        refuse("holds a text of more than " + std::to_string(limits_.text) + " bytes");
        return false;
    }
    start = static_cast<Number>(all.size());
    size = static_cast<Number>(text.size());
    all.append(text);
    return true;
}

void TreeBuilder::add_attributes(Document::Node& node, const XML_Char** attributes) {
    node.attribute = static_cast<Number>(document_.attributes_.size());
    for (; *attributes && !stopped_; attributes += 2) {
        Document::Attribute attribute;
        attribute.name = name_number(attributes[0]);
        if (!store(attributes[1], attribute.value, attribute.value_size)) return;
        document_.attributes_.push_back(attribute);
        ++node.attribute_count; // no more than there are names
    }
}

void TreeBuilder::start(const XML_Char* name, const XML_Char** attributes) {
    if (depth_ >= limits_.depth) return refuse("elements lie more than " + std::to_string(limits_.depth) + " deep");
    if (document_.nodes_.size() >= limits_.elements)
        return refuse("holds more than " + std::to_string(limits_.elements) + " elements");
    const auto number = static_cast<Number>(document_.nodes_.size());
    Document::Node node;
    node.line = static_cast<Number>(XML_GetCurrentLineNumber(parser_.get()));
    node.name = name_number(name);
    if (depth_ > 0) {
        Open& above = open_[depth_ - 1];
        node.parent = above.number;
        if (above.last_child == Document::none)
            document_.nodes_[above.number].first_child = number;
        else
            document_.nodes_[above.last_child].next = number;
        above.last_child = number;
    }
    add_attributes(node, attributes);
    document_.nodes_.push_back(node);
    if (open_.size() == depth_) open_.emplace_back();
    Open& opened = open_[depth_++];
    opened.number = number;
    opened.last_child = Document::none;
    opened.text.clear();
}

void TreeBuilder::end() {
    const Open& closed = open_[--depth_];
    const std::string_view text = std::string_view(closed.text).substr(0, without_white_behind(closed.text));
    Document::Node& node = document_.nodes_[closed.number];
    if (!text.empty()) store(text, node.text, node.text_size);
}

void TreeBuilder::add_text(std::string_view text) {
    if (depth_ == 0) return;
    std::string& own = open_[depth_ - 1].text;
    if (own.empty()) {
        while (!text.empty() && is_white(text.front()))
            text.remove_prefix(1);
    }
    if (own.size() + text.size() > limits_.text)
        return refuse("holds a text of more than " + std::to_string(limits_.text) + " bytes");
    own += text;
}

void TreeBuilder::set_handlers() {
    XML_Parser parser = parser_.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, on_start, on_end);
    XML_SetCharacterDataHandler(parser, on_text);
    XML_SetXmlDeclHandler(parser, on_declaration);
    XML_SetStartDoctypeDeclHandler(parser, on_doctype);
    XML_SetEntityDeclHandler(parser, on_entity);
    XML_SetAttlistDeclHandler(parser, on_attributes);
    XML_SetSkippedEntityHandler(parser, on_skipped);
}

std::string TreeBuilder::words_for_error() const {
    const XML_Error error = XML_GetErrorCode(parser_.get());
    switch (error) {
    case XML_ERROR_NO_ELEMENTS:
    case XML_ERROR_UNCLOSED_TOKEN:
    case XML_ERROR_UNCLOSED_CDATA_SECTION:
    case XML_ERROR_PARTIAL_CHAR:
        return "the text breaks off";
    case XML_ERROR_UNKNOWN_ENCODING:
    case XML_ERROR_INCORRECT_ENCODING:
        return "the encoding \"" + encoding_ + "\" isn't read, or isn't what it is; save it as UTF-8";
    case XML_ERROR_NO_MEMORY:
        return "takes more memory than may be";
    default:
        return XML_ErrorString(error);
    }
}

// Expat keeps a copy of each piece, and looks at a tag that is cut off by its end anew with the next.
bool TreeBuilder::feed(std::string_view bytes) {
    constexpr std::size_t most_at_once = std::size_t{1} << 20;
    do {
        const std::string_view piece = bytes.substr(0, most_at_once);
        bytes.remove_prefix(piece.size());
        if (XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), bytes.empty()) != XML_STATUS_OK)
            return false;
    } while (!bytes.empty());
    return true;
}

bool TreeBuilder::run(std::string_view bytes) {
    const XML_Memory_Handling_Suite memory{new_block, resize_block, free_block};
    parser_.reset(XML_ParserCreate_MM(nullptr, &memory, nullptr));
    if (!parser_) throw std::bad_alloc();
    set_handlers();
    document_.nodes_.reserve(std::min(bytes.size() / usual_element + 1, limits_.elements));
    const bool whole = feed(bytes);
    if (!whole && !stopped_) document_.error_ = line_text() + words_for_error();
    if (!whole) document_.nodes_.clear();
    return whole;
}

bool Document::parse(std::string_view bytes, const Limits& limits) { return TreeBuilder(*this, limits).run(bytes); }

} // namespace formats::xml
