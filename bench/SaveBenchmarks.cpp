// Saving a certificate with both pairs.

#include "Session.h"

#include <TestHome.h>
#include <array>
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <quillgate/certlist.h>
#include <samplepki/Authority.h>
#include <samplepki/Media.h>
#include <unistd.h>

namespace {

constexpr char subject[] = "cn=holder,ou=personal,o=yessign,c=kr";

const samplepki::Holder& savedHolder()
{
    using namespace samplepki;
    static const samplepki::Holder made = [] {
        Authority authority =
            Authority::root(nameFromText("cn=Root,o=yessign,c=kr"), KeyPool::key(KeyKind::Rsa2048, 1));
        const Bytes certificate = authority.issue({nameFromText(subject), KeyPool::key()});
        const FilePair pair = filePair(certificate, KeyPool::key(), password);
        return samplepki::Holder{pair, pair};
    }();
    return made;
}

/** The same bytes in as many files, flushed, without a temporary name and without the directory. */
void FloorSave(benchmark::State& state)
{
    const std::filesystem::path directory = TestHome::scratch("floor-save");
    const std::array<const samplepki::Bytes*, 4> contents = {
        &savedHolder().sign.certificate, &savedHolder().sign.key, &savedHolder().km->certificate,
        &savedHolder().km->key};
    std::array<std::string, 4> paths;
    for (std::size_t i = 0; i < paths.size(); ++i)
        paths[i] = directory / std::to_string(i);
    for (auto _ : state)
        for (std::size_t i = 0; i < paths.size(); ++i) {
            const int file = open(paths[i].c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
            if (write(file, contents[i]->data(), contents[i]->size()) < 0 || fsync(file) != 0)
                state.SkipWithError("not written");
            close(file);
        }
}

void Save(benchmark::State& state)
{
    useHomeOf(10);
    const Session session(workDirectory("work"));
    // Keys that are encrypted already: what is measured is the writing.
    std::array<std::string, 4> given = {savedHolder().sign.certificate, savedHolder().sign.key,
                                        savedHolder().km->certificate, savedHolder().km->key};
    std::string words = password;
    const auto size = [](const std::string& text) {
        return static_cast<int>(text.size());
    };
    for (auto _ : state)
        if (CLP_SaveCert(session.handle(), true, words.data(), given[0].data(), size(given[0]),
                         given[1].data(), size(given[1]), given[2].data(), size(given[2]), given[3].data(),
                         size(given[3])) != 0)
            state.SkipWithError("not saved");
    std::filesystem::remove_all(TestHome::path() / "NPKI/yessign/User" / subject);
}

BENCHMARK(FloorSave)->Unit(benchmark::kMicrosecond);
BENCHMARK(Save)->Unit(benchmark::kMicrosecond);

} // namespace
