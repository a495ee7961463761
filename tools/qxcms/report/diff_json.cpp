#include "tools/qxcms/report/diff_json.h"

#include "base/version.h"
#include "tools/qxcms/report/document_json.h"
#include "tools/qxcms/report/json_text.h"

namespace qxcms::command {

namespace {

Json declaredJson(const qc::Condition& condition) {
    switch (condition.standing) {
    case qc::Condition::Standing::declared:
        return {{"standing", "declared"}, {"value", condition.value}, {"source", condition.source}};
    case qc::Condition::Standing::freeText:
        return {{"standing", "text"}, {"value", condition.value}, {"source", condition.source}};
    case qc::Condition::Standing::unknown:
        break;
    }
    return nullptr;
}

Json declaredJson(const qc::DocumentConditions& conditions) {
    return {{"illuminant", declaredJson(conditions.illuminant)},
            {"observer", declaredJson(conditions.observer)},
            {"measurementCondition", declaredJson(conditions.measurementCondition)},
            {"backing", declaredJson(conditions.backing)},
            {"geometry", declaredJson(conditions.geometry)},
            {"filter", declaredJson(conditions.filter)},
            {"whiteBase", declaredJson(conditions.whiteBase)},
            {"instrument", declaredJson(conditions.instrument)},
            {"emission", conditions.isEmission}};
}

Json sideJson(const qc::Side& side, const DocumentFile& file) {
    Json json = {{"file", side.file},
                 {"table", side.table},
                 {"tables", side.tables},
                 {"samples", side.samples},
                 {"source", qc::nameOf(side.source)},
                 {"spectra", nullptr}};
    if (side.source == qc::ColorSource::spectra)
        json["spectra"] = {{"bands", side.bands},
                           {"firstNm", side.firstNm},
                           {"lastNm", side.lastNm},
                           {"percent", side.percent}};
    json["conditions"] = declaredJson(side.conditions);
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
            {"by", pairing.by},
            {"pairs", pairing.pairs.size()},
            {"unusedMeasured", pairing.unusedMeasured},
            {"unusedReference", pairing.unusedReference}};
}

Json chosenJson(const qc::ChosenCondition& condition) {
    return {{"value", condition.value}, {"origin", qc::nameOf(condition.origin)}};
}

Json whiteJson(const std::optional<std::array<double, 3>>& white) {
    return white ? Json(*white) : Json(nullptr);
}

Json conditionsJson(const qc::Comparison& comparison) {
    const qc::Formula& formula = comparison.formula;
    return {{"illuminant", chosenJson(comparison.conditions.illuminant)},
            {"observer", chosenJson(comparison.conditions.observer)},
            {"forced", comparison.conditions.forced},
            {"spectralWhite", whiteJson(comparison.spectralWhite)},
            {"xyzWhite", whiteJson(comparison.xyzWhite)},
            {"formula",
             {{"name", formula.name}, {"short", formula.shortForm}, {"published", formula.published}}}};
}

Json findingsJson(const std::vector<qc::Finding>& findings) {
    Json json = Json::array();
    for (const qc::Finding& finding : findings)
        json.push_back({{"severity", finding.severity == qc::Finding::Severity::warning ? "warning" : "note"},
                        {"kind", qc::nameOf(finding.kind)},
                        {"text", finding.text}});
    return json;
}

Json patchJson(const qc::Patch& patch) {
    const qc::Difference& d = patch.difference;
    return {{"row", patch.row},
            {"referenceRow", patch.referenceRow},
            {"referenceCount", patch.referenceCount},
            {"name", patch.name},
            {"measured", patch.measured},
            {"reference", patch.reference},
            {"dL", d.lightness},
            {"da", d.a},
            {"db", d.b},
            {"dC", d.chroma},
            {"dH", d.hue},
            {"dCh", d.chromaticness},
            {"difference", d.total}};
}

Json worstJson(const qc::Patch& patch) {
    return {{"row", patch.row}, {"name", patch.name}, {"difference", patch.difference.total}};
}

Json statisticsJson(const qc::Statistics& statistics) {
    return {{"count", statistics.count},
            {"mean", statistics.mean},
            {"median", statistics.median},
            {"percentile90", statistics.percentile90},
            {"percentile95", statistics.percentile95},
            {"percentile99", statistics.percentile99},
            {"maximum", statistics.maximum}};
}

} // namespace

std::string diffJson(const DiffReport& report) {
    const qc::Comparison& comparison = report.comparison;
    Json json;
    json["command"] = "diff";
    json["version"] = QXCMS_VERSION;
    json["standard"] = "reference";
    json["conditions"] = conditionsJson(comparison);
    json["measured"] = sideJson(comparison.measured, report.measured);
    json["reference"] = sideJson(comparison.reference, report.reference);
    json["pairing"] = pairingJson(comparison.pairing);
    json["findings"] = findingsJson(comparison.findings);
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
