#pragma once
// The numbers of properties, and the classes of objects.

#include <cstdint>

namespace formats::aaf {

/// Those of 0x8000 and more are each file's own.
using Pid = std::uint16_t;

namespace pid {

constexpr Pid root_meta_dictionary = 1, root_header = 2;
constexpr Pid class_definitions = 0x0003, property_definitions = 0x0009, definition_id = 0x0005, local_pid = 0x000d;
constexpr Pid data_definition = 0x0201, length = 0x0202;
constexpr Pid edge_start = 0x0401, edge_film_kind = 0x0402, edge_format = 0x0403, edge_header = 0x0404;
constexpr Pid choices = 0x0501;
constexpr Pid event_position = 0x0601, event_comment = 0x0602;
constexpr Pid operation = 0x0b01, input_segments = 0x0b02, parameters = 0x0b03;
constexpr Pid scope_slots = 0x0c01;
constexpr Pid pulldown_input = 0x0d01, pulldown_kind = 0x0d02, pulldown_direction = 0x0d03, phase_frame = 0x0d04;
constexpr Pid relative_scope = 0x0e01, relative_slot = 0x0e02;
constexpr Pid selected = 0x0f01;
constexpr Pid components = 0x1001;
constexpr Pid source_id = 0x1101, source_slot = 0x1102, start_time = 0x1201;
constexpr Pid timecode_start = 0x1501, timecode_fps = 0x1502, timecode_drop = 0x1503;
constexpr Pid transition_operation = 0x1801, cut_point = 0x1802;
constexpr Pid mobs = 0x1901;
constexpr Pid point_value = 0x1a02, point_time = 0x1a03;
constexpr Pid definition_auid = 0x1b01, definition_name = 0x1b02;
constexpr Pid is_time_warp = 0x1e02;
constexpr Pid operation_definitions = 0x2603, parameter_definitions = 0x2604, data_definitions = 0x2605,
              interpolation_definitions = 0x2609;
constexpr Pid film_format = 0x3901, perforations = 0x3903, film_gauge = 0x3907;
constexpr Pid content = 0x3b03, dictionary = 0x3b04, identifications = 0x3b06;
constexpr Pid company_name = 0x3c01;
constexpr Pid mob_id = 0x4401, mob_name = 0x4402, slots = 0x4403, last_modified = 0x4404, mob_comments = 0x4406,
              usage_code = 0x4408;
constexpr Pid essence_description = 0x4701;
constexpr Pid slot_id = 0x4801, slot_name = 0x4802, slot_segment = 0x4803, track_number = 0x4804;
constexpr Pid event_rate = 0x4901;
constexpr Pid edit_rate = 0x4b01, origin = 0x4b02;
constexpr Pid parameter_definition = 0x4c01, constant_value = 0x4d01, interpolation = 0x4e01, point_list = 0x4e02;
constexpr Pid tag_name = 0x5001, tag_value = 0x5003;
constexpr Pid described_slots = 0x6102;

} // namespace pid

enum class Class : std::uint8_t {
    unknown = 0,
    edge_code = 0x04,
    essence_group = 0x05,
    comment_marker = 0x08,
    filler = 0x09,
    operation_group = 0x0a,
    nested_scope = 0x0b,
    pulldown = 0x0c,
    scope_reference = 0x0d,
    selector = 0x0e,
    sequence = 0x0f,
    source_clip = 0x11,
    timecode = 0x14,
    transition = 0x17,
    film_descriptor = 0x2d,
    tape_descriptor = 0x2e,
    header = 0x2f,
    composition_mob = 0x35,
    master_mob = 0x36,
    source_mob = 0x37,
    event_slot = 0x39,
    timeline_slot = 0x3b,
    constant_value = 0x3d,
    varying_value = 0x3e,
    descriptive_marker = 0x41,
    import_descriptor = 0x4a,
    recording_descriptor = 0x4b,
};

} // namespace formats::aaf
