// A platform layer of the tests' own: records what the kernel asks of it and fails when told to.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace qxcms::tests {

struct SubstitutePlatform {
    // Switches.
    bool refusesTables = false;      ///< lin_interp_double_new gives null
    int failingInsertion = -1;       ///< the insertion that fails, counted from 0 over all tables
    bool refusesToOpen = false;      ///< open_resolved_file gives null
    bool hidesSizes = false;         ///< fgeteof gives -1
    long bytesNotRead = 0;           ///< fgetm leaves out so many
    int failingWrite = -1;           ///< the fputm that writes less than asked, counted from 0
    bool losesWritesOnClose = false; ///< close_resolved_file of a written file is not 0
    bool refusesSearches = false;    ///< fsinit gives null
    int pathAnswer = 0;              ///< of fport, where it is not 0
    bool emptiesPaths = false;       ///< fport gives an empty path
    int translationAnswer = -1;      ///< of lognam
    std::string translation;         ///< what lognam gives
    bool refusesNames = false;       ///< UTF8ToLocalEncoding answers -1
    bool capitalisesNames = false;   ///< UTF8ToLocalEncoding changes a name to capitals
    bool emptiesNames = false;       ///< UTF8ToLocalEncoding gives an empty name

    // What there is.
    std::map<std::string, std::string> files;                    ///< by the name given to open_resolved_file
    std::map<std::string, std::vector<std::string>> directories; ///< what fsearch gives
    std::map<std::string, std::string> paths;                    ///< what fport gives, else what it is given

    // Records.
    std::vector<int> announcedCounts; ///< of lin_interp_double_new
    int tablesInUse = 0;
    std::vector<std::pair<double, double>> insertedPoints;
    std::vector<double> evaluatedAt;
    std::vector<std::pair<std::string, std::string>> opened; ///< name and mode
    int filesInUse = 0;
    std::vector<std::string> definitions;                        ///< "name=value" of deflognam
    std::vector<std::pair<std::string, unsigned char>> searches; ///< directory and option
    int searchesInUse = 0;
    std::vector<std::string> errors;   ///< "module:line: message"
    std::vector<std::string> warnings; ///< "level: message"
};

/// The platform that the kernel runs on.
SubstitutePlatform& platform();

/// A test that starts on a faultless platform and leaves nothing in use.
class OnSubstitutePlatform : public testing::Test {
protected:
    void SetUp() override { platform() = SubstitutePlatform(); }
    void TearDown() override {
        EXPECT_EQ(platform().tablesInUse, 0);
        EXPECT_EQ(platform().filesInUse, 0);
        EXPECT_EQ(platform().searchesInUse, 0);
    }
};

} // namespace qxcms::tests
