/// @file
/// "qxcms info" for people.
#pragma once

#include <string>

#include "tools/qxcms/document_file.h"

namespace qxcms::command {

/// One file, with an empty line behind it.
std::string infoText(const DocumentFile& file);

} // namespace qxcms::command
