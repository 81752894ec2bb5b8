#include "tool/order_outputs.h"

#include "documents/list_kinds.h"
#include "tool/output_files.h"
#include "tool/tool_error.h"

namespace tool {
namespace {

/// --json is the order itself.
constexpr const char* json_option = "--lists-json";

} // namespace

void add_order_outputs(OptionTable& options, OrderOutputs& outputs) {
    add_document_options(options, outputs.documents, json_option, false);
}

std::vector<std::string> check_order_outputs(const OrderOutputs& outputs, bool change,
                                             const std::vector<std::string>& inputs,
                                             const std::vector<std::string>& others) {
    if (!outputs.documents.wanted()) return {};
    const std::vector<std::string> lists = documents::order_list_ids(profile_of(outputs.documents).lists, change);
    if (lists.empty()) throw JobError("the profile names no list of an order");
    return check_document_files(outputs.documents, json_option, lists, inputs, others);
}

void write_order_outputs(const OrderOutputs& outputs, const film::OrderToTell& order, bool change) {
    if (!outputs.documents.wanted()) return;
    const documents::Profile profile = profile_of(outputs.documents);
    documents::OrderFilm film;
    film.title = documents::title_of(order);
    film.order = order;
    film.change = change;
    film.frames = counts_frames(outputs.documents, profile, false);
    write_document(outputs.documents, documents::document_of(film, profile));
}

} // namespace tool
