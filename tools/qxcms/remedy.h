/// @file
/// What a person can do about a text that is refused.
#pragma once

#include <string>

namespace qxcms::command {

/// What can be done, a sentence without a full stop; there is one for every code of a document but 0.
/// @param token what was found. @param expected what was expected there; both are empty where there is no
/// place.
std::string remedyOf(int code, const std::string& token, const std::string& expected);

} // namespace qxcms::command
