// A host program: shows the certificate dialog, prints what it received and proves the key.

#include "Driver.h"
#include "Report.h"

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QTextStream>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <quillgate/dialogs.h>
#include <quillgate/records.h>
#include <string>

namespace {

struct Options
{
    std::string workDirectory;
    std::string language = "kor";
    std::string screenshots;
    std::string holder;
    std::string password;
    bool unattended = false;
    bool view = false;
};

/** Reads the command line; exits the process on --help and on errors, as CLI11 does. */
Options readOptions(int argc, char** argv)
{
    Options options;
    CLI::App app{"Shows Quillgate's certificate dialog and prints what the host receives."};
    app.add_option("--work", options.workDirectory, "Work directory: toolkits, language packs, configuration")
        ->required();
    app.add_option("--language", options.language, "Language of the dialog")
        ->check(CLI::IsMember({"kor", "eng"}));
    app.add_option("--screenshots", options.screenshots, "Directory for pictures of the windows");
    app.add_flag("--unattended", options.unattended, "Use the dialog by mouse and keyboard events");
    app.add_flag("--view", options.view, "With --unattended, open the certificate viewer first");
    app.add_option("--holder", options.holder,
                   "Text in the name of the certificate to pick, with --unattended");
    app.add_option("--password", options.password, "Password to type, with --unattended");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::exit(app.exit(error));
    }
    return options;
}

std::unique_ptr<INITOPT> makeInitOptions(const Options& options)
{
    auto init = std::make_unique<INITOPT>();
    options.workDirectory.copy(init->szWorkDir, sizeof init->szWorkDir - 1);
    init->nLanguage = options.language == "kor" ? 1 : 2;
    return init;
}

/** The records of a selection; they hold plain keys, so the outcome is wiped at the end. */
struct Selection
{
    Selection() { load->nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI | CERTTYPE_MPKI; }
    ~Selection() { explicit_bzero(outcome.get(), sizeof *outcome); }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

    std::unique_ptr<LOADSELECTCERTOPTION> load = std::make_unique<LOADSELECTCERTOPTION>();
    std::unique_ptr<EXTRAOPTION> extra = std::make_unique<EXTRAOPTION>();
    std::unique_ptr<SELCERTINFO> outcome = std::make_unique<SELCERTINFO>();
};

int run(const Options& options)
{
    const Driver driver({options.unattended, options.view, QString::fromStdString(options.holder),
                         QString::fromStdString(options.password),
                         QString::fromStdString(options.screenshots),
                         QString::fromStdString(options.language)});
    const auto init = makeInitOptions(options);
    const Selection selection;
    const int code = ShowUserCert_T(init.get(), selection.load.get(), nullptr, selection.extra.get(),
                                    selection.outcome.get());
    if (code != 0) {
        QTextStream(stdout) << (code == -1
                                    ? "No certificate was chosen.\n"
                                    : "The dialog could not start, code " + QString::number(code) + ".\n");
        return 1;
    }
    return printSelection(*selection.outcome) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
try {
    const Options options = readOptions(argc, argv);
    const QApplication application(argc, argv);
    return run(options);
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
