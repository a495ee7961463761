#include "support/qxcms_rdb_err.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string>

#include "platform/resource_database.h"
#include "platform/utility.h"

namespace {

/// The texts of the errors by their codes.
/// Kept on purpose: "tp" in that of 12, because programs look for the texts as they are
/// (resourceErrors.textOfAFailedFlush_keepsItsMisspelling).
constexpr const char* kTexts[] = {
    "No errors encountered",
    "No resource file specified",
    "Failed to open resource file",
    "No entries in table",
    "A null pointer as rdb pointer",
    "There are no files in rdb",
    "No resource file handle",
    "Failed to add a topic",
    "Failed to add an item",
    "Failed to create a topic",
    "Failed to create an item",
    "Failed to append item to topic",
    "Failed to flush data tp disk",
    "End of topic list reached",
    "End of item list reached",
    "Topic not found in database",
    "Too many indirection",
    "Item not found in database",
    "The destination string is too short",
    // Kept on purpose: the text of 15 once more (resourceErrors.code19_hasTheTextOfCode15).
    "Topic not found in database",
    "Failed to remove an item",
};

/// The line that the reports bear.
constexpr int kLine = 47;

/// A report of bounded length, made without memory.
class Message {
public:
    void append(const char* addition) {
        const std::size_t copied = std::min(std::strlen(addition), sizeof characters - 1 - length);
        std::memcpy(characters + length, addition, copied);
        length += copied;
    }
    const char* text() const { return characters; }

private:
    char characters[256] = {};
    std::size_t length = 0;
};

} // namespace

int qxcms_rdb_err(const char* context) {
    const int code = rdb_err;
    Message message;
    message.append(context != nullptr ? context : "");
    if (code > 0 && code < static_cast<int>(std::size(kTexts))) {
        message.append(" : ");
        message.append(kTexts[code]);
    } else if (code != 0) {
        message.append(" : rdb-error no : ");
        message.append(std::to_string(code).c_str());
    }
    rdb_err = 0;
    error_mess_fl(message.text(), "qxcms_rdb_err", kLine);
    return 0;
}
