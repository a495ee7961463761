// For every processor of the kind.
#if defined(__SSE2__)

#include "cgats/row_block_kernel.h"

namespace qxcms::detail {

const RowReaders kCommonRowReaders = {readRowBlocks, readPlainRows};

} // namespace qxcms::detail

#else

#include "cgats/row_block.h"

namespace qxcms::detail {

const RowReaders kCommonRowReaders = {nullptr, nullptr};

} // namespace qxcms::detail

#endif
