#include "documents/list_kinds.h"

#include "documents/cut_lists.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace documents {
namespace {

template <PullOrder order> List pull(const CutFilm& cut) { return pull_list(cut, order); }

struct CutListKind {
    std::string_view id;
    List (*make)(const CutFilm& cut);
};

constexpr CutListKind cut_lists[] = {
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

constexpr std::string_view change_lists[] = {"changes", "bench", "change-pull", "discard", "transitions", "reels"};

const CutListKind* cut_list(std::string_view id) {
    const auto* const found = std::find_if(std::begin(cut_lists), std::end(cut_lists),
                                           [id](const CutListKind& kind) { return kind.id == id; });
    return found == std::end(cut_lists) ? nullptr : found;
}

} // namespace

bool is_list_id(std::string_view id) {
    return cut_list(id) || std::find(std::begin(change_lists), std::end(change_lists), id) != std::end(change_lists);
}

std::vector<std::string> cut_list_ids(const std::vector<std::string>& ids) {
    std::vector<std::string> found;
    for (const std::string& id : ids)
        if (cut_list(id)) found.push_back(id);
    return found;
}

Document document_of(const CutFilm& cut, const Profile& profile) {
    Document document;
    document.title = cut.title;
    for (const std::string& id : profile.lists)
        if (const CutListKind* kind = cut_list(id)) document.lists.push_back(kind->make(cut));
    apply_profile(profile, document);
    return document;
}

} // namespace documents
