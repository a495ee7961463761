#include "qc/condition_choice.h"

#include <algorithm>
#include <array>

#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

constexpr const char* kDefaultIlluminant = "D50";
constexpr const char* kDefaultObserver = "2 degree";

/// A condition by its name and its place.
struct NamedCondition {
    const char* name;
    Condition DocumentConditions::*place;
};

constexpr NamedCondition kIlluminant = {"illuminant", &DocumentConditions::illuminant};
constexpr NamedCondition kObserver = {"observer", &DocumentConditions::observer};
// Of the measurement itself: spectra are bound to them as well.
constexpr std::array<NamedCondition, 4> kOfMeasurement = {
    {{"measurement condition", &DocumentConditions::measurementCondition},
     {"backing", &DocumentConditions::backing},
     {"geometry", &DocumentConditions::geometry},
     {"filter", &DocumentConditions::filter}}};

/// Goes through the conditions of two sides.
class Choice {
public:
    Choice(const DescribedSide& one, const DescribedSide& other) : measured(one), reference(other) {}

    ChosenCondition choose(const NamedCondition& named, const std::optional<std::string>& asked,
                           const char* assumed) {
        for (const DescribedSide* side : {&measured, &reference})
            tellContradiction(named, *side);
        requireEqualBoundSides(named);
        ChosenCondition chosen = chosenOf(named, asked, assumed);
        for (const DescribedSide* side : {&measured, &reference})
            if (side->isBound())
                hold(named, *side, chosen);
        if (chosen.origin == ChosenCondition::Origin::assumed)
            note(Finding::Kind::assumedCondition,
                 std::string("no ") + named.name + " is asked for, and no file of Lab or XYZ declares one: " +
                     chosen.value + " is assumed");
        return chosen;
    }

    void compareMeasurements() {
        std::string unknown;
        for (const NamedCondition& named : kOfMeasurement) {
            for (const DescribedSide* side : {&measured, &reference})
                tellContradiction(named, *side);
            const Condition& ours = measured.conditions.*named.place;
            const Condition& theirs = reference.conditions.*named.place;
            if (ours.isDeclared() && theirs.isDeclared() && ours.value != theirs.value)
                differ(named, told(measured, ours), told(reference, theirs));
            // Equal measurement conditions cover the filter.
            else if (ours.isDeclared() != theirs.isDeclared() &&
                     !(named.place == &DocumentConditions::filter && haveMeasurementConditions()))
                unknown += (unknown.empty() ? "" : ", ") + onOneSide(named, ours, theirs);
        }
        if (!unknown.empty())
            warn(Finding::Kind::unknownCondition, "declared by one file only: " + unknown);
    }

    /// @throws Refusal where conditions differ.
    void refuseUnless(bool force) {
        if (conflicts.empty())
            return;
        if (!force)
            throw Refusal(Refusal::Kind::notComparable,
                          "the conditions differ: " + joinedConflicts() + "; --force compares all the same");
        for (const std::string& conflict : conflicts)
            warn(Finding::Kind::forcedCondition,
                 "compared by force although the conditions differ: " + conflict);
    }

    bool isForced() const { return !conflicts.empty(); }

    std::vector<Finding> findings;

private:
    static std::string told(const Condition& condition) {
        return printable(condition.value) + " (" + printable(condition.source) + ")";
    }

    static std::string told(const DescribedSide& side, const Condition& condition) {
        const std::string other =
            condition.contradicted.empty() ? "" : ", which contradicts " + printable(condition.contradicted);
        return printable(condition.value) + " in " + printable(side.name) + " (" +
               printable(condition.source) + other + ")";
    }

    bool haveMeasurementConditions() const {
        return measured.conditions.measurementCondition.isDeclared() &&
               reference.conditions.measurementCondition.isDeclared();
    }

    void tellContradiction(const NamedCondition& named, const DescribedSide& side) {
        const Condition& condition = side.conditions.*named.place;
        if (!condition.contradicted.empty())
            warn(Finding::Kind::contradictoryCondition,
                 printable(side.name) + " contradicts itself: its " + named.name + " is " + told(condition) +
                     ", but also " + printable(condition.contradicted) + "; the last one is taken");
    }

    void requireEqualBoundSides(const NamedCondition& named) {
        const Condition& ours = measured.conditions.*named.place;
        const Condition& theirs = reference.conditions.*named.place;
        if (measured.isBound() && reference.isBound() && ours.isDeclared() && theirs.isDeclared() &&
            ours.value != theirs.value)
            differ(named, told(measured, ours), told(reference, theirs));
    }

    ChosenCondition chosenOf(const NamedCondition& named, const std::optional<std::string>& asked,
                             const char* assumed) const {
        if (asked)
            return {*asked, ChosenCondition::Origin::asked};
        for (const auto standing : {Condition::Standing::declared, Condition::Standing::freeText})
            for (const DescribedSide* side : {&measured, &reference}) {
                const Condition& condition = side->conditions.*named.place;
                if (side->isBound() && condition.standing == standing)
                    return {condition.value, standing == Condition::Standing::declared
                                                 ? ChosenCondition::Origin::declared
                                                 : ChosenCondition::Origin::freeText};
            }
        return {assumed, ChosenCondition::Origin::assumed};
    }

    // Holds what is chosen against a side whose colours cannot be computed anew.
    void hold(const NamedCondition& named, const DescribedSide& side, const ChosenCondition& chosen) {
        const Condition& condition = side.conditions.*named.place;
        const bool isAsked = chosen.origin == ChosenCondition::Origin::asked;
        switch (condition.standing) {
        case Condition::Standing::declared:
            if (isAsked && condition.value != chosen.value)
                differ(named, told(side, condition), chosen.value + " as asked for");
            break;
        case Condition::Standing::freeText:
            tellOfText(named, side, condition, chosen);
            break;
        case Condition::Standing::unknown:
            if (chosen.origin != ChosenCondition::Origin::assumed)
                warn(Finding::Kind::unknownCondition, printable(side.name) + " does not tell the " +
                                                          named.name + " of its " + wordFor(side) +
                                                          "; they are taken as those of " + chosen.value);
            break;
        }
    }

    void tellOfText(const NamedCondition& named, const DescribedSide& side, const Condition& condition,
                    const ChosenCondition& chosen) {
        const std::string text = printable(side.name) + ": the " + named.name + " of its " + wordFor(side) +
                                 " is named in a text only, " + told(condition);
        if (condition.value == chosen.value)
            note(Finding::Kind::freeTextCondition, text);
        else
            warn(Finding::Kind::freeTextCondition, text + "; they are taken as those of " + chosen.value);
    }

    static const char* wordFor(const DescribedSide& side) {
        return side.source == ColorSource::lab ? "Lab values" : "XYZ values";
    }

    std::string onOneSide(const NamedCondition& named, const Condition& ours, const Condition& theirs) const {
        return ours.isDeclared() ? named.name + (" " + told(measured, ours))
                                 : named.name + (" " + told(reference, theirs));
    }

    void differ(const NamedCondition& named, const std::string& one, const std::string& other) {
        const std::string conflict = std::string(named.name) + " " + one + ", " + other;
        // Both sides may be one file.
        if (std::find(conflicts.begin(), conflicts.end(), conflict) == conflicts.end())
            conflicts.push_back(conflict);
    }

    std::string joinedConflicts() const {
        std::string text;
        for (const std::string& conflict : conflicts)
            text += (text.empty() ? "" : "; ") + conflict;
        return text;
    }

    void warn(Finding::Kind kind, const std::string& text) {
        findings.push_back({Finding::Severity::warning, kind, text});
    }
    void note(Finding::Kind kind, const std::string& text) {
        findings.push_back({Finding::Severity::note, kind, text});
    }

    const DescribedSide& measured;
    const DescribedSide& reference;
    std::vector<std::string> conflicts;
};

} // namespace

const char* nameOf(ChosenCondition::Origin origin) {
    switch (origin) {
    case ChosenCondition::Origin::asked:
        return "asked";
    case ChosenCondition::Origin::declared:
        return "declared";
    case ChosenCondition::Origin::freeText:
        return "text";
    case ChosenCondition::Origin::assumed:
        return "assumed";
    }
    return "";
}

ChosenConditions chooseConditions(const DescribedSide& measured, const DescribedSide& reference,
                                  const std::optional<std::string>& askedIlluminant,
                                  const std::optional<std::string>& askedObserver, bool force) {
    Choice choice(measured, reference);
    ChosenConditions chosen;
    chosen.illuminant = choice.choose(kIlluminant, askedIlluminant, kDefaultIlluminant);
    chosen.observer = choice.choose(kObserver, askedObserver, kDefaultObserver);
    choice.compareMeasurements();
    choice.refuseUnless(force);
    chosen.forced = choice.isForced();
    chosen.findings = std::move(choice.findings);
    return chosen;
}

} // namespace qxcms::qc
