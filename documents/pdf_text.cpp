#include "documents/pdf_text.h"

#include "documents/characters.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <tuple>

namespace documents {
namespace {

constexpr double sizes[] = {16.0, 9.5, 8.0}, line_heights[] = {21.0, 13.0, 11.0};
constexpr double greys[] = {0.07, 0.07, 0.42};

std::size_t index_of(const PdfStyle& style) {
    return static_cast<std::size_t>(style.size) * 4 + (style.weight == Weight::strong ? 2U : 0U) +
           (style.mono ? 1U : 0U);
}

double grey_of(const PdfStyle& style) { return greys[static_cast<std::size_t>(style.weight)]; }

PdfStyle style_of(const PdfLabel& label) {
    return {PdfSize::body, label.bold ? Weight::strong : label.light ? Weight::light : Weight::plain, label.mono};
}

/// What shaped texts are kept by.
std::string key_of(const std::string& text, const PdfStyle& style) {
    return static_cast<char>('0' + index_of(style)) + text;
}

struct Words {
    std::string text;
    PdfStyle style;
};

/// The words of a line, each blank with the word before it.
std::vector<Words> words_in(const Line& line, PdfSize size) {
    std::vector<Words> words;
    for (const Run& run : line) {
        const std::string text = clean(run.text);
        std::size_t from = 0;
        while (from < text.size()) {
            std::size_t to = text.find(' ', from);
            to = to == std::string::npos ? text.size() : text.find_first_not_of(' ', to);
            if (to == std::string::npos) to = text.size();
            words.push_back({text.substr(from, to - from), {size, run.weight, run.mono}});
            from = to;
        }
    }
    return words;
}

std::string without_blanks_behind(const std::string& text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

} // namespace

double points_of(PdfSize size) { return sizes[static_cast<std::size_t>(size)]; }
double line_height_of(PdfSize size) { return line_heights[static_cast<std::size_t>(size)]; }

PdfText::PdfText(cairo_t* page) : page_(page), context_(pango_cairo_create_context(page)) {
    pango_cairo_context_set_resolution(context_, 72.0);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context_, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context_, FALSE);
}

PdfText::~PdfText() {
    for (const auto& [key, shaped] : shaped_)
        g_object_unref(shaped.layout);
    for (const Face& face : faces_)
        if (face.font != nullptr) cairo_scaled_font_destroy(face.font);
    g_object_unref(context_);
}

PangoLayout* PdfText::layout_of(const std::string& text, const PdfStyle& style) {
    PangoLayout* const layout = pango_layout_new(context_);
    PangoFontDescription* const font =
        pango_font_description_from_string(style.mono ? "DejaVu Sans Mono" : "DejaVu Sans");
    pango_font_description_set_absolute_size(font, points_of(style.size) * PANGO_SCALE);
    if (style.weight == Weight::strong) pango_font_description_set_weight(font, PANGO_WEIGHT_BOLD);
    pango_layout_set_font_description(layout, font);
    pango_font_description_free(font);
    pango_layout_set_single_paragraph_mode(layout, TRUE);
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    return layout;
}

PdfText::Face& PdfText::face_of(const PdfStyle& style) {
    Face& face = faces_[index_of(style)];
    if (face.font == nullptr) load(face, style);
    return face;
}

void PdfText::load(Face& face, const PdfStyle& style) {
    PangoLayout* const layout = layout_of("0", style);
    PangoFont* const font = pango_context_load_font(context_, pango_layout_get_font_description(layout));
    g_object_unref(layout);
    if (font == nullptr) throw std::runtime_error("no font was found");
    face.font = cairo_scaled_font_reference(pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(font)));
    g_object_unref(font);
    for (char32_t code = first_printed; code < behind_printed; ++code)
        load(face, code);
}

void PdfText::load(Face& face, char32_t code) {
    const bool two_bytes = code >= 0x80;
    const char text[] = {static_cast<char>(two_bytes ? 0xC0 | code >> 6 : code),
                         static_cast<char>(two_bytes ? 0x80 | (code & 0x3F) : 0), '\0'};
    cairo_glyph_t* glyphs = nullptr;
    int count = 0;
    cairo_scaled_font_text_to_glyphs(face.font, 0.0, 0.0, text, -1, &glyphs, &count, nullptr, nullptr, nullptr);
    if (count == 1 && glyphs[0].index != 0 && display_width(code) == 1) {
        cairo_text_extents_t extents;
        cairo_scaled_font_glyph_extents(face.font, glyphs, 1, &extents);
        face.letters[code - first_printed] = {glyphs[0].index, extents.x_advance};
    }
    cairo_glyph_free(glyphs);
}

/// Null of one that goes through Pango.
const PdfText::Face::Letter* PdfText::Face::letter(char32_t code) const {
    if (code < first_printed || code >= behind_printed) return nullptr;
    const Letter& letter = letters[code - first_printed];
    return letter.width < 0.0 ? nullptr : &letter;
}

bool PdfText::put(const Face& face, std::string_view text, double x, double y, Glyphs& glyphs) {
    const std::size_t before = glyphs.size();
    while (!text.empty()) {
        const CodePoint next = next_code(text);
        const Face::Letter* const letter = face.letter(next.code);
        if (letter == nullptr) {
            glyphs.resize(before);
            return false;
        }
        glyphs.push_back({letter->glyph, x, y});
        x += letter->width;
        text.remove_prefix(next.bytes);
    }
    return true;
}

const PdfText::Shaped& PdfText::shaped(const std::string& text, const PdfStyle& style) {
    const auto [found, fresh] = shaped_.try_emplace(key_of(text, style));
    Shaped& shaped = found->second;
    if (fresh) {
        shaped.layout = layout_of(text, style);
        int width = 0;
        pango_layout_get_size(shaped.layout, &width, nullptr);
        shaped.width = static_cast<double>(width) / PANGO_SCALE;
    }
    return shaped;
}

double PdfText::width_of(const std::string& text, const PdfStyle& style) {
    const Face& face = face_of(style);
    double width = 0.0;
    for (std::string_view rest = text; !rest.empty();) {
        const CodePoint next = next_code(rest);
        const Face::Letter* const letter = face.letter(next.code);
        if (letter == nullptr) return shaped(text, style).width;
        width += letter->width;
        rest.remove_prefix(next.bytes);
    }
    return width;
}

double PdfText::width_of(const Line& line, PdfSize size) {
    double width = 0.0;
    for (const Run& run : line)
        width += width_of(clean(run.text), {size, run.weight, run.mono});
    return width;
}

double PdfText::widest_word(const Line& line, PdfSize size) {
    double width = 0.0;
    for (const Words& word : words_in(line, size))
        width = std::max(width, width_of(without_blanks_behind(word.text), word.style));
    return width;
}

void PdfText::append(std::vector<PdfLine>& lines, const std::string& word, const PdfStyle& style, double width) {
    const double room = width_of(without_blanks_behind(word), style);
    if (lines.back().width > 0.0 && lines.back().width + room > width) lines.emplace_back();
    if (room > width) return append_parts(lines, word, style, width);
    PdfLine& line = lines.back();
    const bool same = !line.spans.empty() && line.spans.back().style.weight == style.weight &&
                      line.spans.back().style.mono == style.mono;
    if (same)
        line.spans.back().text += word;
    else
        line.spans.push_back({line.width, word, style});
    line.width += width_of(word, style);
}

// Between characters; marks stay with the letter that they stand on.
void PdfText::append_parts(std::vector<PdfLine>& lines, const std::string& word, const PdfStyle& style, double width) {
    std::string part;
    std::string_view rest = word;
    const auto put = [&] {
        if (part.empty()) return;
        if (lines.back().width > 0.0) lines.emplace_back();
        const double wide = width_of(part, style);
        lines.back().spans.push_back({0.0, part, style});
        lines.back().width = wide;
        part.clear();
    };
    double used = 0.0;
    while (!rest.empty()) {
        const CodePoint next = next_code(rest);
        const std::string letter(rest.substr(0, next.bytes));
        const double wide = display_width(next.code) == 0 ? 0.0 : width_of(letter, style);
        if (used + wide > width && !part.empty()) {
            put();
            used = 0.0;
        }
        used += wide;
        part += letter;
        rest.remove_prefix(next.bytes);
    }
    put();
}

PdfLine PdfText::whole(const Line& line, PdfSize size) {
    PdfLine made;
    for (const Run& run : line) {
        std::string text = clean(run.text);
        if (text.empty()) continue;
        const PdfStyle style{size, run.weight, run.mono};
        const double width = width_of(text, style);
        made.spans.push_back({made.width, std::move(text), style});
        made.width += width;
    }
    return made;
}

std::vector<PdfLine> PdfText::broken(const Line& line, PdfSize size, double width, bool anywhere) {
    std::vector<PdfLine> lines;
    lines.push_back(whole(line, size));
    if (lines.front().width <= width) return lines;
    lines.assign(1, {});
    for (const Words& word : words_in(line, size)) {
        if (anywhere && lines.back().width + width_of(word.text, word.style) > width)
            append_parts(lines, word.text, word.style, width);
        else
            append(lines, word.text, word.style, width);
    }
    return lines;
}

void PdfText::show(const std::string& text, const PdfStyle& style, double x, double y) {
    const bool light = style.weight == Weight::light;
    if (!put(face_of(style), text, x, y, held_[index_of(style) * 2 + (light ? 1U : 0U)]))
        show_shaped(text, style, grey_of(style), x, y);
}

void PdfText::show_shaped(const std::string& text, const PdfStyle& style, double grey, double x, double y) {
    cairo_set_source_rgb(page_, grey, grey, grey);
    cairo_move_to(page_, x, y);
    pango_cairo_show_layout_line(page_, pango_layout_get_line_readonly(shaped(text, style).layout, 0));
}

void PdfText::show(const Face& face, const Glyphs& glyphs, double grey) {
    cairo_set_source_rgb(page_, grey, grey, grey);
    cairo_set_scaled_font(page_, face.font);
    cairo_show_glyphs(page_, glyphs.data(), static_cast<int>(glyphs.size()));
}

void PdfText::flush() {
    for (std::size_t i = 0; i < held_.size(); ++i) {
        if (held_[i].empty()) continue;
        show(faces_[i / 2], held_[i], greys[i % 2 == 0 ? 0 : 2]);
        held_[i].clear();
    }
}

void PdfText::show(const PdfLine& line, double x, double y) {
    for (const PdfSpan& span : line.spans)
        show(span.text, span.style, x + span.x, y);
}

void PdfText::show(const std::vector<PdfLabel>& labels) {
    struct Placed {
        const PdfLabel* label;
        PdfStyle style;
        double scale, x, width;
        std::string text;
    };
    std::vector<Placed> all;
    for (const PdfLabel& label : labels) {
        const PdfStyle style = style_of(label);
        std::string text = clean(label.text);
        const double scale = label.size / points_of(style.size), width = width_of(text, style) * scale;
        all.push_back({&label, style, scale, label.x - label.anchor * width, width, std::move(text)});
        if (label.white) continue;
        cairo_rectangle(page_, all.back().x - 1.0, label.y - label.size * 0.8, width + 2.0, label.size);
    }
    cairo_set_source_rgb(page_, 1.0, 1.0, 1.0);
    cairo_fill(page_);

    std::map<std::tuple<double, double, std::size_t>, Glyphs> held; // by size, grey and font
    for (const Placed& one : all) {
        const double grey = one.label->white ? 1.0 : grey_of(one.style), y = one.label->y;
        Glyphs& glyphs = held[{one.scale, grey, index_of(one.style)}];
        if (put(face_of(one.style), one.text, one.x / one.scale, y / one.scale, glyphs)) continue;
        show_scaled(one.scale, [&] { show_shaped(one.text, one.style, grey, one.x / one.scale, y / one.scale); });
    }
    for (const auto& [kind, glyphs] : held)
        if (!glyphs.empty())
            show_scaled(std::get<0>(kind), [&, &look = kind, &letters = glyphs] {
                show(faces_[std::get<2>(look)], letters, std::get<1>(look));
            });
}

void PdfText::show_scaled(double scale, const std::function<void()>& show) {
    cairo_save(page_);
    cairo_scale(page_, scale, scale);
    // A font that was set before is taken again at its old scale, unless another one was used since.
    cairo_set_font_size(page_, 1.0);
    cairo_get_scaled_font(page_);
    cairo_set_font_size(page_, 2.0);
    show();
    cairo_restore(page_);
}

} // namespace documents
