#pragma once

#include "CryptoTest.h"
#include "PfxSamples.h"
#include "TestAuthority.h"
#include "quillgate/toolkit_protocol.h"
#include "quillgate/toolkit_token.h"

inline constexpr const char* reference = "12345678";
inline constexpr const char* secretCode = "code 0815";
inline constexpr const char* idNumber = "990101-1234567";

/** Records of a signing and a key-management pair and of authorities' certificates. */
struct Records
{
    explicit Records(const ToolkitLibrary& library, const std::string& before = "before");

    /** Whether all are as they were made. */
    bool areUntouched() const;

    const std::string initial;
    BinString signCertificate;
    BinString signKey;
    BinString manageCertificate;
    BinString manageKey;
    BinString authorities;
};

/** A context of the main toolkit and an authority. */
class CmpTest : public CryptoTest
{
protected:
    void SetUp() override;

    /** Requests both pairs of a server. */
    int request(const std::string& host, int port, Records& records, const std::string& code = secretCode);
    int request(TestAuthority& asked, Records& records, const std::string& code = secretCode)
    {
        return request("127.0.0.1", asked.port(), records, code);
    }

    /** A pair that the authority has issued. */
    struct Issued
    {
        std::string certificate;
        std::string key;
    };
    Issued issued(unsigned keyNumber, unsigned usage, const std::string& serial);

    /** What openssl prints of a certificate. */
    std::string textOf(const std::string& certificate);

    TestAuthority authority;
};
