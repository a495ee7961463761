// A resource database of a test's own.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/resource_database.h"

namespace qxcms::tests {

/// The error that was set last, and no longer is.
inline int takenError() {
    const int taken = rdb_err;
    rdb_err = 0;
    return taken;
}

/// A database, and the file that was pushed to it last.
struct OpenDatabase {
    OpenDatabase() : db(rdb_open()) { rdb_err = 0; }
    ~OpenDatabase() {
        rdb_close(db);
        rdb_err = 0;
    }
    OpenDatabase(const OpenDatabase&) = delete;
    OpenDatabase& operator=(const OpenDatabase&) = delete;

    rdb_file* push(const std::string& path) { return file = rdb_push_rfile(db, path.c_str()); }
    rdb_file* create(const std::string& path) { return file = rdb_create_rfile(db, path.c_str()); }
    int addTopic(const std::string& topic) { return rdb_add_topic(db, file, topic.c_str(), ""); }
    int add(const std::string& topic, const std::string& item, const std::string& value) {
        return rdb_add_item(db, topic.c_str(), item.c_str(), value.c_str(), "");
    }
    int modify(const std::string& topic, const std::string& item, const std::string& value) {
        return rdb_modify(db, topic.c_str(), item.c_str(), value.c_str());
    }
    int flush() { return rdb_flush(db); }

    /// "(none)" when there is none.
    std::string value(const std::string& topic, const std::string& item) {
        const char* found = nullptr;
        return rdb_search(db, topic.c_str(), item.c_str(), &found) != 0 ? found : "(none)";
    }
    std::vector<std::string> topics() {
        std::vector<std::string> names;
        while (const char* const name = rdb_posat_topic(db, file, static_cast<int>(names.size())))
            names.emplace_back(name);
        return names;
    }
    std::vector<std::string> items(const std::string& topic) {
        std::vector<std::string> names;
        while (const char* const name = rdb_posat_item(db, topic.c_str(), static_cast<int>(names.size())))
            names.emplace_back(name);
        return names;
    }
    /// Every topic with its items and their values, in order.
    std::vector<std::string> everything() {
        std::vector<std::string> lines;
        for (const std::string& topic : topics()) {
            lines.push_back(topic);
            for (const std::string& item : items(topic))
                lines.push_back(topic + " / " + item + " = " + value(topic, item));
        }
        return lines;
    }

    rdb_db* db;
    rdb_file* file = nullptr;
};

/// What a file holds; checks that it opens.
inline std::vector<std::string> contentOfResourceFile(const std::string& path) {
    OpenDatabase database;
    EXPECT_NE(database.push(path), nullptr) << path;
    return database.everything();
}

} // namespace qxcms::tests
