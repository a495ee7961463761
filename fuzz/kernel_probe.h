/// @file
/// The way to the operations that take a length, which files go through.
#pragma once

#include "base/byte_reader.h"
#include "spectral/tilluminant.h"
#include "spectral/tspectrum.h"

namespace qxcms::detail {

/// The friend that the classes grant to tests.
struct LayoutProbe {
    static int readImage(TIlluminant& illuminant, const void* image, std::size_t size) {
        return illuminant.readImage(ByteReader(image, size));
    }
    static void readText(TSpectrum& spectrum, const char* first, const char* last) {
        spectrum.readText(first, last);
    }
    static void readFileData(TSpectrum& spectrum, const void* data, std::size_t size) {
        ByteReader reader(data, size);
        spectrum.readFileData(reader);
    }
    static void readShortFileData(TSpectrum& spectrum, const TSpectrum& reference, const void* data,
                                  std::size_t size) {
        ByteReader reader(data, size);
        spectrum.readShortFileData(reference, reader);
    }
};

} // namespace qxcms::detail
