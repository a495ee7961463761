/// @file
/// Everything that can be asked of a document.
#pragma once

#include "cgats/tcgats.h"

namespace qxcms::fuzz {

/// Whether the reader may answer this code for a text.
bool isReaderCode(int code);

/// Asks a document that a text was read into, by every query and for a few samples and fields at both ends
/// and in the middle; ends the process when answers contradict each other. Sets its descriptive keywords at
/// last.
void askEverything(TCgats& document);

} // namespace qxcms::fuzz
