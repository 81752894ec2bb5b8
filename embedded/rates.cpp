// Frame rates, standards and gauges.

#include "embedded/rates.h"

#include "embedded/clamped.h"
#include "embedded/label_kinds.h"

#include <cmath>
#include <iterator>
#include <string_view>

namespace embedded {
namespace {

constexpr label_t tc_25 = static_cast<label_t>(4);
constexpr label_t tc_30 = static_cast<label_t>(5);
constexpr label_t tc_30_drop = static_cast<label_t>(6);
constexpr label_t tc_48 = static_cast<label_t>(7);
constexpr label_t tc_50 = static_cast<label_t>(9);
constexpr label_t tc_60 = static_cast<label_t>(1);
constexpr label_t tc_60_drop = static_cast<label_t>(2);

constexpr Qb::FrameRate code(int number) { return static_cast<Qb::FrameRate>(number); }

constexpr RateInfo rates[] = {
    {code(1), 24000, 1001, 24, label_tc_24, label_tc_24, "23.976"},
    {code(2), 24, 1, 24, label_tc_24, label_tc_24, "24"},
    {Qb::frame_rate_25, 25, 1, 25, tc_25, tc_25, "25"},
    {code(4), 30, 1, 30, tc_30, tc_30_drop, "30"},
    {code(5), 30000, 1001, 30, tc_30, tc_30_drop, "29.97"},
    {code(6), 48, 1, 48, tc_48, tc_48, "48"},
    {code(7), 48000, 1001, 48, tc_48, tc_48, "47.952"},
    {code(8), 50, 1, 50, tc_50, tc_50, "50"},
    {code(9), 60, 1, 60, tc_60, tc_60_drop, "60"},
    {code(10), 60000, 1001, 60, tc_60, tc_60_drop, "59.94"},
};

// In the order of the rates above.
struct StandardTexts {
    const char* plain;
    const char* drop;
};
constexpr StandardTexts standard_texts[] = {
    {"23.976fps", "23.976df"}, {"24fps", "24df"},         {"25fps", "25df"}, {"30fps", "30df"}, {"29.97fps", "29.97df"},
    {"48fps", "48df"},         {"47.952fps", "47.952df"}, {"50fps", "50df"}, {"60fps", "60df"}, {"59.94fps", "59.94df"},
};
static_assert(std::size(standard_texts) == std::size(rates));

/// Film frames of a frame of video: one for one, 2:3 pulldown at 30, and so on.
struct FilmShare {
    int counting;
    int num;
    int den;
};
constexpr FilmShare film_shares[] = {{24, 1, 1}, {25, 1, 1}, {30, 4, 5}, {48, 1, 2}, {50, 1, 2}, {60, 2, 5}};

struct Gauge {
    film_gauge gauge;
    label_t kind;
};

constexpr film_gauge gauge_number(int number) { return static_cast<film_gauge>(number); }
constexpr label_t kind_number(int number) { return static_cast<label_t>(number); }

constexpr Gauge gauges[] = {
    {gauge_35mm_4p, label_key_35mm_4p},  {gauge_16mm, kind_number(11)},       {gauge_35mm_3p, kind_number(12)},
    {gauge_number(5), kind_number(34)},  {gauge_number(6), kind_number(35)},  {gauge_number(7), kind_number(36)},
    {gauge_number(8), kind_number(37)},  {gauge_number(9), kind_number(38)},  {gauge_number(10), kind_number(39)},
    {gauge_number(11), kind_number(40)}, {gauge_number(12), kind_number(41)}, {gauge_number(13), kind_number(42)},
};

} // namespace

const RateInfo* rate_info(Qb::FrameRate code) {
    for (const RateInfo& rate : rates) {
        if (rate.code == code) return &rate;
    }
    return nullptr;
}

std::vector<const RateInfo*> rates_counting(label_t timecode) {
    std::vector<const RateInfo*> counting;
    for (const RateInfo& rate : rates)
        if (rate.timecode == timecode || rate.drop_timecode == timecode) counting.push_back(&rate);
    return counting;
}

const RateInfo* nearest_rate(double frames_per_second) {
    const RateInfo* nearest = nullptr;
    double least = 0.01;
    for (const RateInfo& rate : rates) {
        const double distance = std::fabs(double(rate.num) / double(rate.den) - frames_per_second);
        if (!(distance <= least)) continue;
        nearest = &rate;
        least = distance;
        if (distance == 0) break;
    }
    return nearest;
}

Fraction film_share(int counting) {
    for (const FilmShare& share : film_shares) {
        if (share.counting == counting) return {share.num, share.den};
    }
    return 1;
}

Fraction film_rate_of(const RateInfo& rate) { return rate.rate() * film_share(rate.nominal); }

} // namespace embedded

using embedded::rate_info;
using embedded::RateInfo;

label_t TvStd_to_label_type(const TCInf& standard) {
    const RateInfo* rate = rate_info(standard.rate);
    if (!rate) return label_none;
    return standard.drop ? rate->drop_timecode : rate->timecode;
}

const char* tv_standard_to_edlstr(TCInf standard) {
    const RateInfo* rate = rate_info(standard.rate);
    if (!rate) return "";
    const embedded::StandardTexts& texts = embedded::standard_texts[rate - embedded::rates];
    return standard.drop ? texts.drop : texts.plain;
}

TCInf edlstr_to_tv_standard(const char* text) {
    const std::string_view wanted(text ? text : "");
    for (const RateInfo& rate : embedded::rates) {
        const embedded::StandardTexts& texts = embedded::standard_texts[&rate - embedded::rates];
        if (wanted == texts.plain) return {rate.code, 0};
        if (wanted == texts.drop) return {rate.code, 1};
    }
    return {};
}

const char* film_gauge_to_edlstr(film_gauge gauge) {
    for (const embedded::Gauge& known : embedded::gauges) {
        if (known.gauge == gauge) return label_type_to_edlstr(known.kind);
    }
    return "";
}

film_gauge edlstr_to_film_gauge(const char* text) {
    const std::string_view wanted(text ? text : "");
    for (const embedded::Gauge& known : embedded::gauges) {
        if (wanted == label_type_to_edlstr(known.kind)) return known.gauge;
    }
    return gauge_unset;
}

film_gauge int_to_film_gauge(int number) {
    switch (number) {
    case 35:
        return gauge_35mm_4p;
    case 16:
        return gauge_16mm;
    case 65:
        return embedded::gauge_number(10);
    default:
        return gauge_unset;
    }
}

double string_to_tc(const char* text, const TCInf& standard) {
    const RateInfo* rate = rate_info(standard.rate);
    if (!rate) return 0.0;
    LabelPoint point;
    point.set_type(TvStd_to_label_type(standard));
    point.set_sample(text);
    return double(std::int64_t(point.sample) * rate->den) / double(rate->num);
}

int tc_to_frames(double time, Qb::FrameRate rate, int, int) {
    const RateInfo* info = rate_info(rate);
    return info ? embedded::floor_to_int(time * double(info->num) / double(info->den)) : 0;
}

int pd_cycle_size(Qb::FrameRate rate) { return rate == embedded::code(2) ? 25 : 5; }

MediumRollMedium getMediumRollfromOutputDetails(Qb::Image::ScanMode, Qb::FrameRate) { return medium_video; }
