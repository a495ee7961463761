// For processors with AVX2 and FMA; the build compiles this file for these where it can.
#if defined(__AVX2__) && defined(__FMA__)

#include "colorspace/lanes_avx2.h"

#include "colorspace/fast_lab_kernel.h"

namespace qxcms::detail {

const LabKernel kAvx2LabKernel = {{rootsOfProducts, labOf<Single>}, {rootsOfQuotients, labOf<Exact>}};

} // namespace qxcms::detail

#else

#include "colorspace/fast_lab.h"

namespace qxcms::detail {

const LabKernel kAvx2LabKernel = {{nullptr, nullptr}, {nullptr, nullptr}};

} // namespace qxcms::detail

#endif
