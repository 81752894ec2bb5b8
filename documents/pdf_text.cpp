#include "documents/pdf_text.h"

#include "documents/characters.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace documents {
namespace {

constexpr double sizes[] = {16.0, 9.5, 8.0}, line_heights[] = {21.0, 13.0, 11.0};
constexpr double greys[] = {0.07, 0.07, 0.42};

bool is_plain(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

std::size_t index_of(const PdfStyle& style) {
    return static_cast<std::size_t>(style.size) * 4 + (style.weight == Weight::strong ? 2U : 0U) +
           (style.mono ? 1U : 0U);
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
    for (int i = 0; i < printed; ++i) {
        const char text[] = {static_cast<char>(first_printed + i), '\0'};
        cairo_glyph_t* glyphs = nullptr;
        int count = 0;
        cairo_scaled_font_text_to_glyphs(face.font, 0.0, 0.0, text, 1, &glyphs, &count, nullptr, nullptr, nullptr);
        const auto place = static_cast<std::size_t>(i);
        if (count == 1) {
            cairo_text_extents_t extents;
            cairo_scaled_font_glyph_extents(face.font, glyphs, 1, &extents);
            face.glyphs[place] = glyphs[0].index;
            face.widths[place] = extents.x_advance;
        }
        cairo_glyph_free(glyphs);
    }
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
    if (!is_plain(text)) return shaped(text, style).width;
    const Face& face = face_of(style);
    double width = 0.0;
    for (const char c : text)
        width += face.widths[static_cast<std::size_t>(c - first_printed)];
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
    const double whole = width_of(word, style);
    const bool same = !line.spans.empty() && line.spans.back().style.weight == style.weight &&
                      line.spans.back().style.mono == style.mono;
    if (same) {
        PdfSpan& span = line.spans.back();
        span.text += word;
        span.width += whole;
    } else {
        line.spans.push_back({line.width, whole, word, style});
    }
    line.width += whole;
}

// Between characters; marks stay with the letter that they stand on.
void PdfText::append_parts(std::vector<PdfLine>& lines, const std::string& word, const PdfStyle& style, double width) {
    std::string part;
    std::string_view rest = word;
    const auto put = [&] {
        if (part.empty()) return;
        if (lines.back().width > 0.0) lines.emplace_back();
        const double wide = width_of(part, style);
        lines.back().spans.push_back({0.0, wide, part, style});
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

std::vector<PdfLine> PdfText::broken(const Line& line, PdfSize size, double width, bool anywhere) {
    std::vector<PdfLine> lines(1);
    for (const Words& word : words_in(line, size)) {
        if (anywhere && lines.back().width + width_of(word.text, word.style) > width)
            append_parts(lines, word.text, word.style, width);
        else
            append(lines, word.text, word.style, width);
    }
    return lines;
}

void PdfText::show(const std::string& text, const PdfStyle& style, double x, double y) {
    if (text.empty()) return;
    const double grey = white_ ? 1.0 : greys[static_cast<std::size_t>(style.weight)];
    cairo_set_source_rgb(page_, grey, grey, grey);
    if (!is_plain(text)) {
        cairo_move_to(page_, x, y);
        pango_cairo_show_layout_line(page_, pango_layout_get_line_readonly(shaped(text, style).layout, 0));
        return;
    }
    const Face& face = face_of(style);
    std::vector<cairo_glyph_t> glyphs;
    glyphs.reserve(text.size());
    for (const char c : text) {
        const auto place = static_cast<std::size_t>(c - first_printed);
        glyphs.push_back({face.glyphs[place], x, y});
        x += face.widths[place];
    }
    cairo_set_scaled_font(page_, face.font);
    cairo_show_glyphs(page_, glyphs.data(), static_cast<int>(glyphs.size()));
}

void PdfText::show(const PdfLine& line, double x, double y) {
    for (const PdfSpan& span : line.spans)
        show(span.text, span.style, x + span.x, y);
}

void PdfText::show_on_halo(const std::string& text, const Halo& halo, double x, double y) {
    const std::string cleaned = clean(text);
    const PdfStyle style{PdfSize::body,
                         halo.bold    ? Weight::strong
                         : halo.light ? Weight::light
                                      : Weight::plain,
                         halo.mono};
    const double scale = halo.size / points_of(PdfSize::body), width = width_of(cleaned, style) * scale;
    x -= halo.anchor * width;
    if (!halo.white) {
        cairo_set_source_rgb(page_, 1.0, 1.0, 1.0);
        cairo_rectangle(page_, x - 1.0, y - halo.size * 0.8, width + 2.0, halo.size);
        cairo_fill(page_);
    }
    cairo_save(page_);
    cairo_translate(page_, x, y);
    cairo_scale(page_, scale, scale);
    // A font that was set before is taken again at its old scale, unless another one was used since.
    cairo_set_font_size(page_, 1.0);
    cairo_get_scaled_font(page_);
    cairo_set_font_size(page_, 2.0);
    white_ = halo.white;
    show(cleaned, style, 0.0, 0.0);
    white_ = false;
    cairo_restore(page_);
}

} // namespace documents
