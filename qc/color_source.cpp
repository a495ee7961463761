#include "qc/color_source.h"

namespace qxcms::qc {

bool holds(const Chart& chart, ColorSource source) {
    if (!chart.isThere())
        return false;
    switch (source) {
    case ColorSource::spectra:
        return chart.document->ContainsWaveLengths(chart.table);
    case ColorSource::lab:
        return chart.document->ContainsLab(chart.table);
    case ColorSource::xyz:
        return chart.document->ContainsXyz(chart.table);
    }
    return false;
}

const char* nameOf(ColorSource source) {
    switch (source) {
    case ColorSource::spectra:
        return "spectra";
    case ColorSource::lab:
        return "lab";
    case ColorSource::xyz:
        return "xyz";
    }
    return "";
}

} // namespace qxcms::qc
