// Cue lists.

#include "embedded/edit_builder.h"
#include "embedded/edit_data.h"

#include <algorithm>

using embedded::CueEntry;

struct CueList::Impl {
    std::vector<CueEntry> entries;
    /// Places of each channel's cues among the entries, in order.
    std::vector<std::vector<std::size_t>> of_channel;
};

namespace embedded {

namespace {

// A cue a hair before an event's end belongs to the next event, and one a hair before its start to it.
constexpr double hair = 1e-6;

bool earlier(const CueEntry& a, const CueEntry& b) { return a.time != b.time ? a.time < b.time : a.rank < b.rank; }

void file_entry(CueList::Impl& list, std::size_t place) {
    const int channel = list.entries[place].channel;
    for (std::size_t i = 0; i < list.of_channel.size(); ++i)
        if (channel < 0 || static_cast<std::size_t>(channel) == i) list.of_channel[i].push_back(place);
}

} // namespace

CueList* make_cue_list(std::vector<CueEntry> entries, int channels) {
    auto list = std::make_unique<CueList>();
    list->impl()->entries = std::move(entries);
    list->impl()->of_channel.resize(static_cast<std::size_t>(channels));
    list->sort();
    return list.release();
}

double EditBuilder::time_of_cue(const CueList& cues, unsigned index) { return cues.impl()->entries.at(index).time; }

} // namespace embedded

CueList::CueList() : impl_(new Impl) {}

CueList::~CueList() { delete impl_; }

CueList* CueList::extract(double from, double to, const IdStamp& channel) {
    if (!channel.valid() || channel.number() >= impl_->of_channel.size()) return nullptr;
    const std::vector<std::size_t>& places = impl_->of_channel[channel.number()];
    const auto before = [this](std::size_t place, double time) { return impl_->entries[place].time < time; };
    const auto first = std::lower_bound(places.begin(), places.end(), from - embedded::hair, before);
    const auto last = std::lower_bound(first, places.end(), to - embedded::hair, before);
    if (first == last) return nullptr;
    std::vector<CueEntry> taken;
    for (auto place = first; place != last; ++place)
        taken.push_back(impl_->entries[*place]);
    return embedded::make_cue_list(std::move(taken), static_cast<int>(impl_->of_channel.size()));
}

unsigned CueList::getNumCuePoints(int) const { return static_cast<unsigned>(impl_->entries.size()); }

Cue* CueList::getCuePoint(unsigned index, int) {
    return index < impl_->entries.size() ? &impl_->entries[index].cue : nullptr;
}

void CueList::sort() {
    std::stable_sort(impl_->entries.begin(), impl_->entries.end(), embedded::earlier);
    for (auto& places : impl_->of_channel)
        places.clear();
    for (std::size_t place = 0; place < impl_->entries.size(); ++place)
        embedded::file_entry(*impl_, place);
}
