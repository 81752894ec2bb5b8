#include "formats/aaf/aaf_film.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <limits>

namespace formats::aaf {
namespace {

struct FilmRow {
    std::int64_t code;
    int millimetres;
    int usual_perforations;
};
constexpr FilmRow films[] = {{1, 35, 4}, {2, 16, 1}, {3, 0, 1}, {4, 65, 5}};

/// Perforations from one count of 65mm to the next: that of the stock of today.
constexpr const char* large_format_counts = "120";

const FilmRow& film_of(std::int64_t code) {
    const auto found =
        std::find_if(std::begin(films), std::end(films), [code](const FilmRow& row) { return row.code == code; });
    return found == std::end(films) ? films[0] : *found;
}

/// "35mm 3-perf" or "35mm, 3perf": the digits before "perf".
int perforations_in(const std::string& gauge) {
    std::size_t at = ascii::lower_case(gauge).find("perf");
    if (at == std::string::npos) return 0;
    while (at > 0 && !ascii::is_digit(gauge[at - 1]) && !ascii::is_letter(gauge[at - 1]))
        --at;
    return at > 0 && ascii::is_digit(gauge[at - 1]) ? gauge[at - 1] - '0' : 0;
}

} // namespace

std::string Gauge::text() const {
    if (millimetres == 0) return "8mm";
    const std::string plain = std::to_string(millimetres) + "mm-" + std::to_string(perforations) + "p";
    return millimetres == 65 ? plain + large_format_counts : plain;
}

Gauge gauge_of(const Traced& traced) {
    const Object* film = traced.film ? traced.film->mob->descriptor : nullptr;
    const std::int64_t numbered = traced.key ? traced.key->film_kind : traced.ink ? traced.ink->film_kind : 0;
    const std::int64_t described = film ? film->integer(pid::film_format, 0) : 0;
    const FilmRow& row = film_of(described > 0 ? described : numbered);
    int perforations = film ? static_cast<int>(film->bytes(pid::perforations).number(0, 1).value_or(0)) : 0;
    if (perforations == 0 && film) perforations = perforations_in(film->text(pid::film_gauge));
    Gauge gauge{row.millimetres, perforations > 0 ? perforations : row.usual_perforations};
    if (row.millimetres == 16) gauge.perforations = 1;
    if (perforations == 0 && row.millimetres != 16)
        gauge.doubt = "nothing tells the perforations of its film";
    else if (row.millimetres == 65)
        gauge.doubt = "nothing tells how far apart the numbers of its film are";
    return gauge;
}

std::optional<embedded::LabelDescription> edge_label(const Gauge& gauge, const EdgeNumber& number, std::int64_t frame,
                                                     UserLabelType kind) {
    const label_t type = edlstr_to_label_type(gauge.text().c_str(), kind);
    const Fraction sample = Fraction(frame) * Fraction(gauge.perforations);
    constexpr std::int64_t most = std::numeric_limits<int>::max();
    if (type == label_none || sample < Fraction(0) || Fraction(most) < sample) return std::nullopt;
    LabelPoint point(static_cast<int>(sample.floor()), type);
    const bool key = kind == user_label_key;
    point.set_prefix((key ? ascii::upper_case(number.prefix) : number.prefix).c_str());
    return embedded::LabelDescription{type, point.get_string(), {}, {}};
}

} // namespace formats::aaf
