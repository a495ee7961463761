// Documents made from arrays, and what is added to their tables later.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "base/guarded.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/chart_rows.h"
#include "cgats/name_index.h"
#include "cgats/tcgats.h"

using namespace qxcms::detail;

namespace {

constexpr int kRefused = 1;

// How the value of a tag is marked.
constexpr int kQuoted = 0;
constexpr int kBare = 1;

// The version of the standard, first line of every file.
constexpr int kNoKeywordCode = -1;
constexpr const char* kFileIdentifier = "CGATS.17";

constexpr const char* kSampleIdField = "SampleID";
constexpr const char* kInkBookField = "InkBook";

constexpr int kTristimulusValues = 3;
constexpr int kFewestChannels = 3;

using Field = std::unique_ptr<TCgatsField>;

Field standardField(int code) {
    return std::make_unique<TCgatsField>(TCgatsField::kFloat, kFieldNames[code], 0, TCgatsField::kStandard,
                                         code);
}

Field numberedField(const std::string& name, int number, int kind) {
    return std::make_unique<TCgatsField>(TCgatsField::kFloat, name.c_str(), number, kind, 0);
}

Field textField(const char* name, int custom) {
    return std::make_unique<TCgatsField>(TCgatsField::kString, name, 0, TCgatsField::kCustom, custom);
}

Field processField(int colorants, int index, bool spot, bool custom) {
    const std::string number = std::to_string(index + 1);
    const std::string count = std::to_string(colorants);
    if (spot)
        return numberedField("SPOT_" + number, index, TCgatsField::kSpotColor);
    if (custom)
        return numberedField("PC" + count + "_" + number, index, TCgatsField::kProcessColor);
    // Kept on purpose: three colorants are the first three of CMYK
    // (cgatsBuilder.threeColorants_areCyanMagentaYellow).
    if (colorants < kFewestNColors)
        return standardField(kCmykC + index);
    return numberedField(count + "CLR_" + number, index, TCgatsField::kNColor);
}

bool haveFieldNames(int colorants, bool spot, bool custom) {
    return colorants >= (spot || custom ? 1 : kFewestChannels);
}

// A wavelength in nm as the integer that names its column.
int roundedWavelength(double wavelength) {
    constexpr double kLargest = std::numeric_limits<int>::max();
    const double rounded = wavelength + 0.5;
    return std::isnan(rounded) ? 0 : static_cast<int>(std::clamp(rounded, -kLargest, kLargest));
}

// Throws when there is no memory; a field that the header refuses fails its classification.
void append(TCgatsTableHeader& header, Field field) {
    if (header.Append(field.release()) != 0)
        throw std::bad_alloc();
}

void appendStandard(TCgatsTableHeader& header, int first) {
    for (int i = 0; i < kTristimulusValues; ++i)
        append(header, standardField(first + i));
}

} // namespace

TCgatsField** TCgats::CreateProcessFieldDescriptions(int colorants, bool spot, bool custom) {
    if (!haveFieldNames(colorants, spot, custom))
        return nullptr;
    return guarded(static_cast<TCgatsField**>(nullptr), [&] {
        std::vector<Field> fields;
        fields.reserve(static_cast<std::size_t>(colorants));
        for (int i = 0; i < colorants; ++i)
            fields.push_back(processField(colorants, i, spot, custom));
        auto** const handedOut = new TCgatsField*[fields.size()];
        std::transform(fields.begin(), fields.end(), handedOut, [](Field& field) { return field.release(); });
        return handedOut;
    });
}

int TCgats::AddTag(int code, const char* keyword, int numeric, const char* value, const char* comment) {
    if (nrTags >= kMaxTags)
        return kRefused;
    return appendTag(code, keyword, numeric, value, comment) ? 0 : kRefused;
}

// A header line with a keyword of the table; one that finds no place in the list is left out. @return whether
// it is there. Throws when there is no memory.
bool TCgats::appendKeyword(int code, int numeric, const char* value) {
    if (nrTags >= kMaxTags)
        return false;
    if (!appendTag(code, kKeywords[code], numeric, value, ""))
        throw std::bad_alloc();
    return true;
}

void TCgats::addTableTags(std::int64_t fields, int sets) {
    appendKeyword(kKeyword, kQuoted, kSampleIdField);
    appendKeyword(kNumberOfFields, kBare, std::to_string(fields).c_str());
    appendKeyword(kBeginDataFormat, kQuoted, "");
    appendKeyword(kEndDataFormat, kQuoted, "");
    appendKeyword(kNumberOfSets, kBare, std::to_string(sets).c_str());
    appendKeyword(kBeginData, kQuoted, "");
    appendKeyword(kEndData, kQuoted, "");
}

// Counts what reading the tags would count.
void TCgats::addColorantTags(int colorants, const char* const* names, bool process) {
    std::int32_t& counter = process ? nrProcessColorIdTags : nrSpotIdTags;
    for (int i = 0; i < colorants; ++i)
        if (appendKeyword(process ? kProcessColorId : kSpotId, kQuoted,
                          names == nullptr ? nullptr : names[i]))
            ++counter;
}

// The first lines of a document made from arrays, before its table.
template <class AddLines>
bool TCgats::startDocument(AddLines&& addLines) {
    const int code = guarded(static_cast<int>(kUnknownError), [&] {
        if (!appendTag(kNoKeywordCode, kFileIdentifier, kQuoted, "", ""))
            throw std::bad_alloc();
        return addLines();
    });
    SetErrorCode(code);
    return code == 0;
}

void TCgats::BuildTable(double full, double zero, int sets, const char* const* sampleNames, int colorants,
                        bool spot, const double* const* deviceValues, const double* const* lab,
                        const double* const* xyz, const double* const* spectra, int nrWavelengths,
                        const double* wavelengths, bool custom) {
    const int code = guarded(static_cast<int>(kUnknownError), [&] {
        ChartArrays chart;
        chart.full = full;
        chart.zero = zero;
        chart.sets = sets;
        chart.names = sampleNames;
        chart.colorants = colorants;
        chart.device = deviceValues;
        chart.lab = lab;
        chart.xyz = xyz;
        chart.spectra = spectra;
        return buildTable(chart, wavelengths == nullptr ? 0 : std::max(nrWavelengths, 0), wavelengths, spot,
                          custom);
    });
    SetErrorCode(code);
}

// @return a document code.
int TCgats::buildTable(const ChartArrays& chart, int nrWavelengths, const double* wavelengths, bool spot,
                       bool custom) {
    const std::int64_t fields = std::int64_t{1} + chart.colorants +
                                (chart.lab != nullptr ? kTristimulusValues : 0) +
                                (chart.xyz != nullptr ? kTristimulusValues : 0) + nrWavelengths;
    addTableTags(fields, chart.sets);
    if (AddCustomField(kSampleIdField) != 0)
        return kUnknownError;

    auto header = std::make_unique<TCgatsTableHeader>();
    append(*header, textField(kSampleIdField, findCustomField(kSampleIdField)));
    TCgatsField** const process = CreateProcessFieldDescriptions(chart.colorants, spot, custom);
    if (process == nullptr)
        return haveFieldNames(chart.colorants, spot, custom) ? kUnknownError : kColorCountNotSupported;
    const std::unique_ptr<TCgatsField*[]> owned(process);
    bool appended = true;
    for (int i = 0; i < chart.colorants; ++i)
        appended = header->Append(process[i]) == 0 && appended;
    if (!appended)
        return kUnknownError;
    if (chart.lab != nullptr)
        appendStandard(*header, kLabL);
    if (chart.xyz != nullptr)
        appendStandard(*header, kXyzX);
    for (int i = 0; i < nrWavelengths; ++i) {
        const int nm = roundedWavelength(wavelengths[i]);
        append(*header, numberedField("nm" + std::to_string(nm), nm, TCgatsField::kSpectral));
    }
    header->SetNrSamples(chart.sets);

    std::unique_ptr<TCgatsTable> table(new TCgatsTable(header.release()));
    const int error = fillTable(*table, chart);
    const int code = error == 0 ? 0 : TableErrorToCgatsError(error);
    const int kept = addTable(std::move(table));
    return code != 0 ? code : kept;
}

TCgats::TCgats(double full, double zero, int sets, int colorants, const double* const* deviceValues,
               const double* const* lab, const double* const* xyz, const double* const* spectra,
               int nrWavelengths, const double* wavelengths, int layout1, int layout2, int layout3)
    : TCgats(full, zero, sets, nullptr, colorants, deviceValues, lab, xyz, spectra, nrWavelengths,
             wavelengths, layout1, layout2, layout3) {}

TCgats::TCgats(double full, double zero, int sets, const char* const* sampleNames, int colorants,
               const double* const* deviceValues, const double* const* lab, const double* const* xyz,
               const double* const* spectra, int nrWavelengths, const double* wavelengths, int layout1,
               int layout2, int layout3)
    : TCgats() {
    const bool started = startDocument(
        [&] { return AddLayoutInfo(layout1, layout2, layout3, false, 0.0, 0.0, -1.0, -1.0, 0, -1, -1, 0); });
    if (started)
        BuildTable(full, zero, sets, sampleNames, colorants, false, deviceValues, lab, xyz, spectra,
                   nrWavelengths, wavelengths, false);
}

TCgats::TCgats(double full, double zero, int sets, int colorants, const char* const* colorantNames,
               const double* const* deviceValues, const double* const* lab, const double* const* xyz,
               const double* const* spectra, int nrWavelengths, const double* wavelengths, bool process)
    : TCgats(full, zero, sets, nullptr, colorants, colorantNames, deviceValues, lab, xyz, spectra,
             nrWavelengths, wavelengths, process) {}

TCgats::TCgats(double full, double zero, int sets, const char* const* sampleNames, int colorants,
               const char* const* colorantNames, const double* const* deviceValues, const double* const* lab,
               const double* const* xyz, const double* const* spectra, int nrWavelengths,
               const double* wavelengths, bool process)
    : TCgats() {
    const bool started = startDocument([&] {
        addColorantTags(colorants, colorantNames, process);
        return 0;
    });
    if (started)
        BuildTable(full, zero, sets, sampleNames, colorants, !process, deviceValues, lab, xyz, spectra,
                   nrWavelengths, wavelengths, true);
}

// Why the samples of a table cannot be changed, 0 when they can.
int TCgats::refusalOfChange(int table) const {
    if (errorCode != 0)
        return errorCode;
    const TCgatsTable* const found = GetTable(table);
    if (found == nullptr)
        return kRefused;
    if (found->GetTableError() != 0)
        return found->GetTableError();
    const bool whole =
        found->HasValuesOfAllColumns() && found->GetNrRowsStored() >= found->GetHeader()->GetNrSamples();
    return whole ? 0 : kRefused;
}

// Puts further columns behind those of a table. @return 0 or 1.
int TCgats::widenTable(int table, std::vector<Field> fields,
                       std::vector<std::unique_ptr<TCgatsValueList>> columns) {
    TCgatsTable& widened = *tables[table];
    auto header = widened.GetHeader()->Copy();
    if (!header)
        return kRefused;
    for (Field& field : fields)
        append(*header, std::move(field));
    NameIndex index;
    if (header->Classify() != 0 || !indexFields(*header, index) ||
        widened.Widen(std::move(header), std::move(columns)) != 0)
        return kRefused;
    takeFieldIndex(table, std::move(index));
    return 0;
}

int TCgats::AddLab(int table, const double* const* lab) {
    const int refusal = refusalOfChange(table);
    if (refusal != 0)
        return refusal;
    const TCgatsTable& changed = *tables[table];
    const TCgatsTableHeader& header = *changed.GetHeader();
    const int samples = header.GetNrSamples();
    const std::int32_t* const columns = header.GetLabColumns();
    if (samples < 1 && columns != nullptr)
        return 0;
    if (samples < 1 || lab == nullptr || std::find(lab, lab + samples, nullptr) != lab + samples)
        return kRefused;
    if (columns != nullptr) {
        const auto isReal = [&](int column) {
            return header.GetField(column)->GetDataType() == TCgatsField::kFloat;
        };
        if (!std::all_of(columns, columns + kTristimulusValues, isReal))
            return kRefused;
        for (int k = 0; k < kTristimulusValues; ++k) {
            auto& list = static_cast<TCgatsValueListDouble&>(*changed.GetValues(columns[k]));
            for (int i = 0; i < samples; ++i)
                if (!list.SetNumber(i, lab[i][k]))
                    return kRefused;
        }
        return 0;
    }
    return guarded(kRefused, [&] {
        std::vector<Field> fields;
        std::vector<std::unique_ptr<TCgatsValueList>> lists;
        for (int k = 0; k < kTristimulusValues; ++k) {
            fields.push_back(standardField(kLabL + k));
            auto list = std::make_unique<TCgatsValueListDouble>(samples);
            double* const numbers = list->Reserve(samples);
            if (numbers == nullptr)
                return kRefused;
            for (int i = 0; i < samples; ++i)
                numbers[i] = lab[i][k];
            lists.push_back(std::move(list));
        }
        return widenTable(table, std::move(fields), std::move(lists));
    });
}

namespace {

bool setNames(TCgatsValueList& list, const std::vector<std::string>& names, int count) {
    for (int i = 0; i < count; ++i)
        if (list.SetValue(i, names[static_cast<std::size_t>(i)].c_str()) == TCgatsValueList::kNotStored)
            return false;
    return true;
}

} // namespace

int TCgats::AddInkBookNames(int table, const std::vector<std::string>& names) {
    const int refusal = refusalOfChange(table);
    if (refusal != 0)
        return refusal;
    const TCgatsTable& changed = *tables[table];
    const int samples = changed.GetHeader()->GetNrSamples();
    if (names.size() < static_cast<std::size_t>(samples))
        return kRefused;
    const int existing = columnOfName(table, kInkBookField);
    if (existing >= 0)
        return setNames(*changed.GetValues(existing), names, samples) ? 0 : kRefused;
    return guarded(kRefused, [&] {
        const int declared = findCustomField(kInkBookField);
        std::vector<Field> fields;
        fields.push_back(textField(kInkBookField, declared >= 0 ? declared : nrCustomFields));
        std::vector<std::unique_ptr<TCgatsValueList>> lists;
        lists.push_back(std::make_unique<TCgatsValueListString>(samples));
        if (!setNames(*lists.front(), names, samples) ||
            (declared < 0 && AddCustomField(kInkBookField) != 0) ||
            widenTable(table, std::move(fields), std::move(lists)) != 0)
            return kRefused;
        return AddTag(kKeyword, kKeywords[kKeyword], kQuoted, kInkBookField, "");
    });
}
