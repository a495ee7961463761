/// @file
/// "qxcms info --json" for programs; docs/json.md describes the keys.
#pragma once

#include <string>
#include <vector>

#include "tools/qxcms/document_file.h"

namespace qxcms::command {

std::string infoJson(const std::vector<DocumentFile>& files);

} // namespace qxcms::command
