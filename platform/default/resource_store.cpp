#include "platform/default/resource_store.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/random.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "base/guarded.h"

namespace qxcms::detail {
namespace {

namespace fs = std::filesystem;

/// What marks a resource file in its header: "QXRF", and the version of the tables.
constexpr int kApplication = 0x51585246;
constexpr int kVersion = 1;

/// How long one lock of another process is waited for, in milliseconds.
constexpr int kLongestWait = 2000;

/// The tables of version 1. They stand in the file letter by letter, and a file with others is refused.
constexpr char kTopicTable[] =
    "CREATE TABLE topic (id INTEGER PRIMARY KEY, name BLOB NOT NULL UNIQUE, text BLOB NOT NULL) STRICT";
constexpr char kItemTable[] =
    "CREATE TABLE item (id INTEGER PRIMARY KEY, topic INTEGER NOT NULL REFERENCES topic (id), "
    "name BLOB NOT NULL, value BLOB NOT NULL, text BLOB NOT NULL, UNIQUE (topic, name)) STRICT";
constexpr char kRevisionTable[] = "CREATE TABLE revision (value BLOB NOT NULL) STRICT";
constexpr const char* kTables[] = {kTopicTable, kItemTable, kRevisionTable};

constexpr char kHexDigits[] = "0123456789abcdef";

void demand(bool holds) {
    if (!holds)
        throw std::runtime_error("resource file");
}

/// Bytes that are not those of any other process; SQLite's own repeat themselves in a forked one.
std::string randomBytes() {
    std::string bytes(16, '\0');
    demand(getrandom(bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    return bytes;
}

/// Two digits for each byte.
std::string hexadecimal(const std::string& bytes) {
    std::string digits;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        digits += {kHexDigits[byte >> 4], kHexDigits[byte & 15]};
    }
    return digits;
}

struct Closing {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Connection = std::unique_ptr<sqlite3, Closing>;

/// Opens a database that exists. What its tables might bring along (triggers, views) is not run.
Connection connectTo(const std::string& path, int flags) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
    Connection connection(opened);
    demand(result == SQLITE_OK);
    for (const int setting :
         {SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_TRUSTED_SCHEMA})
        demand(sqlite3_db_config(opened, setting, 0, nullptr) == SQLITE_OK);
    demand(sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr) == SQLITE_OK);
    demand(sqlite3_busy_timeout(opened, kLongestWait) == SQLITE_OK);
    return connection;
}

/// A prepared statement. Names and values reach the database by being bound, never as part of a statement.
class Statement {
public:
    Statement(sqlite3* database, const char* sql) : connection(database) {
        sqlite3_stmt* prepared = nullptr;
        const int result = sqlite3_prepare_v2(database, sql, -1, &prepared, nullptr);
        statement.reset(prepared);
        demand(result == SQLITE_OK);
    }

    /// Binds a text, which must live until the statement was run. @param place counted from 1.
    Statement& bind(int place, const std::string& bytes) {
        demand(sqlite3_bind_blob64(statement.get(), place, bytes.data(), bytes.size(), SQLITE_STATIC) ==
               SQLITE_OK);
        return *this;
    }

    /// Goes to the next row. @return false when there is none.
    bool next() {
        const int result = sqlite3_step(statement.get());
        demand(result == SQLITE_ROW || result == SQLITE_DONE);
        return result == SQLITE_ROW;
    }

    /// Runs a statement that gives no rows, and makes it ready for the next run.
    void run() {
        demand(!next());
        demand(sqlite3_reset(statement.get()) == SQLITE_OK);
    }

    std::int64_t integer(int column) { return sqlite3_column_int64(statement.get(), column); }
    std::string bytes(int column) {
        const void* const data = sqlite3_column_blob(statement.get(), column);
        const int size = sqlite3_column_bytes(statement.get(), column);
        // Empty ones have no address, and neither has one that there is no memory for.
        demand(data != nullptr || sqlite3_errcode(connection) != SQLITE_NOMEM);
        return data != nullptr ? std::string(static_cast<const char*>(data), static_cast<std::size_t>(size))
                               : std::string();
    }

private:
    sqlite3* connection;
    std::unique_ptr<sqlite3_stmt, Closing> statement;
};

void run(sqlite3* connection, const char* sql) {
    Statement(connection, sql).run();
}

std::int64_t askForInteger(sqlite3* connection, const char* sql) {
    Statement question(connection, sql);
    demand(question.next());
    return question.integer(0);
}

std::string askForBytes(sqlite3* connection, const char* sql) {
    Statement question(connection, sql);
    demand(question.next());
    return question.bytes(0);
}

/// Everything until the commit is undone when it does not come to that.
class Transaction {
public:
    Transaction(sqlite3* database, const char* beginning) : connection(database) { run(database, beginning); }
    ~Transaction() {
        if (sqlite3_get_autocommit(connection) == 0)
            sqlite3_exec(connection, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit() { run(connection, "COMMIT"); }

private:
    sqlite3* connection;
};

/// The file as it stands on the disk, whoever writes to it: no locks, no recovery of interrupted writing.
std::string uriOfUntouched(const std::string& path) {
    std::string uri = "file://";
    for (const char c : path)
        uri += c == '/' ? "/" : '%' + hexadecimal(std::string(1, c));
    return uri + "?immutable=1";
}

/// Refuses what is no resource file, before anything is done that might change it.
void demandMarks(const std::string& path) {
    demand(fs::is_regular_file(path));
    const Connection connection = connectTo(uriOfUntouched(path), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    demand(askForInteger(connection.get(), "PRAGMA application_id") == kApplication);
    demand(askForInteger(connection.get(), "PRAGMA user_version") == kVersion);
}

void demandTables(sqlite3* connection) {
    Statement tables(connection, "SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL ORDER BY rowid");
    for (const char* const expected : kTables)
        demand(tables.next() && tables.bytes(0) == expected);
    demand(!tables.next());
}

/// Opens a resource file, for reading alone where it cannot be written. An interrupted writing is undone.
Connection openResourceFile(const std::string& path) {
    demandMarks(path);
    return connectTo(path, SQLITE_OPEN_READWRITE);
}

constexpr char kAskForRevision[] = "SELECT value FROM revision";

ResourceContent contentOf(sqlite3* connection) {
    ResourceContent content;
    content.revision = askForBytes(connection, kAskForRevision);
    std::unordered_map<std::int64_t, ResourceTopic*> byNumber;
    Statement topics(connection, "SELECT id, name, text FROM topic ORDER BY id");
    while (topics.next()) {
        auto topic = std::make_unique<ResourceTopic>();
        topic->name = topics.bytes(1);
        topic->text = topics.bytes(2);
        topic->stored = true;
        byNumber.emplace(topics.integer(0), topic.get());
        content.topics.append(std::move(topic));
    }
    Statement items(connection, "SELECT topic, name, value, text FROM item ORDER BY id");
    while (items.next()) {
        const auto topic = byNumber.find(items.integer(0));
        demand(topic != byNumber.end());
        auto item = std::make_unique<ResourceItem>();
        item->name = items.bytes(1);
        item->value = items.bytes(2);
        item->text = items.bytes(3);
        topic->second->items.append(std::move(item));
    }
    return content;
}

void removeTopics(sqlite3* connection, const ResourceContent& content) {
    Statement items(connection, "DELETE FROM item WHERE topic = (SELECT id FROM topic WHERE name = ?1)");
    Statement topics(connection, "DELETE FROM topic WHERE name = ?1");
    for (const std::string& name : content.removed) {
        items.bind(1, name).run();
        topics.bind(1, name).run();
    }
}

void writeTopics(sqlite3* connection, const ResourceContent& content) {
    // Whatever others have done meanwhile: the topic is there, and the items are as they are here.
    Statement topics(connection,
                     "INSERT INTO topic (name, text) VALUES (?1, ?2) ON CONFLICT (name) DO NOTHING");
    Statement items(
        connection,
        "INSERT INTO item (topic, name, value, text) SELECT id, ?2, ?3, ?4 FROM topic WHERE name = ?1 "
        "ON CONFLICT (topic, name) DO UPDATE SET value = excluded.value, text = excluded.text");
    for (const auto& topic : content.topics.inOrder()) {
        if (!topic->changed)
            continue;
        topics.bind(1, topic->name).bind(2, topic->text).run();
        for (const auto& item : topic->items.inOrder())
            if (item->changed)
                items.bind(1, topic->name).bind(2, item->name).bind(3, item->value).bind(4, item->text).run();
    }
}

/// The content is now that of the file.
void forgetChanges(ResourceContent& content, std::string revision) noexcept {
    content.removed.clear();
    content.revision = std::move(revision);
    for (const auto& topic : content.topics.inOrder()) {
        if (!topic->changed)
            continue;
        topic->stored = true;
        topic->changed = false;
        for (const auto& item : topic->items.inOrder())
            item->changed = false;
    }
}

void write(const std::string& path, ResourceContent& content) {
    const Connection connection = openResourceFile(path);
    run(connection.get(), "PRAGMA synchronous = FULL");
    Transaction writing(connection.get(), "BEGIN IMMEDIATE");
    demandTables(connection.get());
    const bool othersWrote = askForBytes(connection.get(), kAskForRevision) != content.revision;
    removeTopics(connection.get(), content);
    writeTopics(connection.get(), content);
    // What takes memory comes before the commit.
    std::string revision = randomBytes();
    Statement(connection.get(), "UPDATE revision SET value = ?1").bind(1, revision).run();
    std::optional<ResourceContent> renewed;
    if (othersWrote)
        renewed = contentOf(connection.get());
    writing.commit();
    if (renewed)
        content = std::move(*renewed);
    else
        forgetChanges(content, std::move(revision));
}

/// A new file of a name that nobody else has, gone with this.
class TemporaryFile {
public:
    explicit TemporaryFile(const fs::path& folder) {
        path = folder / (".qxcms-" + hexadecimal(randomBytes()) + ".tmp");
        const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        demand(descriptor >= 0);
        close(descriptor);
    }
    ~TemporaryFile() { unlink(path.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    std::string path;
};

ResourceContent writeEmptyContent(const std::string& path) {
    const Connection connection = connectTo(path, SQLITE_OPEN_READWRITE);
    Transaction writing(connection.get(), "BEGIN IMMEDIATE");
    run(connection.get(), ("PRAGMA application_id = " + std::to_string(kApplication)).c_str());
    run(connection.get(), ("PRAGMA user_version = " + std::to_string(kVersion)).c_str());
    for (const char* const table : kTables)
        run(connection.get(), table);
    const std::string revision = randomBytes();
    Statement(connection.get(), "INSERT INTO revision VALUES (?1)").bind(1, revision).run();
    ResourceContent content = contentOf(connection.get());
    writing.commit();
    return content;
}

ResourceContent create(const std::string& path) {
    demand(!fs::exists(fs::symlink_status(path)));
    // The file is whole before it has its name, and the name is not taken from another.
    const TemporaryFile file(fs::path(path).parent_path());
    ResourceContent content = writeEmptyContent(file.path);
    // What an interrupted writing has left of a file that is gone would be taken for this one's.
    unlink((path + "-journal").c_str());
    demand(link(file.path.c_str(), path.c_str()) == 0);
    return content;
}

} // namespace

std::optional<ResourceContent> createResourceFile(const std::string& path) noexcept {
    return guarded(std::optional<ResourceContent>(), [&] { return std::optional(create(path)); });
}

std::optional<ResourceContent> readResourceFile(const std::string& path) noexcept {
    return guarded(std::optional<ResourceContent>(), [&] {
        const Connection connection = openResourceFile(path);
        const Transaction reading(connection.get(), "BEGIN");
        demandTables(connection.get());
        return std::optional(contentOf(connection.get()));
    });
}

bool writeResourceFile(const std::string& path, ResourceContent& content) noexcept {
    return guarded(false, [&] {
        write(path, content);
        return true;
    });
}

} // namespace qxcms::detail
