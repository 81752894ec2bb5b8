#include "documents/json.h"

#include "documents/characters.h"

#include <functional>

namespace documents {
namespace {

constexpr int document_version = 1;

/// Objects and arrays, indented by a blank a level.
class Writer {
public:
    void object(const std::function<void()>& members) { nested('{', '}', members); }
    void object(const char* key, const std::function<void()>& members) {
        name(key);
        nested('{', '}', members);
    }
    template <class Items, class Each> void array(const char* key, const Items& items, const Each& each) {
        name(key);
        nested('[', ']', [&] {
            for (const auto& item : items) {
                next();
                each(item);
            }
        });
    }
    void put(const char* key, const std::string& text) {
        name(key);
        out_ += json_string(text);
    }
    void put_or_null(const char* key, const std::string& text) {
        text.empty() ? put_value(key, Value()) : put(key, text);
    }
    void put_value(const char* key, const Value& value) {
        name(key);
        put_value(value);
    }
    void put_value(const Value& value) {
        if (std::holds_alternative<std::monostate>(value))
            out_ += "null";
        else if (std::holds_alternative<std::string>(value))
            out_ += json_string(std::get<std::string>(value));
        else
            out_ += text_of(value);
    }
    std::string take() { return std::move(out_) + '\n'; }

private:
    void next() {
        if (!first_) out_ += ',';
        first_ = false;
        out_ += '\n';
        out_.append(depth_, ' ');
    }
    void name(const char* key) {
        next();
        out_ += json_string(key) + ": ";
    }
    void nested(char open, char close, const std::function<void()>& members) {
        out_ += open;
        ++depth_;
        first_ = true;
        members();
        --depth_;
        if (!first_) {
            out_ += '\n';
            out_.append(depth_, ' ');
        }
        first_ = false;
        out_ += close;
    }

    std::string out_;
    std::size_t depth_ = 0;
    bool first_ = true;
};

class DocumentWriter {
public:
    std::string write(const Document& document) {
        out_.object([&] {
            out_.put("format", "quillbrook lists");
            out_.put_value("version", Value(std::int64_t{document_version}));
            put_title(document.title);
            out_.array("lists", document.lists, [this](const List& list) { put(list); });
        });
        return out_.take();
    }

private:
    void put_title(const TitleBlock& title) {
        out_.object("title", [&] {
            out_.put_or_null("edit", title.edit);
            out_.put_or_null("project", title.project);
            out_.put_or_null("track", title.track);
            out_.put_or_null("gauge", title.gauge);
            out_.put_or_null("rate", title.rate);
            out_.put_or_null("reel", title.reel);
            out_.put_or_null("cut_date", title.cut_date);
            out_.put_or_null("made", title.made);
        });
    }

    void put(const List& list) {
        out_.object([&] {
            out_.put("id", list.id);
            out_.put("title", list.title);
            out_.array("facts", list.facts, [this](const Fact& fact) {
                out_.object([&] {
                    out_.put("name", fact.name);
                    out_.put("text", text_of(fact.value));
                });
            });
            out_.put("counting", list.counting);
            fields_ = fields_of(list);
            out_.array("fields", fields_, [this](const Field& field) {
                out_.object([&] {
                    out_.put("key", std::string(field.key));
                    out_.put_or_null("unit", field.unit);
                });
            });
            out_.array("parts", list.parts, [&](const Part& part) { put(list, part); });
            out_.array("totals", list.totals, [&](const Row& row) { put(list, row); });
            put_notes(list.notes);
        });
    }

    void put(const List& list, const Part& part) {
        std::vector<std::reference_wrapper<const Row>> items;
        for (const Row& row : part.rows)
            if (row.kind == RowKind::item) items.emplace_back(row);
        out_.object([&] {
            out_.put("id", part.id);
            out_.put_or_null("title", part.title);
            out_.put_or_null("about", part.about);
            out_.array("rows", items, [&](const Row& row) { put(list, row); });
            out_.array("totals", part.totals, [&](const Row& row) { put(list, row); });
        });
    }

    void put(const List& list, const Row& row) {
        out_.object([&] {
            out_.put("id", row.id);
            out_.put_or_null("film", row.film);
            out_.object("values", [&] {
                auto field = fields_.begin();
                each_value(list, row, [&](const Value& value) { out_.put_value((field++)->key, value); });
            });
            out_.array("marks", marks_of(row),
                       [this](Mark mark) { out_.put_value(Value(std::string(name_of(mark)))); });
            put_notes(row.notes);
        });
    }

    void put_notes(const std::vector<Note>& notes) {
        out_.array("notes", notes, [this](const Note& note) {
            out_.object([&] {
                out_.put("mark", std::string(name_of(note.mark)));
                out_.put_or_null("code", note.code);
                out_.put("head", note.head);
                out_.put_or_null("text", note.text);
                out_.put_or_null("advice", note.advice);
            });
        });
    }

    Writer out_;
    std::vector<Field> fields_; ///< of the list that is written
};

} // namespace

// Also what ends a script, should somebody put the document into a page.
std::string json_string(std::string_view text) {
    const std::string plain = clean(text);
    std::string out = "\"";
    if (plain.find_first_of("\"\\<") == std::string::npos) return out + plain + '"';
    for (const char c : plain) {
        if (c == '"' || c == '\\') out += '\\';
        if (c == '<')
            out += "\\u003c";
        else
            out += c;
    }
    return out + '"';
}

std::string json_of(const Document& document) { return DocumentWriter().write(document); }

} // namespace documents
