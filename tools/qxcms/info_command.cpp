#include "tools/qxcms/info_command.h"

#include "tools/qxcms/console.h"
#include "tools/qxcms/document_file.h"
#include "tools/qxcms/exit_code.h"
#include "tools/qxcms/report/info_json.h"
#include "tools/qxcms/report/info_text.h"

namespace qxcms::command {

int runInfo(const InfoOptions& options) {
    int code = kDone;
    std::vector<DocumentFile> files;
    for (const std::string& name : options.files) {
        DocumentFile file = readDocument(name, options.strict ? Reading::asItStands : Reading::intoForm);
        warnOfDoubts(file);
        if (!options.json && !options.quiet)
            noteLiberties(file);
        if (file.failure)
            code = kUnreadable;
        if (options.json)
            files.push_back(std::move(file));
        else if (!print(infoText(file)))
            return kFailed;
    }
    if (options.json && !print(infoJson(files)))
        return kFailed;
    return code;
}

} // namespace qxcms::command
