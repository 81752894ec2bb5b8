#pragma once
// An AAF file as a whole: its mobs with their slots, and what its dictionary calls things.
//
// A mob is a composition (the edit), a master (a clip in the bin) or a source (a file, a tape, a roll of film). Its
// slots are its tracks; source clips in them refer to slots of other mobs.

#include "formats/aaf/aaf_objects.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace formats::aaf {

enum class Kind { other, picture, sound, timecode, edgecode, markers };

/// Frames a second as the files write them, brought to the listed rate within 0.01.
Fraction listed_rate(const Fraction& rate);
/// Frames that timecode counts in a second at that rate.
std::int64_t counting_of(const Fraction& rate);

struct Slot {
    std::int64_t id = 0;
    std::optional<std::int64_t> number; ///< of the physical track; writers leave it out
    std::string name;
    Kind kind = Kind::other;
    Fraction rate;   ///< listed; 0 where the file has none above 0
    Fraction origin; ///< where its position 0 lies in its segment
    const Object* segment = nullptr;
};

struct Mob {
    MobId id{};
    Class what = Class::unknown;
    std::string name;
    std::optional<Auid> usage;
    std::vector<Slot> slots;
    const Object* object = nullptr;
    const Object* descriptor = nullptr;                        ///< of a source
    std::vector<std::pair<std::string, std::string>> comments; ///< columns of the bin

    Class medium() const { return descriptor ? descriptor->what() : Class::unknown; }
    const Slot* slot(std::int64_t id) const;
    /// In the words of messages, as `composition "Reel 1"`.
    std::string title() const { return title_of_mob(what, name); }
};

struct Operation {
    std::string name;
    bool time_warp = false;
};

class File {
public:
    /// False with `error()` set. The bytes must outlive the file.
    bool open(std::string_view bytes);
    const std::string& error() const { return error_; }
    /// What of the file couldn't be read, though the rest could.
    const std::vector<std::string>& faults() const { return faults_; }
    /// What the file lacks of the objects that were looked at so far.
    std::vector<std::string> damage() const { return objects_ ? objects_->damage() : std::vector<std::string>(); }

    const std::vector<std::unique_ptr<Mob>>& mobs() const { return mobs_; }
    const Mob* mob(const MobId& id) const;
    Kind kind_of(const Object& segment) const;
    /// What an operation group does; the name is empty where nothing tells it.
    Operation operation_of(const Object& group) const;
    std::string parameter_name(const Auid& id) const { return name_in(pid::parameter_definitions, id); }
    std::string interpolation_name(const Auid& id) const { return name_in(pid::interpolation_definitions, id); }
    /// The number that this file gave a property of its own; 0 where it has none such.
    Pid own_property(const Auid& id) const;
    /// Whether phases of pulldown count video frames also where they should count film frames.
    bool phases_count_video() const { return phases_count_video_; }

private:
    void read_mobs();
    void read_slots(Mob& mob);
    Slot slot_of(const Object& object) const;
    const Object* definition(Pid list, const Auid& id) const;
    std::string name_in(Pid list, const Auid& id) const;

    compound::File compound_;
    std::unique_ptr<ObjectStore> objects_;
    const Object* header_ = nullptr;
    const Object* dictionary_ = nullptr;
    std::vector<std::unique_ptr<Mob>> mobs_;
    std::map<MobId, const Mob*> by_id_;
    mutable std::map<Pid, std::map<Auid, const Object*>> definitions_;
    bool phases_count_video_ = false;
    std::string error_;
    std::vector<std::string> faults_;
};

} // namespace formats::aaf
