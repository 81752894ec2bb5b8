#include "film/splice_loss.h"

#include "embedded/label_kinds.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace film {
namespace {

using embedded::FilmFamily;

struct UsualLoss {
    SpliceLoss loss;
    const char* source;
};

constexpr UsualLoss half_a_frame_of_35{{2, true}, "published for 35mm: a frame at each cut back, half of it a side"};
constexpr UsualLoss frame_of_16{{1, false}, "published for 16mm: two frames at each cut back, one a side"};
constexpr UsualLoss as_cemented_35{{2, true}, "no published figure: as much film as a cemented 35mm splice takes"};
constexpr UsualLoss as_cemented_16{{1, false}, "no published figure: as a cemented 16mm splice"};
constexpr UsualLoss as_gauge_unknown{{1, false}, "the gauge isn't known: as 16mm, which loses most"};

/// A row for each family of film, the columns as `CutMethod`.
struct LossRow {
    FilmFamily family;
    UsualLoss by_method[3];
};

constexpr LossRow usual_losses[] = {
    {FilmFamily::none, {as_gauge_unknown, as_gauge_unknown, as_gauge_unknown}},
    {FilmFamily::f35_4p, {half_a_frame_of_35, half_a_frame_of_35, as_cemented_35}},
    {FilmFamily::f16_1p, {frame_of_16, frame_of_16, as_cemented_16}},
    {FilmFamily::f35_3p, {as_cemented_35, as_cemented_35, as_cemented_35}},
    {FilmFamily::f35_2p, {as_cemented_35, as_cemented_35, as_cemented_35}},
    {FilmFamily::f35_8p, {as_cemented_35, as_cemented_35, as_cemented_35}},
    {FilmFamily::f65, {as_cemented_35, as_cemented_35, as_cemented_35}},
};

const UsualLoss& usual_loss(label_t kind, CutMethod method) {
    const FilmFamily family = embedded::label_kind(kind).family;
    const auto row = std::find_if(std::begin(usual_losses), std::end(usual_losses),
                                  [family](const LossRow& one) { return one.family == family; });
    return row->by_method[static_cast<std::size_t>(method)];
}

} // namespace

const char* name_of(CutMethod method) { return cut_methods[static_cast<std::size_t>(method)].first; }

std::optional<SpliceLoss> splice_loss_of(const std::string& text) {
    constexpr int most = 1000;
    SpliceLoss loss;
    const char* const end = text.data() + text.size();
    const auto [behind, fault] = std::from_chars(text.data(), end, loss.count);
    loss.perforations = behind != end && *behind == 'p' && behind + 1 == end;
    const bool whole = fault == std::errc() && (behind == end || loss.perforations);
    if (!whole || loss.count < 0 || loss.count > most) return std::nullopt;
    return loss;
}

SpliceLoss SpliceRules::loss_of(label_t kind) const { return own ? *own : usual_loss(kind, method).loss; }

int SpliceRules::spent_on_a_side(label_t kind) const {
    const SpliceLoss loss = loss_of(kind);
    return loss.perforations ? loss.count : loss.count * embedded::label_kind(kind).samples_per_frame;
}

const char* SpliceRules::source_of(label_t kind) const { return own ? "as given" : usual_loss(kind, method).source; }

} // namespace film
