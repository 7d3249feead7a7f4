#include "samplepki/Media.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace samplepki {

namespace {

std::string spelled(std::string name, Spelling spelling)
{
    if (spelling == Spelling::Usual)
        return name;
    const auto fold = spelling == Spelling::Upper ? &toupper : &tolower;
    std::transform(name.begin(), name.end(), name.begin(),
                   [fold](unsigned char c) { return static_cast<char>(fold(c)); });
    return name;
}

/** MPKI/User: the directory of both MPKI forms. */
fs::path mpkiDirectory(const fs::path& root, Spelling spelling)
{
    return root / spelled("MPKI", spelling) / spelled("User", spelling);
}

[[noreturn]] void fail(const fs::path& path, int error = errno)
{
    throw fs::filesystem_error("cannot write", path, std::error_code(error, std::generic_category()));
}

/** Writes the whole of the bytes; 0 or the error number. */
int writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return errno;
        bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return 0;
}

void writePair(const FilePair& pair, const fs::path& certificate, const fs::path& key)
{
    if (!pair.certificate.empty())
        writePrivateFile(certificate, pair.certificate);
    if (!pair.key.empty())
        writePrivateFile(key, pair.key);
}

} // namespace

void makePrivateDirectory(const fs::path& path)
{
    if (path.empty() || fs::is_directory(path))
        return;
    makePrivateDirectory(path.parent_path());
    if (mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        fail(path);
}

void writePrivateFile(const fs::path& path, const Bytes& bytes)
{
    makePrivateDirectory(path.parent_path());
    const int file =
        open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    if (file < 0)
        fail(path);
    int error = writeAll(file, bytes);
    if (close(file) != 0 && error == 0)
        error = errno;
    if (error != 0)
        fail(path, error);
}

FilePair filePair(const Bytes& certificate, const KeyPair& key, const std::string& password,
                  const KeyFileForm& form)
{
    return {certificate, encryptKeyFile(key.privateKeyInfo(), password, form)};
}

fs::path writeHolderFiles(const fs::path& directory, const Holder& holder, Spelling spelling)
{
    const auto file = [&](const char* name) {
        return directory / spelled(name, spelling);
    };
    makePrivateDirectory(directory);
    writePair(holder.sign, file("signCert.der"), file("signPri.key"));
    if (holder.km)
        writePair(*holder.km, file("kmCert.der"), file("kmPri.key"));
    return directory;
}

fs::path writeFlatFiles(const fs::path& directory, const std::string& name, const Holder& holder,
                        Spelling spelling)
{
    const auto file = [&](const char* ending) {
        return directory / (name + spelled(ending, spelling));
    };
    makePrivateDirectory(directory);
    writePair(holder.sign, file("_sig.cer"), file("_sig.key"));
    if (holder.km)
        writePair(*holder.km, file("_env.cer"), file("_env.key"));
    return directory;
}

fs::path writeNpkiHolder(const fs::path& root, const std::string& caFolder, const std::string& holderFolder,
                         const Holder& holder, Spelling spelling)
{
    const fs::path users = root / spelled("NPKI", spelling) / caFolder / spelled("USER", spelling);
    return writeHolderFiles(users / holderFolder, holder, spelling);
}

fs::path writeGpkiPairs(const fs::path& root, const std::string& classFolder, const std::string& name,
                        const Holder& holder, Spelling spelling)
{
    const fs::path folder = root / spelled("GPKI", spelling) / spelled("Certificate", spelling) / classFolder;
    return writeFlatFiles(folder, name, holder);
}

fs::path writeMpkiPairs(const fs::path& root, const std::string& name, const Holder& holder,
                        Spelling spelling)
{
    return writeFlatFiles(mpkiDirectory(root, spelling), name, holder, spelling);
}

fs::path writeMpkiHolder(const fs::path& root, const std::string& holderFolder, const Holder& holder,
                         Spelling spelling)
{
    return writeHolderFiles(mpkiDirectory(root, spelling) / holderFolder, holder, spelling);
}

void writeManyHolders(const fs::path& root, const std::string& caFolder, unsigned count, bool withKm)
{
    const KeyPair& key = KeyPool::key();
    Authority authority =
        Authority::root(nameFromText("cn=yessignCA Class 1,ou=AccreditedCA,o=yessign,c=kr"), key);
    const Bytes keyFile = encryptKeyFile(key.privateKeyInfo(), "sample-password");
    for (unsigned number = 0; number < count; ++number) {
        const std::string text =
            "cn=측정용()" + std::to_string(100000000 + number) + ",ou=personal4IB,o=yessign,c=kr";
        const Request request{
            .subject = nameFromText(text), .key = key, .policies = {{"1.2.410.200005.1.1.1"}}};
        const FilePair pair{authority.issue(request), keyFile};
        writeNpkiHolder(root, caFolder, text, {pair, withKm ? std::optional(pair) : std::nullopt});
    }
}

} // namespace samplepki
