// The file data of a spectrum: of known length, and in memory that the caller vouches for.
#include <cstddef>
#include <cstdint>

#include "fuzz/exact_memory.h"
#include "fuzz/kernel_probe.h"
#include "fuzz/memory_meter.h"
#include "fuzz/must.h"
#include "fuzz/spectrum_questions.h"

namespace {

using namespace qxcms::fuzz;

// How many bytes the form holds, as its first words say.
std::size_t neededSize(const std::uint8_t* data, std::size_t size) {
    InputFront front(data, size);
    const unsigned flag = front.word();
    if (flag == 0)
        return 76;
    if (flag > 1)
        return 2;
    const unsigned samples = front.word();
    return samples < 1 || samples > TSpectrum::kMaxSamples ? 4 : 4 * samples + 6;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ExactBytes bytes(data, size);
    TSpectrum bounded;
    const MemoryMeter meter;
    qxcms::detail::LayoutProbe::readFileData(bounded, bytes.data(), size);
    must(meter.peak() <= allowedMemory(size), "file data need memory in proportion");
    const std::size_t needed = neededSize(data, size);
    must(size >= needed || bounded.GetStatus() == 3, "file data that are cut off are refused");
    askSpectrum(bounded);

    const ExactBytes memory(data, size, needed);
    void* end = nullptr;
    TSpectrum trusting(memory.data(), &end);
    must(trusting.GetStatus() == 0 || trusting.GetStatus() == 3 || trusting.GetStatus() == 4,
         "file data give one of their codes");
    must((trusting.GetStatus() == 3) == (needed <= 4),
         "file data are refused for their flag and count alone");
    must(trusting.GetStatus() == 3 || end == memory.data() + needed, "file data are read to their end");
    must(end >= memory.data() && end <= memory.data() + needed, "file data are read within their memory");
    askSpectrum(trusting);
    if (size >= needed)
        mustEqual(bounded, trusting);
    return 0;
}
