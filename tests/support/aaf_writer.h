#pragma once
// Makes AAF files: objects with any properties, and short ways to the usual ones. Frames are numbers of the slot's
// rate.

#include "formats/aaf/aaf_names.h"
#include "formats/aaf/aaf_values.h"
#include "tests/support/compound_writer.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace aaf_writer {

using formats::aaf::Auid;
using formats::aaf::auid;
using formats::aaf::Class;
using formats::aaf::MobId;
using formats::aaf::Pid;
namespace pid = formats::aaf::pid;

/// An object with its properties; every function gives the object itself.
class Object {
public:
    explicit Object(Class what);
    explicit Object(const Auid& class_id) : class_id_(class_id) {}

    Object& number(Pid property, std::int64_t value, std::size_t size);
    Object& rational(Pid property, std::int64_t num, std::int64_t den);
    Object& text(Pid property, const std::string& ascii);
    Object& id(Pid property, const Auid& value);
    Object& mob(Pid property, const MobId& value);
    Object& weak(Pid property, const Auid& value);
    Object& raw(Pid property, const std::string& bytes);
    /// A number or text that says its type.
    Object& indirect_rational(Pid property, std::int64_t num, std::int64_t den);
    Object& indirect_text(Pid property, const std::string& ascii);
    Object& indirect_double(Pid property, double value);
    Object& indirect_float(Pid property, float value);
    Object& indirect_whole(Pid property, std::int32_t value);
    Object& indirect_natural(Pid property, std::uint8_t value);
    Object& child(Pid property, Object value);
    Object& vector(Pid property, std::vector<Object> elements);
    Object& set(Pid property, std::vector<Object> elements);
    /// The index of that vector or set names one element more than there is.
    Object& lacks_an_element(Pid property);
    Object& without(Pid property);
    /// Its stream of properties ends that many bytes early.
    Object& breaks_off(std::size_t bytes = 3);
    /// Changes the index of that vector or set.
    Object& changes_index(Pid property, std::function<void(std::string&)> change);

    compound_writer::Node node(const std::string& name, bool big_endian) const;

private:
    struct Property {
        Pid pid;
        std::uint16_t form;
        std::function<std::string(bool big)> value;
        std::vector<Object> children;
        bool one_more = false;
        std::function<void(std::string&)> change_index = nullptr;
    };
    Object& add(Pid property, std::uint16_t form, std::function<std::string(bool)> value,
                std::vector<Object> children = {});

    Auid class_id_;
    std::vector<Property> properties_;
    std::size_t lost_ = 0;
};

using Objects = std::vector<Object>;

constexpr Auid picture = auid("01030202-0100-0000-060e-2b3404010101");
constexpr Auid sound = auid("01030202-0200-0000-060e-2b3404010101");
constexpr Auid timecode_data = auid("01030201-0100-0000-060e-2b3404010101");
constexpr Auid edgecode_data = auid("d2bb2af0-d234-11d2-89ee-006097116212");
constexpr Auid dissolve = auid("0c3bea40-fc05-11d2-8a29-0050040ef7d2");
constexpr Auid speed_control = auid("9d2ea890-0968-11d3-8a38-0050040ef7d2");
constexpr Auid repeat_control = auid("9d2ea891-0968-11d3-8a38-0050040ef7d2");
constexpr Auid speed_ratio = auid("72559a80-24d7-11d3-8a50-0050040ef7d2");
constexpr Auid speed_map = auid("8d56827c-847e-11d5-935a-50f857c10000");
constexpr Auid speed_offset_map = auid("8d56827d-847e-11d5-935a-50f857c10000");
constexpr Auid linear = auid("5b6c85a4-0ede-11d3-80a9-006008143e6f");
constexpr Auid cubic = auid("a04a5439-8a0e-4cb7-975f-a5b255866883");

struct Rate {
    std::int64_t num, den = 1;
};

/// The id of the mob with that number; 0 is none.
MobId mob_number(int number);

// Segments.
Object segment(Class what, std::int64_t length, const Auid& data = picture);
Object clip(int mob, std::int64_t start, std::int64_t length, int slot = 1, const Auid& data = picture);
Object filler(std::int64_t length);
/// As long as its parts less the transitions.
Object sequence(Objects parts, std::optional<std::int64_t> length = {}, const Auid& data = picture);
Object transition(std::int64_t length, std::int64_t cut_point, const Auid& operation = dissolve);
Object effect(const Auid& operation, std::int64_t length, Objects inputs, Objects parameters = {});
Object constant(const Auid& parameter, std::int64_t num, std::int64_t den = 1);
struct ControlPoint {
    std::int64_t time, num, den = 1;
};
Object varying(const Auid& parameter, const std::vector<ControlPoint>& points, const Auid& interpolation = linear);
Object below(std::int64_t length, int scope = 0, int slot = 1);
Object scope(std::int64_t length, Objects tracks);
Object selector(std::int64_t length, Object selected);
Object choices(std::int64_t length, Objects all);
Object timecode(std::int64_t start, std::int64_t fps, std::int64_t length, bool drop = false);
Object edge_code(const std::string& prefix, std::int64_t start, std::int64_t length, int format = 1, int film = 1);
/// `to_film`: the slot counts film frames, the input video.
Object pulldown(std::int64_t length, bool to_film, Object input, int kind = 0, int phase = 0);
Object marker(std::int64_t position, const std::string& text, std::vector<int> slots = {});

// Slots.
Object slot(int id, Rate rate, Object segment, std::optional<int> number = {}, std::int64_t origin = 0);
Object markers_slot(int id, Rate rate, Objects markers);

// Mobs.
using Comments = std::vector<std::pair<std::string, std::string>>;
Object composition(int number, const std::string& name, Objects slots, bool top = true);
Object sub_clip(int number, const std::string& name, Objects slots);
Object master(int number, const std::string& name, Objects slots, const Comments& comments = {});
Object with_comments(Object mob, const Comments& comments);
Object file_source(int number, const std::string& name, Objects slots);
Object tape(int number, const std::string& name, Objects slots);
/// `format`: 1 35mm, 2 16mm, 3 8mm, 4 65mm.
Object film(int number, const std::string& name, Objects slots, int perforations = 4, int format = 1);

struct Made {
    Objects mobs;
    Objects operations; ///< definitions, by `defined`
    Objects parameters; ///< definitions, by `defined`
    Objects classes;    ///< of the file's own, by `defined_property`
    std::string company = "Made";
    bool big_endian = false;
    std::size_t sector_size = 512;
};
Object defined(const Auid& id, const std::string& name, bool time_warp = false);
/// A class with one property of the file's own.
Object defined_property(const Auid& id, Pid number);

std::string written(const Made& made);

} // namespace aaf_writer
