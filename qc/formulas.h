/// @file
/// The difference formulas by name.
#pragma once

#include <string>

namespace qxcms::qc {

/// CIEDE2000 as published, which is none of TLabSpace's list.
constexpr int kCiede2000 = -1;

struct Formula {
    int number;            ///< of TLabSpace's list, or kCiede2000
    const char* name;      ///< of TLabSpace's list, or "CIEDE2000"
    const char* shortForm; ///< for those who type it
    const char* published; ///< what it is published as
    const char* remark;    ///< what a reader of the numbers must know; null when there is nothing
};

/// The formula of that number; `number` is kCiede2000 or one of TLabSpace's list.
Formula formula(int number);

/// The formula of that name, short form or published name ("CIE 1976"), ignoring case.
/// @throws Refusal (usage) that lists the known ones.
Formula findFormula(const std::string& name);

/// Every word that findFormula takes, for messages and help.
std::string knownFormulas();

} // namespace qxcms::qc
