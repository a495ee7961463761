// How a text gets into a document: files, buffers, and the reader's single steps.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "base/guarded.h"
#include "cgats/cgats_reader.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/tcgats.h"

using qxcms::detail::CgatsReader;
using qxcms::detail::guarded;
using qxcms::detail::HeaderLine;
using qxcms::detail::kBadCommentBlock;
using qxcms::detail::kEmptyFileName;
using qxcms::detail::kFileNotFound;
using qxcms::detail::kUnknownError;
using qxcms::detail::LineResult;

namespace {

constexpr int kBadArgument = 2;

struct FileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};

using File = std::unique_ptr<FILE, FileCloser>;
using Buffer = std::unique_ptr<char[]>;

constexpr std::size_t kFirstBuffer = 4096;

// The size of a file that can tell it, else a first guess.
std::size_t expectedSize(FILE* file) {
    const bool atEnd = std::fseek(file, 0, SEEK_END) == 0;
    const long size = atEnd ? std::ftell(file) : -1;
    std::rewind(file);
    // What no memory could hold is no size: directories and devices tell such.
    constexpr long kLargestBelievable = 1L << 40;
    return size > 0 && size < kLargestBelievable ? static_cast<std::size_t>(size) : kFirstBuffer;
}

// Reads on until the file ends, whatever size was expected: pipes tell none, and files grow.
int readAll(FILE* file, Buffer& text) {
    std::size_t capacity = expectedSize(file) + 1;
    std::size_t length = 0;
    text.reset(new (std::nothrow) char[capacity]);
    while (text) {
        length += std::fread(text.get() + length, 1, capacity - length, file);
        if (length < capacity) {
            text[length] = '\0';
            return std::ferror(file) != 0 ? kFileNotFound : 0;
        }
        Buffer larger(new (std::nothrow) char[2 * capacity]);
        if (larger)
            std::copy_n(text.get(), length, larger.get());
        text = std::move(larger);
        capacity *= 2;
    }
    return kUnknownError;
}

// Behind the line end of the first line, or the end of the text.
const char* endOfLine(const char* text) {
    const char* const lineEnd = text + std::strcspn(text, "\r\n");
    return *lineEnd == '\0' ? lineEnd : lineEnd + 1;
}

// Runs one step of the reader from `*position` on and moves it.
template <class Step>
int runStep(TCgats& document, const char** position, Step step) {
    if (position == nullptr || *position == nullptr)
        return kBadArgument;
    return guarded(static_cast<int>(kUnknownError), [&] {
        CgatsReader reader(document, *position, *position + std::strlen(*position));
        const int code = step(reader);
        *position = reader.at();
        return code;
    });
}

} // namespace

TCgats::TCgats(const char* fileName) {
    SetToZero();
    if (fileName == nullptr || *fileName == '\0')
        SetErrorCode(kEmptyFileName);
    else
        SetErrorCode(ReadFromFile(fileName));
}

TCgats::TCgats(const char* text, int) {
    SetToZero();
    SetErrorCode(text == nullptr ? static_cast<int>(kUnknownError) : ReadFromBuffer(text));
}

int TCgats::ReadFromFile(const char* fileName) {
    char* text = nullptr;
    const int code = FileToBuffer(fileName, &text);
    const Buffer owned(text);
    return code != 0 ? code : ReadFromBuffer(text);
}

int TCgats::FileToBuffer(const char* fileName, char** text) {
    if (fileName == nullptr || text == nullptr)
        return kBadArgument;
    *text = nullptr;
    const File file(std::fopen(fileName, "r"));
    if (!file)
        return errno == ENOMEM ? static_cast<int>(kUnknownError) : kFileNotFound;
    Buffer buffer;
    const int code = readAll(file.get(), buffer);
    if (code == 0)
        *text = buffer.release();
    return code;
}

int TCgats::ReadFromBuffer(const char* text, TCgatsDiagnosticSink* sink) {
    if (text == nullptr)
        return kBadArgument;
    return guarded(static_cast<int>(kUnknownError),
                   [&] { return CgatsReader(*this, text, text + std::strlen(text), sink).readDocument(); });
}

int TCgats::ReadNextTag(const char* position, char* keyword, char* value, char* comment, int* code,
                        int* numeric, const char** next) const {
    if (position == nullptr || keyword == nullptr || value == nullptr || comment == nullptr ||
        code == nullptr || numeric == nullptr || next == nullptr)
        return kBadArgument;
    return guarded(-1, [&] {
        const auto line = std::make_unique<HeaderLine>();
        LineResult result = LineResult::kEndOfText;
        const char* at = position;
        // Line by line: a walk through a text does not look at the rest of it at each step.
        do {
            const char* const last = endOfLine(at);
            // Reading a line changes nothing in the document.
            CgatsReader reader(const_cast<TCgats&>(*this), at, last);
            result = reader.readLine(*line);
            at = reader.at();
        } while (result == LineResult::kEndOfText && *at != '\0');
        std::strcpy(keyword, line->keyword.c_str());
        std::strcpy(value, line->value.c_str());
        std::strcpy(comment, line->comment.c_str());
        *code = line->code;
        *numeric = line->numeric;
        *next = at;
        switch (result) {
        case LineResult::kMore:
            return 0;
        case LineResult::kEndOfText:
            return 1;
        default:
            return -1;
        }
    });
}

int TCgats::ReadCommentTag(const char* keyword, const char** position) {
    if (keyword == nullptr)
        return kBadArgument;
    if (std::strlen(keyword) < std::size_t{qxcms::detail::kBlockStartLength})
        return kBadCommentBlock;
    return runStep(*this, position, [&](CgatsReader& reader) { return reader.readCommentBlock(keyword); });
}

int TCgats::ReadTmpHeader(const char** position) {
    return runStep(*this, position, [](CgatsReader& reader) { return reader.readDataFormat(); });
}

int TCgats::ReadTable(const char** position) {
    return runStep(*this, position, [](CgatsReader& reader) { return reader.readSamples(); });
}
