#include "embedded/film_feet.h"

#include "embedded/label_kinds.h"

namespace embedded {
namespace {

// Perforated as 35mm is; no kind counts its feet, for they don't come out in whole frames.
constexpr int perforations_of_65mm_foot = 64;

/// `label_none` for film that none counts.
label_t foot_kind(label_t kind) {
    const label_t feet = label_t_to_foot_label_t(kind);
    return label_kind(feet).use == LabelUse::foot ? feet : label_none;
}

} // namespace

int perforations_of_foot(label_t key_kind) {
    const LabelKind& film = label_kind(key_kind);
    if (film.use != LabelUse::key) return 0;
    const label_t feet = foot_kind(key_kind);
    return feet == label_none ? perforations_of_65mm_foot : label_kind(feet).samples_per_count;
}

std::string feet_text(label_t kind, std::int64_t frames) {
    const label_t feet = foot_kind(kind);
    if (feet == label_none) return {};
    return LabelPoint(static_cast<int>(frames) * label_kind(feet).samples_per_frame, feet).get_string();
}

} // namespace embedded
