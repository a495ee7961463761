// A reddish sample under D65: its X, Y, Z. The two spellings of the includes name the same headers.
#include <cstdio>

#include <qxcms/spectral/tilluminantfactoryholder.h>
#include <spectral/tilluminantandobserver.h>

int main() {
    const double nanometres[] = {380, 730}, reflectance[] = {0.1, 0.8};
    const TSpectrum sample(nanometres, 2, reflectance);
    TIlluminantFactory::New()->AddDirectory("QX_CMS:[r.ill]");
    double xyz[] = {0, 0, 0};
    TIlluminantAndObserver("D65", "2 degree", 36).GetXYZ(&sample, xyz, 36);
    TIlluminantFactory::Delete();
    std::printf("%.3f %.3f %.3f\n", xyz[0], xyz[1], xyz[2]);
}
