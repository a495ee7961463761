// A resource database of the tests' own, in memory: fails when told to, and spoils what it handed out as soon
// as it may.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace qxcms::tests {

struct SubstituteDatabase {
    using Items = std::vector<std::pair<std::string, std::string>>;
    using Topics = std::vector<std::pair<std::string, Items>>;

    // Switches.
    bool refusesToOpen = false;   ///< rdb_open gives null
    bool refusesToPush = false;   ///< rdb_push_rfile fails with 2
    bool refusesToCreate = false; ///< rdb_create_rfile fails with 2
    bool refusesTopics = false;   ///< rdb_add_topic fails with 7
    bool refusesRemoval = false;  ///< rdb_remove_topic fails with 20
    bool refusesItems = false;    ///< rdb_add_item fails with 8
    bool refusesChanges = false;  ///< rdb_modify fails with 8
    bool refusesToFlush = false;  ///< rdb_flush fails with 12
    std::string hiddenItem;       ///< rdb_search does not find an item of this name, and says 17

    // What there is; changes show at once.
    std::map<std::string, Topics> files;

    // Records.
    std::vector<std::string> paths; ///< "push <path>", "create <path>"
    std::vector<int> stringSizes;   ///< of rdb_search_string
    int inUse = 0;                  ///< databases that were opened and not closed
};

/// The database that the kernel works on.
SubstituteDatabase& database();

/// A test that starts on a faultless, empty database and leaves nothing open.
class OnSubstituteDatabase : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
};

} // namespace qxcms::tests
