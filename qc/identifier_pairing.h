/// @file
/// Rows that belong together by an identifier. Internal.
#pragma once

#include <string>

#include "qc/pairing.h"

namespace qxcms::qc {

/// In the order in which they are looked for.
inline constexpr const char* kIdentifiers[] = {"SampleID", "SAMPLE_ID", "SAMPLE_NAME", "SAMPLE_LOC"};

/// Whether and how identifiers pair two charts.
struct IdentifierPairing {
    Pairing pairing;     ///< without pairs where they do not
    std::string problem; ///< then: why, as a clause
    std::string doubt;   ///< where two columns of different names pair, or unique texts beside others: the
                         ///< problem if colours contradict them
};

/// By the first of kIdentifiers that both charts have, that is unique and not empty on both sides, and that
/// pairs any row; else, with a warning, by one of the measured chart that holds the names in another one of
/// the reference; else, where few texts of a column are not unique, by the others, which a finding tells. By
/// one column alone where its name is not empty. Texts compare as pairRows says.
/// @throws Refusal (usage) for a name that is none of kIdentifiers.
IdentifierPairing pairByIdentifier(const Chart& measured, const Chart& reference,
                                   const std::string& only = "");

/// Whether an identifier is 1, 2, 3 ... in both charts, which names no samples.
bool onlyCountsRows(const Chart& measured, const Chart& reference, const std::string& identifier);

/// By each of kIdentifiers that pairs any row.
std::vector<Pairing> pairByEachIdentifier(const Chart& measured, const Chart& reference);

} // namespace qxcms::qc
