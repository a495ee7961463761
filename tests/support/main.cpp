// The test program: takes the locale of its surroundings, so that a run under a comma locale tests something.
#include <clocale>
#include <locale>
#include <stdexcept>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    std::setlocale(LC_ALL, "");
    try {
        std::locale::global(std::locale(""));
    } catch (const std::runtime_error&) {
        // A locale that the environment names and the machine lacks: the classic one stays.
        std::locale::global(std::locale::classic());
    }
    return RUN_ALL_TESTS();
}
