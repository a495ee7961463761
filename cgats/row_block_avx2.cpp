// For processors with AVX2, BMI2 and POPCNT; the build compiles this file for these where it can.
#if defined(__AVX2__) && defined(__BMI2__)

#include "cgats/row_block_kernel.h"

namespace qxcms::detail {

const RowReaders kAvx2RowReaders = {readRowBlocks, readPlainRows};

} // namespace qxcms::detail

#else

#include "cgats/row_block.h"

namespace qxcms::detail {

const RowReaders kAvx2RowReaders = {nullptr, nullptr};

} // namespace qxcms::detail

#endif
