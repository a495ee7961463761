#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "platform/utility.h"

static_assert(std::numeric_limits<float>::is_iec559 && sizeof(float) == sizeof(std::uint32_t),
              "float is the single precision of IEEE 754");

void fltoffl(double value, unsigned char* fourBytes) {
    if (fourBytes == nullptr)
        return;
    constexpr std::uint32_t kNotANumber = 0x7FC00000;
    const std::uint32_t bits =
        std::isnan(value) ? kNotANumber : std::bit_cast<std::uint32_t>(static_cast<float>(value));
    for (int i = 0; i < 4; ++i)
        fourBytes[i] = static_cast<unsigned char>(bits >> 8 * i);
}

double ffltofl(const unsigned char* fourBytes) {
    if (fourBytes == nullptr)
        return std::numeric_limits<double>::quiet_NaN();
    std::uint32_t bits = 0;
    for (int i = 0; i < 4; ++i)
        bits |= static_cast<std::uint32_t>(fourBytes[i]) << 8 * i;
    return static_cast<double>(std::bit_cast<float>(bits));
}
