/// @file
/// Marks what the shared libraries export; everything else is hidden.
#pragma once

#if defined(__GNUC__)
#define QXCMS_API __attribute__((visibility("default")))
#else
#define QXCMS_API
#endif
