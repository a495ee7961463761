// The single steps of the CGATS reader, in any order: the front of the input chooses them, the rest is the
// text.
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>

#include "cgats/tcgats.h"
#include "fuzz/document_questions.h"
#include "fuzz/exact_memory.h"
#include "fuzz/memory_meter.h"
#include "fuzz/must.h"

namespace {

using namespace qxcms::fuzz;

constexpr int kMostSteps = 16;

// The three work buffers of a header line, of exactly their size.
struct LineBuffers {
    std::unique_ptr<char[]> keyword{new char[TCgats::kMaxKeyword + 1]()};
    std::unique_ptr<char[]> value{new char[TCgats::kMaxValue + 1]()};
    std::unique_ptr<char[]> comment{new char[TCgats::kMaxComment + 1]()};
};

// Takes steps through a text and checks what each of them answers.
class Walk {
public:
    explicit Walk(const ExactText& walked) : text(walked), position(walked.c_str()) {}

    void step(unsigned choice) {
        const char* const before = position;
        switch (choice % 8) {
        case 0:
            mayAnswer(document.ReadTmpHeader(&position), {0, 9, 10, 11, 12});
            break;
        case 1:
            mayAnswer(document.ReadTable(&position), {0, 1, 6, 12, 14, 17});
            break;
        case 2:
            readCommentBlock();
            break;
        case 3:
            document.SetNrSamples(static_cast<int>(choice / 8));
            break;
        case 4:
            document.InitTmpHeader(static_cast<int>(choice / 8) - 1);
            break;
        default:
            readLine();
            break;
        }
        must(position >= before && position <= text.end(), "a step goes on and stays in the text");
    }

    TCgats& result() { return document; }

private:
    static void mayAnswer(int code, std::initializer_list<int> codes) {
        for (const int allowed : codes)
            if (code == allowed)
                return;
        must(false, "a step answers one of its codes");
    }

    void readLine() {
        int code = -2, numeric = -2;
        const char* next = nullptr;
        const int answer = document.ReadNextTag(position, buffers.keyword.get(), buffers.value.get(),
                                                buffers.comment.get(), &code, &numeric, &next);
        mayAnswer(answer, {-1, 0, 1});
        must(next > position || *position == '\0', "a line is longer than nothing");
        must(answer != 1 || *next == '\0', "the end of the text is where the text ends");
        must(answer != 0 || next[-1] == '\n' || next[-1] == '\r', "a line ends behind its line end");
        position = next;
        if (answer < 0)
            return;
        must(code == document.MatchTag(buffers.keyword.get()), "a line has the code of its keyword");
        must(numeric == 0 || buffers.value[0] != '\0', "an empty value is no bare one");
        document.InsertTag(code, buffers.keyword.get(), numeric, buffers.value.get(), buffers.comment.get(),
                           answer - 1, numeric != 0);
        document.AddCustomField(buffers.value.get());
    }

    void readCommentBlock() {
        const int count = document.GetNrCommentBlocks();
        const char* const before = position;
        const int answer = document.ReadCommentTag(buffers.keyword.get(), &position);
        mayAnswer(answer, {0, 5});
        must(document.GetNrCommentBlocks() == count + (answer == 0 ? 1 : 0),
             "a block that is found is stored");
        must(answer != 0 || document.GetCommentBlock(count) == std::string(before, position),
             "a block is what was passed");
    }

    const ExactText& text;
    const char* position;
    TCgats document;
    LineBuffers buffers{};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    InputFront front(data, size);
    const int steps = front.byte() % (kMostSteps + 1);
    std::uint8_t choices[kMostSteps];
    for (int i = 0; i < steps; ++i)
        choices[i] = front.byte();
    const ExactText text(front.rest(), front.restSize());

    const MemoryMeter meter;
    Walk walk(text);
    for (int i = 0; i < steps; ++i)
        walk.step(choices[i]);
    must(meter.peak() <= allowedMemory(text.size()), "steps need memory in proportion");

    TCgats& document = walk.result();
    must(isReaderCode(document.ReadFromBuffer(text.c_str())), "what steps leave behind can be read into");
    askEverything(document);
    return 0;
}
