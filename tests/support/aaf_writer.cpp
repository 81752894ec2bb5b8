#include "tests/support/aaf_writer.h"

#include <algorithm>
#include <bit>
#include <cstdio>

namespace aaf_writer {
namespace {

enum form : std::uint16_t {
    data = 0x82,
    strong = 0x22,
    strong_vector = 0x32,
    strong_set = 0x3a,
    weak_reference = 0x02
};

constexpr Auid rational_type = auid("03010100-0000-0000-060e-2b3401040101");
constexpr Auid string_type = auid("01100200-0000-0000-060e-2b3401040101");
constexpr Auid uint8_type = auid("01010100-0000-0000-060e-2b3401040101");
constexpr Auid int32_type = auid("01010700-0000-0000-060e-2b3401040101");
constexpr Auid float_type = auid("11111111-0000-0000-0000-000000000002");
constexpr Auid double_type = auid("11111111-0000-0000-0000-000000000001");
constexpr Auid top_level = auid("0d010102-0101-0700-060e-2b3404010101");
constexpr Auid sub_clip_usage = auid("0d010102-0101-0500-060e-2b3404010101");

void put(std::string& bytes, std::uint64_t value, std::size_t size, bool big) {
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * (big ? size - 1 - i : i)));
}

std::string number_bytes(std::uint64_t value, std::size_t size, bool big) {
    std::string bytes;
    put(bytes, value, size, big);
    return bytes;
}

std::string auid_bytes(const Auid& id, bool big) {
    std::string bytes;
    put(bytes, id.first, 4, big);
    put(bytes, id.second, 2, big);
    put(bytes, id.third, 2, big);
    bytes.append(id.rest.begin(), id.rest.end());
    return bytes;
}

std::string wide(const std::string& ascii, bool big) {
    std::string bytes;
    for (const char c : ascii)
        put(bytes, static_cast<unsigned char>(c), 2, big);
    put(bytes, 0, 2, big);
    return bytes;
}

std::string indirect(const Auid& type, const std::string& value, bool big) {
    return (big ? "B" : "L") + auid_bytes(type, big) + value;
}

std::string hex(const char* format, unsigned long long value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string index_bytes(std::size_t count, bool set, bool big) {
    std::string bytes;
    put(bytes, count, 4, big);
    put(bytes, count, 4, big);
    put(bytes, 0xFFFFFFFF, 4, big);
    if (set) {
        put(bytes, 0x1b01, 2, big);
        put(bytes, 16, 1, big);
    }
    for (std::size_t i = 0; i < count; ++i) {
        put(bytes, i, 4, big);
        if (!set) continue;
        put(bytes, 1, 4, big);
        bytes.append(16, static_cast<char>(i));
    }
    return bytes;
}

Auid class_auid(Class what) {
    Auid id = auid("0d010101-0101-0000-060e-2b3402060101");
    id.third = static_cast<std::uint16_t>(static_cast<unsigned>(what) << 8);
    return id;
}

Object mob_of(Class what, int number, const std::string& name, Objects slots) {
    return Object(what)
        .mob(pid::mob_id, mob_number(number))
        .text(pid::mob_name, name)
        .vector(pid::slots, std::move(slots));
}

Object source(int number, const std::string& name, Objects slots, Object descriptor) {
    return mob_of(Class::source_mob, number, name, std::move(slots))
        .child(pid::essence_description, std::move(descriptor));
}

} // namespace

Object::Object(Class what) : class_id_(class_auid(what)) {}

Object& Object::add(Pid property, std::uint16_t form, std::function<std::string(bool)> value,
                    std::vector<Object> children) {
    without(property);
    properties_.push_back({property, form, std::move(value), std::move(children)});
    return *this;
}

Object& Object::without(Pid property) {
    std::erase_if(properties_, [property](const Property& each) { return each.pid == property; });
    return *this;
}

Object& Object::breaks_off(std::size_t bytes) {
    lost_ = bytes;
    return *this;
}

Object& Object::changes_index(Pid property, std::function<void(std::string&)> change) {
    for (Property& each : properties_)
        if (each.pid == property) each.change_index = change;
    return *this;
}

Object& Object::number(Pid property, std::int64_t value, std::size_t size) {
    return add(property, data, [=](bool big) { return number_bytes(static_cast<std::uint64_t>(value), size, big); });
}

Object& Object::rational(Pid property, std::int64_t num, std::int64_t den) {
    return add(property, data, [=](bool big) {
        return number_bytes(static_cast<std::uint64_t>(num), 4, big) +
               number_bytes(static_cast<std::uint64_t>(den), 4, big);
    });
}

Object& Object::text(Pid property, const std::string& ascii) {
    return add(property, data, [=](bool big) { return wide(ascii, big); });
}

Object& Object::id(Pid property, const Auid& value) {
    return add(property, data, [=](bool big) { return auid_bytes(value, big); });
}

Object& Object::mob(Pid property, const MobId& value) { return raw(property, std::string(value.begin(), value.end())); }

Object& Object::weak(Pid property, const Auid& value) {
    return add(property, weak_reference, [=](bool big) {
        return number_bytes(1, 2, big) + number_bytes(0x1b01, 2, big) + number_bytes(16, 1, big) +
               auid_bytes(value, big);
    });
}

Object& Object::raw(Pid property, const std::string& bytes) {
    return add(property, data, [=](bool) { return bytes; });
}

Object& Object::indirect_rational(Pid property, std::int64_t num, std::int64_t den) {
    return add(property, data, [=](bool big) {
        return indirect(rational_type,
                        number_bytes(static_cast<std::uint64_t>(num), 4, big) +
                            number_bytes(static_cast<std::uint64_t>(den), 4, big),
                        big);
    });
}

Object& Object::indirect_text(Pid property, const std::string& ascii) {
    return add(property, data, [=](bool big) { return indirect(string_type, wide(ascii, big), big); });
}

Object& Object::indirect_double(Pid property, double value) {
    return add(property, data, [=](bool big) {
        return indirect(double_type, number_bytes(std::bit_cast<std::uint64_t>(value), 8, big), big);
    });
}

Object& Object::indirect_float(Pid property, float value) {
    return add(property, data, [=](bool big) {
        return indirect(float_type, number_bytes(std::bit_cast<std::uint32_t>(value), 4, big), big);
    });
}

Object& Object::indirect_whole(Pid property, std::int32_t value) {
    return add(property, data, [=](bool big) {
        return indirect(int32_type, number_bytes(static_cast<std::uint32_t>(value), 4, big), big);
    });
}

Object& Object::indirect_natural(Pid property, std::uint8_t value) {
    return add(property, data, [=](bool big) { return indirect(uint8_type, number_bytes(value, 1, big), big); });
}

Object& Object::child(Pid property, Object value) { return add(property, strong, nullptr, {std::move(value)}); }

Object& Object::vector(Pid property, std::vector<Object> elements) {
    return add(property, strong_vector, nullptr, std::move(elements));
}

Object& Object::set(Pid property, std::vector<Object> elements) {
    return add(property, strong_set, nullptr, std::move(elements));
}

Object& Object::lacks_an_element(Pid property) {
    for (Property& each : properties_)
        if (each.pid == property) each.one_more = true;
    return *this;
}

compound_writer::Node Object::node(const std::string& name, bool big) const {
    compound_writer::Node node{name, true, {}, {}, {}};
    const std::string class_bytes = auid_bytes(class_id_, false);
    std::copy(class_bytes.begin(), class_bytes.end(), node.class_id.begin());
    std::string rows, values;
    for (const Property& property : properties_) {
        const std::string label = hex("p-%llx", property.pid);
        const std::string value = property.value ? property.value(big) : wide(label, big);
        put(rows, property.pid, 2, big);
        put(rows, property.form, 2, big);
        put(rows, value.size(), 2, big);
        values += value;
        const bool many = property.form == strong_vector || property.form == strong_set;
        for (std::size_t i = 0; i < property.children.size(); ++i)
            node.children.push_back(property.children[i].node(many ? label + hex("{%llx}", i) : label, big));
        const std::size_t count = property.children.size() + (property.one_more ? 1 : 0);
        if (!many) continue;
        std::string index = index_bytes(count, property.form == strong_set, big);
        if (property.change_index) property.change_index(index);
        node.children.push_back({label + " index", false, {}, std::move(index), {}});
    }
    std::string stream = big ? "B" : "L";
    put(stream, 0x20, 1, big);
    put(stream, properties_.size(), 2, big);
    stream += rows + values;
    stream.resize(stream.size() - std::min(lost_, stream.size()));
    node.children.push_back({"properties", false, {}, std::move(stream), {}});
    return node;
}

MobId mob_number(int number) {
    MobId id{};
    if (number == 0) return id;
    id[0] = 6;
    id[30] = static_cast<std::uint8_t>(number >> 8);
    id[31] = static_cast<std::uint8_t>(number);
    id[29] = static_cast<std::uint8_t>(number >> 16);
    return id;
}

Object segment(Class what, std::int64_t length, const Auid& kind) {
    return Object(what).weak(pid::data_definition, kind).number(pid::length, length, 8);
}

Object clip(int mob, std::int64_t start, std::int64_t length, int slot, const Auid& kind) {
    return segment(Class::source_clip, length, kind)
        .mob(pid::source_id, mob_number(mob))
        .number(pid::source_slot, slot, 4)
        .number(pid::start_time, start, 8);
}

Object filler(std::int64_t length) { return segment(Class::filler, length); }

namespace {

// What tests say of a sequence's parts, to sum them up.
std::int64_t value_of(const std::string& bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return static_cast<std::int64_t>(value);
}

std::int64_t length_of(const Object& part) {
    const compound_writer::Node node = part.node("", false);
    const std::string& stream = node.children.back().bytes;
    const auto count = static_cast<std::size_t>(value_of(stream.substr(2, 2)));
    std::size_t at = 4 + count * 6;
    for (std::size_t i = 0; i < count; ++i) {
        const auto size = static_cast<std::size_t>(value_of(stream.substr(8 + 6 * i, 2)));
        if (value_of(stream.substr(4 + 6 * i, 2)) == pid::length) return value_of(stream.substr(at, size));
        at += size;
    }
    return 0;
}

bool is_transition(const Object& part) {
    const Auid id = class_auid(Class::transition);
    return part.node("", false).class_id[7] == id.third >> 8;
}

} // namespace

Object sequence(Objects parts, std::optional<std::int64_t> length, const Auid& kind) {
    std::int64_t sum = 0;
    if (!length)
        for (const Object& part : parts)
            sum += is_transition(part) ? -length_of(part) : length_of(part);
    return segment(Class::sequence, length.value_or(sum), kind).vector(pid::components, std::move(parts));
}

Object transition(std::int64_t length, std::int64_t cut_point, const Auid& operation) {
    return segment(Class::transition, length)
        .number(pid::cut_point, cut_point, 8)
        .child(pid::transition_operation, effect(operation, length, {}));
}

Object effect(const Auid& operation, std::int64_t length, Objects inputs, Objects parameters) {
    Object group = segment(Class::operation_group, length).weak(pid::operation, operation);
    if (!inputs.empty()) group.vector(pid::input_segments, std::move(inputs));
    if (!parameters.empty()) group.vector(pid::parameters, std::move(parameters));
    return group;
}

Object constant(const Auid& parameter, std::int64_t num, std::int64_t den) {
    return Object(Class::constant_value)
        .id(pid::parameter_definition, parameter)
        .indirect_rational(pid::constant_value, num, den);
}

Object varying(const Auid& parameter, const std::vector<ControlPoint>& points, const Auid& interpolation) {
    Objects list;
    for (const ControlPoint& point : points)
        list.push_back(Object(auid("0d010101-0101-1900-060e-2b3402060101"))
                           .rational(pid::point_time, point.time, 1)
                           .indirect_rational(pid::point_value, point.num, point.den));
    return Object(Class::varying_value)
        .id(pid::parameter_definition, parameter)
        .weak(pid::interpolation, interpolation)
        .vector(pid::point_list, std::move(list));
}

Object below(std::int64_t length, int scope_up, int slot_down) {
    return segment(Class::scope_reference, length)
        .number(pid::relative_scope, scope_up, 4)
        .number(pid::relative_slot, slot_down, 4);
}

Object scope(std::int64_t length, Objects tracks) {
    return segment(Class::nested_scope, length).vector(pid::scope_slots, std::move(tracks));
}

Object selector(std::int64_t length, Object selected) {
    return segment(Class::selector, length).child(pid::selected, std::move(selected));
}

Object choices(std::int64_t length, Objects all) {
    Object group = segment(Class::essence_group, length);
    if (!all.empty()) group.vector(pid::choices, std::move(all));
    return group;
}

Object timecode(std::int64_t start, std::int64_t fps, std::int64_t length, bool drop) {
    return segment(Class::timecode, length, timecode_data)
        .number(pid::timecode_start, start, 8)
        .number(pid::timecode_fps, fps, 2)
        .number(pid::timecode_drop, drop, 1);
}

Object edge_code(const std::string& prefix, std::int64_t start, std::int64_t length, int format, int film_kind) {
    std::string header = prefix;
    header.resize(8);
    return segment(Class::edge_code, length, edgecode_data)
        .number(pid::edge_start, start, 8)
        .number(pid::edge_film_kind, film_kind, 1)
        .number(pid::edge_format, format, 1)
        .raw(pid::edge_header, header);
}

Object pulldown(std::int64_t length, bool to_film, Object input, int kind, int phase) {
    return segment(Class::pulldown, length)
        .child(pid::pulldown_input, std::move(input))
        .number(pid::pulldown_kind, kind, 1)
        .number(pid::pulldown_direction, to_film ? 0 : 1, 1)
        .number(pid::phase_frame, phase, 4);
}

Object marker(std::int64_t position, const std::string& text, std::vector<int> slots) {
    std::string described;
    for (const int each : slots)
        described += number_bytes(static_cast<std::uint64_t>(each), 4, false);
    Object object = Object(Class::descriptive_marker).number(pid::event_position, position, 8);
    if (!text.empty()) object.text(pid::event_comment, text);
    return described.empty() ? object : object.raw(pid::described_slots, described);
}

Object slot(int id, Rate rate, Object content, std::optional<int> number, std::int64_t origin) {
    Object made = Object(Class::timeline_slot)
                      .number(pid::slot_id, id, 4)
                      .rational(pid::edit_rate, rate.num, rate.den)
                      .number(pid::origin, origin, 8)
                      .child(pid::slot_segment, std::move(content));
    return number ? made.number(pid::track_number, *number, 4) : made;
}

Object markers_slot(int id, Rate rate, Objects markers) {
    return Object(Class::event_slot)
        .number(pid::slot_id, id, 4)
        .rational(pid::event_rate, rate.num, rate.den)
        .child(pid::slot_segment, sequence(std::move(markers), 0, auid("01030201-1000-0000-060e-2b3404010101")));
}

Object composition(int number, const std::string& name, Objects slots, bool top) {
    Object made = mob_of(Class::composition_mob, number, name, std::move(slots));
    return top ? made.id(pid::usage_code, top_level) : made;
}

Object sub_clip(int number, const std::string& name, Objects slots) {
    return mob_of(Class::composition_mob, number, name, std::move(slots)).id(pid::usage_code, sub_clip_usage);
}

Object with_comments(Object mob, const Comments& comments) {
    Objects tags;
    for (const auto& [column, value] : comments)
        tags.push_back(Object(auid("0d010101-0101-3f00-060e-2b3402060101"))
                           .text(pid::tag_name, column)
                           .indirect_text(pid::tag_value, value));
    return tags.empty() ? mob : mob.vector(pid::mob_comments, std::move(tags));
}

Object master(int number, const std::string& name, Objects slots, const Comments& comments) {
    return with_comments(mob_of(Class::master_mob, number, name, std::move(slots)), comments);
}

Object file_source(int number, const std::string& name, Objects slots) {
    return source(number, name, std::move(slots), Object(auid("0d010101-0101-2800-060e-2b3402060101")));
}

Object tape(int number, const std::string& name, Objects slots) {
    return source(number, name, std::move(slots), Object(Class::tape_descriptor));
}

Object film(int number, const std::string& name, Objects slots, int perforations, int format) {
    Object descriptor = Object(Class::film_descriptor).number(pid::film_format, format, 1);
    if (perforations > 0) descriptor.number(pid::perforations, perforations, 1);
    return source(number, name, std::move(slots), std::move(descriptor));
}

Object defined(const Auid& id, const std::string& name, bool time_warp) {
    return Object(auid("0d010101-0101-1c00-060e-2b3402060101"))
        .id(pid::definition_auid, id)
        .text(pid::definition_name, name)
        .number(pid::is_time_warp, time_warp, 1);
}

Object defined_property(const Auid& id, Pid number) {
    const Auid class_definition = auid("0d010101-0201-0000-060e-2b3402060101");
    const Auid property_definition = auid("0d010101-0202-0000-060e-2b3402060101");
    Objects properties;
    properties.push_back(Object(property_definition).id(pid::definition_id, id).number(pid::local_pid, number, 2));
    return Object(class_definition).id(pid::definition_id, id).set(pid::property_definitions, std::move(properties));
}

std::string written(const Made& made) {
    Objects writers;
    writers.push_back(Object(auid("0d010101-0101-3000-060e-2b3402060101")).text(pid::company_name, made.company));
    Object definitions(auid("0d010101-0101-2200-060e-2b3402060101"));
    definitions.set(pid::operation_definitions, made.operations);
    if (!made.parameters.empty()) definitions.set(pid::parameter_definitions, made.parameters);
    Object header =
        Object(Class::header)
            .child(pid::content, Object(auid("0d010101-0101-1800-060e-2b3402060101")).set(pid::mobs, made.mobs))
            .child(pid::dictionary, std::move(definitions))
            .vector(pid::identifications, std::move(writers));
    Object root(auid("b3b398a5-1c90-11d4-8053-080036210804"));
    root.child(pid::root_header, std::move(header));
    if (!made.classes.empty())
        root.child(pid::root_meta_dictionary,
                   Object(auid("0d010101-0225-0000-060e-2b3402060101")).set(pid::class_definitions, made.classes));
    return compound_writer::written(root.node("Root Entry", made.big_endian), {made.sector_size, {}});
}

} // namespace aaf_writer
