#include "qc/condition_choice.h"

#include <algorithm>
#include <array>
#include <utility>

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
    const char* known;      ///< values, for messages
    const char* usual = ""; ///< the value that needs no telling; empty where every one does
};

constexpr NamedCondition kIlluminant = {"illuminant", &DocumentConditions::illuminant,
                                        "A, B, C, E, D50, D55, D65, D75, F1 to F12 and LED-B1 to LED-V2"};
constexpr NamedCondition kObserver = {"observer", &DocumentConditions::observer, "2 degree and 10 degree"};
constexpr NamedCondition kFilter = {"filter", &DocumentConditions::filter,
                                    "none, polarizing, UV cut and D65"};
// Of the measurement itself: spectra are bound to them as well.
constexpr std::array<NamedCondition, 5> kOfMeasurement = {
    {{"measurement condition", &DocumentConditions::measurementCondition, "M0, M1, M2 and M3"},
     {"backing", &DocumentConditions::backing, "white, black and self"},
     {"geometry", &DocumentConditions::geometry, "45/0, 0/45, d/8, 8/d, d/0 and 0/d"},
     {"white base", &DocumentConditions::whiteBase, "absolute and paper", "absolute"},
     kFilter}};

bool isPlain(const Condition& condition) {
    return condition.isDeclared() && condition.understood;
}

// Whether a measurement condition is declared, and the filter - or that none is named - is the one it asks
// for.
bool filterGoesWithCondition(const DocumentConditions& conditions) {
    const std::string& condition = conditions.measurementCondition.value;
    const Condition& filter = conditions.filter;
    if (!isPlain(conditions.measurementCondition))
        return false;
    if (!filter.isDeclared())
        return true;
    if (condition == "M2") // also computed from measurements without one
        return filter.value == "UV cut" || filter.value == "none";
    return filter.value == (condition == "M3" ? "polarizing" : "none");
}

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
                 std::string("no ") + named.name + " is asked for, and no file of Lab or XYZ declares one" +
                     (areUnderstood(named) ? "" : " that is understood") + ": " + chosen.value +
                     " is assumed");
        return chosen;
    }

    void compareMeasurements() {
        for (const DescribedSide* side : {&measured, &reference}) {
            for (const NamedCondition& named : kOfMeasurement)
                tellContradiction(named, *side);
            tellFilterAgainstCondition(*side);
        }
        const bool conditionsCoverFilters =
            filterGoesWithCondition(measured.conditions) && filterGoesWithCondition(reference.conditions);
        for (const NamedCondition& named : kOfMeasurement)
            if (named.place != kFilter.place || !conditionsCoverFilters)
                compareMeasurement(named);
        if (!onOneSide.empty())
            warn(Finding::Kind::unknownCondition, "declared by one file only: " + onOneSide);
        for (const auto& [side, texts] : inTexts)
            if (!texts.empty())
                note(Finding::Kind::freeTextCondition,
                     printable(side->name) + ": named in a text only: " + texts);
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
    // A line of a file; a tab in it is a blank like others.
    static std::string shown(std::string line) {
        std::replace(line.begin(), line.end(), '\t', ' ');
        return printable(line);
    }

    static std::string told(const Condition& condition) {
        return shown(condition.value) + " (" + shown(condition.source) + ")";
    }

    static std::string told(const DescribedSide& side, const Condition& condition) {
        const std::string other =
            condition.contradicted.empty() ? "" : ", which contradicts " + shown(condition.contradicted);
        return shown(condition.value) + " in " + printable(side.name) + " (" + shown(condition.source) +
               other + ")";
    }

    void tellContradiction(const NamedCondition& named, const DescribedSide& side) {
        const Condition& condition = side.conditions.*named.place;
        if (!condition.contradicted.empty())
            warn(Finding::Kind::contradictoryCondition, printable(side.name) + " contradicts itself: its " +
                                                            named.name + " is " + told(condition) +
                                                            ", but also " + shown(condition.contradicted) +
                                                            "; " + shown(condition.value) + " is taken");
    }

    void tellFilterAgainstCondition(const DescribedSide& side) {
        const Condition& condition = side.conditions.measurementCondition;
        const Condition& filter = side.conditions.filter;
        if (!isPlain(condition) || condition.implied || !isPlain(filter))
            return;
        const std::string text = printable(side.name) + ": the filter is " + told(filter) + ", but " +
                                 told(condition) + " is measured " +
                                 (condition.value == "M2"   ? "with a UV cut"
                                  : condition.value == "M3" ? "with a polarizer"
                                                            : "without a filter");
        if (!filterGoesWithCondition(side.conditions))
            warn(Finding::Kind::contradictoryCondition, text + "; correct the line that is wrong");
        else if (condition.value == "M2" && filter.value == "none")
            note(Finding::Kind::contradictoryCondition, text + " or computed as with one");
    }

    // A text of no filter, often of no polarizer, beside an M2 that need not be measured with one.
    static bool mayBothHold(const Condition& one, const Condition& other) {
        const auto isText = [](const Condition& condition) {
            return condition.standing == Condition::Standing::freeText && condition.value == "none";
        };
        const auto isImplied = [](const Condition& condition) {
            return condition.implied && condition.value == "UV cut";
        };
        return (isText(one) && isImplied(other)) || (isImplied(one) && isText(other));
    }

    void compareMeasurement(const NamedCondition& named) {
        const Condition& ours = measured.conditions.*named.place;
        const Condition& theirs = reference.conditions.*named.place;
        const bool areKnown =
            ours.standing != Condition::Standing::unknown && theirs.standing != Condition::Standing::unknown;
        const bool areSame = areKnown && meanTheSame(ours.value, theirs.value);
        const bool areUnderstood = ours.understood && theirs.understood;
        if (!areUnderstood && !areSame) {
            tellNotUnderstood(named, measured);
            tellNotUnderstood(named, reference);
        } else if (areKnown && !areSame && !mayBothHold(ours, theirs)) {
            if (ours.isDeclared() && theirs.isDeclared())
                differ(named, told(measured, ours), told(reference, theirs));
            else
                warn(Finding::Kind::freeTextCondition,
                     std::string("the ") + named.name + " seems to differ: " + toldOfText(measured, ours) +
                         ", " + toldOfText(reference, theirs) +
                         "; make sure which holds, and declare it in a line of its own");
        } else {
            for (const DescribedSide* side : {&measured, &reference})
                tellAlone(named, *side, areKnown);
        }
    }

    // Of a side that does not differ from the other one. What a line implies goes with what that line is
    // about.
    void tellAlone(const NamedCondition& named, const DescribedSide& side, bool otherIsKnown) {
        const Condition& condition = side.conditions.*named.place;
        if (condition.implied || condition.standing == Condition::Standing::unknown)
            return;
        if (condition.standing == Condition::Standing::freeText)
            appendOfLine(inTexts[&side == &measured ? 0 : 1].second,
                         std::string(named.name) + " " + shown(condition.value), shown(condition.source));
        else if (!otherIsKnown && condition.value != named.usual)
            append(onOneSide, named.name + (" " + told(side, condition)));
    }

    void tellNotUnderstood(const NamedCondition& named, const DescribedSide& side,
                           const std::string& consequence = "it is not compared") {
        const Condition& condition = side.conditions.*named.place;
        if (!condition.understood)
            warn(Finding::Kind::unknownCondition, printable(side.name) + ": the " + named.name + " " +
                                                      told(condition) + " is not understood, so that " +
                                                      consequence + "; known are " + named.known);
    }

    static std::string toldOfText(const DescribedSide& side, const Condition& condition) {
        return told(side, condition) + (condition.isDeclared() ? "" : " as a text says");
    }

    void requireEqualBoundSides(const NamedCondition& named) {
        const Condition& ours = measured.conditions.*named.place;
        const Condition& theirs = reference.conditions.*named.place;
        if (measured.isBound() && reference.isBound() && isPlain(ours) && isPlain(theirs) &&
            !meanTheSame(ours.value, theirs.value))
            differ(named, told(measured, ours), told(reference, theirs));
    }

    ChosenCondition chosenOf(const NamedCondition& named, const std::optional<std::string>& asked,
                             const char* assumed) const {
        if (asked)
            return {*asked, ChosenCondition::Origin::asked};
        for (const auto standing : {Condition::Standing::declared, Condition::Standing::freeText})
            for (const DescribedSide* side : {&measured, &reference}) {
                const Condition& condition = side->conditions.*named.place;
                if (side->isBound() && condition.standing == standing && condition.understood)
                    return {condition.value, standing == Condition::Standing::declared
                                                 ? ChosenCondition::Origin::declared
                                                 : ChosenCondition::Origin::freeText};
            }
        // Lab of both sides may hold for a condition that nobody knows.
        const Condition& ours = measured.conditions.*named.place;
        const Condition& theirs = reference.conditions.*named.place;
        if (measured.source == ColorSource::lab && reference.source == ColorSource::lab &&
            ours.isDeclared() && theirs.isDeclared() && meanTheSame(ours.value, theirs.value))
            return {ours.value, ChosenCondition::Origin::declared};
        return {assumed, ChosenCondition::Origin::assumed};
    }

    // Holds what is chosen against a side whose colours cannot be computed anew.
    void hold(const NamedCondition& named, const DescribedSide& side, const ChosenCondition& chosen) {
        const Condition& condition = side.conditions.*named.place;
        const bool isAsked = chosen.origin == ChosenCondition::Origin::asked;
        switch (condition.standing) {
        case Condition::Standing::declared:
            if (meanTheSame(condition.value, chosen.value))
                break;
            if (!condition.understood)
                tellNotUnderstood(named, side,
                                  std::string("its ") + wordFor(side) + " are taken as those of " +
                                      chosen.value);
            else if (isAsked)
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

    bool areUnderstood(const NamedCondition& named) const {
        return (measured.conditions.*named.place).understood &&
               (reference.conditions.*named.place).understood;
    }

    static void append(std::string& list, const std::string& item) {
        list += (list.empty() ? "" : ", ") + item;
    }

    // What one line says is told before it.
    static void appendOfLine(std::string& list, const std::string& item, const std::string& line) {
        const std::string end = " (" + line + ")";
        if (list.size() > end.size() && list.compare(list.size() - end.size(), end.size(), end) == 0)
            list.erase(list.size() - end.size());
        append(list, item + end);
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
    std::string onOneSide;                                                // declared there only
    std::array<std::pair<const DescribedSide*, std::string>, 2> inTexts = // named there only
        {{{&measured, ""}, {&reference, ""}}};
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
