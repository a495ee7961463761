#include "bench/chart.h"

namespace qxcms::bench {

namespace {

// Four decimals of a number of 0 to 9999, behind "0.".
void addFraction(std::string& text, unsigned number) {
    const std::string digits = std::to_string(number);
    text.append("\t0.").append(4 - digits.size(), '0').append(digits);
}

} // namespace

std::string chartText(int patches) {
    std::string text = "CGATS.17\nORIGINATOR\t\"bench\"\nNUMBER_OF_FIELDS\t";
    text.append(std::to_string(1 + 4 + kBands));
    text.append("\nBEGIN_DATA_FORMAT\nSAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K");
    for (int band = 0; band < kBands; ++band)
        text.append(" SPECTRAL_NM_").append(std::to_string(380 + 10 * band));
    text.append("\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t")
        .append(std::to_string(patches))
        .append("\nBEGIN_DATA\n");
    unsigned state = 1;
    for (int patch = 0; patch < patches; ++patch) {
        text.append(std::to_string(patch + 1));
        for (int column = 0; column < 4 + kBands; ++column) {
            state = state * 1664525u + 1013904223u;
            addFraction(text, (state >> 16) % 10000);
        }
        text.push_back('\n');
    }
    return text.append("END_DATA\n");
}

} // namespace qxcms::bench
