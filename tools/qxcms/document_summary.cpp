#include "tools/qxcms/document_summary.h"

#include <cstddef>

namespace qxcms::command {

namespace {

const char* kindName(int kind) {
    switch (kind) {
    case TCgatsField::kCustom:
        return "custom";
    case TCgatsField::kSpectral:
        return "spectral";
    case TCgatsField::kProcessColor:
        return "process colour";
    case TCgatsField::kNColor:
        return "n-colour";
    case TCgatsField::kSpotColor:
        return "spot colour";
    default:
        return "standard";
    }
}

const char* typeName(int dataType) {
    switch (dataType) {
    case TCgatsField::kString:
        return "text";
    case TCgatsField::kInteger:
        return "integer";
    default:
        return "number";
    }
}

std::optional<int> numberOf(const TCgatsField& field) {
    switch (field.GetKind()) {
    case TCgatsField::kSpectral:
        return field.GetNumber();
    case TCgatsField::kProcessColor:
    case TCgatsField::kNColor:
    case TCgatsField::kSpotColor:
        return field.GetNumber() + 1;
    default:
        return std::nullopt;
    }
}

const char* deviceColorsName(int colorKind) {
    switch (colorKind) {
    case TCgatsTableHeader::kCmyk:
        return "CMYK";
    case TCgatsTableHeader::kCustomColors:
        return "custom";
    case TCgatsTableHeader::kNColors:
        return "n-colour";
    default:
        return nullptr;
    }
}

std::optional<int> stepOf(const std::vector<int>& wavelengths) {
    if (wavelengths.size() < 2)
        return std::nullopt;
    const int step = wavelengths[1] - wavelengths[0];
    for (std::size_t i = 2; i < wavelengths.size(); ++i) {
        if (wavelengths[i] - wavelengths[i - 1] != step)
            return std::nullopt;
    }
    return step;
}

std::optional<SpectraSummary> summarizeSpectra(const TCgats& document, int table) {
    if (!document.ContainsWaveLengths(table))
        return std::nullopt;
    std::vector<int> wavelengths(static_cast<std::size_t>(document.GetNrWaveLengths(table)));
    document.GetWaveLengths(table, wavelengths.data());
    return SpectraSummary{static_cast<int>(wavelengths.size()), wavelengths.front(), wavelengths.back(),
                          stepOf(wavelengths), document.GetTable(table)->IsSpectralPercent()};
}

std::vector<FieldSummary> summarizeFields(const TCgatsTableHeader& header) {
    std::vector<FieldSummary> fields;
    for (int column = 0; column < header.GetNrFields(); ++column) {
        const TCgatsField& field = *header.GetField(column);
        fields.push_back({column + 1, field.GetName(), kindName(field.GetKind()),
                          typeName(field.GetDataType()), numberOf(field)});
    }
    return fields;
}

TableSummary summarizeTable(const TCgats& document, int table) {
    const TCgatsTableHeader& header = *document.GetTable(table)->GetHeader();
    TableSummary summary;
    summary.samples = document.GetNrSamples(table);
    summary.fields = summarizeFields(header);
    summary.spectra = summarizeSpectra(document, table);
    summary.lab = document.ContainsLab(table);
    summary.xyz = document.ContainsXyz(table);
    summary.deviceColors = deviceColorsName(header.GetColorKind());
    summary.deviceChannels = document.GetNrProcessColors(table);
    summary.spotColors = document.GetNrSpotColors(table);
    summary.sampleNames = document.ContainsSampleNames(table);
    for (const char* name : {"SampleID", "SAMPLE_ID", "SAMPLE_NAME"}) {
        const int column = document.GetFieldNameIndex(table, name);
        if (column >= 0)
            summary.identifiers.emplace_back(header.GetField(column)->GetName());
    }
    return summary;
}

std::string orEmpty(const char* text) {
    return text == nullptr ? "" : text;
}

TagSummary summarizeTag(const TCgatsTag& tag) {
    return {orEmpty(tag.GetKeyword()), orEmpty(tag.GetValue()), tag.GetNumeric() != 0,
            orEmpty(tag.GetComment())};
}

} // namespace

DocumentSummary summarize(const TCgats& document) {
    DocumentSummary summary;
    for (int table = 0; table < document.GetNrTables(); ++table)
        summary.tables.push_back(summarizeTable(document, table));
    for (int tag = 0; tag < document.GetNrTags(); ++tag)
        summary.tags.push_back(summarizeTag(*document.GetTagAt(tag)));
    summary.tagsAreFull = document.GetNrTags() == TCgats::kMaxTags;
    for (int field = 0; field < document.GetNrCustomFields(); ++field)
        summary.customFields.push_back(orEmpty(document.GetCustomField(field)));
    for (int block = 0; block < document.GetNrCommentBlocks(); ++block)
        summary.commentBlocks.push_back(orEmpty(document.GetCommentBlock(block)));
    return summary;
}

} // namespace qxcms::command
