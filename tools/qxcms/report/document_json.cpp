#include "tools/qxcms/report/document_json.h"

namespace qxcms::command {

namespace {

const char* wordOf(TCgatsLiberty::Kind kind) {
    switch (kind) {
    case TCgatsLiberty::kEncoding:
        return "encoding";
    case TCgatsLiberty::kNulBytes:
        return "nulBytes";
    case TCgatsLiberty::kKeywordSpelling:
        return "keywordSpelling";
    case TCgatsLiberty::kTextBehindKeyword:
        return "textBehindKeyword";
    case TCgatsLiberty::kFreeText:
        return "freeText";
    case TCgatsLiberty::kValueQuoted:
        return "valueQuoted";
    case TCgatsLiberty::kQuoteClosed:
        return "quoteClosed";
    case TCgatsLiberty::kDoubledQuotes:
        return "doubledQuotes";
    case TCgatsLiberty::kTextBehindValue:
        return "textBehindValue";
    case TCgatsLiberty::kTooLong:
        return "tooLong";
    case TCgatsLiberty::kCommentMoved:
        return "commentMoved";
    case TCgatsLiberty::kCommentDropped:
        return "commentDropped";
    case TCgatsLiberty::kEmptyCommentBlock:
        return "emptyCommentBlock";
    case TCgatsLiberty::kKeywordDropped:
        return "keywordDropped";
    case TCgatsLiberty::kLineNotKept:
        return "lineNotKept";
    case TCgatsLiberty::kFieldCount:
        return "fieldCount";
    case TCgatsLiberty::kSampleCount:
        return "sampleCount";
    case TCgatsLiberty::kEndOfData:
        return "endOfData";
    case TCgatsLiberty::kEndOfFormat:
        return "endOfFormat";
    case TCgatsLiberty::kFormatTakenOver:
        return "formatTakenOver";
    case TCgatsLiberty::kFieldDeclared:
        return "fieldDeclared";
    case TCgatsLiberty::kFieldRenamed:
        return "fieldRenamed";
    case TCgatsLiberty::kSpectralName:
        return "spectralName";
    case TCgatsLiberty::kWavelengthRounded:
        return "wavelengthRounded";
    case TCgatsLiberty::kSpectralPairs:
        return "spectralPairs";
    case TCgatsLiberty::kSpectralScale:
        return "spectralScale";
    case TCgatsLiberty::kXyzScale:
        return "xyzScale";
    case TCgatsLiberty::kCellQuoted:
        return "cellQuoted";
    case TCgatsLiberty::kEmptyCell:
        return "emptyCell";
    case TCgatsLiberty::kNumberSpelling:
        return "numberSpelling";
    case TCgatsLiberty::kDeviceScale:
        return "deviceScale";
    case TCgatsLiberty::kNoTable:
        return "noTable";
    }
    return "";
}

} // namespace

Json failureJson(const std::optional<ReadFailure>& failure) {
    if (!failure)
        return nullptr;
    Json json = {{"code", failure->code},
                 {"message", failure->message},
                 {"detail", failure->systemError.empty() ? failure->remedy : failure->systemError},
                 {"line", nullptr},
                 {"column", nullptr},
                 {"offset", nullptr},
                 {"token", nullptr},
                 {"expected", nullptr},
                 {"remedy", failure->remedy},
                 {"excerpt", nullptr}};
    if (failure->location) {
        json["line"] = failure->location->line;
        json["column"] = failure->location->column;
        json["offset"] = failure->location->offset;
        json["token"] = failure->location->token;
        json["expected"] = failure->location->expected;
        json["excerpt"] = {failure->location->excerpt.line, failure->location->excerpt.caret};
    }
    return json;
}

Json libertiesJson(const std::vector<TCgatsLiberty>& liberties) {
    Json json = Json::array();
    for (const TCgatsLiberty& liberty : liberties)
        json.push_back({{"kind", wordOf(liberty.kind)},
                        {"line", liberty.line},
                        {"column", liberty.column},
                        {"token", liberty.token},
                        {"done", liberty.done}});
    return json;
}

} // namespace qxcms::command
