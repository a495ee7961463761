// The gathering of solids: for each colorant the first sample that prints it alone at full strength.
#include <array>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/read_document.h"
#include "tests/support/reports.h"

namespace {

using qxcms::tests::ReadDocument;
using qxcms::tests::tableOf;

constexpr double kUntouched = -987.5;

// A caller's array: one slot of `length` values per colorant, all untouched at first.
class Slots {
public:
    Slots(std::size_t colorants, std::size_t length)
        : values(colorants, std::vector<double>(length, kUntouched)) {
        for (std::vector<double>& slot : values)
            pointers.push_back(slot.data());
    }
    Slots(const Slots&) = delete;
    Slots& operator=(const Slots&) = delete;

    double* const* result() { return pointers.data(); }
    const std::vector<double>& operator[](std::size_t slot) const { return values[slot]; }
    void forget(std::size_t slot) { pointers[slot] = nullptr; }
    bool untouched() const {
        for (const std::vector<double>& slot : values)
            if (slot != std::vector<double>(slot.size(), kUntouched))
                return false;
        return true;
    }

private:
    std::vector<std::vector<double>> values;
    std::vector<double*> pointers;
};

const std::string kCmykLab = "CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B";

// The inks of which one sample with these four ink values is taken for the solid: "C", "M", "Y", "K" or none.
std::string solidOf(const std::string& inks) {
    const ReadDocument document(tableOf(kCmykLab, {inks + " 55 -37 -50"}));
    Slots slots(4, 3);
    // The other inks have no solid.
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 1);
    std::string found;
    for (std::size_t ink = 0; ink < 4; ++ink)
        if (slots[ink] == std::vector<double>{55, -37, -50})
            found += "CMYK"[ink];
        else
            EXPECT_EQ(slots[ink], std::vector<double>(3, kUntouched));
    return found;
}

std::vector<std::string> cmykSolids() {
    return {"100 0 0 0 55 -37 -50", "0 100 0 0 48 74 -3", "0 0 100 0 89 -5 93", "0 0 0 100 16 1 2"};
}

// Spectra (as fractions) and CIELAB of two custom colours; the second colour's solid comes first.
std::string customColors() {
    return "PROCESSCOLOR_ID \"Orange\"\n" + tableOf("PC1_1 PC1_2 nm500 nm400 nm600 LAB_L LAB_A LAB_B",
                                                    {"0 100 0.2 0.1 0.3 1 2 3", "100 0 0.5 0.4 0.6 4 5 6"});
}

TEST(solidPatches, lab_ofEveryInkIsFound) {
    const ReadDocument document(tableOf(kCmykLab, cmykSolids()));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 0);
    EXPECT_EQ(slots[0], (std::vector<double>{55, -37, -50}));
    EXPECT_EQ(slots[1], (std::vector<double>{48, 74, -3}));
    EXPECT_EQ(slots[2], (std::vector<double>{89, -5, 93}));
    EXPECT_EQ(slots[3], (std::vector<double>{16, 1, 2}));
}

TEST(solidPatches, firstSolid_ofAnInkIsTakenAndLaterOnesAreNot) {
    // The third sample and the fortieth are solids of cyan.
    std::vector<std::string> rows(40, "50 40 40 10 60 0 0");
    rows[2] = "100 0 0 0 55 -37 -50";
    rows[10] = "0 100 0 0 48 74 -3";
    rows[20] = "0 0 100 0 89 -5 93";
    rows[30] = "0 0 0 100 16 1 2";
    rows[39] = "100 0 0 0 11 22 33";
    const ReadDocument document(tableOf(kCmykLab, rows));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 0);
    EXPECT_EQ(slots[0], (std::vector<double>{55, -37, -50}));
}

TEST(solidPatches, traceOfAnotherInk_belowHalfAPercentStillLeavesASolid) {
    EXPECT_EQ(solidOf("100 0.4 0 0"), "C");
    EXPECT_EQ(solidOf("0.4999 0.4999 100 0.4999"), "Y");
    EXPECT_EQ(solidOf("-3 0 0 100"), "K");
}

TEST(solidPatches, halfAPercentOfAnotherInk_isNoSolid) {
    EXPECT_EQ(solidOf("100 0.5 0 0"), "");
    EXPECT_EQ(solidOf("0.5 0 0 100"), "");
    EXPECT_EQ(solidOf("40 100 0 0"), "");
}

TEST(solidPatches, inkOfExactly99Point5_isNoSolid) {
    EXPECT_EQ(solidOf("99.5 0 0 0"), "");
    EXPECT_EQ(solidOf("99.51 0 0 0"), "C");
    EXPECT_EQ(solidOf("0 400 0 0"), "M");
}

TEST(solidPatches, secondInk_ofExactly99Point5DisqualifiesTheSample) {
    EXPECT_EQ(solidOf("100 99.5 0 0"), "");
    EXPECT_EQ(solidOf("99.5 100 0 0"), "");
}

TEST(solidPatches, twoFullInks_areNoSolid) {
    EXPECT_EQ(solidOf("100 100 0 0"), "");
    EXPECT_EQ(solidOf("100 0 0 99.6"), "");
    EXPECT_EQ(solidOf("0 100 100 0"), "");
    EXPECT_EQ(solidOf("100 100 100 0"), "");
}

TEST(solidPatches, paper_isNoSolid) {
    EXPECT_EQ(solidOf("0 0 0 0"), "");
}

TEST(solidPatches, missingSolid_leavesItsSlotAndFillsTheOthers) {
    std::vector<std::string> rows = cmykSolids();
    rows[3] = "0 0 0 99.5 16 1 2";
    const ReadDocument document(tableOf(kCmykLab, rows));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 1);
    EXPECT_EQ(slots[0], (std::vector<double>{55, -37, -50}));
    EXPECT_EQ(slots[1], (std::vector<double>{48, 74, -3}));
    EXPECT_EQ(slots[2], (std::vector<double>{89, -5, 93}));
    EXPECT_EQ(slots[3], std::vector<double>(3, kUntouched));
}

TEST(solidPatches, slots_goByChannelAndNotByColumn) {
    const ReadDocument document(
        tableOf("CMYK_K CMYK_Y CMYK_M CMYK_C LAB_L LAB_A LAB_B",
                {"100 0 0 0 16 1 2", "0 100 0 0 89 -5 93", "0 0 100 0 48 74 -3", "0 0 0 100 55 -37 -50"}));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 0);
    EXPECT_EQ(slots[0], (std::vector<double>{55, -37, -50}));
    EXPECT_EQ(slots[3], (std::vector<double>{16, 1, 2}));
}

TEST(solidPatches, customColors_areGathered) {
    const ReadDocument document(customColors());
    Slots slots(2, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 0);
    EXPECT_EQ(slots[0], (std::vector<double>{4, 5, 6}));
    EXPECT_EQ(slots[1], (std::vector<double>{1, 2, 3}));
}

TEST(solidPatches, nColors_areGathered) {
    const ReadDocument document(tableOf("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5 LAB_L LAB_A LAB_B",
                                        {"0 0 0 0 100 5 5 5", "0 0 0 100 0 4 4 4", "0 0 100 0 0 3 3 3",
                                         "0 100 0 0 0 2 2 2", "100 0 0 0 0 1 1 1"}));
    Slots slots(5, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 0);
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(slots[i], std::vector<double>(3, static_cast<double>(i + 1)));
}

TEST(solidPatches, spectra_comeByAscendingWavelength) {
    const ReadDocument document(customColors());
    Slots slots(2, 3);
    EXPECT_EQ(document.GetProcessColorSpectra(0, slots.result()), 0);
    EXPECT_EQ(slots[0], (std::vector<double>{0.4, 0.5, 0.6}));
    EXPECT_EQ(slots[1], (std::vector<double>{0.1, 0.2, 0.3}));
}

TEST(solidPatches, spectra_inPercentComeAsFractions) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" + tableOf("PC1_1 nm400 nm410", {"100 57 3"}));
    Slots slots(1, 2);
    EXPECT_EQ(document.GetProcessColorSpectra(0, slots.result()), 0);
    EXPECT_EQ(slots[0], (std::vector<double>{57 * 0.01, 3 * 0.01}));
}

TEST(solidPatches, processColorValues_giveWhatTheCallerAsksFor) {
    const ReadDocument document(customColors());
    Slots spectra(2, 3);
    EXPECT_EQ(document.GetProcessColorValues(0, spectra.result(), true), 0);
    EXPECT_EQ(spectra[0], (std::vector<double>{0.4, 0.5, 0.6}));
    Slots lab(2, 3);
    EXPECT_EQ(document.GetProcessColorValues(0, lab.result(), false), 0);
    EXPECT_EQ(lab[0], (std::vector<double>{4, 5, 6}));
}

TEST(solidPatches, colorValues_giveWhatTheWrappersGive) {
    const ReadDocument document(customColors());
    Slots spectra(2, 3);
    EXPECT_EQ(document.GetColorValues(0, spectra.result(), true, true), 0);
    EXPECT_EQ(spectra[1], (std::vector<double>{0.1, 0.2, 0.3}));
    Slots lab(2, 3);
    EXPECT_EQ(document.GetColorValues(0, lab.result(), false, true), 0);
    EXPECT_EQ(lab[1], (std::vector<double>{1, 2, 3}));
}

// The solids are looked for in the table that is asked, their colours are read from the first table.

TEST(solidPatches, lab_isReadFromTheFirstTableWhateverTableIsAsked) {
    const ReadDocument document(tableOf("LAB_L LAB_A LAB_B", {"1 1 1", "2 2 2", "3 3 3", "4 4 4"}) +
                                tableOf(kCmykLab, cmykSolids()));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetProcessColorLab(1, slots.result()), 0);
    EXPECT_EQ(slots[0], (std::vector<double>{1, 1, 1}));
    EXPECT_EQ(slots[3], (std::vector<double>{4, 4, 4}));
}

TEST(solidPatches, spectrum_isReadFromTheFirstTableWhateverTableIsAsked) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" + tableOf("nm400 nm410", {"0.5 57"}) +
                                tableOf("PC1_1 nm400 nm410", {"100 0.25 0.5"}));
    Slots slots(1, 2);
    EXPECT_EQ(document.GetProcessColorSpectra(1, slots.result()), 0);
    // The first table is in percent, the second is not.
    EXPECT_EQ(slots[0], (std::vector<double>{0.5 * 0.01, 57 * 0.01}));
}

TEST(solidPatches, solidBeyondTheRowsOfTheFirstTable_endsWithOne) {
    const ReadDocument document(tableOf("LAB_L LAB_A LAB_B", {"1 1 1", "2 2 2"}) +
                                tableOf(kCmykLab, cmykSolids()));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetProcessColorLab(1, slots.result()), 1);
    EXPECT_EQ(slots[1], (std::vector<double>{2, 2, 2}));
    EXPECT_EQ(slots[2], std::vector<double>(3, kUntouched));
}

TEST(solidPatches, firstTableWithoutTheValues_endsWithOne) {
    const ReadDocument document(tableOf("SAMPLE_ID", {"1", "2", "3", "4"}) + tableOf(kCmykLab, cmykSolids()));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetProcessColorLab(1, slots.result()), 1);
    EXPECT_TRUE(slots.untouched());
}

TEST(solidPatches, nullSlotOfASolid_endsWithOne) {
    const ReadDocument document(tableOf(kCmykLab, cmykSolids()));
    Slots slots(4, 3);
    slots.forget(1);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 1);
    EXPECT_EQ(slots[0], (std::vector<double>{55, -37, -50}));
    EXPECT_EQ(slots[2], std::vector<double>(3, kUntouched));
}

// Solids of spots are never found: the spot values are not read.

TEST(solidPatches, spotColors_findNoSolid) {
    const ReadDocument document(
        tableOf("SPOT_1 SPOT_2 LAB_L LAB_A LAB_B nm400", {"100 0 1 2 3 0.5", "0 100 4 5 6 0.25"}));
    Slots slots(2, 3);
    EXPECT_EQ(document.GetSpotColorValues(0, slots.result(), false), 1);
    EXPECT_TRUE(slots.untouched());
    EXPECT_EQ(document.GetSpotColorValues(0, slots.result(), true), 1);
    EXPECT_TRUE(slots.untouched());
    EXPECT_EQ(document.GetColorValues(0, slots.result(), false, false), 1);
    EXPECT_TRUE(slots.untouched());
}

TEST(solidPatches, spotColors_besideProcessColorsFindNoSolidEither) {
    const ReadDocument document(tableOf("SPOT_1 " + kCmykLab, {"100 0 0 0 0 1 2 3", "0 100 0 0 0 4 5 6"}));
    Slots slots(1, 3);
    EXPECT_EQ(document.GetSpotColorValues(0, slots.result(), false), 1);
    EXPECT_TRUE(slots.untouched());
}

// What a table must hold.

TEST(solidPatches, tableWithoutProcessColors_isRefused) {
    const ReadDocument document(tableOf("SPOT_1 LAB_L LAB_A LAB_B nm400", {"100 1 2 3 0.5"}));
    Slots slots(1, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 1);
    EXPECT_EQ(document.GetProcessColorSpectra(0, slots.result()), 1);
    EXPECT_TRUE(slots.untouched());
}

TEST(solidPatches, tableWithoutSpectra_isRefusedForSpectra) {
    const ReadDocument document(tableOf(kCmykLab, cmykSolids()));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetProcessColorSpectra(0, slots.result()), 1);
    EXPECT_EQ(document.GetProcessColorValues(0, slots.result(), true), 1);
    EXPECT_TRUE(slots.untouched());
}

TEST(solidPatches, tableWithoutLab_isRefusedForLab) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" +
                                tableOf("PC1_1 nm400 XYZ_X XYZ_Y XYZ_Z", {"100 0.5 1 2 3"}));
    Slots slots(1, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 1);
    EXPECT_EQ(document.GetProcessColorValues(0, slots.result(), false), 1);
    EXPECT_TRUE(slots.untouched());
}

TEST(solidPatches, tableAsked_mustHoldTheValuesItself) {
    const ReadDocument document(
        tableOf("LAB_L LAB_A LAB_B", {"1 1 1", "2 2 2", "3 3 3", "4 4 4"}) +
        tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K", {"100 0 0 0", "0 100 0 0", "0 0 100 0", "0 0 0 100"}));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetProcessColorLab(1, slots.result()), 1);
    EXPECT_TRUE(slots.untouched());
}

TEST(solidPatches, tableWithoutSpots_isRefusedForSpots) {
    const ReadDocument document(tableOf(kCmykLab, cmykSolids()));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetSpotColorValues(0, slots.result(), false), 1);
    EXPECT_TRUE(slots.untouched());
}

TEST(solidPatches, customColorNumberGivenTwice_isRefused) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" +
                                tableOf("PC1_1 PC1_1 LAB_L LAB_A LAB_B", {"100 0 1 2 3", "0 100 4 5 6"}));
    Slots slots(2, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 1);
    EXPECT_TRUE(slots.untouched());
}

TEST(solidPatches, badTable_isRefused) {
    const ReadDocument document(customColors());
    Slots slots(2, 3);
    for (const int table : {-1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(document.GetProcessColorLab(table, slots.result()), 1);
        EXPECT_EQ(document.GetProcessColorSpectra(table, slots.result()), 1);
        EXPECT_EQ(document.GetProcessColorValues(table, slots.result(), true), 1);
        EXPECT_EQ(document.GetSpotColorValues(table, slots.result(), true), 1);
        EXPECT_EQ(document.GetColorValues(table, slots.result(), false, true), 1);
    }
    EXPECT_TRUE(slots.untouched());
}

TEST(solidPatches, documentInError_isRefused) {
    const ReadDocument document(customColors());
    document.SetErrorCode(1);
    Slots slots(2, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 1);
    EXPECT_EQ(document.GetProcessColorSpectra(0, slots.result()), 1);
    EXPECT_EQ(document.GetProcessColorValues(0, slots.result(), false), 1);
    EXPECT_EQ(document.GetColorValues(0, slots.result(), true, true), 1);
    EXPECT_TRUE(slots.untouched());
}

TEST(solidPatches, nullResult_isRefused) {
    const ReadDocument document(tableOf("SPOT_1 " + kCmykLab + " nm400", {"9 100 0 0 0 1 2 3 0.5"}));
    EXPECT_EQ(document.GetProcessColorLab(0, nullptr), 1);
    EXPECT_EQ(document.GetProcessColorSpectra(0, nullptr), 1);
    EXPECT_EQ(document.GetProcessColorValues(0, nullptr, false), 1);
    EXPECT_EQ(document.GetSpotColorValues(0, nullptr, false), 1);
    EXPECT_EQ(document.GetColorValues(0, nullptr, false, true), 1);
}

TEST(solidPatches, refusals_reportNothingAndRecordNoError) {
    const qxcms::tests::ReportCollector reports;
    const ReadDocument document(tableOf(kCmykLab, {"0 0 0 0 95 0 0"}));
    Slots slots(4, 3);
    EXPECT_EQ(document.GetProcessColorLab(0, slots.result()), 1);
    EXPECT_EQ(document.GetProcessColorSpectra(0, slots.result()), 1);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_TRUE(reports.errors.empty());
    EXPECT_TRUE(reports.warnings.empty());
}

} // namespace
