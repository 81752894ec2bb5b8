#pragma once
// What the elements of an FCPXML document are, its resources, and how messages name them.

#include "embedded/rates.h"
#include "embedded/warning.h"
#include "formats/fcpxml/fcpxml_time.h"
#include "formats/xml/xml_document.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace formats::fcpxml {

using embedded::RateInfo;
using xml::Element;

/// What stops the reading, in words that name the line.
struct ReadError {
    std::string message;
};

/// `line 12: asset-clip "A012"`.
std::string place_of(const Element& element);
/// What an element is called, or else that.
std::string name_or(const Element& element, std::string_view other);
[[noreturn]] void refuse(const Element& element, const std::string& reason);

/// The elements that can stand in time.
enum class Story {
    none, ///< anything else: a detail of what it stands in
    spine,
    asset_clip,
    clip,
    video,
    audio,
    title,
    ref_clip,
    mc_clip,
    sync_clip,
    audition,
    gap,
    transition,
    caption, ///< text or a drawing over the picture, which no film list knows
    unknown, ///< of a later version: it may take time
};

Story story_of(const Element& element);
/// The lane of a connected item; 0 of one that is contained in its parent.
int lane_of(const Element& element);

/// An address with its "%20" and the like as what they stand for.
std::string decoded(std::string_view address);

/// What an `asset` or the `format` of a sequence says of its picture.
struct Format {
    std::optional<Fraction> rate;   ///< frames a second; unset where nothing tells, and of stills
    const RateInfo* info = nullptr; ///< null for rates that edits can't have
    bool still = false;
};

/// What stands for a format that isn't described, of media whose rate is known otherwise.
Format format_at(const std::optional<Fraction>& rate);

struct Asset {
    Element element;
    std::string name, src, identity;
    Fraction start;                   ///< on its own clock
    std::optional<Fraction> duration; ///< seconds
    bool has_video = false, has_audio = false;
    Format format;
};

/// The `resources` of a document by their ids. Of two with one id the first counts.
class Resources {
public:
    Resources(const Element& root, embedded::Warnings& warnings);

    /// None where there is no such id.
    Element find(std::string_view id) const;

private:
    void add(const Element& resources, embedded::Warnings& warnings);

    std::unordered_map<std::string_view, Element> by_id_;
};

/// What reading a project needs to know everywhere.
class Context {
public:
    Context(const Resources& all, embedded::Warnings& told) : resources(all), warnings(told) {}

    const Resources& resources;
    embedded::Warnings& warnings;
    const RateInfo* rate = nullptr; ///< the edit's
    /// The edit may be told to run at 24 where the file says 23.976, frame for frame: then all seconds of the file,
    /// of its media too, are this much longer.
    Fraction scale = 1;
    bool all_effects = false;

    void warn(const Element& element, const std::string& what,
              embedded::WarningKind kind = embedded::WarningKind::doubt) const {
        warnings.push_back({kind, place_of(element) + ": " + what});
    }
    /// The same, but of several warnings of an element only the first.
    void warn_once(const Element& element, const std::string& what, embedded::WarningKind kind) const {
        if (told_.insert(element.number()).second) warn(element, what, kind);
    }
    /// The time of an attribute, in seconds of the edit; refused where it can't be read.
    std::optional<Fraction> time(const Element& element, std::string_view attribute) const;
    /// A length: refused below 0.
    std::optional<Fraction> length(const Element& element, std::string_view attribute) const;
    /// Frames a second of the edit's seconds.
    Fraction true_rate(const Fraction& rate_of_file) const { return rate_of_file / scale; }

    /// Of the `format` that an element names.
    Format format_of(const Element& element) const;
    /// The asset that an element's `ref` names; null where there is none. It stays where it is.
    const Asset* asset_of(const Element& element) const;

    /// Something that no list knows of was left out, or a marker lies where its item isn't used; told once at the end
    /// for all of a kind.
    void left_out(const Element& element) const;
    void unused_marker(const Element& owner) const;
    void tell_of_left_out() const;

private:
    Asset read_asset(const Element& element) const;

    struct LeftOut {
        Element first;
        int count = 0;

        void add(const Element& element) {
            if (count++ == 0) first = element;
        }
    };
    mutable std::unordered_map<std::uint32_t, Asset> assets_;
    mutable std::map<std::string, LeftOut, std::less<>> left_out_;
    mutable LeftOut unused_markers_;
    mutable std::unordered_set<std::uint32_t> told_;
};

} // namespace formats::fcpxml
