#include "CryptoTest.h"
#include "samplepki/Authority.h"

using qgtk::Code;

namespace {

struct LabelCase
{
    int type;
    const char* label;
};

constexpr LabelCase labels[] = {
    {QG_PEM_CERTIFICATE, "CERTIFICATE"},
    {QG_PEM_PRIVATE_KEY, "PRIVATE KEY"},
    {QG_PEM_ENCRYPTED_PRIVATE_KEY, "ENCRYPTED PRIVATE KEY"},
    {QG_PEM_PUBLIC_KEY, "PUBLIC KEY"},
    {QG_PEM_CERTIFICATE_REQUEST, "CERTIFICATE REQUEST"},
    {QG_PEM_CRL, "X509 CRL"},
    {QG_PEM_CMS, "CMS"},
    {QG_PEM_PKCS7, "PKCS7"},
};

/** A SEQUENCE around any bytes. */
std::string sequence(const std::string& content)
{
    const auto byte = [](std::size_t value) {
        return std::string(1, static_cast<char>(value & 0xff));
    };
    return "\x30\x82" + byte(content.size() >> 8) + byte(content.size()) + content;
}

} // namespace

class Base64 : public CryptoTest
{
protected:
    std::string program(const std::vector<std::string>& options, const std::string& input) const
    {
        std::vector<std::string> command = {"base64"};
        command.insert(command.end(), options.begin(), options.end());
        command.push_back(file("in", input));
        const CommandResult result = runCommand(command);
        EXPECT_EQ(result.status, 0);
        return result.output;
    }
};
INSTANTIATE_BOTH_SIDES(Base64);

class Pem : public CryptoTest
{
protected:
    std::string encode(int type, const std::string& der) { return give("PEM_Encode", type, der); }
    int decodeCode(const std::string& text) { return ask("PEM_Decode", text).code; }
};
INSTANTIATE_TEST_SUITE_P(Zrtk, Pem, testing::Values(zrtkSide));

TEST_P(Base64, TheProgramsReadItAndAreRead)
{
    for (std::size_t length = 1; length < 200; ++length) {
        const std::string data = noise(length, static_cast<unsigned>(length));
        const std::string encoded = give("BASE64_Encode", data);
        if (length % 40 < 3) {
            EXPECT_EQ(encoded, program({"-w", "0"}, data));
            EXPECT_EQ(program({"-d"}, encoded), data);
            openssl({"base64", "-d", "-A", "-in", file("text", encoded), "-out", at("data")});
            EXPECT_EQ(readFile(at("data")), data);
            EXPECT_EQ(give("BASE64_Decode", program({}, data)), data) << "with line ends";
        }
        EXPECT_EQ(give("BASE64_Decode", encoded), data);
    }
    const std::string large = noise(3000000);
    EXPECT_EQ(give("BASE64_Encode", large), program({"-w", "0"}, large));
}

TEST_P(Base64, WhatIsNoneIsRefused)
{
    const std::vector<std::string> faults = {
        "=", "A", "AA", "AAA", "AAAA=", "AA=A", "A===", "AAA!", "----", "AAAA-AAAA", "\x80\x80\x80\x80",
        " ", "\n"};
    for (const std::string& bad : faults)
        EXPECT_EQ(ask("BASE64_Decode", bad).code, number(Code::Base64Damaged)) << bad;
}

TEST_P(Pem, OpenSslReadsItByItsLabel)
{
    const std::string key = encode(QG_PEM_PRIVATE_KEY, ecPair().privateKey);
    openssl({"pkey", "-in", file("key", key), "-pubout", "-out", at("half")});
    EXPECT_EQ(give("PEM_Decode", readFile(at("half"))), ecPair().publicKey);
    EXPECT_EQ(encode(QG_PEM_PUBLIC_KEY, ecPair().publicKey), readFile(at("half")));
    openssl({"pkcs8", "-topk8", "-nocrypt", "-in", at("key"), "-out", at("again")});
    EXPECT_EQ(readFile(at("again")), key);
}

TEST_P(Pem, EveryLabelAndLengthComesBack)
{
    for (const LabelCase& row : labels) {
        for (std::size_t length = 256; length < 320; ++length) {
            const std::string der = sequence(noise(length, static_cast<unsigned>(length)));
            const std::string encoded = encode(row.type, der);
            EXPECT_THAT(encoded, testing::StartsWith(std::string("-----BEGIN ") + row.label + "-----\n"));
            EXPECT_THAT(encoded, testing::EndsWith(std::string("-----END ") + row.label + "-----\n"));
            EXPECT_EQ(give("PEM_Decode", encoded), der);
        }
    }
}

TEST_P(Pem, TextAroundABlockIsPassedOverAndTheFirstBlockTaken)
{
    const std::string first = encode(QG_PEM_CERTIFICATE, sequence(noise(300, 1)));
    const std::string second = encode(QG_PEM_PRIVATE_KEY, sequence(noise(300, 2)));
    EXPECT_EQ(give("PEM_Decode", "subject=someone\n" + first + "\n\n" + second + "end\n"),
              sequence(noise(300, 1)));
    std::string windows;
    for (const char c : first)
        windows += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(give("PEM_Decode", windows), sequence(noise(300, 1)));
}

TEST_P(Pem, OnlyWholeStructuresAreEncoded)
{
    const std::string der = sequence(noise(300));
    for (const std::string& bad : {std::string("data"), der + "x", der.substr(0, der.size() - 1), noise(100),
                                   std::string("\x31\x00", 2), std::string("\x30\x80\x00\x00", 4)})
        EXPECT_EQ(ask("PEM_Encode", QG_PEM_CERTIFICATE + 0, bad).code, number(Code::PemContent));
    for (const int unknown : {0, -1, 9, 100})
        EXPECT_EQ(ask("PEM_Encode", unknown, der).code, number(Code::AlgorithmCodeUnknown));
}

TEST_P(Pem, WhatIsNoneIsRefused)
{
    const std::string good = encode(QG_PEM_CERTIFICATE, sequence(noise(300)));
    for (std::size_t length = 1; length + 1 < good.size(); ++length)
        EXPECT_EQ(decodeCode(good.substr(0, length)), number(Code::PemDamaged)) << length;
    EXPECT_EQ(decodeCode("-----BEGIN X-----\n-----END X-----\n"), number(Code::PemDamaged)) << "empty";
    EXPECT_EQ(decodeCode("-----BEGIN X-----\nAAAA\n-----END Y-----\n"), number(Code::PemDamaged));
    EXPECT_EQ(decodeCode("-----BEGIN X-----\nProc-Type: 4,ENCRYPTED\n\nAAAA\n-----END X-----\n"),
              number(Code::PemDamaged))
        << "encrypted in the old way";
    EXPECT_EQ(decodeCode(noise(5000)), number(Code::PemDamaged));
}

class View : public CryptoTest
{
protected:
    std::string view(const std::string& certificate, int size)
    {
        std::string buffer(static_cast<std::size_t>(size) + 1, '#');
        EXPECT_EQ(tell("UNI_ViewCert", certificate, size, buffer.data()), 0);
        EXPECT_EQ(buffer.back(), '#') << "written behind the buffer";
        return buffer.c_str();
    }
    static std::string certificate()
    {
        using namespace samplepki;
        return Authority::root(nameFromText("cn=뿌리,o=yessign,c=kr"), KeyPool::key(KeyKind::Rsa2048, 0))
            .certificate();
    }
};
INSTANTIATE_TEST_SUITE_P(Zrtk, View, testing::Values(zrtkSide));

TEST_P(View, NamesTheFieldsThatThereAre)
{
    const std::string text = view(certificate(), 8192);
    EXPECT_THAT(text, testing::StartsWith("Version: 3\nSerial Number: "));
    EXPECT_THAT(text, testing::HasSubstr(eucKr("\nSubject: cn=뿌리,o=yessign,c=kr\n")));
    EXPECT_THAT(text, testing::HasSubstr("\nPublic Key Length: 2048 Bits\n"));
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("Extended Key Usage")));
}

TEST_P(View, IsCutToTheBuffer)
{
    EXPECT_EQ(view(certificate(), 8), "Version") << "what callers of old tell";
    EXPECT_EQ(view(certificate(), 1), "");
    char byte = '#';
    EXPECT_EQ(tell("UNI_ViewCert", certificate(), 0, &byte), number(Code::BadArgument));
    EXPECT_EQ(tell("UNI_ViewCert", certificate(), 8, static_cast<char*>(nullptr)), number(Code::BadArgument));
    EXPECT_EQ(tell("UNI_ViewCert", std::string("none"), 1, &byte), number(Code::CertDamaged));
    EXPECT_EQ(byte, '#');
}
