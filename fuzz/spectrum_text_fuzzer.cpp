// The text form of a spectrum, terminated and with a length.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "fuzz/exact_memory.h"
#include "fuzz/kernel_probe.h"
#include "fuzz/memory_meter.h"
#include "fuzz/must.h"
#include "fuzz/spectrum_questions.h"

using namespace qxcms::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ExactText text(data, size);
    const MemoryMeter meter;
    TSpectrum spectrum(text.c_str());
    must(meter.peak() <= allowedMemory(text.size()), "a text needs memory in proportion");
    const int status = spectrum.GetStatus();
    must(status == 0 || status == 3 || status == 4, "a text gives one of its codes");
    must((status == 3) == (spectrum.GetNrSamples() == 0), "a text without its numbers gives no samples");
    // One character for each number, and one between them at least.
    must(4 * static_cast<std::size_t>(spectrum.GetNrSamples()) <= text.size(), "samples come from the text");
    must(spectrum.GetNonUniformFlag() == 1, "a text stands for samples");
    askSpectrum(spectrum);

    const ExactBytes bytes(data, size);
    const char* const first = reinterpret_cast<const char*>(bytes.data());
    TSpectrum bounded;
    qxcms::detail::LayoutProbe::readText(bounded, first, first + size);
    if (text.size() == size)
        mustEqual(bounded, spectrum);
    else
        askSpectrum(bounded);
    return 0;
}
