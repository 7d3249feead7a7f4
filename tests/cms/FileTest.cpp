// Messages over files: as in memory, in a few blocks of memory, and written whole or not at all.

#include <fcntl.h>
#include <fstream>
#include <unistd.h>

#include "MessageTest.h"

using qgtk::Code;

class MessageFiles : public MessageTest
{
protected:
    void SetUp() override
    {
        MessageTest::SetUp();
        // Several blocks of each size that is worked in, and a rest.
        content = noise(300'001);
        source = file("source", content);
        message = at("message");
        encrypted = at("encrypted");
        target = at("target");
    }

    /** What the directory holds, so that nothing half-written is overlooked. */
    std::vector<std::string> names() const
    {
        std::vector<std::string> list;
        for (const auto& entry : std::filesystem::directory_iterator(directory))
            list.push_back(entry.path().filename());
        std::ranges::sort(list);
        return list;
    }

    std::string content;
    std::string source;
    std::string message;
    std::string encrypted;
    std::string target;
};
INSTANTIATE_BOTH_SIDES(MessageFiles);

TEST_P(MessageFiles, AreSignedWithTheirContent)
{
    for (const Holder* holder : {&hong(), &ecHong()}) {
        ASSERT_EQ(signFile(*holder, source, message, true), 0);
        EXPECT_EQ(cms(readFile(message), verifyOptions()), content);
        EXPECT_EQ(verify(readFile(message)).content, content) << "in memory too";
        BinString certificate(library);
        std::string time(50, '#');
        ASSERT_EQ(verifyFile(message, target, true, &certificate, time.data()), 0);
        EXPECT_EQ(readFile(target), content);
        EXPECT_EQ(certificate.bytes(), holder->certificate);
        EXPECT_EQ(std::string(time.c_str()).size(), 19U);
        EXPECT_EQ(signerCertificate(0).bytes, holder->certificate);
    }
}

TEST_P(MessageFiles, AreSignedWithoutTheirContent)
{
    for (const Holder* holder : {&hong(), &ecHong()}) {
        ASSERT_EQ(signFile(*holder, source, message, false), 0);
        EXPECT_LT(std::filesystem::file_size(message), 3000U);
        EXPECT_EQ(cms(readFile(message), verifyOptions({"-content", source})), content);
        const CommandResult certtool = run({"certtool", "--p7-verify", "--inder", "--infile", message,
                                            "--load-data", source, "--load-ca-certificate", rootFile()});
        EXPECT_EQ(certtool.status, 0) << certtool.output;
        EXPECT_EQ(verifyFile(message, source, false), 0);
        EXPECT_EQ(readFile(source), content) << "it is read alone";
        EXPECT_EQ(verifyFile(message, file("other", content + "x"), false), number(Code::SignatureWrong));
    }
}

TEST_P(MessageFiles, OfOpensslAreVerified)
{
    for (const std::vector<std::string>& form :
         {std::vector<std::string>{"-nodetach"}, {"-nodetach", "-stream"}, {"-nodetach", "-noattr"}}) {
        std::vector<std::string> arguments = {"cms",    "-sign",        "-binary",
                                              "-in",    source,         "-outform",
                                              "DER",    "-signer",      hong().certificateFile,
                                              "-inkey", hong().keyFile, "-out",
                                              message};
        arguments.insert(arguments.end(), form.begin(), form.end());
        openssl(arguments);
        ASSERT_EQ(verifyFile(message, target, true), 0) << testing::PrintToString(form);
        EXPECT_EQ(readFile(target), content);
        std::filesystem::remove(target);
    }
    openssl({"cms", "-sign", "-binary", "-in", source, "-outform", "DER", "-signer", ecHong().certificateFile,
             "-inkey", ecHong().keyFile, "-out", message});
    EXPECT_EQ(verifyFile(message, source, false), 0);
}

TEST_P(MessageFiles, TellWhereTheirContentIs)
{
    ASSERT_EQ(signFile(hong(), source, message, true), 0);
    ASSERT_EQ(signFile(hong(), source, at("bare"), false), 0);
    if (isZrtk()) {
        EXPECT_EQ(verifyFile(message, target, false), 0) << "one operation serves both";
        EXPECT_EQ(readFile(target), content);
        return;
    }
    EXPECT_EQ(verifyFile(message, source, false), number(Code::MessageKind));
    EXPECT_EQ(verifyFile(at("bare"), target, true), number(Code::ContentMissing));
    EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_P(MessageFiles, AreEncryptedWithTheirContent)
{
    for (const int cipher : {QG_CIPHER_SEED, QG_CIPHER_AES256, QG_CIPHER_ARIA256, QG_CIPHER_3DES}) {
        const std::string recipients = hong().certificate + ecKim().certificate;
        ASSERT_EQ(envelopeFile(recipients, source, cipher, message), 0);
        for (const Holder* holder : {&hong(), &ecKim()}) {
            EXPECT_EQ(cms(readFile(message), {"-decrypt", "-binary", "-recip", holder->certificateFile,
                                              "-inkey", holder->keyFile}),
                      content);
            ASSERT_EQ(openFile(*holder, message, target), 0);
            EXPECT_EQ(readFile(target), content);
        }
        EXPECT_EQ(open(hong(), readFile(message)).bytes, content) << "in memory too";
        EXPECT_EQ(openFile(kim(), message, target), number(Code::NotRecipient));
        EXPECT_EQ(readFile(target), content) << "as it was";
    }
}

TEST_P(MessageFiles, AreEncryptedApartFromTheirEnvelope)
{
    ASSERT_EQ(envelopeFiles(hong().certificate, source, QG_CIPHER_ARIA128, message, encrypted), 0);
    EXPECT_LT(std::filesystem::file_size(message), 1000U);
    EXPECT_EQ(std::filesystem::file_size(encrypted), content.size() / 16 * 16 + 16)
        << "the cipher's bare output";
    EXPECT_EQ(cms(readFile(message), {"-decrypt", "-binary", "-recip", hong().certificateFile, "-inkey",
                                      hong().keyFile, "-content", encrypted}),
              content);
    ASSERT_EQ(openFiles(hong(), message, encrypted, target), 0);
    EXPECT_EQ(readFile(target), content);
    EXPECT_EQ(openFile(hong(), message, at("none")), number(Code::ContentMissing));
    EXPECT_EQ(openFiles(kim(), message, encrypted, at("none")), number(Code::NotRecipient));
    std::filesystem::resize_file(encrypted, content.size() / 16 * 16);
    EXPECT_EQ(openFiles(hong(), message, encrypted, at("none")), number(Code::NotDecryptable));
    ASSERT_EQ(envelopeFile(hong().certificate, source, QG_CIPHER_SEED, message), 0);
    EXPECT_EQ(openFiles(hong(), message, encrypted, at("none")), number(Code::MessageKind));
    EXPECT_FALSE(std::filesystem::exists(at("none")));
}

TEST_P(MessageFiles, EnvelopeAndEncryptedContentAreTwo)
{
    std::filesystem::create_directory(at("real"));
    std::filesystem::create_directory_symlink("real", at("link"));
    for (const auto& [first, second] :
         {std::pair("message", "message"), {"message", "./message"}, {"real/message", "link/message"}})
        EXPECT_EQ(envelopeFiles(hong().certificate, source, QG_CIPHER_AES256, at(first), at(second)),
                  number(Code::BadArgument))
            << first << " " << second;
    EXPECT_EQ(names(), (std::vector<std::string>{"link", "real", "source"}));
    EXPECT_TRUE(std::filesystem::is_empty(at("real")));
}

TEST_P(MessageFiles, OfOpensslAreOpened)
{
    for (const std::vector<std::string>& form : {std::vector<std::string>{}, {"-stream"}}) {
        std::vector<std::string> arguments = {"cms",      "-encrypt", "-binary", "-in",  source,
                                              "-outform", "DER",      "-aes256", "-out", message};
        arguments.insert(arguments.end(), form.begin(), form.end());
        arguments.insert(arguments.end(), {hong().certificateFile, ecHong().certificateFile});
        openssl(arguments);
        for (const Holder* holder : {&hong(), &ecHong()}) {
            ASSERT_EQ(openFile(*holder, message, target), 0) << testing::PrintToString(form);
            EXPECT_EQ(readFile(target), content);
        }
    }
}

TEST_P(MessageFiles, OfEveryShortLengthComeBack)
{
    for (const std::size_t length : {1U, 15U, 16U, 17U, 4095U, 4096U, 4097U, 65535U, 65536U, 65537U}) {
        const std::string part = file("part", content.substr(0, length));
        ASSERT_EQ(signFile(hong(), part, message, true), 0);
        ASSERT_EQ(verifyFile(message, target, true), 0) << length;
        EXPECT_EQ(readFile(target), content.substr(0, length));
        ASSERT_EQ(envelopeFile(hong().certificate, part, QG_CIPHER_AES128, message), 0);
        ASSERT_EQ(openFile(hong(), message, target), 0) << length;
        EXPECT_EQ(readFile(target), content.substr(0, length));
    }
}

TEST_P(MessageFiles, MayBeTheirOwnTargets)
{
    ASSERT_EQ(signFile(hong(), source, source, true), 0);
    ASSERT_EQ(envelopeFile(kim().certificate, source, QG_CIPHER_SEED, source), 0);
    ASSERT_EQ(openFile(kim(), source, source), 0);
    ASSERT_EQ(verifyFile(source, source, true), 0);
    EXPECT_EQ(readFile(source), content);
}

TEST_P(MessageFiles, AreNotWrittenWhenSomethingIsWrong)
{
    ASSERT_EQ(signFile(hong(), source, message, true), 0);
    ASSERT_EQ(envelopeFile(hong().certificate, source, QG_CIPHER_AES256, encrypted), 0);
    std::string altered = readFile(message);
    altered[altered.size() / 2] ^= 1;
    file("altered", altered);
    const std::vector<std::string> before = names();
    EXPECT_EQ(verifyFile(at("altered"), target, true), number(Code::SignatureWrong));
    for (const std::string* whole : {&message, &encrypted}) {
        const std::string bytes = readFile(*whole);
        for (std::size_t length = 1; length < bytes.size(); length += length < 700 ? 13 : 9973) {
            file("altered", bytes.substr(0, length));
            ASSERT_NE(verifyFile(at("altered"), target, true), 0) << length;
            ASSERT_NE(openFile(hong(), at("altered"), target), 0) << length;
        }
        file("altered", bytes + '\0');
        EXPECT_EQ(whole == &message ? verifyFile(at("altered"), target, true)
                                    : openFile(hong(), at("altered"), target),
                  number(Code::MessageDamaged));
    }
    EXPECT_EQ(names(), before);
}

TEST_P(MessageFiles, ThatAreNoneAreRefused)
{
    ASSERT_EQ(signFile(hong(), source, message, true), 0);
    const std::vector<std::string> before = names();
    EXPECT_EQ(signFile(hong(), at("absent"), target, true), number(Code::FileMissing));
    EXPECT_EQ(signFile(hong(), directory, target, false), number(Code::FileNotRegular));
    EXPECT_EQ(signFile(hong(), source, directory, true), number(Code::FileNotRegular));
    EXPECT_EQ(signFile(hong(), source, "", true), number(Code::BadArgument));
    EXPECT_EQ(signFile(hong(), "", target, true), number(Code::BadArgument));
    EXPECT_EQ(verifyFile(at("absent"), target, true), number(Code::FileMissing));
    EXPECT_EQ(openFile(hong(), "/dev/zero", target), number(Code::FileNotRegular));
    EXPECT_EQ(openFile(hong(), message, target), number(Code::MessageKind));
    EXPECT_EQ(verifyFile(hong().keyFile, target, true), number(Code::MessageDamaged));
    EXPECT_EQ(names(), before);
    file("empty", "");
    EXPECT_EQ(signFile(hong(), at("empty"), target, true), number(Code::FileEmpty));
    EXPECT_EQ(verifyFile(at("empty"), target, true), number(Code::FileEmpty));
    EXPECT_EQ(envelopeFile(hong().certificate, at("empty"), QG_CIPHER_SEED, target), number(Code::FileEmpty));
    EXPECT_THAT(errorText(), testing::HasSubstr(at("empty")));
}

TEST_P(MessageFiles, WithTooMuchThatIsNotContentAreRefused)
{
    // A message with an authority's list of two megabytes in the place of certificates.
    const std::string rest(2 << 20, 'x');
    const std::string octets = samplepki::der::element(samplepki::der::OctetString, {rest});
    const std::string certificates = samplepki::der::context(0, octets);
    const std::string body = samplepki::der::sequence(
        {unhex("020101"), unhex("3100"), unhex("300b06092a864886f70d010701"), certificates, unhex("3100")});
    const std::string whole = samplepki::der::sequence(
        {samplepki::der::oid("1.2.840.113549.1.7.2"), samplepki::der::context(0, body)});
    EXPECT_EQ(verifyFile(file("large", whole), source, false), number(Code::MessageTooLarge));
}

TEST_P(MessageFiles, NestedTooDeepAreRefused)
{
    // Strings in strings without an end, where the content is.
    std::string nested;
    for (int i = 0; i < 1000; ++i)
        nested += unhex("2480");
    const std::string whole = unhex("308006092a864886f70d010702a0803080020101310030800609"
                                    "2a864886f70d010701a080") +
                              nested + std::string(2012, '\0');
    EXPECT_NE(verifyFile(file("nested", whole), target, true), 0);
    EXPECT_NE(openFile(hong(), at("nested"), target), 0);
    EXPECT_FALSE(std::filesystem::exists(target));
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

namespace {

/** Kilobytes that the process occupied at most since the last reset. */
long peakKilobytes()
{
    const std::string status = readFile("/proc/self/status");
    return std::stol(status.substr(status.find("VmHWM:") + 6));
}

void resetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

/** The most that an operation adds to what the process occupied before. */
template <typename Operation>
long growth(Operation&& operation)
{
    resetPeak();
    const long before = peakKilobytes();
    operation();
    return peakKilobytes() - before;
}

/** Length of a large file in MiB; QUILLGATE_LARGE_FILE asks for another one. */
off_t largeMebibytes()
{
    const char* asked = std::getenv("QUILLGATE_LARGE_FILE");
    return asked ? std::atoi(asked) : 200;
}

} // namespace

TEST_P(MessageFiles, TakeNoMoreMemoryThanAFewBlocks)
{
    constexpr long limit = 8 << 10;
    const std::string large = at("large");
    const int handle = ::open(large.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    ASSERT_EQ(::ftruncate(handle, largeMebibytes() << 20), 0);
    ::close(handle);
    EXPECT_LT(growth([&] { EXPECT_EQ(signFile(hong(), large, message, true), 0); }), limit);
    EXPECT_LT(growth([&] { EXPECT_EQ(verifyFile(message, target, true), 0); }), limit);
    EXPECT_LT(growth([&] { EXPECT_EQ(signFile(hong(), large, message, false), 0); }), limit);
    EXPECT_LT(growth([&] { EXPECT_EQ(verifyFile(message, large, false), 0); }), limit);
    const int cipher = QG_CIPHER_AES256;
    EXPECT_LT(growth([&] { EXPECT_EQ(envelopeFile(hong().certificate, large, cipher, message), 0); }), limit);
    EXPECT_LT(growth([&] { EXPECT_EQ(openFile(hong(), message, target), 0); }), limit);
    EXPECT_LT(
        growth([&] { EXPECT_EQ(envelopeFiles(hong().certificate, large, cipher, message, encrypted), 0); }),
        limit);
    EXPECT_LT(growth([&] { EXPECT_EQ(openFiles(hong(), message, encrypted, target), 0); }), limit);
    EXPECT_EQ(std::filesystem::file_size(target), std::filesystem::file_size(large));
    EXPECT_GT(growth([&] { noise(16 << 20); }), limit) << "the measurement sees what is taken";
}

#endif
