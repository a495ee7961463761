#include "support/tcachefile.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string>

#include "base/guarded.h"
#include "base/number_text.h"
#include "base/owned_text.h"
#include "platform/resource_database.h"
#include "platform/utility.h"
#include "support/file_name_escaping.h"
#include "support/qxcms_rdb_err.h"

namespace {

using qxcms::detail::guarded;

constexpr int kFailed = -1;
constexpr int kNotOpened = 1;
constexpr int kNotPushed = 3;

constexpr const char* kModule = "tcachefile";
constexpr int kNoLine = 0;

// What file systems and the resource database treat specially.
constexpr const char* kIllegalCharacters = "$% ./\\*[]@?:|#<>\";";

// The topic that the resource database keeps for itself.
constexpr const char* kInternalTopic = "_internal_";

// Kept on purpose: the blank at the end comes beside the one that joins the texts
// (cacheFileFaults.valueThatCannotBeRead_isNullAndReportedWithTwoBlanks).
constexpr const char* kNoValue = "Cannot get item Value for item ";
constexpr const char* kTopicNotAdded = "Unable to add topic : ";
constexpr const char* kTopicNotRemoved = "Unable to remove topic : ";

constexpr const char* kNoText = "";
constexpr int kItemStringSize = 1024;
constexpr int kRealDecimals = 4;
constexpr std::size_t kRealWidth = 6;

std::unique_ptr<char[]> copyIfAny(const char* text) {
    return text != nullptr ? qxcms::detail::copyText(text) : nullptr;
}

std::string escaped(const char* text) {
    std::string result(3 * std::strlen(text) + 1, '\0');
    TCMS_EncodeIllegalCharacters(text, result.data(), kIllegalCharacters);
    result.resize(std::strlen(result.c_str()));
    return result;
}

std::string storedForm(const char* text, int encode) {
    return encode != 0 ? escaped(text) : std::string(text);
}

// The database counts it as an error that something is not there, or no longer. Where that is no failure,
// rdb_err becomes what it was before.
void forgetWhatIsMissing(int before) {
    constexpr int kMissing[] = {3, 13, 14, 15, 17};
    if (std::find(std::begin(kMissing), std::end(kMissing), rdb_err) != std::end(kMissing))
        rdb_err = before;
}

// Kept on purpose: "to the data base" also where a topic is removed
// (cacheFileFaults.topicThatCannotBeRemoved_isReportedAsToTheDataBase).
std::string topicMessage(const char* what, const char* topic) {
    return std::string(what) + topic + " to the data base";
}

} // namespace

void TCacheFile::Closer::operator()(rdb_db* db) const noexcept {
    rdb_close(db);
}

TCacheFile::TCacheFile(const char* name, const char* inDirectory)
    : fileName(copyIfAny(name)), directory(copyIfAny(inDirectory)), state(0), topicPosition(0),
      itemPosition(0), file(nullptr) {
    const bool complete = fileName != nullptr && (directory != nullptr) == (inDirectory != nullptr);
    const bool opened = complete && guarded(false, [&] {
                            const std::string path =
                                std::string(inDirectory != nullptr ? inDirectory : "") + name;
                            open(path.c_str(), 0);
                            return true;
                        });
    if (!opened)
        open(nullptr, 0);
}

TCacheFile::TCacheFile(const char* path, int create)
    : fileName(copyIfAny(path)), state(0), topicPosition(0), itemPosition(0), file(nullptr) {
    open(fileName != nullptr ? path : nullptr, create);
}

TCacheFile::~TCacheFile() = default;

void TCacheFile::open(const char* path, int create) {
    database.reset(rdb_open());
    if (!database) {
        state = kNotOpened;
        TCacheFile::SetErrMsg("Cannot Create RDB", nullptr, nullptr);
        return;
    }
    if (path != nullptr) {
        const int before = rdb_err;
        file = rdb_push_rfile(database.get(), path);
        if (file == nullptr && create != 0) {
            file = rdb_create_rfile(database.get(), path);
            // Another may have made it just before.
            if (file == nullptr)
                file = rdb_push_rfile(database.get(), path);
            if (file != nullptr)
                rdb_err = before;
        }
    }
    if (file == nullptr) {
        state = kNotPushed;
        TCacheFile::SetErrMsg("Unable to push file", path, nullptr);
    }
}

void TCacheFile::SetErrMsg(const char* first, const char* second, Reporter reporter) {
    const char* message = first != nullptr ? first : second;
    if (message == nullptr)
        return;
    std::string joined;
    if (first != nullptr && second != nullptr && guarded(false, [&] {
            joined = std::string(first) + ' ' + second;
            return true;
        }))
        message = joined.c_str();
    if (reporter != nullptr)
        reporter(message);
    else
        error_mess_fl(message, kModule, kNoLine);
}

// Messages name the topic as the caller did.
int TCacheFile::addTopic(const char* topic, const char* storedTopic) {
    if (rdb_add_topic(database.get(), file, storedTopic, kNoText) != 0)
        return 0;
    SetErrMsg(topicMessage(kTopicNotAdded, topic).c_str(), nullptr, &qxcms_rdb_err);
    return kFailed;
}

int TCacheFile::AddTopic(const char* topic, int encodeTopic) {
    if (topic == nullptr)
        return kFailed;
    return guarded(kFailed, [&] {
        const std::string stored = storedForm(topic, encodeTopic);
        // Kept on purpose: a topic that is there already is refused in silence
        // (cacheFile.addTopic_thatIsThere_isRefusedInSilence).
        const int before = rdb_err;
        if (rdb_search_topic(database.get(), stored.c_str()) != 0)
            return kFailed;
        forgetWhatIsMissing(before);
        return addTopic(topic, stored.c_str());
    });
}

int TCacheFile::RemoveTopic(const char* topic, int encodeTopic) {
    if (topic == nullptr)
        return kFailed;
    return guarded(kFailed, [&] {
        if (rdb_remove_topic(database.get(), file, storedForm(topic, encodeTopic).c_str()) != 0)
            return 0;
        SetErrMsg(topicMessage(kTopicNotRemoved, topic).c_str(), nullptr, &qxcms_rdb_err);
        return kFailed;
    });
}

int TCacheFile::store(const char* topic, const char* storedTopic, const char* item, const char* text) {
    const int before = rdb_err;
    const char* previous = nullptr;
    const bool exists = rdb_search(database.get(), storedTopic, item, &previous) != 0;
    if (!exists)
        forgetWhatIsMissing(before);
    const int done = exists ? rdb_modify(database.get(), storedTopic, item, text)
                            : rdb_add_item(database.get(), storedTopic, item, text, kNoText);
    if (done != 0)
        return 0;
    const std::string message = exists ? std::string("Unable to modify item ") + item + " of topic " + topic
                                       : std::string("Unable to add item ") + item + " to topic " + topic;
    SetErrMsg(message.c_str(), nullptr, &qxcms_rdb_err);
    return kFailed;
}

int TCacheFile::AddItem(const char* topic, const char* item, const char* text, int encodeTopic,
                        int encodeValue) {
    if (topic == nullptr || item == nullptr || text == nullptr)
        return kFailed;
    return guarded(kFailed, [&] {
        return store(topic, storedForm(topic, encodeTopic).c_str(), item,
                     storedForm(text, encodeValue).c_str());
    });
}

int TCacheFile::AddItem(const char* topic, const char* item, int value, int encodeTopic) {
    return guarded(kFailed,
                   [&] { return AddItem(topic, item, std::to_string(value).c_str(), encodeTopic, 0); });
}

int TCacheFile::AddItem(const char* topic, const char* item, double value, int encodeTopic) {
    return guarded(kFailed, [&] {
        std::string text = qxcms::detail::fixedText(value, kRealDecimals);
        if (text.size() < kRealWidth)
            text.insert(0, kRealWidth - text.size(), ' ');
        return AddItem(topic, item, text.c_str(), encodeTopic, 0);
    });
}

int TCacheFile::ChangeIntItem(const char* topic, const char* item, int delta, int minimum, int maximum,
                              int encodeTopic) {
    if (topic == nullptr || item == nullptr)
        return kFailed;
    return guarded(kFailed, [&] {
        const int before = rdb_err;
        int previous = 0;
        if (rdb_search_int(database.get(), storedForm(topic, encodeTopic).c_str(), item, &previous) == 0) {
            previous = 0;
            forgetWhatIsMissing(before);
        }
        // Kept on purpose: the maximum has the last word, also over a minimum above it
        // (cacheFile.changeIntItem_maximumBelowMinimum_wins).
        const std::int64_t sum = std::max<std::int64_t>(std::int64_t{previous} + delta, minimum);
        const int value = static_cast<int>(std::min<std::int64_t>(sum, maximum));
        return AddItem(topic, item, value, encodeTopic);
    });
}

// `text` holds kItemStringSize characters.
bool TCacheFile::readItemString(const char* topic, const char* item, int encodeTopic, char* text) const {
    if (topic == nullptr || item == nullptr)
        return false;
    return guarded(false, [&] {
        return rdb_search_string(database.get(), storedForm(topic, encodeTopic).c_str(), item, text,
                                 kItemStringSize) != 0;
    });
}

int TCacheFile::Search(const char* topic, const char* item, int* value, int index, int encodeTopic, int) {
    char text[kItemStringSize];
    if (value == nullptr || !readItemString(topic, item, encodeTopic, text))
        return kFailed;
    return str_int_from_itemstr(text, index, value);
}

int TCacheFile::Search(const char* topic, const char* item, double* value, int index, int encodeTopic, int) {
    char text[kItemStringSize];
    if (value == nullptr || !readItemString(topic, item, encodeTopic, text))
        return kFailed;
    return str_double_from_itemstr(text, index, value);
}

int TCacheFile::Search(const char* topic, const char* item, char* buffer, int size, int encodeTopic,
                       int decodeValue) {
    if (topic == nullptr || item == nullptr || buffer == nullptr || size <= 0)
        return kFailed;
    return guarded(kFailed, [&] {
        const char* value = nullptr;
        if (rdb_search(database.get(), storedForm(topic, encodeTopic).c_str(), item, &value) == 0)
            return kFailed;
        // Kept on purpose: cut off first, then decoded, also in the middle of an escape
        // (cacheFile.searchText_isCutOffBeforeItIsDecoded).
        const std::string text(value, std::min(std::strlen(value), static_cast<std::size_t>(size) - 1));
        if (decodeValue != 0)
            TCMS_DecodeIllegalCharacters(text.c_str(), buffer);
        else
            std::memcpy(buffer, text.c_str(), text.size() + 1);
        return 0;
    });
}

void TCacheFile::ScanTopicsInit() {
    topicPosition = 0;
}

const char* TCacheFile::ScanTopics(const char* filter, int restart) {
    if (restart != 0)
        ScanTopicsInit();
    const int before = rdb_err;
    while (const char* const topic = rdb_posat_topic(database.get(), file, topicPosition)) {
        ++topicPosition;
        if (strcmp_ci(topic, kInternalTopic) == 0)
            continue;
        if (filter == nullptr)
            return topic;
        // Kept on purpose: found anywhere, but taken off the front
        // (cacheFile.scanTopics_filterInside_cutsItsLengthOffTheFront).
        if (std::strstr(topic, filter) != nullptr)
            return topic + std::strlen(filter);
    }
    forgetWhatIsMissing(before);
    return nullptr;
}

void TCacheFile::ScanItemsInit() {
    itemPosition = 0;
}

const char* TCacheFile::ScanItems(const char* topic, const char** value, int restart) {
    if (restart != 0)
        ScanItemsInit();
    if (value != nullptr)
        *value = nullptr;
    if (topic == nullptr)
        return nullptr;
    const int before = rdb_err;
    const char* const item = rdb_posat_item(database.get(), topic, itemPosition);
    if (item == nullptr) {
        forgetWhatIsMissing(before);
        return nullptr;
    }
    ++itemPosition;
    if (value != nullptr && rdb_search(database.get(), topic, item, value) == 0) {
        *value = nullptr;
        SetErrMsg(kNoValue, item, &qxcms_rdb_err);
    }
    return item;
}

int TCacheFile::CopyTopic(const TCacheFile& other, const char* topic) {
    if (topic == nullptr)
        return kFailed;
    return guarded(kFailed, [&] {
        const int before = rdb_err;
        rdb_db* const source = other.database.get();
        if (rdb_search_topic(source, topic) == 0)
            return kFailed;
        if (rdb_search_topic(database.get(), topic) == 0 && addTopic(topic, topic) != 0)
            return kFailed;
        for (int n = 0; const char* const item = rdb_posat_item(source, topic, n); ++n) {
            const char* value = nullptr;
            if (rdb_search(source, topic, item, &value) == 0) {
                SetErrMsg(kNoValue, item, &qxcms_rdb_err);
                return kFailed;
            }
            if (store(topic, topic, item, value) != 0)
                return kFailed;
        }
        forgetWhatIsMissing(before);
        return 0;
    });
}

int TCacheFile::InitSave() {
    return 0;
}

int TCacheFile::Save() {
    // Kept on purpose: nobody is told but the caller, who finds the cause in rdb_err
    // (cacheFileFaults.flushThatFails_isMinusOneInSilence).
    return rdb_flush(database.get()) != 0 ? 0 : kFailed;
}

bool TCacheFile::operator==(const TCacheFile& other) const noexcept {
    if (fileName == nullptr || other.fileName == nullptr)
        return fileName == other.fileName;
    return std::strcmp(fileName.get(), other.fileName.get()) == 0;
}
