#include "tools/qxcms/command.h"

#include <cmath>
#include <limits>
#include <new>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "base/number_text.h"
#include "base/version.h"
#include "platform/default/host.h"
#include "qc/formulas.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"
#include "tools/qxcms/console.h"
#include "tools/qxcms/diff_command.h"
#include "tools/qxcms/exit_code.h"
#include "tools/qxcms/info_command.h"
#include "tools/qxcms/lint_command.h"
#include "tools/qxcms/report/text_layout.h"

namespace qxcms::command {

namespace {

constexpr std::size_t kFooterIndent = 12;

std::string exitCodesFooter() {
    return paragraph("Exit codes:", kFooterIndent,
                     "0 done, 1 a difference above the tolerance, or a file that is not clean, 2 usage, "
                     "3 unreadable input, 4 not comparable, 5 output not written or out of memory");
}

/// Keeps the library's reports off the terminal while it lives: the command tells what matters itself.
class QuietLibrary {
public:
    QuietLibrary() {
        const qxcms_report_handler dropping = {nullptr, nullptr, nullptr};
        qxcms_set_report_handler(&dropping);
    }
    QuietLibrary(const QuietLibrary&) = delete;
    QuietLibrary& operator=(const QuietLibrary&) = delete;
    ~QuietLibrary() { qxcms_set_report_handler(nullptr); }
};

/// The command line as text, before it is understood.
struct Texts {
    std::string pair = "auto";
    std::string measuredAs = "auto";
    std::string referenceAs = "auto";
    std::string table = "1";
    std::optional<std::string> referenceTable;
    std::string worst = "10";
    std::optional<std::string> tolerance;
};

std::optional<qc::ColorSource> sourceOf(const std::string& text) {
    for (const qc::ColorSource source :
         {qc::ColorSource::spectra, qc::ColorSource::lab, qc::ColorSource::xyz}) {
        if (text == qc::nameOf(source))
            return source;
    }
    return std::nullopt;
}

qc::PairChoice pairChoiceOf(const std::string& text) {
    if (text == "device")
        return qc::PairChoice::deviceValues;
    if (text == "order")
        return qc::PairChoice::order;
    return text == "auto" ? qc::PairChoice::automatic : qc::PairChoice::identifiers;
}

// "id" stands for whichever identifier pairs first.
std::string identifierOf(const std::string& text) {
    return pairChoiceOf(text) == qc::PairChoice::identifiers && text != "id" ? text : "";
}

int wholeNumberOf(const std::string& option, const std::string& text, int least) {
    const char* const last = text.data() + text.size();
    const char* end = nullptr;
    const int value = detail::parseInt(text.data(), last, &end);
    constexpr int kMost = std::numeric_limits<int>::max();
    const bool isClamped = value == kMost && detail::parseDouble(text.data(), last) > kMost;
    if (text.empty() || end != last || value < least || isClamped)
        throw qc::Refusal(qc::Refusal::Kind::usage, option + ": " + qc::quoted(text) +
                                                        " is no whole number from " + std::to_string(least) +
                                                        " to " + std::to_string(kMost));
    return value;
}

double toleranceOf(const std::string& text) {
    const char* const last = text.data() + text.size();
    const char* end = nullptr;
    const double value = detail::parseDouble(text.data(), last, &end);
    if (text.empty() || end != last || !std::isfinite(value) || value < 0.0)
        throw qc::Refusal(qc::Refusal::Kind::usage, "--tolerance: " + qc::quoted(text) +
                                                        " is no number from 0 up (with a decimal point)");
    return value;
}

// One of a few words, which the help shows once.
CLI::Option* wordOption(CLI::App& app, const std::string& name, std::string& target,
                        const std::vector<std::string>& words, const std::string& shown,
                        const std::string& description) {
    return app.add_option(name, target, description)
        ->capture_default_str()
        ->check(CLI::IsMember(words).description(""))
        ->type_name(shown);
}

// Whether and how files are brought into form.
void readingOptions(CLI::App& app, bool& strict, bool& quiet) {
    app.add_flag("--strict", strict, "read files as they stand, without bringing them into form");
    app.add_flag("--quiet", quiet, "do not list what was done to bring files into form");
}

void defineDiff(CLI::App& diff, DiffOptions& options, Texts& texts) {
    const std::vector<std::string> sources = {"auto", "spectra", "lab", "xyz"};
    diff.add_option("MEASURED", options.measured, "CGATS file of the samples")->required()->type_name("");
    diff.add_option("REFERENCE", options.reference, "CGATS file of the standards")->required()->type_name("");
    diff.add_option("--illuminant", options.comparison.illuminant,
                    "D50, D65, A, F11 ...; else what the files declare, else D50; an unknown name lists the "
                    "known ones")
        ->type_name("NAME");
    diff.add_option("--observer", options.comparison.observer,
                    "2 or 10 degree; else what the files declare, else 2 degree")
        ->type_name("NAME");
    diff.add_option("--formula", options.comparison.formula, "see below")
        ->capture_default_str()
        ->type_name("NAME");
    wordOption(diff, "--pair", texts.pair,
               {"auto", "device", "id", "order", "SampleID", "SAMPLE_ID", "SAMPLE_NAME", "SAMPLE_LOC"},
               "auto|device|id|order",
               "pair rows by device values, by identifiers (SAMPLE_ID, SAMPLE_NAME ...: by that one) or in "
               "their order");
    diff.add_flag("--force", options.comparison.force, "compare also what declares different conditions");
    wordOption(diff, "--measured-as", texts.measuredAs, sources, "auto|spectra|lab|xyz",
               "what to take from MEASURED");
    wordOption(diff, "--reference-as", texts.referenceAs, sources, "auto|spectra|lab|xyz",
               "what to take from REFERENCE");
    diff.add_option("--table", texts.table, "which table of the files to compare, counted from 1")
        ->capture_default_str()
        ->type_name("N");
    diff.add_option("--reference-table", texts.referenceTable, "which table of REFERENCE, if another one")
        ->type_name("N");
    diff.add_option("--worst", texts.worst, "how many of the worst patches to list")
        ->capture_default_str()
        ->type_name("N");
    diff.add_option("--tolerance", texts.tolerance, "exit code 1 when a difference lies above it")
        ->type_name("X");
    diff.add_flag("--json", options.json, "write JSON (docs/json.md)");
    readingOptions(diff, options.strict, options.quiet);
    diff.footer(paragraph("Formulas:", kFooterIndent, qc::knownFormulas()) + exitCodesFooter());
}

void defineInfo(CLI::App& info, InfoOptions& options) {
    info.add_option("FILE", options.files, "CGATS files")->required()->type_name("");
    info.add_flag("--json", options.json, "write JSON (docs/json.md)");
    readingOptions(info, options.strict, options.quiet);
    info.footer(exitCodesFooter());
}

void defineLint(CLI::App& lint, LintOptions& options) {
    lint.add_option("FILE", options.files, "CGATS files")->required()->type_name("");
    lint.add_option("--fix", options.fix, "write the text of the only FILE, brought into form; may be FILE")
        ->type_name("OUT");
    lint.add_flag("--json", options.json, "write JSON (docs/json.md)");
    readingOptions(lint, options.strict, options.quiet);
    lint.footer(exitCodesFooter());
}

std::string withoutSubcommand(const CLI::App& app) {
    const std::vector<std::string> words = app.remaining();
    const std::string problem =
        words.empty() ? "no subcommand" : "unknown subcommand or option " + qc::quoted(words.front());
    return problem + "; the subcommands are diff, info and lint";
}

// --help and --version arrive here too.
int answerParseError(const CLI::App& app, const CLI::ParseError& error) {
    std::ostringstream out;
    std::ostringstream ignored;
    if (app.exit(error, out, ignored) == 0)
        return print(out.str()) ? kDone : kFailed;
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    const std::string reason = chosen.empty() ? withoutSubcommand(app) : qc::printable(error.what());
    const std::string helped = chosen.empty() ? "qxcms" : "qxcms " + chosen.front()->get_name();
    complain(reason + "; \"" + helped + " --help\" tells how it is used");
    return kUsage;
}

int parseAndRun(int argc, const char* const* argv) {
    CLI::App app("Compares measured colour charts and tells what CGATS files hold.", "qxcms");
    app.set_version_flag("--version", "qxcms " QXCMS_VERSION);
    app.require_subcommand(1);
    app.footer(exitCodesFooter());
    DiffOptions diffOptions;
    Texts texts;
    InfoOptions infoOptions;
    LintOptions lintOptions;
    CLI::App* const diff = app.add_subcommand("diff", "Differences of two charts, patch by patch");
    CLI::App* const info = app.add_subcommand("info", "What files hold");
    CLI::App* const lint = app.add_subcommand("lint", "Whether files can be read, or why not");
    defineDiff(*diff, diffOptions, texts);
    defineInfo(*info, infoOptions);
    defineLint(*lint, lintOptions);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return answerParseError(app, error);
    }
    if (*info)
        return runInfo(infoOptions);
    if (*lint)
        return runLint(lintOptions);
    diffOptions.comparison.pair = pairChoiceOf(texts.pair);
    diffOptions.comparison.identifier = identifierOf(texts.pair);
    diffOptions.comparison.measuredAs = sourceOf(texts.measuredAs);
    diffOptions.comparison.referenceAs = sourceOf(texts.referenceAs);
    diffOptions.table = wholeNumberOf("--table", texts.table, 1);
    if (texts.referenceTable)
        diffOptions.referenceTable = wholeNumberOf("--reference-table", *texts.referenceTable, 1);
    diffOptions.worst = wholeNumberOf("--worst", texts.worst, 0);
    if (texts.tolerance)
        diffOptions.tolerance = toleranceOf(*texts.tolerance);
    return runDiff(diffOptions);
}

int exitCodeOf(qc::Refusal::Kind kind) {
    switch (kind) {
    case qc::Refusal::Kind::usage:
        return kUsage;
    case qc::Refusal::Kind::unreadable:
        return kUnreadable;
    case qc::Refusal::Kind::notComparable:
        return kNotComparable;
    }
    return kFailed;
}

} // namespace

int run(int argc, const char* const* argv) noexcept {
    const QuietLibrary quiet;
    try {
        return parseAndRun(argc, argv);
    } catch (const qc::Refusal& refusal) {
        complain(refusal.what());
        return exitCodeOf(refusal.kind());
    } catch (const std::bad_alloc&) {
        complain("out of memory");
        return kFailed;
    } catch (const std::exception& error) {
        complain(error.what());
        return kFailed;
    } catch (...) {
        complain("something unknown went wrong");
        return kFailed;
    }
}

} // namespace qxcms::command
