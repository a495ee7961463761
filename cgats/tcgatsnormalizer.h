/// @file
/// Brings the text of real measurement files into the form that TCgats reads.
#pragma once

#include <memory>
#include <string>

#include "base/export.h"

/// One thing that was read otherwise than it stands, or that the reader of numbers should know.
struct TCgatsLiberty {
    enum Kind : int {
        kEncoding,          ///< UTF-16 turned into UTF-8, or a byte-order mark left out
        kNulBytes,          ///< NUL bytes left out
        kKeywordSpelling,   ///< a keyword in another letter case, or a mark of the end with a wrong letter
        kTextBehindKeyword, ///< words behind BEGIN_DATA_FORMAT or BEGIN_DATA put on a line of their own
        kFreeText,          ///< a line that begins with a double quote made a comment
        kValueQuoted,       ///< quotes put around a header value of several words
        kQuoteClosed,       ///< a quote that never closes, closed at the line end or the TAB
        kDoubledQuotes,     ///< doubled double quotes made apostrophes
        kTextBehindValue,   ///< what follows a closing quote made a comment
        kTooLong,           ///< a header value or comment cut at the length that is kept
        kCommentMoved,      ///< a comment on a line of its own moved to the next header line
        kCommentDropped,    ///< a comment that finds no header line left out
        kEmptyCommentBlock, ///< an empty line put into an empty comment block
        kKeywordDropped,    ///< a KEYWORD line left out that turns a column into text or takes up room
        kLineNotKept,       ///< a header line beyond those that are kept
        kFieldCount,        ///< NUMBER_OF_FIELDS corrected
        kSampleCount,       ///< NUMBER_OF_SETS corrected or put in
        kEndOfData,         ///< END_DATA put in
        kEndOfFormat,       ///< a line end put in behind END_DATA_FORMAT
        kFormatTakenOver,   ///< the data format of the table before put in
        kFieldDeclared,     ///< a KEYWORD line put in for a column of another name
        kFieldRenamed,      ///< blanks in a column name made underscores, double quotes apostrophes
        kSpectralName,      ///< a spectral column named as the reader knows it
        kWavelengthRounded, ///< a wavelength rounded to whole nanometres
        kSpectralPairs,     ///< pairs of a wavelength and a value made spectral columns
        kSpectralScale,     ///< spectra brought to another scale
        kXyzScale,          ///< XYZ of 0 to 1 brought to 0 to 100
        kCellQuoted,        ///< quotes put around a text with blanks between TABs
        kEmptyCell,         ///< a pair of quotes put between two TABs
        kNumberSpelling,    ///< a number rewritten: a decimal comma in quotes, thousands set apart
        kDeviceScale,       ///< a remark: device values of 0 to 1, or of 0 to 255; nothing is changed
        kNoTable            ///< a remark: the text has no samples at all
    };

    Kind kind;
    int line;          ///< counted from 1; CR LF, LF and CR each end one line
    int column;        ///< in bytes, counted from 1
    std::string token; ///< the text it is about; empty where something was missing
    std::string done;  ///< what was done, an English sentence without a full stop
};

/// Why a text cannot be brought into form.
struct TCgatsRefusal {
    int code;             ///< the document error code, or -1 for a token that is too long
    int line;             ///< counted from 1
    int column;           ///< in bytes, counted from 1
    std::string token;    ///< the offending token; empty at the end of the text
    std::string expected; ///< what was expected there, in English
};

/// Stands in front of the reader: takes the bytes of a file as it came and gives conforming CGATS.17 text,
/// with a list of the liberties taken. A text that is read without loss passes byte for byte, with an empty
/// list. No value is changed, left out or added without a liberty that says so; what allows two readings is
/// refused, not guessed. Lines and columns are those of the bytes (for UTF-16: of the same text in UTF-8).
///
/// Nothing throws, whatever the bytes.
class QXCMS_API TCgatsNormalizer {
public:
    TCgatsNormalizer();
    TCgatsNormalizer(const TCgatsNormalizer&) = delete;
    TCgatsNormalizer& operator=(const TCgatsNormalizer&) = delete;
    ~TCgatsNormalizer();

    /// Takes the bytes of a file and forgets those before.
    /// @return 0, a document error code (see GetRefusal) or 1 when there is no memory.
    int Normalize(std::string bytes);

    /// The text for TCgats::ReadFromBuffer. After a refusal the text as it came, in UTF-8.
    const std::string& GetText() const { return text; }

    int GetNrLiberties() const;
    /// In the order of the bytes; null for a bad index. After a refusal: what would have been done, as far as
    /// the text was understood.
    const TCgatsLiberty* GetLiberty(int index) const;
    /// Remarks tell of something to know about values that are passed on as they are.
    int GetNrRemarks() const;
    /// Null for a bad index.
    const TCgatsLiberty* GetRemark(int index) const;
    /// Null when the text was accepted, and where memory ran out.
    const TCgatsRefusal* GetRefusal() const;

private:
    struct Result;
    std::string text;
    std::unique_ptr<Result> result;
};
