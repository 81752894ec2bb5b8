#include "formats/timeline/copies.h"

#include "embedded/services.h"

#include <memory>
#include <utility>

namespace formats::timeline {

embedded::EditBuilder::Unrender copies_as_they_are(std::string_view bytes,
                                                   std::function<EditPtr(const std::string& bytes)> read) {
    const auto kept = std::make_shared<const std::string>(bytes);
    embedded::EditBuilder::Unrender hooks;
    hooks.write = [kept](const std::string& path) { return embedded::write_file_whole(path, *kept, nullptr); };
    hooks.open = [read = std::move(read)](const std::string& path) {
        std::string stored;
        return embedded::read_file(path, &stored, nullptr) ? read(stored) : EditPtr();
    };
    return hooks;
}

} // namespace formats::timeline
