#pragma once
// The objects of an AAF file: storages of a compound file, whose stream "properties" says what they hold.

#include "formats/aaf/aaf_names.h"
#include "formats/aaf/aaf_values.h"
#include "formats/compound/compound_file.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace formats::aaf {

class ObjectStore;

/// One object. It lives as long as its store, and reads what it refers to when asked for it.
class Object {
public:
    Object(ObjectStore& store, compound::StorageId storage, const Object* parent);

    Class what() const { return class_; }
    /// The class in the words of messages, as "class 0d010101-...".
    std::string class_name() const;
    /// Where it is in the file, in the words of messages, as `master "A", Slots-4403{1}, Segment-4803`.
    std::string place() const;
    bool has(Pid property) const { return find(property) != nullptr; }
    /// Whether its properties break off, so that values may lack which it had.
    bool is_damaged() const { return damaged_; }

    // Values; none where the property lacks or is too short.
    Bytes bytes(Pid property) const;
    std::optional<std::int64_t> integer(Pid property) const; ///< of 1 to 8 bytes, with its sign
    std::int64_t integer(Pid property, std::int64_t otherwise) const { return integer(property).value_or(otherwise); }
    std::optional<Fraction> rational(Pid property) const { return bytes(property).rational(0); }
    std::optional<Auid> auid(Pid property) const { return bytes(property).auid(0); }
    std::optional<MobId> mob_id(Pid property) const { return bytes(property).mob_id(0); }
    std::string text(Pid property) const { return bytes(property).text(); }
    /// What a weak reference names.
    std::optional<Auid> weak(Pid property) const;

    /// The object under a strong reference; null where it lacks or can't be read.
    const Object* child(Pid property) const;
    /// Those of a strong vector or set in the order of its index. Null stand for elements that the file lacks, one of
    /// them for all that an index lacks which can't be read to its end.
    const std::vector<const Object*>& children(Pid property) const;

private:
    struct Property {
        Pid pid;
        std::uint16_t form;
        std::size_t at, length;
    };

    void read_properties();
    const Property* find(Pid property) const;
    const Object* element(const std::string& name) const;
    std::vector<const Object*> read_children(const Property& property) const;

    ObjectStore& store_;
    compound::StorageId storage_;
    const Object* parent_;
    Auid class_id_;
    Class class_ = Class::unknown;
    std::string stream_;
    bool big_ = false;
    bool damaged_ = false;
    std::vector<Property> properties_;
    mutable std::unordered_map<Pid, std::vector<const Object*>> children_;
};

class ObjectStore {
public:
    explicit ObjectStore(const compound::File& file) : file_(file) {}
    ObjectStore(const ObjectStore&) = delete;
    ObjectStore& operator=(const ObjectStore&) = delete;

    const compound::File& file() const { return file_; }
    const Object& root() { return at(compound::root_storage, nullptr); }
    const Object& at(compound::StorageId storage, const Object* parent);
    /// What of the objects that were looked at the file lacks; at most some dozens.
    const std::vector<std::string>& damage() const { return damage_; }
    void tell(const Object& object, const std::string& what);

private:
    const compound::File& file_;
    std::unordered_map<compound::StorageId, std::unique_ptr<Object>> objects_;
    std::vector<std::string> damage_;
};

/// As `composition "Reel 1"`.
std::string title_of_mob(Class what, const std::string& name);
bool is_mob(Class what);

} // namespace formats::aaf
