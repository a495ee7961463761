#include "spectral/tmeasgeom.h"

#include <cstring>

#include "platform/utility.h"

namespace {

constexpr int kBadArgument = 2;

// Kept on purpose: the misspelling is part of the report
// (geometry.getGeometryNameOf14_reportsUnkownGeometry).
constexpr const char* kUnknownGeometry = "Unkown Geometry";
constexpr const char* kModule = "tmeasgeom";
constexpr int kNameLookupLine = 95;
constexpr int kNumberLookupLine = 108;

} // namespace

const int TMeasGeom::sNrGeom = 13;

const char* const TMeasGeom::sGeomList[14] = {"Ill 45, Obs 0",
                                              "Ill 0, Obs 45",
                                              "Ill Diffuse, Obs 8",
                                              "Ill Diffuse, Obs 8, Specular included",
                                              "Ill 8, Obs Diffuse",
                                              "Ill 8, Obs Diffuse, Specular included",
                                              "Ill None, Obs 0",
                                              "Ill 45, Obs 0, Pol Filter",
                                              "Ill 45, Obs 0, D65 Filter",
                                              "Ill 45, Obs 0, UV Filter",
                                              "Ill None, Obs 0, Pol Filter",
                                              "Ill None, Obs 0, D65 Filter",
                                              "Ill None, Obs 0, UV Filter",
                                              nullptr};

TMeasGeom::TMeasGeom(int geometry) : number(0), status(0) {
    if (static_cast<std::uint32_t>(geometry) < static_cast<std::uint32_t>(sNrGeom))
        number = static_cast<std::uint32_t>(geometry);
    else
        status = kBadArgument;
}

TMeasGeom::TMeasGeom(const char* name) : number(0), status(kBadArgument) {
    for (int i = 0; name != nullptr && i < sNrGeom; ++i)
        if (std::strcmp(name, sGeomList[i]) == 0) {
            number = static_cast<std::uint32_t>(i);
            status = 0;
            return;
        }
}

TMeasGeom::TMeasGeom(const TMeasGeom& other) : number(other.number), status(0) {}

TMeasGeom& TMeasGeom::operator=(const TMeasGeom& other) {
    number = other.number;
    status = 0;
    return *this;
}

TMeasGeom::~TMeasGeom() = default;

int TMeasGeom::GetKnownGeometries(const char*** names, int* count) {
    if (names == nullptr || count == nullptr)
        return kBadArgument;
    *names = const_cast<const char**>(sGeomList);
    *count = sNrGeom;
    return 0;
}

const char* TMeasGeom::GetGeometryName(int geometry) {
    // Kept on purpose: number 13 is accepted and gives the null entry behind the names, without a report
    // (geometry.getGeometryNameOf13_isNullWithoutAMessage).
    if (static_cast<std::uint32_t>(geometry) > static_cast<std::uint32_t>(sNrGeom)) {
        error_mess_fl(kUnknownGeometry, kModule, kNameLookupLine);
        return nullptr;
    }
    return sGeomList[geometry];
}

int TMeasGeom::GetGeometryNumber(const char* name) {
    // Kept on purpose: case does not matter here, while it does in the constructor
    // (geometry.nameInLowerCase_isUnknownToTheConstructorAndKnownToTheLookup).
    for (int i = 0; name != nullptr && i < sNrGeom; ++i)
        if (strcmp_ci(name, sGeomList[i]) == 0)
            return i;
    error_mess_fl(kUnknownGeometry, kModule, kNumberLookupLine);
    return -1;
}

const char* TMeasGeom::GetName() const {
    return sGeomList[number];
}
