/* Certificates that replace others, from the server of "openssl cmp". */

#include "CmpTest.h"
#include "samplepki/Extensions.h"

using qgtk::Code;
using testing::ElementsAre;
using testing::HasSubstr;

class CmpUpdates : public CmpTest
{
protected:
    void SetUp() override
    {
        CmpTest::SetUp();
        authority.secret.clear();
    }

    const Issued signing = issued(2, samplepki::SigningUse, "77");
    const Issued management = issued(5, samplepki::EnvelopeUse, "78");

    /** Records that hold both pairs. */
    struct Held
    {
        Held(const ToolkitLibrary& library, const Issued& signs, const Issued& manages)
            : signCertificate(library, signs.certificate), signKey(library, signs.key),
              manageCertificate(library, manages.certificate), manageKey(library, manages.key),
              authorities(library, "before")
        {}
        std::vector<std::string> all() const
        {
            return {signCertificate.bytes(), signKey.bytes(), manageCertificate.bytes(), manageKey.bytes(),
                    authorities.bytes()};
        }
        BinString signCertificate, signKey, manageCertificate, manageKey, authorities;
    };

    int update(Held& held, bool newKeys, const std::string& id = idNumber)
    {
        return call("CMP_CertUpdate", text("127.0.0.1"), authority.port(), newKeys, text(id),
                    text(authority.authorityFile), &held.signCertificate, &held.signKey,
                    &held.manageCertificate, &held.manageKey, &held.authorities);
    }

    /** A code, with all records as they were. */
    int failing(bool newKeys = true)
    {
        Held held(library, signing, management);
        const std::vector<std::string> before = held.all();
        const int code = update(held, newKeys);
        EXPECT_EQ(held.all(), before);
        return code;
    }
};
INSTANTIATE_ZR_SIDE(CmpUpdates);

TEST_P(CmpUpdates, GiveNewKeys)
{
    Held held(library, signing, management);
    ASSERT_EQ(update(held, true), 0) << errorText();
    EXPECT_THAT(authority.bodies(),
                ElementsAre(KeyUpdate, CertificateConfirm, KeyUpdate, CertificateConfirm));
    EXPECT_EQ(call("PRIKEY_CheckKeyPair", &held.signCertificate, &held.signKey), 0);
    EXPECT_EQ(call("PRIKEY_CheckKeyPair", &held.manageCertificate, &held.manageKey), 0);
    EXPECT_NE(held.signKey.bytes(), signing.key);
    EXPECT_NE(held.manageKey.bytes(), management.key);
    EXPECT_THAT(textOf(held.signCertificate.bytes()), HasSubstr("Digital Signature"));
    EXPECT_THAT(textOf(held.manageCertificate.bytes()), HasSubstr("Key Agreement"));
    EXPECT_EQ(held.authorities.bytes(), authority.pki.ca.certificate());
    BinString random(library);
    ASSERT_EQ(call("VID_GetRandomFromPriKey", &held.signKey, &random), 0);
    EXPECT_EQ(call("VID_Verify", &held.signCertificate, &random, text(idNumber)), 0);
}

TEST_P(CmpUpdates, KeepTheKeysUnlessNewOnesAreWanted)
{
    Held held(library, signing, management);
    ASSERT_EQ(update(held, false), 0) << errorText();
    EXPECT_EQ(held.signKey.bytes(), signing.key);
    EXPECT_EQ(held.manageKey.bytes(), management.key);
    EXPECT_NE(held.signCertificate.bytes(), signing.certificate);
    EXPECT_EQ(call("PRIKEY_CheckKeyPair", &held.signCertificate, &held.signKey), 0);
    EXPECT_EQ(call("PRIKEY_CheckKeyPair", &held.manageCertificate, &held.manageKey), 0);
}

TEST_P(CmpUpdates, KeepTheNamesOfTheHolder)
{
    samplepki::Request wanted{
        .subject = samplepki::nameFromText(leafName), .key = testKey(2), .serial = "79"};
    wanted.rfc822Name = "hong@example.com";
    wanted.identity = samplepki::Identity{.realName = "홍길동", .number = "9901011234567"};
    const Issued named{authority.pki.ca.issue(wanted), testKey(2).privateKeyInfo()};
    Held held(library, named, management);
    ASSERT_EQ(update(held, true), 0) << errorText();
    ASSERT_EQ(load(held.signCertificate.bytes()), 0);
    EXPECT_THAT(get("CERT_GetSubjectAltName"),
                testing::AllOf(HasSubstr("hong@example.com"), HasSubstr(eucKr("realName: 홍길동"))));
    ASSERT_EQ(load(named.certificate), 0);
    EXPECT_THAT(get("CERT_GetSubjectAltName"), HasSubstr(eucKr("realName: 홍길동")));
}

TEST_P(CmpUpdates, APairGivenAsBothIsRenewedOnce)
{
    Held held(library, signing, signing);
    ASSERT_EQ(update(held, true), 0) << errorText();
    EXPECT_THAT(authority.bodies(), ElementsAre(KeyUpdate, CertificateConfirm));
    EXPECT_NE(held.signKey.bytes(), signing.key);
    EXPECT_EQ(held.manageKey.bytes(), held.signKey.bytes());
    EXPECT_EQ(held.manageCertificate.bytes(), held.signCertificate.bytes());
}

TEST_P(CmpUpdates, TakeAndGiveLists)
{
    const std::string signs("\x04\x01\x01");
    const std::string manages("\x04\x01\x02");
    const auto ask = [&](BinString& types, BinString& certificates, BinString& keys) {
        BinString authorities(library);
        return call("CMP_CertUpdate2", text("127.0.0.1"), authority.port(), true, text(idNumber),
                    text(authority.authorityFile), &types, &certificates, &keys, &authorities);
    };
    BinString types(library, signs + manages);
    BinString certificates(library, signing.certificate + management.certificate);
    BinString keys(library, signing.key + management.key);
    ASSERT_EQ(ask(types, certificates, keys), 0) << errorText();
    EXPECT_EQ(types.bytes(), signs + manages);
    for (int i = 0; i < 2; ++i) {
        BinString certificate(library), key(library);
        ASSERT_EQ(call("UTIL_GetObject", &certificates, i, &certificate), 0);
        ASSERT_EQ(call("UTIL_GetObject", &keys, i, &key), 0);
        EXPECT_EQ(call("PRIKEY_CheckKeyPair", &certificate, &key), 0);
        EXPECT_THAT(textOf(certificate.bytes()), HasSubstr(i == 0 ? "Digital Signature" : "Key Agreement"));
    }
    BinString one(library, manages);
    EXPECT_EQ(ask(one, certificates, keys), number(Code::BadArgument)) << "lists of different length";
    EXPECT_EQ(one.bytes(), manages);
    BinString damaged(library, signs + manages + "x");
    EXPECT_EQ(ask(damaged, certificates, keys), number(Code::ListDamaged));
}

TEST_P(CmpUpdates, AServerThatTheAuthorityHasNotMadeOneIsNotBelieved)
{
    authority.serverCertificate = issued(4, samplepki::SigningUse, "80").certificate;
    authority.serverKey = testKey(4);
    EXPECT_EQ(failing(), number(Code::CmpUntrusted)) << "a holder's certificate";
    samplepki::Authority foreign =
        samplepki::Authority::root(samplepki::nameFromText("cn=Other"), testKey(6));
    authority.serverCertificate = foreign.certificate();
    authority.serverKey = testKey(6);
    EXPECT_EQ(failing(), number(Code::CmpUntrusted)) << "another authority";
    authority.serverCertificate = authority.pki.ca.certificate();
    authority.serverKey = authority.pki.ca.key();
    Held held(library, signing, management);
    EXPECT_EQ(update(held, true), 0) << "the authority itself: " << errorText();
}

TEST_P(CmpUpdates, RefusalsChangeNothing)
{
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-pkistatus", "2"};
    };
    EXPECT_EQ(failing(), number(Code::CmpRefused));
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-send_error"};
    };
    EXPECT_EQ(failing(), number(Code::CmpRefused));
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-send_unprotected"};
    };
    EXPECT_EQ(failing(), number(Code::CmpUntrusted));
    authority.options = nullptr;
    authority.bend = [](Asked& asked) {
        asked.publicKey = testKey(7).publicKeyInfo();
    };
    EXPECT_EQ(failing(), number(Code::CmpCertificateOther));
}

TEST_P(CmpUpdates, TheFirstCertificateIsGivenBackWhenTheSecondIsRefused)
{
    authority.options = [](std::size_t transaction) {
        return transaction == 1 ? std::vector<std::string>{"-pkistatus", "2"} : std::vector<std::string>{};
    };
    EXPECT_EQ(failing(), number(Code::CmpRefused));
    EXPECT_THAT(authority.bodies(), ElementsAre(KeyUpdate, CertificateConfirm, KeyUpdate, Revocation));
}

TEST_P(CmpUpdates, PairsOfNoUseAreNotSent)
{
    const Issued damaged{signing.certificate.substr(0, 99), signing.key};
    const Issued mixed{signing.certificate, management.key};
    const Issued keyless{signing.certificate, noise(200)};
    Held first(library, damaged, management);
    EXPECT_EQ(update(first, true), number(Code::CertDamaged));
    Held second(library, mixed, management);
    EXPECT_EQ(update(second, true), number(Code::KeyMismatch));
    Held third(library, signing, mixed);
    EXPECT_EQ(update(third, true), number(Code::KeyMismatch));
    Held fourth(library, keyless, management);
    EXPECT_EQ(update(fourth, true), number(Code::KeyNotPlain));
    EXPECT_EQ(fourth.signKey.bytes(), keyless.key);
    EXPECT_TRUE(authority.bodies().empty());
}

/* Certificates that are revoked. */

class CmpRevocations : public CmpUpdates
{
protected:
    void SetUp() override
    {
        CmpUpdates::SetUp();
        BinString list(library, authority.pki.ca.certificate());
        ASSERT_EQ(call("CERT_SetCaPubs", &list), 0);
    }

    int revoke(const Issued& signs, const Issued& manages, int reason = 5)
    {
        Held held(library, signs, manages);
        return call("CMP_CertRevoke", text("127.0.0.1"), authority.port(), reason, &held.signCertificate,
                    &held.signKey, &held.manageCertificate, &held.manageKey);
    }
};
INSTANTIATE_ZR_SIDE(CmpRevocations);

TEST_P(CmpRevocations, EndBothCertificates)
{
    ASSERT_EQ(revoke(signing, management), 0) << errorText();
    EXPECT_THAT(authority.bodies(), ElementsAre(Revocation, Revocation));
    EXPECT_EQ(askedBy(authority.request(0)).serial, serialOf(management.certificate));
    EXPECT_EQ(askedBy(authority.request(1)).serial, serialOf(signing.certificate)) << "who signs goes last";
    const std::string reasonExtension = samplepki::fromHex("0603551d1504030a0105");
    EXPECT_THAT(authority.request(0), HasSubstr(reasonExtension));
}

TEST_P(CmpRevocations, ACertificateGivenTwiceGoesOnce)
{
    EXPECT_EQ(revoke(signing, signing), 0) << errorText();
    EXPECT_THAT(authority.bodies(), ElementsAre(Revocation));
}

TEST_P(CmpRevocations, TakeLists)
{
    BinString types(library, std::string("\x04\x01\x01"));
    BinString certificates(library, signing.certificate);
    BinString keys(library, signing.key);
    const auto ask = [&](int reason) {
        return call("CMP_CertRevoke2", text("127.0.0.1"), authority.port(), reason, &types, &certificates,
                    &keys);
    };
    EXPECT_EQ(ask(-1), 0) << errorText();
    EXPECT_EQ(askedBy(authority.request(0)).serial, serialOf(signing.certificate));
    BinString both(library, std::string("\x04\x01\x01\x04\x01\x02"));
    BinString twice(library, signing.certificate + signing.certificate);
    BinString twiceKeys(library, signing.key + signing.key);
    EXPECT_EQ(call("CMP_CertRevoke2", text("127.0.0.1"), authority.port(), 1, &both, &twice, &twiceKeys), 0)
        << errorText();
    EXPECT_THAT(authority.bodies(), ElementsAre(Revocation, Revocation)) << "one for each call";
    for (const int reason : {-2, 7, 11})
        EXPECT_EQ(ask(reason), number(Code::BadArgument)) << reason;
    BinString empty(library);
    EXPECT_EQ(call("CMP_CertRevoke2", text("127.0.0.1"), authority.port(), 1, &types, &certificates, &empty),
              number(Code::BadArgument));
}

TEST_P(CmpRevocations, RefusalsAreTold)
{
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-pkistatus", "2"};
    };
    EXPECT_EQ(revoke(signing, management), number(Code::CmpRefused));
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-send_error"};
    };
    EXPECT_EQ(revoke(signing, management), number(Code::CmpRefused));
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-send_unprotected"};
    };
    EXPECT_EQ(revoke(signing, management), number(Code::CmpUntrusted));
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-pkistatus", "2", "-send_unprot_err"};
    };
    EXPECT_EQ(revoke(signing, management), number(Code::CmpUntrusted)) << "a refusal that anybody can send";
    authority.options = nullptr;
    const Issued mixed{signing.certificate, management.key};
    const Issued damaged{noise(200), management.key};
    EXPECT_EQ(revoke(mixed, management), number(Code::KeyMismatch));
    EXPECT_EQ(revoke(damaged, management), number(Code::CertDamaged));
}

TEST_P(CmpRevocations, NeedTheIssuer)
{
    ASSERT_EQ(call("CERT_FreeCaPubs"), 0);
    EXPECT_EQ(revoke(signing, management), number(Code::IssuerMissing));
    EXPECT_TRUE(authority.bodies().empty());
}
