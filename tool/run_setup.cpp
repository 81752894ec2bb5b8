#include "tool/run_setup.h"

namespace tool {

void apply_settings(const Settings& settings) {
    for (const auto& [key, value] : settings)
        embedded::set_host_setting(key, value);
}

void apply_options(const Options& options, embedded::settings_block& block) {
    for (const auto& [key, value] : options)
        block.set(key, value);
}

} // namespace tool
