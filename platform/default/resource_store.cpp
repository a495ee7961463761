#include "platform/default/resource_store.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/random.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <unordered_map>
#include <utility>

#include "base/guarded.h"

namespace qxcms::detail {
namespace {

namespace fs = std::filesystem;

/// What marks a resource file in its header: "QXRF", and the version of the tables.
constexpr std::uint32_t kApplication = 0x51585246;
constexpr std::uint32_t kVersion = 1;

/// How long others are waited for, by one operation on one file, and after how long they are asked again.
constexpr std::chrono::milliseconds kLongestWait(2000);
constexpr std::chrono::milliseconds kPause(2);

/// The longest path that SQLite takes, so that that of the journal fits too.
constexpr std::size_t kLongestPath = 504;

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

/// Bytes that are not those of any other process. SQLite's own repeat themselves in one that was forked and
/// has opened no database yet.
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

/// A database that exists, opened. What its tables might bring along (triggers, views) is not run: files with
/// such are refused, but not before SQLite has read their schema. Waits for others, all waits together no
/// longer than kLongestWait.
class Connection {
public:
    Connection(const std::string& path, int flags) {
        sqlite3* opened = nullptr;
        const int result = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
        database.reset(opened);
        demand(result == SQLITE_OK);
        for (const int setting :
             {SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_TRUSTED_SCHEMA})
            demand(sqlite3_db_config(opened, setting, 0, nullptr) == SQLITE_OK);
        demand(sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr) == SQLITE_OK);
        demand(sqlite3_busy_handler(opened, &Connection::wait, this) == SQLITE_OK);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    sqlite3* get() const { return database.get(); }

private:
    /// @return 0 when the time is over.
    static int wait(void* connection, int) {
        if (std::chrono::steady_clock::now() >= static_cast<const Connection*>(connection)->deadline)
            return 0;
        std::this_thread::sleep_for(kPause);
        return 1;
    }

    std::chrono::steady_clock::time_point deadline = std::chrono::steady_clock::now() + kLongestWait;
    std::unique_ptr<sqlite3, Closing> database;
};

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

/// The first bytes of a file, as the format of SQLite lays them out.
class Header {
public:
    /// Read through a file of SQLite: closing another descriptor would end the locks that this process has.
    explicit Header(sqlite3* connection) {
        sqlite3_file* file = nullptr;
        demand(sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file) == SQLITE_OK);
        demand(file->pMethods->xRead(file, bytes, sizeof bytes, 0) == SQLITE_OK);
    }

    bool isOfADatabase() const { return std::equal(std::begin(kMagic), std::end(kMagic), bytes); }
    /// False for a write-ahead log, which would stand in two more files.
    bool hasRollbackJournal() const { return bytes[18] == 1 && bytes[19] == 1; }
    std::uint32_t version() const { return number(60); }
    std::uint32_t application() const { return number(68); }

private:
    static constexpr char kMagic[] = "SQLite format 3";

    std::uint32_t number(std::size_t place) const {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value = value << 8 | bytes[place + i];
        return value;
    }

    unsigned char bytes[72];
};

/// Refuses what is no resource file, before anything is done that might change it. The marks are looked up in
/// the bytes: SQLite takes a file for damaged while it grows, or where that was interrupted.
void demandMarks(const std::string& path) {
    demand(fs::is_regular_file(path));
    const Connection untouched(uriOfUntouched(path), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    const Header header(untouched.get());
    demand(header.isOfADatabase() && header.hasRollbackJournal() && header.application() == kApplication &&
           header.version() == kVersion);
}

/// What SQLite keeps beside the tables (the statistics of ANALYZE) does no harm.
void demandTables(sqlite3* connection) {
    Statement tables(connection, "SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL AND name NOT GLOB "
                                 "'sqlite_*' ORDER BY rowid");
    for (const char* const expected : kTables)
        demand(tables.next() && tables.bytes(0) == expected);
    demand(!tables.next());
}

/// Opens a resource file, for reading alone where it cannot be written. An interrupted writing is undone.
Connection openResourceFile(const std::string& path) {
    demandMarks(path);
    return Connection(path, SQLITE_OPEN_READWRITE);
}

/// A name, value or remark. They are handed out as texts with a terminator, and so they hold none.
std::string textOf(Statement& row, int column) {
    std::string text = row.bytes(column);
    demand(text.find('\0') == std::string::npos);
    return text;
}

constexpr char kAskForRevision[] = "SELECT value FROM revision";

ResourceContent contentOf(sqlite3* connection) {
    ResourceContent content;
    content.revision = askForBytes(connection, kAskForRevision);
    std::unordered_map<std::int64_t, ResourceTopic*> byNumber;
    Statement topics(connection, "SELECT id, name, text FROM topic ORDER BY id");
    while (topics.next()) {
        auto topic = std::make_unique<ResourceTopic>();
        topic->name = textOf(topics, 1);
        topic->text = textOf(topics, 2);
        topic->stored = true;
        byNumber.emplace(topics.integer(0), topic.get());
        content.topics.append(std::move(topic));
    }
    Statement items(connection, "SELECT topic, name, value, text FROM item ORDER BY id");
    while (items.next()) {
        const auto topic = byNumber.find(items.integer(0));
        demand(topic != byNumber.end());
        auto item = std::make_unique<ResourceItem>();
        item->name = textOf(items, 1);
        item->value = textOf(items, 2);
        item->text = textOf(items, 3);
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
    // The folder too, when the journal is gone: a power cut would bring it back.
    run(connection.get(), "PRAGMA synchronous = EXTRA");
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

/// A descriptor of a file or folder; below 0 when it cannot be opened.
class Descriptor {
public:
    Descriptor(const std::string& path, int flags) : number(open(path.c_str(), flags | O_CLOEXEC)) {}
    ~Descriptor() {
        if (number >= 0)
            close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    const int number;
};

/// What an interrupted writing has left of a file that is gone: it would be taken for that of a new one.
/// Looked up before it is seen that there is no file, so that it is not the journal of a living one.
class LeftoverJournal {
public:
    /// Refuses what is no journal, and names that are too long for one.
    explicit LeftoverJournal(const std::string& file)
        : path(file + "-journal"), journal(path, O_RDWR | O_NOFOLLOW) {
        if (journal.number < 0) {
            demand(errno == ENOENT);
            return;
        }
        // A journal begins with zeros until it counts.
        constexpr std::string_view kMagic("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7");
        char bytes[kMagic.size()] = {};
        const ssize_t size = pread(journal.number, bytes, sizeof bytes, 0);
        const std::string_view beginning(bytes, sizeof bytes);
        demand((size == 0 || size == sizeof bytes) &&
               (beginning == kMagic || beginning.find_first_not_of('\0') == std::string_view::npos));
    }

    /// Makes it count no longer, whatever has become of its name.
    void empty() const {
        if (journal.number >= 0)
            demand(ftruncate(journal.number, 0) == 0 && fsync(journal.number) == 0);
    }
    /// To be called by the one who made the file, while nobody else can write to it.
    void remove() const {
        if (journal.number >= 0)
            unlink(path.c_str());
    }

private:
    std::string path;
    Descriptor journal;
};

ResourceContent writeEmptyContent(sqlite3* connection) {
    Transaction writing(connection, "BEGIN IMMEDIATE");
    run(connection, ("PRAGMA application_id = " + std::to_string(kApplication)).c_str());
    run(connection, ("PRAGMA user_version = " + std::to_string(kVersion)).c_str());
    for (const char* const table : kTables)
        run(connection, table);
    const std::string revision = randomBytes();
    Statement(connection, "INSERT INTO revision VALUES (?1)").bind(1, revision).run();
    ResourceContent content = contentOf(connection);
    writing.commit();
    return content;
}

ResourceContent create(const std::string& path) {
    std::error_code failure;
    const fs::path folder = fs::canonical(fs::path(path).parent_path(), failure);
    demand(!failure && (folder / fs::path(path).filename()).native().size() <= kLongestPath);
    const LeftoverJournal leftover(path);
    demand(!fs::exists(fs::symlink_status(path)));
    // The file is whole before it has its name, and the name is not taken from another.
    const TemporaryFile file(folder);
    const Connection connection(file.path, SQLITE_OPEN_READWRITE);
    ResourceContent content = writeEmptyContent(connection.get());
    leftover.empty();
    // Nobody writes to the new file, and so has a journal, before the leftover one is gone.
    const Transaction lock(connection.get(), "BEGIN EXCLUSIVE");
    demand(link(file.path.c_str(), path.c_str()) == 0);
    leftover.remove();
    // Where this cannot be done the next flush does it.
    const Descriptor names(folder.native(), O_RDONLY | O_DIRECTORY);
    fsync(names.number);
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
