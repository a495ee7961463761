// The illuminant file: its binary and its text form, in files and in memory.
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "platform/logical_names.h"
#include "spectral/tilluminant.h"
#include "tests/spectral/known_spectra.h"
#include "tests/support/reports.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;

const std::string kBinary = "QXILV100";
const std::string kText = "QXILTEXT";

std::string bytesOf(const std::vector<std::uint16_t>& words) {
    std::string result(words.size() * 2, '\0');
    std::memcpy(result.data(), words.data(), result.size());
    return result;
}

std::string fileDataOf(TSpectrum spectrum) {
    int size = 0;
    const std::uint16_t* const data = spectrum.ToFileData(&size);
    return bytesOf({data, data + size / 2});
}

// 1.0 at 500 nm: flat.
const std::vector<std::uint16_t> kFlatWords = {1, 1, 500, 0, 65535};

std::string binaryImage(const std::string& name, const std::string& fileData) {
    std::string image = kBinary + static_cast<char>(name.size()) + name;
    if (name.size() % 2 == 0)
        image += '\0';
    return image + fileData;
}

// A file image in memory at an even address that ends with its last byte.
class Image {
public:
    explicit Image(const std::string& bytes) : memory(new char[bytes.size()]) {
        std::memcpy(memory.get(), bytes.data(), bytes.size());
    }
    const void* get() const { return memory.get(); }

private:
    std::unique_ptr<char[]> memory;
};

// The same with a terminator: a text image in memory ends like any text.
Image textImage(const std::string& bytes) {
    return Image(bytes + '\0');
}

class IlluminantFile : public testing::Test {
protected:
    // The status that a file of these bytes gives; the illuminant is kept.
    int statusOf(const std::string& bytes, const std::string& name = "lamp.ill") {
        illuminant = std::make_unique<TIlluminant>(scratch.write(name, bytes).c_str());
        return illuminant->GetStatus();
    }

    int statusOfImage(const Image& image) {
        illuminant = std::make_unique<TIlluminant>(image.get());
        return illuminant->GetStatus();
    }

    void expectNothingKept() const {
        EXPECT_EQ(illuminant->GetName(), nullptr);
        EXPECT_EQ(illuminant->GetSpectrum(), nullptr);
    }

    void expectFlat(const std::string& name) const {
        EXPECT_EQ(illuminant->GetStatus(), 0);
        ASSERT_NE(illuminant->GetName(), nullptr);
        EXPECT_EQ(illuminant->GetName(), name);
        ASSERT_NE(illuminant->GetSpectrum(), nullptr);
        EXPECT_EQ(illuminant->GetSpectrum()->GetStatus(), 0);
        EXPECT_THAT(standardOf(*illuminant->GetSpectrum()), Each(1.0));
    }

    ScratchFolder scratch;
    ReportCollector reports; // nothing here reports
    std::unique_ptr<TIlluminant> illuminant;

    void TearDown() override {
        EXPECT_TRUE(reports.errors.empty());
        EXPECT_TRUE(reports.warnings.empty());
    }
};

using illuminantFile = IlluminantFile;
using illuminantImage = IlluminantFile;
using illuminantText = IlluminantFile;

// Saving.

TEST_F(illuminantFile, save_writesMagicVersionNameAndFileData) {
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant d65(&spectrum, "D65");
    const std::string file = scratch.path("d65.ill");
    EXPECT_EQ(d65.Save(file.c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(file), std::string("QXILV100\x03"
                                                     "D65") +
                                             fileDataOf(spectrum));
    EXPECT_EQ(d65.GetStatus(), 0);
}

TEST_F(illuminantFile, saveOfANameOfEvenLength_writesOneZeroByteBehindIt) {
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant even(&spectrum, "Lamp");
    const std::string file = scratch.path("even.ill");
    EXPECT_EQ(even.Save(file.c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(file), std::string("QXILV100\x04Lamp\0", 14) + fileDataOf(spectrum));
}

TEST_F(illuminantFile, saveOfAnEmptyName_writesOneZeroByte) {
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant nameless(&spectrum, "");
    const std::string file = scratch.path("empty.ill");
    EXPECT_EQ(nameless.Save(file.c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(file), std::string("QXILV100\0\0", 10) + fileDataOf(spectrum));
    EXPECT_EQ(statusOf(ScratchFolder::read(file)), 0);
    EXPECT_STREQ(illuminant->GetName(), "");
}

TEST_F(illuminantFile, save_replacesAFileAndNeedsNoExtension) {
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant d65(&spectrum, "D65");
    const std::string file = scratch.write("other.dat", std::string(4000, 'x'));
    EXPECT_EQ(d65.Save(file.c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(file).size(), 4u + 4 + 1 + 3 + 76);
}

TEST_F(illuminantFile, saveToANullName_answers2) {
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant d65(&spectrum, "D65");
    EXPECT_EQ(d65.Save(nullptr), 2);
    TIlluminant nothing(static_cast<const TSpectrum*>(nullptr), nullptr);
    EXPECT_EQ(nothing.Save(nullptr), 2);
}

TEST_F(illuminantFile, saveWithoutASpectrumOrName_answers3AndWritesNothing) {
    TIlluminant nothing(static_cast<const TSpectrum*>(nullptr), "D65");
    const std::string file = scratch.path("none.ill");
    EXPECT_EQ(nothing.Save(file.c_str()), 3);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(illuminantFile, illuminantWhoseSpectrumIsBad_isSavedAllTheSame) {
    ASSERT_EQ(statusOf(kText + "\nodd\n2 500 500 1 1"), 4);
    const std::string file = scratch.path("saved.ill");
    EXPECT_EQ(illuminant->Save(file.c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(file), binaryImage("odd", bytesOf({1, 2, 500, 500, 1, 32767, 32767})));
    EXPECT_EQ(illuminant->GetStatus(), 4);
}

TEST_F(illuminantFile, nameOf255Characters_isSaved) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const std::string name(255, 'n');
    TIlluminant lamp(&spectrum, name.c_str());
    const std::string file = scratch.path("long.ill");
    EXPECT_EQ(lamp.Save(file.c_str()), 0);
    const TIlluminant read(file.c_str());
    EXPECT_EQ(read.GetStatus(), 0);
    EXPECT_EQ(read.GetName(), name);
}

TEST_F(illuminantFile, saveOfANameOf256Characters_answers3AndWritesNothing) {
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant lamp(&spectrum, std::string(256, 'n').c_str());
    ASSERT_EQ(lamp.GetStatus(), 0);
    const std::string file = scratch.path("toolong.ill");
    EXPECT_EQ(lamp.Save(file.c_str()), 3);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(illuminantFile, saveWhereNothingCanBeCreated_answers4) {
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant d65(&spectrum, "D65");
    EXPECT_EQ(d65.Save(scratch.path("missing/d65.ill").c_str()), 4);
}

TEST_F(illuminantFile, saveOnAFullDevice_answers4) {
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full here";
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant d65(&spectrum, "D65");
    EXPECT_EQ(d65.Save("/dev/full"), 4);
}

// Round trips.

TEST_F(illuminantFile, evenAndOddNames_readBackToTheSameNameAndSpectrum) {
    for (const std::string name : {"Lamp", "Lamp2"}) {
        const TSpectrum spectrum = spectrumOf(kD65);
        TIlluminant lamp(&spectrum, name.c_str());
        const std::string file = scratch.path("lamp.ill");
        ASSERT_EQ(lamp.Save(file.c_str()), 0);
        const TIlluminant read(file.c_str());
        EXPECT_EQ(read.GetStatus(), 0);
        EXPECT_EQ(read.GetName(), name);
        EXPECT_TRUE(read == lamp);
        ASSERT_NE(read.GetSpectrum(), nullptr);
        EXPECT_EQ(read.GetSpectrum()->GetNonUniformFlag(), 0);
        const Standard standard = standardOf(*read.GetSpectrum());
        for (std::size_t k = 0; k < standard.size(); ++k)
            EXPECT_NEAR(standard[k], kD65[k], 128.0 / 65535) << k;
    }
}

TEST_F(illuminantFile, nonUniformSpectrum_readsBackWithItsSamples) {
    const double wavelengths[] = {700.0, 400.0};
    const double values[] = {0.25, 1.0};
    const TSpectrum spectrum(wavelengths, 2, values);
    TIlluminant lamp(&spectrum, "Lamp");
    const std::string file = scratch.path("lamp.ill");
    ASSERT_EQ(lamp.Save(file.c_str()), 0);
    const TIlluminant read(file.c_str());
    ASSERT_EQ(read.GetStatus(), 0);
    ASSERT_EQ(read.GetSpectrum()->GetNrSamples(), 2);
    EXPECT_EQ(read.GetSpectrum()->GetWavelengths()[0], 700.0);
    EXPECT_EQ(read.GetSpectrum()->GetWavelengths()[1], 400.0);
    EXPECT_NEAR(read.GetSpectrum()->GetValues()[0], 0.25, 2.0 / 65535);
}

// The way to the file.

TEST_F(illuminantFile, extensionInAnyCase_isAccepted) {
    const std::string bytes = binaryImage("Lamp", bytesOf(kFlatWords));
    for (const char* name : {"lamp.ill", "lamp.ILL", "lamp.Ill", "a.b.ill", ".ill"}) {
        EXPECT_EQ(statusOf(bytes, name), 0) << name;
        expectFlat("Lamp");
    }
}

TEST_F(illuminantFile, otherExtensionOrNone_givesStatus2) {
    const std::string bytes = binaryImage("Lamp", bytesOf(kFlatWords));
    for (const char* name :
         {"lamp.il", "lamp", "lampill", "lamp.illu", "lamp.ill.txt", "lamp.ill.", "lamp.ill "}) {
        EXPECT_EQ(statusOf(bytes, name), 2) << name;
        expectNothingKept();
    }
    EXPECT_EQ(TIlluminant("").GetStatus(), 2);
}

// The part behind the last point counts, wherever that point stands.
TEST_F(illuminantFile, extensionOfAFolder_isNoneOfTheFile) {
    std::filesystem::create_directory(scratch.path("folder.ill"));
    EXPECT_EQ(statusOf(binaryImage("Lamp", bytesOf(kFlatWords)), "folder.ill/lamp"), 2);
}

TEST_F(illuminantFile, extension_isAskedBeforeTheFile) {
    EXPECT_EQ(TIlluminant(scratch.path("missing.txt").c_str()).GetStatus(), 2);
}

TEST_F(illuminantFile, missingFile_givesStatus4) {
    illuminant = std::make_unique<TIlluminant>(scratch.path("missing.ill").c_str());
    EXPECT_EQ(illuminant->GetStatus(), 4);
    expectNothingKept();
}

TEST_F(illuminantFile, folderInPlaceOfAFile_isRefused) {
    std::filesystem::create_directory(scratch.path("folder.ill"));
    EXPECT_THAT(TIlluminant(scratch.path("folder.ill").c_str()).GetStatus(), AnyOf(4, 5));
}

TEST_F(illuminantFile, logicalSpecification_isResolved) {
    std::filesystem::create_directory(scratch.path("ill"));
    scratch.write("ill/lamp.ill", binaryImage("Lamp", bytesOf(kFlatWords)));
    ASSERT_EQ(deflognam("QXCMS_TEST_LAMPS", scratch.path().c_str()), 0);
    illuminant = std::make_unique<TIlluminant>("QXCMS_TEST_LAMPS:[ill]lamp.ill");
    deflognam("QXCMS_TEST_LAMPS", nullptr);
    expectFlat("Lamp");
}

TEST_F(illuminantFile, fileBelow4Bytes_givesStatus5) {
    for (const char* bytes : {"", "Q", "QXI"}) {
        EXPECT_EQ(statusOf(bytes), 5) << bytes;
        expectNothingKept();
    }
}

TEST_F(illuminantFile, fileOf2048Bytes_isReadAndOneOf2049IsRefused) {
    std::string bytes = binaryImage("Lamp", bytesOf(kFlatWords));
    bytes.resize(2048, 'x');
    EXPECT_EQ(statusOf(bytes), 0);
    expectFlat("Lamp");
    bytes += 'x';
    EXPECT_EQ(statusOf(bytes), 5);
    expectNothingKept();
}

TEST_F(illuminantFile, sizeLimit_boundsTextFilesToo) {
    std::string bytes = kText + "\nLamp\n2 400 700 1 1";
    bytes.resize(2048, ' ');
    EXPECT_EQ(statusOf(bytes), 0);
    expectFlat("Lamp");
    bytes += ' ';
    EXPECT_EQ(statusOf(bytes), 5);
    expectNothingKept();
}

TEST_F(illuminantFile, wrongMagic_givesStatus5) {
    const std::string rest = binaryImage("Lamp", bytesOf(kFlatWords)).substr(4);
    for (const char* magic : {"QXIM", "qxil", "XXIL", "\0QXI"})
        EXPECT_EQ(statusOf(std::string(magic, 4) + rest), 5) << magic;
    expectNothingKept();
}

TEST_F(illuminantFile, unknownVersion_givesStatus5) {
    const std::string rest = binaryImage("Lamp", bytesOf(kFlatWords)).substr(8);
    for (const char* version : {"V101", "v100", "text", "TEX ", "\0\0\0\0"})
        EXPECT_EQ(statusOf("QXIL" + std::string(version, 4) + rest), 5) << version;
    expectNothingKept();
}

TEST_F(illuminantFile, headerThatDoesNotFit_givesStatus5) {
    for (const char* bytes : {"QXIL", "QXILV", "QXILV10", "QXILV100", "QXILTEX"}) {
        EXPECT_EQ(statusOf(bytes), 5) << bytes;
        expectNothingKept();
    }
}

TEST_F(illuminantFile, nameThatDoesNotFit_givesStatus5) {
    EXPECT_EQ(statusOf(kBinary + '\x05' + "Lamp"), 5);
    expectNothingKept();
    EXPECT_EQ(statusOf(kBinary + '\xFF' + std::string(254, 'n')), 5);
    expectNothingKept();
}

TEST_F(illuminantFile, spectrumDataThatDoNotFit_giveStatus3) {
    const std::string fileData = bytesOf(kFlatWords);
    for (std::size_t size = 0; size < fileData.size(); ++size)
        EXPECT_EQ(statusOf(binaryImage("Lamp2", fileData.substr(0, size))), 3) << size;
    const std::string standardOnly = fileDataOf(spectrumOf(kD65));
    for (std::size_t size = 0; size < standardOnly.size(); ++size)
        EXPECT_EQ(statusOf(binaryImage("Lamp", standardOnly.substr(0, size))), 3) << size;
}

TEST_F(illuminantFile, fileThatEndsWithTheName_givesStatus3) {
    EXPECT_EQ(statusOf(kBinary + '\x04' + "Lamp"), 3);
    EXPECT_EQ(statusOf(kBinary + '\x05' + "Lamp2"), 3);
}

TEST_F(illuminantFile, countBeyondTheFile_givesStatus3) {
    EXPECT_EQ(statusOf(binaryImage("Lamp", bytesOf({1, 1024, 500, 0, 65535}))), 3);
}

TEST_F(illuminantFile, badFlagOrCount_givesStatus3) {
    EXPECT_EQ(statusOf(binaryImage("Lamp", bytesOf(std::vector<std::uint16_t>(38, 2)))), 3);
    EXPECT_EQ(statusOf(binaryImage("Lamp", bytesOf({1, 0, 500, 0, 65535}))), 3);
    EXPECT_EQ(statusOf(binaryImage("Lamp", bytesOf({1, 1025, 500, 0, 65535}))), 3);
}

TEST_F(illuminantFile, twoSamplesAtOneWavelength_giveStatus4) {
    EXPECT_EQ(statusOf(binaryImage("Lamp", bytesOf({1, 2, 500, 500, 0, 1, 2}))), 4);
}

TEST_F(illuminantFile, bytesBehindTheSpectrum_areIgnored) {
    EXPECT_EQ(statusOf(binaryImage("Lamp", bytesOf(kFlatWords)) + "more"), 0);
    expectFlat("Lamp");
}

TEST_F(illuminantFile, lengthByte_isUnsigned) {
    for (const std::size_t length : {127u, 128u, 200u, 254u, 255u}) {
        const std::string name(length, 'n');
        EXPECT_EQ(statusOf(binaryImage(name, bytesOf(kFlatWords))), 0) << length;
        expectFlat(name);
    }
}

// The text form in files.

TEST_F(illuminantText, magicLineFeedNameAndNumbers_giveAFlatSpectrum) {
    EXPECT_EQ(statusOf(kText + "\nMy lamp\n2 400 700 1 1"), 0);
    expectFlat("My lamp");
    EXPECT_EQ(illuminant->GetSpectrum()->GetNrSamples(), 2);
    EXPECT_EQ(illuminant->GetSpectrum()->GetWavelengths()[0], 400.0);
    EXPECT_EQ(illuminant->GetSpectrum()->GetWavelengths()[1], 700.0);
}

TEST_F(illuminantText, nameMayFollowTheMagicAtOnce) {
    EXPECT_EQ(statusOf(kText + "Lamp\n2 400 700 1 1"), 0);
    expectFlat("Lamp");
}

TEST_F(illuminantText, bytesBelow0x20_areSkippedBeforeTheName) {
    EXPECT_EQ(statusOf(kText + std::string("\r\n\t\x01\x1F\0\n", 7) + "Lamp\n2 400 700 1 1"), 0);
    expectFlat("Lamp");
}

// The comparison is signed on every platform.
TEST_F(illuminantText, bytesFrom0x80On_areSkippedBeforeTheName) {
    EXPECT_EQ(statusOf(kText + "\n\xEF\xBB\xBF\x80\xFFLamp\n2 400 700 1 1"), 0);
    expectFlat("Lamp");
}

TEST_F(illuminantText, bytesFrom0x80OnInsideTheName_areKept) {
    EXPECT_EQ(statusOf(kText + "\nL\xC3\xA4mp\t1\n2 400 700 1 1"), 0);
    expectFlat("L\xC3\xA4mp\t1");
}

TEST_F(illuminantText, blank_startsTheName) {
    EXPECT_EQ(statusOf(kText + "\n Lamp \n2 400 700 1 1"), 0);
    expectFlat(" Lamp ");
}

TEST_F(illuminantText, delete0x7F_startsTheName) {
    EXPECT_EQ(statusOf(kText + "\n\x7FLamp\n2 400 700 1 1"), 0);
    expectFlat("\x7FLamp");
}

TEST_F(illuminantText, carriageReturn_endsTheName) {
    EXPECT_EQ(statusOf(kText + "\r\nLamp\r\n2 400 700 1 1\r\n"), 0);
    expectFlat("Lamp");
    EXPECT_EQ(statusOf(kText + "\rLamp\r2 400 700 1 1\r"), 0);
    expectFlat("Lamp");
}

TEST_F(illuminantText, digitsInTheName_areNoNumbersOfTheSpectrum) {
    EXPECT_EQ(statusOf(kText + "\nD65 +1 lamp\n2 400 700 1 1"), 0);
    expectFlat("D65 +1 lamp");
}

TEST_F(illuminantText, numbers_mayBeSeparatedByAnything) {
    EXPECT_EQ(statusOf(kText + "\nLamp\ncount: 2\nnm: [400; 700]\nvalues: (1, 1)\n"), 0);
    expectFlat("Lamp");
}

TEST_F(illuminantText, lastNumber_mayEndTheFile) {
    EXPECT_EQ(statusOf(kText + "\nLamp\n1 400 25"), 0);
    EXPECT_THAT(standardOf(*illuminant->GetSpectrum()), Each(25.0));
}

TEST_F(illuminantText, nameWithoutALineEnd_givesStatus5) {
    for (const char* rest : {"", "\n", "\n\x80", "\nLamp", "Lamp"}) {
        EXPECT_EQ(statusOf(kText + rest), 5) << rest;
        expectNothingKept();
    }
}

TEST_F(illuminantText, nameOf1023Characters_isAcceptedAndOneOf1024GivesStatus5) {
    const std::string name(1023, 'n');
    EXPECT_EQ(statusOf(kText + '\n' + name + "\n2 400 700 1 1"), 0);
    expectFlat(name);
    EXPECT_EQ(statusOf(kText + '\n' + name + "n\n2 400 700 1 1"), 5);
    expectNothingKept();
}

TEST_F(illuminantText, missingNumbers_giveStatus3AndKeepTheName) {
    for (const char* numbers : {"", "0", "2 400 700 1", "2 400 700 1 -", "none"}) {
        EXPECT_EQ(statusOf(kText + "\nLamp\n" + numbers), 3) << numbers;
        EXPECT_STREQ(illuminant->GetName(), "Lamp");
        ASSERT_NE(illuminant->GetSpectrum(), nullptr);
        EXPECT_EQ(illuminant->GetSpectrum()->GetStatus(), 3);
        EXPECT_THAT(standardOf(*illuminant->GetSpectrum()), Each(-1.0));
    }
}

TEST_F(illuminantText, twoSamplesAtOneWavelength_giveStatus4) {
    EXPECT_EQ(statusOf(kText + "\nLamp\n2 500 500 1 1"), 4);
    EXPECT_STREQ(illuminant->GetName(), "Lamp");
}

// Images in memory.

TEST_F(illuminantImage, binaryImage_isRead) {
    EXPECT_EQ(statusOfImage(Image(binaryImage("Lamp", bytesOf(kFlatWords)))), 0);
    expectFlat("Lamp");
    EXPECT_EQ(statusOfImage(Image(binaryImage("Lamp2", bytesOf(kFlatWords)))), 0);
    expectFlat("Lamp2");
}

// The zero byte brings the spectrum to an even address, wherever the image starts: in one that starts at an
// odd address it stands behind names of odd length.
TEST_F(illuminantImage, imageAtAnOddAddress_hasItsSpectrumAtAnEvenOne) {
    const std::string fileData = bytesOf(kFlatWords);
    const std::string even = kBinary + "\x04" + "Lamp" + fileData;
    const std::string odd = kBinary + "\x05" + "Lamp2" + '\0' + fileData;
    const Image behindOneByte[] = {Image('?' + even), Image('?' + odd)};
    const TIlluminant lamp(static_cast<const void*>(static_cast<const char*>(behindOneByte[0].get()) + 1));
    const TIlluminant lamp2(static_cast<const void*>(static_cast<const char*>(behindOneByte[1].get()) + 1));
    for (const TIlluminant* read : {&lamp, &lamp2}) {
        ASSERT_EQ(read->GetStatus(), 0);
        EXPECT_THAT(standardOf(*read->GetSpectrum()), Each(1.0));
    }
    EXPECT_STREQ(lamp.GetName(), "Lamp");
    EXPECT_STREQ(lamp2.GetName(), "Lamp2");
}

TEST_F(illuminantImage, textImage_isRead) {
    EXPECT_EQ(statusOfImage(textImage(kText + "\nLamp\n2 400 700 1 1")), 0);
    expectFlat("Lamp");
}

TEST_F(illuminantImage, nameOf1023CharactersInAText_isAcceptedAndOneOf1024GivesStatus5) {
    const std::string name(1023, 'n');
    EXPECT_EQ(statusOfImage(textImage(kText + '\n' + name + "\r2 400 700 1 1")), 0);
    expectFlat(name);
    EXPECT_EQ(statusOfImage(textImage(kText + '\n' + name + "n\r2 400 700 1 1")), 5);
    expectNothingKept();
}

TEST_F(illuminantImage, imageOverTheFileLimit_isRead) {
    std::string text = kText + "\nLamp\n400";
    for (int i = 0; i < 400; ++i)
        text += ' ' + std::to_string(380 + i);
    for (int i = 0; i < 400; ++i)
        text += " 1";
    ASSERT_GT(text.size(), 2048u);
    EXPECT_EQ(statusOfImage(textImage(text)), 0);
    expectFlat("Lamp");
}

TEST_F(illuminantImage, wrongMagicOrVersion_givesStatus5) {
    EXPECT_EQ(statusOfImage(Image("QXIM")), 5);
    expectNothingKept();
    EXPECT_EQ(statusOfImage(Image("QXILV200")), 5);
    expectNothingKept();
}

TEST_F(illuminantImage, characterPointer_isAFileName) {
    const std::string image = binaryImage("Lamp", bytesOf(kFlatWords));
    EXPECT_EQ(TIlluminant(image.c_str()).GetStatus(), 2);
    EXPECT_EQ(TIlluminant(static_cast<const void*>(image.c_str())).GetStatus(), 0);
}

// ReadFrom on an illuminant that holds something.

class Replacement : public IlluminantFile {
protected:
    int read(const Image& image) { return lamp.ReadFrom(image.get()); }

    void expectOldContents() const {
        EXPECT_STREQ(lamp.GetName(), "old");
        ASSERT_NE(lamp.GetSpectrum(), nullptr);
        EXPECT_THAT(standardOf(*lamp.GetSpectrum()), ElementsAreArray(kD65));
        EXPECT_EQ(lamp.GetStatus(), 0);
    }

    TSpectrum oldSpectrum = spectrumOf(kD65);
    TIlluminant lamp{&oldSpectrum, "old"};
};

using illuminantReadFrom = Replacement;

TEST_F(illuminantReadFrom, image_replacesNameAndSpectrum) {
    EXPECT_EQ(read(Image(binaryImage("new", bytesOf(kFlatWords)))), 0);
    EXPECT_STREQ(lamp.GetName(), "new");
    EXPECT_THAT(standardOf(*lamp.GetSpectrum()), Each(1.0));
    EXPECT_EQ(read(textImage(kText + "\nnewer\n1 500 3")), 0);
    EXPECT_STREQ(lamp.GetName(), "newer");
    EXPECT_THAT(standardOf(*lamp.GetSpectrum()), Each(3.0));
}

TEST_F(illuminantReadFrom, nullImage_answers2AndKeepsTheContents) {
    EXPECT_EQ(lamp.ReadFrom(nullptr), 2);
    expectOldContents();
}

TEST_F(illuminantReadFrom, wrongMagic_answers5AndKeepsTheContents) {
    EXPECT_EQ(read(Image("QXIM")), 5);
    expectOldContents();
}

TEST_F(illuminantReadFrom, unknownVersion_answers5AndKeepsTheContents) {
    EXPECT_EQ(read(Image("QXILV999")), 5);
    expectOldContents();
}

TEST_F(illuminantReadFrom, textNameTooLong_answers5AndKeepsTheContents) {
    EXPECT_EQ(read(textImage(kText + '\n' + std::string(1024, 'n') + "\n1 500 1")), 5);
    expectOldContents();
}

TEST_F(illuminantReadFrom, spectrumWithABadFlag_answers3AndReplaces) {
    EXPECT_EQ(read(Image(binaryImage("new", bytesOf({2, 1, 500, 0, 65535})))), 3);
    EXPECT_STREQ(lamp.GetName(), "new");
    ASSERT_NE(lamp.GetSpectrum(), nullptr);
    EXPECT_EQ(lamp.GetSpectrum()->GetStatus(), 3);
    EXPECT_THAT(standardOf(*lamp.GetSpectrum()), Each(-1.0));
}

TEST_F(illuminantReadFrom, textWithMissingNumbers_answers3AndReplaces) {
    EXPECT_EQ(read(textImage(kText + "\nnew\n2 400 700 1")), 3);
    EXPECT_STREQ(lamp.GetName(), "new");
    ASSERT_NE(lamp.GetSpectrum(), nullptr);
    EXPECT_THAT(standardOf(*lamp.GetSpectrum()), Each(-1.0));
}

TEST_F(illuminantReadFrom, twoSamplesAtOneWavelength_answer4AndReplace) {
    EXPECT_EQ(read(Image(binaryImage("new", bytesOf({1, 2, 500, 500, 0, 1, 2})))), 4);
    EXPECT_STREQ(lamp.GetName(), "new");
    ASSERT_NE(lamp.GetSpectrum(), nullptr);
    EXPECT_EQ(lamp.GetSpectrum()->GetStatus(), 4);
}

} // namespace
} // namespace qxcms::tests
