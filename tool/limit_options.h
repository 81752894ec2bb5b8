#pragma once
// How much of its inputs a command reads: options that all commands have.

#include "tool/option_table.h"

namespace tool {

class LimitOptions {
public:
    LimitOptions();
    void add_to(OptionTable& options);
    /// For the rest of the process.
    void apply() const;

private:
    int input_mebibytes_;
    int line_bytes_;
    int name_bytes_;
};

} // namespace tool
