// Files that do not belong together, as people mix them up: each is refused or comes with a word about it,
// and what only looks like a mix-up does not.
#include <cmath>
#include <functional>

#include <gmock/gmock.h>

#include "tests/cli/run_command.h"
#include "tests/mixups/asking.h"
#include "tests/mixups/printed_chart.h"

namespace qxcms::tests {
namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

constexpr Sampling kUsual = {380, 730, 10};

const std::string kD50 = "WEIGHTING_FUNCTION \"ILLUMINANT, D50\"\n";
const std::string kD65 = "WEIGHTING_FUNCTION \"ILLUMINANT, D65\"\n";
const std::string kTwoDegree = "WEIGHTING_FUNCTION \"OBSERVER, 2 degree\"\n";
const std::string kTenDegree = "WEIGHTING_FUNCTION \"OBSERVER, 10 degree\"\n";
const std::string kUsualConditions = kD50 + kTwoDegree;

const std::string kNamedLab = std::string("SAMPLE_ID ") + kLabFields;
const std::string kPrintedLab = std::string("SAMPLE_ID ") + kInkFields + ' ' + kLabFields;
const std::string kPrintedXyz = std::string("SAMPLE_ID ") + kInkFields + ' ' + kXyzFields;
const std::string kPrintedSpectra = std::string("SAMPLE_ID ") + kInkFields + ' ' + kUsual.fields();

using Columns = std::function<std::string(const Inks&)>;

std::string labColumns(const Inks& inks) {
    return numbers(labOf(inks));
}

std::string xyzColumns(const Inks& inks) {
    return numbers(xyzOf(labOf(inks)));
}

std::string spectralColumns(const Inks& inks) {
    return spectrum(inks, kUsual);
}

// "A1", "A2" ... before each row.
std::vector<std::string> named(const std::vector<std::string>& rows) {
    std::vector<std::string> all;
    all.reserve(rows.size());
    for (const std::string& row : rows)
        all.push_back("A" + std::to_string(all.size() + 1) + ' ' + row);
    return all;
}

// Rows of columns alone.
std::vector<std::string> valuesOf(const std::vector<Inks>& patches, const Columns& columns) {
    std::vector<std::string> rows;
    rows.reserve(patches.size());
    for (const Inks& inks : patches)
        rows.push_back(columns(inks));
    return rows;
}

// Rows of a name, the inks and columns.
std::vector<std::string> printed(const std::vector<Inks>& patches, const Columns& columns,
                                 double inkFactor = 1) {
    return named(
        valuesOf(patches, [&](const Inks& inks) { return numbers(inks, inkFactor) + ' ' + columns(inks); }));
}

// A print that came out lighter than its aim by half a unit.
std::string lighterLab(const Inks& inks) {
    Triple lab = labOf(inks);
    lab[0] += 0.5;
    return numbers(lab);
}

class Mixup : public Asking {
protected:
    // Lab of the small chart with names and no inks.
    std::string labs(const std::string& name, const std::string& header) const {
        return chart(name, kNamedLab, named(valuesOf(smallChart(), labColumns)), header);
    }

    std::string printedLabs(const std::string& name, const std::string& header = kUsualConditions) const {
        return chart(name, kPrintedLab, printed(smallChart(), labColumns), header);
    }

    std::string spectra(const std::string& name, const std::string& header = "") const {
        return chart(name, kPrintedSpectra, printed(smallChart(), spectralColumns), header);
    }

    // A Lab chart of the small chart whose n-th row (from 0) is another one.
    std::string printedLabsBut(const std::string& name, std::size_t row, const Triple& lab) const {
        std::vector<std::string> rows = printed(smallChart(), labColumns);
        rows[row] = "A" + std::to_string(row + 1) + ' ' + numbers(smallChart()[row]) + ' ' + numbers(lab);
        return chart(name, kPrintedLab, rows, kUsualConditions);
    }

    // Spectra of patches, on a scale where the perfect reflector has the given value.
    std::string spectraOf(const std::string& name, const std::vector<Inks>& patches, double scale) const {
        return chart(name, kPrintedSpectra,
                     printed(patches, [scale](const Inks& inks) { return spectrum(inks, kUsual, scale); }));
    }

    static std::vector<Inks> darkFirst() {
        std::vector<Inks> patches;
        for (int black = 93; black <= 100; ++black)
            patches.push_back({100, 100, 99, static_cast<double>(black)});
        for (const Inks& inks : smallChart())
            patches.push_back(inks);
        return patches;
    }

    // XYZ of the small chart, on a scale where the white has the given Y.
    std::string xyzs(const std::string& name, double white) const {
        return chart(name, kPrintedXyz,
                     printed(smallChart(),
                             [white](const Inks& inks) { return numbers(xyzOf(labOf(inks)), white / 100); }),
                     kUsualConditions);
    }

    // On the side of the measured file and on that of the reference.
    void expectRefusalOrWarningOnEitherSide(const std::string& odd, const std::string& sound,
                                            const std::string& pattern) const {
        expectRefusalOrWarning({odd, sound}, pattern);
        expectRefusalOrWarning({sound, odd}, pattern);
    }

    // Spectra of the small chart whose rows are made by a function of the inks.
    std::string spectraAs(const std::string& name, const Sampling& sampling, const Columns& columns,
                          const std::string& header = "") const {
        return chart(name, std::string("SAMPLE_ID ") + kInkFields + ' ' + sampling.fields(),
                     printed(smallChart(), columns), header);
    }
};

using mixedIlluminants = Mixup;
using mixedObservers = Mixup;
using mixedGeometries = Mixup;
using mixedOrders = Mixup;
using mixedCharts = Mixup;
using mixedScales = Mixup;
using oddValues = Mixup;
using oddSpectra = Mixup;
using oddFiles = Mixup;
using unknownNames = Mixup;
using soundFiles = Mixup;

// Illuminants.

TEST_F(mixedIlluminants, labForD65AgainstLabForD50_isRefused) {
    expectRefusal({labs("m.txt", kD65 + kTwoDegree), labs("r.txt", kUsualConditions)}, 4,
                  "illuminant.*D65.*D50");
}

TEST_F(mixedIlluminants, labForD65AgainstLabForD50_isRefusedWhicheverIsAskedFor) {
    const std::string measured = labs("m.txt", kD65 + kTwoDegree);
    const std::string reference = labs("r.txt", kUsualConditions);
    expectRefusal({measured, reference, "--illuminant", "D50"}, 4, "illuminant.*D65");
    expectRefusal({measured, reference, "--illuminant", "D65"}, 4, "illuminant.*D50");
}

TEST_F(mixedIlluminants, xyzForD65AgainstLabForD50_isRefused) {
    const std::string measured =
        chart("m.txt", kPrintedXyz, printed(smallChart(), xyzColumns), kD65 + kTwoDegree);
    expectRefusal({measured, printedLabs("r.txt")}, 4, "illuminant.*D65.*D50");
}

TEST_F(mixedIlluminants, labForAnotherOneThanAskedFor_isRefused) {
    const std::string file = labs("m.txt", kUsualConditions);
    expectRefusal({file, file, "--illuminant", "D65"}, 4, "illuminant.*D50|D65.*D50");
}

TEST_F(mixedIlluminants, labForD65AgainstSpectraForD50_isRefused) {
    expectRefusal({spectra("m.txt"), printedLabs("r.txt", kD65 + kTwoDegree), "--illuminant", "D50"}, 4,
                  "illuminant.*D65|D50.*D65");
}

TEST_F(mixedIlluminants, labForD65AgainstSpectra_isComparedForD65) {
    const nlohmann::json report = answer({spectra("m.txt"), printedLabs("r.txt", kD65 + kTwoDegree)});
    EXPECT_THAT(report.at("conditions").dump(), HasSubstr("D65"));
    EXPECT_THAT(flatReport({folder.path("m.txt"), folder.path("r.txt")}), HasSubstr("illuminant D65"));
}

TEST_F(mixedIlluminants, labOfWhichOneSideDeclaresNothing_isWarnedAbout) {
    expectWarning({labs("m.txt", ""), labs("r.txt", kUsualConditions)}, "illuminant");
}

TEST_F(mixedIlluminants, labOfWhichNoSideDeclaresAnything_isToldToBeTakenForD50AndTwoDegrees) {
    const std::string file = labs("m.txt", "");
    expectNoteOrWarning({file, file}, "illuminant.*D50");
    expectNoteOrWarning({file, file}, "observer.*2 degree");
}

TEST_F(mixedIlluminants, labForAnIlluminantThatNobodyKnows_isRefusedOrWarnedAbout) {
    expectRefusalOrWarning({labs("m.txt", "WEIGHTING_FUNCTION \"ILLUMINANT, Xenon\"\n" + kTwoDegree),
                            labs("r.txt", kUsualConditions)},
                           "Xenon");
}

TEST_F(mixedIlluminants, contradictionWithinAFile_isRefusedOrWarnedAboutWhateverItIsHeldAgainst) {
    const std::string measured = labs("m.txt", kD50 + "ILLUMINATION_NAME \"D65\"\n" + kTwoDegree);
    expectRefusalOrWarning({measured, labs("r.txt", kUsualConditions)}, "D50.*D65|D65.*D50");
    expectRefusalOrWarning({measured, labs("n.txt", kD65 + kTwoDegree)}, "D50.*D65|D65.*D50");
}

TEST_F(mixedIlluminants, wildSpellings_areUnderstoodToDiffer) {
    const std::string reference = labs("r.txt", kUsualConditions);
    const std::vector<std::string> headers = {
        "WEIGHTING_FUNCTION \"ILLUMINANT. D65\"\n", "WEIGHTING_FUNCTION \"ILLUMINANT,\tD65\"\n",
        "ILLUMINATION_NAME \"D65\"\n", "MEASUREMENT_SOURCE \"Illumination=D65\tObserverAngle=2degree\"\n"};
    for (const std::string& header : headers)
        expectRefusal({labs("m.txt", header), reference}, 4, "D65");
}

TEST_F(mixedIlluminants, force_answersAndSaysSo) {
    const Arguments arguments = {labs("m.txt", kD65 + kTwoDegree), labs("r.txt", kUsualConditions),
                                 "--force"};
    const nlohmann::json report = expectWarning(arguments, "force");
    EXPECT_THAT(report.dump(), HasSubstr("\"forced\":true"));
    EXPECT_THAT(report["findings"].dump(), HasSubstr("D65"));
}

TEST_F(mixedIlluminants, force_isSaidWhenQuietToo) {
    expectWarning({labs("m.txt", kD65 + kTwoDegree), labs("r.txt", kUsualConditions), "--force", "--quiet"},
                  "force.*D65.*D50");
}

// Both are refused alone, and the reason of each is told.
TEST_F(mixedIlluminants, illuminantAndObserverThatDiffer_areBothTold) {
    expectRefusal({labs("m.txt", kD65 + kTenDegree), labs("r.txt", kUsualConditions)}, 4,
                  "illuminant D65.*observer 10 degree");
}

TEST_F(mixedIlluminants, withoutForce_isNotSaidToBeForced) {
    const std::string file = labs("m.txt", kUsualConditions);
    EXPECT_THAT(answer({file, file}).dump(), Not(HasSubstr("\"forced\":true")));
    EXPECT_THAT(flatReport({file, file}), Not(HasSubstr("force")));
}

// Observers.

TEST_F(mixedObservers, labForTenDegreesAgainstLabForTwo_isRefused) {
    expectRefusal({labs("m.txt", kD50 + kTenDegree), labs("r.txt", kUsualConditions)}, 4,
                  "observer.*10 degree.*2 degree");
}

TEST_F(mixedObservers, labForAnotherOneThanAskedFor_isRefused) {
    const std::string file = labs("m.txt", kUsualConditions);
    expectRefusal({file, file, "--observer", "10"}, 4, "observer.*2 degree|10 degree.*2 degree");
}

TEST_F(mixedObservers, angleAlone_isUnderstoodToDiffer) {
    expectRefusal(
        {labs("m.txt", kD50 + "OBSERVER_ANGLE \"10\"\n"), labs("r.txt", kD50 + "OBSERVER_ANGLE \"2\"\n")}, 4,
        "observer.*10 degree.*2 degree");
}

TEST_F(mixedObservers, tenDegreesAmongOtherWords_areRefused) {
    const std::string reference = labs("r.txt", kUsualConditions);
    for (const std::string line : {"MEASUREMENT_SOURCE \"D50, 10 degree, M1, geometry 45/0\"",
                                   "MEASUREMENT_SOURCE \"D50 10 degree white backing\"",
                                   "WEIGHTING_FUNCTION \"D50, 10 degree, ISO 13655:2009\"",
                                   "ILLUMINATION_NAME \"D50, 10 degree, abs\""})
        expectRefusal({labs("m.txt", line + "\n"), reference}, 4, "observer 10 degree.*2 degree");
}

TEST_F(mixedObservers, force_answersAndSaysSo) {
    const nlohmann::json report = expectWarning(
        {labs("m.txt", kD50 + kTenDegree), labs("r.txt", kUsualConditions), "--force"}, "force.*10 degree");
    EXPECT_THAT(report.dump(), HasSubstr("\"forced\":true"));
}

TEST_F(mixedObservers, labForTenDegreesAgainstSpectraForTwo_isRefused) {
    expectRefusal({spectra("m.txt"), printedLabs("r.txt", kD50 + kTenDegree), "--observer", "2"}, 4,
                  "observer.*10 degree");
}

// Measurement conditions, backings, geometries, filters.

TEST_F(mixedGeometries, m0AgainstM1_isRefused) {
    expectRefusal({labs("m.txt", kUsualConditions + "MEASUREMENT_SOURCE \"MeasurementCondition=M0\"\n"),
                   labs("r.txt", kUsualConditions + "MEASUREMENT_SOURCE \"MeasurementCondition=M1\"\n")},
                  4, "M0.*M1");
}

TEST_F(mixedGeometries, m0AgainstM1_isRefusedForSpectraToo) {
    expectRefusal({spectra("m.txt", "FILTER \"M0\"\n"), spectra("r.txt", "FILTER \"M1\"\n")}, 4, "M0.*M1");
}

TEST_F(mixedGeometries, m0OfAStandardOfAYear_againstM1_isRefused) {
    const std::string reference = labs("r.txt", kUsualConditions + "FILTER \"M1\"\n");
    for (const std::string line :
         {"MEASUREMENT_CONDITION \"M0 according to ISO 13655:2009\"", "FILTER \"M0 (ISO 13655:2009)\"",
          "MEASUREMENT_SOURCE \"D50, M0, ISO 13655:2009\""})
        expectRefusal({labs("m.txt", kUsualConditions + line + "\n"), reference}, 4, "M0.*M1");
}

TEST_F(mixedGeometries, grammageDoesNotHideThatOneFileAloneDeclaresM2) {
    const nlohmann::json report =
        expectWarning({labs("m.txt", kUsualConditions + "PRINT_CONDITIONS \"paper 115 g/m2\"\n"),
                       labs("r.txt", kUsualConditions + "FILTER \"M2\"\n")},
                      "one file only: measurement condition M2 in [^ ]*r\\.txt");
    EXPECT_THAT(report["findings"].dump(), Not(HasSubstr("UV cut")));
}

TEST_F(mixedGeometries, colorsRelativeToPaperAgainstAbsoluteOnes_areRefused) {
    const std::string paper = labs("m.txt", kUsualConditions + "MEASUREMENT_SOURCE \"WhiteBase=Paper\"\n");
    expectRefusal({paper, labs("r.txt", kUsualConditions + "MEASUREMENT_SOURCE \"WhiteBase=Abs\"\n")}, 4,
                  "white base paper.*absolute");
    expectWarning({paper, labs("s.txt", kUsualConditions)}, "white base paper in [^ ]*m\\.txt");
}

TEST_F(mixedGeometries, substrateAgainstWhite_isWarnedAbout) {
    expectWarning({labs("m.txt", kUsualConditions + "SAMPLE_BACKING \"substrate\"\n"),
                   labs("r.txt", kUsualConditions + "SAMPLE_BACKING \"white\"\n")},
                  "backing substrate .*not understood");
}

TEST_F(mixedGeometries, backingOfAnInstrumentLineAgainstAnother_isWarnedAboutWithBothLines) {
    expectWarning({labs("m.txt", kUsualConditions + "INSTRUMENTATION \"45/0, black backing\"\n"),
                   labs("r.txt", kUsualConditions + "SAMPLE_BACKING \"white\"\n")},
                  "black in [^ ]*m\\.txt .INSTRUMENTATION .*white in [^ ]*r\\.txt .SAMPLE_BACKING ");
}

TEST_F(mixedGeometries, d65FilterIsNotM1) {
    expectRefusalOrWarning({labs("m.txt", kUsualConditions + "FILTER \"D65 Filter\"\n"),
                            labs("r.txt", kUsualConditions + "FILTER \"M1\"\n")},
                           "M1");
}

TEST_F(mixedGeometries, m1AgainstNothingDeclared_isWarnedAbout) {
    expectWarning({labs("m.txt", kUsualConditions + "FILTER \"M1\"\n"), labs("r.txt", kUsualConditions)},
                  "M1");
}

TEST_F(mixedGeometries, m0OfSpectraAgainstM1OfLab_isRefused) {
    expectRefusal(
        {spectra("m.txt", "FILTER \"M0\"\n"), printedLabs("r.txt", kUsualConditions + "FILTER \"M1\"\n")}, 4,
        "M0.*M1");
}

TEST_F(mixedGeometries, m0InFreeTextAgainstM1_isWarnedAboutWithBothLines) {
    expectWarning(
        {labs("m.txt", kUsualConditions + "FILE_DESCRIPTOR \"coated paper, measurement condition M0\"\n"),
         labs("r.txt", kUsualConditions + "FILTER \"M1\"\n")},
        "M0 in [^ ]*m\\.txt .FILE_DESCRIPTOR .*M1 in [^ ]*r\\.txt .FILTER ");
}

TEST_F(mixedGeometries, conditionOfAnInstrumentLine_isWarnedAboutWithBothLines) {
    expectWarning({labs("m.txt", kUsualConditions + "INSTRUMENTATION \"Spectro, M2 (UV-cut), 45/0\"\n"),
                   labs("r.txt", kUsualConditions + "MEASUREMENT_CONDITION \"M1\"\n")},
                  "M2 in [^ ]*m\\.txt .INSTRUMENTATION .*M1 in [^ ]*r\\.txt .MEASUREMENT_CONDITION ");
}

TEST_F(mixedGeometries, backingInFreeTextAgainstAnother_isWarnedAboutWithBothLines) {
    expectWarning({labs("m.txt", kUsualConditions + "DESCRIPTOR \"coated, white backing\"\n"),
                   labs("r.txt", kUsualConditions + "SAMPLE_BACKING \"black\"\n")},
                  "white in [^ ]*m\\.txt .DESCRIPTOR .*black in [^ ]*r\\.txt .SAMPLE_BACKING ");
}

TEST_F(mixedGeometries, conditionInFreeTextAlone_isNoted) {
    expectNoteOrWarning({labs("m.txt", kUsualConditions + "FILE_DESCRIPTOR \"chart (M2)\"\n"),
                         labs("r.txt", kUsualConditions)},
                        "text only: measurement condition M2");
}

// M2 is the "UV Filter" of the kernel, M3 its "Pol Filter", M0 its geometry without one.
TEST_F(mixedGeometries, filterAgainstAnotherMeasurementCondition_isRefused) {
    const std::string m1 = labs("r.txt", kUsualConditions + "MEASUREMENT_CONDITION \"M1\"\n");
    expectRefusal({labs("m.txt", kUsualConditions + "FILTER \"UV Filter\"\n"), m1}, 4, "M2.*UV Filter.*M1");
    expectRefusal({labs("m.txt", kUsualConditions + "FILTER \"Pol Filter\"\n"), m1}, 4, "M3.*Pol Filter.*M1");
    expectRefusal(
        {labs("m.txt", kUsualConditions + "MEASUREMENT_GEOMETRY \"Ill 0, Obs 45, Pol Filter\"\n"), m1}, 4,
        "M3.*Pol Filter.*M1");
    expectWarning({labs("m.txt", kUsualConditions + "FILTER \"UV Filter\"\n"), m1, "--force"},
                  "force.*M2.*M1");
}

TEST_F(mixedGeometries, geometryWithoutAFilterAgainstTheUltravioletFilter_isRefused) {
    expectRefusal({labs("m.txt", kUsualConditions + "MEASUREMENT_GEOMETRY \"Ill 45, Obs 0\"\n"),
                   labs("r.txt", kUsualConditions + "FILTER \"UV Filter\"\n")},
                  4, "M0.*M2");
}

TEST_F(mixedGeometries, polarisingFilterAgainstNoneUnderM1_isRefused) {
    expectRefusal({labs("m.txt", kUsualConditions + "MEASUREMENT_CONDITION \"M1\"\nFILTER \"Pol Filter\"\n"),
                   labs("r.txt", kUsualConditions + "MEASUREMENT_CONDITION \"M1\"\nFILTER \"none\"\n")},
                  4, "filter.*polarizing.*none");
}

TEST_F(mixedGeometries, polarisingFilterUnderM1_isWarnedAbout) {
    expectWarning({labs("m.txt", kUsualConditions + "MEASUREMENT_CONDITION \"M1\"\nFILTER \"Pol Filter\"\n"),
                   labs("r.txt", kUsualConditions + "MEASUREMENT_CONDITION \"M1\"\n")},
                  "m\\.txt: the filter is polarizing.*M1.*without a filter");
}

TEST_F(mixedGeometries, unknownSpellings_areWarnedAboutWithTheKnownNames) {
    const std::string reference =
        labs("r.txt", kUsualConditions + "SAMPLE_BACKING \"white\"\nFILTER \"none\"\n");
    expectWarning({labs("m.txt", kUsualConditions + "SAMPLE_BACKING \"white over black\"\nFILTER \"none\"\n"),
                   reference},
                  "backing white over black .*not understood.*known are white, black and self");
    expectWarning({labs("m.txt", kUsualConditions + "SAMPLE_BACKING \"white\"\nFILTER \"U\"\n"), reference},
                  "filter U .*not understood.*UV cut");
    expectWarning({labs("m.txt", kTwoDegree + "ILLUMINANT \"5000K\"\n"), labs("n.txt", kUsualConditions)},
                  "m\\.txt: the illuminant 5000K .*not understood.*D50");
}

TEST_F(mixedGeometries, blackBackingAgainstWhite_isRefused) {
    expectRefusal({labs("m.txt", kUsualConditions + "SAMPLE_BACKING \"black\"\n"),
                   labs("r.txt", kUsualConditions + "SAMPLE_BACKING \"white\"\n")},
                  4, "backing.*black.*white");
}

TEST_F(mixedGeometries, sphereAgainst45To0_isRefused) {
    expectRefusal({labs("m.txt", kUsualConditions + "MEASUREMENT_GEOMETRY \"d/8\"\n"),
                   labs("r.txt", kUsualConditions + "MEASUREMENT_GEOMETRY \"45/0\"\n")},
                  4, "geometry");
}

TEST_F(mixedGeometries, polarisingFilterAgainstNone_isRefused) {
    expectRefusal({labs("m.txt", kUsualConditions + "FILTER \"Pol\"\n"),
                   labs("r.txt", kUsualConditions + "FILTER \"None\"\n")},
                  4, "filter|M3|condition.*Pol");
}

TEST_F(mixedGeometries, ultravioletCutAgainstNone_isRefused) {
    expectRefusal({labs("m.txt", kUsualConditions + "FILTER \"UV\"\n"),
                   labs("r.txt", kUsualConditions + "FILTER \"None\"\n")},
                  4, "filter|M2|condition.*UV");
}

TEST_F(mixedGeometries, force_answersAndSaysSo) {
    const nlohmann::json report =
        expectWarning({labs("m.txt", kUsualConditions + "SAMPLE_BACKING \"black\"\n"),
                       labs("r.txt", kUsualConditions + "SAMPLE_BACKING \"white\"\n"), "--force"},
                      "force.*black.*white");
    EXPECT_THAT(report.dump(), HasSubstr("\"forced\":true"));
}

// Rows in another order.

TEST_F(mixedOrders, shuffledInks_arePairedByThem) {
    const std::string measured =
        chart("m.txt", kPrintedLab, printed(shuffled(smallChart()), labColumns), kUsualConditions);
    const nlohmann::json report = expectNoWarning({measured, printedLabs("r.txt")});
    EXPECT_EQ(report["statistics"]["count"], 25);
    EXPECT_LT(report["statistics"]["maximum"], 1e-6);
    EXPECT_THAT(flatReport({measured, folder.path("r.txt")}), HasSubstr("25 of 25 paired by CMYK"));
}

TEST_F(mixedOrders, shuffledNames_arePairedByThem) {
    const std::string measured =
        chart("m.txt", kNamedLab, shuffled(named(valuesOf(smallChart(), labColumns))), kUsualConditions);
    const nlohmann::json report = expectNoWarning({measured, labs("r.txt", kUsualConditions)});
    EXPECT_EQ(report["statistics"]["count"], 25);
    EXPECT_LT(report["statistics"]["maximum"], 1e-6);
    EXPECT_THAT(flatReport({measured, folder.path("r.txt")}), HasSubstr("25 of 25 paired by SAMPLE_ID"));
}

TEST_F(mixedOrders, rowsWithNothingToTellThemApart_areRefused) {
    const std::string measured =
        chart("m.txt", kLabFields, shuffled(valuesOf(smallChart(), labColumns)), kUsualConditions);
    const std::string reference =
        chart("r.txt", kLabFields, valuesOf(smallChart(), labColumns), kUsualConditions);
    expectRefusal({measured, reference}, 4, "pair");
}

TEST_F(mixedOrders, shuffledInksPairedByOrder_areWarnedAbout) {
    const std::string measured =
        chart("m.txt", kPrintedLab, printed(shuffled(smallChart()), lighterLab), kUsualConditions);
    expectWarning({measured, printedLabs("r.txt"), "--pair", "order"}, "device|CMYK");
}

TEST_F(mixedOrders, namesNumberedAnewAndTakenForPairs_areWarnedAbout) {
    const std::string measured =
        chart("m.txt", kPrintedLab, printed(shuffled(smallChart()), lighterLab), kUsualConditions);
    expectWarning({measured, printedLabs("r.txt"), "--pair", "id"}, "device|CMYK");
}

TEST_F(mixedOrders, shuffledNamesPairedByOrder_areWarnedAbout) {
    const std::string measured =
        chart("m.txt", kNamedLab, shuffled(named(valuesOf(smallChart(), lighterLab))), kUsualConditions);
    expectWarning({measured, labs("r.txt", kUsualConditions), "--pair", "order"}, "SAMPLE_ID|identifier");
}

// The printer's file lists the inks in the wrong rows, the names are right.
TEST_F(mixedOrders, inksThatContradictTheNames_areWarnedAbout) {
    const std::vector<Inks> patches = smallChart();
    const std::vector<Inks> others = shuffled(patches);
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < patches.size(); ++i)
        rows.push_back(numbers(others[i]) + ' ' + lighterLab(patches[i]));
    expectWarning({chart("m.txt", kPrintedLab, named(rows), kUsualConditions), printedLabs("r.txt")},
                  "SAMPLE_ID|identifier");
}

// Other charts, parts of charts, doubles.

TEST_F(mixedCharts, otherPatchesOfTheSameInks_areRefusedOrWarnedAbout) {
    std::vector<Inks> others;
    for (const Inks& inks : smallChart())
        others.push_back(
            {100 - inks[0] * 0.7 - 13, inks[1] * 0.6 + 7, inks[2] * 0.5 + 31, inks[3] * 0.5 + 3});
    const std::string measured = chart("m.txt", kPrintedLab, printed(others, labColumns), kUsualConditions);
    expectRefusalOrWarning({measured, printedLabs("r.txt")}, "paired|pair|unused|counterpart");
}

TEST_F(mixedCharts, otherPatchesThatShareAFew_areRefusedOrWarnedAbout) {
    std::vector<Inks> others = smallChart();
    for (std::size_t i = 3; i < others.size(); ++i)
        others[i][3] = 63 + static_cast<double>(i);
    const std::string measured = chart("m.txt", kPrintedLab, printed(others, labColumns), kUsualConditions);
    expectRefusalOrWarning({measured, printedLabs("r.txt")}, "\\b3 of 25|\\b22 ");
}

TEST_F(mixedCharts, namesWithoutACounterpart_areRefused) {
    std::vector<std::string> rows;
    for (const std::string& row : named(valuesOf(smallChart(), labColumns)))
        rows.push_back("X" + row);
    expectRefusal({chart("m.txt", kNamedLab, rows, kUsualConditions), labs("r.txt", kUsualConditions)}, 4,
                  "pair|SAMPLE_ID");
}

TEST_F(mixedCharts, chartAgainstAStripOfIt_isToldWhatIsUnused) {
    std::vector<Inks> strip;
    const std::vector<Inks> whole = fullChart();
    for (std::size_t i = 0; i < 72; ++i)
        strip.push_back(whole[i * 22]);
    const std::string measured = chart("m.txt", kPrintedLab, printed(whole, lighterLab), kUsualConditions);
    const std::string reference =
        chart("r.txt", kPrintedLab, printed(shuffled(strip), labColumns), kUsualConditions);
    EXPECT_EQ(answer({measured, reference})["statistics"]["count"], 72);
    const std::string report = flatReport({measured, reference});
    EXPECT_THAT(report, HasSubstr("72 of 1,617 paired by CMYK"));
    EXPECT_THAT(report,
                ContainsRegex("1,545 (measured samples unused|of 1,617 samples of [^ ]*m\\.txt have no)"));
}

TEST_F(mixedCharts, missingSamples_areTold) {
    std::vector<Inks> some = smallChart();
    some.erase(some.begin() + 4, some.begin() + 8);
    const std::string measured = chart("m.txt", kPrintedLab, printed(some, labColumns), kUsualConditions);
    expectNoteOrWarning({measured, printedLabs("r.txt")},
                        "\\b4 (reference samples unused|of 25 samples of .*r\\.txt are unused)");
}

TEST_F(mixedCharts, samplesThatTheReferenceLacks_areTold) {
    std::vector<Inks> some = smallChart();
    some.erase(some.begin() + 4, some.begin() + 8);
    const std::string reference = chart("r.txt", kPrintedLab, printed(some, labColumns), kUsualConditions);
    expectNoteOrWarning({printedLabs("m.txt"), reference},
                        "\\b4 (measured samples unused|of 25 samples of .*m\\.txt have no counterpart)");
}

TEST_F(mixedCharts, differentCountsPairedByOrder_areRefusedOrWarnedAbout) {
    std::vector<Inks> some = smallChart();
    some.erase(some.begin() + 4, some.begin() + 8);
    const std::string measured = chart("m.txt", kPrintedLab, printed(some, labColumns), kUsualConditions);
    expectRefusalOrWarning({measured, printedLabs("r.txt"), "--pair", "order"}, "21.*25|25.*21|unused");
}

TEST_F(mixedCharts, doubledName_isLeftOutWithAWarningThatNamesItsRows) {
    std::vector<std::string> rows = named(valuesOf(smallChart(), labColumns));
    rows[6].replace(0, 2, "A3");
    const std::string measured = chart("m.txt", kNamedLab, rows, kUsualConditions);
    const std::string reference = labs("r.txt", kUsualConditions);
    const std::string told =
        "SAMPLE_ID \"A3\" stands in rows 3 and 7 of .*m\\.txt.*2 of 25 in .*m\\.txt.*left out";
    for (const Arguments& arguments :
         {Arguments{measured, reference}, Arguments{measured, reference, "--pair", "id"},
          Arguments{reference, measured}}) {
        const nlohmann::json report = expectWarning(arguments, told);
        EXPECT_EQ(report["statistics"]["count"], 23);
        EXPECT_LT(report["statistics"]["maximum"], 1e-6);
        for (const nlohmann::json& patch : report["patches"])
            EXPECT_THAT(patch.at("name"), AllOf(Not("A3"), Not("A7")));
    }
}

// Six of 25 rows share their name with another one.
TEST_F(mixedCharts, manyDoubledNames_areRefused) {
    std::vector<std::string> rows = named(valuesOf(smallChart(), labColumns));
    for (const std::size_t row : {1U, 3U, 5U})
        rows[row].replace(0, 2, rows[row - 1], 0, 2);
    const std::string measured = chart("m.txt", kNamedLab, rows, kUsualConditions);
    const std::string reference = labs("r.txt", kUsualConditions);
    const std::string told = "SAMPLE_ID \"A1\" stands in rows 1 and 2 of .*m\\.txt";
    expectRefusal({measured, reference}, 4, told);
    expectRefusal({measured, reference, "--pair", "id"}, 4, told);
}

TEST_F(mixedCharts, partOfTheNames_isPairedAndTheRestTold) {
    std::vector<std::string> rows = named(valuesOf(smallChart(), labColumns));
    rows.resize(10);
    const std::string measured = chart("m.txt", kNamedLab, shuffled(rows), kUsualConditions);
    const nlohmann::json report = answer({measured, labs("r.txt", kUsualConditions)});
    EXPECT_EQ(report["statistics"]["count"], 10);
    EXPECT_LT(report["statistics"]["maximum"], 1e-6);
    EXPECT_THAT(flatReport({measured, folder.path("r.txt")}),
                HasSubstr("10 of 10 paired by SAMPLE_ID; 15 reference samples unused"));
}

// Each patch was printed and measured twice.
TEST_F(mixedCharts, chartMeasuredTwiceInOneFile_isToldOf) {
    std::vector<Inks> twice = smallChart();
    for (const Inks& inks : smallChart())
        twice.push_back(inks);
    const std::string measured = chart("m.txt", kPrintedLab, printed(twice, labColumns), kUsualConditions);
    expectNoteOrWarning({measured, printedLabs("r.txt")}, "same device|mean|more than once|repeat");
}

// Lab 95 0 -2 once against 94 and 96: their mean is 95.
TEST_F(mixedCharts, inksRepeatedOnOneSide_areComparedWithTheirMeanAndTold) {
    const std::string measured =
        chart("m.txt", kPrintedLab, {"A 0 0 0 0 95 0 -2", "B 0 0 0 100 16 0 0"}, kUsualConditions);
    const std::string reference =
        chart("r.txt", kPrintedLab, {"A 0 0 0 0 94 0 -2", "B 0 0 0 100 16 0 0", "C 0 0 0 0 96 0 -2"},
              kUsualConditions);
    const nlohmann::json report = expectNoteOrWarning({measured, reference}, "mean|average");
    EXPECT_EQ(report["statistics"]["count"], 2);
    EXPECT_LT(report["statistics"]["maximum"], 1e-9);
}

TEST_F(mixedCharts, inksRepeatedAsOftenOnBothSides_arePairedFirstWithFirst) {
    const std::vector<std::string> rows = {"A 0 0 0 0 94 0 -2", "B 0 0 0 100 16 0 0", "C 0 0 0 0 96 0 -2"};
    const std::string measured = chart("m.txt", kPrintedLab, {rows[1], rows[0], rows[2]}, kUsualConditions);
    const std::string reference = chart("r.txt", kPrintedLab, rows, kUsualConditions);
    const nlohmann::json report =
        expectNoteOrWarning({measured, reference}, "repeat|more than once|twice|same device|first with");
    EXPECT_EQ(report["statistics"]["count"], 3);
    EXPECT_LT(report["statistics"]["maximum"], 1e-9);
}

// Scales.

TEST_F(mixedScales, xyzOfAWhiteOfOne_isRecognised) {
    EXPECT_LT(answer({xyzs("m.txt", 1), xyzs("r.txt", 100)})["statistics"]["maximum"], 0.001);
    EXPECT_LT(answer({xyzs("m.txt", 100), xyzs("r.txt", 1)})["statistics"]["maximum"], 0.001);
}

TEST_F(mixedScales, xyzOfAWhiteOfOne_isToldInTheReport) {
    expectNoteOrWarning({xyzs("m.txt", 1), xyzs("r.txt", 100)}, "XYZ.*scale|XYZ.*0.*1");
}

TEST_F(mixedScales, xyzOfAWhiteOfOneThatStaysAsItStands_isRecognisedAndTold) {
    const nlohmann::json report =
        expectNoteOrWarning({xyzs("m.txt", 1), xyzs("r.txt", 100), "--strict"}, "XYZ.*scale|XYZ.*0.*1");
    EXPECT_LT(report["statistics"]["maximum"], 0.001);
}

// 0 stands for full ink, 100 for none.
TEST_F(mixedScales, inksCountedDownwards_areRefusedOrWarnedAbout) {
    std::vector<std::string> rows;
    for (const Inks& inks : smallChart())
        rows.push_back(numbers(Inks{100 - inks[0], 100 - inks[1], 100 - inks[2], 100 - inks[3]}) + ' ' +
                       labColumns(inks));
    expectRefusalOrWarning({chart("m.txt", kPrintedLab, named(rows), kUsualConditions), printedLabs("r.txt")},
                           "counterpart|SAMPLE_ID|identifier|lightest|without ink");
}

// The published white of D50 turns these XYZ into the Lab that they came from.
TEST_F(mixedScales, xyzAgainstLab_agreesOnThePublishedWhite) {
    const std::string measured =
        chart("m.txt", kPrintedXyz, printed(smallChart(), xyzColumns), kUsualConditions);
    const nlohmann::json report = expectNoWarning({measured, printedLabs("r.txt")});
    EXPECT_LT(report["statistics"]["maximum"], 0.01);
}

TEST_F(mixedScales, inksFrom0To1_areRecognisedAndTold) {
    const std::string measured =
        chart("m.txt", kPrintedLab, printed(shuffled(smallChart()), labColumns, 0.01), kUsualConditions);
    const nlohmann::json report =
        expectNoteOrWarning({measured, printedLabs("r.txt")}, "0 to 1\\b|0\\.\\.1\\b");
    EXPECT_EQ(report["statistics"]["count"], 25);
    EXPECT_LT(report["statistics"]["maximum"], 1e-6);
}

TEST_F(mixedScales, inksFrom0To255_areRecognisedAndTold) {
    const std::string measured =
        chart("m.txt", kPrintedLab, printed(shuffled(smallChart()), labColumns, 2.55), kUsualConditions);
    const nlohmann::json report = expectNoteOrWarning({measured, printedLabs("r.txt")}, "255");
    EXPECT_EQ(report["statistics"]["count"], 25);
    EXPECT_LT(report["statistics"]["maximum"], 1e-6);
}

TEST_F(mixedScales, rgbFrom0To255AgainstPercent_isRecognisedAndTold) {
    const std::string fields = std::string("RGB_R RGB_G RGB_B ") + kLabFields;
    const auto rows = [](double factor) {
        return valuesOf(smallChart(), [factor](const Inks& inks) {
            const Triple rgb = {(100 - inks[0]) * (1 - inks[3] / 100), (100 - inks[1]) * (1 - inks[3] / 100),
                                (100 - inks[2]) * (1 - inks[3] / 100)};
            return numbers(rgb, factor) + ' ' + labColumns(inks);
        });
    };
    const nlohmann::json report =
        expectNoteOrWarning({chart("m.txt", fields, shuffled(rows(2.55)), kUsualConditions),
                             chart("r.txt", fields, rows(1), kUsualConditions)},
                            "255");
    EXPECT_EQ(report["pairing"]["pairs"], 25);
}

// Eight rows that reflect less than 10 percent stand before the first light one.
TEST_F(mixedScales, percentWhoseFirstRowsAreDark_areReadAsPercent) {
    const nlohmann::json report =
        answer({spectraOf("m.txt", darkFirst(), 100), spectraOf("r.txt", darkFirst(), 1)});
    EXPECT_NEAR(report["patches"][8]["measured"][0], report["patches"][8]["reference"][0], 1e-6);
    EXPECT_LT(report["statistics"]["maximum"], 1e-6);
}

TEST_F(mixedScales, percentWhoseFirstRowsAreDark_areToldInTheReport) {
    expectNoteOrWarning({spectraOf("m.txt", darkFirst(), 100), spectraOf("r.txt", darkFirst(), 1)},
                        "percent");
}

TEST_F(mixedScales, percentWhoseFirstRowsAreDarkAndStayAsTheyStand_areRefusedOrWarnedAbout) {
    expectRefusalOrWarning(
        {spectraOf("m.txt", darkFirst(), 100), spectraOf("r.txt", darkFirst(), 1), "--strict"}, "percent");
}

TEST_F(mixedScales, percentAgainstFractions_isReadAndTold) {
    const std::string measured = spectraOf("m.txt", smallChart(), 100);
    const std::string reference = spectraOf("r.txt", smallChart(), 1);
    const nlohmann::json report = expectNoWarning({measured, reference});
    EXPECT_LT(report["statistics"]["maximum"], 1e-6);
    EXPECT_EQ(report["measured"]["spectra"]["percent"], true);
    EXPECT_EQ(report["reference"]["spectra"]["percent"], false);
    EXPECT_THAT(flatReport({measured, reference}), HasSubstr("percent"));
}

// Reflectances of 2 to 4 percent alone look like fractions beyond any paper.
TEST_F(mixedScales, percentOfDarkPatchesAlone_areNotAnsweredInSilence) {
    const std::vector<std::string> rows = {"A 0 0 0 98", "B 10 10 10 97", "C 20 20 20 96"};
    const auto measuredRows = [&](double factor) {
        std::vector<std::string> all;
        double value = 0.02;
        for (const std::string& row : rows) {
            const std::vector<double> flatSpectrum(kUsual.wavelengths().size(), value);
            all.push_back(row + ' ' + numbers(flatSpectrum.data(), flatSpectrum.size(), factor));
            value += 0.01;
        }
        return all;
    };
    const std::string measured = chart("m.txt", kPrintedSpectra, measuredRows(100));
    const std::string reference = chart("r.txt", kPrintedSpectra, measuredRows(1));
    expectRefusalOrWarning({measured, reference}, "percent|fraction|above|scale");
}

// Values that cannot be.

TEST_F(oddValues, lightnessOf182_isRefusedOrWarnedAbout) {
    expectRefusalOrWarningOnEitherSide(printedLabsBut("m.txt", 2, {182, 74, -3}), printedLabs("r.txt"),
                                       "L\\* 182.*105|105.*L\\* 182");
}

TEST_F(oddValues, warnings_areSaidWhenQuietToo) {
    expectWarning({printedLabsBut("m.txt", 2, {182, 74, -3}), printedLabs("r.txt"), "--quiet"}, "L\\* 182");
}

// L* 0 to 255, a* and b* with 128 for the neutral.
TEST_F(oddValues, labAsBytes_isRefusedOrWarnedAbout) {
    const std::string measured =
        chart("m.txt", kPrintedLab,
              printed(smallChart(),
                      [](const Inks& inks) {
                          const Triple lab = labOf(inks);
                          return numbers(Triple{lab[0] * 2.55, lab[1] + 128, lab[2] + 128});
                      }),
              kUsualConditions);
    expectRefusalOrWarningOnEitherSide(measured, printedLabs("r.txt"), "L\\*.*105|105.*L\\*");
}

TEST_F(oddValues, yOf130_isRefusedOrWarnedAbout) {
    std::vector<std::string> rows = printed(smallChart(), xyzColumns);
    rows[0] = "A1 0 0 0 0 125.3 130 107.2";
    const std::string measured = chart("m.txt", kPrintedXyz, rows, kUsualConditions);
    const std::string reference =
        chart("r.txt", kPrintedXyz, printed(smallChart(), xyzColumns), kUsualConditions);
    expectRefusalOrWarningOnEitherSide(measured, reference, "130");
}

TEST_F(oddValues, paperThatIsNotTheLightest_isRefusedOrWarnedAbout) {
    expectRefusalOrWarningOnEitherSide(printedLabsBut("m.txt", 0, {60, 0, -2}), printedLabs("r.txt"),
                                       "paper|lightest|without ink");
}

// Yellow at b* = 93 turns up at a* = 93.
TEST_F(oddValues, exchangedAAndB_areRefusedOrWarnedAbout) {
    const std::string measured = chart("m.txt", kPrintedLab,
                                       printed(smallChart(),
                                               [](const Inks& inks) {
                                                   const Triple lab = labOf(inks);
                                                   return numbers(Triple{lab[0], lab[2], lab[1]});
                                               }),
                                       kUsualConditions);
    expectRefusalOrWarningOnEitherSide(measured, printedLabs("r.txt"), "exchange|swap|interchange");
}

// No inks tell which patch is yellow, but the other file does.
TEST_F(oddValues, exchangedAAndBWithoutInks_areRefusedOrWarnedAbout) {
    const std::string measured = chart("m.txt", kNamedLab,
                                       named(valuesOf(smallChart(),
                                                      [](const Inks& inks) {
                                                          const Triple lab = labOf(inks);
                                                          return numbers(Triple{lab[0], lab[2], lab[1]});
                                                      })),
                                       kUsualConditions);
    expectRefusalOrWarningOnEitherSide(measured, labs("r.txt", kUsualConditions),
                                       "exchange|swap|interchange");
}

// L* 50 is Y 18.42; the XYZ of every row is that of a lightness lower by 5.
TEST_F(oddValues, labAndXyzThatDisagree_areToldOf) {
    const std::string fields = std::string("SAMPLE_ID ") + kInkFields + ' ' + kLabFields + ' ' + kXyzFields;
    const std::string measured = chart("m.txt", fields,
                                       printed(smallChart(),
                                               [](const Inks& inks) {
                                                   Triple darker = labOf(inks);
                                                   darker[0] -= 5;
                                                   return labColumns(inks) + ' ' + numbers(xyzOf(darker));
                                               }),
                                       kUsualConditions);
    expectRefusalOrWarningOnEitherSide(measured, printedLabs("r.txt"), "Lab.*XYZ|XYZ.*Lab");
}

TEST_F(oddValues, oneRowWhoseLabAndXyzDisagree_isToldOf) {
    const std::string fields = std::string("SAMPLE_ID ") + kInkFields + ' ' + kLabFields + ' ' + kXyzFields;
    std::vector<std::string> rows =
        printed(smallChart(), [](const Inks& inks) { return labColumns(inks) + ' ' + xyzColumns(inks); });
    rows[4] = "A5 0 0 0 20 50 0 0 60 60 50";
    expectRefusalOrWarningOnEitherSide(chart("m.txt", fields, rows, kUsualConditions), printedLabs("r.txt"),
                                       "Lab.*XYZ|XYZ.*Lab");
}

// Spectra that are none of a print, or not enough of one.

TEST_F(oddSpectra, negativeReflectance_isRefusedOrWarnedAbout) {
    const std::string measured = spectraAs(
        "m.txt", kUsual, [](const Inks& inks) { return spectrum(inks, kUsual, inks[3] == 100 ? -1 : 1); });
    expectRefusalOrWarningOnEitherSide(measured, spectra("r.txt"), "negative|reflectance -");
}

TEST_F(oddSpectra, equalSpectra_areRefusedOrWarnedAbout) {
    const std::string measured = spectraAs("m.txt", kUsual, [](const Inks&) {
        return spectrum({20, 20, 20, 20}, kUsual);
    });
    expectRefusalOrWarning({measured, spectra("r.txt")}, "equal|same|identical");
    expectRefusalOrWarning({spectra("n.txt"), measured}, "equal|same|identical");
}

TEST_F(oddSpectra, everySecondTenthNanometre_isRefusedOrWarnedAbout) {
    const Sampling coarse = {380, 740, 20};
    const std::string measured =
        spectraAs("m.txt", coarse, [&](const Inks& inks) { return spectrum(inks, coarse); });
    expectRefusalOrWarningOnEitherSide(measured, spectra("r.txt"), "20 nm.*(dE|delta E|difference|unit)");
}

TEST_F(oddSpectra, bandsFrom450To650_areRefusedOrWarnedAbout) {
    const Sampling narrow = {450, 650, 10};
    const std::string measured =
        spectraAs("m.txt", narrow, [&](const Inks& inks) { return spectrum(inks, narrow); });
    expectRefusalOrWarningOnEitherSide(measured, spectra("r.txt"), "450.*650|400.*700");
}

TEST_F(oddSpectra, lamps_areRefusedOrWarnedAbout) {
    std::vector<std::string> rows;
    for (const double dimming : {1.0, 0.8, 0.6}) {
        std::vector<double> radiance;
        for (const int nm : kUsual.wavelengths())
            radiance.push_back(dimming * lampAt(nm));
        rows.push_back(numbers(radiance.data(), radiance.size()));
    }
    const std::string fields = "SAMPLE_ID " + kUsual.fields();
    const std::string measured = chart("m.txt", fields, named(rows));
    expectRefusalOrWarning({measured, measured}, "emission|emissive|light source|lamp|above|reflect");
}

TEST_F(oddSpectra, declaredEmission_isRefusedOrWarnedAbout) {
    const std::string measured = spectra("m.txt", "MEASUREMENT_GEOMETRY \"Emission\"\n");
    expectRefusalOrWarningOnEitherSide(measured, spectra("r.txt"), "emission|emissive|light source");
}

// Files that are something else.

// Luminances in candela per square metre.
TEST_F(oddFiles, display_isRefusedOrWarnedAbout) {
    const std::string fields = std::string("SampleID RGB_R RGB_G RGB_B ") + kXyzFields;
    const std::vector<std::string> rows = {"1 0 0 0 0.75 0.72 1.64", "2 255 0 0 206 106 10",
                                           "3 0 255 0 178 357 60", "4 0 0 255 90 36 475",
                                           "5 255 255 255 475 500 544"};
    const std::string declared = chart("m.txt", fields, rows, "DISPLAY_TYPE \"RGBW LCD\"\n");
    expectRefusalOrWarning({declared, declared}, "emission|emissive|display");
    const std::string undeclared = chart("n.txt", fields, rows);
    expectRefusalOrWarning({undeclared, undeclared}, "emission|emissive|display|\\bY\\b.*500|500");
}

// Scaled to Y = 100 for its white a display looks like a print.
TEST_F(oddFiles, displayScaledTo100_isRefusedOrWarnedAbout) {
    const std::string fields = std::string("SAMPLE_ID RGB_R RGB_G RGB_B ") + kXyzFields;
    const std::vector<std::string> rows = {"1 0 0 0 0.15 0.14 0.33", "2 100 0 0 41.2 21.2 2.0",
                                           "3 0 100 0 35.6 71.4 12.0", "4 0 0 100 18.0 7.2 95.0",
                                           "5 100 100 100 95 100 108.8"};
    const std::string measured = chart("m.txt", fields, rows, "DEVICE_CLASS \"DISPLAY\"\n");
    expectNoteOrWarning({measured, measured}, "measurements of displays");
    const std::vector<std::string> printedRows = {"1 0 0 0 1.9 2.0 1.7", "2 100 0 0 25 14 3",
                                                  "3 0 100 0 10 20 8", "4 0 0 100 6 5 20",
                                                  "5 100 100 100 84 87 70"};
    expectRefusalOrWarningOnEitherSide(measured, chart("r.txt", fields, printedRows),
                                       "emission|emissive|display");
}

// One reading is lost: the colours of all rows behind it stand beside the inks of other ones.
TEST_F(oddValues, lostReading_isToldWithTheRowsBehindIt) {
    std::vector<Inks> patches = shuffled(fullChart());
    std::vector<Inks> read = patches;
    read.erase(read.begin() + 900);
    patches.pop_back();
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < patches.size(); ++i)
        rows.push_back(numbers(patches[i]) + ' ' + lighterLab(read[i]));
    const std::string measured = chart("m.txt", kPrintedLab, named(rows), kUsualConditions);
    const std::string reference =
        chart("r.txt", kPrintedLab, printed(fullChart(), labColumns), kUsualConditions);
    expectWarning({measured, reference},
                  "rows 901 to 1,61[0-6] of .*m.txt agree with what is expected in the row 1 further down");
}

TEST_F(oddFiles, targetWithoutMeasuredValues_isRefused) {
    const std::string fields = std::string("SAMPLE_ID ") + kInkFields;
    const std::string target =
        chart("m.txt", fields, named(valuesOf(smallChart(), [](const Inks& inks) { return numbers(inks); })));
    expectRefusal({target, printedLabs("r.txt")}, 4, "m\\.txt.*(no colour data|no measured|not measured)");
    expectRefusal({printedLabs("r.txt"), target}, 4, "m\\.txt.*(no colour data|no measured|not measured)");
}

TEST_F(oddFiles, targetWhoseMeasuredValuesAreAllZero_isRefusedOrWarnedAbout) {
    const std::string target = chart(
        "m.txt", kPrintedLab, printed(smallChart(), [](const Inks&) { return "0 0 0"; }), kUsualConditions);
    expectRefusalOrWarningOnEitherSide(target, printedLabs("r.txt"),
                                       "zero|equal|same|identical|no measured|measured value");
}

TEST_F(oddFiles, chartWithoutRows_isRefusedOrUnreadable) {
    const Outcome outcome =
        runCommand({"diff", chart("m.txt", kPrintedLab, {}, kUsualConditions), printedLabs("r.txt")});
    EXPECT_THAT(outcome.exitCode, AnyOf(3, 4)) << outcome.out;
    EXPECT_THAT(outcome.err, HasSubstr("m.txt"));
}

TEST_F(oddFiles, textThatIsNoChart_isUnreadable) {
    const std::string letter = folder.write("m.txt", "Dear customer,\nplease find the proofs enclosed.\n");
    expectRefusal({letter, printedLabs("r.txt")}, 3, "m\\.txt");
}

TEST_F(oddFiles, pictureIsUnreadable) {
    const std::string picture =
        folder.write("m.txt", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\1\0", 20));
    expectRefusal({picture, printedLabs("r.txt")}, 3, "m\\.txt");
}

TEST_F(oddFiles, toneCurves_areRefused) {
    const std::string curves = chart("m.txt", "CMYK_I CMYK_C CMYK_M CMYK_Y CMYK_K",
                                     {"0 0 0 0 0", "0.5 0.46 0.47 0.48 0.45", "1 1 1 1 1"});
    expectRefusal({curves, printedLabs("r.txt")}, 4, "m\\.txt");
}

// Columns that a chart has as well, in a matrix for an instrument.
TEST_F(oddFiles, correctionMatrix_isRefusedOrWarnedAbout) {
    const std::string matrix = folder.write(
        "m.txt", "CCMX\n\nDESCRIPTOR \"Colorimeter and panel\"\nCOLOR_REP \"XYZ\"\nNUMBER_OF_FIELDS 3\n"
                 "BEGIN_DATA_FORMAT\nXYZ_X XYZ_Y XYZ_Z\nEND_DATA_FORMAT\nNUMBER_OF_SETS 3\nBEGIN_DATA\n"
                 "1.04 0.02 0.01\n0.03 1.02 0.01\n0.01 0.01 1.07\nEND_DATA\n");
    expectRefusalOrWarning({matrix, matrix, "--pair", "order"}, "chart|matrix|CCMX");
}

TEST_F(oddFiles, surfaceOfAGamut_isRefusedOrWarnedAbout) {
    const std::string surface = folder.write(
        "m.txt", "GAMUT\n\nDESCRIPTOR \"Surface of a gamut\"\nNUMBER_OF_FIELDS 4\n"
                 "BEGIN_DATA_FORMAT\nVERTEX_NO LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\nNUMBER_OF_SETS 4\n"
                 "BEGIN_DATA\n0 95 0 0\n1 50 70 10\n2 50 -60 30\n3 10 0 0\nEND_DATA\n");
    expectRefusalOrWarning({surface, surface, "--pair", "order"}, "chart|gamut|vert");
}

// Names.

TEST_F(unknownNames, illuminant_isRefusedWithTheNearest) {
    expectRefusal({spectra("m.txt"), spectra("r.txt"), "--illuminant", "D51"}, 2,
                  "illuminant \"D51\".*did you mean [^)?]*D50");
}

TEST_F(unknownNames, illuminantInTheSpellingFL_isRefusedWithTheNearest) {
    expectRefusal({spectra("m.txt"), spectra("r.txt"), "--illuminant", "FL14"}, 2,
                  "illuminant \"FL14\".*did you mean [^)?]*F1[0-2]?");
}

TEST_F(unknownNames, observer_isRefusedWithTheKnownOnes) {
    expectRefusal({spectra("m.txt"), spectra("r.txt"), "--observer", "20"}, 2,
                  "observer \"20\".*2 degree.*10 degree");
}

TEST_F(unknownNames, formula_isRefusedWithTheNearest) {
    expectRefusal({spectra("m.txt"), spectra("r.txt"), "--formula", "CIEDE200"}, 2,
                  "formula \"CIEDE200\".*did you mean [^)?]*CIEDE2000");
}

TEST_F(unknownNames, shortSpellings_areUnderstood) {
    const std::string file = spectra("m.txt");
    const std::vector<std::array<std::string, 2>> spellings = {
        {"A", "A"}, {"C", "C"}, {"F11", "F11"}, {"FL11", "F11"}, {"D65", "D65"}, {"d50", "D50"}};
    for (const auto& [spelling, illuminant] : spellings)
        EXPECT_THAT(answer({file, file, "--illuminant", spelling})["conditions"]["illuminant"].dump(),
                    HasSubstr(illuminant + '"'))
            << spelling;
    for (const std::string observer : {"2", "10"})
        EXPECT_THAT(answer({file, file, "--observer", observer})["conditions"]["observer"].dump(),
                    HasSubstr('"' + observer + " degree\""));
}

// One vocabulary for files and the command; Lab declared as D50 and 2 degree contradicts another reading.
TEST_F(unknownNames, spellingsOfFiles_areUnderstood) {
    const std::string file = labs("m.txt", kUsualConditions);
    for (const std::string illuminant : {"Illuminant D50", "D 50", "D50 ", "CIE illuminant d50"})
        expectNoWarning({file, file, "--illuminant", illuminant});
    for (const std::string observer : {"2 deg", "2\xC2\xB0", "02", "CIE 1931 2 degree"})
        expectNoWarning({file, file, "--observer", observer});
    expectRefusal({file, file, "--illuminant", "D 65"}, 4, "D50.*D65 as asked for");
    expectRefusal({file, file, "--observer", "CIE 1964 10 degree"}, 4, "2 degree.*10 degree as asked for");
}

// What is as it should be.

TEST_F(soundFiles, labOfTheSameConditions_isAnsweredWithoutAWarning) {
    const nlohmann::json report =
        expectNoWarning({labs("m.txt", kUsualConditions), labs("r.txt", kUsualConditions)});
    EXPECT_EQ(report["statistics"]["count"], 25);
}

TEST_F(soundFiles, everyConditionDeclaredAlike_isAnsweredWithoutAWarning) {
    const std::string header = kUsualConditions + "MEASUREMENT_SOURCE \"MeasurementCondition=M1\"\n"
                                                  "MEASUREMENT_GEOMETRY \"45/0\"\nSAMPLE_BACKING \"white\"\n";
    expectNoWarning({printedLabs("m.txt", header), printedLabs("r.txt", header)});
}

TEST_F(soundFiles, otherSpellingsOfTheSameConditions_areAnsweredWithoutAWarning) {
    const std::string reference = labs("r.txt", kUsualConditions);
    const std::vector<std::string> headers = {
        "WEIGHTING_FUNCTION \"ILLUMINANT. D50\"\nWEIGHTING_FUNCTION \"OBSERVER. 2 degree\"\n",
        "WEIGHTING_FUNCTION \"ILLUMINANT,\tD50\"\nWEIGHTING_FUNCTION \"OBSERVER,\t2 degree\"\n",
        "ILLUMINATION_NAME \"D50\"\nOBSERVER_ANGLE \"2\"\n",
        "MEASUREMENT_SOURCE \"Illumination=D50\tObserverAngle=2degree\"\n"};
    for (const std::string& header : headers)
        expectNoWarning({labs("m.txt", header), reference});
}

TEST_F(soundFiles, conditionsAmongOtherWords_areAnsweredWithoutAWarning) {
    const std::string reference = labs("r.txt", kUsualConditions);
    const std::vector<std::string> headers = {
        "INSTRUMENTATION \"D50, 2 degree, geometry 45/0, no polarisation filter, white backing, according to "
        "ISO 13655\"\n",
        "MEASUREMENT_SOURCE \"D50, 2 degree, geometry 45/0, white backing, according to ISO 13655:2009\"\n",
        "MEASUREMENT_SOURCE \"Illumination=D50 ObserverAngle=2 WhiteBase=Abs\"\n",
        "SPECTRAL_ILLUMINANT \"D50\"\nSTANDARD_OBSERVER \"2\"\n"};
    for (const std::string& header : headers)
        expectNoWarning({labs("m.txt", header), reference});
}

TEST_F(soundFiles, standardsOfYearsAndGrammage_areAnsweredWithoutAWarning) {
    const std::string reference =
        labs("r.txt", kUsualConditions + "FILTER \"M1\"\nSAMPLE_BACKING \"white\"\n");
    const std::vector<std::string> lines = {
        "MEASUREMENT_CONDITION \"M1 according to ISO 13655:2009\"\nPRINT_CONDITIONS \"paper 115 g/m2\"\n",
        "FILTER \"M1 (ISO 13655:2017)\"\nFILE_DESCRIPTOR \"Machine M2\"\n"};
    for (const std::string& line : lines)
        expectNoWarning({labs("m.txt", kUsualConditions + line + "SAMPLE_BACKING \"white\"\n"), reference});
}

TEST_F(soundFiles, labForD65OnBothSides_isComparedForD65) {
    const std::string header = kD65 + kTenDegree;
    const nlohmann::json report =
        expectNoWarning({printedLabs("m.txt", header), printedLabs("r.txt", header)});
    EXPECT_THAT(report["conditions"]["illuminant"].dump(), HasSubstr("D65"));
    EXPECT_THAT(report["conditions"]["observer"].dump(), HasSubstr("10 degree"));
}

TEST_F(soundFiles, geometriesOfLightThereAndBack_areAnsweredWithoutAWarning) {
    const std::string reference = labs("r.txt", kUsualConditions + "MEASUREMENT_GEOMETRY \"0/45\"\n");
    for (const std::string geometry :
         {"45/0", "45:0", "0:45", "45a:0", "45\xC2\xB0/0\xC2\xB0", "45/0 circumferential", "Ill 45, Obs 0"})
        expectNoWarning(
            {labs("m.txt", kUsualConditions + "MEASUREMENT_GEOMETRY \"" + geometry + "\"\n"), reference});
}

TEST_F(soundFiles, filterLineChangesWhatTheGeometrySays) {
    const std::string reference = labs("r.txt", kUsualConditions + "MEASUREMENT_CONDITION \"M2\"\n");
    answer(
        {labs("m.txt", kUsualConditions + "MEASUREMENT_GEOMETRY \"Ill 45, Obs 0\"\nFILTER \"UV Filter\"\n"),
         reference});
}

TEST_F(soundFiles, filterBesideItsMeasurementCondition_isAnsweredWithoutAWarning) {
    expectNoWarning({labs("m.txt", kUsualConditions + "FILTER \"Pol Filter\"\n"),
                     labs("r.txt", kUsualConditions + "MEASUREMENT_CONDITION \"M3\"\n")});
}

TEST_F(soundFiles, lampOfTheInstrumentBesideTheIlluminant_isAnsweredWithoutAWarning) {
    expectNoWarning({labs("m.txt", kUsualConditions + "MEASUREMENT_SOURCE \"Illuminant A\"\n"),
                     labs("r.txt", kUsualConditions)});
}

TEST_F(soundFiles, illuminantInTheNameOfAFirm_isAnsweredWithoutAWarning) {
    expectNoWarning({labs("m.txt", "MANUFACTURER \"D65 and M2 Inc\"\nCREATED \"D65\"\n"),
                     labs("r.txt", "ORIGINATOR \"M1 Ltd\"\n")});
}

TEST_F(soundFiles, polarisingFilterAndM3_areOneCondition) {
    const std::string measured = labs("m.txt", kUsualConditions + "FILTER \"Pol\"\n");
    const std::string reference =
        labs("r.txt", kUsualConditions + "MEASUREMENT_SOURCE \"MeasurementCondition=M3\"\n");
    EXPECT_EQ(answer({measured, reference})["statistics"]["count"], 25);
}

TEST_F(soundFiles, bandsFrom400To700_areAnsweredWithoutAWarning) {
    const Sampling visible = {400, 700, 10};
    const std::string measured =
        spectraAs("m.txt", visible, [&](const Inks& inks) { return spectrum(inks, visible); });
    expectNoWarning({measured, spectra("r.txt")});
}

// Optical brighteners lift blue light above what falls in.
TEST_F(soundFiles, fluorescentPaper_isAnsweredWithoutAWarning) {
    const std::string measured = spectraAs("m.txt", kUsual, [](const Inks& inks) {
        std::vector<double> values;
        for (const int nm : kUsual.wavelengths()) {
            const double glow = nm >= 420 && nm <= 470 ? 1.15 / 0.85 : 1;
            values.push_back(glow * reflectanceOf(inks, nm));
        }
        return numbers(values.data(), values.size());
    });
    const nlohmann::json report = expectNoWarning({measured, measured});
    EXPECT_EQ(report["measured"]["spectra"]["percent"], false);
}

TEST_F(soundFiles, fluorescentPaperInPercent_isAnsweredWithoutAWarning) {
    const std::string measured = spectraAs("m.txt", kUsual, [](const Inks& inks) {
        std::vector<double> values;
        for (const int nm : kUsual.wavelengths()) {
            const double glow = nm >= 420 && nm <= 470 ? 115 / 0.85 : 100;
            values.push_back(glow * reflectanceOf(inks, nm));
        }
        return numbers(values.data(), values.size());
    });
    const nlohmann::json report = expectNoWarning({measured, measured});
    EXPECT_EQ(report["measured"]["spectra"]["percent"], true);
}

TEST_F(Mixup, bandsInTheOppositeOrder_areTold) {
    const std::string measured = spectraAs("m.txt", kUsual, [](const Inks& inks) {
        std::vector<double> values;
        for (const int nm : kUsual.wavelengths())
            values.insert(values.begin(), reflectanceOf(inks, nm));
        return numbers(values.data(), values.size());
    });
    expectWarning({measured, spectra("r.txt")}, "spectral values of .*m\\.txt were in the opposite order");
}

// Broad peaks between 450 and 650 nm, where a shift of 10 nm shows.
TEST_F(Mixup, bandsShiftedByOne_areTold) {
    const auto shiftedBy = [this](const std::string& name, int shift) {
        return spectraAs(name, kUsual, [shift](const Inks& inks) {
            std::vector<double> values;
            for (const int nm : kUsual.wavelengths()) {
                const double offset = (nm + shift - 450 - 2 * inks[0]) / 40;
                values.push_back(0.1 + (0.7 - inks[3] / 200) * std::exp(-offset * offset));
            }
            return numbers(values.data(), values.size());
        });
    };
    expectWarning({shiftedBy("m.txt", 10), shiftedBy("r.txt", 0)},
                  "spectral values of .*m\\.txt belonged to the next longer");
}

TEST_F(Mixup, exchangedXAndZ_areTold) {
    const std::string measured = chart("m.txt", kPrintedXyz,
                                       printed(smallChart(),
                                               [](const Inks& inks) {
                                                   const Triple xyz = xyzOf(labOf(inks));
                                                   return numbers(Triple{xyz[2], xyz[1], xyz[0]});
                                               }),
                                       kUsualConditions);
    expectWarning({measured, printedLabs("r.txt")}, "the patch without ink, .*X and Z are exchanged");
    expectWarning({measured, printedLabs("r.txt")}, "XYZ values of .*m\\.txt had X and Z exchanged");
}

TEST_F(Mixup, xyzOfD65CalledD50_areTold) {
    const std::string measured =
        chart("m.txt", kPrintedXyz,
              printed(smallChart(),
                      [](const Inks& inks) {
                          const Triple xyz = xyzOf(labOf(inks));
                          return numbers(Triple{xyz[0] * 95.047 / 96.422, xyz[1], xyz[2] * 108.883 / 82.521});
                      }),
              kUsualConditions);
    expectWarning({measured, printedLabs("r.txt")}, "as on the white of D65 instead");
    expectWarning({measured, printedLabs("r.txt")}, "were on the white of D65");
}

TEST_F(Mixup, unmeasuredSpectraAndXyzOfZero_areTold) {
    const auto isLeftOut = [](const Inks& inks) { return inks[0] == 20 || inks[0] == 50; };
    const std::string dark = spectraAs("m.txt", kUsual, [&](const Inks& inks) {
        return isLeftOut(inks) ? spectrum(inks, kUsual, 0) : spectrum(inks, kUsual);
    });
    expectWarning({dark, spectra("r.txt")}, "spectrum is 0 throughout");
    const std::string none =
        chart("n.txt", kPrintedXyz,
              printed(smallChart(),
                      [&](const Inks& inks) { return numbers(xyzOf(labOf(inks)), isLeftOut(inks) ? 0 : 1); }),
              kUsualConditions);
    expectWarning({none, printedLabs("l.txt")}, "XYZ is 0 0 0");
}

TEST_F(soundFiles, stripCutFromAChartAndShuffled_pairsCompletely) {
    const std::vector<Inks> whole = fullChart();
    std::vector<Inks> strip;
    for (std::size_t i = 0; i < 72; ++i)
        strip.push_back(whole[i * 22]);
    const std::string measured =
        chart("m.txt", kPrintedLab, printed(shuffled(strip), lighterLab), kUsualConditions);
    const std::string reference = chart("r.txt", kPrintedLab, printed(whole, labColumns), kUsualConditions);
    const nlohmann::json report = expectNoWarning({measured, reference, "--formula", "76"});
    EXPECT_EQ(report["statistics"]["count"], 72);
    EXPECT_NEAR(report["statistics"]["maximum"], 0.5, 1e-6);
    EXPECT_THAT(flatReport({measured, reference}),
                HasSubstr("72 of 72 paired by CMYK; 1,545 reference samples unused"));
}

} // namespace
} // namespace qxcms::tests
