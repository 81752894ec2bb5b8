#pragma once
// Effect nodes and the stamps that name stored objects.
//
// The library never makes a node and never looks into a graph: it asks for a node's name, for the pattern of a wipe and
// for one mark. Everything else about effects is the host's.

#include "host/counted.h"
#include "host/text.h"

#include <cstdint>

/// What kind of thing a stamp names. The library asks by number: the object on an event is plain at 1 and an effect at
/// 3; a graph is a transition's at 2.
namespace IdStampMagic {
/// For an object of any other kind the library looks at the event's effect node.
enum MagicType : std::int32_t { none = 0 };
} // namespace IdStampMagic

/// Names a channel, an object on an event, or an effect graph.
/// A plain value of the host; copies name the same thing. The library keeps none beyond the run.
class IdStamp {
public:
    /// Names nothing.
    IdStamp() = default;
    /// A valid stamp.
    IdStamp(std::uint32_t number, IdStampMagic::MagicType magic) : number_(number), magic_(magic), valid_(true) {}

    /// False for a stamp that names nothing; its number and magic say nothing then.
    bool valid() const { return valid_; }
    /// The kind of what is named.
    IdStampMagic::MagicType getMagicType() const { return magic_; }
    /// Which one it is, among those of its kind; the host's numbering.
    std::uint32_t number() const { return number_; }

private:
    /// The host's number.
    std::uint32_t number_ = 0;
    /// What kind of thing that number is counted among.
    IdStampMagic::MagicType magic_ = IdStampMagic::none;
    /// Set by the constructor with a number alone.
    bool valid_ = false;
};

/// The host's comparison of two values.
/// For positions (doubles) it takes two that differ by less than the host can tell as one.
template <class T> bool valEqualsVal(const T& a, const T& b);

/// The number of a wipe's pattern, as the host counts patterns; lists print it as a number.
using WipePattern = std::int32_t;

/// A node of an effect graph. The library asks for the name, the seventeenth operation; those before it
/// belong to the host, which keeps their places.
/// Nodes come in counted pointers and may outlive the graph that they were asked of. What class a node is of is told by
/// `dynamic_cast`, so a host compiles them with type information.
class FXGraphNodeBase : public iVirtual {
public:
    virtual void reserved_02() {}
    virtual void reserved_03() {}
    virtual void reserved_04() {}
    virtual void reserved_05() {}
    virtual void reserved_06() {}
    virtual void reserved_07() {}
    virtual void reserved_08() {}
    virtual void reserved_09() {}
    virtual void reserved_10() {}
    virtual void reserved_11() {}
    virtual void reserved_12() {}
    virtual void reserved_13() {}
    virtual void reserved_14() {}
    virtual void reserved_15() {}
    virtual void reserved_16() {}
    /// The effect's name as lists print it; a list of opticals cuts it to its column.
    /// Empty where the host has no name: of a transition the cutlist then says "Unknown Effect".
    virtual LightweightString<wchar_t> getName() const = 0;
};

/// A dissolve or wipe between two events whose pattern can be asked. Only wipes are of this class.
/// Asked where key numbers come from labels; a transition of any other class counts as a dissolve there. With a logging
/// table the cookie of `Edit::getED2CookieForED5Effect` tells.
class DissolveWipeEffect : public FXGraphNodeBase {
public:
    /// The pattern; 0 is one like the others.
    virtual WipePattern getPattern() const = 0;
    /// True where the pattern runs the other way.
    /// It goes into the cutlist as 1 or 0 beside the pattern.
    virtual bool isReversed() const = 0;
};

/// An effect instance on an event.
/// Asked where the object's stamp says neither plain nor effect. An event whose effect is of another class makes no
/// optical.
class EffectInstance_opu4h5a4j : public FXGraphNodeBase {
public:
    /// True: the effect is the lab's to make, so it is an optical. False: it was made for the eye alone, and lists
    /// pass it over.
    /// Set by the host before it hands the node out, and read only.
    bool flag = false;
};
