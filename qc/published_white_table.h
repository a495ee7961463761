/// @file
/// The table of published white points. Internal.
#pragma once

namespace qxcms::qc {

/// What is printed of one white point; 0 stands for what is not.
struct PublishedWhite {
    const char* illuminant; ///< the CIE's short name
    bool tenDegree;
    double tristimulusX; ///< with Y = 100; printed together with Z
    double tristimulusZ;
    double chromaticityX; ///< printed for every one
    double chromaticityY;
};

inline constexpr int kPublishedWhiteCount = 47;

extern const PublishedWhite kPublishedWhites[kPublishedWhiteCount];

} // namespace qxcms::qc
