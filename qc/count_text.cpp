#include "qc/count_text.h"

namespace qxcms::qc {

std::string countText(std::size_t count) {
    std::string text = std::to_string(count);
    for (std::size_t end = text.size(); end > 3; end -= 3)
        text.insert(end - 3, ",");
    return text;
}

} // namespace qxcms::qc
