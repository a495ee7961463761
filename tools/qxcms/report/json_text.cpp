#include "tools/qxcms/report/json_text.h"

namespace qxcms::command {

std::string jsonText(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace qxcms::command
