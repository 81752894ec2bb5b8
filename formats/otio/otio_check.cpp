#include "formats/otio/otio_check.h"

namespace formats::otio {
namespace {

void check_item(const Place& item, const Context& quiet) {
    switch (schema_of(*item.value)) {
    case Schema::clip:
        length_of_clip(item, media_of(item, quiet), quiet);
        read_effects(item, quiet);
        read_markers(item, quiet);
        break;
    case Schema::gap:
        read_range(item, "source_range");
        break;
    case Schema::transition:
        read_transition(item, quiet);
        break;
    case Schema::stack:
    case Schema::track:
        check_composition(item, quiet);
        break;
    default:
        refuse(item, "a child of " + type_name(*item.value) + " can't stand in a composition");
    }
}

} // namespace

void check_composition(const Place& composition, const Context& context) {
    embedded::Warnings said_of_nothing_listed;
    Context quiet = context;
    quiet.warnings = &said_of_nothing_listed;
    read_range(composition, "source_range");
    read_effects(composition, quiet);
    const JsonValue& children = children_of(composition);
    for (rapidjson::SizeType i = 0; i < children.Size(); ++i)
        check_item(child_of(composition, children[i], i), quiet);
}

} // namespace formats::otio
