#include "qc/device_channels.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/number_text.h"
#include "platform/utility.h"
#include "qc/count_text.h"
#include "qc/device_numbers.h"
#include "qc/printable_text.h"

namespace qxcms::qc {

namespace {

using Columns = std::vector<std::int32_t>;

// The columns RGB_R, RGB_G and RGB_B; none unless there are all three, as numbers.
Columns rgbColumns(const Chart& chart) {
    Columns columns;
    for (const char* name : {"RGB_R", "RGB_G", "RGB_B"}) {
        const int column = chart.document->GetFieldNameIndex(chart.table, name);
        if (column < 0 || chart.header().GetField(column)->GetDataType() != TCgatsField::kFloat)
            return {};
        columns.push_back(column);
    }
    return columns;
}

bool hasInks(const Chart& chart) {
    return chart.header().GetNrColors() > 0 || chart.header().GetNrSpots() > 0;
}

// The columns of process and spot colours by channel; -1 for a channel without a column.
Columns inkColumns(const Chart& chart) {
    const TCgatsTableHeader& header = chart.header();
    Columns columns(header.GetColorColumns(), header.GetColorColumns() + header.GetNrColors());
    columns.insert(columns.end(), header.GetSpotColumns(), header.GetSpotColumns() + header.GetNrSpots());
    return columns;
}

bool hasGap(const Columns& columns) {
    return std::find(columns.begin(), columns.end(), -1) != columns.end();
}

std::string nameOfProcess(const TCgatsTableHeader& header) {
    switch (header.GetColorKind()) {
    case TCgatsTableHeader::kCmyk:
        return "CMYK";
    case TCgatsTableHeader::kNColors:
        return std::to_string(header.GetNrColors()) + "CLR";
    case TCgatsTableHeader::kCustomColors:
        return "PC" + std::to_string(header.GetNrColors());
    default:
        return "";
    }
}

// A column of device values.
struct Channel {
    std::string name; // "CMYK_C", "6CLR_2", "SPOT_1"
    std::int32_t column;

    std::string kind() const { return name.substr(0, name.rfind('_')); }
    std::string place() const { return name.substr(name.rfind('_') + 1); }
};

using Channels = std::vector<Channel>;

// The channels that the kernel knows.
Channels inksOf(const Chart& chart) {
    const Columns columns = inkColumns(chart);
    const std::string process = nameOfProcess(chart.header());
    const auto processes = static_cast<std::size_t>(std::max(chart.header().GetNrColors(), 0));
    Channels channels;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool spot = i >= processes;
        const std::string place = process == "CMYK" && !spot ? std::string(1, "CMYK"[i])
                                                             : std::to_string(i + 1 - (spot ? processes : 0));
        channels.push_back({(spot ? "SPOT" : process) + '_' + place, columns[i]});
    }
    return channels;
}

std::string upperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return text;
}

bool consistsOf(const std::string& text, const char* characters) {
    return !text.empty() && text.find_first_not_of(characters) == std::string::npos;
}

// "CMY_C", "K_K", "4CLR_1", "SPOT_7" in capitals; RGB stands for itself.
bool isNameOfChannel(const std::string& name) {
    constexpr const char* kDigits = "0123456789";
    constexpr const char* kInks = "CMYKOGRBVW";
    const std::size_t separator = name.rfind('_');
    if (separator == std::string::npos)
        return false;
    const std::string kind = name.substr(0, separator);
    const std::string place = name.substr(separator + 1);
    if (consistsOf(place, kDigits)) {
        const std::size_t end = kind.size() > 3 ? kind.size() - 3 : 0;
        return kind == "SPOT" || (kind.substr(end) == "CLR" && consistsOf(kind.substr(0, end), kDigits)) ||
               (kind.substr(0, 2) == "PC" &&
                consistsOf(kind.substr(std::min<std::size_t>(2, kind.size())), kDigits));
    }
    return place.size() == 1 && kind != "RGB" && consistsOf(kind, kInks) &&
           kind.find(place) != std::string::npos;
}

// The channels that are known by the names of their columns alone; beside process colours spot colours only.
Channels namedChannels(const Chart& chart, const Channels& inks) {
    Channels channels;
    for (int column = 0; column < chart.header().GetNrFields(); ++column) {
        const auto isColumn = [&](const Channel& ink) { return ink.column == column; };
        const std::string name = upperCase(chart.columnName(column));
        if (!isNameOfChannel(name) || std::any_of(inks.begin(), inks.end(), isColumn) ||
            (!inks.empty() && name.compare(0, 5, "SPOT_") != 0) || !holdsNumbers(chart, column))
            continue;
        const auto isName = [&](const Channel& other) { return other.name == name; };
        // "CMYKcm_c" beside "CMYKcm_C".
        const bool isTaken = std::any_of(channels.begin(), channels.end(), isName);
        channels.push_back({isTaken ? std::string(chart.columnName(column)) : name, column});
    }
    return channels;
}

Channels channelsOf(const Chart& chart) {
    Channels channels = inksOf(chart);
    const Channels named = namedChannels(chart, channels);
    channels.insert(channels.end(), named.begin(), named.end());
    return channels;
}

// "CMYK and SPOT"
std::string nameOf(const Channels& channels) {
    std::vector<std::string> kinds;
    for (const Channel& channel : channels)
        if (std::find(kinds.begin(), kinds.end(), channel.kind()) == kinds.end())
            kinds.push_back(channel.kind());
    std::string name;
    for (const std::string& kind : kinds)
        name += (name.empty() ? "" : " and ") + kind;
    return name;
}

// The channels that another chart does not have.
Channels others(const Channels& channels, const Channels& known) {
    Channels result;
    std::copy_if(channels.begin(), channels.end(), std::back_inserter(result), [&](const Channel& channel) {
        return std::none_of(known.begin(), known.end(),
                            [&](const Channel& other) { return other.name == channel.name; });
    });
    return result;
}

std::string listed(const Channels& channels) {
    std::string names;
    for (const Channel& channel : channels)
        names += (names.empty() ? "" : ", ") + channel.name;
    return printable(names);
}

std::string leftOut(const Chart& chart, const Channels& unused, const Chart& other) {
    return printable(chart.name) + ": " + listed(unused) + (unused.size() == 1 ? " is" : " are") +
           " 0 on every row and left out, as " + printable(other.name) + " has no such values";
}

bool isDoubtful(const Chart& chart, const Columns& columns) {
    return std::any_of(chart.doubts.begin(), chart.doubts.end(), [&](const DoubtfulValue& doubt) {
        return std::find(columns.begin(), columns.end(), doubt.column) != columns.end();
    });
}

Columns columnsOf(const Channels& channels) {
    Columns columns;
    for (const Channel& channel : channels)
        columns.push_back(channel.column);
    return columns;
}

// What takes no part of a chart that has more channels than another one: the columns that are 0 throughout,
// or the rows that are not.
struct Surplus {
    Columns columns; // none where they are 0 throughout
    std::string words;
};

// Nothing where too few rows would be left for the other chart, which may hold them all without these
// columns.
std::optional<Surplus> surplusOf(const Chart& chart, const Channels& unused, const Chart& other) {
    if (unused.empty())
        return Surplus{{}, ""};
    const Columns columns = columnsOf(unused);
    if (hasGap(columns))
        return std::nullopt;
    const std::vector<bool> rows = rowsWith(chart, columns);
    const auto with = static_cast<int>(std::count(rows.begin(), rows.end(), true));
    if (with == 0)
        return Surplus{{}, leftOut(chart, unused, other)};
    if (chart.rows() - with < std::max(other.rows(), 1) || isDoubtful(chart, columns))
        return std::nullopt;
    return Surplus{columns, printable(chart.name) + ": " + countText(static_cast<std::size_t>(with)) +
                                " of " + countText(rows.size()) + " samples hold " + listed(unused) +
                                " and take no part, as " + printable(other.name) + " has no such values"};
}

std::optional<DeviceChannels> sharedInks(const Chart& measured, const Channels& ours, const Chart& reference,
                                         const Channels& theirs) {
    const Channels oursAlone = others(ours, theirs);
    const Channels theirsAlone = others(theirs, ours);
    const bool reversed = oursAlone.empty();
    const Chart& chart = reversed ? reference : measured;
    const Channels& unused = reversed ? theirsAlone : oursAlone;
    const Channels shared = others(ours, oursAlone);
    if ((!oursAlone.empty() && !theirsAlone.empty()) || shared.empty())
        return std::nullopt;
    std::optional<Surplus> surplus = surplusOf(chart, unused, reversed ? measured : reference);
    if (!surplus)
        return std::nullopt;
    DeviceChannels channels{nameOf(shared), {}, {}, std::move(surplus->words)};
    (reversed ? channels.referenceAlone : channels.measuredAlone) = std::move(surplus->columns);
    for (const Channel& channel : shared) {
        const auto other = std::find_if(theirs.begin(), theirs.end(),
                                        [&](const Channel& c) { return c.name == channel.name; });
        channels.measured.push_back(channel.column);
        channels.reference.push_back(other->column);
    }
    return channels;
}

std::optional<DeviceChannels> usable(std::optional<DeviceChannels> channels) {
    if (!channels || channels->measured.empty() || channels->reference.empty() ||
        hasGap(channels->measured) || hasGap(channels->reference))
        return std::nullopt;
    return channels;
}

// The text of a header line named as a channel's column ("SPOT_1"); empty where there is none.
std::string lineNamed(const Chart& chart, const std::string& keyword) {
    for (int i = 0; i < chart.document->GetNrTags(); ++i) {
        const TCgatsTag& tag = *chart.document->GetTagAt(i);
        if (strcmp_ci(tag.GetKeyword(), keyword.c_str()) == 0 && tag.GetValue() != nullptr)
            return tag.GetValue();
    }
    return "";
}

// What the header lines call the process colours of a custom space, or the spot colours; none where a name is
// missing.
std::vector<std::string> describedColorants(const Chart& chart, bool spots) {
    const TCgats& document = *chart.document;
    const int count = spots                                   ? document.GetNrSpotColors(chart.table)
                      : document.IsCustomDefined(chart.table) ? document.GetNrProcessColors(chart.table)
                                                              : 0;
    std::vector<const char*> names(static_cast<std::size_t>(std::max(count, 0)), nullptr);
    if (names.empty())
        return {};
    const int error = spots ? document.GetSpotColorDescriptions(chart.table, names.data())
                            : document.GetCustomProcessColorDescriptions(chart.table, names.data());
    if (error != 0 || std::find(names.begin(), names.end(), nullptr) != names.end())
        return {};
    return {names.begin(), names.end()};
}

// What a header line calls a numbered channel; empty where none does.
std::string colorantName(const Chart& chart, const Channel& channel) {
    const int number = detail::textToInt(channel.place().c_str());
    const std::vector<std::string> names = describedColorants(chart, channel.kind() == "SPOT");
    const bool isDescribed = number >= 1 && static_cast<std::size_t>(number) <= names.size();
    return isDescribed ? names[static_cast<std::size_t>(number - 1)] : lineNamed(chart, channel.name);
}

} // namespace

std::optional<DeviceChannels> sharedChannels(const Chart& measured, const Chart& reference) {
    const Channels ours = channelsOf(measured);
    const Channels theirs = channelsOf(reference);
    std::optional<DeviceChannels> channels = usable(sharedInks(measured, ours, reference, theirs));
    if (channels || (hasInks(measured) && hasInks(reference)))
        return channels;
    return usable(DeviceChannels{"RGB", rgbColumns(measured), rgbColumns(reference), ""});
}

std::string nameOfDeviceValues(const Chart& chart) {
    const std::string name = nameOf(channelsOf(chart));
    return !name.empty() || rgbColumns(chart).empty() ? name : "RGB";
}

std::string differentColorants(const Chart& measured, const Chart& reference) {
    const Channels ours = channelsOf(measured);
    const Channels oursAlone = others(ours, channelsOf(reference));
    for (const Channel& channel : others(ours, oursAlone)) {
        if (channel.kind() == "CMYK")
            continue;
        const std::string name = colorantName(measured, channel);
        const std::string otherName = colorantName(reference, channel);
        if (strcmp_ci(name.c_str(), otherName.c_str()) == 0)
            continue;
        const auto nameIn = [](const std::string& known, const Chart& chart) {
            return (known.empty() ? "not named" : quoted(known)) + " in " + printable(chart.name);
        };
        return (channel.kind() == "SPOT" ? "spot colour " : "process colour ") + channel.place() + " is " +
               nameIn(name, measured) + " and " + nameIn(otherName, reference);
    }
    return "";
}

} // namespace qxcms::qc
