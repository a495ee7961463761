// The layout of the public classes on x86-64, which programs are compiled against: members, their order and
// widths, sizes and the slots of virtual operations. And what the serialised buffers of a spectrum do, which
// only its members tell.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "cgats/tcgats.h"
#include "cgats/tcgatsfield.h"
#include "cgats/tcgatstable.h"
#include "cgats/tcgatstableheader.h"
#include "cgats/tcgatstag.h"
#include "cgats/tcgatsvaluelist.h"
#include "colorspace/tcolorspace.h"
#include "colorspace/tcolorspace_ciecam02.h"
#include "colorspace/tcolorspace_ciecam97s.h"
#include "colorspace/tcolorspacerepresentation.h"
#include "colorspace/tlabspace.h"
#include "colorspace/txyzrspace.h"
#include "measurement/colorimetric_measurements.h"
#include "measurement/spectral_measurements.h"
#include "measurement/tonemeasurement.h"
#include "spectral/tilluminant.h"
#include "spectral/tilluminantandobserver.h"
#include "spectral/tilluminantfactoryholder.h"
#include "spectral/tmeasgeom.h"
#include "spectral/tobserver.h"
#include "spectral/tspectrum.h"
#include "support/tcachefile.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::detail {

struct LayoutProbe {
    static void checkSpectral();
    static void checkColorspace();
    static void checkMeasurement();
    static void checkCgats();
    static void checkSupport();

    // The members of a spectrum that nothing else shows.
    struct SpectrumMembers {
        std::uint16_t* fileData;
        std::uint16_t* shortFileData;
        double* wavelengths;
        double* values;
    };
    static SpectrumMembers membersOf(const TSpectrum& spectrum) {
        return {spectrum.fileData, spectrum.shortFileData, spectrum.wavelengths, spectrum.values};
    }
    static void setMembers(TSpectrum& spectrum, const SpectrumMembers& members) {
        spectrum.fileData = members.fileData;
        spectrum.shortFileData = members.shortFileData;
        spectrum.wavelengths = members.wavelengths;
        spectrum.values = members.values;
    }
    static void setFlag(TSpectrum& spectrum, std::int32_t flag) { spectrum.nonUniform = flag; }
    static void setCount(TSpectrum& spectrum, std::int32_t count) { spectrum.nrSamples = count; }
    static void fillWithRubbish(TSpectrum& spectrum) {
        setMembers(spectrum, {reinterpret_cast<std::uint16_t*>(0x10), reinterpret_cast<std::uint16_t*>(0x20),
                              reinterpret_cast<double*>(0x30), reinterpret_cast<double*>(0x40)});
        spectrum.fileDataSize = spectrum.nonUniform = spectrum.nrSamples = spectrum.status = 77;
        for (double& value : spectrum.standard)
            value = 77.0;
    }
};

#if defined(__x86_64__) && defined(__linux__)

// Members are read by name in functions of the probe, which is their friend. The classes have virtual
// operations, for which offsetof is conditionally supported; both compilers support it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

#define QXCMS_MEMBER(Class, member, Type, offset)                                                            \
    static_assert(std::is_same_v<decltype(Class::member), Type>, #Class "::" #member);                       \
    static_assert(offsetof(Class, member) == (offset), #Class "::" #member)

void LayoutProbe::checkSpectral() {
    static_assert(std::is_polymorphic_v<TSpectrum> && sizeof(TSpectrum) == 352);
    QXCMS_MEMBER(TSpectrum, fileData, std::uint16_t*, 8);
    QXCMS_MEMBER(TSpectrum, shortFileData, std::uint16_t*, 16);
    QXCMS_MEMBER(TSpectrum, fileDataSize, std::int32_t, 24);
    QXCMS_MEMBER(TSpectrum, nonUniform, std::int32_t, 28);
    QXCMS_MEMBER(TSpectrum, nrSamples, std::int32_t, 32);
    QXCMS_MEMBER(TSpectrum, wavelengths, double*, 40);
    QXCMS_MEMBER(TSpectrum, values, double*, 48);
    QXCMS_MEMBER(TSpectrum, standard, double[36], 56);
    QXCMS_MEMBER(TSpectrum, status, std::int32_t, 344);
    static_assert(sizeof(TSpectrum::FilterStandards) == sizeof(int));
    static_assert(std::is_same_v<std::underlying_type_t<TSpectrum::FilterStandards>, int>);

    static_assert(sizeof(std::unique_ptr<TSpectrum>) == sizeof(TSpectrum*));
    static_assert(std::is_polymorphic_v<TObserver> && sizeof(TObserver) == 40);
    QXCMS_MEMBER(TObserver, xSpectrum, std::unique_ptr<TSpectrum>, 8);
    QXCMS_MEMBER(TObserver, ySpectrum, std::unique_ptr<TSpectrum>, 16);
    QXCMS_MEMBER(TObserver, zSpectrum, std::unique_ptr<TSpectrum>, 24);
    QXCMS_MEMBER(TObserver, number, std::uint32_t, 32);
    QXCMS_MEMBER(TObserver, status, std::int32_t, 36);

    static_assert(std::is_polymorphic_v<TMeasGeom> && sizeof(TMeasGeom) == 16);
    QXCMS_MEMBER(TMeasGeom, number, std::uint32_t, 8);
    QXCMS_MEMBER(TMeasGeom, status, std::int32_t, 12);

    static_assert(std::is_polymorphic_v<TIlluminant> && sizeof(TIlluminant) == 32);
    QXCMS_MEMBER(TIlluminant, spectrum, std::unique_ptr<TSpectrum>, 8);
    QXCMS_MEMBER(TIlluminant, status, std::int32_t, 16);
    QXCMS_MEMBER(TIlluminant, name, std::unique_ptr<char[]>, 24);

    static_assert(!std::is_polymorphic_v<TIlluminantAndObserver> && sizeof(TIlluminantAndObserver) == 2056);
    QXCMS_MEMBER(TIlluminantAndObserver, tableIndex, std::int64_t, 0);
    QXCMS_MEMBER(TIlluminantAndObserver, factor, double, 8);
    QXCMS_MEMBER(TIlluminantAndObserver, xFunction, double[36], 16);
    QXCMS_MEMBER(TIlluminantAndObserver, yFunction, double[36], 304);
    QXCMS_MEMBER(TIlluminantAndObserver, zFunction, double[36], 592);
    QXCMS_MEMBER(TIlluminantAndObserver, xWeight, double[36], 880);
    QXCMS_MEMBER(TIlluminantAndObserver, yWeight, double[36], 1168);
    QXCMS_MEMBER(TIlluminantAndObserver, zWeight, double[36], 1456);
    QXCMS_MEMBER(TIlluminantAndObserver, combined, double[36], 1744);
    QXCMS_MEMBER(TIlluminantAndObserver, status, std::int32_t, 2032);
    QXCMS_MEMBER(TIlluminantAndObserver, nrPoints, std::int32_t, 2036);
    QXCMS_MEMBER(TIlluminantAndObserver, illuminant, const TIlluminant*, 2040);
    QXCMS_MEMBER(TIlluminantAndObserver, observer, std::unique_ptr<TObserver>, 2048);

    // The registries add nothing to the object factory they stand on.
    static_assert(sizeof(TElement) == 16 && sizeof(TList) == 24 && sizeof(TObjEl) == 32 &&
                  sizeof(TObjFac) == 48);
    static_assert(sizeof(TIlluminantFactoryHolder) == sizeof(TObjFac));
    static_assert(sizeof(TIlluminantFactory) == sizeof(TObjFac));
    static_assert(sizeof(TIllEl) == sizeof(TObjEl) + sizeof(TIlluminant*));
    static_assert(std::is_same_v<decltype(TIlluminantFactory::sTheFactory), TIlluminantFactory*>);
    static_assert(std::is_same_v<decltype(TIlluminantFactory::sNrFactoryReferences), std::uint32_t>);
}

void LayoutProbe::checkColorspace() {
    static_assert(std::is_abstract_v<TColorSpaceRepresentation> && sizeof(TColorSpaceRepresentation) == 8,
                  "no data member");
    static_assert(sizeof(TLabSpace) == 40);
    QXCMS_MEMBER(TLabSpace, white, double[3], 8);
    QXCMS_MEMBER(TLabSpace, errorNumber, std::int32_t, 32);

    static_assert(!std::is_polymorphic_v<TColorSpace> && sizeof(TColorSpace) == 16);
    QXCMS_MEMBER(TColorSpace, errorNumber, std::int32_t, 0);
    QXCMS_MEMBER(TColorSpace, spaceIndex, std::int32_t, 4);
    static_assert(sizeof(TColorSpace::representation) == 8 && offsetof(TColorSpace, representation) == 8);

    static_assert(sizeof(TXYZRSpace) == 40);
    QXCMS_MEMBER(TXYZRSpace, errorNumber, std::int32_t, 8);
    QXCMS_MEMBER(TXYZRSpace, white, double[3], 16);

    static_assert(sizeof(TColorSpace_CIECAM02) == 152);
    QXCMS_MEMBER(TColorSpace_CIECAM02, white, double[3], 8);
    QXCMS_MEMBER(TColorSpace_CIECAM02, errorNumber, std::int32_t, 32);
    QXCMS_MEMBER(TColorSpace_CIECAM02, c, double, 40);
    QXCMS_MEMBER(TColorSpace_CIECAM02, Nc, double, 48);
    QXCMS_MEMBER(TColorSpace_CIECAM02, F, double, 56);
    QXCMS_MEMBER(TColorSpace_CIECAM02, La, double, 64);
    QXCMS_MEMBER(TColorSpace_CIECAM02, Yb, double, 72);
    QXCMS_MEMBER(TColorSpace_CIECAM02, Rw, double, 80);
    QXCMS_MEMBER(TColorSpace_CIECAM02, Gw, double, 88);
    QXCMS_MEMBER(TColorSpace_CIECAM02, Bw, double, 96);
    QXCMS_MEMBER(TColorSpace_CIECAM02, Aw, double, 104);
    QXCMS_MEMBER(TColorSpace_CIECAM02, D, double, 112);
    QXCMS_MEMBER(TColorSpace_CIECAM02, n, double, 120);
    QXCMS_MEMBER(TColorSpace_CIECAM02, Nbb, double, 128);
    QXCMS_MEMBER(TColorSpace_CIECAM02, z, double, 136);
    QXCMS_MEMBER(TColorSpace_CIECAM02, FL, double, 144);

    static_assert(sizeof(TColorSpace_CIECAM97s) == 168);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, white, double[3], 8);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, errorNumber, std::int32_t, 32);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, c, double, 40);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, Nc, double, 48);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, FLL, double, 56);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, F, double, 64);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, La, double, 72);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, Yb, double, 80);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, Rw, double, 88);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, Gw, double, 96);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, Bw, double, 104);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, D, double, 112);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, p, double, 120);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, n, double, 128);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, Nbb, double, 136);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, z, double, 144);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, FL, double, 152);
    QXCMS_MEMBER(TColorSpace_CIECAM97s, Aw, double, 160);
}

void LayoutProbe::checkMeasurement() {
    static_assert(std::is_abstract_v<TOneMeasurement> && sizeof(TOneMeasurement) == 40);
    QXCMS_MEMBER(TOneMeasurement, status, std::int32_t, 8);
    QXCMS_MEMBER(TOneMeasurement, geometry, std::unique_ptr<TMeasGeom>, 16);
    QXCMS_MEMBER(TOneMeasurement, nrCoordinates, std::int32_t, 24);
    QXCMS_MEMBER(TOneMeasurement, coordinates, std::unique_ptr<double[]>, 32);
    static_assert(std::is_abstract_v<TReflectionMeasurement> && sizeof(TReflectionMeasurement) == 40);
    static_assert(std::is_abstract_v<TEmissionMeasurement> && sizeof(TEmissionMeasurement) == 40);

    static_assert(sizeof(TReflectionSpectrum) == 48);
    QXCMS_MEMBER(TReflectionSpectrum, spectrum, std::unique_ptr<TSpectrum>, 40);
    static_assert(std::is_abstract_v<TReflectedSpectrum> && sizeof(TReflectedSpectrum) == 56);
    QXCMS_MEMBER(TReflectedSpectrum, illuminant, TIlluminant*, 40);
    QXCMS_MEMBER(TReflectedSpectrum, spectrum, std::unique_ptr<TSpectrum>, 48);
    static_assert(sizeof(TEmissionSpectrum) == 48);
    QXCMS_MEMBER(TEmissionSpectrum, spectrum, std::unique_ptr<TSpectrum>, 40);

    static_assert(sizeof(TXYZMeasurement) == 80);
    QXCMS_MEMBER(TXYZMeasurement, storedXyz, double[3], 40);
    QXCMS_MEMBER(TXYZMeasurement, illuminant, TIlluminant*, 64);
    QXCMS_MEMBER(TXYZMeasurement, observer, std::unique_ptr<TObserver>, 72);
    static_assert(sizeof(TEmissiveXYZMeasurement) == 72);
    QXCMS_MEMBER(TEmissiveXYZMeasurement, storedXyz, double[3], 40);
    QXCMS_MEMBER(TEmissiveXYZMeasurement, observer, std::unique_ptr<TObserver>, 64);
    static_assert(sizeof(TLABMeasurement) == 104);
    QXCMS_MEMBER(TLABMeasurement, storedLab, double[3], 40);
    QXCMS_MEMBER(TLABMeasurement, illuminant, TIlluminant*, 64);
    QXCMS_MEMBER(TLABMeasurement, observer, std::unique_ptr<TObserver>, 72);
    QXCMS_MEMBER(TLABMeasurement, storedWhite, double[3], 80);
    static_assert(sizeof(TEmissiveLABMeasurement) == 96);
    QXCMS_MEMBER(TEmissiveLABMeasurement, storedLab, double[3], 40);
    QXCMS_MEMBER(TEmissiveLABMeasurement, observer, std::unique_ptr<TObserver>, 64);
    QXCMS_MEMBER(TEmissiveLABMeasurement, storedWhite, double[3], 72);

    static_assert(std::is_base_of_v<TReflectionMeasurement, TReflectionSpectrum>);
    static_assert(std::is_base_of_v<TReflectionMeasurement, TReflectedSpectrum>);
    static_assert(std::is_base_of_v<TReflectionMeasurement, TXYZMeasurement>);
    static_assert(std::is_base_of_v<TReflectionMeasurement, TLABMeasurement>);
    static_assert(std::is_base_of_v<TEmissionMeasurement, TEmissionSpectrum>);
    static_assert(std::is_base_of_v<TEmissionMeasurement, TEmissiveXYZMeasurement>);
    static_assert(std::is_base_of_v<TEmissionMeasurement, TEmissiveLABMeasurement>);
}

void LayoutProbe::checkCgats() {
    static_assert(!std::is_polymorphic_v<TCgats> && sizeof(TCgats) == 2248);
    QXCMS_MEMBER(TCgats, nrTags, std::int32_t, 0);
    QXCMS_MEMBER(TCgats, tags, TCgatsTag* [128], 8);
    QXCMS_MEMBER(TCgats, nrCommentBlocks, std::int32_t, 1032);
    QXCMS_MEMBER(TCgats, commentBlocks, char* [128], 1040);
    QXCMS_MEMBER(TCgats, declaredNrSets, std::int32_t, 2064);
    QXCMS_MEMBER(TCgats, tmpHeader, TCgatsTableHeader*, 2072);
    QXCMS_MEMBER(TCgats, nrProcessColorIdTags, std::int32_t, 2080);
    QXCMS_MEMBER(TCgats, nrSpotIdTags, std::int32_t, 2084);
    QXCMS_MEMBER(TCgats, nrCustomFields, std::int32_t, 2088);
    QXCMS_MEMBER(TCgats, customFields, char**, 2096);
    QXCMS_MEMBER(TCgats, nrTables, std::int32_t, 2104);
    QXCMS_MEMBER(TCgats, tables, TCgatsTable**, 2112);
    QXCMS_MEMBER(TCgats, errorCode, std::int32_t, 2120);
    static_assert(offsetof(TCgats, errorMessage) == 2124);
    static_assert(sizeof(TCgats::errorMessage) >= 118, "117 characters of the longest message and their end");

    static_assert(!std::is_polymorphic_v<TCgatsTag> && sizeof(TCgatsTag) == 32);
    QXCMS_MEMBER(TCgatsTag, code, std::int32_t, 0);
    QXCMS_MEMBER(TCgatsTag, numeric, std::int32_t, 4);
    QXCMS_MEMBER(TCgatsTag, keyword, std::unique_ptr<char[]>, 8);
    QXCMS_MEMBER(TCgatsTag, value, std::unique_ptr<char[]>, 16);
    QXCMS_MEMBER(TCgatsTag, comment, std::unique_ptr<char[]>, 24);

    using Fields = std::vector<std::unique_ptr<TCgatsField>>;
    using Columns = std::unique_ptr<std::int32_t[]>;
    static_assert(std::has_virtual_destructor_v<TCgatsTableHeader> && sizeof(TCgatsTableHeader) == 104);
    QXCMS_MEMBER(TCgatsTableHeader, nrSamples, std::int32_t, 8);
    QXCMS_MEMBER(TCgatsTableHeader, fields, Fields, 16);
    QXCMS_MEMBER(TCgatsTableHeader, classified, std::uint8_t, 40);
    QXCMS_MEMBER(TCgatsTableHeader, colorKind, std::int32_t, 44);
    QXCMS_MEMBER(TCgatsTableHeader, nrColors, std::int32_t, 48);
    QXCMS_MEMBER(TCgatsTableHeader, nrSpots, std::int32_t, 52);
    QXCMS_MEMBER(TCgatsTableHeader, nrWaveLengths, std::int32_t, 56);
    QXCMS_MEMBER(TCgatsTableHeader, sampleNameColumn, std::int32_t, 60);
    QXCMS_MEMBER(TCgatsTableHeader, colorColumns, Columns, 64);
    QXCMS_MEMBER(TCgatsTableHeader, spotColumns, Columns, 72);
    QXCMS_MEMBER(TCgatsTableHeader, spectralColumns, Columns, 80);
    QXCMS_MEMBER(TCgatsTableHeader, labColumns, Columns, 88);
    QXCMS_MEMBER(TCgatsTableHeader, xyzColumns, Columns, 96);

    static_assert(!std::is_polymorphic_v<TCgatsField> && sizeof(TCgatsField) == 32);
    QXCMS_MEMBER(TCgatsField, dataType, std::int32_t, 0);
    QXCMS_MEMBER(TCgatsField, name, std::unique_ptr<char[]>, 8);
    QXCMS_MEMBER(TCgatsField, number, std::int32_t, 16);
    QXCMS_MEMBER(TCgatsField, kind, std::int32_t, 20);
    QXCMS_MEMBER(TCgatsField, fieldId, std::int32_t, 24);
    QXCMS_MEMBER(TCgatsField, bad, std::int32_t, 28);

    using Lists = std::vector<std::unique_ptr<TCgatsValueList>>;
    static_assert(!std::is_polymorphic_v<TCgatsTable> && sizeof(TCgatsTable) == 48);
    QXCMS_MEMBER(TCgatsTable, header, std::unique_ptr<TCgatsTableHeader>, 0);
    QXCMS_MEMBER(TCgatsTable, values, Lists, 8);
    QXCMS_MEMBER(TCgatsTable, nrRowsStored, std::int32_t, 32);
    QXCMS_MEMBER(TCgatsTable, tableError, std::int32_t, 36);
    QXCMS_MEMBER(TCgatsTable, spectralPercent, std::uint8_t, 40);

    static_assert(std::is_abstract_v<TCgatsValueList>);
    QXCMS_MEMBER(TCgatsValueList, count, std::int32_t, 8);
    static_assert(sizeof(TCgatsValueListDouble) == 24);
    QXCMS_MEMBER(TCgatsValueListDouble, entries, std::unique_ptr<double[]>, 16);
    static_assert(sizeof(TCgatsValueListInt) == 24);
    QXCMS_MEMBER(TCgatsValueListInt, entries, std::unique_ptr<std::int32_t[]>, 16);
    static_assert(sizeof(TCgatsValueListString) == 24);
    static_assert(offsetof(TCgatsValueListString, entries) == 16);
}

void LayoutProbe::checkSupport() {
    static_assert(std::is_polymorphic_v<TCacheFile> && sizeof(TCacheFile) == 56);
    QXCMS_MEMBER(TCacheFile, fileName, std::unique_ptr<char[]>, 8);
    QXCMS_MEMBER(TCacheFile, directory, std::unique_ptr<char[]>, 16);
    QXCMS_MEMBER(TCacheFile, state, std::int32_t, 24);
    QXCMS_MEMBER(TCacheFile, topicPosition, std::int32_t, 28);
    QXCMS_MEMBER(TCacheFile, itemPosition, std::int32_t, 32);
    static_assert(sizeof(TCacheFile::database) == sizeof(rdb_db*) && offsetof(TCacheFile, database) == 40);
    QXCMS_MEMBER(TCacheFile, file, rdb_file*, 48);
}

#undef QXCMS_MEMBER
#pragma GCC diagnostic pop

#endif

} // namespace qxcms::detail

namespace qxcms::tests {
namespace {

using detail::LayoutProbe;
using testing::Each;

#if defined(__x86_64__) && defined(__linux__)

// A pointer to a virtual member function holds 1 plus the offset of its slot in the table (Itanium C++ ABI).
template <class Member>
std::ptrdiff_t vtableSlot(Member member) {
    struct {
        std::ptrdiff_t function;
        std::ptrdiff_t adjustment;
    } parts;
    static_assert(sizeof parts == sizeof member);
    std::memcpy(&parts, &member, sizeof parts);
    EXPECT_EQ(parts.function % 8, 1) << "not virtual";
    EXPECT_EQ(parts.adjustment, 0);
    return parts.function / 8;
}

// Slots 0 and 1 are the complete and the deleting destructor.
TEST(layout, colorSpaces_haveTheirOperationsInSlotOrder) {
    static_assert(std::has_virtual_destructor_v<TColorSpaceRepresentation>);
    EXPECT_EQ(vtableSlot(&TColorSpaceRepresentation::ToXYZ), 2);
    EXPECT_EQ(vtableSlot(&TColorSpaceRepresentation::FromXYZ), 3);
    EXPECT_EQ(vtableSlot(&TColorSpaceRepresentation::CalcDeltaE), 4);
    EXPECT_EQ(vtableSlot(&TColorSpaceRepresentation::CalcSquareDeltaE), 5);
    EXPECT_EQ(vtableSlot(&TColorSpaceRepresentation::CalcSquareDeltaEConverted), 6);
    EXPECT_EQ(vtableSlot(&TColorSpaceRepresentation::ErrNo), 7);
}

TEST(layout, labSpace_keepsTheSlotsOfItsBase) {
    EXPECT_EQ(vtableSlot(&TLabSpace::ToXYZ), 2);
    EXPECT_EQ(vtableSlot(&TLabSpace::FromXYZ), 3);
    EXPECT_EQ(vtableSlot(&TLabSpace::CalcDeltaE), 4);
    EXPECT_EQ(vtableSlot(&TLabSpace::CalcSquareDeltaE), 5);
    EXPECT_EQ(vtableSlot(&TLabSpace::CalcSquareDeltaEConverted), 6);
    EXPECT_EQ(vtableSlot(&TLabSpace::ErrNo), 7);
}

template <class Measurement>
void expectMeasurementSlots() {
    static_assert(std::has_virtual_destructor_v<Measurement>);
    EXPECT_EQ(vtableSlot(&Measurement::Copy), 2);
    EXPECT_EQ(vtableSlot(&Measurement::GetDensity), 3);
    EXPECT_EQ(vtableSlot(&Measurement::GetXYZ), 4);
    EXPECT_EQ(vtableSlot(&Measurement::GetUniformSpectrum), 5);
    EXPECT_EQ(vtableSlot(&Measurement::GetLAB), 6);
    EXPECT_EQ(vtableSlot(&Measurement::GetSpecData), 7);
    EXPECT_EQ(vtableSlot(&Measurement::GetSpectrum), 8);
}

TEST(layout, measurements_haveTheirOperationsInSlotOrder) {
    expectMeasurementSlots<TOneMeasurement>();
    expectMeasurementSlots<TReflectionMeasurement>();
    expectMeasurementSlots<TEmissionMeasurement>();
    expectMeasurementSlots<TReflectionSpectrum>();
    expectMeasurementSlots<TReflectedSpectrum>();
    expectMeasurementSlots<TEmissionSpectrum>();
    expectMeasurementSlots<TXYZMeasurement>();
    expectMeasurementSlots<TEmissiveXYZMeasurement>();
    expectMeasurementSlots<TLABMeasurement>();
    expectMeasurementSlots<TEmissiveLABMeasurement>();
}

template <class List>
void expectValueListSlots() {
    static_assert(std::has_virtual_destructor_v<List>);
    EXPECT_EQ(vtableSlot(&List::SetValue), 2);
    EXPECT_EQ(vtableSlot(&List::GetInt), 3);
    EXPECT_EQ(vtableSlot(&List::GetDouble), 4);
    EXPECT_EQ(vtableSlot(&List::GetString), 5);
}

TEST(layout, valueLists_haveTheirOperationsInSlotOrder) {
    expectValueListSlots<TCgatsValueList>();
    expectValueListSlots<TCgatsValueListDouble>();
    expectValueListSlots<TCgatsValueListInt>();
    expectValueListSlots<TCgatsValueListString>();
}

TEST(layout, registry_overridesTheElementCreationOfTheFactory) {
    EXPECT_EQ(vtableSlot(&TObjFac::TObjFacCreateEl), 2);
    EXPECT_EQ(vtableSlot(&TIlluminantFactoryHolder::TObjFacCreateEl), 2);
}

TEST(layout, cacheFile_hasItsMessagesInTheFirstSlot) {
    static_assert(std::has_virtual_destructor_v<TCacheFile>);
    EXPECT_EQ(vtableSlot(&TCacheFile::SetErrMsg), 0);
}

// What stands at the offsets is what the operations see.
TEST(layout, membersOfASpectrum_standWhereTheyAreExpected) {
    const double wavelengths[] = {400.0, 700.0};
    const double values[] = {0.25, 0.25};
    const TSpectrum spectrum(wavelengths, 2, values);
    const unsigned char* const bytes = reinterpret_cast<const unsigned char*>(&spectrum);
    std::int32_t count = 0;
    double first = 0.0, last = 0.0;
    std::memcpy(&count, bytes + 32, sizeof count);
    std::memcpy(&first, bytes + 56, sizeof first);
    std::memcpy(&last, bytes + 56 + 35 * 8, sizeof last);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(first, 0.25);
    EXPECT_EQ(last, 0.25);
}

TEST(layout, membersOfAWeighting_standWhereTheyAreExpected) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const TIlluminant lamp(&spectrum, "lamp");
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    const unsigned char* const bytes = reinterpret_cast<const unsigned char*>(&weighting);
    std::int64_t index = 0;
    double k = 0.0, function = 0.0, weight = 0.0, combined = 0.0;
    std::memcpy(&index, bytes, sizeof index);
    std::memcpy(&k, bytes + 8, sizeof k);
    std::memcpy(&function, bytes + 304 + 18 * 8, sizeof function);
    std::memcpy(&weight, bytes + 1168 + 18 * 8, sizeof weight);
    std::memcpy(&combined, bytes + 1744 + 18 * 8, sizeof combined);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(k, weighting.GetFactor());
    EXPECT_EQ(function, TObserver::sYSpectrum[0][36]); // 560 nm
    EXPECT_EQ(weight, 100.0 * TObserver::sYSpectrum[0][36]);
    EXPECT_EQ(combined, weighting.GetCombinedWeights()[18]);
}

#endif

// Serialised buffers.

TSpectrum twoSamples() {
    const double wavelengths[] = {400.0, 700.0};
    const double values[] = {0.5, 0.25};
    return TSpectrum(wavelengths, 2, values);
}

TEST(spectrumBuffers, areNullUntilRequested) {
    const TSpectrum spectrum = twoSamples();
    EXPECT_EQ(LayoutProbe::membersOf(spectrum).fileData, nullptr);
    EXPECT_EQ(LayoutProbe::membersOf(spectrum).shortFileData, nullptr);
}

TEST(spectrumBuffers, fileData_isOwnedAndDiscardsTheShortOne) {
    TSpectrum spectrum = twoSamples();
    int size = 0;
    ASSERT_NE(spectrum.ToShrtFileData(&spectrum, &size), nullptr);
    ASSERT_NE(LayoutProbe::membersOf(spectrum).shortFileData, nullptr);
    const std::uint16_t* const data = spectrum.ToFileData(&size);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(LayoutProbe::membersOf(spectrum).fileData, data);
    EXPECT_EQ(LayoutProbe::membersOf(spectrum).shortFileData, nullptr);
    EXPECT_EQ(spectrum.GetFileDataSize(), size);
}

TEST(spectrumBuffers, shortFileData_isOwnedAndDiscardsTheFileData) {
    TSpectrum spectrum = twoSamples();
    int size = 0;
    ASSERT_NE(spectrum.ToFileData(&size), nullptr);
    const std::uint16_t* const data = spectrum.ToShrtFileData(&spectrum, &size);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(LayoutProbe::membersOf(spectrum).shortFileData, data);
    EXPECT_EQ(LayoutProbe::membersOf(spectrum).fileData, nullptr);
    EXPECT_EQ(spectrum.GetFileDataSize(), size);
}

TEST(spectrumBuffers, shortFileDataThatMismatches_discardsTheFileDataAllTheSame) {
    TSpectrum spectrum = twoSamples();
    const TSpectrum reference = spectrumOf(ramp());
    int size = 0;
    ASSERT_NE(spectrum.ToFileData(&size), nullptr);
    EXPECT_EQ(spectrum.ToShrtFileData(&reference, &size), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 5);
    EXPECT_EQ(LayoutProbe::membersOf(spectrum).fileData, nullptr);
}

TEST(spectrumBuffers, shortFileDataWithNullArguments_discardTheFileDataFirst) {
    const TSpectrum reference = twoSamples();
    int size = 0;
    for (const bool withReference : {false, true}) {
        TSpectrum spectrum = twoSamples();
        ASSERT_NE(spectrum.ToFileData(&size), nullptr);
        EXPECT_EQ(
            spectrum.ToShrtFileData(withReference ? &reference : nullptr, withReference ? nullptr : &size),
            nullptr);
        EXPECT_EQ(spectrum.GetStatus(), 2);
        EXPECT_EQ(LayoutProbe::membersOf(spectrum).fileData, nullptr);
    }
}

TEST(spectrumBuffers, requestThatFails_leavesTheSizeOfTheLastBuffer) {
    TSpectrum spectrum = twoSamples();
    const TSpectrum reference = spectrumOf(ramp());
    int size = 0, untouched = -7;
    ASSERT_NE(spectrum.ToFileData(&size), nullptr);
    EXPECT_EQ(spectrum.ToShrtFileData(&reference, &untouched), nullptr);
    EXPECT_EQ(spectrum.ToShrtFileData(nullptr, &untouched), nullptr);
    EXPECT_EQ(spectrum.ToFileData(nullptr), nullptr);
    EXPECT_EQ(spectrum.GetFileDataSize(), 4 * 2 + 6);
    EXPECT_EQ(untouched, -7);
}

TEST(spectrumBuffers, fileDataWithANullSize_keepTheBuffers) {
    TSpectrum first = twoSamples(), second = twoSamples();
    int size = 0;
    const std::uint16_t* const longData = first.ToFileData(&size);
    const std::uint16_t* const shortData = second.ToShrtFileData(&second, &size);
    ASSERT_NE(longData, nullptr);
    ASSERT_NE(shortData, nullptr);
    EXPECT_EQ(first.ToFileData(nullptr), nullptr);
    EXPECT_EQ(second.ToFileData(nullptr), nullptr);
    EXPECT_EQ(first.GetStatus(), 2);
    EXPECT_EQ(LayoutProbe::membersOf(first).fileData, longData);
    EXPECT_EQ(LayoutProbe::membersOf(second).shortFileData, shortData);
    EXPECT_EQ(longData[1], 2);
    EXPECT_EQ(shortData[1], 32767); // 0.5 by 2^0
}

TEST(spectrumBuffers, copies_startWithoutThem) {
    TSpectrum spectrum = twoSamples();
    int size = 0;
    ASSERT_NE(spectrum.ToFileData(&size), nullptr);
    const TSpectrum copy(spectrum);
    EXPECT_EQ(LayoutProbe::membersOf(copy).fileData, nullptr);
    TSpectrum target;
    ASSERT_NE(target.ToFileData(&size), nullptr);
    target = spectrum;
    EXPECT_EQ(LayoutProbe::membersOf(target).fileData, nullptr);
    EXPECT_EQ(LayoutProbe::membersOf(target).shortFileData, nullptr);
    EXPECT_NE(LayoutProbe::membersOf(spectrum).fileData, nullptr);
}

TEST(spectrumBuffers, clearing_releasesThem) {
    TSpectrum first = twoSamples(), second = twoSamples();
    int size = 0;
    ASSERT_NE(first.ToFileData(&size), nullptr);
    ASSERT_NE(second.ToShrtFileData(&second, &size), nullptr);
    first.Clear();
    second.ClearNonUniform();
    EXPECT_EQ(LayoutProbe::membersOf(first).fileData, nullptr);
    EXPECT_EQ(LayoutProbe::membersOf(second).shortFileData, nullptr);
    EXPECT_EQ(second.GetFileDataSize(), 0);
}

// SetToZero is for storage that was never constructed: it looks at nothing and releases nothing.

TEST(spectrumSetToZero, releasesNothing) {
    TSpectrum spectrum = twoSamples();
    int size = 0;
    ASSERT_NE(spectrum.ToFileData(&size), nullptr);
    const LayoutProbe::SpectrumMembers held = LayoutProbe::membersOf(spectrum);
    spectrum.SetToZero();
    const LayoutProbe::SpectrumMembers left = LayoutProbe::membersOf(spectrum);
    EXPECT_EQ(left.fileData, nullptr);
    EXPECT_EQ(left.shortFileData, nullptr);
    EXPECT_EQ(left.wavelengths, nullptr);
    EXPECT_EQ(left.values, nullptr);
    EXPECT_EQ(held.fileData[1], 2);
    EXPECT_EQ(held.wavelengths[1], 700.0);
    EXPECT_EQ(held.values[1], 0.25);
    LayoutProbe::setMembers(spectrum, held); // the destructor releases them
}

TEST(spectrumSetToZero, looksAtNothing) {
    TSpectrum spectrum;
    LayoutProbe::fillWithRubbish(spectrum);
    spectrum.SetToZero();
    const LayoutProbe::SpectrumMembers left = LayoutProbe::membersOf(spectrum);
    EXPECT_EQ(left.fileData, nullptr);
    EXPECT_EQ(left.shortFileData, nullptr);
    EXPECT_EQ(left.wavelengths, nullptr);
    EXPECT_EQ(left.values, nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetFileDataSize(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 0);
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

// Short file data take flag and count from the reference, whatever state that is in.

TEST(spectrumShortReference, flagOf2OrMore_givesStatus3) {
    const std::vector<std::uint16_t> words(37, 1);
    for (const int flag : {2, 77, -1}) {
        TSpectrum reference = spectrumOf(ramp());
        LayoutProbe::setFlag(reference, flag);
        const TSpectrum spectrum(&reference, words.data(), nullptr);
        EXPECT_EQ(spectrum.GetStatus(), 3) << flag;
        EXPECT_EQ(spectrum.GetNrSamples(), 0) << flag;
        EXPECT_THAT(standardOf(spectrum), Each(-1.0)) << flag;
        LayoutProbe::setFlag(reference, 0);
    }
}

TEST(spectrumShortReference, countBelow0_givesStatus3) {
    const std::vector<std::uint16_t> words(37, 1);
    TSpectrum reference = twoSamples();
    LayoutProbe::setCount(reference, -1);
    const TSpectrum spectrum(&reference, words.data(), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 3);
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
    LayoutProbe::setCount(reference, 2);
}

} // namespace
} // namespace qxcms::tests
