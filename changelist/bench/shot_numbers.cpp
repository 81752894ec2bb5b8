#include "changelist/bench/shot_numbers.h"

#include "changelist/change_record.h"
#include "host/ascii_text.h"

#include <bit>
#include <cstring>
#include <string_view>

namespace {

/// What two events of the same film have in common comes first.
struct ShotKey {
    char roll[32] = {}; ///< prefix and camera roll, in small letters
    std::uint64_t speed = 0;
    std::int64_t kind = 0;   ///< of the key number
    std::int64_t offset = 0; ///< samples by which frames lie off the count
    std::int64_t first = 0;  ///< frame; the sample itself where the speed isn't plain
    std::int64_t length = 0; ///< frames
    NumberedShot* shot = nullptr;

    bool is_of_the_film(const ShotKey& other) const {
        return std::memcmp(roll, other.roll, sizeof roll) == 0 && speed == other.speed && kind == other.kind &&
               offset == other.offset;
    }
    bool is_the_shot(const ShotKey& other) const {
        return is_of_the_film(other) && first == other.first && length == other.length;
    }
};

bool comes_before(const ShotKey& a, const ShotKey& b) {
    if (const int order = std::memcmp(a.roll, b.roll, sizeof a.roll)) return order < 0;
    if (a.speed != b.speed) return a.speed < b.speed;
    if (a.kind != b.kind) return a.kind < b.kind;
    if (a.offset != b.offset) return a.offset < b.offset;
    return a.first != b.first ? a.first < b.first : a.length < b.length;
}

void put_roll(ShotKey& key, const CutEvent& event, bool filler) {
    char* to = key.roll;
    char* const end = key.roll + sizeof key.roll;
    for (const char c : std::string_view(event.key_in.get_prefix()))
        if (to != end) *to++ = ascii::lower(c);
    if (filler) return;
    if (to != end) ++to;
    for (const char c : std::string_view(event.cam_reel))
        if (to != end) *to++ = ascii::lower(c);
}

void put_frames(ShotKey& key, const CutEvent& event, bool plain) {
    const std::int64_t sample = event.key_in.is_valid() ? event.key_in.sample : 0;
    const std::int64_t frame = plain ? samples_per_frame(event.key_in) : 1;
    key.offset = (sample % frame + frame) % frame;
    key.first = (sample - key.offset) / frame;
}

ShotKey key_of(const CutEvent& event, NumberedShot& shot) {
    constexpr double plain_speed = 1.0;
    const bool plain = same_speed(event.speed, plain_speed);
    shot.filler = is_filler(event.key_in);
    ShotKey key;
    key.shot = &shot;
    key.length = event.length;
    put_roll(key, event, shot.filler);
    if (shot.filler) return key;
    key.speed = std::bit_cast<std::uint64_t>(plain ? plain_speed : event.speed);
    key.kind = event.key_in.type();
    put_frames(key, event, plain);
    shot.first_frame = key.first;
    shot.film = plain ? 1 : NumberedShot::no_film;
    return key;
}

void add_keys(Vector<ShotKey>& keys, const FilmOnReels& film, Vector<NumberedShot>& shots) {
    shots.resize(film.events().size());
    for (std::size_t i = 0; i < shots.size(); ++i)
        keys.push_back(key_of(*film.events()[i].event, shots[i]));
}

} // namespace

NumberedCuts number_shots(const FilmOnReels& old_film, const FilmOnReels& new_film) {
    NumberedCuts cuts;
    Vector<ShotKey> keys;
    keys.reserve(old_film.events().size() + new_film.events().size());
    add_keys(keys, old_film, cuts.old_cut);
    add_keys(keys, new_film, cuts.new_cut);
    std::sort(keys.begin(), keys.end(), comes_before);
    std::uint32_t film = 0;
    std::uint32_t shot = 0;
    const ShotKey* before = nullptr;
    for (const ShotKey& key : keys) {
        film += !before || !key.is_of_the_film(*before);
        shot += !before || !key.is_the_shot(*before);
        key.shot->shot = shot;
        if (key.shot->film != NumberedShot::no_film) key.shot->film = film;
        before = &key;
    }
    return cuts;
}
