#include "cgats/cgats_vocabulary.h"

#include <cstring>

#include "platform/utility.h"

namespace qxcms::detail {

namespace {

// Kept on purpose: code 22 has three texts run together, and the two codes behind it have none
// (cgatsErrorState.code22_hasThreeMessagesRunTogether).
constexpr char kThreeTexts[] = "Attempt to write empty tag."
                               "Internal error: illegal table index."
                               "Error adding layout info: layout info already present.";

} // namespace

const char* const kKeywords[kKeywordCount] = {
    "ORIGINATOR",
    "FILE_DESCRIPTOR",
    "CREATED",
    "NUMBER_OF_FIELDS",
    "BEGIN_DATA_FORMAT",
    "END_DATA_FORMAT",
    "INSTRUMENTATION",
    "MEASUREMENT_GEOMETRY",
    "MEASUREMENT_SOURCE",
    "FILTER",
    "POLARIZATION",
    "WEIGHTING_FUNCTION",
    "COMPUTATIONAL_PARAMETER",
    "SAMPLE_BACKING",
    "MANUFACTURER",
    "MATERIAL",
    "TARGET_TYPE",
    "COLORANT",
    "PROD_DATE",
    "PRINT_CONDITIONS",
    "SERIAL",
    "PROCESSCOLOR_ID",
    "SPOT_ID",
    "NUMBER_OF_SETS",
    "BEGIN_DATA",
    "END_DATA",
    "DATA_FORMAT_IDENTIFIER",
    "TABLE_DESCRIPTOR",
    "TABLE_NAME",
    "KEYWORD", // declares a custom field
    // Kept on purpose: the one keyword in mixed case (cgatsVocabulary.keywords_countTheirCase).
    "NumberOfStrips",
    "LGOROWLENGTH", // from here on the layout of a printed chart
    "NUMBER_OF_STRIPS",
    "NUMBER_OF_COLS",
    "BORDER_PATCHES",
    "DEVICE",
    "PATCH_HEIGHT",
    "PATCH_WIDTH",
    "GAP_SIZE_X",
    "GAP_SIZE_Y",
    "MIRROR_X",
    "INKSET",
    "LAYOUT_TYPE",
};

const char* const kFieldNames[kFieldNameCount] = {
    "SAMPLE_ID",
    "STRING",
    "CMYK_C",
    "CMYK_M",
    "CMYK_Y",
    "CMYK_K",
    "D_RED", // status densities
    "D_GREEN",
    "D_BLUE",
    "D_VIS",
    "D_MAJOR_FILTER",
    "RGB_R",
    "RGB_G",
    "RGB_B",
    "SPECTRAL_NM",  // a wavelength
    "SPECTRAL_PCT", // a spectral value in percent
    "SPECTRAL_DEC", // a spectral value as a fraction
    "XYZ_X",
    "XYZ_Y",
    "XYZ_Z",
    "XYY_X",
    "XYY_Y",
    // Kept on purpose: the luminance of xyY is spelled with a G
    // (fieldClassification.luminanceOfXyy_isSpelledWithG).
    "XYY_GAPY",
    "LAB_L",
    "LAB_A",
    "LAB_B",
    "LAB_C",
    "LAB_H",
    "LAB_DE",
    "LAB_DE_94",
    "LAB_DE_CMC",
    "LAB_DE_2000",
    "MEAN_DE",
    "STDEV_X",
    "STDEV_Y",
    "STDEV_Z",
    "STDEV_L",
    "STDEV_A",
    "STDEV_B",
    "CHI_SQD_PAR",
};

const char* const kMessages[kMessageCount] = {
    "No error.",
    "Unknown error.",
    "Empty file name.",
    "The requested file could not be found.",
    "Could not create or open the requested file for writing.",
    "Error while reading comment tag.",
    "Internal error: temporary header not initialized.",
    "The table header is empty.",
    "Internal error: attempt to map inks using an illegal ink map.",
    "END_DATA_FORMAT tag not found.",
    "Badly formatted header field.",
    "Unknown and undeclared header field type.",
    "Number of header fields found doesn't match number of header fields declared.",
    "Number of samples found doesn't match number of samples declared.",
    "The table header contains no data fields.",
    "The table contains no samples.",
    "The table contains a data type that is not supported.",
    "The custom color numbering in the table header is not consistent.",
    "Number of color coordinates not supported.",
    "No sample ID field provided in header.",
    "Not enough coordinate fields provided in header.",
    "Internal error: illegal tag index.",
    kThreeTexts,
    "", // illegal table index
    "", // layout info already present
};

int findExactly(const char* const* table, int count, const char* text) noexcept {
    for (int i = 0; i < count; ++i)
        if (std::strcmp(table[i], text) == 0)
            return i;
    return -1;
}

int findIgnoringCase(const char* const* table, int count, const char* text) noexcept {
    for (int i = 0; i < count; ++i)
        if (strcmp_ci(table[i], text) == 0)
            return i;
    return -1;
}

} // namespace qxcms::detail
