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
    kProcessColorId = 21,
    kSpotId = 22,
    kNumberOfSets = 23,
    kBeginData = 24,
    kKeyword = 29
};

/// The standard fields that the library acts on; the value is the index into kFieldNames.
enum StandardField : int {
    kString = 1,
    kCmykC = 2,
    kCmykK = 5,
    kXyzX = 17,
    kXyzZ = 19,
    kLabL = 23,
    kLabB = 25
};

/// The document's error codes.
enum DocumentError : int {
    kTokenTooLong = -1,
    kUnknownError = 1,
    kEmptyFileName = 2,
    kFileNotFound = 3,
    kBadCommentBlock = 5,
    kNoTmpHeader = 6,
    kNoEndOfFormat = 9,
    kBadField = 10,
    kUnknownField = 11,
    kFieldCountMismatch = 12
};

extern const char* const kKeywords[kKeywordCount];
extern const char* const kFieldNames[kFieldNameCount];
extern const char* const kMessages[kMessageCount];

/// The index of an entry that equals `text`, case included; -1 when there is none.
int findExactly(const char* const* table, int count, const char* text) noexcept;

/// The index of an entry that equals `text`, ignoring case; -1 when there is none.
int findIgnoringCase(const char* const* table, int count, const char* text) noexcept;

} // namespace qxcms::detail
