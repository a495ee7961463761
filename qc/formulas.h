/// @file
/// The difference formulas by name.
#pragma once

#include <string>

namespace qxcms::qc {

struct Formula {
    int number;            ///< of TLabSpace's list
    const char* name;      ///< of TLabSpace's list
    const char* shortForm; ///< for those who type it
    const char* published; ///< what it is published as
    const char* remark;    ///< what a reader of the numbers must know; null when there is nothing
};

/// The formula of that number; `number` is one of the list.
Formula formula(int number);

/// The formula of that name, short form or published name ("CIE 1976"), ignoring case.
/// @throws Refusal (usage) that lists the known ones.
Formula findFormula(const std::string& name);

/// Every word that findFormula takes, for messages and help.
std::string knownFormulas();

} // namespace qxcms::qc
