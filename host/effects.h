#pragma once
// Effect nodes and the stamps that name stored objects.

#include "host/counted.h"
#include "host/text.h"

#include <cstdint>

namespace IdStampMagic {
enum MagicType : std::int32_t { none = 0 };
}

/// Names a channel, an object on an event, or an effect graph.
class IdStamp {
public:
    IdStamp() = default;
    IdStamp(std::uint32_t number, IdStampMagic::MagicType magic) : number_(number), magic_(magic), valid_(true) {}

    bool valid() const { return valid_; }
    IdStampMagic::MagicType getMagicType() const { return magic_; }
    std::uint32_t number() const { return number_; }

private:
    std::uint32_t number_ = 0;
    IdStampMagic::MagicType magic_ = IdStampMagic::none;
    bool valid_ = false;
};

/// The host's comparison of two values.
template <class T> bool valEqualsVal(const T& a, const T& b);

using WipePattern = std::int32_t;

/// A node of an effect graph. The library asks for the name, the seventeenth operation; those before it
/// belong to the host, which keeps their places.
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
    virtual LightweightString<wchar_t> getName() const = 0;
};

/// A dissolve or wipe between two events whose pattern can be asked. Only wipes are of this class.
class DissolveWipeEffect : public FXGraphNodeBase {
public:
    virtual WipePattern getPattern() const = 0;
    virtual bool isReversed() const = 0;
};

/// An effect instance on an event.
class EffectInstance_opu4h5a4j : public FXGraphNodeBase {
public:
    /// The effect is the lab's to make.
    bool flag = false;
};
