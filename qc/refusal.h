/// @file
/// Why a comparison is refused.
#pragma once

#include <stdexcept>
#include <string>

namespace qxcms::qc {

/// Thrown where a comparison cannot be made. The message is one sentence for the person who asked; file texts
/// in it are printable already.
class Refusal : public std::runtime_error {
public:
    enum class Kind {
        usage,        ///< a name or a combination of conditions that does not exist
        unreadable,   ///< data that are missing or cannot be used
        notComparable ///< two charts that do not fit each other
    };

    Refusal(Kind kind, const std::string& message);
    ~Refusal() override;

    Kind kind() const noexcept { return why; }

private:
    Kind why;
};

} // namespace qxcms::qc
