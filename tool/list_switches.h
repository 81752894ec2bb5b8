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

/// The raw values of the switches of a changelist.
struct ChangeSwitches {
    std::vector<std::string> lists;
    std::string units = "frames";
    std::optional<std::string> channel;
    bool no_keys = false, scene_take = false;
};

/// The options that they set, each list on or off, with those of `--set` over them. Throws `UsageError`.
Options change_options(const ChangeSwitches& switches, const Options& set);

/// The extensions of the single-layer lists that a run with these options makes.
std::vector<const char*> single_layer_extensions(const Options& options);

} // namespace tool
