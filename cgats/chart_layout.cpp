// How the samples of a document are laid out on a printed chart: keywords of the header.
#include <cstring>
#include <string>

#include "base/guarded.h"
#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/tcgats.h"

using namespace qxcms::detail;

namespace {

constexpr int kDecimals = 5;

// How the value of a layout tag is marked: all but texts are written bare.
constexpr int kText = 0;
constexpr int kInteger = 1;
constexpr int kReal = 2;

constexpr const char* kVandLayout = "Vand";

} // namespace

// In place of the first tag of that code, wherever it stands and however full the list is; else a new one.
void TCgats::putLayoutTag(int code, int numeric, const char* value) {
    const int existing = FindTag(code);
    if (existing < 0) {
        InsertTag(code, kKeywords[code], numeric, value, "", -1, false);
        return;
    }
    TCgatsTag* const tag = newTag(code, kKeywords[code], numeric, value, "");
    if (tag == nullptr)
        return;
    delete tags[existing];
    tags[existing] = tag;
}

int TCgats::AddLayoutInfo(int rowLength, int columns, int strips, bool vandLayout, double patchHeight,
                          double patchWidth, double gapY, double gapX, int borderPatches, int device,
                          int inkSet, int mirrorX) {
    if (SetErrorCode(0))
        return errorCode;
    const auto put = [this](bool present, int code, int value) {
        if (present)
            putLayoutTag(code, kInteger, std::to_string(value).c_str());
    };
    const auto putReal = [this](bool present, int code, double value) {
        if (present)
            putLayoutTag(code, kReal, fixedText(value, kDecimals).c_str());
    };
    return guarded(0, [&] {
        // Kept on purpose: the row length stands under two keywords
        // (chartLayout.rowLength_standsUnderTwoKeywords).
        put(rowLength != 0, kRowLength, rowLength);
        put(rowLength != 0, kNumberOfStripsInRows, rowLength);
        put(columns >= 2, kNumberOfColumns, columns);
        put(strips >= 2, kNumberOfStrips, strips);
        if (vandLayout)
            putLayoutTag(kLayoutType, kText, kVandLayout);
        putReal(patchHeight > 0.0, kPatchHeight, patchHeight);
        putReal(patchWidth > 0.0, kPatchWidth, patchWidth);
        putReal(gapX >= 0.0, kGapSizeX, gapX);
        putReal(gapY >= 0.0, kGapSizeY, gapY);
        put(borderPatches > 0, kBorderPatches, borderPatches);
        put(device >= 0, kDevice, device);
        put(inkSet >= 0, kInkSet, inkSet);
        put(mirrorX >= 1, kMirrorX, mirrorX);
        return 0;
    });
}

int TCgats::layoutInteger(int code, int absent) const {
    const char* const value = tagValue(code);
    return value == nullptr ? absent : textToInt(value);
}

double TCgats::layoutReal(int code, double absent) const {
    const char* const value = tagValue(code);
    return value == nullptr ? absent : textToDouble(value);
}

int TCgats::GetRowLength() const {
    return layoutInteger(kRowLength, layoutInteger(kNumberOfStripsInRows, 1));
}

// Kept on purpose: the number of rows is read from where the row length stands
// (chartLayout.numberOfRows_isTheRowLength).
int TCgats::GetNrOfRows() const {
    return GetRowLength();
}

int TCgats::GetNrOfCols() const {
    return layoutInteger(kNumberOfColumns, 1);
}

int TCgats::GetNrOfPages() const {
    return layoutInteger(kNumberOfStrips, 1);
}

bool TCgats::IsVandLayout() const {
    const char* const value = tagValue(kLayoutType);
    return value != nullptr && std::strcmp(value, kVandLayout) == 0;
}

double TCgats::GetPatchHeight() const {
    return layoutReal(kPatchHeight, 0.0);
}

double TCgats::GetPatchWidth() const {
    return layoutReal(kPatchWidth, 0.0);
}

double TCgats::GetGapSizeX() const {
    return layoutReal(kGapSizeX, -1.0);
}

double TCgats::GetGapSizeY() const {
    return layoutReal(kGapSizeY, -1.0);
}

int TCgats::GetInkSetNumber() const {
    return layoutInteger(kInkSet, -1);
}

int TCgats::GetIsMirroredX() const {
    return layoutInteger(kMirrorX, -1);
}
