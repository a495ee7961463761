/// @file
/// A line of samples 64 characters at a time. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace qxcms::detail {

/// What the characters of a line said so far.
struct RowState {
    int values = 0;
    /// Bit n stands for value n, the last one for all behind; see OutlineRow.
    std::uint64_t large = 0;
    std::uint64_t strange = 0;
    std::size_t run = 0;         ///< the characters of the value so far
    std::size_t longest = 0;     ///< those of the longest value before
    bool within = false;         ///< the character before belongs to a value
    bool firstIsNoPoint = false; ///< and is its first one and no point
    bool special = false;        ///< there were commas or number signs
    bool hasSign = false;        ///< there were number signs
    bool hasNul = false;
    bool hasSpace = false; ///< there were spaces, which are blanks other than TABs
};

/// Goes on from `at` as long as there are 64 characters before `end`, up to a quote or a line end.
/// @return where it stopped.
using RowBlockReader = const char* (*)(const char* at, const char* end, RowState* state);

/// What whole rows have in common, each of them without quotes and ended by LF.
struct PlainRows {
    std::size_t count = 0;
    int fewestValues = std::numeric_limits<int>::max();
    int mostValues = 0;
    std::uint64_t large = 0;
    std::uint64_t strange = 0;
    std::size_t longest = 0; ///< the characters of the longest value
    bool special = false;
    bool hasSign = false;
    bool hasNul = false;
    bool hasSpace = false;
};

/// Takes rows as long as they begin with a digit, a point or a minus sign, and not in front of an "N", which
/// a mark of the end may have; and as long as there are 64 characters before `end` behind their last one.
/// @param at where a row begins. @return where the first row begins that was not taken.
using PlainRowReader = const char* (*)(const char* at, const char* end, PlainRows* rows);

struct RowReaders {
    RowBlockReader blocks; ///< null where there is no such thing
    PlainRowReader rows;   ///< likewise
};

/// What all processors of the kind can run.
extern const RowReaders kCommonRowReaders;
/// Needs InstructionSet::kAvx2.
extern const RowReaders kAvx2RowReaders;

} // namespace qxcms::detail
