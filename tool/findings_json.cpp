#include "tool/findings_json.h"

#include "tool/json_writer.h"

namespace tool {
namespace {

constexpr int document_version = 1;

void put_place(JsonWriter& out, const film::FoundAt& place) {
    out.put_or_null("file", place.file);
    out.put_or_null("where", place.where);
    out.put_or_null("channel", place.channel);
    out.put_if("event", place.event > 0, place.event);
    out.put_if("frame", place.frame >= 0, place.frame);
    out.put_or_null("timecode", place.timecode);
    out.put_or_null("name", place.name);
}

} // namespace

std::string findings_document(const film::Findings& findings) {
    JsonWriter out;
    out.begin_object();
    out.put("format", "quillbrook findings");
    out.put("version", document_version);
    out.begin_array("findings");
    for (const film::Finding& finding : findings) {
        out.begin_object();
        out.put("code", film::info_of(finding.code).name);
        out.put("severity", film::name_of(finding.severity));
        put_place(out, finding.place);
        out.put("what", finding.what);
        out.put("advice", finding.advice());
        out.end_object();
    }
    out.end_array();
    out.end_object();
    return out.document();
}

} // namespace tool
