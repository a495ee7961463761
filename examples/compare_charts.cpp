#include <cstdio>

#include "qc/qc.h"

// The exit codes of the command.
static int refuse(const qxcms::qc::Refusal& refusal) {
    std::fprintf(stderr, "%s\n", refusal.what());
    switch (refusal.kind()) {
    case qxcms::qc::Refusal::Kind::usage:
        return 2;
    case qxcms::qc::Refusal::Kind::unreadable:
        return 3;
    case qxcms::qc::Refusal::Kind::notComparable:
        break;
    }
    return 4;
}

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const auto measured = qxcms::qc::openChart(argv[1]);
    const auto reference = qxcms::qc::openChart(argv[2]);
    for (const auto* file : {&measured, &reference})
        if (!*file)
            return refuse(file->refusal());
    const auto compared = qxcms::qc::compare(measured->chart(), reference->chart());
    if (!compared)
        return refuse(compared.refusal());
    for (const auto& finding : compared->findings)
        std::printf("%s\n", finding.text.c_str());
    std::printf("%zu patches paired by %s, for %s and %s\n", compared->patches.size(),
                compared->pairing.by.c_str(), compared->conditions.illuminant.value.c_str(),
                compared->conditions.observer.value.c_str());
    std::printf("%s: mean %.2f, 95th percentile %.2f, largest %.2f\n", compared->formula.name,
                compared->statistics.mean, compared->statistics.percentile95, compared->statistics.maximum);
}
