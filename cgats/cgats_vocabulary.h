/// @file
/// The words of CGATS.17 documents: keywords, field names, error messages. Internal.
#pragma once

namespace qxcms::detail {

inline constexpr int kKeywordCount = 43;
inline constexpr int kFieldNameCount = 40;
/// Codes below this have a message of their own; 23 and 24 have an empty one.
inline constexpr int kMessageCount = 25;

/// The keywords that the library acts on; the value is the index into kKeywords.
enum Keyword : int {
    kOriginator = 0,
    kFileDescriptor = 1,
    kCreated = 2,
    kNumberOfFields = 3,
    kBeginDataFormat = 4,
    kEndDataFormat = 5,
    kProcessColorId = 21,
    kSpotId = 22,
    kNumberOfSets = 23,
    kBeginData = 24,
    kEndData = 25,
    kKeyword = 29,
    kNumberOfStrips = 30,
    kRowLength = 31,
    kNumberOfStripsInRows = 32,
    kNumberOfColumns = 33,
    kBorderPatches = 34,
    kDevice = 35,
    kPatchHeight = 36,
    kPatchWidth = 37,
    kGapSizeX = 38,
    kGapSizeY = 39,
    kMirrorX = 40,
    kInkSet = 41,
    kLayoutType = 42
};

/// The standard fields that the library acts on; the value is the index into kFieldNames.
enum StandardField : int {
    kString = 1,
    kCmykC = 2,
    kCmykK = 5,
    kRgbR = 11,
    kRgbB = 13,
    kSpectralNm = 14,
    kSpectralPct = 15,
    kSpectralDec = 16,
    kXyzX = 17,
    kXyzZ = 19,
    kLabL = 23,
    kLabB = 25,
    kStdevX = 33,
    kStdevZ = 35
};

/// Channels that an n-colour space has at least.
constexpr int kFewestNColors = 5;

/// The document's error codes.
enum DocumentError : int {
    kTokenTooLong = -1,
    kUnknownError = 1,
    kEmptyFileName = 2,
    kFileNotFound = 3,
    kNotWritable = 4,
    kBadCommentBlock = 5,
    kNoTmpHeader = 6,
    kNoEndOfFormat = 9,
    kBadField = 10,
    kUnknownField = 11,
    kFieldCountMismatch = 12,
    kColorCountNotSupported = 18,
    kBadTagIndex = 21,
    kEmptyTag = 22,
    kBadTableIndex = 23
};

/// The error codes of a table.
enum TableError : int {
    kNoHeader = 1,
    kNoFields = 2,
    kFieldsMissing = 3,
    kNoSamples = 4,
    kSampleCountMismatch = 5,
    kBadDataType = 6,
    kColorNumbering = 7,
    kNoSampleIdentifier = 8,
    kTooFewCoordinates = 9,
    kOtherTableError = 10,
    kTableFull = 11,
    kHeaderEmpty = 12,
    kIllegalInkMap = 13
};

/// What the keyword that opens a comment block begins with.
inline constexpr char kBlockStart[] = "BEGIN_";
inline constexpr int kBlockStartLength = 6;

extern const char* const kKeywords[kKeywordCount];
extern const char* const kFieldNames[kFieldNameCount];
extern const char* const kMessages[kMessageCount];

/// The index of an entry that equals `text`, case included; -1 when there is none.
int findExactly(const char* const* table, int count, const char* text) noexcept;

/// The index of an entry that equals `text`, ignoring case; -1 when there is none.
int findIgnoringCase(const char* const* table, int count, const char* text) noexcept;

} // namespace qxcms::detail
