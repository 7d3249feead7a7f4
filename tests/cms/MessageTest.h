#pragma once

#include "CryptoTest.h"
#include "TestPki.h"
#include "quillgate/message_options.h"

/** What messages say: lines that end as those of a mail, which a program that takes it for text would change.
 */
inline const std::string content = "A letter\r\nof two lines\n";

/** A certificate and its plain private key, both DER, and both in PEM files. */
struct Holder
{
    std::string certificate;
    std::string key;
    std::string certificateFile;
    std::string keyFile;
};

/** Holders below the tests' authority, made once a process: two with RSA keys, two with elliptic curves. */
const Holder& hong();
const Holder& kim();
const Holder& ecHong();
const Holder& ecKim();

/** The tests' authorities, and the root in a PEM file. */
TestPki& messagePki();
const std::string& rootFile();

/** Arguments by which `openssl cms` verifies a message up to that root, whatever the certificates are for. */
std::vector<std::string> verifyOptions(const std::vector<std::string>& more = {});

/** What a verification gave. */
struct Verified
{
    int code = -1;
    std::string content;
    int signers = -1;
};

/** The operations on messages, the sides' differences hidden. */
class MessageTest : public CryptoTest
{
protected:
    /** Sets the options of all messages that follow. */
    void setOptions(int options);

    Answer sign(const Holder& holder, const std::string& data, const std::string& time = {});
    Answer addSigner(const Holder& holder, const std::string& message);

    /** Verifies a message, which may lack what it is about. */
    Verified verify(const std::string& message, const std::string& detached = {});

    /** A signer of the last verification. */
    Answer signerCertificate(int index);
    std::string signTime(int index);

    Answer envelope(const std::string& recipients, const std::string& data, int cipher);
    Answer open(const Holder& holder, const std::string& message);

    Answer signAndEnvelope(const Holder& signer, const std::string& recipients, const std::string& data,
                           int cipher);
    Answer openSigned(const Holder& holder, const std::string& message);

    int signFile(const Holder& holder, const std::string& source, const std::string& target, bool carried);
    int verifyFile(const std::string& message, const std::string& contentFile, bool carried,
                   BINSTR* certificate = nullptr, char* time = nullptr);
    int envelopeFile(const std::string& recipients, const std::string& source, int cipher,
                     const std::string& target);
    int envelopeFiles(const std::string& recipients, const std::string& source, int cipher,
                      const std::string& target, const std::string& encrypted);
    int openFile(const Holder& holder, const std::string& message, const std::string& target);
    int openFiles(const Holder& holder, const std::string& message, const std::string& encrypted,
                  const std::string& target);

    /** Runs "openssl cms" on a DER message, which must succeed, and gives what it writes to -out. */
    std::string cms(const std::string& message, const std::vector<std::string>& arguments);

    /** Runs a program with a status that is looked at. */
    static CommandResult run(const std::vector<std::string>& arguments) { return runCommand(arguments); }
};

/** For a suite of operations that one side alone has. */
#define INSTANTIATE_ONE_SIDE(suite, side)                                                                    \
    INSTANTIATE_TEST_SUITE_P(OneInterface, suite, testing::Values(side),                                     \
                             [](const auto& test) { return test.param.name; })
