#include "tool/run_setup.h"

namespace tool {

void apply_settings(const Settings& settings) {
    for (const auto& [key, value] : settings)
        embedded::set_host_setting(key, value);
}

void apply_options(const LibraryOptions& options, embedded::settings_block& block) {
    for (const auto* layer : {&options.switches, &options.set})
        for (const auto& [key, value] : *layer)
            block.set(key, value);
}

} // namespace tool
