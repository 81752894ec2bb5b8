#include "tests/support/json_schema.h"

#include "tests/support/project_paths.h"

#include <fstream>
#include <rapidjson/document.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>
#include <sstream>

std::string fault_by_schema(const std::string& document, const std::string& schema) {
    std::ostringstream text;
    text << std::ifstream(project_folder() + "/docs/" + schema).rdbuf();
    rapidjson::Document described, json;
    if (described.Parse(text.str().c_str()).HasParseError()) return schema + " isn't JSON";
    if (json.Parse(document.c_str()).HasParseError()) return "the document isn't JSON";
    const rapidjson::SchemaDocument compiled(described);
    rapidjson::SchemaValidator validator(compiled);
    if (json.Accept(validator)) return "";
    rapidjson::StringBuffer place;
    validator.GetInvalidDocumentPointer().StringifyUriFragment(place);
    return std::string(place.GetString()) + ": " + validator.GetInvalidSchemaKeyword();
}
