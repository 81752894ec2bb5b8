#pragma once
// The edit model: sequences with their channels, events, effects, cues and render history. The host owns all
// of it; the library reads.

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

enum Wipe_Direction : std::int32_t { wipe_forward = 0, wipe_reversed = 1 };
enum CookieType : std::int32_t { cookie_invalid = 'I', cookie_edit = 'E' };
enum eEditOpenBehaviour : std::int32_t { edit_open_default = 0 };
enum EditChanSubType : std::int32_t { chan_plain = 0, chan_unlisted = 4, chan_fx = 8 };
enum ce_info : std::int32_t { ce_all = 7 };

/// The value that walks over channels end with.
constexpr int no_more_channels = 0x8000;

/// Names a stored object: an edit, black or an effect.
class Cookie {
public:
    Cookie() = default;
    /// From the text form.
    Cookie(const char* text, bool flag);

    /// At most 8 characters.
    LightweightString<char> asString(bool flag) const;
    bool isBlack() const;
    bool isEffect() const;
    bool isWipe() const;
    bool isDissolve() const;
    bool isFilmDissolve() const;
    unsigned wipeType() const;
    Wipe_Direction wipeDirection() const;
    bool operator==(const Cookie&) const = default;

    /// What the host tells objects apart by.
    std::uint32_t identity[4] = {};
    /// 'I' while the cookie names nothing.
    char type = cookie_invalid;
    /// What kind of object it is, and for a wipe its pattern and direction; the host's.
    std::uint8_t object = 0;
    std::uint8_t reversed = 0;
    std::uint16_t pattern = 0;
};

Cookie convertCookie(const Cookie& cookie, CookieType type, unsigned char subtype);

/// One point of an event. Positions are seconds.
struct ChannelEvent {
    float speed = 1.0F;
    double edit_time = 0.0;
    double source_time = 0.0;
    Cookie cookie;
};

/// A channel's event list: points in edit order, in-points and out-points in turn.
class Cel : public iVirtual {
public:
    Cel(int flags, double frame_length);
    ~Cel() override;
    Cel(const Cel&) = delete;
    Cel& operator=(const Cel&) = delete;

    Qb::Ptr<Cel> simplify(int flags, bool join, bool tidy) const;
    /// Writes the list without its crossfades into `result`; non-zero on trouble.
    int crossfade_removal_whole(Cel* result);
    ce_handle get_start_ceh();

    /// Points on the list.
    std::int32_t num_events = 0;
    /// One frame, in seconds.
    double resolution = 0.0;

    struct Impl;
    Impl* impl() const { return impl_; }

private:
    Impl* impl_;
};

Qb::Ptr<Cel> flatten(Qb::Ptr<Cel> cel, unsigned kinds, int depth);

/// A place in a `Cel`, which must outlive it.
class ce_handle {
public:
    ce_handle() = default;
    ce_handle(Cel* list, int point) : cel(list), index(point) {}

    int valid() const;
    bool is_in_point() const;
    bool is_out_point() const;
    /// To the next point.
    void increment(ce_info info);
    ChannelEvent get_channel_event() const;
    IdStamp getEffectGraph() const;

    Cel* cel = nullptr;
    int index = 0;
};

struct Cue {
    LightweightString<wchar_t> text;
    /// Bit 2 (value 4): to be printed.
    std::int32_t flags = 0;
};

/// The cues of an edit.
class CueList : public iVirtual {
public:
    CueList();
    ~CueList() override;
    CueList(const CueList&) = delete;
    CueList& operator=(const CueList&) = delete;

    /// A new list of the cues between two times on a channel, or null; the caller deletes it.
    CueList* extract(double from, double to, const IdStamp& channel);
    unsigned getNumCuePoints(int kind) const;
    /// Null past the end.
    Cue* getCuePoint(unsigned index, int kind);
    void sort();

    struct Impl;
    Impl* impl() const { return impl_; }

private:
    Impl* impl_;
};

/// A picture format. The first operation of each class is what the library asks.
class VideoFrameRateInfo {
public:
    virtual Qb::FrameRate frame_rate() const = 0;

protected:
    ~VideoFrameRateInfo() = default;
};

class ShotVideoMetadata {
public:
    virtual Qb::Image::ScanMode scan_mode() const = 0;
    virtual const VideoFrameRateInfo& rate_info() const = 0;

protected:
    ~ShotVideoMetadata() = default;
};

/// A handle on an edit; false while it holds none. Copies share the edit.
class EditPtr {
public:
    EditPtr() = default;
    EditPtr(const EditPtr& other);
    EditPtr& operator=(const EditPtr& other);
    /// Points the handle at an edit that is open already.
    EditPtr& operator=(Edit* edit);
    ~EditPtr();

    /// Opens a stored edit; the handle stays empty if there is none.
    void i_open(const Cookie& cookie, eEditOpenBehaviour behaviour);
    void i_close();

    Edit* operator->() const { return edit_; }
    Edit& operator*() const { return *edit_; }
    Edit* get() const { return edit_; }
    explicit operator bool() const { return edit_ != nullptr; }

private:
    Edit* edit_ = nullptr;
};

class Edit {
public:
    /// Channels of a kind (1 picture, 2 sound) in order; `subtypes` 0 or 15 takes every sub-type.
    int getFirstChan(unsigned kind, unsigned subtypes) const;
    void getNextChan(int& chan, unsigned kind, unsigned subtypes) const;
    void getChans(Vector<int>& list, unsigned kind, unsigned subtypes) const;
    unsigned short getNumChans() const;
    EditChanSubType getChanSubtype(int chan) const;
    IdStamp getId(int chan) const;
    Qb::Ptr<Cel> get_edit_cel_p(int chan) const;
    double getCelResolution() const;
    Qb::FrameRate getFrameRate();
    Qb::FrameRate getSourceFrameRate();
    const ShotVideoMetadata& getVideoMetadata() const;
    /// The source position at which the edit's material starts, in seconds.
    double getStartStripTime() const;
    /// The edit's own; never null. An invalid label when the edit has none of that kind and medium.
    EditLabel* getLabel(UserLabelType kind, const MediumRollIdent& ident);
    LightweightString<char> getReelId(int medium, int roll) const;
    LightweightString<char> getReelId(const MediumRollIdent& ident) const;
    LightweightString<wchar_t> getName() const;
    Cookie getED2CookieForED5Effect(const ce_handle& handle);
    Qb::Ptr<FXGraphNodeBase> getVideoNode(const IdStamp& graph);

    Cookie cookie;
    /// Stored values, guarded by `mutex`; owned by the edit.
    configb* values = nullptr;
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
    CelEventPair(const EditPtr& edit, const ce_handle& handle, int chan);

    double editTime() const;
    /// May be the smaller of the two.
    double endEditTime() const;
    IdStamp getObjectID() const;
    Qb::Ptr<FXGraphNodeBase> getEffectHandle() const;
    EditChanSubType getChanSubType() const;
    ce_handle inH() const;

protected:
    EditPtr edit_;
    /// Keeps the list of a `CelIterator` alive.
    Qb::Ptr<Cel> cel_;
    ce_handle handle_;
    int chan_;
};

/// Walks the events of a channel.
class CelIterator : public CelEventPair {
public:
    CelIterator(const EditPtr& edit, int chan);
    bool valid() const;
    CelIterator& operator++();
};

/// The effect graph at one time of a channel.
class EditGraphIterator {
public:
    EditGraphIterator(const EditPtr& edit, int chan, const double& time, int flags);
    /// The nodes of the current effect, in order.
    void findComponentsForCurrentEffect(Vector<Qb::Ptr<FXGraphNodeBase>>& components) const;
    /// Absolute numbers of the channels whose material the effect takes.
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
    EditPtr operator->() const { return holder_; }

private:
    EditPtr holder_;

public:
    Edit* edit = nullptr;
};

namespace RenderHistory {
bool editContainsRenderedMaterial(const EditPtr& edit);
/// A stored copy of the edit with rendered material replaced by what it was rendered from.
EditModifier makeCopyAndUnrenderAll(const EditPtr& edit);
bool isRendered(Cookie cookie);
} // namespace RenderHistory

class EditManager {
public:
    static void deleteEditFileAndBackups(const Cookie& cookie, LightweightString<char> directory, unsigned flags);
};

/// A set of channels in bit form.
class ChannelMask {
public:
    explicit ChannelMask(unsigned bits) : bits_(bits) {}
    unsigned bits() const { return bits_; }

private:
    unsigned bits_;
};

namespace Qb {
class CurrentProject {
public:
    static bool getUseDropFrameTimecode();
    static const ShotVideoMetadata& getOutputImageFormat();
};
} // namespace Qb

template <> bool valEqualsVal<double>(const double& a, const double& b);

/// Reads one stored value under the edit's lock: 0 when the key was there, -1 when not.
int read_edit_field(Edit* edit, const char* key, int& value);
int read_edit_field(Edit* edit, const char* key, strp_field& value);
