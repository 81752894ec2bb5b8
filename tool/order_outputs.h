#pragma once
// What an order is written as beside its text: pages and tables for scripts, and files for scanners and programs that
// conform.

#include "film/order_facts.h"
#include "tool/document_files.h"
#include "tool/option_table.h"
#include "tool/order_scans.h"

#include <optional>
#include <string>
#include <vector>

namespace tool {

/// What the line says of them.
struct OrderOutputs {
    DocumentFiles documents;
    std::optional<std::string> ale, edl, otio, cut_file;
    ScanWriting scans;
};

void add_order_outputs(OptionTable& options, OrderOutputs& outputs);

/// The files that are wanted, to be held with the order; streams are left out. `change`: earlier orders are given;
/// `rolls`: new rolls are built. Throws `JobError` where one takes the place of one of `inputs` or of one of the
/// `others` that the run makes.
std::vector<std::string> check_order_outputs(const OrderOutputs& outputs, bool change, bool rolls,
                                             const std::vector<std::string>& inputs,
                                             const std::vector<std::string>& others);

/// What a file can't hold is told, unless the run is quiet.
void write_order_outputs(const OrderOutputs& outputs, const film::OrderToTell& order, bool change, bool quiet);

} // namespace tool
