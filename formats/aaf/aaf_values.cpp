#include "formats/aaf/aaf_values.h"

#include "formats/compound/wide_text.h"

#include <bit>
#include <cmath>
#include <cstdio>

namespace formats::aaf {
namespace {

constexpr char big_mark = 'B';
constexpr std::size_t indirect_head = 17;

enum class Type { other, whole, natural, rational, floating, text };

struct TypeRow {
    Auid id;
    Type type;
};

constexpr TypeRow types[] = {
    {auid("01010100-0000-0000-060e-2b3401040101"), Type::natural},
    {auid("01010200-0000-0000-060e-2b3401040101"), Type::natural},
    {auid("01010300-0000-0000-060e-2b3401040101"), Type::natural},
    {auid("01010400-0000-0000-060e-2b3401040101"), Type::natural},
    {auid("01010500-0000-0000-060e-2b3401040101"), Type::whole},
    {auid("01010600-0000-0000-060e-2b3401040101"), Type::whole},
    {auid("01010700-0000-0000-060e-2b3401040101"), Type::whole},
    {auid("01010800-0000-0000-060e-2b3401040101"), Type::whole},
    {auid("03010100-0000-0000-060e-2b3401040101"), Type::rational},
    {auid("01100200-0000-0000-060e-2b3401040101"), Type::text},
};

Type type_of(const Auid& id) {
    for (const TypeRow& row : types)
        if (row.id == id) return row.type;
    return Type::other;
}

struct Indirect {
    Type type;
    Bytes value;
};

std::optional<Indirect> opened(const Bytes& value) {
    if (value.size() < indirect_head) return std::nullopt;
    const Bytes inner(value.view(), value.view()[0] == big_mark);
    return Indirect{type_of(*inner.auid(1)), inner.from(indirect_head)};
}

std::optional<Fraction> floating(const Bytes& value) {
    if (value.size() == 4) {
        const auto bits = static_cast<std::uint32_t>(*value.number(0, 4));
        return Fraction::exactly(static_cast<double>(std::bit_cast<float>(bits)));
    }
    if (value.size() != 8) return std::nullopt;
    const double number = std::bit_cast<double>(*value.number(0, 8));
    if (!std::isfinite(number)) return std::nullopt;
    return Fraction::exactly(number);
}

void append_hex(std::string& text, std::uint64_t number, int digits) {
    char buffer[20];
    std::snprintf(buffer, sizeof buffer, "%0*llx", digits, static_cast<unsigned long long>(number));
    text += buffer;
}

} // namespace

std::string text_of(const Auid& id) {
    std::string text;
    append_hex(text, id.first, 8);
    text += '-';
    append_hex(text, id.second, 4);
    text += '-';
    append_hex(text, id.third, 4);
    text += '-';
    for (std::size_t i = 0; i < id.rest.size(); ++i) {
        if (i == 2) text += '-';
        append_hex(text, id.rest[i], 2);
    }
    return text;
}

std::string text_of(const MobId& id) {
    std::string text;
    for (const std::uint8_t byte : id)
        append_hex(text, byte, 2);
    return text;
}

std::optional<std::uint64_t> Bytes::number(std::size_t at, std::size_t size) const {
    if (at > bytes_.size() || bytes_.size() - at < size || size > 8) return std::nullopt;
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes_[at + (big_ ? i : size - 1 - i)]);
    return value;
}

std::optional<std::int64_t> Bytes::signed_number(std::size_t at, std::size_t size) const {
    const auto value = number(at, size);
    if (!value || size == 0) return std::nullopt;
    const auto shift = static_cast<int>(64 - 8 * size);
    return static_cast<std::int64_t>(*value << shift) >> shift;
}

std::optional<Auid> Bytes::auid(std::size_t at) const {
    if (at > bytes_.size() || bytes_.size() - at < 16) return std::nullopt;
    Auid id;
    id.first = static_cast<std::uint32_t>(*number(at, 4));
    id.second = static_cast<std::uint16_t>(*number(at + 4, 2));
    id.third = static_cast<std::uint16_t>(*number(at + 6, 2));
    for (std::size_t i = 0; i < id.rest.size(); ++i)
        id.rest[i] = static_cast<std::uint8_t>(bytes_[at + 8 + i]);
    return id;
}

std::optional<MobId> Bytes::mob_id(std::size_t at) const {
    MobId id;
    if (at > bytes_.size() || bytes_.size() - at < id.size()) return std::nullopt;
    for (std::size_t i = 0; i < id.size(); ++i)
        id[i] = static_cast<std::uint8_t>(bytes_[at + i]);
    return id;
}

std::optional<Fraction> Bytes::rational(std::size_t at) const {
    const auto num = signed_number(at, 4), den = signed_number(at + 4, 4);
    if (!num || !den || *den == 0) return std::nullopt;
    return Fraction(*num, *den);
}

std::string Bytes::text(std::size_t at) const { return compound::utf8_of_wide(from(at).view(), big_); }

std::optional<Fraction> indirect_number(const Bytes& value) {
    const auto inner = opened(value);
    if (!inner) return std::nullopt;
    const Bytes& bytes = inner->value;
    switch (inner->type) {
    case Type::whole: {
        const auto number = bytes.signed_number(0, bytes.size());
        return number ? std::optional<Fraction>(*number) : std::nullopt;
    }
    case Type::natural: {
        const auto number = bytes.number(0, bytes.size());
        return number ? std::optional<Fraction>(Fraction(*number, 1)) : std::nullopt;
    }
    case Type::rational:
        return bytes.rational(0);
    case Type::text:
        return std::nullopt;
    default: // writers have types of their own for floating numbers
        return floating(bytes);
    }
}

std::string indirect_text(const Bytes& value) {
    const auto inner = opened(value);
    return inner && inner->type == Type::text ? inner->value.text() : std::string();
}

} // namespace formats::aaf
