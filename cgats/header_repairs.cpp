// Keywords, header values, comment blocks, comments on lines of their own.
#include <algorithm>
#include <set>
#include <string>

#include "cgats/cgats_vocabulary.h"
#include "cgats/document_repairs.h"
#include "cgats/tcgats.h"

namespace qxcms::detail {

namespace {

using Kind = TCgatsLiberty::Kind;

constexpr std::size_t kMaxValue = TCgats::kMaxValue;
constexpr std::size_t kMaxComment = TCgats::kMaxComment;

/// A header value, taken apart.
struct ValueForm {
    std::string inner;      ///< what stands within the quotes, or the words without any
    bool quoted = false;    ///< begins with a double quote
    bool closed = true;     ///< the quote closes
    bool doubled = false;   ///< two quotes within stand for one
    std::size_t behind = 0; ///< where what follows the closing quote begins, counted from the value
};

ValueForm formOfQuoted(std::string_view value) {
    ValueForm form;
    form.quoted = true;
    std::size_t at = 1;
    for (; at < value.size(); ++at) {
        if (value[at] != '"') {
            form.inner += value[at];
        } else if (at + 1 < value.size() && value[at + 1] == '"') {
            form.doubled = true;
            form.inner += '\'';
            ++at;
        } else {
            form.behind = at + 1;
            return form;
        }
    }
    form.closed = false;
    form.behind = value.size();
    return form;
}

ValueForm formOf(std::string_view value) {
    if (!value.empty() && value[0] == '"')
        return formOfQuoted(value);
    ValueForm form;
    form.inner = std::string(value);
    form.behind = value.size();
    return form;
}

bool isOfSeveralWords(std::string_view value) {
    return value.find_first_of(" \t\"") != std::string_view::npos;
}

bool isTextInQuotes(const Draft& draft, const OutlineLine& line) {
    return line.word < 0 && line.keyword.length() > 0 && draft.text[line.keyword.first] == '"' &&
           !line.value.empty();
}

bool isCommentAlone(const Draft& draft, const OutlineLine& line) {
    return line.keyword.empty() || isTextInQuotes(draft, line);
}

void repairKeyword(Draft& draft, const OutlineLine& line) {
    if (line.word < 0 || line.keyword.of(draft.text) == kKeywords[line.word])
        return;
    const std::string proper = kKeywords[line.word];
    draft.edits.replace(line.keyword, proper);
    draft.took(Kind::kKeywordSpelling, line.keyword, draft.quoted(line.keyword) + " taken for " + proper);
}

void cutValue(Draft& draft, const OutlineLine& line, const ValueForm& form) {
    std::string kept = form.inner.substr(0, kMaxValue);
    std::replace(kept.begin(), kept.end(), '"', '\'');
    draft.edits.replace(line.value, '"' + kept + '"');
    draft.took(Kind::kTooLong, line.value,
               "the value of " + draft.quoted(line.keyword) + " cut to the " + std::to_string(kMaxValue) +
                   " characters that are kept");
}

void repairQuotedValue(Draft& draft, const OutlineLine& line, const ValueForm& form) {
    const std::size_t behind = line.value.first + form.behind;
    const Span rest = withoutBlanks(draft.text, {behind, line.value.last});
    if (form.doubled) {
        draft.edits.replace({line.value.first, behind}, '"' + form.inner + '"');
        draft.took(Kind::kDoubledQuotes, line.value,
                   "the doubled double quotes in the value of " + draft.quoted(line.keyword) +
                       " made apostrophes");
    } else if (!form.closed && !line.hasComment) {
        draft.edits.put(line.value.last, "\"");
        draft.took(Kind::kQuoteClosed, line.value,
                   "the quote that opens the value of " + draft.quoted(line.keyword) +
                       " closed at the line end");
    }
    if (!rest.empty()) {
        draft.edits.put(rest.first, "#");
        draft.took(Kind::kTextBehindValue, rest,
                   draft.quoted(rest) + " behind the value of " + draft.quoted(line.keyword) +
                       " made a comment");
    }
}

void repairBareValue(Draft& draft, const OutlineLine& line) {
    std::string words(line.value.of(draft.text));
    if (!isOfSeveralWords(words))
        return;
    if (words.find('"') == std::string::npos) {
        draft.edits.put(line.value.first, "\"");
        draft.edits.put(line.value.last, "\"");
    } else {
        std::replace(words.begin(), words.end(), '"', '\'');
        draft.edits.replace(line.value, '"' + words + '"');
    }
    draft.took(Kind::kValueQuoted, line.value,
               "quotes put around the words of " + draft.quoted(line.keyword) +
                   ", which would lose the blanks between them");
}

void repairValue(Draft& draft, const OutlineLine& line) {
    const ValueForm form = formOf(line.value.of(draft.text));
    if (form.inner.size() > kMaxValue)
        cutValue(draft, line, form);
    else if (form.quoted)
        repairQuotedValue(draft, line, form);
    else
        repairBareValue(draft, line);
}

void cutComment(Draft& draft, const OutlineLine& line) {
    if (line.comment.length() <= kMaxComment)
        return;
    const Span rest{line.comment.first + kMaxComment, line.comment.last};
    draft.edits.remove(rest);
    draft.took(Kind::kTooLong, rest,
               "the comment of " + draft.quoted(line.keyword) + " cut to the " + std::to_string(kMaxComment) +
                   " characters that are kept");
}

void breakBehindKeyword(Draft& draft, const OutlineLine& line) {
    if (line.value.empty())
        return;
    draft.edits.put(line.value.first, std::string(draft.lineEnd));
    draft.took(Kind::kTextBehindKeyword, line.value,
               "what stands behind " + draft.quoted(line.keyword) + " put on a line of its own");
}

bool holdsMoreThanBlanks(const Draft& draft, Span text) {
    return !withoutBlanks(draft.text, text).empty();
}

void takeAway(Repairs& repairs, int index) {
    Draft& draft = repairs.draft;
    const OutlineLine& line = repairs.line(index);
    const bool isFreeText = !line.keyword.empty();
    const Span text = isFreeText ? withoutBlanks(draft.text, line.line) : line.comment;
    if (text.empty())
        return;
    repairs.dropLine(index);
    if (isFreeText)
        draft.took(Kind::kFreeText, text, "the line that begins with a double quote taken for a comment");
    if (holdsMoreThanBlanks(draft, text))
        repairs.comments.push_back({text, std::string(text.of(draft.text)), line.part, line.next});
    else
        draft.took(Kind::kCommentDropped, text, "an empty comment on a line of its own left out");
}

void repairLine(Repairs& repairs, int index) {
    Draft& draft = repairs.draft;
    const OutlineLine& line = repairs.line(index);
    if (isCommentAlone(draft, line)) {
        takeAway(repairs, index);
        return;
    }
    repairKeyword(draft, line);
    if (line.word == kBeginData || line.word == kBeginDataFormat)
        breakBehindKeyword(draft, line);
    else
        repairValue(draft, line);
    cutComment(draft, line);
}

void repairEmptyBlock(Draft& draft, const OutlineLine& line) {
    draft.edits.put(line.next, std::string(draft.lineEnd));
    draft.took(Kind::kEmptyCommentBlock, line.keyword,
               "an empty line put into the empty block of " + draft.quoted(line.keyword));
}

/// Gives comments, in the order of the text, the lines that can take them.
class CommentMover {
public:
    explicit CommentMover(Repairs& shared) : repairs(shared), draft(shared.draft) {}

    void move(const StrayComment& comment) {
        // Lines that an earlier comment has passed are taken.
        while (next < repairs.outline.lines.size() && !canTake(comment))
            ++next;
        if (next == repairs.outline.lines.size() || lineNow().part != comment.part) {
            draft.took(Kind::kCommentDropped, comment.where,
                       "the comment left out: no header line behind it is without one");
            return;
        }
        const OutlineLine& line = lineNow();
        ++next;
        // What stands behind BEGIN_DATA or BEGIN_DATA_FORMAT goes on a line of its own.
        const bool isBroken = line.word == kBeginData || line.word == kBeginDataFormat;
        draft.edits.put(isBroken ? line.keyword.last : withoutBlanks(draft.text, line.line).last,
                        " #" + comment.text.substr(0, kMaxComment));
        const bool cut = comment.text.size() > kMaxComment;
        draft.took(
            Kind::kCommentMoved, comment.where,
            "the comment moved to the line of " + draft.quoted(line.keyword) +
                (cut ? " and cut to the " + std::to_string(kMaxComment) + " characters that are kept" : ""));
    }

private:
    const OutlineLine& lineNow() const { return repairs.outline.lines[next]; }

    // Also a line behind the comment's part, which ends the search.
    bool canTake(const StrayComment& comment) const {
        const OutlineLine& line = lineNow();
        const bool isFree =
            !line.hasComment && !repairs.droppedLines[next] && line.line.first >= comment.from;
        return line.part > comment.part || (line.part == comment.part && isFree);
    }

    Repairs& repairs;
    Draft& draft;
    std::size_t next = 0;
};

} // namespace

void Repairs::dropLine(int index) {
    droppedLines[static_cast<std::size_t>(index)] = true;
    draft.edits.remove({line(index).line.first, line(index).next});
}

void Repairs::dropKeyword(int index, const std::string& why) {
    const OutlineLine& dropped = line(index);
    dropLine(index);
    const Span words = {dropped.keyword.first, std::max(dropped.value.last, dropped.keyword.last)};
    draft.took(Kind::kKeywordDropped, words, "the line " + std::string(words.of(draft.text)) + ' ' + why);
    if (!withoutBlanks(draft.text, dropped.comment).empty())
        comments.push_back(
            {dropped.comment, std::string(dropped.comment.of(draft.text)), dropped.part, dropped.next});
}

void Repairs::putLine(std::size_t before, const std::string& words) {
    draft.edits.put(before, words + std::string(draft.lineEnd));
    ++addedLines;
}

std::string valueOf(const Draft& draft, const OutlineLine& line) {
    return formOf(line.value.of(draft.text)).inner;
}

void repairHeader(Repairs& repairs) {
    for (std::size_t i = 0; i < repairs.outline.lines.size(); ++i)
        repairLine(repairs, static_cast<int>(i));
    for (const int index : repairs.outline.emptyBlocks)
        repairEmptyBlock(repairs.draft, repairs.line(index));
}

void repairComments(Repairs& repairs) {
    std::vector<StrayComment>& comments = repairs.comments;
    std::stable_sort(comments.begin(), comments.end(), [](const StrayComment& a, const StrayComment& b) {
        return a.where.first < b.where.first;
    });
    CommentMover mover(repairs);
    for (const StrayComment& comment : comments)
        mover.move(comment);
}

/// KEYWORD lines that name header lines, or nothing, tell the reader nothing.
void addKeywordsOfNoColumn(Repairs& repairs) {
    std::set<std::string> columns;
    for (const TableForm& form : repairs.tables)
        for (const TableColumn& column : form.columns)
            columns.insert(column.name);
    for (std::size_t i = 0; i < repairs.outline.lines.size(); ++i) {
        const OutlineLine& line = repairs.outline.lines[i];
        if (line.word == kKeyword && columns.count(valueOf(repairs.draft, line)) == 0)
            repairs.uselessKeywords.push_back(static_cast<int>(i));
    }
}

void makeRoom(Repairs& repairs) {
    Draft& draft = repairs.draft;
    const auto& dropped = repairs.droppedLines;
    int surplus = static_cast<int>(std::count(dropped.begin(), dropped.end(), false)) + repairs.addedLines -
                  TCgats::kMaxTags;
    if (surplus > 0)
        addKeywordsOfNoColumn(repairs);
    for (auto index = repairs.uselessKeywords.begin(); surplus > 0 && index != repairs.uselessKeywords.end();
         ++index) {
        if (repairs.droppedLines[static_cast<std::size_t>(*index)])
            continue;
        repairs.dropKeyword(*index, "left out to make room: it tells nothing of any column");
        --surplus;
    }
    for (std::size_t i = repairs.outline.lines.size(); i-- > 0 && surplus > 0;) {
        if (repairs.droppedLines[i])
            continue;
        --surplus;
        const OutlineLine& line = repairs.outline.lines[i];
        draft.took(Kind::kLineNotKept, line.keyword,
                   "the line of " + draft.quoted(line.keyword) +
                       " is read, but not kept in the document: it stands behind " +
                       std::to_string(TCgats::kMaxTags) + " others");
    }
}

} // namespace qxcms::detail
