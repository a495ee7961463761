#include "tools/qxcms/report/diff_json.h"

#include "base/version.h"
#include "tools/qxcms/report/document_json.h"
#include "tools/qxcms/report/json_text.h"

namespace qxcms::command {

namespace {

Json sideJson(const qc::Side& side, const DocumentFile& file) {
    Json json = {{"file", side.file},
                 {"table", 1},
                 {"tables", side.tables},
                 {"samples", side.samples},
                 {"source", qc::nameOf(side.source)},
                 {"spectra", nullptr}};
    if (side.source == qc::ColorSource::spectra)
        json["spectra"] = {{"bands", side.bands},
                           {"firstNm", side.firstNm},
                           {"lastNm", side.lastNm},
                           {"percent", side.percent}};
    json["liberties"] = libertiesJson(file.liberties);
    json["remarks"] = libertiesJson(file.remarks);
    return json;
}

const char* ruleName(qc::PairRule rule) {
    switch (rule) {
    case qc::PairRule::deviceValues:
        return "deviceValues";
    case qc::PairRule::identifiers:
        return "identifiers";
    case qc::PairRule::order:
        return "order";
    }
    return "";
}

Json pairingJson(const qc::Pairing& pairing) {
    return {{"rule", ruleName(pairing.rule)},
            {"field", pairing.field.empty() ? Json(nullptr) : Json(pairing.field)}};
}

Json conditionsJson(const qc::Conditions& conditions) {
    const qc::Formula& formula = conditions.formula();
    return {{"illuminant", conditions.illuminant()},
            {"observer", conditions.observer()},
            {"white", conditions.white()},
            {"formula",
             {{"name", formula.name}, {"short", formula.shortForm}, {"published", formula.published}}}};
}

Json patchJson(const qc::Patch& patch) {
    const qc::Difference& d = patch.difference;
    return {{"row", patch.row},
            {"name", patch.name},
            {"measured", patch.measured},
            {"reference", patch.reference},
            {"dL", d.lightness},
            {"da", d.a},
            {"db", d.b},
            {"dC", d.chroma},
            {"dH", d.hue},
            {"difference", d.total}};
}

Json worstJson(const qc::Patch& patch) {
    return {{"row", patch.row}, {"name", patch.name}, {"difference", patch.difference.total}};
}

Json statisticsJson(const qc::Statistics& statistics) {
    return {{"count", statistics.count},
            {"mean", statistics.mean},
            {"median", statistics.median},
            {"percentile95", statistics.percentile95},
            {"maximum", statistics.maximum}};
}

} // namespace

std::string diffJson(const DiffReport& report) {
    const qc::Comparison& comparison = report.comparison;
    Json json;
    json["command"] = "diff";
    json["version"] = QXCMS_VERSION;
    json["standard"] = "reference";
    json["conditions"] = conditionsJson(report.conditions);
    json["measured"] = sideJson(comparison.measured, report.measured);
    json["reference"] = sideJson(comparison.reference, report.reference);
    json["pairing"] = pairingJson(comparison.pairing);
    json["remarks"] = comparison.remarks;
    json["warnings"] = report.warnings;
    json["patches"] = Json::array();
    for (const qc::Patch& patch : comparison.patches)
        json["patches"].push_back(patchJson(patch));
    json["statistics"] = statisticsJson(comparison.statistics);
    json["worst"] = Json::array();
    for (const std::size_t index : report.worst)
        json["worst"].push_back(worstJson(comparison.patches[index]));
    json["tolerance"] = nullptr;
    if (report.tolerance)
        json["tolerance"] = {{"limit", *report.tolerance}, {"above", report.aboveTolerance}};
    return jsonText(json);
}

} // namespace qxcms::command
