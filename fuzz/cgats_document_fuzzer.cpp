// The CGATS reader: any text, with and without somebody who listens, and everything that can be asked of the
// document that it makes.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "cgats/tcgats.h"
#include "fuzz/document_questions.h"
#include "fuzz/exact_memory.h"
#include "fuzz/memory_meter.h"
#include "fuzz/must.h"

namespace {

using namespace qxcms::fuzz;

// Checks what it is told against the text.
class Listener : public TCgatsDiagnosticSink {
public:
    explicit Listener(const ExactText& read) : text(read) {}

    void Refused(const TCgatsDiagnostic& diagnostic) override {
        must(code == 0, "a refusal is told once");
        code = diagnostic.code;
        must(code != 0, "a refusal has a code");
        must(diagnostic.offset + diagnostic.tokenLength <= text.size(),
             "a refused token is part of the text");
        must(diagnostic.token == text.c_str() + diagnostic.offset, "a refused token stands at its offset");
        must(diagnostic.expected != nullptr && *diagnostic.expected != '\0',
             "a refusal says what was expected");
        askPosition(diagnostic);
    }

    void Doubted(const TCgatsDoubtfulValue& value) override {
        must(code == 0, "nothing is doubted behind a refusal");
        must(value.table >= lastTable && value.row >= 0 && value.column >= 0,
             "a doubtful value has its place");
        must(std::strlen(value.text) <= TCgats::kMaxSampleValue, "a doubtful value is a sample value");
        lastTable = value.table;
    }

    int code = 0;
    int lastTable = 0;

private:
    // The same place counted in another way: line by line.
    void askPosition(const TCgatsDiagnostic& diagnostic) const {
        const char* const token = text.c_str() + diagnostic.offset;
        const char* lineStart = text.c_str();
        int line = 1;
        for (;;) {
            const char* next = lineStart + std::strcspn(lineStart, "\r\n");
            if (*next == '\0')
                break;
            next += std::strncmp(next, "\r\n", 2) == 0 ? 2 : 1;
            if (next > token)
                break;
            lineStart = next;
            ++line;
        }
        must(diagnostic.line == line, "a refusal knows its line");
        must(diagnostic.column == token - lineStart + 1, "a refusal knows its column");
    }

    const ExactText& text;
};

void askRecordedCode(const ExactText& text, int code) {
    const TCgats document(text.c_str(), 0);
    must(document.GetErrorCode() == code, "a document records what the reader answers");
    must((*document.GetErrorMessage() != '\0') == (code > 0), "a document has the message of its code");
    must(code == 0 || (document.GetNrFields(0) == -1 &&
                       document.GetMeasurement(0, 0, nullptr, nullptr, nullptr) == nullptr),
         "a document in error answers nothing");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ExactText text(data, size);

    const MemoryMeter meter;
    TCgats document;
    const int code = document.ReadFromBuffer(text.c_str());
    must(meter.peak() <= allowedMemory(text.size()), "reading needs memory in proportion");
    must(isReaderCode(code), "the reader answers one of its codes");

    Listener listener(text);
    TCgats observed;
    const MemoryMeter observedMeter;
    must(observed.ReadFromBuffer(text.c_str(), &listener) == code, "a listener changes nothing");
    must(observedMeter.peak() <= allowedMemory(text.size()), "listening needs memory in proportion");
    must(listener.code == code, "a listener is told of the refusal");
    must(listener.lastTable <= observed.GetNrTables(),
         "values are doubted in tables that are there or being read");
    must(observed.GetNrTags() == document.GetNrTags() && observed.GetNrTables() == document.GetNrTables() &&
             observed.GetNrCustomFields() == document.GetNrCustomFields(),
         "a text is read alike each time");

    askRecordedCode(text, code);
    askEverything(document);

    // A document that was refused half-way, or was not, can be read into again.
    must(isReaderCode(document.ReadFromBuffer(text.c_str())), "a second reading answers one of the codes");
    return 0;
}
