/// @file
/// The version of the library. The build reads it from here.
#pragma once

#define QXCMS_VERSION "0.1.0"
