#include "TestHome.h"

#include <cstdlib>
#include <fstream>
#include <pwd.h>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/** Owns the temporary tree of the process. */
class Root
{
public:
    Root()
    {
        std::string pattern = (fs::temp_directory_path() / "quillgate-test-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error("mkdtemp failed");
        path = pattern;
        home = path / "home";
        fs::create_directory(home);
        writeFile(path / "passwd", "tester:x:" + std::to_string(getuid()) + ":" + std::to_string(getgid()) +
                                       "::" + home.string() + ":/bin/sh\n");
        writeFile(path / "group", "tester:x:" + std::to_string(getgid()) + ":\n");
        setenv("NSS_WRAPPER_PASSWD", (path / "passwd").c_str(), 1);
        setenv("NSS_WRAPPER_GROUP", (path / "group").c_str(), 1);
        const passwd* entry = getpwuid(getuid());
        if (!entry || home != entry->pw_dir)
            throw std::runtime_error("libnss_wrapper is not preloaded: run the tests with ctest");
    }
    ~Root() { remove(); }

    void remove() const
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }

    fs::path path;
    fs::path home;
};

Root& root()
{
    static Root instance;
    return instance;
}

} // namespace

const fs::path& TestHome::path()
{
    return root().home;
}

void TestHome::remove()
{
    root().remove();
}

void TestHome::reset()
{
    for (const auto& entry : fs::directory_iterator(path()))
        fs::remove_all(entry.path());
}

fs::path TestHome::scratch(const std::string& name)
{
    fs::path directory = root().path / name;
    fs::remove_all(directory);
    fs::create_directories(directory);
    return directory;
}

void writeFile(const fs::path& path, const std::string& bytes)
{
    if (path.has_parent_path())
        fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out)
        throw std::runtime_error("cannot write " + path.string());
}

std::string readFile(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}
