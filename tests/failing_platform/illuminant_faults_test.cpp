// Illuminants and their files when the platform or the memory fails.
#include <string>

#include <gmock/gmock.h>

#include "spectral/tilluminant.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Pair;

const std::string kTextImage = "QXILTEXT\nLamp\n2 400 700 1 1\n";

class IlluminantFaults : public OnSubstitutePlatform {
protected:
    void SetUp() override {
        OnSubstitutePlatform::SetUp();
        platform().files["root:[ill]lamp.ill"] = kTextImage;
    }

    static int statusOfFile() { return TIlluminant("root:[ill]lamp.ill").GetStatus(); }

    TSpectrum spectrum = spectrumOf(kD65);
};

using illuminantFaults = IlluminantFaults;

// Reading files.

TEST_F(illuminantFaults, file_isOpenedForReadingByTheNameGivenAndClosed) {
    EXPECT_EQ(statusOfFile(), 0);
    EXPECT_THAT(platform().opened, ElementsAre(Pair("root:[ill]lamp.ill", "r")));
    EXPECT_EQ(platform().filesInUse, 0);
}

TEST_F(illuminantFaults, wrongExtension_opensNothing) {
    EXPECT_EQ(TIlluminant("root:[ill]lamp.txt").GetStatus(), 2);
    EXPECT_TRUE(platform().opened.empty());
}

TEST_F(illuminantFaults, fileThatCannotBeOpened_givesStatus4) {
    platform().refusesToOpen = true;
    const TIlluminant illuminant("root:[ill]lamp.ill");
    EXPECT_EQ(illuminant.GetStatus(), 4);
    EXPECT_EQ(illuminant.GetName(), nullptr);
    EXPECT_EQ(illuminant.GetSpectrum(), nullptr);
}

TEST_F(illuminantFaults, shortRead_givesStatus4AndClosesTheFile) {
    for (const long missing : {1L, 10L, 1000L}) {
        platform().bytesNotRead = missing;
        const TIlluminant illuminant("root:[ill]lamp.ill");
        EXPECT_EQ(illuminant.GetStatus(), 4) << missing;
        EXPECT_EQ(illuminant.GetName(), nullptr) << missing;
        EXPECT_EQ(platform().filesInUse, 0) << missing;
    }
}

TEST_F(illuminantFaults, sizeThatCannotBeTold_givesStatus5AndClosesTheFile) {
    platform().hidesSizes = true;
    EXPECT_EQ(statusOfFile(), 5);
    EXPECT_EQ(platform().filesInUse, 0);
}

TEST_F(illuminantFaults, fileOfARefusedSize_isClosed) {
    for (const std::size_t size : {0u, 3u, 2049u, 100000u}) {
        platform().files["root:[ill]lamp.ill"] = std::string(size, 'x');
        EXPECT_EQ(statusOfFile(), 5) << size;
        EXPECT_EQ(platform().filesInUse, 0) << size;
    }
}

TEST_F(illuminantFaults, fileOfARefusedForm_isClosed) {
    platform().files["root:[ill]lamp.ill"] = "no illuminant";
    EXPECT_EQ(statusOfFile(), 5);
    EXPECT_EQ(platform().filesInUse, 0);
}

TEST_F(illuminantFaults, spectrumWithoutATable_givesStatus1AndReplaces) {
    platform().refusesTables = true;
    const TIlluminant illuminant("root:[ill]lamp.ill");
    EXPECT_EQ(illuminant.GetStatus(), 1);
    EXPECT_STREQ(illuminant.GetName(), "Lamp");
    ASSERT_NE(illuminant.GetSpectrum(), nullptr);
    EXPECT_EQ(illuminant.GetSpectrum()->GetStatus(), 1);
    EXPECT_THAT(standardOf(*illuminant.GetSpectrum()), Each(-1.0));
}

// Saving.

TEST_F(illuminantFaults, save_opensForWritingByTheNameGivenAndCloses) {
    TIlluminant lamp(&spectrum, "D65");
    EXPECT_EQ(lamp.Save("root:[ill]d65.ill"), 0);
    EXPECT_THAT(platform().opened, ElementsAre(Pair("root:[ill]d65.ill", "w")));
    EXPECT_EQ(platform().filesInUse, 0);
    EXPECT_EQ(platform().files["root:[ill]d65.ill"].substr(0, 12), "QXILV100\x03"
                                                                   "D65");
    EXPECT_EQ(platform().files["root:[ill]d65.ill"].size(), 12u + 76);
}

TEST_F(illuminantFaults, saveWhereNothingCanBeOpened_answers4) {
    TIlluminant lamp(&spectrum, "D65");
    platform().refusesToOpen = true;
    EXPECT_EQ(lamp.Save("d65.ill"), 4);
    EXPECT_TRUE(platform().files.find("d65.ill") == platform().files.end());
}

TEST_F(illuminantFaults, refusedSave_opensNothing) {
    TIlluminant nothing(static_cast<const TSpectrum*>(nullptr), "D65");
    TIlluminant tooLong(&spectrum, std::string(256, 'n').c_str());
    EXPECT_EQ(nothing.Save("a.ill"), 3);
    EXPECT_EQ(tooLong.Save("a.ill"), 3);
    EXPECT_EQ(tooLong.Save(nullptr), 2);
    EXPECT_TRUE(platform().opened.empty());
}

TEST_F(illuminantFaults, shortWrite_answers4AndClosesTheFile) {
    int failures = 0;
    for (int write = 0; write < 10; ++write) {
        platform().failingWrite = write;
        TIlluminant lamp(&spectrum, "Lamp");
        const int answer = lamp.Save("lamp.ill");
        EXPECT_EQ(platform().filesInUse, 0) << write;
        if (answer == 0)
            break; // there are no more writes
        EXPECT_EQ(answer, 4) << write;
        ++failures;
    }
    EXPECT_GT(failures, 0);
}

TEST_F(illuminantFaults, writeLostOnClosing_answers4) {
    TIlluminant lamp(&spectrum, "D65");
    platform().losesWritesOnClose = true;
    EXPECT_EQ(lamp.Save("d65.ill"), 4);
    EXPECT_EQ(platform().filesInUse, 0);
}

TEST_F(illuminantFaults, failedSave_leavesTheIlluminantAsItWas) {
    TIlluminant lamp(&spectrum, "D65");
    platform().refusesToOpen = true;
    EXPECT_EQ(lamp.Save("d65.ill"), 4);
    EXPECT_EQ(lamp.GetStatus(), 0);
    EXPECT_STREQ(lamp.GetName(), "D65");
    EXPECT_THAT(standardOf(*lamp.GetSpectrum()), ElementsAreArray(kD65));
}

// No memory.

void expectWholeOrBad(const TIlluminant& illuminant, const char* name, const AllocationFaults& faults) {
    if (illuminant.GetStatus() != 0) {
        EXPECT_TRUE(faults.happened());
        return;
    }
    ASSERT_NE(illuminant.GetName(), nullptr);
    EXPECT_STREQ(illuminant.GetName(), name);
    ASSERT_NE(illuminant.GetSpectrum(), nullptr);
    EXPECT_EQ(illuminant.GetSpectrum()->GetStatus(), 0);
    EXPECT_THAT(standardOf(*illuminant.GetSpectrum()), Each(1.0));
}

TEST_F(illuminantFaults, illuminantFromASpectrumWithoutMemory_isBad) {
    const TSpectrum samples("2 400 700 1 1");
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TIlluminant illuminant(&samples, "Lamp");
        faults.disarm();
        expectWholeOrBad(illuminant, "Lamp", faults);
        EXPECT_EQ(illuminant.GetStatus() != 0, faults.happened());
    });
}

TEST_F(illuminantFaults, illuminantFromAFileWithoutMemory_isBadAndTheFileIsClosed) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TIlluminant illuminant("root:[ill]lamp.ill");
        faults.disarm();
        expectWholeOrBad(illuminant, "Lamp", faults);
        EXPECT_EQ(illuminant.GetStatus() != 0, faults.happened());
        EXPECT_EQ(platform().filesInUse, 0);
    });
}

TEST_F(illuminantFaults, illuminantFromAnImageWithoutMemory_isBad) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TIlluminant illuminant(static_cast<const void*>(kTextImage.c_str()));
        faults.disarm();
        expectWholeOrBad(illuminant, "Lamp", faults);
        EXPECT_EQ(illuminant.GetStatus() != 0, faults.happened());
    });
}

TEST_F(illuminantFaults, readFromWithoutMemory_leavesAnIlluminantThatCanBeUsed) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TIlluminant illuminant(&spectrum, "old");
        faults.arm();
        const int answer = illuminant.ReadFrom(kTextImage.c_str());
        faults.disarm();
        EXPECT_EQ(answer != 0, faults.happened());
        ASSERT_NE(illuminant.GetName(), nullptr);
        ASSERT_NE(illuminant.GetSpectrum(), nullptr);
        EXPECT_EQ(illuminant.ReadFrom(kTextImage.c_str()), 0);
        EXPECT_STREQ(illuminant.GetName(), "Lamp");
    });
}

TEST_F(illuminantFaults, saveWithoutMemory_failsAndWritesNothing) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TIlluminant lamp(&spectrum, "D65");
        platform().files.erase("d65.ill");
        faults.arm();
        const int answer = lamp.Save("d65.ill");
        faults.disarm();
        EXPECT_EQ(answer != 0, faults.happened());
        EXPECT_EQ(platform().files.count("d65.ill") == 0, faults.happened());
        EXPECT_EQ(platform().filesInUse, 0);
    });
}

} // namespace
} // namespace qxcms::tests
