#include "cgats/tcgatstableheader.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "base/guarded.h"
#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"

using qxcms::detail::guarded;

namespace {

constexpr int kRefused = 1;
constexpr int kNotConsistent = 7;
constexpr int kNoMemory = 10;

// Kept on purpose: of the custom fields this one alone names the samples, case included
// (headerClassification.otherAliases_doNot).
constexpr const char* kSampleNameField = "SampleID";

constexpr int kCmykChannels = 4;

using Columns = std::unique_ptr<std::int32_t[]>;

Columns newColumns(int count) {
    auto columns = std::make_unique<std::int32_t[]>(static_cast<std::size_t>(count));
    std::fill_n(columns.get(), count, -1);
    return columns;
}

bool allFound(const std::int32_t* columns, int count) {
    return std::find(columns, columns + count, -1) == columns + count;
}

Columns copyIfComplete(const std::int32_t* columns, int count) {
    if (!allFound(columns, count))
        return nullptr;
    auto copy = newColumns(count);
    std::copy_n(columns, count, copy.get());
    return copy;
}

} // namespace

// What one walk over the columns finds.
struct TCgatsTableHeader::Census {
    std::int32_t cmyk[kCmykChannels] = {-1, -1, -1, -1};
    std::int32_t xyz[3] = {-1, -1, -1};
    std::int32_t lab[3] = {-1, -1, -1};
    std::int32_t sampleName = -1;
    int nrCmyk = 0;
    int nrProcess = 0;
    int nrNColors = 0;
    int nrSpots = 0;
    int nrSpectral = 0;
    int channels = 0; // of the n-colour space, as the first of its columns says

    void countStandard(int fieldId, std::int32_t column) {
        using namespace qxcms::detail;
        if (fieldId >= kCmykC && fieldId <= kCmykK) {
            cmyk[fieldId - kCmykC] = column;
            ++nrCmyk;
        } else if (fieldId >= kXyzX && fieldId <= kXyzZ) {
            xyz[fieldId - kXyzX] = column;
        } else if (fieldId >= kLabL && fieldId <= kLabB) {
            lab[fieldId - kLabL] = column;
        }
    }
};

TCgatsTableHeader::TCgatsTableHeader() : TCgatsTableHeader(0) {}

TCgatsTableHeader::TCgatsTableHeader(int slots)
    : nrSamples(0), nrDeclaredSlots(std::max(slots, 0)), classified(0), colorKind(kNoColors), nrColors(0),
      nrSpots(0), nrWaveLengths(0), sampleNameColumn(-1) {}

TCgatsTableHeader::~TCgatsTableHeader() = default;

int TCgatsTableHeader::GetNrFields() const {
    return std::max(nrDeclaredSlots, GetNrFilledFields());
}

const TCgatsField* TCgatsTableHeader::GetField(int index) const {
    if (index < 0 || index >= GetNrFilledFields())
        return nullptr;
    return fields[static_cast<std::size_t>(index)].get();
}

int TCgatsTableHeader::Append(TCgatsField* field) {
    std::unique_ptr<TCgatsField> owned(field);
    if (GetNrFilledFields() < nrDeclaredSlots)
        return kRefused;
    return adopt(std::move(owned));
}

int TCgatsTableHeader::FillNextSlot(TCgatsField* field) {
    std::unique_ptr<TCgatsField> owned(field);
    if (GetNrFilledFields() >= nrDeclaredSlots)
        return kRefused;
    return adopt(std::move(owned));
}

std::unique_ptr<TCgatsTableHeader> TCgatsTableHeader::Copy() const {
    return guarded(std::unique_ptr<TCgatsTableHeader>(), [this] {
        auto copy = std::make_unique<TCgatsTableHeader>();
        copy->nrSamples = nrSamples;
        copy->nrDeclaredSlots = nrDeclaredSlots;
        const bool whole = std::all_of(fields.begin(), fields.end(),
                                       [&](const auto& field) { return copy->adopt(field->Copy()) == 0; });
        return whole ? std::move(copy) : nullptr;
    });
}

int TCgatsTableHeader::adopt(std::unique_ptr<TCgatsField> field) {
    if (!field || field->GetBad() != 0)
        return kRefused;
    return guarded(kRefused, [&] {
        fields.push_back(std::move(field));
        classified = 0;
        return 0;
    });
}

void TCgatsTableHeader::forgetClassification() {
    classified = 0;
    colorKind = kNoColors;
    nrColors = 0;
    nrSpots = 0;
    nrWaveLengths = 0;
    sampleNameColumn = -1;
    colorColumns.reset();
    spotColumns.reset();
    spectralColumns.reset();
    labColumns.reset();
    xyzColumns.reset();
}

int TCgatsTableHeader::Classify() {
    if (GetNrFilledFields() != GetNrFields())
        return kNotConsistent;
    forgetClassification();
    const int error = guarded(kNoMemory, [this] { return summarise() ? 0 : kNotConsistent; });
    if (error != 0)
        forgetClassification();
    else
        classified = 1;
    return error;
}

bool TCgatsTableHeader::summarise() {
    Census census;
    if (!takeCensus(census) || !classifyColors(census) || !classifySpots(census) || !classifySpectra(census))
        return false;
    sampleNameColumn = census.sampleName;
    labColumns = copyIfComplete(census.lab, 3);
    xyzColumns = copyIfComplete(census.xyz, 3);
    return true;
}

// False for an n-colour space of too few channels or a negative wavelength.
bool TCgatsTableHeader::takeCensus(Census& census) const {
    for (std::int32_t column = 0; column < GetNrFilledFields(); ++column) {
        const TCgatsField& field = *GetField(column);
        switch (field.GetKind()) {
        case TCgatsField::kStandard:
            census.countStandard(field.GetFieldId(), column);
            break;
        case TCgatsField::kCustom:
            if (std::strcmp(field.GetName(), kSampleNameField) == 0)
                census.sampleName = column;
            break;
        case TCgatsField::kSpectral:
            if (field.GetNumber() < 0)
                return false;
            ++census.nrSpectral;
            break;
        case TCgatsField::kProcessColor:
            ++census.nrProcess;
            break;
        case TCgatsField::kNColor:
            if (census.nrNColors == 0)
                census.channels = qxcms::detail::textToInt(field.GetName());
            if (census.channels < qxcms::detail::kFewestNColors)
                return false;
            ++census.nrNColors;
            break;
        case TCgatsField::kSpotColor:
            ++census.nrSpots;
            break;
        default:
            break;
        }
    }
    return true;
}

// The columns of one kind by their number. A number outside 0 .. count - 1 goes nowhere; of equal numbers the
// last one counts. @return false when a number was outside.
bool TCgatsTableHeader::columnsByNumber(int kind, int count, std::int32_t* columns) const {
    bool inside = true;
    for (std::int32_t column = 0; column < GetNrFilledFields(); ++column) {
        const TCgatsField& field = *GetField(column);
        if (field.GetKind() != kind)
            continue;
        if (field.GetNumber() >= 0 && field.GetNumber() < count)
            columns[field.GetNumber()] = column;
        else
            inside = false;
    }
    return inside;
}

bool TCgatsTableHeader::classifyColors(const Census& census) {
    if (census.nrCmyk == kCmykChannels) {
        // Kept on purpose: a channel given twice means no colours at all, also when there are others
        // (headerClassification.cmykChannelTwiceAmongFour_doesNotFallBack).
        setColors(kCmyk, kCmykChannels, copyIfComplete(census.cmyk, kCmykChannels));
        return true;
    }
    if (census.nrNColors > 0 && census.nrNColors == census.channels) {
        auto columns = newColumns(census.channels);
        columnsByNumber(TCgatsField::kNColor, census.channels, columns.get());
        setColors(kNColors, census.channels, copyIfComplete(columns.get(), census.channels));
        return true;
    }
    if (census.nrProcess > 0) {
        auto columns = newColumns(census.nrProcess);
        const bool inside = columnsByNumber(TCgatsField::kProcessColor, census.nrProcess, columns.get());
        setColors(kCustomColors, census.nrProcess, std::move(columns));
        return inside;
    }
    return true;
}

void TCgatsTableHeader::setColors(int kind, int count, std::unique_ptr<std::int32_t[]> columns) {
    if (!columns)
        return;
    colorKind = kind;
    nrColors = count;
    colorColumns = std::move(columns);
}

bool TCgatsTableHeader::classifySpots(const Census& census) {
    if (census.nrSpots == 0)
        return true;
    nrSpots = census.nrSpots;
    spotColumns = newColumns(nrSpots);
    return columnsByNumber(TCgatsField::kSpotColor, nrSpots, spotColumns.get());
}

bool TCgatsTableHeader::classifySpectra(const Census& census) {
    if (census.nrSpectral == 0)
        return true;
    nrWaveLengths = census.nrSpectral;
    spectralColumns = newColumns(nrWaveLengths);
    std::int32_t* next = spectralColumns.get();
    for (std::int32_t column = 0; column < GetNrFilledFields(); ++column)
        if (GetField(column)->GetKind() == TCgatsField::kSpectral)
            *next++ = column;
    std::stable_sort(spectralColumns.get(), next, [this](std::int32_t a, std::int32_t b) {
        return GetField(a)->GetNumber() < GetField(b)->GetNumber();
    });
    return true;
}
