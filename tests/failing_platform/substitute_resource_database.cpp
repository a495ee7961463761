#include "tests/failing_platform/substitute_resource_database.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "platform/resource_database.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"

struct rdb_file {
    std::string path;
};

struct rdb_db {
    rdb_file file;
    bool hasFile = false;
    std::vector<std::unique_ptr<std::string>> handedOut;
};

namespace qxcms::tests {
namespace {

using Items = SubstituteDatabase::Items;
using Topics = SubstituteDatabase::Topics;

int failed(int code) {
    rdb_err = code;
    return 0;
}

std::nullptr_t nothing(int code) {
    rdb_err = code;
    return nullptr;
}

template <class Pairs>
auto findIn(Pairs& pairs, const char* name) {
    return std::find_if(pairs.begin(), pairs.end(), [&](const auto& pair) { return pair.first == name; });
}

Topics* topicsOf(rdb_db* db) {
    if (db == nullptr)
        return nothing(4);
    return db->hasFile ? &database().files.at(db->file.path) : nothing(5);
}

Items* itemsOf(rdb_db* db, const char* topic) {
    Topics* const topics = topicsOf(db);
    if (topics == nullptr)
        return nullptr;
    const auto found = findIn(*topics, topic);
    return found != topics->end() ? &found->second : nothing(15);
}

std::string* valueOf(rdb_db* db, const char* topic, const char* item) {
    Items* const items = itemsOf(db, topic);
    if (items == nullptr)
        return nullptr;
    const auto found = findIn(*items, item);
    return found != items->end() && database().hiddenItem != item ? &found->second : nothing(17);
}

// A text of its own, so that looking beyond its life finds rubbish.
const char* handOut(rdb_db* db, const std::string& text) {
    db->handedOut.push_back(std::make_unique<std::string>(text));
    return db->handedOut.back()->c_str();
}

void spoilWhatWasHandedOut(rdb_db* db) {
    if (db == nullptr)
        return;
    for (const auto& text : db->handedOut)
        std::fill(text->begin(), text->end(), '#');
}

template <class Pairs>
const char* nameAt(rdb_db* db, const Pairs* pairs, int n, int pastTheEnd) {
    if (pairs == nullptr)
        return nullptr;
    const auto index = static_cast<std::size_t>(n);
    return index < pairs->size() ? handOut(db, (*pairs)[index].first) : nothing(pastTheEnd);
}

rdb_file* take(rdb_db* db, const char* path) {
    database().files[path]; // there from now on
    db->file.path = path;
    db->hasFile = true;
    return &db->file;
}

} // namespace

SubstituteDatabase& database() {
    static SubstituteDatabase instance;
    return instance;
}

void OnSubstituteDatabase::SetUp() {
    platform() = SubstitutePlatform();
    database() = SubstituteDatabase();
    rdb_err = 0;
}

void OnSubstituteDatabase::TearDown() {
    EXPECT_EQ(database().inUse, 0);
}

} // namespace qxcms::tests

using qxcms::tests::AllocationTruce;
using qxcms::tests::database;
using qxcms::tests::failed;
using qxcms::tests::nothing;

extern "C" {

rdb_db* rdb_open(void) {
    const AllocationTruce truce;
    if (database().refusesToOpen)
        return nullptr;
    ++database().inUse;
    return new rdb_db;
}

rdb_file* rdb_push_rfile(rdb_db* db, const char* path) {
    const AllocationTruce truce;
    database().paths.push_back(std::string("push ") + path);
    const bool found = database().files.count(path) == 1 && !database().refusesToPush;
    return found ? qxcms::tests::take(db, path) : nothing(2);
}

rdb_file* rdb_create_rfile(rdb_db* db, const char* path) {
    const AllocationTruce truce;
    database().paths.push_back(std::string("create ") + path);
    return database().refusesToCreate ? nothing(2) : qxcms::tests::take(db, path);
}

int rdb_search_topic(rdb_db* db, const char* topic) {
    return qxcms::tests::itemsOf(db, topic) != nullptr ? 1 : 0;
}

int rdb_add_topic(rdb_db* db, rdb_file* file, const char* topic, const char*) {
    const AllocationTruce truce;
    qxcms::tests::spoilWhatWasHandedOut(db);
    if (db == nullptr)
        return failed(4);
    if (file == nullptr)
        return failed(6);
    auto* const topics = qxcms::tests::topicsOf(db);
    if (database().refusesTopics || qxcms::tests::findIn(*topics, topic) != topics->end())
        return failed(7);
    topics->push_back({topic, {}});
    return 1;
}

int rdb_remove_topic(rdb_db* db, rdb_file* file, const char* topic) {
    const AllocationTruce truce;
    qxcms::tests::spoilWhatWasHandedOut(db);
    if (db == nullptr)
        return failed(4);
    if (file == nullptr)
        return failed(6);
    auto* const topics = qxcms::tests::topicsOf(db);
    const auto found = qxcms::tests::findIn(*topics, topic);
    if (found == topics->end())
        return failed(19);
    if (database().refusesRemoval)
        return failed(20);
    topics->erase(found);
    return 1;
}

int rdb_search(rdb_db* db, const char* topic, const char* item, const char** value) {
    const AllocationTruce truce;
    const std::string* const found = qxcms::tests::valueOf(db, topic, item);
    if (found == nullptr)
        return 0;
    *value = qxcms::tests::handOut(db, *found);
    return 1;
}

int rdb_search_string(rdb_db* db, const char* topic, const char* item, char* buffer, int size) {
    const AllocationTruce truce;
    database().stringSizes.push_back(size);
    const std::string* const found = qxcms::tests::valueOf(db, topic, item);
    if (found == nullptr)
        return 0;
    if (found->size() >= static_cast<std::size_t>(size))
        return failed(18);
    std::strcpy(buffer, found->c_str());
    return 1;
}

int rdb_search_int(rdb_db* db, const char* topic, const char* item, int* value) {
    const std::string* const found = qxcms::tests::valueOf(db, topic, item);
    if (found == nullptr)
        return 0;
    *value = std::atoi(found->c_str());
    return 1;
}

int rdb_add_item(rdb_db* db, const char* topic, const char* item, const char* value, const char*) {
    const AllocationTruce truce;
    qxcms::tests::spoilWhatWasHandedOut(db);
    auto* const items = qxcms::tests::itemsOf(db, topic);
    if (items == nullptr)
        return 0;
    if (database().refusesItems)
        return failed(8);
    items->emplace_back(item, value);
    return 1;
}

int rdb_modify(rdb_db* db, const char* topic, const char* item, const char* value) {
    const AllocationTruce truce;
    std::string* const found = qxcms::tests::valueOf(db, topic, item);
    if (found == nullptr)
        return 0;
    if (database().refusesChanges)
        return failed(8);
    *found = value;
    qxcms::tests::spoilWhatWasHandedOut(db);
    return 1;
}

const char* rdb_posat_topic(rdb_db* db, rdb_file*, int n) {
    const AllocationTruce truce;
    return qxcms::tests::nameAt(db, qxcms::tests::topicsOf(db), n, 13);
}

const char* rdb_posat_item(rdb_db* db, const char* topic, int n) {
    const AllocationTruce truce;
    return qxcms::tests::nameAt(db, qxcms::tests::itemsOf(db, topic), n, 14);
}

int rdb_flush(rdb_db* db) {
    qxcms::tests::spoilWhatWasHandedOut(db);
    if (qxcms::tests::topicsOf(db) == nullptr)
        return 0;
    return database().refusesToFlush ? failed(12) : 1;
}

void rdb_close(rdb_db* db) {
    const AllocationTruce truce;
    if (db == nullptr)
        return;
    --database().inUse;
    delete db;
}

} // extern "C"
