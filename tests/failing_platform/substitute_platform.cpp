#include "tests/failing_platform/substitute_platform.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>
#include <locale>
#include <sstream>
#include <strings.h>

#include "platform/file_name_encoding.h"
#include "platform/logical_names.h"
#include "platform/object_factory.h"
#include "platform/resource_database.h"
#include "platform/utility.h"
#include "tests/failing_platform/allocation_faults.h"

namespace qxcms::tests {
namespace {

// The files that are open for writing, and under which name they will stand.
std::map<FILE*, std::string>& filesBeingWritten() {
    static std::map<FILE*, std::string> files;
    return files;
}

int& writesSoFar() {
    static int writes = 0;
    return writes;
}

int signOf(int value) {
    return (value > 0) - (value < 0);
}

} // namespace

SubstitutePlatform& platform() {
    static SubstitutePlatform instance;
    return instance;
}

} // namespace qxcms::tests

using qxcms::tests::AllocationTruce;
using qxcms::tests::filesBeingWritten;
using qxcms::tests::platform;
using qxcms::tests::signOf;
using qxcms::tests::writesSoFar;

struct lin_interp_double {
    std::map<double, double> points;
};

struct fsearch_state {
    std::vector<std::string> files;
    std::size_t next = 0;
};

int rdb_err = 0;

extern "C" {

void error_mess_fl(const char* message, const char* module, int line) {
    const AllocationTruce truce;
    platform().errors.push_back(std::string(module) + ':' + std::to_string(line) + ": " + message);
}

void report_warning(int level, const char* message) {
    const AllocationTruce truce;
    platform().warnings.push_back(std::to_string(level) + ": " + message);
}

int strcmp_ci(const char* a, const char* b) {
    if (a == nullptr || b == nullptr)
        return (a != nullptr) - (b != nullptr);
    return signOf(strcasecmp(a, b));
}

int strncmp_ci(const char* a, const char* b, int n) {
    if (a == nullptr || b == nullptr)
        return (a != nullptr) - (b != nullptr);
    return n <= 0 ? 0 : signOf(strncasecmp(a, b, static_cast<std::size_t>(n)));
}

int UTF8ToLocalEncoding(const char* in, char* out, int size) {
    const AllocationTruce truce;
    std::string name = platform().emptiesNames ? "" : in;
    if (platform().capitalisesNames)
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char c) { return std::toupper(c); });
    const bool refused = platform().refusesNames || name.size() >= static_cast<std::size_t>(size);
    std::strcpy(out, refused ? "half" : name.c_str());
    return refused ? -1 : 0;
}

lin_interp_double* lin_interp_double_new(int count) {
    const AllocationTruce truce;
    platform().announcedCounts.push_back(count);
    if (platform().refusesTables)
        return nullptr;
    ++platform().tablesInUse;
    return new lin_interp_double;
}

int lin_interp_double_insert(lin_interp_double* table, double x, double y) {
    const AllocationTruce truce;
    const auto index = static_cast<int>(platform().insertedPoints.size());
    platform().insertedPoints.emplace_back(x, y);
    if (index == platform().failingInsertion || !std::isfinite(x))
        return 1;
    return table->points.emplace(x, y).second ? 0 : 1;
}

double lin_interp_double_inter(const lin_interp_double* table, double x) {
    const AllocationTruce truce;
    platform().evaluatedAt.push_back(x);
    const auto above = table->points.upper_bound(x);
    if (above == table->points.begin())
        return above == table->points.end() ? 0.0 : above->second;
    const auto below = std::prev(above);
    if (above == table->points.end())
        return below->second;
    return below->second +
           (above->second - below->second) * (x - below->first) / (above->first - below->first);
}

void lin_interp_double_kill(lin_interp_double* table) {
    const AllocationTruce truce;
    if (table == nullptr)
        return;
    --platform().tablesInUse;
    delete table;
}

double vect_distance(const double* a, const double* b, int n) {
    double sum = 0.0;
    for (int i = 0; i < n; ++i)
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    return std::sqrt(sum);
}

void fltoffl(double value, unsigned char* fourBytes) {
    const float single = static_cast<float>(value);
    std::memcpy(fourBytes, &single, sizeof single);
}

double ffltofl(const unsigned char* fourBytes) {
    float single = 0.0F;
    std::memcpy(&single, fourBytes, sizeof single);
    return static_cast<double>(single);
}

int str_int_from_itemstr(const char* items, int index, int* out) {
    double value = 0.0;
    if (str_double_from_itemstr(items, index, &value) != 0)
        return -1;
    *out = static_cast<int>(value);
    return 0;
}

// Blanks between the values are enough here.
int str_double_from_itemstr(const char* items, int index, double* out) {
    const AllocationTruce truce;
    std::istringstream stream(items);
    stream.imbue(std::locale::classic());
    double value = 0.0;
    for (int i = 0; i <= index; ++i)
        stream >> value;
    if (!stream)
        return -1;
    *out = value;
    return 0;
}

FILE* open_resolved_file(const char* name, const char* mode) {
    const AllocationTruce truce;
    platform().opened.emplace_back(name, mode);
    const bool reads = std::strcmp(mode, "r") == 0;
    const auto found = platform().files.find(name);
    if (platform().refusesToOpen || (reads && found == platform().files.end()))
        return nullptr;
    FILE* const file = tmpfile();
    if (file == nullptr)
        return nullptr;
    if (reads) {
        fwrite(found->second.data(), 1, found->second.size(), file);
        rewind(file);
    } else {
        filesBeingWritten()[file] = name;
        writesSoFar() = 0;
    }
    ++platform().filesInUse;
    return file;
}

int close_resolved_file(FILE* file) {
    const AllocationTruce truce;
    --platform().filesInUse;
    int result = 0;
    const auto written = filesBeingWritten().find(file);
    if (written != filesBeingWritten().end()) {
        std::string bytes(static_cast<std::size_t>(fgeteof(file)), '\0');
        rewind(file);
        bytes.resize(fread(bytes.data(), 1, bytes.size(), file));
        platform().files[written->second] = bytes;
        filesBeingWritten().erase(written);
        result = platform().losesWritesOnClose ? -1 : 0;
    }
    fclose(file);
    return result;
}

int lognam(const char*, char* out) {
    if (out != nullptr)
        std::strcpy(out, platform().translation.c_str());
    return platform().translationAnswer;
}

int deflognam(const char* name, const char* value) {
    const AllocationTruce truce;
    platform().definitions.push_back(std::string(name) + '=' + value);
    return -1;
}

int fport(char* out, int size, const char* specification) {
    const AllocationTruce truce;
    if (platform().pathAnswer != 0)
        return platform().pathAnswer;
    const auto found = platform().paths.find(specification);
    if (platform().emptiesPaths)
        specification = "";
    else if (found != platform().paths.end())
        specification = found->second.c_str();
    const std::size_t length = std::strlen(specification);
    if (size < 0 || length >= static_cast<std::size_t>(size))
        return -1;
    std::memcpy(out, specification, length + 1);
    return 0;
}

fsearch_state* fsinit(const char* directory, const unsigned char* option) {
    const AllocationTruce truce;
    platform().searches.emplace_back(directory, *option);
    if (platform().refusesSearches)
        return nullptr;
    ++platform().searchesInUse;
    return new fsearch_state{platform().directories[directory]};
}

int fsearch(fsearch_state* search, char* out, int size) {
    if (search->next == search->files.size())
        return -1;
    return fport(out, size, search->files[search->next++].c_str());
}

void fsfree(fsearch_state* search) {
    const AllocationTruce truce;
    if (search == nullptr)
        return;
    --platform().searchesInUse;
    delete search;
}

long fgeteof(FILE* file) {
    const AllocationTruce truce;
    if (platform().hidesSizes)
        return -1;
    const long position = ftell(file);
    fseek(file, 0, SEEK_END);
    const long size = ftell(file);
    fseek(file, position, SEEK_SET);
    return size;
}

long fgetm(FILE* file, void* buffer, long size) {
    const AllocationTruce truce;
    const long wanted = std::max(0L, size - platform().bytesNotRead);
    return static_cast<long>(fread(buffer, 1, static_cast<std::size_t>(wanted), file));
}

long fputm(FILE* file, const void* buffer, long size) {
    const AllocationTruce truce;
    const long wanted = writesSoFar()++ == platform().failingWrite ? size - 1 : size;
    return static_cast<long>(fwrite(buffer, 1, static_cast<std::size_t>(std::max(0L, wanted)), file)) -
           (wanted < 0 ? 1 : 0);
}

} // extern "C"

TElement::TElement() noexcept : next(nullptr) {}
TElement::~TElement() = default;

TList::TList() noexcept : first(nullptr), last(nullptr) {}

TList::~TList() {
    while (first != nullptr) {
        TElement* const element = first;
        first = element->next;
        delete element;
    }
}

void TList::Append(TElement* element) noexcept {
    if (element == nullptr)
        return;
    (first == nullptr ? first : last->next) = element;
    last = element;
}

TObjEl::TObjEl(void* newObject) noexcept : object(newObject), nrReferences(0) {}
TObjEl::~TObjEl() = default;

TObjFac::TObjFac() noexcept : nrElements(0), cursor(nullptr) {}
TObjFac::~TObjFac() = default;

void* TObjFac::Register(void* object) {
    TObjEl* const element = TObjFacCreateEl(object);
    if (element == nullptr)
        return nullptr;
    elements.Append(element);
    ++nrElements;
    element->AddReference();
    return object;
}

void* TObjFac::Scan(int restart) noexcept {
    if (restart != 0)
        cursor = elements.GetFirst();
    else if (cursor != nullptr)
        cursor = cursor->GetNext();
    return cursor == nullptr ? nullptr : static_cast<TObjEl*>(cursor)->GetObject();
}
