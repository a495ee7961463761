#include "tools/qxcms/remedy.h"

namespace qxcms::command {

namespace {

bool namesProcessColor(const std::string& token) {
    return token.size() > 2 && token.compare(0, 2, "PC") == 0 && token[2] >= '0' && token[2] <= '9';
}

// Of the code for everything that has no code of its own.
const char* remedyOfUnknownError(const std::string& expected) {
    const auto isExpected = [&](const char* words) { return expected.find(words) != std::string::npos; };
    if (isExpected("closes the value"))
        return "close the double quote behind the value";
    if (isExpected("127 characters"))
        return "shorten the value";
    if (isExpected("further sample value"))
        return "let NUMBER_OF_SETS be the number of rows, and give every row one value for every column; an "
               "empty text is written as two double quotes";
    return "try again with more memory";
}

// Of rows or names in which commas or semicolons stand between the values.
constexpr const char* kSaveWithTabs = "save the file with TABs between the columns (\"text, tab delimited\")";

bool isSeparatedOtherwise(const std::string& expected) {
    return expected.find("commas and semicolons separate none") != std::string::npos;
}

const char* remedyOfUnknownField(const std::string& token, const std::string& expected) {
    if (isSeparatedOtherwise(expected))
        return kSaveWithTabs;
    if (expected.find("without quotes") != std::string::npos)
        return "write END_DATA_FORMAT as it is, on a line of its own";
    if (expected.find("wavelength of its own") != std::string::npos)
        return "leave one of the two columns out";
    if (namesProcessColor(token))
        return "columns PC2_1 and PC2_2 need two lines PROCESSCOLOR_ID before BEGIN_DATA_FORMAT, one per "
               "colour; the number behind PC is that of the lines";
    return "name a spectral column SPECTRAL_380 or nm380; any other column is declared with a line KEYWORD "
           "and its name before BEGIN_DATA_FORMAT, and its values are then text";
}

const char* remedyOfMissingFormat(const std::string& expected) {
    return expected.find("NUMBER_OF_SETS") != std::string::npos
               ? "write the number of the table's samples, 1 or more, in a line NUMBER_OF_SETS before "
                 "BEGIN_DATA"
               : "every BEGIN_DATA needs the names of its columns before it, between lines "
                 "BEGIN_DATA_FORMAT and END_DATA_FORMAT";
}

const char* remedyOfCommentBlock(const std::string& expected) {
    return expected.find("at most") != std::string::npos
               ? "leave blocks out"
               : "end the block with a line END_ and the word behind BEGIN_; an empty block holds an empty "
                 "line";
}

} // namespace

std::string remedyOf(int code, const std::string& token, const std::string& expected) {
    switch (code) {
    case -1:
        return "shorten it, or move the text into a comment block between lines BEGIN_NOTES and END_NOTES";
    case 1:
        return remedyOfUnknownError(expected);
    case 2:
        return "give the name of a file";
    case 3:
        return "check the name, and whether the file may be read";
    case 4:
        return "check the folder, the permissions and the space that is left";
    case 5:
        return remedyOfCommentBlock(expected);
    case 6:
        return remedyOfMissingFormat(expected);
    case 7:
    case 14:
        return "write the names of the columns between lines BEGIN_DATA_FORMAT and END_DATA_FORMAT";
    case 8:
        return "choose channels that the table has";
    case 9:
        return "write END_DATA_FORMAT on a line of its own behind the names of the columns";
    case 10:
    case 12:
        return "let NUMBER_OF_FIELDS be the number of column names, or leave it out";
    case 11:
        return remedyOfUnknownField(token, expected);
    case 13:
        if (isSeparatedOtherwise(expected))
            return kSaveWithTabs;
        return "give every row one value for every column and let NUMBER_OF_SETS be the number of rows; a "
               "text that holds blanks goes between double quotes";
    case 15:
        return "write the rows between lines BEGIN_DATA and END_DATA, and their number behind NUMBER_OF_SETS";
    case 16:
        return "use standard columns, or declare a column with a line KEYWORD";
    case 17:
        return "number the PC, SPOT and n-colour columns from 1 to their count, each number once; an "
               "n-colour space has five channels or more (5CLR_1 to 5CLR_5)";
    case 18:
        return "use another number of colorants";
    case 19:
        return "add a column SAMPLE_ID with a name for every row";
    case 20:
        return "add the missing columns of the colour (LAB_L, LAB_A and LAB_B; XYZ_X, XYZ_Y and XYZ_Z)";
    case 21:
        return "count the header lines from 0";
    case 22:
        return "give the line a keyword before its comment";
    case 23:
        return "count the tables from 0";
    case 24:
        return "leave the layout lines out that are there already";
    default:
        return "";
    }
}

} // namespace qxcms::command
