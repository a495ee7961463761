// Illuminants and their files when the platform or the memory fails.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

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

void expectLamp(const TIlluminant& illuminant) {
    EXPECT_EQ(illuminant.GetStatus(), 0);
    EXPECT_STREQ(illuminant.GetName(), "Lamp");
    ASSERT_NE(illuminant.GetSpectrum(), nullptr);
    EXPECT_EQ(illuminant.GetSpectrum()->GetStatus(), 0);
    EXPECT_EQ(illuminant.GetSpectrum()->GetNrSamples(), 2);
    EXPECT_THAT(standardOf(*illuminant.GetSpectrum()), Each(1.0));
}

// Status 3 and nothing half made; once there is memory an image can still be read into it.
template <class... Arguments>
void expectStatus3WithoutMemory(Arguments... arguments) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TIlluminant illuminant(arguments...);
        faults.disarm();
        if (faults.happened()) {
            EXPECT_EQ(illuminant.GetStatus(), 3);
            EXPECT_EQ(illuminant.GetName(), nullptr);
            EXPECT_EQ(illuminant.GetSpectrum(), nullptr);
            EXPECT_EQ(illuminant.Save("lamp.ill"), 3);
            EXPECT_EQ(illuminant.ReadFrom(kTextImage.c_str()), 0);
            EXPECT_STREQ(illuminant.GetName(), "Lamp");
        } else {
            expectLamp(illuminant);
        }
        EXPECT_EQ(platform().filesInUse, 0);
    });
}

// Magic, version, length of the name, name, and a spectrum of two samples of 1 (65535 times 2^0).
std::vector<std::uint16_t> binaryImage() {
    const char head[] = "QXILV100\x04Lamp";
    const std::uint16_t words[] = {1, 2, 400, 700, 0, 65535, 65535};
    std::vector<std::uint16_t> image(7 + std::size(words)); // 13 bytes of head, one to fill up
    std::memcpy(image.data(), head, sizeof head - 1);
    std::copy(std::begin(words), std::end(words), image.begin() + 7);
    return image;
}

TEST_F(illuminantFaults, illuminantFromASpectrumWithoutMemory_hasStatus3) {
    const TSpectrum samples("2 400 700 1 1");
    expectStatus3WithoutMemory(&samples, "Lamp");
}

TEST_F(illuminantFaults, illuminantFromATextFileWithoutMemory_hasStatus3AndTheFileIsClosed) {
    expectStatus3WithoutMemory("root:[ill]lamp.ill");
}

TEST_F(illuminantFaults, illuminantFromABinaryFileWithoutMemory_hasStatus3AndTheFileIsClosed) {
    const std::vector<std::uint16_t> image = binaryImage();
    platform().files["root:[ill]lamp.ill"].assign(reinterpret_cast<const char*>(image.data()),
                                                  2 * image.size());
    expectStatus3WithoutMemory("root:[ill]lamp.ill");
}

TEST_F(illuminantFaults, illuminantFromATextImageWithoutMemory_hasStatus3) {
    expectStatus3WithoutMemory(static_cast<const void*>(kTextImage.c_str()));
}

TEST_F(illuminantFaults, illuminantFromABinaryImageWithoutMemory_hasStatus3) {
    const std::vector<std::uint16_t> image = binaryImage();
    expectStatus3WithoutMemory(static_cast<const void*>(image.data()));
}

TEST_F(illuminantFaults, readFromWithoutMemory_answers3AndReplacesNothing) {
    const std::vector<std::uint16_t> binary = binaryImage();
    for (const void* image :
         {static_cast<const void*>(kTextImage.c_str()), static_cast<const void*>(binary.data())}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            TIlluminant illuminant(&spectrum, "old");
            faults.arm();
            const int answer = illuminant.ReadFrom(image);
            faults.disarm();
            EXPECT_EQ(illuminant.GetStatus(), 0);
            if (faults.happened()) {
                EXPECT_EQ(answer, 3);
                EXPECT_STREQ(illuminant.GetName(), "old");
                ASSERT_NE(illuminant.GetSpectrum(), nullptr);
                EXPECT_THAT(standardOf(*illuminant.GetSpectrum()), ElementsAreArray(kD65));
                EXPECT_EQ(illuminant.ReadFrom(image), 0);
            }
            expectLamp(illuminant);
        });
    }
}

TEST_F(illuminantFaults, saveWithoutMemory_answers3WritesNothingAndWorksLater) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TIlluminant lamp(&spectrum, "D65");
        platform().files.erase("d65.ill");
        faults.arm();
        const int answer = lamp.Save("d65.ill");
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 3 : 0);
        EXPECT_EQ(platform().files.count("d65.ill") == 0, faults.happened());
        EXPECT_EQ(platform().filesInUse, 0);
        EXPECT_EQ(lamp.GetStatus(), 0);
        const AllocationTruce truce;
        EXPECT_EQ(lamp.Save("d65.ill"), 0);
        EXPECT_EQ(platform().files["d65.ill"].size(), 12u + 76);
    });
}

} // namespace
} // namespace qxcms::tests
