#include "qc/refusal.h"

namespace qxcms::qc {

Refusal::Refusal(Kind kind, const std::string& message) : std::runtime_error(message), why(kind) {}

Refusal::~Refusal() = default;

} // namespace qxcms::qc
