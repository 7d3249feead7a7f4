#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "samplepki/Authority.h"
#include "samplepki/KeyFile.h"

namespace samplepki {

/** A certificate file and its key file: the bytes as they go to the disk. An empty one is not written. */
struct FilePair
{
    Bytes certificate;
    Bytes key;
};

/** What one holder has on a medium: the signing pair and, with most, a key-management pair. */
struct Holder
{
    FilePair sign;
    std::optional<FilePair> km = {};
};

/** A certificate and its key, encrypted. */
FilePair filePair(const Bytes& certificate, const KeyPair& key, const std::string& password,
                  const KeyFileForm& form = {});

/** The letter case of the directories and files that a writer makes; names given by the caller stay as they
 * are. */
enum class Spelling
{
    Usual, /**< NPKI/.../USER/signCert.der, GPKI/Certificate */
    Upper, /**< NPKI/.../USER/SIGNCERT.DER, GPKI/CERTIFICATE */
    Lower, /**< npki/.../user/signcert.der, gpki/certificate */
};

/**
 * Writers of the media layout. 'root' is a home directory or the mount point of a drive. Directories are made
 * with mode 0700, files with 0600; files that exist are replaced. All return the directory that holds the
 * files and throw std::filesystem::filesystem_error when something can't be written.
 */

/** <root>/NPKI/<caFolder>/USER/<holderFolder>/signCert.der and so on. */
std::filesystem::path writeNpkiHolder(const std::filesystem::path& root, const std::string& caFolder,
                                      const std::string& holderFolder, const Holder& holder,
                                      Spelling spelling = Spelling::Usual);

/** <root>/GPKI/Certificate/<classFolder>/<name>_sig.cer and so on. A spelling changes the directories alone.
 */
std::filesystem::path writeGpkiPairs(const std::filesystem::path& root, const std::string& classFolder,
                                     const std::string& name, const Holder& holder,
                                     Spelling spelling = Spelling::Usual);

/** <root>/MPKI/User/<name>_sig.cer and so on. */
std::filesystem::path writeMpkiPairs(const std::filesystem::path& root, const std::string& name,
                                     const Holder& holder, Spelling spelling = Spelling::Usual);

/** <root>/MPKI/User/<holderFolder>/signCert.der and so on. */
std::filesystem::path writeMpkiHolder(const std::filesystem::path& root, const std::string& holderFolder,
                                      const Holder& holder, Spelling spelling = Spelling::Usual);

/** <directory>/signCert.der, signPri.key, kmCert.der, kmPri.key: the files of a holder's directory, wherever
 * it lies. */
std::filesystem::path writeHolderFiles(const std::filesystem::path& directory, const Holder& holder,
                                       Spelling spelling = Spelling::Usual);

/** <directory>/<name>_sig.cer, _sig.key, _env.cer, _env.key: the flat form, wherever it lies. */
std::filesystem::path writeFlatFiles(const std::filesystem::path& directory, const std::string& name,
                                     const Holder& holder, Spelling spelling = Spelling::Usual);

/** Makes a directory and those above it with mode 0700; those that exist stay as they are. */
void makePrivateDirectory(const std::filesystem::path& path);

/** Writes one file with mode 0600, and its directories with 0700. */
void writePrivateFile(const std::filesystem::path& path, const Bytes& bytes);

/**
 * Fills <root>/NPKI/<caFolder>/USER with so many holders, for measurements: distinct names and serial
 * numbers, one shared key and key file. The password of all is "sample-password". Ten thousand take some
 * seconds.
 */
void writeManyHolders(const std::filesystem::path& root, const std::string& caFolder, unsigned count,
                      bool withKm = false);

} // namespace samplepki
