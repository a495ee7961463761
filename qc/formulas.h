/// @file
/// The difference formulas by name.
#pragma once

#include <array>
#include <string>

#include "qc/result.h"

namespace qxcms::qc {

/// A difference formula.
enum class DeltaE {
    ciede2000,  ///< CIEDE2000 as published (ISO/CIE 11664-6)
    cie1976,    ///< "CIELAB Delta E (Classic)"
    cie1994,    ///< "Delta E 94"
    kernel2000, ///< "Delta E 2000" of the kernel, which is not the published one
    cmc11,      ///< "CMC(1:1)"
    cmc21       ///< "CMC(2:1)"
};

inline constexpr std::array<DeltaE, 6> kFormulas = {DeltaE::ciede2000,  DeltaE::cie1976, DeltaE::cie1994,
                                                    DeltaE::kernel2000, DeltaE::cmc11,   DeltaE::cmc21};

struct Formula {
    DeltaE id;
    const char* name;      ///< "CIEDE2000", else that of TLabSpace's list
    const char* shortForm; ///< for those who type it
    const char* published; ///< what it is published as
    const char* remark;    ///< what a reader of the numbers must know; null when there is nothing
};

/// What is known of a formula.
Formula formula(DeltaE id);

/// The formula of that name, short form or published name ("CIE 1976"), ignoring case. Any other is refused
/// (usage), with those that are known.
Result<Formula> findFormula(const std::string& name);

/// Every word that findFormula takes, for messages and help.
std::string knownFormulas();

} // namespace qxcms::qc
