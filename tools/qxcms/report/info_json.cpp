#include "tools/qxcms/report/info_json.h"

#include "base/version.h"
#include "tools/qxcms/document_summary.h"
#include "tools/qxcms/report/document_json.h"
#include "tools/qxcms/report/json_text.h"

namespace qxcms::command {

namespace {

Json fieldJson(const FieldSummary& field) {
    return {{"column", field.column},
            {"name", field.name},
            {"kind", field.kind},
            {"type", field.type},
            {"number", field.number ? Json(*field.number) : Json(nullptr)}};
}

Json spectraJson(const std::optional<SpectraSummary>& spectra) {
    if (!spectra)
        return nullptr;
    return {{"bands", spectra->bands},
            {"firstNm", spectra->firstNm},
            {"lastNm", spectra->lastNm},
            {"stepNm", spectra->stepNm ? Json(*spectra->stepNm) : Json(nullptr)},
            {"percent", spectra->percent}};
}

Json tableJson(const TableSummary& table) {
    Json fields = Json::array();
    for (const FieldSummary& field : table.fields)
        fields.push_back(fieldJson(field));
    Json device = nullptr;
    if (table.deviceColors != nullptr)
        device = {{"kind", table.deviceColors}, {"channels", table.deviceChannels}};
    return {{"samples", table.samples},
            {"spectra", spectraJson(table.spectra)},
            {"lab", table.lab},
            {"xyz", table.xyz},
            {"deviceColours", device},
            {"spotColours", table.spotColors},
            {"sampleNames", table.sampleNames},
            {"identifiers", table.identifiers},
            {"fields", fields}};
}

Json tagJson(const TagSummary& tag) {
    return {{"keyword", tag.keyword}, {"value", tag.value}, {"bare", tag.bare}, {"comment", tag.comment}};
}

Json documentJson(const DocumentFile& file) {
    Json json = {{"file", file.name},
                 {"refused", file.failure.has_value()},
                 {"warnings", file.warnings},
                 {"liberties", libertiesJson(file.liberties)},
                 {"remarks", libertiesJson(file.remarks)}};
    if (file.failure) {
        json["failure"] = failureJson(file.failure);
        return json;
    }
    const DocumentSummary summary = summarize(*file.document);
    json["tables"] = Json::array();
    for (const TableSummary& table : summary.tables)
        json["tables"].push_back(tableJson(table));
    json["tags"] = Json::array();
    for (const TagSummary& tag : summary.tags)
        json["tags"].push_back(tagJson(tag));
    json["tagsAreFull"] = summary.tagsAreFull;
    json["customFields"] = summary.customFields;
    json["commentBlocks"] = summary.commentBlocks;
    return json;
}

} // namespace

std::string infoJson(const std::vector<DocumentFile>& files) {
    Json json = {{"command", "info"}, {"version", QXCMS_VERSION}, {"files", Json::array()}};
    for (const DocumentFile& file : files)
        json["files"].push_back(documentJson(file));
    return jsonText(json);
}

} // namespace qxcms::command
