#include "formats/aaf/aaf_objects.h"

#include <algorithm>
#include <cstdio>
#include <unordered_set>

namespace formats::aaf {
namespace {

constexpr char big_mark = 'B';
constexpr std::size_t head_size = 4;
constexpr std::size_t row_size = 6;
constexpr std::size_t damage_limit = 50;
constexpr Auid class_pattern = auid("0d010101-0101-0000-060e-2b3402060101");

enum form : std::uint16_t { form_strong_vector = 0x32, form_strong_set = 0x3a };

Auid class_of(const compound::ClassId& id) {
    const std::string_view bytes(reinterpret_cast<const char*>(id.data()), id.size());
    return *Bytes(bytes, false).auid(0);
}

Class known_class(Auid id) {
    const auto code = static_cast<Class>(id.third >> 8);
    const bool low = (id.third & 0xFF) != 0;
    id.third = 0;
    return id == class_pattern && !low ? code : Class::unknown;
}

struct MobName {
    Class what;
    const char* name;
};
constexpr MobName mob_names[] = {
    {Class::composition_mob, "composition"}, {Class::master_mob, "master"}, {Class::source_mob, "source"}};

/// The keys of the elements in the index of a vector or set, which name them. `whole` tells whether it has as many as
/// it says, and each but once.
std::vector<std::uint64_t> element_keys(const Bytes& index, bool set, bool& whole) {
    constexpr std::size_t head = 12;
    const auto key_size = static_cast<std::size_t>(set ? index.number(head + 2, 1).value_or(0) : 0);
    const std::size_t first = set ? head + 3 : head;
    const std::size_t row = set ? 8 + key_size : 4;
    const auto count = index.number(0, 4);
    std::vector<std::uint64_t> keys;
    std::unordered_set<std::uint64_t> seen;
    std::size_t at = first;
    for (; keys.size() < count.value_or(0); at += row) {
        const auto key = index.number(at, 4);
        if (!key || !seen.insert(*key).second) break;
        keys.push_back(*key);
    }
    whole = count && keys.size() == *count && index.size() < at + row;
    return keys;
}

} // namespace

bool is_mob(Class what) {
    return std::any_of(std::begin(mob_names), std::end(mob_names),
                       [what](const MobName& row) { return row.what == what; });
}

std::string title_of_mob(Class what, const std::string& name) {
    const auto row = std::find_if(std::begin(mob_names), std::end(mob_names),
                                  [what](const MobName& each) { return each.what == what; });
    return std::string(row == std::end(mob_names) ? "mob" : row->name) + " \"" + name + "\"";
}

Object::Object(ObjectStore& store, compound::StorageId storage, const Object* parent)
    : store_(store), storage_(storage), parent_(parent), class_id_(class_of(store.file().class_id(storage))),
      class_(known_class(class_id_)) {
    read_properties();
}

std::string Object::class_name() const { return "class " + text_of(class_id_); }

std::string Object::place() const {
    if (is_mob(class_)) return title_of_mob(class_, text(pid::mob_name));
    const std::string& here = store_.file().name(storage_);
    return parent_ && parent_->parent_ ? parent_->place() + ", " + here : here;
}

void Object::read_properties() {
    stream_ = store_.file().stream(storage_, "properties").value_or("");
    damaged_ = true;
    if (stream_.size() < head_size) return;
    big_ = stream_[0] == big_mark;
    const Bytes all(stream_, big_);
    const auto count = static_cast<std::size_t>(*all.number(2, 2));
    std::size_t at = head_size + count * row_size;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t row = head_size + i * row_size;
        const auto length = all.number(row + 4, 2);
        if (!length || at + *length > stream_.size()) break;
        properties_.push_back({static_cast<Pid>(*all.number(row, 2)),
                               static_cast<std::uint16_t>(*all.number(row + 2, 2)), at,
                               static_cast<std::size_t>(*length)});
        at += *length;
    }
    damaged_ = properties_.size() < count;
}

const Object::Property* Object::find(Pid property) const {
    const auto found = std::find_if(properties_.begin(), properties_.end(),
                                    [property](const Property& each) { return each.pid == property; });
    return found == properties_.end() ? nullptr : &*found;
}

Bytes Object::bytes(Pid property) const {
    const Property* found = find(property);
    if (!found) return {};
    return {std::string_view(stream_).substr(found->at, found->length), big_};
}

std::optional<std::int64_t> Object::integer(Pid property) const {
    const Bytes value = bytes(property);
    return value.signed_number(0, value.size());
}

// A tag, the number of the property that is the key, the size of the key, and the key itself.
std::optional<Auid> Object::weak(Pid property) const { return bytes(property).auid(5); }

const Object* Object::element(const std::string& name) const {
    const auto storage = store_.file().storage(storage_, name);
    if (storage) return &store_.at(*storage, this);
    store_.tell(*this, name + " isn't in the file");
    return nullptr;
}

const Object* Object::child(Pid property) const {
    const Property* found = find(property);
    return found ? element(bytes(property).text()) : nullptr;
}

const std::vector<const Object*>& Object::children(Pid property) const {
    const auto known = children_.find(property);
    if (known != children_.end()) return known->second;
    const Property* found = find(property);
    return children_.emplace(property, found ? read_children(*found) : std::vector<const Object*>()).first->second;
}

std::vector<const Object*> Object::read_children(const Property& property) const {
    if (property.form != form_strong_vector && property.form != form_strong_set) return {nullptr};
    const std::string name = bytes(property.pid).text();
    const auto index = store_.file().stream(storage_, name + " index");
    bool whole = false;
    std::vector<const Object*> elements;
    for (const std::uint64_t key : element_keys({index ? *index : "", big_}, property.form == form_strong_set, whole)) {
        char number[24];
        std::snprintf(number, sizeof number, "{%llx}", static_cast<unsigned long long>(key));
        elements.push_back(element(name + number));
    }
    if (whole) return elements;
    store_.tell(*this, "the index of " + name + " is damaged");
    elements.push_back(nullptr);
    return elements;
}

const Object& ObjectStore::at(compound::StorageId storage, const Object* parent) {
    std::unique_ptr<Object>& object = objects_[storage];
    if (object) return *object;
    object = std::make_unique<Object>(*this, storage, parent);
    if (object->is_damaged()) tell(*object, "its properties break off, and what is behind is lost");
    return *object;
}

void ObjectStore::tell(const Object& object, const std::string& what) {
    if (damage_.size() > damage_limit) return;
    std::string line = damage_.size() == damage_limit ? "more of the file is damaged" : object.place() + ": " + what;
    if (std::find(damage_.begin(), damage_.end(), line) == damage_.end()) damage_.push_back(std::move(line));
}

} // namespace formats::aaf
