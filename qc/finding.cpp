#include "qc/finding.h"

namespace qxcms::qc {

const char* nameOf(Finding::Kind kind) {
    switch (kind) {
    case Finding::Kind::otherTables:
        return "otherTables";
    case Finding::Kind::deviceScale:
        return "deviceScale";
    case Finding::Kind::unusedSamples:
        return "unusedSamples";
    case Finding::Kind::ambiguousSamples:
        return "ambiguousSamples";
    case Finding::Kind::otherPairing:
        return "otherPairing";
    case Finding::Kind::doubtfulValues:
        return "doubtfulValues";
    case Finding::Kind::assumedCondition:
        return "assumedCondition";
    case Finding::Kind::unknownCondition:
        return "unknownCondition";
    case Finding::Kind::freeTextCondition:
        return "freeTextCondition";
    case Finding::Kind::forcedCondition:
        return "forcedCondition";
    case Finding::Kind::contradictoryCondition:
        return "contradictoryCondition";
    case Finding::Kind::formula:
        return "formula";
    case Finding::Kind::xyzScale:
        return "xyzScale";
    case Finding::Kind::labAgainstXyz:
        return "labAgainstXyz";
    case Finding::Kind::tooLight:
        return "tooLight";
    case Finding::Kind::negativeReflectance:
        return "negativeReflectance";
    case Finding::Kind::spectralScale:
        return "spectralScale";
    case Finding::Kind::equalSpectra:
        return "equalSpectra";
    case Finding::Kind::unmeasured:
        return "unmeasured";
    case Finding::Kind::narrowSpectra:
        return "narrowSpectra";
    case Finding::Kind::coarseSpectra:
        return "coarseSpectra";
    case Finding::Kind::emission:
        return "emission";
    case Finding::Kind::expectedValues:
        return "expectedValues";
    case Finding::Kind::paperNotLightest:
        return "paperNotLightest";
    case Finding::Kind::exchangedAxes:
        return "exchangedAxes";
    case Finding::Kind::labScale:
        return "labScale";
    case Finding::Kind::otherWhite:
        return "otherWhite";
    case Finding::Kind::bandOrder:
        return "bandOrder";
    case Finding::Kind::otherHues:
        return "otherHues";
    case Finding::Kind::otherReading:
        return "otherReading";
    case Finding::Kind::shiftedRows:
        return "shiftedRows";
    case Finding::Kind::largeDifferences:
        return "largeDifferences";
    case Finding::Kind::relativeToPaper:
        return "relativeToPaper";
    }
    return "";
}

} // namespace qxcms::qc
