#include <cstdio>

#include "qxcms.h"

int main() {
    const double nanometres[] = {400, 500, 600, 700}, reflectance[] = {0.06, 0.09, 0.41, 0.52};
    TSpectrum sample(nanometres, 4, reflectance);
    TIlluminantFactory::New()->AddDirectory("QX_CMS:[r.ill]"); // the illuminants of the library
    TIlluminantAndObserver weighting("D50", "2 degree", 36);
    double xyz[3], white[3], lab[3];
    weighting.GetXYZ(&sample, xyz, 36);
    weighting.GetXYZWhite(white);
    TLabSpace(white).XYZToLab(xyz, lab);
    std::printf("L* %.2f  a* %.2f  b* %.2f\n", lab[0], lab[1], lab[2]);
    TIlluminantFactory::Delete();
}
