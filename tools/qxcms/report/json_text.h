/// @file
/// JSON as the command writes it.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace qxcms::command {

/// Keys stay in the order in which they were put.
using Json = nlohmann::ordered_json;

/// Indented by two; bytes that are not UTF-8 become U+FFFD. Ends with a line feed.
std::string jsonText(const Json& json);

} // namespace qxcms::command
