/// @file
/// Small named results that are kept from one run of a program to the next.
#pragma once

#include <cstdint>
#include <memory>

#include "base/export.h"

struct rdb_db;
struct rdb_file;

namespace qxcms::detail {
struct LayoutProbe;
}

/// A resource file of topics, each with items of one value text.
///
/// What is added, changed or removed is in the file after Save; what was not saved by then is lost with the
/// object. What other objects and processes saved to the same file is seen in a new object, and in this one
/// after a Save that had something to write.
///
/// Any text can be the name of a topic: with the flag `encodeTopic` these 18 characters, the blank among
/// them,
///
///     $% ./\*[]@?:|#<>";
///
/// are stored as "%" and two hexadecimal digits (TCMS_EncodeIllegalCharacters), and the topic
/// `a b` becomes `a%20b`. The same flag finds it again. Names of items are stored as they are.
///
/// Flags are set when they are non-zero. Operations answer -1 when they fail; a null name, text or buffer is
/// such a failure, without a report. The want of memory may be reported or not. An object whose status is not
/// 0 holds nothing. What the database says of a failure that is not reported stands in `rdb_err`
/// (platform/resource_database.h); operations that do not fail leave that as it is.
/// AddTopic, RemoveTopic, AddItem, ChangeIntItem and CopyTopic report through qxcms_rdb_err what they could
/// not add, remove or change; Search and Save report nothing.
///
/// Texts that are handed out belong to the object and are valid until something is added, changed, removed or
/// saved.
class QXCMS_API TCacheFile {
public:
    /// Who is told of a failure, qxcms_rdb_err for one.
    using Reporter = int (*)(const char* message);

    /// Opens the file "<directory><name>", and waits two seconds at most while others write to it; the
    /// directory brings its separator along. Reports "Cannot Create RDB" (status 1) or "Unable to push file
    /// <path>" (status 3). @param directory may be null.
    TCacheFile(const char* name, const char* directory);

    /// Opens the file of this path. @param create makes it where it cannot be opened, and opens it after all
    /// where another was faster, which may wait once more; a file that is there already is never written
    /// over. Reports as the other constructor.
    TCacheFile(const char* path, int create);

    TCacheFile(const TCacheFile&) = delete;
    TCacheFile& operator=(const TCacheFile&) = delete;

    /// Receives every message of the class but those of the constructors: both texts with a blank between
    /// them, or the one that is not null.
    /// @param reporter is given the message; without one it is reported as module "tcachefile", line 0.
    virtual void SetErrMsg(const char* first, const char* second, Reporter reporter);
    virtual ~TCacheFile();

    /// @return 0; -1 when the topic is there already, without a report, or cannot be added.
    int AddTopic(const char* topic, int encodeTopic);

    /// Removes a topic with its items. @return 0 or -1.
    int RemoveTopic(const char* topic, int encodeTopic);

    /// Adds an item to a topic that AddTopic made, or gives it a new value. @return 0 or -1.
    /// @param encodeValue escapes the characters in the text as those of a topic.
    int AddItem(const char* topic, const char* item, const char* text, int encodeTopic, int encodeValue);
    /// Stores "%d".
    int AddItem(const char* topic, const char* item, int value, int encodeTopic);
    /// Stores "%6.4f", which keeps four decimals and no more.
    int AddItem(const char* topic, const char* item, double value, int encodeTopic);

    /// Adds `delta` to the integer of an item (0 when there is none yet), raises the sum to `minimum`, then
    /// lowers it to `maximum`. @return the result of storing it, 0 or -1.
    int ChangeIntItem(const char* topic, const char* item, int delta, int minimum, int maximum,
                      int encodeTopic);

    /// Reads one value of an item: the text may hold several, as str_int_from_itemstr and
    /// str_double_from_itemstr read them.
    /// @param index counts from 0. @param unused has no effect.
    /// @return the result of the conversion; -1 when there is no such item or its text is longer than 1023
    /// characters.
    int Search(const char* topic, const char* item, int* value, int index, int encodeTopic, int unused);
    int Search(const char* topic, const char* item, double* value, int index, int encodeTopic, int unused);

    /// Copies the text of an item into `buffer`, which holds `size` characters with the terminator; what does
    /// not fit is cut off. @param decodeValue turns escapes in the copy back into characters: the buffer has
    /// to hold the escaped text. @return 0, or -1 when there is no such item.
    int Search(const char* topic, const char* item, char* buffer, int size, int encodeTopic, int decodeValue);

    /// The next call of ScanTopics gives the first topic.
    void ScanTopicsInit();
    /// The next topic as it is stored, in the order of addition; never "_internal_", in any letter case. It
    /// is passed on with encodeTopic 0, and TCMS_DecodeIllegalCharacters makes the name of it. The scan
    /// counts: when the topic that it gave last is removed, it passes over the next one, so that who removes
    /// topics begins anew each time.
    /// @param filter null, or text that the stored topic must contain. Meant as a prefix: the result begins
    /// behind as many characters as the filter has, wherever in the topic it was found.
    /// @param restart begins with the first topic. @return null when there is no further one.
    const char* ScanTopics(const char* filter, int restart);

    /// The next call of ScanItems gives the first item.
    void ScanItemsInit();
    /// The next item of a topic (the name as it is stored), in the order of addition.
    /// @param value receives its text; null, with a report, when it cannot be read.
    /// @param restart begins with the first item. @return null when there is no further one.
    const char* ScanItems(const char* topic, const char** value, int restart);

    /// Copies a topic (the name as it is stored) with all its items from another file. Where this file has
    /// the topic, its items stay, and those of the same names get the values of the other file.
    /// @return 0; -1 when the other file has no such topic, without a report, or something could not be
    /// added: what was copied by then stays.
    int CopyTopic(const TCacheFile& other, const char* topic);

    /// Nothing needs preparation. @return 0.
    int InitSave();
    /// Writes what was changed into the file; waits two seconds at most while others use it.
    /// @return 0; -1, without a report, when it could not be written.
    int Save();

    /// True when the names given to the constructors are equal, case included; directories are not compared.
    bool operator==(const TCacheFile& other) const noexcept;

    /// 0 good; 1 the database could not be opened; 3 the file could be neither opened nor made.
    std::int32_t GetStatus() const { return state; }

private:
    friend struct qxcms::detail::LayoutProbe;

    struct Closer {
        void operator()(rdb_db* db) const noexcept;
    };

    void open(const char* path, int create);
    int addTopic(const char* topic, const char* storedTopic);
    int store(const char* topic, const char* storedTopic, const char* item, const char* text);
    bool readItemString(const char* topic, const char* item, int encodeTopic, char* text) const;

    std::unique_ptr<char[]> fileName;
    std::unique_ptr<char[]> directory;
    std::int32_t state;
    std::int32_t topicPosition;
    std::int32_t itemPosition;
    std::unique_ptr<rdb_db, Closer> database;
    rdb_file* file;
};
