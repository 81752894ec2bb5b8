#pragma once
// The switches that choose lists: short ways to set options of the library.

#include "tool/jobs.h"

#include <optional>
#include <string>
#include <vector>

namespace tool {

/// The raw values of the switches.
struct ListSwitches {
    std::vector<std::string> lists, single_layer; ///< words, each of which may hold several parted by commas
    std::optional<std::string> handles, butt;
    bool sort_by_key = false;
};

/// The options that the switches set, with those of `--set` over them. Throws `UsageError`.
Options list_options(const ListSwitches& switches, const Options& set);

/// The extensions of the single-layer lists that a run with these options makes.
std::vector<const char*> single_layer_extensions(const Options& options);

} // namespace tool
