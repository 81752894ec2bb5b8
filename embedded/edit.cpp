// Edits and the handles on them.

#include "embedded/edit_data.h"
#include "embedded/edit_store.h"
#include "embedded/positions.h"
#include "host/os.h"

using embedded::Channel;
using embedded::EditStore;
using embedded::LabelStart;
using embedded::Medium;
using embedded::Sequence;

namespace embedded {

namespace {

bool takes(const Channel& channel, unsigned kind, unsigned subtypes) {
    if (static_cast<unsigned>(channel.kind) != kind) return false;
    return subtypes == 0 || subtypes == 15 || (static_cast<unsigned>(channel.subtype) & subtypes) != 0;
}

const Channel* channel_at(const Edit::Impl& edit, int chan) {
    if (!edit.sequence || chan < 0 || static_cast<std::size_t>(chan) >= edit.sequence->channels.size()) return nullptr;
    return &edit.sequence->channels[static_cast<std::size_t>(chan)];
}

int channel_from(const Edit::Impl& edit, int chan, unsigned kind, unsigned subtypes) {
    for (; const Channel* channel = channel_at(edit, chan); ++chan)
        if (takes(*channel, kind, subtypes)) return chan;
    return no_more_channels;
}

const LabelStart* given(const std::optional<LabelStart>& label) { return label ? &*label : nullptr; }

const LabelStart* label_of(const Medium& medium, UserLabelType kind, const MediumRollIdent& ident) {
    if (kind == user_label_key) return given(medium.key);
    if (kind == user_label_ink) return given(medium.ink);
    if (kind != user_label_timecode) return nullptr;
    if (ident == MediumRollIdent(medium_source_picture, 2)) return given(medium.video_timecode);
    if (ident == MediumRollIdent(medium_source_picture, 3) || ident.medium == medium_sound)
        return given(medium.sound_timecode);
    return ident == MediumRollIdent(medium_source_24p, 1) ? given(medium.timecode_24p) : nullptr;
}

const LabelStart* label_of(const Sequence& sequence, UserLabelType kind, const MediumRollIdent& ident) {
    if (kind != user_label_timecode) return nullptr;
    switch (ident.medium) {
    case medium_edit_24p:
        return given(sequence.timecode_24p);
    case medium_24p:
    case medium_header_24p:
    case medium_source_24p:
        return nullptr;
    default:
        return &sequence.timecode;
    }
}

const LabelStart* label_of(const Edit::Impl& edit, UserLabelType kind, const MediumRollIdent& ident) {
    return edit.sequence ? label_of(*edit.sequence, kind, ident) : label_of(*edit.medium, kind, ident);
}

EditLabel bound_label(const LabelStart& start, const MediumRollIdent& ident) {
    EditLabel label(start.point.type(), ident);
    label.set_start(start.point);
    if (start.step > 0.0) label.posn_step = start.step;
    return label;
}

// The pair that answers where a pair isn't given itself.
ReelLabel stand_in(const ReelLabel& reel) {
    if (reel == ReelLabel(0, -1) || reel == ReelLabel(1, 1) || reel == ReelLabel(3, 1)) return tape_reel;
    return reel == ReelLabel(4, 1) ? sound_reel : reel;
}

const std::string* find_reel(const Medium& medium, const ReelLabel& reel) {
    const auto own = medium.reels.find(reel);
    if (own != medium.reels.end()) return &own->second;
    const auto other = medium.reels.find(stand_in(reel));
    return other != medium.reels.end() ? &other->second : nullptr;
}

template <class T> int read_field(Edit* edit, const char* key, T& value) {
    if (!edit) return -1;
    edit->mutex.enterAsReader();
    const int result = edit->values->in(key, value);
    edit->mutex.leaveAsReader();
    return result;
}

} // namespace

const RateInfo& default_rate() {
    static const RateInfo* const rate = nearest_rate(24.0);
    return *rate;
}

Fraction film_rate_of_edit(const EditPtr& edit) {
    const Edit* asked = edit ? edit.get() : EditStore::get().current();
    if (!asked) return film_rate_of(default_rate());
    const Edit::Impl& impl = *asked->impl();
    return impl.film_rate ? *impl.film_rate : film_rate_of(*impl.rate);
}

} // namespace embedded

EditPtr::EditPtr(const EditPtr& other) { *this = other.edit_; }

EditPtr& EditPtr::operator=(const EditPtr& other) { return *this = other.edit_; }

EditPtr& EditPtr::operator=(Edit* edit) {
    if (edit) OS()->counts().add_ref(edit->impl()->users);
    i_close();
    edit_ = edit;
    return *this;
}

EditPtr::~EditPtr() { i_close(); }

void EditPtr::i_open(const Cookie& cookie, eEditOpenBehaviour) { *this = EditStore::get().open(cookie); }

void EditPtr::i_close() {
    Edit* closed = edit_;
    edit_ = nullptr;
    if (closed && Qb::release_last(closed->impl()->users)) delete closed;
}

Edit::Edit(Impl* impl) : cookie(impl->cookie), values(&impl->values), impl_(impl) { EditStore::get().add(this); }

Edit::~Edit() {
    EditStore::get().remove(this);
    delete impl_;
}

int Edit::getFirstChan(unsigned kind, unsigned subtypes) const {
    return embedded::channel_from(*impl_, 0, kind, subtypes);
}

void Edit::getNextChan(int& chan, unsigned kind, unsigned subtypes) const {
    chan = chan < getNumChans() ? embedded::channel_from(*impl_, chan + 1, kind, subtypes) : no_more_channels;
}

void Edit::getChans(Vector<int>& list, unsigned kind, unsigned subtypes) const {
    list.clear();
    for (int chan = getFirstChan(kind, subtypes); chan != no_more_channels; getNextChan(chan, kind, subtypes))
        list.push_back(chan);
}

unsigned short Edit::getNumChans() const {
    return impl_->sequence ? static_cast<unsigned short>(impl_->sequence->channels.size()) : 0;
}

EditChanSubType Edit::getChanSubtype(int chan) const {
    const Channel* channel = embedded::channel_at(*impl_, chan);
    return channel ? static_cast<EditChanSubType>(channel->subtype) : chan_plain;
}

IdStamp Edit::getId(int chan) const {
    if (!embedded::channel_at(*impl_, chan)) return {};
    return {static_cast<std::uint32_t>(chan), embedded::stamp_zero};
}

Qb::Ptr<Cel> Edit::get_edit_cel_p(int chan) const {
    const Channel* channel = embedded::channel_at(*impl_, chan);
    return channel ? channel->cel : Qb::Ptr<Cel>(new Cel(0, getCelResolution()));
}

double Edit::getCelResolution() const { return embedded::Fraction(impl_->rate->den, impl_->rate->num).to_double(); }

Qb::FrameRate Edit::getFrameRate() { return impl_->rate->code; }

Qb::FrameRate Edit::getSourceFrameRate() { return impl_->rate->code; }

const ShotVideoMetadata& Edit::getVideoMetadata() const { return impl_->format; }

double Edit::getStartStripTime() const { return impl_->start_strip; }

EditLabel* Edit::getLabel(UserLabelType kind, const MediumRollIdent& ident) {
    const LabelStart* start = embedded::label_of(*impl_, kind, ident);
    EditLabel& label = impl_->labels[{kind, ident.medium, ident.roll}];
    label = start ? embedded::bound_label(*start, ident) : EditLabel();
    return &label;
}

LightweightString<char> Edit::getReelId(int medium, int roll) const {
    const std::string* reel = impl_->medium ? embedded::find_reel(*impl_->medium, {medium, roll}) : nullptr;
    return reel ? LightweightString<char>(reel->data(), reel->size()) : LightweightString<char>();
}

LightweightString<char> Edit::getReelId(const MediumRollIdent& ident) const {
    return getReelId(ident.medium, ident.roll);
}

LightweightString<wchar_t> Edit::getName() const {
    return fromUTF8(LightweightString<char>(impl_->name.data(), impl_->name.size()));
}

Cookie Edit::getED2CookieForED5Effect(const ce_handle& handle) {
    const Cookie effect = handle.get_channel_event().cookie;
    return effect.isEffect() ? effect : Cookie();
}

Qb::Ptr<FXGraphNodeBase> Edit::getVideoNode(const IdStamp& graph) {
    if (!impl_->sequence || !graph.valid() || graph.number() >= impl_->sequence->graphs.size()) return {};
    return impl_->sequence->graphs[graph.number()].node;
}

bool Qb::CurrentProject::getUseDropFrameTimecode() {
    const Edit* edit = EditStore::get().current();
    return edit && edit->impl()->sequence->drop_frame;
}

const ShotVideoMetadata& Qb::CurrentProject::getOutputImageFormat() {
    static const embedded::PictureFormat without_edit(embedded::default_rate().code);
    const Edit* edit = EditStore::get().current();
    return edit ? edit->impl()->format : without_edit;
}

int read_edit_field(Edit* edit, const char* key, int& value) { return embedded::read_field(edit, key, value); }

int read_edit_field(Edit* edit, const char* key, strp_field& value) { return embedded::read_field(edit, key, value); }
