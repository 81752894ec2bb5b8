#include "formats/aaf/aaf_file.h"

#include "embedded/rates.h"
#include "host/ascii_text.h"

#include <algorithm>

namespace formats::aaf {
namespace {

struct KindRow {
    Auid id;
    Kind kind;
};

// New and old ids of data.
constexpr KindRow kinds[] = {
    {auid("01030202-0100-0000-060e-2b3404010101"), Kind::picture},
    {auid("6f3c8ce1-6cef-11d2-807d-006008143e6f"), Kind::picture},
    {auid("01030202-0200-0000-060e-2b3404010101"), Kind::sound},
    {auid("78e1ebe1-6cef-11d2-807d-006008143e6f"), Kind::sound},
    {auid("01030201-0100-0000-060e-2b3404010101"), Kind::timecode},
    {auid("7f275e81-77e5-11d2-807f-006008143e6f"), Kind::timecode},
    {auid("d2bb2af0-d234-11d2-89ee-006097116212"), Kind::edgecode},
    {auid("01030201-1000-0000-060e-2b3404010101"), Kind::markers},
};

struct NamedKind {
    const char* word;
    Kind kind;
};
constexpr NamedKind named_kinds[] = {{"picture", Kind::picture},
                                     {"sound", Kind::sound},
                                     {"timecode", Kind::timecode},
                                     {"edgecode", Kind::edgecode},
                                     {"descriptivemetadata", Kind::markers}};

std::vector<std::pair<std::string, std::string>> comments_of(const Object& mob) {
    std::vector<std::pair<std::string, std::string>> comments;
    for (const Object* tag : mob.children(pid::mob_comments))
        if (tag) comments.emplace_back(tag->text(pid::tag_name), indirect_text(tag->bytes(pid::tag_value)));
    return comments;
}

} // namespace

Fraction listed_rate(const Fraction& rate) {
    const embedded::RateInfo* listed = embedded::nearest_rate(rate.to_double());
    return listed ? listed->rate() : rate;
}

std::int64_t counting_of(const Fraction& rate) {
    const embedded::RateInfo* listed = embedded::nearest_rate(rate.to_double());
    return listed ? listed->nominal : std::max<std::int64_t>(1, rate.nearest());
}

const Slot* Mob::slot(std::int64_t wanted) const {
    const auto found = std::find_if(slots.begin(), slots.end(), [&](const Slot& slot) { return slot.id == wanted; });
    return found == slots.end() ? nullptr : &*found;
}

bool File::open(std::string_view bytes) {
    if (!compound_.open(bytes)) {
        error_ = compound_.error();
        return false;
    }
    objects_ = std::make_unique<ObjectStore>(compound_);
    header_ = objects_->root().child(pid::root_header);
    const Object* content = header_ ? header_->child(pid::content) : nullptr;
    if (!content) {
        error_ = "is a compound file, but no AAF";
        return false;
    }
    dictionary_ = header_->child(pid::dictionary);
    for (const Object* writer : header_->children(pid::identifications))
        if (writer && ascii::lower_case(writer->text(pid::company_name)).find("avid") != std::string::npos)
            phases_count_video_ = true;
    read_mobs();
    return true;
}

void File::read_mobs() {
    for (const Object* object : header_->child(pid::content)->children(pid::mobs)) {
        if (!object || !is_mob(object->what())) {
            faults_.push_back("a mob of its index isn't in the file or is none");
            continue;
        }
        auto mob = std::make_unique<Mob>();
        mob->object = object;
        mob->id = object->mob_id(pid::mob_id).value_or(no_mob);
        mob->what = object->what();
        mob->name = object->text(pid::mob_name);
        mob->usage = object->auid(pid::usage_code);
        mob->descriptor = object->child(pid::essence_description);
        mob->comments = comments_of(*object);
        read_slots(*mob);
        if (!by_id_.emplace(mob->id, mob.get()).second)
            faults_.push_back(mob->title() + ": there is another mob of its id, which counts");
        mobs_.push_back(std::move(mob));
    }
}

void File::read_slots(Mob& mob) {
    for (const Object* object : mob.object->children(pid::slots)) {
        if (object)
            mob.slots.push_back(slot_of(*object));
        else
            faults_.push_back(mob.title() + ": a slot of its index isn't in the file");
    }
}

Slot File::slot_of(const Object& object) const {
    Slot slot;
    slot.id = object.integer(pid::slot_id, 0);
    slot.number = object.integer(pid::track_number);
    slot.name = object.text(pid::slot_name);
    slot.segment = object.child(pid::slot_segment);
    if (slot.segment) slot.kind = kind_of(*slot.segment);
    if (object.what() == Class::event_slot) slot.kind = Kind::markers;
    const bool events = slot.kind == Kind::markers && object.has(pid::event_rate);
    const auto rate = object.rational(events ? pid::event_rate : pid::edit_rate);
    if (rate && *rate > Fraction(0)) slot.rate = listed_rate(*rate);
    slot.origin = Fraction(object.integer(pid::origin, 0));
    return slot;
}

const Mob* File::mob(const MobId& id) const {
    const auto found = by_id_.find(id);
    return found == by_id_.end() ? nullptr : found->second;
}

const Object* File::definition(Pid list, const Auid& id) const {
    const auto known = definitions_.find(list);
    if (known == definitions_.end()) {
        std::map<Auid, const Object*>& all = definitions_[list];
        if (dictionary_)
            for (const Object* each : dictionary_->children(list))
                if (each) all.emplace(each->auid(pid::definition_auid).value_or(Auid{}), each);
        return definition(list, id);
    }
    const auto found = known->second.find(id);
    return found == known->second.end() ? nullptr : found->second;
}

std::string File::name_in(Pid list, const Auid& id) const {
    const Object* found = definition(list, id);
    return found ? found->text(pid::definition_name) : std::string();
}

Kind File::kind_of(const Object& segment) const {
    const auto id = segment.weak(pid::data_definition);
    if (!id) return Kind::other;
    for (const KindRow& row : kinds)
        if (row.id == *id) return row.kind;
    const std::string name = ascii::lower_case(name_in(pid::data_definitions, *id));
    for (const NamedKind& row : named_kinds)
        if (name.find(row.word) != std::string::npos) return row.kind;
    return Kind::other;
}

Operation File::operation_of(const Object& group) const {
    const auto id = group.weak(pid::operation);
    if (!id) return {};
    const Object* found = definition(pid::operation_definitions, *id);
    if (!found) return {};
    return {found->text(pid::definition_name), found->integer(pid::is_time_warp, 0) != 0};
}

Pid File::own_property(const Auid& id) const {
    const Object* meta = objects_->root().child(pid::root_meta_dictionary);
    if (!meta) return 0;
    for (const Object* each : meta->children(pid::class_definitions)) {
        if (!each) continue;
        for (const Object* property : each->children(pid::property_definitions))
            if (property && property->auid(pid::definition_id) == id)
                return static_cast<Pid>(property->integer(pid::local_pid, 0));
    }
    return 0;
}

} // namespace formats::aaf
