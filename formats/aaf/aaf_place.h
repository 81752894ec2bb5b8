#pragma once
// What reading an edit needs to know everywhere, and where in the file it is.

#include "embedded/rates.h"
#include "embedded/warning.h"
#include "formats/aaf/aaf_file.h"

#include <set>
#include <string>

namespace formats::aaf {

/// One step on the way from a composition to an object. Lives on the stack while the object is read.
struct Place {
    const Place* up = nullptr;
    std::string text_here; ///< as `slot 1` or `component 3`

    Place step(std::string what) const { return {this, std::move(what)}; }
    /// As `composition "Reel 1", slot 1, component 3`.
    std::string text() const { return up ? up->text() + ", " + text_here : text_here; }
};

/// What stops the reading, in words that name the object.
struct ReadError {
    std::string message;
};
[[noreturn]] inline void refuse(const Place& place, const std::string& reason) {
    throw ReadError{place.text() + ": " + reason};
}

struct Context {
    const File& file;
    const embedded::RateInfo* rate = nullptr; ///< the edit's
    bool all_effects = false;
    embedded::Warnings* warnings = nullptr;
    std::set<std::string>* said = nullptr;

    /// Each line once.
    void warn(embedded::WarningKind kind, const Place& place, const std::string& what) const {
        std::string line = place.text() + ": " + what;
        if (said->insert(line).second) warnings->push_back({kind, std::move(line)});
    }
};

} // namespace formats::aaf
