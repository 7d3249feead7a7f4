// quillgate-samples: a home directory full of sample certificates, and a work directory to use them with.

#include <iostream>

#include <CLI/CLI.hpp>

#include "Report.h"
#include "Samples.h"
#include "Target.h"
#include "WorkDirectory.h"

namespace fs = std::filesystem;

namespace {

struct Arguments
{
    SampleOptions samples{.password = "quillgate1!", .days = 365};
    fs::path directory;
    fs::path workDirectory = defaultWorkDirectory();
};

void declareArguments(CLI::App& app, Arguments& arguments)
{
    // A certificate of the government's authorities counts as about to expire for its last hundred days.
    app.add_option("directory", arguments.directory, "directory to write to; made when it is not there")
        ->required();
    app.add_option("--password", arguments.samples.password, "password of the key files")
        ->capture_default_str()
        ->check([](const std::string& text) { return text.empty() ? "it can't be empty" : std::string(); });
    app.add_option("--days", arguments.samples.days, "days for which the valid certificates last from now")
        ->capture_default_str()
        ->check(CLI::Range(101, 3650));
    app.add_option("--workdir", arguments.workDirectory, "work directory to copy")
        ->capture_default_str()
        ->check(CLI::ExistingDirectory);
}

/** Writes everything; returns the holders' directories, relative to the target. */
std::vector<fs::path> writeSamples(const Arguments& arguments)
{
    Target target(arguments.directory);
    writeWorkDirectory(arguments.workDirectory, target.staging());
    const SampleSet samples = makeSamples(arguments.samples);
    std::vector<fs::path> places = writeHome(target.staging() / "home", samples);
    for (auto& place : places)
        place = fs::relative(place, target.staging());
    writeAuthorities(target.staging() / "ca", samples);
    target.publish();
    return places;
}

} // namespace

int main(int argc, char** argv)
try {
    CLI::App app{"Writes sample certificates: a home directory with NPKI, GPKI and MPKI trees (home), the "
                 "certificates "
                 "of their authorities (ca), and a complete work directory (work). Refuses a directory that "
                 "already holds "
                 "certificates.",
                 "quillgate-samples"};
    Arguments arguments;
    declareArguments(app, arguments);
    CLI11_PARSE(app, argc, argv);
    const auto places = writeSamples(arguments);
    std::cout << "Sample certificates in " << fs::absolute(arguments.directory).string() << ":\n\n";
    printReport(std::cout, arguments.samples, places);
    std::cout << "\nThese are throw-away keys: use them for trying things out alone.\n";
    return 0;
} catch (const std::exception& error) {
    std::cerr << "quillgate-samples: " << error.what() << '\n';
    return 1;
}
