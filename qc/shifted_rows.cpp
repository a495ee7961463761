#include "qc/shifted_rows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/number_text.h"
#include "qc/count_text.h"
#include "qc/printable_text.h"
#include "qc/statistics.h"

namespace qxcms::qc {

namespace {

// CIELAB Delta E. A chart printed or measured again rarely differs as much; neighbours in it usually do.
constexpr double kFar = 6.0;
// Of the distance as it stands, and in any case.
constexpr double kAgreeing = 1.0 / 3.0;
constexpr double kLargestAgreeing = 12.0;
constexpr int kFewestMended = 6;
// As many rows must be mended for each one that contradicts.
constexpr int kContradiction = 3;
// Strips of instruments hold no more patches.
constexpr int kLongestStrip = 100;
// The deviations of rows that stand in each other's places cancel; those of another tone curve add up.
constexpr double kLargestSum = 0.4;

Lab minus(const Lab& left, const Lab& right) {
    return {left[0] - right[0], left[1] - right[1], left[2] - right[2]};
}

Lab plus(const Lab& left, const Lab& right) {
    return {left[0] + right[0], left[1] + right[1], left[2] + right[2]};
}

double length(const Lab& vector) {
    return std::hypot(vector[0], vector[1], vector[2]);
}

// Without the root, for it is taken very often.
double squaredDistance(const Lab& left, const Lab& right) {
    const Lab d = minus(left, right);
    return d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
}

// A run of rows and how many more of them the change mends than contradict it.
struct Run {
    int first = 0;
    int last = -1;
    int places = 0;
    int score = 0;
};

class ShiftSearch {
public:
    explicit ShiftSearch(const std::vector<ComparedRow>& all)
        : rows(all), count(static_cast<int>(all.size())) {
        Lab sum{};
        double lengths = 0.0;
        for (const ComparedRow& row : rows) {
            own.push_back(squaredDistance(row.found, row.expected));
            sumsBefore.push_back(sum);
            lengthsBefore.push_back(lengths);
            sum = plus(sum, minus(row.found, row.expected));
            lengths += std::sqrt(own.back());
        }
        sumsBefore.push_back(sum);
        lengthsBefore.push_back(lengths);
    }

    std::optional<ShiftedRows> find() {
        const int far = static_cast<int>(std::count_if(own.begin(), own.end(), isFar));
        if (far < kFewestMended)
            return std::nullopt;
        for (int places = 1; places <= kLongestStrip; ++places) {
            searchShift(places);
            searchShift(-places);
        }
        for (int sum = 1; sum <= 2 * count - 3; ++sum)
            searchMirror(sum);
        // Where most rows differ, a part of them that agrees elsewhere does so by chance.
        const bool isMost = 2 * far > count;
        if (best.score < kFewestMended || (isMost && 2 * (best.last - best.first + 1) < far))
            return std::nullopt;
        return describe(best);
    }

private:
    static bool isFar(double squared) { return squared > kFar * kFar; }

    // 1 where a row agrees with what is expected in another one and not with its own, 0 where it agrees with
    // both, below 0 where it does not agree with the other.
    int vote(int row, int other) const {
        if (other < 0 || other >= count)
            return -kContradiction;
        const double there = squaredDistance(at(row).found, at(other).expected);
        const double here = own[static_cast<std::size_t>(row)];
        if (isFar(here) && there <= kAgreeing * kAgreeing * here &&
            there <= kLargestAgreeing * kLargestAgreeing)
            return 1;
        return isFar(there) ? -kContradiction : 0;
    }

    // The run of the greatest sum of votes.
    void searchShift(int places) {
        Run run{0, -1, places, 0};
        for (int row = 0; row < count; ++row) {
            const int its = vote(row, row + places);
            if (run.score <= 0 && its > 0)
                run = {row, row, places, 0};
            run.score += its;
            run.last = row;
            if (its > 0)
                take(run);
        }
    }

    // @param sum of two rows that stand in each other's place.
    void searchMirror(int sum) {
        Run run{0, -1, 0, 0};
        int upper = sum / 2 + 1;
        int lower = sum - upper;
        for (; lower >= 0 && upper < count && upper - lower < kLongestStrip; --lower, ++upper) {
            const int its = vote(lower, upper) + vote(upper, lower);
            run = {lower, upper, 0, run.score + its};
            if (run.score <= -2 * kContradiction)
                return;
            if (its > 1)
                take(run);
        }
    }

    void take(const Run& run) {
        if (run.score >= kFewestMended && run.score > best.score && cancels(run))
            best = run;
    }

    // Whether the deviations of the rows do so.
    bool cancels(const Run& run) const {
        const auto first = static_cast<std::size_t>(run.first);
        const auto end = static_cast<std::size_t>(run.last) + 1;
        return length(minus(sumsBefore[end], sumsBefore[first])) <=
               kLargestSum * (lengthsBefore[end] - lengthsBefore[first]);
    }

    ShiftedRows describe(const Run& run) const {
        std::vector<double> here;
        std::vector<double> there;
        for (int row = run.first; row <= run.last; ++row) {
            const int other = run.places == 0 ? run.first + run.last - row : row + run.places;
            here.push_back(length(minus(at(row).found, at(row).expected)));
            if (other >= 0 && other < count)
                there.push_back(length(minus(at(row).found, at(other).expected)));
        }
        return {at(run.first).row,        at(run.last).row,        run.places,
                run.last - run.first + 1, statistics(here).median, statistics(there).median};
    }

    const ComparedRow& at(int row) const { return rows[static_cast<std::size_t>(row)]; }

    const std::vector<ComparedRow>& rows;
    int count;
    std::vector<double> own; // the squared distance of each row as it stands
    // Of the deviations of the rows before each one, and of the lengths of these.
    std::vector<Lab> sumsBefore;
    std::vector<double> lengthsBefore;
    Run best;
};

std::string placesOf(const ShiftedRows& found) {
    if (found.isMirrored())
        return "the rows in the opposite order";
    const int places = std::abs(found.places);
    return "the row" + std::string(places == 1 ? " " : "s ") + countText(static_cast<std::size_t>(places)) +
           (found.places > 0 ? " further down" : " further up");
}

std::string causeOf(const ShiftedRows& found) {
    if (found.isMirrored())
        return "a strip seems to have been read backwards";
    return std::abs(found.places) == 1 ? "a reading seems to have been lost or taken twice"
                                       : "rows seem to have been lost, taken twice or put elsewhere";
}

} // namespace

std::optional<ShiftedRows> findShiftedRows(const std::vector<ComparedRow>& rows) {
    return ShiftSearch(rows).find();
}

std::string toldOf(const ShiftedRows& found, const std::string& file) {
    const auto row = [](int index) { return countText(static_cast<std::size_t>(index) + 1); };
    return "the colours of rows " + row(found.first) + " to " + row(found.last) + " of " + printable(file) +
           " agree with what is expected in " + placesOf(found) + " (median CIELAB Delta E " +
           detail::generalText(found.whenPlaced, 3) + " instead of " +
           detail::generalText(found.distance, 3) + "): " + causeOf(found) +
           ", so that colours stand beside the device values or names of other samples; check these rows in "
           "both files, and measure them again or put their colours in their place";
}

} // namespace qxcms::qc
