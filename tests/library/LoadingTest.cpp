// The library and both toolkits come and go in a host's process without leaving anything behind.

#include <QApplication>
#include <TestHome.h>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <quillgate/dialogs.h>
#include <quillgate/returncodes.h>
#include <string>

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif

/** The sanitizer takes a tenth of a second for a library that comes and goes. */
constexpr int rounds = sanitized ? 200 : 1000;

/** Pages of 4 KiB by which the process may grow. The sanitizer's quarantine grows with use. */
constexpr long allowedPages = sanitized ? 1 << 20 : 512;

std::size_t openDescriptors()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

long residentPages()
{
    long size = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident;
}

/** Under the sanitizer those of files alone: it maps memory of its own for every library that comes. */
std::size_t mappings()
{
    std::ifstream maps("/proc/self/maps");
    std::size_t count = 0;
    for (std::string line; std::getline(maps, line);)
        count += !sanitized || line.find('/') != std::string::npos;
    return count;
}

/** Runs an action so often and expects that the rounds after the first tenth cost nothing that stays. */
template <typename Action>
void expectNothingLeftBehind(Action action)
{
    for (int round = 0; round < rounds / 10; ++round)
        action();
    const std::size_t descriptors = openDescriptors();
    const std::size_t mapped = mappings();
    const long resident = residentPages();
    for (int round = rounds / 10; round < rounds; ++round)
        action();
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_LE(mappings(), mapped + 2);
    EXPECT_LE(residentPages(), resident + allowedPages);
}

void* load(const char* file)
{
    void* library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(library, nullptr) << dlerror();
    return library;
}

TEST(Loading, TheLibraryAloneManyTimes)
{
    expectNothingLeftBehind([] { dlclose(load(LIBRARY)); });
}

TEST(Loading, TheLibraryIsGoneFromTheProcessBehindTheLastClose)
{
    dlclose(load(LIBRARY));
    EXPECT_EQ(dlopen(LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

class LoadingToolkit : public testing::TestWithParam<int>
{};

TEST_P(LoadingToolkit, WithAContextThatIsNeverFinishedManyTimes)
{
    expectNothingLeftBehind([] {
        void* library = load(LIBRARY);
        const auto start =
            reinterpret_cast<int (*)(void**, int, char*, char*)>(dlsym(library, "ZR_Initalize"));
        const auto finish = reinterpret_cast<void (*)(void*)>(dlsym(library, "ZR_Finish"));
        void* context = nullptr;
        char directory[] = WORK_DIR;
        char name[] = "libZRToolkitV30-v3.4.2.20.so";
        EXPECT_EQ(start(&context, GetParam(), directory, name), QG_OK);
        finish(context);
        dlclose(library);
    });
}

TEST_P(LoadingToolkit, ByItselfManyTimes)
{
    const std::string file =
        std::string(WORK_DIR) + (GetParam() == 0 ? "/libZRToolkitV30-v3.4.2.20.so" : "/libgpkiapi_v15.so");
    const char* start = GetParam() == 0 ? "ZRTK_API_Init" : "GPKI_API_Init";
    expectNothingLeftBehind([&] {
        void* toolkit = load(file.c_str());
        void* context = nullptr;
        char directory[] = WORK_DIR;
        EXPECT_EQ(reinterpret_cast<int (*)(void**, char*)>(dlsym(toolkit, start))(&context, directory),
                  QG_OK);
        dlclose(toolkit);
    });
}

// Last: the library stays in the process from here on.
class LoadingBehindADialog : public testing::TestWithParam<int>
{};

TEST_P(LoadingBehindADialog, KeepsTheLibraryWhichQtHasAddressesOf)
{
    TestHome::path();
    int argc = 1;
    char name[] = "host";
    char* argv[] = {name, nullptr};
    const QApplication application(argc, argv);
    void* library = load(LIBRARY);
    const auto show = reinterpret_cast<decltype(&ShowUserCert_T)>(dlsym(library, "ShowUserCert_T"));
    const auto init = std::make_unique<INITOPT>();
    const auto filter = std::make_unique<LOADSELECTCERTOPTION>();
    const auto extra = std::make_unique<EXTRAOPTION>();
    const auto outcome = std::make_unique<SELCERTINFO>();
    // Without a work directory the dialog is made, but not shown.
    EXPECT_EQ(show(init.get(), filter.get(), nullptr, extra.get(), outcome.get()), CLPERR_NOT_STARTED);
    dlclose(library);
    EXPECT_NE(dlopen(LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Sides, LoadingToolkit, testing::Values(0, 1));
INSTANTIATE_TEST_SUITE_P(Last, LoadingBehindADialog, testing::Values(0));

} // namespace
