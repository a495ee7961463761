#include "qc/plausibility.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>

#include "qc/emission_signs.h"
#include "qc/hue_checks.h"
#include "qc/inspected.h"
#include "qc/lab_against_xyz.h"
#include "qc/lab_scale_check.h"
#include "qc/lightness_check.h"
#include "qc/missing_values.h"
#include "qc/paper_checks.h"
#include "qc/spectra_checks.h"
#include "qc/xyz_scale_check.h"

namespace qxcms::qc {

namespace {

using Kind = Finding::Kind;

// Adds what was found, if anything. @return whether it was.
bool add(std::vector<Finding>& findings, const std::optional<Finding>& found) {
    if (found)
        findings.push_back(*found);
    return found.has_value();
}

bool holdsKind(const std::vector<Finding>& findings, std::initializer_list<Kind> kinds) {
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
        return std::find(kinds.begin(), kinds.end(), finding.kind) != kinds.end();
    });
}

bool explainsHues(const std::vector<Finding>& findings) {
    return holdsKind(findings, {Kind::exchangedAxes, Kind::labScale, Kind::otherWhite, Kind::bandOrder,
                                Kind::equalSpectra});
}

std::vector<Finding> inspect(const Inspected& inspected, bool isEmission) {
    std::vector<Finding> findings;
    const bool isLight = add(findings, findEmission(inspected, isEmission));
    add(findings, findXyzScale(inspected));
    if (!isLight)
        add(findings, findTooLight(inspected));
    add(findings, findBelowBlack(inspected));
    add(findings, findEqualRows(inspected));
    for (const Finding& finding : findInSpectra(inspected, isLight))
        findings.push_back(finding);
    add(findings, findUnmeasured(inspected));
    add(findings, findMarkers(inspected));
    add(findings, findLabScale(inspected));
    add(findings, findLighterThanPaper(inspected));
    if (!isLight)
        add(findings, findPaperColor(inspected));
    add(findings, findLabAgainstXyz(inspected));
    if (inspected.source == ColorSource::lab && !holdsKind(findings, {Kind::exchangedAxes}))
        add(findings, findExchangedHues(inspected));
    if (!explainsHues(findings))
        add(findings, findOtherHues(inspected));
    return findings;
}

} // namespace

std::vector<Finding> implausibilities(const Chart& chart, ColorSource source,
                                      const DocumentConditions& conditions, const std::vector<Lab>& lab,
                                      const std::vector<Lab>& labFromXyz,
                                      const std::array<double, 3>& white) {
    if (chart.rows() == 0)
        return {};
    Inspected inspected{chart, source, lab, labFromXyz, white, Inks(chart), std::nullopt};
    if (source == ColorSource::spectra)
        inspected.spectra.emplace(chart);
    return inspect(inspected, conditions.isEmission);
}

} // namespace qxcms::qc
