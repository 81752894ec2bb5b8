#include "formats/aaf/aaf_objects.h"

#include <algorithm>
#include <cstdio>

namespace formats::aaf {
namespace {

constexpr char big_mark = 'B';
constexpr std::size_t head_size = 4;
constexpr std::size_t row_size = 6;
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

/// The keys of the elements in the index of a vector or set, which name them.
std::vector<std::uint64_t> element_keys(const Bytes& index, bool set) {
    constexpr std::size_t head = 12;
    const auto key_size = static_cast<std::size_t>(set ? index.number(head + 2, 1).value_or(0) : 0);
    const std::size_t first = set ? head + 3 : head;
    const std::size_t row = set ? 8 + key_size : 4;
    const std::uint64_t count = index.number(0, 4).value_or(0);
    std::vector<std::uint64_t> keys;
    for (std::size_t at = first; keys.size() < count; at += row) {
        const auto key = index.number(at, 4);
        if (!key) break;
        keys.push_back(*key);
    }
    return keys;
}

} // namespace

Object::Object(ObjectStore& store, compound::StorageId storage)
    : store_(store), storage_(storage), class_id_(class_of(store.file().class_id(storage))),
      class_(known_class(class_id_)) {
    read_properties();
}

std::string Object::class_name() const { return "class " + text_of(class_id_); }

void Object::read_properties() {
    stream_ = store_.file().stream(storage_, "properties").value_or("");
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
    return storage ? &store_.at(*storage) : nullptr;
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
    if (!index) return {nullptr};
    std::vector<const Object*> elements;
    for (const std::uint64_t key : element_keys({*index, big_}, property.form == form_strong_set)) {
        char number[24];
        std::snprintf(number, sizeof number, "{%llx}", static_cast<unsigned long long>(key));
        elements.push_back(element(name + number));
    }
    return elements;
}

const Object& ObjectStore::at(compound::StorageId storage) {
    std::unique_ptr<Object>& object = objects_[storage];
    if (!object) object = std::make_unique<Object>(*this, storage);
    return *object;
}

} // namespace formats::aaf
