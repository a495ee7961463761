// Types and reports cross the boundary of the libraries.
#include <cstdio>
#include <memory>
#include <typeinfo>

#include <qxcms.h>

namespace {

int reports = 0;

void countReport(void*, const char*, const char*, int) {
    ++reports;
}

/// A kind of emissive measurement that the library does not know.
class Flat : public TEmissionMeasurement {
public:
    using TEmissionMeasurement::TEmissionMeasurement;
    TOneMeasurement* Copy() const override { return new Flat(GetGeometry()); }
    int GetXYZ(TIlluminant*, TObserver*, double*) const override { return 0; }
    double* GetUniformSpectrum(double*, double*, int*) const override { return nullptr; }
    int GetSpecData(double*, double*, int*, bool*) override { return 0; }
};

bool isCaughtAsItsBase(TOneMeasurement* measurement) {
    try {
        throw dynamic_cast<TReflectionSpectrum*>(measurement);
    } catch (TOneMeasurement* caught) {
        return caught == measurement;
    }
}

} // namespace

int main() {
    const double nanometres[] = {380, 730}, reflectance[] = {0.1, 0.8};
    const TSpectrum spectrum(nanometres, 2, reflectance);
    const TMeasGeom geometry(0);
    const TReflectionSpectrum sample(&spectrum, &geometry);
    const std::unique_ptr<TOneMeasurement> copy(sample.Copy()); // made inside the library
    const std::unique_ptr<TOneMeasurement> own(Flat(&geometry).Copy());
    TIlluminantFactoryHolder registry;
    const std::unique_ptr<TObjEl> element(registry.TObjFacCreateEl(new TIlluminant(&spectrum, "lamp")));
    const qxcms_report_handler handler = {countReport, nullptr, nullptr};
    qxcms_set_report_handler(&handler);
    TMeasGeom::GetGeometryNumber("nowhere");
    error_mess_fl("a report of the program", "boundary", 1);
    const TOneMeasurement& copied = *copy;
    const bool holds = typeid(copied) == typeid(TReflectionSpectrum) &&
                       dynamic_cast<TReflectionMeasurement*>(copy.get()) != nullptr &&
                       dynamic_cast<TEmissionMeasurement*>(copy.get()) == nullptr &&
                       dynamic_cast<TEmissionMeasurement*>(own.get()) != nullptr &&
                       dynamic_cast<TIllEl*>(element.get()) != nullptr && isCaughtAsItsBase(copy.get()) &&
                       reports == 2;
    std::puts(holds ? "holds" : "broken");
}
