#include "platform/resource_database.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/guarded.h"
#include "base/number_text.h"
#include "platform/default/resource_content.h"
#include "platform/default/resource_store.h"

int rdb_err = 0;

struct rdb_file {
    /// Absolute, so that a change of the current folder does not matter.
    std::string path;
    qxcms::detail::ResourceContent content;
};

struct rdb_db {
    std::vector<std::unique_ptr<rdb_file>> files;
};

namespace {

using qxcms::detail::guarded;
using qxcms::detail::ResourceItem;
using qxcms::detail::ResourceTopic;

/// The values of rdb_err.
enum Failure {
    kNoPath = 1,
    kNotOpened = 2,
    kNoEntries = 3,
    kNoDatabase = 4,
    kNoFiles = 5,
    kNoFile = 6,
    kTopicNotAdded = 7,
    kItemNotAdded = 8,
    kTopicNotCreated = 9,
    kItemNotCreated = 10,
    kItemNotAppended = 11,
    kNotFlushed = 12,
    kEndOfTopics = 13,
    kEndOfItems = 14,
    kTopicNotFound = 15,
    kItemNotFound = 17,
    kDestinationTooShort = 18,
    kRemovedTopicNotFound = 19,
    kNotRemoved = 20
};

/// Notes a failure. @return 0.
int failed(Failure failure) {
    rdb_err = failure;
    return 0;
}

std::nullptr_t nothing(Failure failure) {
    rdb_err = failure;
    return nullptr;
}

const char* textOrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

bool hasFiles(const rdb_db* db) {
    if (db == nullptr)
        return failed(kNoDatabase) != 0;
    if (db->files.empty())
        return failed(kNoFiles) != 0;
    return true;
}

bool hasFile(const rdb_db* db, const rdb_file* file) {
    if (!hasFiles(db))
        return false;
    const bool belongs = std::any_of(db->files.begin(), db->files.end(),
                                     [&](const auto& candidate) { return candidate.get() == file; });
    return belongs || failed(kNoFile) != 0;
}

/// The topic, in the file that came last of those that have it; null when there is none.
ResourceTopic* topicOf(rdb_db* db, const char* topic) {
    if (!hasFiles(db))
        return nullptr;
    if (topic != nullptr)
        for (auto file = db->files.rbegin(); file != db->files.rend(); ++file)
            if (ResourceTopic* const found = (*file)->content.topics.find(topic))
                return found;
    return nothing(kTopicNotFound);
}

struct Place {
    ResourceTopic* topic = nullptr;
    ResourceItem* item = nullptr;
};

/// The item with its topic; both null when there is none.
Place placeOf(rdb_db* db, const char* topic, const char* item) {
    ResourceTopic* const found = topicOf(db, topic);
    if (found == nullptr)
        return {};
    ResourceItem* const foundItem = item != nullptr ? found->items.find(item) : nullptr;
    if (foundItem == nullptr) {
        failed(kItemNotFound);
        return {};
    }
    return {found, foundItem};
}

/// The name of the n-th element.
template <class Elements>
const char* nameAt(const Elements& elements, int n, Failure pastTheEnd) {
    const auto& inOrder = elements.inOrder();
    if (inOrder.empty())
        return nothing(kNoEntries);
    if (n < 0 || static_cast<std::size_t>(n) >= inOrder.size())
        return nothing(pastTheEnd);
    return inOrder[static_cast<std::size_t>(n)]->name.c_str();
}

/// Makes a file the last of a database. @param create a new one.
rdb_file* take(rdb_db* db, const char* path, bool create) {
    if (db == nullptr)
        return nothing(kNoDatabase);
    if (path == nullptr || path[0] == '\0')
        return nothing(kNoPath);
    rdb_file* const taken = guarded<rdb_file*>(nullptr, [&]() -> rdb_file* {
        auto file = std::make_unique<rdb_file>();
        file->path = std::filesystem::absolute(path).string();
        // The place is there before the file is.
        db->files.reserve(db->files.size() + 1);
        std::optional<qxcms::detail::ResourceContent> content =
            create ? qxcms::detail::createResourceFile(file->path)
                   : qxcms::detail::readResourceFile(file->path);
        if (!content)
            return nullptr;
        file->content = std::move(*content);
        db->files.push_back(std::move(file));
        return db->files.back().get();
    });
    return taken != nullptr ? taken : nothing(kNotOpened);
}

/// A new topic or item; null when there is no memory.
std::unique_ptr<ResourceTopic> newTopic(const char* name, const char* text) {
    return guarded(std::unique_ptr<ResourceTopic>(), [&] {
        auto topic = std::make_unique<ResourceTopic>();
        topic->name = name;
        topic->text = textOrEmpty(text);
        topic->changed = true;
        return topic;
    });
}

std::unique_ptr<ResourceItem> newItem(const char* name, const char* value, const char* text) {
    return guarded(std::unique_ptr<ResourceItem>(), [&] {
        auto item = std::make_unique<ResourceItem>();
        item->name = name;
        item->value = value;
        item->text = textOrEmpty(text);
        item->changed = true;
        return item;
    });
}

/// Runs what may find no memory. @return 1, or 0.
template <class Function>
int attempt(Failure failure, const Function& f) {
    const bool done = guarded(false, [&] {
        f();
        return true;
    });
    return done ? 1 : failed(failure);
}

bool hasChanges(const rdb_file& file) {
    const auto& topics = file.content.topics.inOrder();
    return !file.content.removed.empty() ||
           std::any_of(topics.begin(), topics.end(), [](const auto& topic) { return topic->changed; });
}

} // namespace

rdb_db* rdb_open(void) {
    rdb_db* const opened = guarded<rdb_db*>(nullptr, [] { return new rdb_db; });
    return opened != nullptr ? opened : nothing(kNoDatabase);
}

rdb_file* rdb_push_rfile(rdb_db* db, const char* path) {
    return take(db, path, false);
}

rdb_file* rdb_create_rfile(rdb_db* db, const char* path) {
    return take(db, path, true);
}

int rdb_search_topic(rdb_db* db, const char* topic) {
    return topicOf(db, topic) != nullptr ? 1 : 0;
}

int rdb_add_topic(rdb_db* db, rdb_file* file, const char* topic, const char* text) {
    if (!hasFile(db, file))
        return 0;
    if (topic == nullptr || file->content.topics.find(topic) != nullptr)
        return failed(kTopicNotAdded);
    std::unique_ptr<ResourceTopic> added = newTopic(topic, text);
    if (added == nullptr)
        return failed(kTopicNotCreated);
    return attempt(kTopicNotAdded, [&] { file->content.topics.append(std::move(added)); });
}

int rdb_remove_topic(rdb_db* db, rdb_file* file, const char* topic) {
    if (!hasFile(db, file))
        return 0;
    const ResourceTopic* const removed = topic != nullptr ? file->content.topics.find(topic) : nullptr;
    if (removed == nullptr)
        return failed(kRemovedTopicNotFound);
    return attempt(kNotRemoved, [&] {
        if (removed->stored)
            file->content.removed.insert(removed->name);
        file->content.topics.remove(*removed);
    });
}

int rdb_search(rdb_db* db, const char* topic, const char* item, const char** value) {
    const ResourceItem* const found = placeOf(db, topic, item).item;
    if (found == nullptr)
        return 0;
    if (value != nullptr)
        *value = found->value.c_str();
    return 1;
}

int rdb_search_string(rdb_db* db, const char* topic, const char* item, char* buffer, int size) {
    const ResourceItem* const found = placeOf(db, topic, item).item;
    if (found == nullptr)
        return 0;
    if (buffer == nullptr || size < 1)
        return failed(kDestinationTooShort);
    const std::size_t length = std::strlen(found->value.c_str());
    const std::size_t copied = std::min(length, static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, found->value.c_str(), copied);
    buffer[copied] = '\0';
    return copied == length ? 1 : failed(kDestinationTooShort);
}

int rdb_search_int(rdb_db* db, const char* topic, const char* item, int* value) {
    const ResourceItem* const found = placeOf(db, topic, item).item;
    if (found == nullptr)
        return 0;
    if (value != nullptr)
        *value = qxcms::detail::textToInt(found->value.c_str());
    return 1;
}

int rdb_add_item(rdb_db* db, const char* topic, const char* item, const char* value, const char* text) {
    ResourceTopic* const found = topicOf(db, topic);
    if (found == nullptr)
        return 0;
    if (item == nullptr || value == nullptr || found->items.find(item) != nullptr)
        return failed(kItemNotAdded);
    std::unique_ptr<ResourceItem> added = newItem(item, value, text);
    if (added == nullptr)
        return failed(kItemNotCreated);
    return attempt(kItemNotAppended, [&] {
        found->items.append(std::move(added));
        found->changed = true;
    });
}

int rdb_modify(rdb_db* db, const char* topic, const char* item, const char* value) {
    const Place place = placeOf(db, topic, item);
    if (place.item == nullptr)
        return 0;
    if (value == nullptr)
        return failed(kItemNotAdded);
    return attempt(kItemNotAdded, [&] {
        // The new value may be, or be part of, the old one.
        std::string replacement = value;
        place.item->value = std::move(replacement);
        place.item->changed = true;
        place.topic->changed = true;
    });
}

const char* rdb_posat_topic(rdb_db* db, rdb_file* file, int n) {
    return hasFile(db, file) ? nameAt(file->content.topics, n, kEndOfTopics) : nullptr;
}

const char* rdb_posat_item(rdb_db* db, const char* topic, int n) {
    const ResourceTopic* const found = topicOf(db, topic);
    return found != nullptr ? nameAt(found->items, n, kEndOfItems) : nullptr;
}

int rdb_flush(rdb_db* db) {
    if (!hasFiles(db))
        return 0;
    int written = 1;
    for (const auto& file : db->files)
        if (hasChanges(*file) && !qxcms::detail::writeResourceFile(file->path, file->content))
            written = failed(kNotFlushed);
    return written;
}

void rdb_close(rdb_db* db) {
    delete db;
}
