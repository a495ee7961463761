// Operations with the memory and the time that they take.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "fuzz/memory_meter.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {

inline constexpr std::size_t kMebibyte = 1024 * 1024;

/// What an operation over `size` bytes of input answers and takes.
template <class Result>
struct Measured {
    template <class Operation>
    Measured(std::size_t inputSize, Operation&& operation) : size(inputSize) {
        const fuzz::MemoryMeter meter;
        const Stopwatch watch;
        result = operation();
        seconds = watch.seconds();
        peak = meter.peak();
    }

    std::size_t size;
    Result result{};
    double seconds = 0.0;
    std::size_t peak = 0;
};

/// A text that was read into a document of its own.
struct MeasuredReading : Measured<int> {
    explicit MeasuredReading(const std::string& text, TCgatsDiagnosticSink* sink = nullptr)
        : MeasuredReading(text, sink, std::make_unique<TCgats>()) {}

    int code() const { return result; }

    std::unique_ptr<TCgats> document;

private:
    MeasuredReading(const std::string& text, TCgatsDiagnosticSink* sink, std::unique_ptr<TCgats> target)
        : Measured<int>(text.size(), [&] { return target->ReadFromBuffer(text.c_str(), sink); }),
          document(std::move(target)) {}
};

/// At the peak, 64 bytes for each byte of input and 64 KiB.
template <class Result>
testing::AssertionResult staysWithinMemory(const Measured<Result>& measured) {
    if (measured.peak <= fuzz::allowedMemory(measured.size))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << measured.peak << " bytes for an input of " << measured.size << ", "
           << static_cast<double>(measured.peak) / static_cast<double>(measured.size) << " for each";
}

/// A second for a mebibyte or less, of the processor time of a release build.
template <class Result>
testing::AssertionResult isAnsweredInTime(const Measured<Result>& measured) {
    if (measured.seconds < 1.0)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << measured.seconds << " seconds for an input of " << measured.size;
}

/// `unit` again and again, as often as it fits between `before` and `after` in `size` bytes.
inline std::string filled(std::size_t size, const std::string& unit, const std::string& before = "",
                          const std::string& after = "") {
    const std::size_t rest = size - before.size() - after.size();
    return before + repeated(unit, static_cast<int>(rest / unit.size())) + after;
}

} // namespace qxcms::tests
