// For processors with AVX-512 (F, DQ and VL); the build compiles this file for these where it can.
#if defined(__AVX512F__) && defined(__AVX512DQ__) && defined(__AVX512VL__)

#include "colorspace/lanes_avx512.h"

#include "colorspace/fast_lab_kernel.h"

namespace qxcms::detail {

const LabKernel kAvx512LabKernel = {{rootsOfProducts, labOf<Single>}, {rootsOfQuotients, labOf<Exact>}};

} // namespace qxcms::detail

#else

#include "colorspace/fast_lab.h"

namespace qxcms::detail {

const LabKernel kAvx512LabKernel = {{nullptr, nullptr}, {nullptr, nullptr}};

} // namespace qxcms::detail

#endif
