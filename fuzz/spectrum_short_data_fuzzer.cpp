// The short file data of a spectrum, read against references of every kind: of known length, and in memory
// that the caller vouches for.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "fuzz/exact_memory.h"
#include "fuzz/kernel_probe.h"
#include "fuzz/memory_meter.h"
#include "fuzz/must.h"
#include "fuzz/spectrum_questions.h"

namespace {

using namespace qxcms::fuzz;

// Mostly few samples, for speed; at times a few more than the form may have.
constexpr unsigned kFewSamples = 40;
constexpr unsigned kMostSamples = TSpectrum::kMaxSamples + 8;

// The reference that the front of the input asks for: standard values, samples, or samples that cannot be.
std::unique_ptr<TSpectrum> referenceFrom(InputFront& front) {
    const unsigned kind = front.byte();
    const unsigned most = kind < 0xE0 ? kFewSamples : kMostSamples;
    const auto samples = static_cast<int>(front.word() % (most + 1));
    if (kind % 2 == 0)
        return std::make_unique<TSpectrum>();
    // A text alone may bring more samples than arrays.
    const auto step = static_cast<int>(1 + kind / 2);
    std::string text = std::to_string(samples);
    for (int i = 0; i < samples; ++i)
        text += " " + std::to_string(step * i);
    for (int i = 0; i < samples; ++i)
        text += " 1";
    return std::make_unique<TSpectrum>(text.c_str());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    InputFront front(data, size);
    const std::unique_ptr<TSpectrum> reference = referenceFrom(front);
    const std::size_t restSize = front.restSize();
    const bool isStandard = reference->GetNonUniformFlag() == 0;
    const auto values =
        static_cast<std::size_t>(isStandard ? TSpectrum::kStandardCount : reference->GetNrSamples());
    const bool isRefused = !isStandard && values > TSpectrum::kMaxSamples;

    const ExactBytes bytes(front.rest(), restSize);
    TSpectrum bounded;
    const MemoryMeter meter;
    qxcms::detail::LayoutProbe::readShortFileData(bounded, *reference, bytes.data(), restSize);
    must(meter.peak() <= allowedMemory(restSize), "short file data need memory in proportion");
    askSpectrum(bounded);

    const std::size_t needed = isRefused ? 0 : 2 * values + 2;
    const ExactBytes memory(front.rest(), restSize, needed);
    void* end = nullptr;
    TSpectrum trusting(reference.get(), memory.data(), &end);
    must(trusting.GetStatus() == (isRefused ? 3 : 0),
         "short file data are refused for their reference alone");
    must(end == memory.data() + needed, "short file data are read to their end");
    askSpectrum(trusting);
    must(restSize >= needed || bounded.GetStatus() == 3, "short file data that are cut off are refused");
    if (restSize >= needed)
        mustEqual(bounded, trusting);
    return 0;
}
