#include "KeySamples.h"
#include "TestHome.h"
#include "ToolkitLibrary.h"
#include "samplepki/Authority.h"

using namespace samplepki;
using qgtk::Code;

namespace {

/** Every getter of both sides that takes a size and a buffer. */
constexpr const char* textGetters[] = {"CERT_GetUID",
                                       "CERT_GetSerialNum",
                                       "CERT_GetSignatureAlgorithm",
                                       "CERT_GetIssuerName",
                                       "CERT_GetSubjectName",
                                       "CERT_GetSignature",
                                       "CERT_GetKeyUsage",
                                       "CERT_GetBasicConstraints",
                                       "CERT_GetCertPolicy",
                                       "CERT_GetExtKeyUsage",
                                       "CERT_GetSubjectAltName",
                                       "CERT_GetAuthKeyID",
                                       "CERT_GetSubKeyID",
                                       "CERT_GetCRLDP",
                                       "CERT_GetAIA"};

Bytes fullCertificate()
{
    Authority root = Authority::root(nameFromText("cn=r,o=o,c=kr"), KeyPool::key(KeyKind::Rsa2048, 0));
    Request request{nameFromText("cn=홍길동,ou=personal4IB,o=yessign,c=kr"),
                    KeyPool::key(KeyKind::Rsa2048, 1)};
    request.policies = {{"1.2.410.200005.1.1.4", "알림", "http://cps"}};
    request.crlPoints = {"ldap://a/b?c"};
    request.ocspUrl = "http://ocsp";
    request.identity = Identity{"홍길동", "1234561234567"};
    return root.issue(request);
}

std::string sealedKey()
{
    qgtk::KeyProtection quick;
    quick.iterations = 1;
    return std::string(qgtk::textOf(encryptKey(testCrypto(), rsaKey(), "p", quick)));
}

/** The same key with the bytes of one place replaced. */
std::string altered(std::string key, const std::string& from, const std::string& to)
{
    const std::size_t place = key.find(from);
    EXPECT_NE(place, std::string::npos);
    return key.replace(place, from.size(), to);
}

} // namespace

class Damage : public ToolkitTest
{
protected:
    int decrypt(const std::string& encrypted)
    {
        BinString key(library, encrypted);
        BinString result(library);
        return call("PRIKEY_Decrypt", text("p"), &key, &result);
    }
};
INSTANTIATE_BOTH_SIDES(Damage);

TEST_P(Damage, CertificateCutAtEveryByteIsDamaged)
{
    const Bytes whole = fullCertificate();
    ASSERT_EQ(load(whole), 0);
    for (std::size_t length = 1; length < whole.size(); ++length)
        ASSERT_EQ(load(whole.substr(0, length)), number(Code::CertDamaged)) << length;
    EXPECT_EQ(load(whole + "more"), 0) << "bytes behind a certificate do not count";
}

TEST_P(Damage, EveryChangedByteOfACertificateIsReadOrRefused)
{
    const Bytes whole = fullCertificate();
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const char flip : {char(0xFF), char(0x01), char(0x80)}) {
            Bytes changed = whole;
            changed[i] = char(changed[i] ^ flip);
            if (load(changed) != 0)
                continue;
            for (const char* getter : textGetters)
                get(getter, 300);
        }
    }
}

TEST_P(Damage, KeyCutAtEveryByteIsDamaged)
{
    const std::string whole = sealedKey();
    ASSERT_EQ(decrypt(whole), 0);
    for (std::size_t length = 1; length < whole.size(); ++length)
        ASSERT_EQ(decrypt(whole.substr(0, length)), 2000) << length;
}

TEST_P(Damage, EveryChangedByteOfAKeyIsRefusedOrRead)
{
    restartWith("MAX_ITERATIONS=100");
    const std::string whole = sealedKey();
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string changed = whole;
        changed[i] = char(changed[i] ^ 0x11);
        decrypt(changed);
    }
}

TEST_P(Damage, WhatIsNoKeyIsToldFromAWrongPassword)
{
    EXPECT_EQ(decrypt(std::string(4096, '\0')), 2000);
    EXPECT_EQ(decrypt("text"), 2000);
    EXPECT_EQ(decrypt(fullCertificate()), 2000);
    EXPECT_EQ(decrypt(std::string(qgtk::textOf(rsaKey()))), 2000) << "a key that is not encrypted";
}

TEST_P(Damage, UnusableParametersHaveTheirOwnCodes)
{
    const std::string key = sealedKey();
    const std::string aes256("\x06\x09\x60\x86\x48\x01\x65\x03\x04\x01\x2a", 11);
    EXPECT_EQ(decrypt(altered(key, aes256, std::string("\x06\x09\x60\x86\x48\x01\x65\x03\x04\x01\x7f", 11))),
              number(Code::KeyAlgorithmUnknown));
    const std::string sha256("\x06\x08\x2a\x86\x48\x86\xf7\x0d\x02\x09", 10);
    EXPECT_EQ(decrypt(altered(key, sha256, std::string("\x06\x08\x2a\x86\x48\x86\xf7\x0d\x02\x7f", 10))),
              number(Code::KeyAlgorithmUnknown));
    const std::string pbkdf2("\x06\x09\x2a\x86\x48\x86\xf7\x0d\x01\x05\x0c", 11);
    EXPECT_EQ(decrypt(altered(key, pbkdf2, std::string("\x06\x09\x2a\x86\x48\x86\xf7\x0d\x01\x05\x7f", 11))),
              number(Code::KeyAlgorithmUnknown));
    const std::string once("\x02\x01\x01\x30", 4);
    EXPECT_EQ(decrypt(altered(key, once, std::string("\x02\x01\x00\x30", 4))), number(Code::KeyParameters));
    EXPECT_EQ(decrypt(altered(key, once, std::string("\x02\x01\xff\x30", 4))), number(Code::KeyParameters));
}

TEST_P(Damage, AbsurdSaltsAndCountsAreRefusedAtOnce)
{
    const auto key = [](const std::string& salt, const std::string& count) {
        return der::sequence({der::sequence({der::oid("1.2.410.200004.1.15"),
                                             der::sequence({der::element(der::OctetString, salt),
                                                            der::element(der::Integer, count)})}),
                              der::element(der::OctetString, std::string(16, 'x'))});
    };
    EXPECT_EQ(decrypt(key("12345678", "\x08")), 2004) << "all in order but the password";
    EXPECT_EQ(decrypt(key("", "\x08")), number(Code::KeyParameters));
    EXPECT_EQ(decrypt(key(std::string(1025, 's'), "\x08")), number(Code::KeyParameters));
    EXPECT_EQ(decrypt(key("12345678", "\x7f\xff\xff\xff")), number(Code::KeyTooCostly));
    EXPECT_EQ(decrypt(key("12345678", std::string("\0\xff\xff\xff\xff", 5))), number(Code::KeyTooCostly));
    EXPECT_EQ(decrypt(key("12345678", std::string(40, '\x7f'))), number(Code::KeyTooCostly));
    EXPECT_EQ(decrypt(key("12345678", std::string(40, '\x80'))), number(Code::KeyParameters));
    const std::string count("\x4c\x4b\x41");
    EXPECT_EQ(decrypt(key("12345678", count)), number(Code::KeyTooCostly)) << "5,000,001";
}

TEST_P(Damage, CipherTextOfNoWholeBlockIsDamaged)
{
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{15}, std::size_t{17}}) {
        const std::string key = der::sequence(
            {der::sequence({der::oid("1.2.410.200004.1.4"),
                            der::sequence({der::element(der::OctetString, "12345678"), der::integer(8)})}),
             der::element(der::OctetString, std::string(length, 'x'))});
        EXPECT_EQ(decrypt(key), 2000) << length;
    }
}

TEST_P(Damage, UnknownSchemesHaveTheirOwnCode)
{
    const std::string key = der::sequence(
        {der::sequence({der::oid("1.2.840.113549.1.12.1.3"),
                        der::sequence({der::element(der::OctetString, "12345678"), der::integer(8)})}),
         der::element(der::OctetString, std::string(16, 'x'))});
    EXPECT_EQ(decrypt(key), number(Code::KeyAlgorithmUnknown));
    EXPECT_THAT(errorText(), testing::StartsWith(eucKr("개인키의 암호 알고리즘을 알 수 없습니다 (2002)")));
}

TEST_P(Damage, HostileArgumentsAreRefused)
{
    BINSTR null = {};
    unsigned char byte = 0;
    BINSTR negative{&byte, -1};
    BINSTR out = {};
    for (BINSTR* bad : {static_cast<BINSTR*>(nullptr), &null, &negative}) {
        EXPECT_EQ(call("CERT_Load", bad), number(Code::BadArgument));
        EXPECT_EQ(call("PRIKEY_Decrypt", text("p"), bad, &out), number(Code::BadArgument));
        EXPECT_EQ(call("PRIKEY_Encrypt", 64, text("p"), bad, &out), number(Code::BadArgument));
        EXPECT_EQ(call("VID_GetRandomFromPriKey", bad, &out), number(Code::BadArgument));
        EXPECT_EQ(call("BASE64_Encode", bad, &out), number(Code::BadArgument));
    }
    EXPECT_EQ(out.pData, nullptr);
    BinString key(library, sealedKey());
    EXPECT_EQ(call("PRIKEY_Decrypt", text("p"), &key, static_cast<BINSTR*>(nullptr)),
              number(Code::BadArgument));
    EXPECT_EQ(call("CERT_GetVersion", static_cast<int*>(nullptr)), number(Code::CertNotLoaded));
    void* noContexts[] = {nullptr, this, &byte};
    for (void* handle : noContexts) {
        EXPECT_EQ(library.callBare("CERT_Unload", handle), number(Code::NoContext));
        EXPECT_EQ(library.callBare("API_Finish", handle), number(Code::NoContext));
        char message[64] = {};
        EXPECT_EQ(library.callBare("API_GetErrInfo", handle, 64, +message), number(Code::NoContext));
    }
    EXPECT_EQ(library.callBare("API_Init", static_cast<void**>(nullptr), text(workDirectory)),
              number(Code::BadArgument));
    void* none = nullptr;
    EXPECT_EQ(library.callBare("API_Init", &none, static_cast<char*>(nullptr)), number(Code::BadArgument));
    EXPECT_EQ(none, nullptr);
}

TEST_P(Damage, Base64ToldFromText)
{
    const auto decode = [&](const std::string& encoded, std::string* plain = nullptr) {
        BinString source(library, encoded);
        BinString result(library);
        const int code = call("BASE64_Decode", &source, &result);
        if (plain)
            *plain = result.bytes();
        return code;
    };
    std::string plain;
    EXPECT_EQ(decode("Qk0A\r\n AQ==\n", &plain), 0);
    EXPECT_EQ(plain, std::string("BM\0\1", 4));
    BinString source(library, plain);
    BinString encoded(library);
    EXPECT_EQ(call("BASE64_Encode", &source, &encoded), 0);
    EXPECT_EQ(encoded.bytes(), "Qk0AAQ==");
    EXPECT_EQ(decode(std::string(300'000, 'A')), 0) << "one long line";
    for (const char* bad : {"Qk0", "Q", "Qk0AAQ=", "Qk0!AQ==", "====", " \r\n", "Qk0A-----", "Qk0AAQ==Qk0A"})
        EXPECT_EQ(decode(bad), number(Code::Base64Damaged)) << bad;
}
