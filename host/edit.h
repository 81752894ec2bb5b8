#pragma once
// The edit model: sequences with their channels, events, effects, cues and render history. The host owns all
// of it; the library reads.
//
//     edit      channels, numbered from 0 over all kinds; what is stored with the edit; its labels and reels
//     channel   a list of points (`Cel`):   in      out in    out in      out
//                                           |= A ===|   |=fx==|   |= B ===|
//               events and the effects between them, each with its in-point and its out-point
//     point     a time on the edit, a time in the source, a speed, and a cookie that names what it shows
//
// Times are seconds. The library asks on the thread that called it, keeps nothing beyond the call, and changes nothing
// but the de-rendered copy that it asks for and deletes. Failure is no error here: an empty
// handle, a null pointer, an invalid stamp or false says that there is nothing.

#include "host/channel_kinds.h"
#include "host/counted.h"
#include "host/effects.h"
#include "host/labels.h"
#include "host/settings.h"
#include "host/text.h"

#include <cstdint>

class Cel;
class Edit;
class EditPtr;
class ce_handle;

/// Which way a wipe's pattern runs.
enum Wipe_Direction : std::int32_t { wipe_forward = 0, wipe_reversed = 1 };
/// What a cookie names, as a letter.
enum CookieType : std::int32_t { cookie_invalid = 'I', cookie_edit = 'E' };
/// How an edit is opened; the library knows this one alone.
enum eEditOpenBehaviour : std::int32_t { edit_open_default = 0 };
/// What a channel is for. Pictures of an unlisted channel show, but no list names them; an FX channel holds effects
/// over those below it.
enum EditChanSubType : std::int32_t { chan_plain = 0, chan_unlisted = 4, chan_fx = 8 };
/// What a handle steps over; the library knows this one alone, which is one point.
enum ce_info : std::int32_t { ce_all = 7 };

/// The value that walks over channels end with.
constexpr int no_more_channels = 0x8000;

/// Names a stored object: an edit, black or an effect. A plain value; copies name the same object. A default-made one
/// names nothing.
class Cookie {
public:
    Cookie() = default;
    /// From the text form; names nothing where the text is none. `flag` is the host's, and the library passes false.
    /// A text may hold less than the cookie that it came from; the host still finds an edit by it. Null is no text.
    Cookie(const char* text, bool flag);

    /// The text form, at most 8 characters; empty for what has none. `flag` as above.
    LightweightString<char> asString(bool flag) const;
    /// Black has no edit behind it: `EditPtr::i_open` leaves the handle empty.
    bool isBlack() const;
    /// Any effect, the kinds below among them.
    bool isEffect() const;
    /// Of these three at most one is true. With a logging table a transition that is none of them goes into the cutlist
    /// as "XX".
    bool isWipe() const;
    bool isDissolve() const;
    bool isFilmDissolve() const;
    /// The number of the wipe's pattern, whole; 0 for what is no wipe.
    unsigned wipeType() const;
    /// Goes into the cutlist as the number that it is.
    Wipe_Direction wipeDirection() const;
    bool operator==(const Cookie&) const = default;

    /// What the host tells objects apart by.
    std::uint32_t identity[4] = {};
    /// 'I' while the cookie names nothing.
    char type = cookie_invalid;
    /// What kind of object it is; the host's numbering.
    std::uint8_t object = 0;
    /// 1: a wipe whose pattern runs the other way.
    std::uint8_t reversed = 0;
    /// Of a wipe, cut to 16 bits; `wipeType` has all of it.
    std::uint16_t pattern = 0;
};

/// The same object under another type. The library passes `cookie_edit` and 255 and opens the result.
Cookie convertCookie(const Cookie& cookie, CookieType type, unsigned char subtype);

/// One point of an event. Positions are seconds.
struct ChannelEvent {
    /// Frames of the source for each of the edit: 1 normal, 0 a freeze, below 0 backward.
    float speed = 1.0F;
    /// On the edit, in seconds.
    double edit_time = 0.0;
    /// In the source, in seconds, counted from where its labels begin.
    double source_time = 0.0;
    /// What it shows: a source edit, black, or an effect.
    Cookie cookie;
};

/// A channel's event list: points in edit order, in-points and out-points in turn.
class Cel : public iVirtual {
public:
    /// An empty list with frames of that many seconds. The library passes `flags` 0.
    Cel(int flags, double frame_length);
    ~Cel() override;
    Cel(const Cel&) = delete;
    Cel& operator=(const Cel&) = delete;

    /// A tidied copy that shows the same. The library passes 0, false and true.
    Qb::Ptr<Cel> simplify(int flags, bool join, bool tidy) const;
    /// Writes the list without its crossfades into `result`, which is empty before. Non-zero on trouble: `result` then
    /// holds what was written until then, and the library takes that.
    /// Null is trouble. What lay on both sides of a crossfade runs to the cut again.
    int crossfade_removal_whole(Cel* result);
    /// At the first point; not valid in an empty list.
    /// Good while the list lives.
    ce_handle get_start_ceh();

    /// Points on the list, two for each event or effect.
    /// 0 in a new list; the host keeps it true.
    std::int32_t num_events = 0;
    /// One frame, in seconds.
    /// It stays what the list was made with.
    double resolution = 0.0;

    struct Impl;
    Impl* impl() const { return impl_; }

private:
    Impl* impl_;
};

/// A copy whose layers are folded into one run of in-points and out-points in turn, an effect standing between the two
/// events that it joins. The library passes `kinds` 3 (events and effects) and `depth` 1.
/// The result is the caller's to hold; it may be the list itself where that has one layer already.
Qb::Ptr<Cel> flatten(Qb::Ptr<Cel> cel, unsigned kinds, int depth);

/// A place in a `Cel`, which must outlive it.
/// A plain value: copies step on their own, and moving one changes nothing in the list.
class ce_handle {
public:
    ce_handle() = default;
    /// `point` counts from 0; any number may be given, and `valid` tells.
    ce_handle(Cel* list, int point) : cel(list), index(point) {}

    /// Non-zero while it is on a point.
    int valid() const;
    /// The start of an event or effect; false where the handle isn't valid.
    bool is_in_point() const;
    /// Its end.
    bool is_out_point() const;
    /// To the next point, or past the last, where it isn't valid any more.
    void increment(ce_info info);
    /// A copy of the point; a default-made one where the handle isn't valid.
    ChannelEvent get_channel_event() const;
    /// The graph of the effects at this point; not valid where there are none.
    IdStamp getEffectGraph() const;

    /// The list, not owned.
    Cel* cel = nullptr;
    /// The point, from 0.
    /// Even on in-points of a flattened list, odd on out-points; at the number of points where the walk is over.
    int index = 0;
};

/// A note of the editor at a time.
/// It lies in a `CueList` and says nothing of its own time.
struct Cue {
    /// What lists print.
    /// Cut to what the cutlist's record holds, by bytes of UTF-8.
    LightweightString<wchar_t> text;
    /// Bit 2 (value 4): to be printed, where key numbers come from labels; with a logging table every cue is.
    std::int32_t flags = 0;
};

/// The cues of an edit, of all its channels. Indexes count from 0.
class CueList : public iVirtual {
public:
    CueList();
    ~CueList() override;
    CueList(const CueList&) = delete;
    CueList& operator=(const CueList&) = delete;

    /// A new list of the cues on a channel from `from` on and ahead of `to`, seconds; null where there are none. The
    /// caller deletes it.
    /// The new list holds copies, in the order of time, and is good beyond this one. A cue that lies at `to` belongs to
    /// the next event.
    CueList* extract(double from, double to, const IdStamp& channel);
    /// Cues of the list. The library passes `kind` 0, which is all of them.
    unsigned getNumCuePoints(int kind) const;
    /// The list's own; null past the end.
    /// Good until the list is sorted or goes.
    Cue* getCuePoint(unsigned index, int kind);
    /// By time; cues of one time stay in their order.
    void sort();

    struct Impl;
    Impl* impl() const { return impl_; }

private:
    Impl* impl_;
};

/// The rate of a picture format. The first operation of each class is what the library asks.
/// Part of a `ShotVideoMetadata`, and as long-lived.
class VideoFrameRateInfo {
public:
    /// A code of the host's; `frame_rate_unset` where it isn't known.
    virtual Qb::FrameRate frame_rate() const = 0;

protected:
    ~VideoFrameRateInfo() = default;
};

/// A picture format. It belongs to whom it was asked of.
class ShotVideoMetadata {
public:
    /// It goes to `getMediumRollfromOutputDetails` with the rate, and nowhere else.
    virtual Qb::Image::ScanMode scan_mode() const = 0;
    virtual const VideoFrameRateInfo& rate_info() const = 0;

protected:
    ~ShotVideoMetadata() = default;
};

/// A handle on an edit; false while it holds none. Copies share the edit.
/// Edits may be closed on another thread than they were opened on, but one thread at a time works with an edit.
class EditPtr {
public:
    EditPtr() = default;
    /// One user more of the same edit.
    EditPtr(const EditPtr& other);
    EditPtr& operator=(const EditPtr& other);
    /// Points the handle at an edit that is open already.
    EditPtr& operator=(Edit* edit);
    /// The last user closes the edit.
    ~EditPtr();

    /// Opens a stored edit; the handle is empty afterwards if there is none. So lost sources and black, which have
    /// none, are told from real ones.
    /// What the handle held before is let go of. A rendered source opens like any other; `RenderHistory::isRendered`
    /// tells.
    void i_open(const Cookie& cookie, eEditOpenBehaviour behaviour);
    /// Lets the edit go; the handle is empty.
    void i_close();

    Edit* operator->() const { return edit_; }
    Edit& operator*() const { return *edit_; }
    /// The edit, which stays the handle's; null where it is empty.
    Edit* get() const { return edit_; }
    explicit operator bool() const { return edit_ != nullptr; }

private:
    Edit* edit_ = nullptr;
};

/// Either a sequence, which has channels, or a source, which has none and is asked for its reels and labels. It lives
/// while an `EditPtr` holds it.
class Edit {
public:
    /// Channels of a kind (`picture_channel` or `sound_channel`) in order, by absolute number; `subtypes` 0 or 15 takes
    /// every sub-type, any other value those whose bits it holds. `no_more_channels` behind the last.
    int getFirstChan(unsigned kind, unsigned subtypes) const;
    /// From a channel to the next of the kind.
    /// `chan` takes the result.
    void getNextChan(int& chan, unsigned kind, unsigned subtypes) const;
    /// The same as a list, which is emptied first.
    void getChans(Vector<int>& list, unsigned kind, unsigned subtypes) const;
    /// Channels of all kinds.
    /// Also what a channel's number must be below; 0 for a source.
    unsigned short getNumChans() const;
    /// `chan_plain` for a channel that isn't there.
    EditChanSubType getChanSubtype(int chan) const;
    /// What `CueList::extract` knows the channel by.
    /// Not valid for a channel that isn't there.
    IdStamp getId(int chan) const;
    /// The channel's events; an empty list for one that isn't there.
    Qb::Ptr<Cel> get_edit_cel_p(int chan) const;
    /// Seconds of a frame, for a new `Cel`.
    /// The length of one frame at `getFrameRate`.
    double getCelResolution() const;
    /// The rate that the edit is played at.
    Qb::FrameRate getFrameRate();
    /// The rate that its material was shot or transferred at.
    Qb::FrameRate getSourceFrameRate();
    /// The edit's own.
    const ShotVideoMetadata& getVideoMetadata() const;
    /// The source position at which the edit's material starts, in seconds.
    double getStartStripTime() const;
    /// The edit's own; never null. An invalid label when the edit has none of that kind and medium.
    /// Asking again for the same kind, medium and roll fills the same label anew, so whoever changes one copies it
    /// first.
    EditLabel* getLabel(UserLabelType kind, const MediumRollIdent& ident);
    /// The reel of a medium's roll; empty where there is none. 0 and -1 ask for the reel that the source is known by.
    LightweightString<char> getReelId(int medium, int roll) const;
    LightweightString<char> getReelId(const MediumRollIdent& ident) const;
    /// As lists print it.
    LightweightString<wchar_t> getName() const;
    /// At an effect's in-point, a cookie that tells what kind of effect it is; elsewhere one that names nothing.
    /// Asked where key numbers come from a logging table.
    Cookie getED2CookieForED5Effect(const ce_handle& handle);
    /// The node of a graph on a picture channel; null where there is none.
    Qb::Ptr<FXGraphNodeBase> getVideoNode(const IdStamp& graph);

    /// Names this edit.
    Cookie cookie;
    /// Stored values, guarded by `mutex`; owned by the edit.
    configb* values = nullptr;
    /// Held as a reader around each value that is read.
    SharedMutex mutex;

    struct Impl;
    explicit Edit(Impl* impl);
    ~Edit();
    Edit(const Edit&) = delete;
    Edit& operator=(const Edit&) = delete;
    Impl* impl() const { return impl_; }

private:
    Impl* impl_;
};

/// The in-point and out-point of one event on a channel.
class CelEventPair {
public:
    /// Of the event at the handle, which must be at an in-point of that channel and whose list must outlive the pair.
    CelEventPair(const EditPtr& edit, const ce_handle& handle, int chan);

    /// Of the in-point on the edit, in seconds.
    double editTime() const;
    /// Of the out-point; may be the smaller of the two.
    /// In seconds, as the first; 0 where the handle isn't valid.
    double endEditTime() const;
    /// What lies on the event: plain material or an effect.
    /// Not valid where the handle isn't.
    IdStamp getObjectID() const;
    /// The event's effect; null where it has none.
    Qb::Ptr<FXGraphNodeBase> getEffectHandle() const;
    /// Of its channel.
    EditChanSubType getChanSubType() const;
    /// At its in-point.
    ce_handle inH() const;

protected:
    EditPtr edit_;
    /// Keeps the list of a `CelIterator` alive.
    Qb::Ptr<Cel> cel_;
    ce_handle handle_;
    int chan_;
};

/// Walks the events of a channel.
/// It keeps the channel's list alive by itself, and steps over all events in edit order, black among them.
class CelIterator : public CelEventPair {
public:
    /// At the first event.
    CelIterator(const EditPtr& edit, int chan);
    /// False behind the last event.
    bool valid() const;
    /// To the next event; effects between events count as such.
    CelIterator& operator++();
};

/// The effect graph at one time of a channel.
/// A search, done once when it is made: time and channel can't be changed afterwards.
class EditGraphIterator {
public:
    /// At `time`, seconds on the edit. The library passes `flags` 0.
    EditGraphIterator(const EditPtr& edit, int chan, const double& time, int flags);
    /// Empties the list, then takes the nodes of the current effect, in order; none where there is no graph.
    void findComponentsForCurrentEffect(Vector<Qb::Ptr<FXGraphNodeBase>>& components) const;
    /// Empties the list, then takes the absolute numbers of the channels whose material the effect takes.
    void findMaterialTracks(Vector<int>& tracks) const;

    /// Non-zero when there is a graph.
    std::uint8_t found = 0;

private:
    EditPtr edit_;
    Qb::Ptr<Cel> cel_;
    ce_handle handle_;
};

/// A copy of an edit in the making; `edit` is null when it couldn't be made.
class EditModifier {
public:
    explicit EditModifier(const EditPtr& copy) : holder_(copy), edit(copy.get()) {}
    /// The copy as a handle of its own.
    EditPtr operator->() const { return holder_; }

private:
    EditPtr holder_;

public:
    /// Stays open while the modifier or a handle from it lives.
    Edit* edit = nullptr;
};

namespace RenderHistory {
/// Somewhere in the edit there is material that was rendered from other material.
/// False for an empty handle.
bool editContainsRenderedMaterial(const EditPtr& edit);
/// A stored copy of the edit with rendered material replaced by what it was rendered from. The library deletes it when
/// the run is over, by `EditManager`.
/// The edit given stays as it is.
EditModifier makeCopyAndUnrenderAll(const EditPtr& edit);
/// The source that the cookie names is itself rendered, so no film lies behind it.
bool isRendered(Cookie cookie);
} // namespace RenderHistory

/// The store of edits.
class EditManager {
public:
    /// Deletes a stored edit with its backups. The library passes an empty directory, which is the store's own, and 1.
    /// There is no result: a file that is gone already is no trouble, and one that can't be deleted stays.
    static void deleteEditFileAndBackups(const Cookie& cookie, LightweightString<char> directory, unsigned flags);
};

/// A set of channels in bit form, lowest channel first. A logging table keeps one and doesn't look into it.
class ChannelMask {
public:
    explicit ChannelMask(unsigned bits) : bits_(bits) {}
    unsigned bits() const { return bits_; }

private:
    unsigned bits_;
};

namespace Qb {
/// The project that the host has open. The embedded host takes that of the edit being listed.
class CurrentProject {
public:
    /// True: the timecode of new material drops frames where its rate can.
    /// It goes into the cutlist's header with the edit's source rate. False without a project.
    static bool getUseDropFrameTimecode();
    /// The format that the project is played in; lives as long as the host.
    static const ShotVideoMetadata& getOutputImageFormat();
};
} // namespace Qb

/// Two times, in seconds, that are the same for the host: closer than any frame.
template <> bool valEqualsVal<double>(const double& a, const double& b);

/// Reads one stored value under the edit's lock: 0 when the key was there, -1 when not, and then the target stays. The
/// library asks for "modification_time", in seconds since the epoch, and for the texts "scene", "take" and
/// "description".
/// A null edit counts as one without values.
int read_edit_field(Edit* edit, const char* key, int& value);
/// The same for a text.
int read_edit_field(Edit* edit, const char* key, strp_field& value);
