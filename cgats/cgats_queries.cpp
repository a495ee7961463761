// What callers ask a document for.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "base/guarded.h"
#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/tcgats.h"
#include "platform/utility.h"

using qxcms::detail::guarded;

namespace {

constexpr int kFailed = -1;
constexpr int kNotFound = 1;
constexpr int kBadArgument = 2;

constexpr double kPercent = 0.01;

// A colorant above this is at full strength; from the other on it prints at all.
constexpr double kFullStrength = 99.5;
constexpr double kNoInk = 0.5;

constexpr const char* kInkBookField = "InkBook";

// Copies a string of a document; an absent one as "".
void copyString(const char* from, char* to) {
    std::strcpy(to, from == nullptr ? "" : from);
}

// The colorant that prints alone and at full strength, -1 when there is none.
int solidColorant(const double* coordinates, int count) {
    int candidate = -1;
    for (int j = 0; j < count; ++j) {
        const bool full = coordinates[j] > kFullStrength;
        if (full && candidate < 0)
            candidate = j;
        else if (full || coordinates[j] >= kNoInk)
            return -1;
    }
    return candidate;
}

} // namespace

// The table a query may look into: null for a bad index, a document or a table in error.
const TCgatsTable* TCgats::usableTable(int table) const {
    if (SetErrorCode(0))
        return nullptr;
    const TCgatsTable* const found = GetTable(table);
    const bool usable = found != nullptr && found->GetTableError() == 0 && found->HasValuesOfAllColumns();
    return usable ? found : nullptr;
}

const TCgatsTableHeader* TCgats::usableHeader(int table) const {
    const TCgatsTable* const found = usableTable(table);
    return found == nullptr ? nullptr : found->GetHeader();
}

const TCgatsTable* TCgats::tableOfSample(int table, int sample) const {
    const TCgatsTable* const found = usableTable(table);
    return found != nullptr && sample >= 0 && sample < found->GetNrRowsStored() ? found : nullptr;
}

// Counts and kinds.

int TCgats::GetNrSamples(int table) const {
    // Kept on purpose: the one count that does not ask for the document's error state
    // (cgatsCounts.nrSamples_isAnsweredByADocumentInError).
    const TCgatsTable* const found = GetTable(table);
    return found == nullptr || found->GetHeader() == nullptr ? kFailed : found->GetHeader()->GetNrSamples();
}

int TCgats::GetNrFields(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header == nullptr ? kFailed : header->GetNrFields();
}

int TCgats::GetNrProcessColors(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header == nullptr ? kFailed : header->GetNrColors();
}

int TCgats::GetNrSpotColors(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header == nullptr ? kFailed : header->GetNrSpots();
}

int TCgats::GetNrWaveLengths(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header == nullptr ? kFailed : header->GetNrWaveLengths();
}

bool TCgats::IsCMYKDefined(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header != nullptr && header->GetColorKind() == TCgatsTableHeader::kCmyk;
}

bool TCgats::IsCustomDefined(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header != nullptr && header->GetColorKind() == TCgatsTableHeader::kCustomColors;
}

bool TCgats::IsNColorDefined(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header != nullptr && header->GetColorKind() == TCgatsTableHeader::kNColors;
}

bool TCgats::ContainsProcessColors(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header != nullptr && header->GetColorKind() != TCgatsTableHeader::kNoColors;
}

bool TCgats::ContainsSpotColors(int table) const {
    return GetNrSpotColors(table) > 0;
}

bool TCgats::ContainsWaveLengths(int table) const {
    return GetNrWaveLengths(table) > 0;
}

bool TCgats::ContainsLab(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header != nullptr && header->GetLabColumns() != nullptr;
}

bool TCgats::ContainsXyz(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header != nullptr && header->GetXyzColumns() != nullptr;
}

bool TCgats::ContainsSampleNames(int table) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header != nullptr && header->GetSampleNameColumn() >= 0;
}

bool TCgats::ContainsInkBookNames(int table) const {
    return ContainsFieldName(table, kInkBookField);
}

bool TCgats::ContainsFieldName(int table, const char* name) const {
    return GetFieldNameIndex(table, name) >= 0;
}

int TCgats::GetFieldNameIndex(int table, const char* name) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header == nullptr || name == nullptr ? kFailed : columnOfName(table, name);
}

bool TCgats::ContainsSpotDescriptions(int) const {
    return !SetErrorCode(0) && FindTag(qxcms::detail::kSpotId) >= 0;
}

bool TCgats::ContainsCustomProcessColorDescriptions(int) const {
    return !SetErrorCode(0) && FindTag(qxcms::detail::kProcessColorId) >= 0;
}

// Values.

int TCgats::GetWaveLengths(int table, int* wavelengths) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    if (header == nullptr || wavelengths == nullptr)
        return kNotFound;
    for (int i = 0; i < header->GetNrWaveLengths(); ++i)
        wavelengths[i] = header->GetField(header->GetSpectralColumns()[i])->GetNumber();
    return 0;
}

// The sample's values in these columns; nothing is written unless all columns exist.
int TCgats::fillFromColumns(int table, int sample, const std::int32_t* columns, int count,
                            double* out) const {
    const TCgatsTable* const found = tableOfSample(table, sample);
    if (found == nullptr || columns == nullptr || out == nullptr)
        return kFailed;
    if (std::find(columns, columns + count, -1) != columns + count)
        return kFailed;
    for (int i = 0; i < count; ++i)
        out[i] = found->GetValues(columns[i])->GetDouble(sample);
    return 0;
}

int TCgats::GetCoordinates(int table, int sample, double* coordinates) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    if (header == nullptr)
        return kFailed;
    if (header->GetColorKind() == TCgatsTableHeader::kNoColors)
        return GetSpotCoordinates(table, sample, coordinates);
    return fillFromColumns(table, sample, header->GetColorColumns(), header->GetNrColors(), coordinates);
}

int TCgats::GetSpotCoordinates(int table, int sample, double* coordinates) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    if (header == nullptr)
        return kFailed;
    return fillFromColumns(table, sample, header->GetSpotColumns(), header->GetNrSpots(), coordinates);
}

int TCgats::GetSpectrum(int table, int sample, double* spectrum) const {
    const TCgatsTable* const found = usableTable(table);
    if (found == nullptr)
        return kFailed;
    const TCgatsTableHeader& header = *found->GetHeader();
    const int count = header.GetNrWaveLengths();
    const int result = fillFromColumns(table, sample, header.GetSpectralColumns(), count, spectrum);
    if (result == 0 && found->IsSpectralPercent())
        for (int i = 0; i < count; ++i)
            spectrum[i] *= kPercent;
    return result;
}

int TCgats::GetLab(int table, int sample, double* lab) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header == nullptr ? kFailed : fillFromColumns(table, sample, header->GetLabColumns(), 3, lab);
}

int TCgats::GetXyz(int table, int sample, double* xyz) const {
    const TCgatsTableHeader* const header = usableHeader(table);
    return header == nullptr ? kFailed : fillFromColumns(table, sample, header->GetXyzColumns(), 3, xyz);
}

int TCgats::GetSampleName(int table, int sample, char* name) const {
    const TCgatsTable* const found = tableOfSample(table, sample);
    if (found == nullptr || name == nullptr || found->GetHeader()->GetSampleNameColumn() < 0)
        return kFailed;
    copyString(found->GetValues(found->GetHeader()->GetSampleNameColumn())->GetString(sample), name);
    return 0;
}

int TCgats::GetField(int table, int sample, int field, char* text) const {
    constexpr int kDecimals = 5;
    const TCgatsTable* const found = tableOfSample(table, sample);
    const TCgatsField* const description = found == nullptr ? nullptr : found->GetHeader()->GetField(field);
    if (description == nullptr || text == nullptr)
        return kFailed;
    const TCgatsValueList& values = *found->GetValues(field);
    switch (description->GetDataType()) {
    case TCgatsField::kString:
        copyString(values.GetString(sample), text);
        return 0;
    case TCgatsField::kInteger:
        copyString(std::to_string(values.GetInt(sample)).c_str(), text);
        return 0;
    case TCgatsField::kFloat:
        // Kept on purpose: percent stays percent here (cgatsFieldText.percentSpectra_areGivenAsStored).
        qxcms::detail::doubleToFixedText(values.GetDouble(sample), kDecimals, text);
        return 0;
    default:
        return kFailed;
    }
}

int TCgats::GetInkBookName(int table, int sample, char* name) const {
    const int field = GetFieldNameIndex(table, kInkBookField);
    if (field >= 0)
        return GetField(table, sample, field, name);
    if (name != nullptr)
        *name = '\0';
    return kFailed;
}

// The values of the first `count` tags of a code.
int TCgats::collectTagValues(int code, int count, const char** values) const {
    int found = 0;
    for (int i = 0; i < nrTags && found < count; ++i)
        if (tags[i]->GetCode() == code)
            values[found++] = tags[i]->GetValue();
    return found == count ? 0 : kFailed;
}

int TCgats::GetSpotColorDescriptions(int table, const char** descriptions) const {
    if (descriptions == nullptr || !ContainsSpotColors(table))
        return kFailed;
    return collectTagValues(qxcms::detail::kSpotId, GetNrSpotColors(table), descriptions);
}

int TCgats::GetCustomProcessColorDescriptions(int table, const char** descriptions) const {
    if (descriptions == nullptr || !IsCustomDefined(table))
        return kFailed;
    return collectTagValues(qxcms::detail::kProcessColorId, GetNrProcessColors(table), descriptions);
}

// Solid patches.

int TCgats::GetColorValues(int table, double* const* result, bool spectral, bool process) const {
    const bool hasColorants = process ? ContainsProcessColors(table) : ContainsSpotColors(table);
    const bool hasColor = spectral ? ContainsWaveLengths(table) : ContainsLab(table);
    if (result == nullptr || !hasColorants || !hasColor)
        return kNotFound;
    return guarded(kNotFound, [&] {
        const int count = process ? GetNrProcessColors(table) : GetNrSpotColors(table);
        const auto size = static_cast<std::size_t>(count);
        std::vector<bool> isFound(size, false);
        int nrFound = 0;
        // Kept on purpose: for spots nobody fills these, so that no solids are found
        // (solidPatches.spotColors_findNoSolid).
        std::vector<double> coordinates(size, 0.0);
        for (int sample = 0; sample < GetNrSamples(table); ++sample) {
            if (process && GetCoordinates(table, sample, coordinates.data()) != 0)
                return kNotFound;
            const int colorant = solidColorant(coordinates.data(), count);
            if (colorant < 0 || isFound[static_cast<std::size_t>(colorant)])
                continue;
            // Kept on purpose: the colour comes from the first table, whichever was asked for
            // (solidPatches.lab_isReadFromTheFirstTableWhateverTableIsAsked).
            const int failed =
                spectral ? GetSpectrum(0, sample, result[colorant]) : GetLab(0, sample, result[colorant]);
            if (failed != 0)
                return kNotFound;
            isFound[static_cast<std::size_t>(colorant)] = true;
            ++nrFound;
        }
        return nrFound == count ? 0 : kNotFound;
    });
}

int TCgats::GetProcessColorSpectra(int table, double* const* result) const {
    return GetColorValues(table, result, true, true);
}

int TCgats::GetProcessColorValues(int table, double* const* result, bool spectral) const {
    return GetColorValues(table, result, spectral, true);
}

int TCgats::GetProcessColorLab(int table, double* const* result) const {
    return GetColorValues(table, result, false, true);
}

int TCgats::GetSpotColorValues(int table, double* const* result, bool spectral) const {
    return GetColorValues(table, result, spectral, false);
}

// Descriptive keywords.

const char* TCgats::GetOriginator() const {
    return tagValue(qxcms::detail::kOriginator);
}

const char* TCgats::GetFileDescriptor() const {
    return tagValue(qxcms::detail::kFileDescriptor);
}

const char* TCgats::GetCreated() const {
    return tagValue(qxcms::detail::kCreated);
}

int TCgats::SetOriginator(const char* text) {
    return setTagValue(qxcms::detail::kOriginator, text);
}

int TCgats::SetFileDescriptor(const char* text) {
    return setTagValue(qxcms::detail::kFileDescriptor, text);
}

int TCgats::SetCreated(const char* text) {
    return setTagValue(qxcms::detail::kCreated, text);
}

const char* TCgats::tagValue(int code) const {
    const TCgatsTag* const tag = GetTag(code);
    return tag == nullptr ? nullptr : tag->GetValue();
}

int TCgats::setTagValue(int code, const char* text) {
    if (text == nullptr)
        return kBadArgument;
    if (TCgatsTag* const tag = GetTag(code))
        return tag->SetValue(text, 0);
    return InsertTag(code, qxcms::detail::kKeywords[code], 0, text, "", -1, false);
}
