// Real charts, of which nothing is told.
#include "qc/plausibility.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qc/conditions.h"
#include "qc/illuminants.h"
#include "qc/lab_rows.h"

namespace qxcms::tests {
namespace {

using qc::Chart;
using qc::ColorSource;
using testing::IsEmpty;

TEST(plausibility, shippedCharts_areLetPass) {
    for (const char* name : {"colorchecker_spectral.txt", "colorchecker_aims.txt"}) {
        TCgats document((std::string(QXCMS_SOURCE_DIR "/data/charts/") + name).c_str());
        ASSERT_EQ(document.GetErrorCode(), 0);
        const Chart chart{name, &document, 0};
        const ColorSource source = qc::colorSource(chart, {});
        const qc::Illuminants illuminants;
        const TObserver observer("2 degree");
        const qc::Conditions conditions(*illuminants.find("D50"), observer);
        EXPECT_THAT(qc::implausibilities(chart, source, {}, qc::labRows(chart, source, &conditions), {}),
                    IsEmpty());
    }
}

} // namespace
} // namespace qxcms::tests
