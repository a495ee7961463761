/// @file
/// What texts name of measuring conditions, and the spellings of backings, geometries and filters. Internal.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qc/text_words.h"

namespace qxcms::qc {

/// What a text names, in the values of DocumentConditions. Of a condition that it names in two ways it names
/// none.
struct NamedConditions {
    std::optional<std::string> illuminant;
    std::optional<std::string> observer;
    std::optional<std::string> measurementCondition;
    std::optional<std::string> backing;
    std::optional<std::string> geometry;
    std::optional<std::string> filter;

    bool empty() const;
};

/// Reads a text that may be about anything: only what can hardly mean something else.
NamedConditions conditionsInText(const std::vector<Word>& words);

/// @name Texts that stand where nothing but such a condition belongs
/// Nothing for spellings that are not known.
/// @{
std::optional<std::string> backingOf(const std::vector<Word>& words);
std::optional<std::string> whiteBaseOf(const std::vector<Word>& words);
std::optional<std::string> geometryOf(const std::vector<Word>& words);
std::optional<std::string> filterOf(const std::vector<Word>& words);
/// @}

/// Whether they begin with "Ill 45, Obs 0", whatever follows.
bool isBareGeometry(const std::vector<Word>& words);

/// Of M2 and M3; nothing for M0 and M1, which are told apart by the light.
std::optional<std::string> filterOfMeasurementCondition(const std::string& condition);

/// The instrument without its serial number and version.
std::string instrumentOf(std::string_view text);

} // namespace qxcms::qc
