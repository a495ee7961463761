#include "qc/published_whites.h"

#include <algorithm>
#include <iterator>

#include "platform/utility.h"
#include "qc/published_white_table.h"

namespace qxcms::qc {

namespace {

std::array<double, 3> fromChromaticity(double x, double y) {
    return {100.0 * x / y, 100.0, 100.0 * (1.0 - x - y) / y};
}

} // namespace

std::optional<std::array<double, 3>> publishedWhite(const std::string& illuminant, bool tenDegree) {
    const auto* const end = std::end(kPublishedWhites);
    const auto* const white =
        std::find_if(std::begin(kPublishedWhites), end, [&](const PublishedWhite& candidate) {
            return candidate.tenDegree == tenDegree &&
                   strcmp_ci(candidate.illuminant, illuminant.c_str()) == 0;
        });
    if (white == end)
        return std::nullopt;
    if (white->tristimulusX > 0.0)
        return std::array<double, 3>{white->tristimulusX, 100.0, white->tristimulusZ};
    return fromChromaticity(white->chromaticityX, white->chromaticityY);
}

} // namespace qxcms::qc
