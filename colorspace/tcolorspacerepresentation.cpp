#include "colorspace/tcolorspacerepresentation.h"

TColorSpaceRepresentation::~TColorSpaceRepresentation() = default;
