#include "fuzz/document_questions.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/must.h"
#include "platform/utility.h"
#include "spectral/tilluminantandobserver.h"

namespace qxcms::fuzz {
namespace {

// The room that texts of fields need, as the queries state it.
constexpr std::size_t kTextRoom = TCgats::kMaxSampleValue + 1;
constexpr std::size_t kNumberRoom = 320;

// Colours of more colorants than this are not gathered: memory for them is the caller's.
constexpr int kManyColorants = 4096;

bool isEmpty(const char* text) {
    return text == nullptr || *text == '\0';
}

bool isShort(const char* text, std::size_t limit) {
    return text != nullptr && std::strlen(text) <= limit;
}

bool holdsLineEnd(const char* text) {
    return std::strpbrk(text, "\r\n") != nullptr;
}

bool areSame(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

// The first ones, one in the middle, the last ones, and those just outside.
std::set<int> someOf(int count) {
    return {-1, 0, 1, count / 2, count - 1, count};
}

bool isInside(int index, int count) {
    return index >= 0 && index < count;
}

// What measurements are asked with; made once, because weights are slow to make.
struct Surroundings {
    std::unique_ptr<TIlluminant> illuminant;
    TObserver observer{0};
    TMeasGeom geometry{0};
    double white[3] = {0.0, 0.0, 0.0};

    Surroundings() {
        double flat[TSpectrum::kStandardCount];
        std::fill_n(flat, TSpectrum::kStandardCount, 1.0);
        const TSpectrum spectrum(flat);
        illuminant = std::make_unique<TIlluminant>(&spectrum, "flat");
        must(TIlluminantAndObserver(illuminant.get(), &observer, 36).GetXYZWhite(white) == 0,
             "an illuminant has a white");
    }

    static Surroundings& get() {
        static Surroundings surroundings;
        return surroundings;
    }
};

// Tags, comment blocks and custom fields.

void askTag(const TCgats& document, int index) {
    const TCgatsTag& tag = *document.GetTagAt(index);
    std::ostringstream line;
    const int written = tag.Write(line);
    if (tag.GetKeyword() == nullptr) {
        must(tag.GetCode() == -1 && tag.GetNumeric() == 0, "a tag without a keyword has no code");
        must(written == 1 && line.str().empty(), "a tag without a keyword is not written");
        return;
    }
    must(!isEmpty(tag.GetKeyword()) && isShort(tag.GetKeyword(), TCgats::kMaxKeyword),
         "a keyword has 1 to 256 characters");
    must(isShort(tag.GetValue(), TCgats::kMaxValue), "a value has at most 4096 characters");
    must(isShort(tag.GetComment(), TCgats::kMaxComment), "a comment has at most 512 characters");
    must(std::strpbrk(tag.GetKeyword(), " \t\r\n#") == nullptr, "a keyword ends at a blank or a remark");
    must(!holdsLineEnd(tag.GetValue()) && !holdsLineEnd(tag.GetComment()), "a line ends at its line end");
    must(std::strchr(tag.GetValue(), '#') == nullptr, "a remark is no part of a value");
    must(!isEmpty(tag.GetValue()) || tag.GetNumeric() == 0, "an empty value is no bare one");
    must(tag.GetCode() == document.MatchTag(tag.GetKeyword()), "the code is that of the keyword");
    must(tag.GetCode() < 0 || isInside(document.FindTag(tag.GetCode()), index + 1),
         "a tag is found by its code");
    const TCgatsTag* const found = document.GetTag(tag.GetKeyword());
    must(found != nullptr && strcmp_ci(found->GetKeyword(), tag.GetKeyword()) == 0,
         "a tag is found by its keyword");
    must(written == 0 && line.str().compare(0, std::strlen(tag.GetKeyword()), tag.GetKeyword()) == 0,
         "a tag is written");
}

void askTags(const TCgats& document) {
    const int count = document.GetNrTags();
    must(isInside(count, TCgats::kMaxTags + 1), "there are 0 to 128 tags");
    must(document.GetTagAt(-1) == nullptr && document.GetTagAt(count) == nullptr, "no tags but these");
    for (int i = 0; i < count; ++i)
        askTag(document, i);
    must(document.GetTag("a keyword with blanks") == nullptr, "what is not there is not found");
    must(document.GetNrProcessColorIdTags() >= 0 && document.GetNrSpotIdTags() >= 0, "counts count");
}

void askCommentBlocks(const TCgats& document) {
    const int count = document.GetNrCommentBlocks();
    must(isInside(count, TCgats::kMaxCommentBlocks + 1), "there are 0 to 128 comment blocks");
    must(document.GetCommentBlock(-1) == nullptr && document.GetCommentBlock(count) == nullptr,
         "no comment blocks but these");
    for (int i = 0; i < count; ++i) {
        const std::string block = document.GetCommentBlock(i);
        must(!block.empty() && (block.back() == '\n' || block.back() == '\r'),
             "a comment block ends with a line end");
    }
}

void askCustomFields(TCgats& document) {
    const int count = document.GetNrCustomFields();
    must(count >= 0, "there are no fewer than 0 custom fields");
    for (const int i : someOf(count)) {
        const char* const name = document.GetCustomField(i);
        must((name != nullptr) == isInside(i, count), "no custom fields but these");
        if (name == nullptr)
            continue;
        must(!isEmpty(name), "a custom field has a name");
        int kind = -1, number = -1, dataType = -1;
        std::string canonicalName;
        const int found = document.MatchField(name, &kind, &number, &dataType, &canonicalName);
        must(isInside(found, i + 1) && kind == TCgatsField::kCustom && dataType == TCgatsField::kString,
             "a custom field is found by its name");
        must(strcmp_ci(canonicalName.c_str(), name) == 0 && canonicalName == document.GetCustomField(found),
             "a custom field is spelled as it was declared");
    }
    must(document.GetNrCustomFields() == count, "what is known is not declared again");
}

// Tables.

// The columns are there, and of the kind.
void askColumns(const TCgatsTableHeader& header, const std::int32_t* columns, int count, int kind,
                bool mayLack) {
    must((columns != nullptr) == (count > 0), "columns are there when they are counted");
    for (int i = 0; i < count; ++i) {
        const TCgatsField* const field = header.GetField(columns[i]);
        must(field != nullptr ? field->GetKind() == kind : mayLack && columns[i] == -1,
             "columns are those of their kind");
    }
}

void askTriple(const TCgatsTableHeader& header, const std::int32_t* columns, const char* firstName) {
    if (columns == nullptr)
        return;
    for (int i = 0; i < 3; ++i)
        must(header.GetField(columns[i]) != nullptr, "the columns of a triple are there");
    must(std::strcmp(header.GetField(columns[0])->GetName(), firstName) == 0,
         "a triple begins with its first");
}

int processKind(const TCgatsTableHeader& header) {
    switch (header.GetColorKind()) {
    case TCgatsTableHeader::kCmyk:
        return TCgatsField::kStandard;
    case TCgatsTableHeader::kCustomColors:
        return TCgatsField::kProcessColor;
    default:
        return TCgatsField::kNColor;
    }
}

void askHeader(const TCgats& document, int table) {
    const TCgatsTableHeader& header = *document.GetTable(table)->GetHeader();
    must(header.IsClassified(), "the header of a table is classified");
    must(header.GetNrFields() >= 1 && header.GetNrFilledFields() == header.GetNrFields(),
         "a table has fields, and all of them");
    must(document.GetNrFields(table) == header.GetNrFields(), "fields are counted");
    must(document.GetNrProcessColors(table) == header.GetNrColors(), "process colours are counted");
    must(document.GetNrSpotColors(table) == header.GetNrSpots(), "spot colours are counted");
    must(document.GetNrWaveLengths(table) == header.GetNrWaveLengths(), "wavelengths are counted");
    const bool isCustom = document.IsCustomDefined(table);
    const int kinds =
        int{document.IsCMYKDefined(table)} + int{isCustom} + int{document.IsNColorDefined(table)};
    must(kinds == int{document.ContainsProcessColors(table)}, "process colours are of one kind");
    must((header.GetNrColors() > 0) == document.ContainsProcessColors(table), "process colours are there");
    must((header.GetNrSpots() > 0) == document.ContainsSpotColors(table), "spot colours are there");
    must((header.GetNrWaveLengths() > 0) == document.ContainsWaveLengths(table), "wavelengths are there");
    askColumns(header, header.GetColorColumns(), header.GetNrColors(), processKind(header), isCustom);
    askColumns(header, header.GetSpotColumns(), header.GetNrSpots(), TCgatsField::kSpotColor, true);
    askColumns(header, header.GetSpectralColumns(), header.GetNrWaveLengths(), TCgatsField::kSpectral, false);
    must((header.GetLabColumns() != nullptr) == document.ContainsLab(table), "CIELAB is there");
    must((header.GetXyzColumns() != nullptr) == document.ContainsXyz(table), "XYZ is there");
    askTriple(header, header.GetLabColumns(), "LAB_L");
    askTriple(header, header.GetXyzColumns(), "XYZ_X");
    const TCgatsField* const names = header.GetField(header.GetSampleNameColumn());
    must((names != nullptr) == document.ContainsSampleNames(table), "sample names are there");
    must(names == nullptr || std::strcmp(names->GetName(), "SampleID") == 0, "sample names have their name");
}

void askFields(const TCgats& document, int table) {
    const TCgatsTable& found = *document.GetTable(table);
    const TCgatsTableHeader& header = *found.GetHeader();
    for (const int column : someOf(header.GetNrFields())) {
        const TCgatsField* const field = header.GetField(column);
        must((field != nullptr) == isInside(column, header.GetNrFields()), "no fields but these");
        must((field != nullptr) == (found.GetValues(column) != nullptr), "every field has its values");
        if (field == nullptr)
            continue;
        must(field->GetBad() == 0 && !isEmpty(field->GetName()), "a field has a name");
        must(found.GetValues(column)->GetNumber() == header.GetNrSamples(), "every sample has its value");
        const int first = document.GetFieldNameIndex(table, field->GetName());
        must(isInside(first, column + 1) &&
                 strcmp_ci(header.GetField(first)->GetName(), field->GetName()) == 0,
             "a field is found by its name");
        must(document.ContainsFieldName(table, field->GetName()), "a field that is found is there");
    }
    must(document.GetFieldNameIndex(table, "a name with blanks") == -1, "what is not there is not found");
    must(document.ContainsInkBookNames(table) == (document.GetFieldNameIndex(table, "INKBOOK") >= 0),
         "ink books have their name");
}

void askWavelengths(const TCgats& document, int table) {
    std::vector<int> wavelengths(static_cast<std::size_t>(document.GetNrWaveLengths(table)));
    must(document.GetWaveLengths(table, wavelengths.data()) == (wavelengths.data() == nullptr ? 1 : 0),
         "wavelengths are told");
    must(std::is_sorted(wavelengths.begin(), wavelengths.end()), "wavelengths ascend");
    must(wavelengths.empty() || wavelengths.front() >= 0, "wavelengths are not negative");
}

void askTexts(const TCgats& document, int table, int sample) {
    const TCgatsTable& found = *document.GetTable(table);
    const TCgatsTableHeader& header = *found.GetHeader();
    const bool isThere = isInside(sample, header.GetNrSamples());
    const std::unique_ptr<char[]> text(new char[kTextRoom]);
    const std::unique_ptr<char[]> number(new char[kNumberRoom]);
    for (const int column : someOf(header.GetNrFields())) {
        const TCgatsField* const field = header.GetField(column);
        const bool isText = field != nullptr && field->GetDataType() == TCgatsField::kString;
        char* const out = isText ? text.get() : number.get();
        const int answer = document.GetField(table, sample, column, out);
        must((answer == 0) == (isThere && field != nullptr), "a field is told");
        if (answer != 0)
            continue;
        const char* const stored = found.GetValues(column)->GetString(sample);
        must(isText ? stored != nullptr && std::strcmp(stored, out) == 0 : std::strlen(out) > 0,
             "a field is told as it is stored");
    }
    must((document.GetSampleName(table, sample, text.get()) == 0) ==
             (isThere && document.ContainsSampleNames(table)),
         "a sample name is told");
    must((document.GetInkBookName(table, sample, text.get()) == 0) ==
             (isThere && document.ContainsInkBookNames(table)),
         "an ink book is told");
}

bool isComplete(const std::int32_t* columns, int count) {
    return columns != nullptr && std::find(columns, columns + count, -1) == columns + count;
}

void askNumbers(const TCgats& document, int table, int sample) {
    const TCgatsTable& found = *document.GetTable(table);
    const TCgatsTableHeader& header = *found.GetHeader();
    const bool isThere = isInside(sample, header.GetNrSamples());

    std::vector<double> spectrum(static_cast<std::size_t>(header.GetNrWaveLengths()));
    const int spectrumCode = document.GetSpectrum(table, sample, spectrum.data());
    must((spectrumCode == 0) == (isThere && !spectrum.empty()), "a spectrum is told");
    for (std::size_t i = 0; spectrumCode == 0 && i < spectrum.size(); ++i) {
        const double stored = found.GetValues(header.GetSpectralColumns()[i])->GetDouble(sample);
        must(areSame(spectrum[i], found.IsSpectralPercent() ? stored * 0.01 : stored),
             "a spectrum is told as a fraction");
    }

    std::vector<double> spots(static_cast<std::size_t>(header.GetNrSpots()));
    must((document.GetSpotCoordinates(table, sample, spots.data()) == 0) ==
             (isThere && isComplete(header.GetSpotColumns(), header.GetNrSpots())),
         "spot coordinates are told");
    const bool hasProcess = document.ContainsProcessColors(table);
    std::vector<double> coordinates(hasProcess ? static_cast<std::size_t>(header.GetNrColors())
                                               : spots.size());
    const bool hasCoordinates = hasProcess ? isComplete(header.GetColorColumns(), header.GetNrColors())
                                           : isComplete(header.GetSpotColumns(), header.GetNrSpots());
    must((document.GetCoordinates(table, sample, coordinates.data()) == 0) == (isThere && hasCoordinates),
         "coordinates are told");

    const std::unique_ptr<double[]> triple(new double[3]);
    must((document.GetLab(table, sample, triple.get()) == 0) == (isThere && document.ContainsLab(table)),
         "CIELAB is told");
    must((document.GetXyz(table, sample, triple.get()) == 0) == (isThere && document.ContainsXyz(table)),
         "XYZ is told");
}

void askMeasurement(const TCgats& document, int table, int sample) {
    Surroundings& surroundings = Surroundings::get();
    TIlluminant* const illuminant = surroundings.illuminant.get();
    const std::unique_ptr<TOneMeasurement> measurement(
        document.GetMeasurement(table, sample, illuminant, &surroundings.observer, &surroundings.geometry));
    const bool isThere = isInside(sample, document.GetNrSamples(table));
    const bool hasColor = document.ContainsWaveLengths(table) || document.ContainsLab(table);
    must(measurement == nullptr || (isThere && hasColor), "only samples with colours are measured");
    must(measurement != nullptr || !isThere || !hasColor || document.ContainsProcessColors(table),
         "a sample with a colour is measured");
    if (!measurement)
        return;
    must(measurement->GetStatus() == 0, "a measurement is good");
    int count = -1;
    measurement->GetCoord(&count);
    must(count == document.GetNrProcessColors(table), "a measurement has its coordinates");
    double xyz[3], lab[3], densities[4], start = 0.0, end = 0.0;
    int filter = 0, points = 0;
    const int xyzCode = measurement->GetXYZ(illuminant, &surroundings.observer, xyz);
    const int labCode = measurement->GetLAB(illuminant, &surroundings.observer, surroundings.white, lab);
    must(xyzCode == 0 && labCode == 0, "a measurement has a colour under its illuminant");
    measurement->GetDensity(TSpectrum::kAnsiT, densities, &filter);
    measurement->GetUniformSpectrum(&start, &end, &points);
    const std::unique_ptr<TOneMeasurement> copy(measurement->Copy());
    must(copy != nullptr && copy->GetStatus() == 0, "a measurement can be copied");
}

// All slots share one array: what is gathered does not matter here.
void askColorants(const TCgats& document, int table) {
    const int spots = std::max(document.GetNrSpotColors(table), 0);
    const int process = std::max(document.GetNrProcessColors(table), 0);
    const int most = std::max(spots, process);
    std::vector<const char*> descriptions(static_cast<std::size_t>(most));
    const int spotCode = document.GetSpotColorDescriptions(table, descriptions.data());
    must(spotCode != 0 || std::count(descriptions.begin(), descriptions.begin() + spots, nullptr) == 0,
         "spot descriptions are told");
    const int processCode = document.GetCustomProcessColorDescriptions(table, descriptions.data());
    must(processCode != 0 || std::count(descriptions.begin(), descriptions.begin() + process, nullptr) == 0,
         "process colour descriptions are told");
    if (most > kManyColorants)
        return;
    // The colours come from the first table.
    const int wavelengths = std::max(document.GetNrWaveLengths(0), 0);
    std::vector<double> color(static_cast<std::size_t>(std::max(wavelengths, 3)));
    const std::vector<double*> slots(static_cast<std::size_t>(most), color.data());
    for (const int code : {document.GetProcessColorSpectra(table, slots.data()),
                           document.GetProcessColorLab(table, slots.data()),
                           document.GetProcessColorValues(table, slots.data(), true),
                           document.GetSpotColorValues(table, slots.data(), true),
                           document.GetSpotColorValues(table, slots.data(), false)})
        must(code == 0 || code == 1, "solids are found or not");
}

void askTable(const TCgats& document, int table) {
    const TCgatsTable* const found = document.GetTable(table);
    if (found == nullptr) {
        must(document.GetNrSamples(table) == -1 && document.GetNrFields(table) == -1 &&
                 !document.ContainsLab(table) && document.GetFieldNameIndex(table, "LAB_L") == -1,
             "a table that is not there answers nothing");
        return;
    }
    must(found->GetTableError() == 0, "a stored table is good");
    must(document.GetNrSamples(table) >= 1 && found->GetNrRowsStored() == document.GetNrSamples(table),
         "a stored table is complete");
    askHeader(document, table);
    askFields(document, table);
    askWavelengths(document, table);
    for (const int sample : someOf(document.GetNrSamples(table))) {
        askTexts(document, table, sample);
        askNumbers(document, table, sample);
    }
    for (const int sample : {-1, 0, document.GetNrSamples(table) - 1, document.GetNrSamples(table)})
        askMeasurement(document, table, sample);
    askColorants(document, table);
}

// Descriptive keywords.

void askKeywords(TCgats& document) {
    const bool hasRoom = document.GetNrTags() < TCgats::kMaxTags;
    const bool mayOriginate = hasRoom || document.GetOriginator() != nullptr;
    must((document.SetOriginator("the maker") == 0) == mayOriginate, "an originator is set where it fits");
    must(!mayOriginate || std::strcmp(document.GetOriginator(), "the maker") == 0, "an originator is kept");
    document.SetFileDescriptor("");
    document.SetCreated("today");
    document.GetFileDescriptor();
    document.GetCreated();
    must(document.GetNrTags() <= TCgats::kMaxTags, "there are at most 128 tags");
}

} // namespace

bool isReaderCode(int code) {
    constexpr int kCodes[] = {-1, 0, 1, 5, 6, 9, 10, 11, 12, 14, 17};
    return std::find(std::begin(kCodes), std::end(kCodes), code) != std::end(kCodes);
}

void askEverything(TCgats& document) {
    askTags(document);
    askCommentBlocks(document);
    askCustomFields(document);
    for (const int table : someOf(document.GetNrTables())) {
        must((document.GetTable(table) != nullptr) == isInside(table, document.GetNrTables()),
             "no tables but these");
        askTable(document, table);
    }
    must(document.ContainsSpotDescriptions(0) == (document.FindTag(22) >= 0), "spot tags describe");
    must(document.ContainsCustomProcessColorDescriptions(0) == (document.FindTag(21) >= 0),
         "process colour tags describe");
    askKeywords(document);
}

} // namespace qxcms::fuzz
