// Orders as documents: what is written keeps to the schema, and is read again as the same pieces.

#include "tests/orders/random_film.h"
#include "tests/support/json_schema.h"
#include "tool/order_file.h"
#include "tool/tool_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace orders_test;
using film::HadPiece;
using testing::HasSubstr;

namespace {

/// Empty where the document keeps to the schema.
std::string fault_of(const std::string& document) { return fault_by_schema(document, "order.schema.json"); }

std::vector<HadPiece> read_again(const std::string& document) {
    std::vector<HadPiece> pieces;
    std::vector<std::string> names;
    tool::read_order_bytes(document, "one.json", pieces, names);
    return pieces;
}

film::OrderToTell random_order(const RandomFilm& random) {
    film::OrderToTell order = told_order(random.version(between(1, 3)), any_options(), random.rate());
    if (between(0, 1) == 0) order.log = "show.RDB";
    return order;
}

/// The order of another version, held against the first.
film::OrderToTell random_change(const RandomFilm& random, const film::OrderToTell& first) {
    film::OrderToTell order = random_order(random);
    for (const film::OrderPiece& piece : first.pieces) {
        order.had.push_back({piece.run, piece.frames});
        order.had_names.push_back("one.json: piece " + std::to_string(order.had.size()));
    }
    film::ChangeOrder change =
        film::change_order(order.all_needs, order.had, order.options, *rc::gen::arbitrary<bool>());
    order.needs = std::move(change.needs);
    order.pieces = std::move(change.pieces);
    order.longer = std::move(change.longer);
    order.unused = std::move(change.unused);
    return order;
}

std::string refused(const std::string& document) {
    try {
        read_again(document);
    } catch (const tool::JobError& error) {
        return error.what();
    }
    return "taken";
}

/// A document of one piece, with a member replaced.
std::string document_with(const std::string& member, const std::string& value) {
    std::map<std::string, std::string> members = {{"roll", "\"A1\""},      {"prefix", "\"KJ123456\""},
                                                  {"kind", "\"35mm-4p\""}, {"perforation", "0"},
                                                  {"first_frame", "5"},    {"last_frame", "9"}};
    members[member] = value;
    std::string piece;
    for (const auto& [key, text] : members)
        if (!text.empty()) piece += (piece.empty() ? "\"" : ", \"") + key + "\": " + text;
    return R"({"format": "quillbrook order", "version": 1, "pieces": [{)" + piece + "}]}";
}

} // namespace

RC_GTEST_PROP(OrderDocuments, KeepToTheirSchemaAndAreReadAgain, ()) {
    const RandomFilm random;
    film::OrderToTell first = random_order(random);
    film::Strip lost;
    lost.where = "children[3]";
    lost.end = 12;
    first.unknown = {{1, lost}};
    const film::OrderToTell second = random_change(random, first);
    for (const film::OrderToTell* order : {static_cast<const film::OrderToTell*>(&first), &second}) {
        const std::string document = tool::order_document(*order);
        RC_ASSERT(fault_of(document) == "");
        const std::vector<HadPiece> again = read_again(document);
        RC_ASSERT(again.size() == order->pieces.size());
        for (std::size_t i = 0; i < again.size(); ++i) {
            RC_ASSERT(again[i].run == order->pieces[i].run);
            RC_ASSERT(again[i].frames == order->pieces[i].frames);
        }
    }
}

TEST(OrderDocuments, SchemaRefusesWhatLacksAMember) {
    EXPECT_THAT(fault_of(document_with("roll", "\"A1\"")), HasSubstr("required"));
    EXPECT_THAT(fault_of("{}"), HasSubstr("required"));
}

TEST(OrderDocuments, ThatAreDamagedAreRefusedByName) {
    EXPECT_EQ(refused(document_with("roll", "\"A1\"")), "taken");
    const std::pair<const char*, const char*> damaged[] = {{"roll", "7"},
                                                           {"roll", ""},
                                                           {"prefix", "null"},
                                                           {"kind", "\"leather\""},
                                                           {"kind", ""},
                                                           {"perforation", "-1"},
                                                           {"perforation", "4"},
                                                           {"perforation", "1.5"},
                                                           {"first_frame", "10"},
                                                           {"first_frame", ""},
                                                           {"last_frame", "\"9\""},
                                                           {"last_frame", "3000000000"},
                                                           {"first_frame", "1e3"},
                                                           {"last_frame", "-20"},
                                                           {"first_frame", "-3000000000"}};
    for (const auto& [member, value] : damaged)
        EXPECT_THAT(refused(document_with(member, value)), HasSubstr("one.json: piece 1: ")) << member << ' ' << value;
}

TEST(OrderDocuments, OfOtherKindsAndVersionsAreRefusedByName) {
    EXPECT_EQ(refused("[]"), "one.json: isn't an order");
    EXPECT_EQ(refused(R"({"format": "quillbrook changes", "version": 1})"), "one.json: isn't an order");
    EXPECT_EQ(refused(R"({"format": "quillbrook order", "version": 0, "pieces": []})"), "one.json: isn't an order");
    EXPECT_EQ(refused(R"({"format": "quillbrook order", "version": 2, "pieces": []})"),
              "one.json: is an order of a newer version, 2");
    EXPECT_EQ(refused(R"({"format": "quillbrook order", "version": 1})"), "one.json: holds no pieces");
    EXPECT_THAT(refused(R"({"format": "quillbrook order", "version": 1, "pieces": [5]})"), HasSubstr("piece 1: "));
    const std::string whole = document_with("roll", "\"A1\"");
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_THAT(refused(whole.substr(0, length)), testing::StartsWith("one.json: isn't an order")) << length;
}
