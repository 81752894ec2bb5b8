#include "documents/list_kinds.h"

#include "documents/cut_lists.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace documents {
namespace {

template <PullOrder order> List pull(const CutFilm& cut) { return pull_list(cut, order); }

template <class Film> struct ListKind {
    std::string_view id;
    List (*make)(const Film& film);
};

constexpr ListKind<CutFilm> cut_lists[] = {
    {"assembly", assembly_list},
    {"pull-roll", pull<PullOrder::roll>},
    {"pull-key", pull<PullOrder::key>},
    {"pull-scene", pull<PullOrder::scene>},
    {"pull-tape", pull<PullOrder::tape>},
    {"opticals", optical_list},
    {"reuse", reuse_list},
    {"rolls", roll_list},
    {"scenes", scene_list},
    {"doubts", doubt_list},
};

constexpr ListKind<ChangeFilm> change_lists[] = {
    {"changes", change_list_of},         {"bench", bench_list_of},
    {"change-pull", change_pull_of},     {"discard", discard_list_of},
    {"transitions", transition_list_of}, {"reels", reel_list_of},
};

constexpr ListKind<OrderFilm> order_lists[] = {
    {"order", order_list_of},
    {"order-longer", longer_list_of},
    {"order-discard", order_discard_of},
    {"order-rolls", select_roll_list_of},
    {"order-unknown", not_ordered_of},
};

template <class Film, std::size_t n>
const ListKind<Film>* kind_of(const ListKind<Film> (&kinds)[n], std::string_view id) {
    const auto* const found =
        std::find_if(std::begin(kinds), std::end(kinds), [id](const ListKind<Film>& kind) { return kind.id == id; });
    return found == std::end(kinds) ? nullptr : found;
}

template <class Film, std::size_t n>
std::vector<std::string> ids_of(const ListKind<Film> (&kinds)[n], const std::vector<std::string>& ids) {
    std::vector<std::string> found;
    for (const std::string& id : ids)
        if (kind_of(kinds, id)) found.push_back(id);
    return found;
}

template <class Film, std::size_t n>
Document made_of(const ListKind<Film> (&kinds)[n], const Film& film, const Profile& profile) {
    Document document;
    document.title = film.title;
    for (const std::string& id : profile.lists)
        if (const ListKind<Film>* kind = kind_of(kinds, id)) document.lists.push_back(kind->make(film));
    apply_profile(profile, document);
    return document;
}

/// Without earlier orders it has nothing to say.
bool is_of_change_alone(std::string_view id) { return id == "order-longer" || id == "order-discard"; }

} // namespace

bool is_list_id(std::string_view id) {
    return kind_of(cut_lists, id) || kind_of(change_lists, id) || kind_of(order_lists, id);
}

std::vector<std::string> cut_list_ids(const std::vector<std::string>& ids) { return ids_of(cut_lists, ids); }

std::vector<std::string> change_list_ids(const std::vector<std::string>& ids) { return ids_of(change_lists, ids); }

std::vector<std::string> order_list_ids(const std::vector<std::string>& ids, bool change, bool rolls) {
    std::vector<std::string> found = ids_of(order_lists, ids);
    if (!change) std::erase_if(found, [](const std::string& id) { return is_of_change_alone(id); });
    if (!rolls) std::erase(found, "order-rolls");
    return found;
}

Document document_of(const CutFilm& cut, const Profile& profile) { return made_of(cut_lists, cut, profile); }

Document document_of(const ChangeFilm& film, const Profile& profile) { return made_of(change_lists, film, profile); }

Document document_of(const OrderFilm& film, const Profile& profile) {
    Profile chosen = profile;
    chosen.lists = order_list_ids(profile.lists, film.change, film.order.selects.building.feet > 0);
    return made_of(order_lists, film, chosen);
}

} // namespace documents
