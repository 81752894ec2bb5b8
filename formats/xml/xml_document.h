#pragma once
// XML texts as small trees. Expat reads them; nothing else knows of it.
//
// Entities that a file defines, and attributes that it gives to all elements of a name, are refused, and nothing is
// ever fetched: a file of a kilobyte can't become one of a gigabyte. A tree takes at most ten bytes for each byte of
// its text.

#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace formats::xml {

/// What lies beyond is refused.
struct Limits {
    std::size_t depth = 1000;                ///< of elements in each other
    std::size_t elements = 20'000'000;       ///< in all
    std::size_t text = std::size_t{8} << 20; ///< bytes of one text or attribute, as UTF-8
    std::size_t names = 10'000;              ///< different ones, of elements and attributes; at most 65,535
    std::size_t name = 1000;                 ///< bytes of one
};

class Document;

/// An element of a document, which must outlive it; or none, which has no name, text, attributes and children.
class Element {
public:
    Element() = default;

    explicit operator bool() const { return document_ != nullptr; }
    friend bool operator==(const Element& a, const Element& b) = default;

    std::string_view name() const;
    /// What stands in it, without the texts of its children and without white space at both ends.
    std::string_view text() const;
    /// Of its first child of that name.
    std::string_view text_of(std::string_view child_name) const { return child(child_name).text(); }
    /// Empty where it has none of that name.
    std::string_view attribute(std::string_view name) const;
    bool has_attribute(std::string_view name) const;
    /// The line on which its start tag begins, from 1.
    std::uint32_t line() const;
    /// Its place among all elements of the document, from 0 for the root; in document order.
    std::uint32_t number() const { return number_; }

    Element parent() const;
    Element first_child() const;
    Element next() const; ///< the next child of its parent
    /// The first child of that name.
    Element child(std::string_view name) const;
    /// The next child of its parent that has its name.
    Element next_of_name() const;

    class Children;
    Children children() const;

private:
    friend class Document;
    Element(const Document* document, std::uint32_t number) : document_(document), number_(number) {}
    Element at(std::uint32_t number) const;
    std::optional<std::string_view> find_attribute(std::string_view name) const;

    const Document* document_ = nullptr;
    std::uint32_t number_ = 0;
};

/// For loops: `for (const Element child : element.children())`.
class Element::Children {
public:
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Element;
        using difference_type = std::ptrdiff_t;
        using pointer = const Element*;
        using reference = const Element&;

        Iterator() = default;
        explicit Iterator(Element at) : at_(at) {}
        reference operator*() const { return at_; }
        pointer operator->() const { return &at_; }
        Iterator& operator++() {
            at_ = at_.next();
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(const Iterator& a, const Iterator& b) = default;

    private:
        Element at_;
    };

    explicit Children(Element first) : first_(first) {}
    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return Iterator(); }

private:
    Element first_;
};

/// A text that was read.
class Document {
public:
    Document() = default;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// UTF-8, UTF-16, ISO 8859-1 and ASCII, with or without a byte order mark. False with `error()` set, which names
    /// the line: "line 12: mismatched tag". Once for each document.
    bool parse(std::string_view bytes, const Limits& limits = {});

    /// None before a text was read.
    Element root() const { return nodes_.empty() ? Element() : Element(this, 0); }
    std::size_t element_count() const { return nodes_.size(); }
    /// Of the kind of document that its DOCTYPE names; empty without one.
    const std::string& doctype() const { return doctype_; }
    const std::string& error() const { return error_; }

private:
    friend class Element;
    friend class TreeBuilder;

    static constexpr std::uint32_t none = 0xFFFFFFFF;

    struct Node {
        std::uint32_t text = 0, text_size = 0;
        std::uint32_t attribute = 0; ///< the first of them
        std::uint32_t parent = none, first_child = none, next = none;
        std::uint32_t line = 0;
        std::uint16_t name = 0, attribute_count = 0;
    };
    struct Attribute {
        std::uint32_t value = 0, value_size = 0;
        std::uint32_t name = 0;
    };

    const Node& node(std::uint32_t number) const { return nodes_[number]; }
    std::uint32_t child_named(std::uint32_t first, std::string_view name) const;
    std::string_view text_at(std::uint32_t start, std::uint32_t size) const {
        return std::string_view(texts_).substr(start, size);
    }

    std::vector<Node> nodes_;
    std::vector<Attribute> attributes_;
    std::vector<std::string> names_;
    std::string texts_;
    std::string doctype_, error_;
};

inline Element::Children Element::children() const { return Children(first_child()); }

} // namespace formats::xml
