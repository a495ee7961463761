// How a document gets out: streams, arrays, files.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <ostream>
#include <streambuf>
#include <string>
#include <utility>

#include "base/guarded.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/cgats_writer.h"
#include "cgats/tcgats.h"
#include "platform/file_name_encoding.h"
#include "platform/utility.h"

using qxcms::detail::CgatsWriter;
using qxcms::detail::guarded;
using qxcms::detail::kEmptyFileName;
using qxcms::detail::kNotWritable;
using qxcms::detail::kUnknownError;

namespace {

constexpr int kBadArgument = 2;

// Runs one step of the writer and sees whether the stream took its text.
template <class Step>
int runStep(const TCgats& document, std::ostream& stream, Step step) {
    return guarded(static_cast<int>(kUnknownError), [&] {
        CgatsWriter writer(document, stream);
        const int code = step(writer);
        const bool written = writer.finish();
        return code == 0 && !written ? static_cast<int>(kNotWritable) : code;
    });
}

// An array of characters that grows, always with room for a terminator.
class GrowingArray : public std::streambuf {
public:
    // The text so far, terminated; null when there was no memory for any.
    std::unique_ptr<char[]> release() {
        if (characters || grow(0))
            characters[length] = '\0';
        return std::move(characters);
    }

protected:
    std::streamsize xsputn(const char* text, std::streamsize count) override {
        const auto added = static_cast<std::size_t>(count);
        if (added >= capacity - length && !grow(added))
            return 0;
        std::memcpy(characters.get() + length, text, added);
        length += added;
        return count;
    }

private:
    bool grow(std::size_t added) {
        const std::size_t larger = std::max(2 * capacity, length + added + 1);
        std::unique_ptr<char[]> array(new (std::nothrow) char[larger]);
        if (!array)
            return false;
        if (length > 0)
            std::memcpy(array.get(), characters.get(), length);
        characters = std::move(array);
        capacity = larger;
        return true;
    }

    std::unique_ptr<char[]> characters;
    std::size_t length = 0;
    std::size_t capacity = 0;
};

// A file as the target of a stream.
class FileTarget : public std::streambuf {
public:
    explicit FileTarget(FILE* opened) : file(opened) {}

protected:
    std::streamsize xsputn(const char* text, std::streamsize count) override {
        return static_cast<std::streamsize>(std::fwrite(text, 1, static_cast<std::size_t>(count), file));
    }

private:
    FILE* file;
};

// A plain path, never a logical specification such as "root:[a.b]name", which reading does not know either.
std::string plainPath(const std::string& name) {
    const bool isPlain = name.find('/') != std::string::npos || name.find(':') == std::string::npos;
    return isPlain ? name : "./" + name;
}

// The name as the file system spells it; as given where it cannot be converted.
std::string localName(const char* fileName) {
    // Enough for any encoding of one to four bytes per character.
    std::string local(4 * std::strlen(fileName) + 1, '\0');
    if (UTF8ToLocalEncoding(fileName, local.data(), static_cast<int>(local.size())) != 0)
        return fileName;
    local.resize(std::strlen(local.c_str()));
    return local.empty() ? std::string(fileName) : local;
}

} // namespace

int TCgats::WriteToStream(std::ostream& stream) const {
    return runStep(*this, stream, [](CgatsWriter& writer) { return writer.writeDocument(); });
}

int TCgats::WriteTag(int index, std::ostream& stream) const {
    return runStep(*this, stream, [=](CgatsWriter& writer) { return writer.writeTag(index); });
}

int TCgats::WriteHeader(int table, std::ostream& stream) const {
    return runStep(*this, stream, [=](CgatsWriter& writer) { return writer.writeDataFormat(table); });
}

int TCgats::WriteTable(int table, std::ostream& stream) const {
    return runStep(*this, stream, [=](CgatsWriter& writer) { return writer.writeSamples(table); });
}

int TCgats::WriteToBuffer(char** text) const {
    if (SetErrorCode(0))
        return errorCode;
    if (text == nullptr)
        return kBadArgument;
    *text = nullptr;
    return guarded(static_cast<int>(kUnknownError), [&] {
        GrowingArray array;
        std::ostream stream(&array);
        int code = WriteToStream(stream);
        if (code == kNotWritable)
            code = kUnknownError;
        SetErrorCode(code);
        *text = array.release().release();
        return code;
    });
}

int TCgats::SaveAs(const char* fileName) const {
    if (SetErrorCode(0))
        return errorCode;
    if (fileName == nullptr || *fileName == '\0')
        return kEmptyFileName;
    return guarded(static_cast<int>(kUnknownError), [&] {
        FILE* const file = open_resolved_file(plainPath(localName(fileName)).c_str(), "w");
        if (file == nullptr)
            return static_cast<int>(kNotWritable);
        FileTarget target(file);
        std::ostream stream(&target);
        const int code = WriteToStream(stream);
        // A file whose text is lost is no fault of the document: it can still be saved elsewhere.
        if (close_resolved_file(file) != 0 || code == kNotWritable)
            return static_cast<int>(kNotWritable);
        SetErrorCode(code);
        return code;
    });
}
