#include "cgats/tcgatsnormalizer.h"

#include <algorithm>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "base/guarded.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/document_repairs.h"
#include "cgats/tcgats.h"
#include "cgats/text_encoding.h"

using namespace qxcms::detail;

namespace qxcms::detail {

/// What becomes of a text.
struct NormalizedText {
    std::string text;
    std::vector<TCgatsLiberty> liberties;
    std::vector<TCgatsLiberty> remarks;
    std::unique_ptr<TCgatsRefusal> refusal;
    int code = 0;
};

} // namespace qxcms::detail

struct TCgatsNormalizer::Result : NormalizedText {};

namespace {

using Kind = TCgatsLiberty::Kind;

/// Tells lines and columns of places that are asked for in their order.
class PlaceCounter {
public:
    explicit PlaceCounter(std::string_view counted) : text(counted) {}

    void moveTo(std::size_t position) {
        for (; at < position && at < text.size(); ++at) {
            const bool pairGoesOn = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
            if (isLineEnd(text[at]) && !pairGoesOn) {
                ++line;
                start = at + 1;
            }
        }
    }
    int lineNow() const { return line; }
    int columnNow() const { return static_cast<int>(at - start) + 1; }

private:
    const std::string_view text;
    std::size_t at = 0;
    std::size_t start = 0;
    int line = 1;
};

bool standsBefore(const TCgatsLiberty& a, const TCgatsLiberty& b) {
    return a.line != b.line ? a.line < b.line : a.column < b.column;
}

/// Keeps what the reader says when it refuses.
class RefusalKeeper : public TCgatsDiagnosticSink {
public:
    void Refused(const TCgatsDiagnostic& diagnostic) override {
        offset = diagnostic.offset;
        length = diagnostic.tokenLength;
        refused = guarded(false, [&] {
            expected = diagnostic.expected;
            return true;
        });
    }

    bool refused = false;
    std::size_t offset = 0;
    std::size_t length = 0;
    std::string expected;
};

std::size_t markLength(std::string_view text) {
    for (const std::string_view mark : kByteOrderMarks)
        if (text.substr(0, mark.size()) == mark)
            return mark.size();
    return 0;
}

/// Of the marks that a text begins with, those of UTF-16 too.
std::size_t marksLength(std::string_view text) {
    constexpr std::size_t kUtf16MarkLength = 2;
    std::size_t length = 0;
    while (const std::size_t mark =
               looksLikeUtf16(text.substr(length)) ? kUtf16MarkLength : markLength(text.substr(length)))
        length += mark;
    return length;
}

/// Leaves out NUL bytes, and byte-order marks where the text begins.
void clean(Draft& draft) {
    std::size_t nulBytes = 0;
    std::size_t firstNul = 0;
    bool begun = false;
    for (std::size_t at = 0; at < draft.text.size();) {
        const std::size_t mark = begun ? 0 : markLength(draft.text.substr(at));
        if (mark > 0) {
            draft.edits.remove({at, at + mark});
            draft.took(Kind::kEncoding, {at, at + mark}, "a byte-order mark left out");
            at += mark;
        } else if (draft.text[at] == '\0') {
            const std::size_t last = std::min(draft.text.find_first_not_of('\0', at), draft.text.size());
            draft.edits.remove({at, last});
            firstNul = nulBytes == 0 ? at : firstNul;
            nulBytes += last - at;
            at = last;
        } else {
            begun = true;
            at = std::min(draft.text.find('\0', at), draft.text.size());
        }
    }
    if (nulBytes > 0)
        draft.took(Kind::kNulBytes, {firstNul, firstNul},
                   std::to_string(nulBytes) + (nulBytes == 1 ? " NUL byte left out" : " NUL bytes left out"));
    draft.edits.sort();
}

/// The text with one row of each table, which the reader takes or refuses as it does the whole.
TextEdits withOneRowEach(const DocumentOutline& outline) {
    TextEdits edits;
    for (const OutlineTable& table : outline.tables) {
        const bool isRowALine =
            !table.rows.empty() && table.rows.front().values == static_cast<int>(table.names.size());
        if (!isRowALine || table.rows.size() < 2 || table.setsLine < 0)
            continue;
        edits.replace(outline.lines[static_cast<std::size_t>(table.setsLine)].value, "1");
        edits.remove({std::next(table.rows.begin())->line.first, table.dataEnd});
    }
    edits.sort();
    return edits;
}

void repair(Draft& draft, const DocumentOutline& outline) {
    Repairs repairs{draft, outline, {}, {}, std::vector<bool>(outline.lines.size()), {}, 0};
    repairHeader(repairs);
    repairFormats(repairs);
    repairRows(repairs);
    repairPairs(repairs);
    repairFieldCounts(repairs);
    repairScales(repairs);
    makeRoom(repairs);
    repairComments(repairs);
}

/// One text on its way into form.
class Normalizing {
public:
    explicit Normalizing(std::string bytes) : source(std::move(bytes)) {}

    NormalizedText run() {
        decode();
        bool changes = true;
        for (int round = 0; changes && told.code == 0 && round < kMostRounds; ++round) {
            Draft draft(text());
            repair(draft, outline);
            draft.edits.sort();
            tell(draft);
            changes = !draft.edits.empty();
            if (draft.objection)
                refuse(*draft.objection);
            else if (changes)
                take(draft);
        }
        if (told.code == 0) {
            const std::optional<Objection> objection =
                steps.empty() ? objectionToRows() : objectionTo(text(), TextEdits());
            if (objection)
                refuse(*objection);
        }
        if (told.code == 0 && outline.tables.empty())
            told.remarks.push_back(
                {Kind::kNoTable, 1, 1, "", "the text has no samples: no line BEGIN_DATA was found"});
        told.text = std::move(steps.empty() || told.code != 0 ? source : made);
        return std::move(told);
    }

private:
    // A repair can show what another one has to do, such as the scale of numbers that could not be read
    // before.
    static constexpr int kMostRounds = 4;

    /// The text as it is now.
    const std::string& text() const { return steps.empty() ? source : made; }

    void decode() {
        const bool isUtf16 = looksLikeUtf16(source);
        const bool isOdd = isUtf16 && source.size() % 2 != 0;
        if (isUtf16)
            source = utf8OfUtf16(source);
        Draft draft(source);
        if (isUtf16)
            draft.took(Kind::kEncoding, {0, 0},
                       std::string("the text turned from UTF-16 into UTF-8") +
                           (isOdd ? ", without the odd byte at its end" : ""));
        outline = outlineOf(source);
        const bool isClean = !outline.hasNul && markLength(source) == 0;
        if (!isClean)
            clean(draft);
        place(draft, draft.liberties, told.liberties);
        if (!isClean)
            take(draft);
    }

    void take(const Draft& draft) {
        apply(draft);
        if (const std::size_t length = marksLength(made))
            dropMarks(length);
        outline = outlineOf(made);
    }

    // Marks that came to the beginning, or whose bytes came together, when something was left out.
    void dropMarks(std::size_t length) {
        Draft draft(made);
        draft.edits.remove({0, length});
        draft.edits.sort();
        draft.took(Kind::kEncoding, {0, length}, "a byte-order mark left out");
        place(draft, draft.liberties, told.liberties);
        apply(draft);
    }

    void apply(const Draft& draft) {
        std::string changed = draft.edits.appliedTo(text());
        steps.push_back(draft.edits);
        made = std::move(changed);
    }

    std::size_t sourceOf(std::size_t position) const {
        for (auto step = steps.rbegin(); step != steps.rend(); ++step)
            position = step->sourceOf(position);
        return position;
    }

    void tell(Draft& draft) {
        // These are found anew in every round.
        const auto isLasting = [](const TCgatsLiberty& liberty) {
            return liberty.kind == Kind::kLineNotKept;
        };
        told.liberties.erase(std::remove_if(told.liberties.begin(), told.liberties.end(), isLasting),
                             told.liberties.end());
        told.remarks.clear();
        place(draft, draft.liberties, told.liberties);
        place(draft, draft.remarks, told.remarks);
    }

    /// Adds findings in the text as it is to those there are, in the order of the source.
    void place(const Draft& draft, std::vector<Finding>& findings, std::vector<TCgatsLiberty>& list) const {
        sortUnlessSorted(findings,
                         [](const Finding& a, const Finding& b) { return a.token.first < b.token.first; });
        list.reserve(list.size() + findings.size());
        PlaceCounter counter(source);
        for (Finding& finding : findings) {
            counter.moveTo(sourceOf(finding.token.first));
            list.push_back({finding.kind, counter.lineNow(), counter.columnNow(),
                            std::string(finding.token.of(draft.text)), std::move(finding.done)});
        }
        sortUnlessSorted(list, standsBefore);
    }

    /// What the reader says against a text with one row of each table, as it says of the whole.
    std::optional<Objection> objectionToRows() const {
        const auto hasLongValue = [](const OutlineTable& table) { return table.all.tooLong; };
        if (std::any_of(outline.tables.begin(), outline.tables.end(), hasLongValue))
            return objectionTo(text(), TextEdits());
        const TextEdits shortening = withOneRowEach(outline);
        return objectionTo(shortening.appliedTo(text()), shortening);
    }

    /// What the reader says against a text that is made from the one in hand.
    std::optional<Objection> objectionTo(const std::string& other, const TextEdits& edits) const {
        RefusalKeeper keeper;
        TCgats document;
        const int code = document.ReadFromBuffer(other.c_str(), &keeper);
        if (code == 0)
            return std::nullopt;
        // Nothing is wrong with the text where the reader says nothing.
        if (!keeper.refused)
            throw std::bad_alloc();
        const std::size_t first = edits.sourceOf(keeper.offset);
        return Objection{code, {first, std::min(first + keeper.length, text().size())}, keeper.expected};
    }

    void refuse(const Objection& objection) {
        PlaceCounter counter(source);
        counter.moveTo(sourceOf(objection.token.first));
        told.code = objection.code;
        told.refusal = std::make_unique<TCgatsRefusal>(
            TCgatsRefusal{objection.code, counter.lineNow(), counter.columnNow(),
                          std::string(objection.token.of(text())), objection.expected});
    }

    std::string source; // in UTF-8
    std::string made;   // from it, where there are steps
    std::vector<TextEdits> steps;
    DocumentOutline outline;
    NormalizedText told;
};

} // namespace

TCgatsNormalizer::TCgatsNormalizer() = default;

TCgatsNormalizer::~TCgatsNormalizer() = default;

int TCgatsNormalizer::Normalize(std::string bytes) {
    text.clear();
    result.reset();
    return guarded(static_cast<int>(kUnknownError), [&] {
        auto made = std::make_unique<Result>();
        static_cast<NormalizedText&>(*made) = Normalizing(std::move(bytes)).run();
        text = std::move(made->text);
        result = std::move(made);
        return result->code;
    });
}

int TCgatsNormalizer::GetNrLiberties() const {
    return result == nullptr ? 0 : static_cast<int>(result->liberties.size());
}

const TCgatsLiberty* TCgatsNormalizer::GetLiberty(int index) const {
    return index < 0 || index >= GetNrLiberties() ? nullptr
                                                  : &result->liberties[static_cast<std::size_t>(index)];
}

int TCgatsNormalizer::GetNrRemarks() const {
    return result == nullptr ? 0 : static_cast<int>(result->remarks.size());
}

const TCgatsLiberty* TCgatsNormalizer::GetRemark(int index) const {
    return index < 0 || index >= GetNrRemarks() ? nullptr : &result->remarks[static_cast<std::size_t>(index)];
}

const TCgatsRefusal* TCgatsNormalizer::GetRefusal() const {
    return result == nullptr ? nullptr : result->refusal.get();
}
