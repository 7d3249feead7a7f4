/* Certificates for pairs on SoftHSM's tokens, from the server of "openssl cmp". */

#include <cstdlib>

#include "CmpTest.h"
#include "TimeStampServer.h"
#include "TokenTest.h"
#include "samplepki/Extensions.h"

using qgtk::Code;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class CmpTokens : public CmpTest
{
protected:
    static constexpr const char* pin = "123456";

    void SetUp() override
    {
        tokens = TestHome::scratch("tokens").string();
        writeFile(tokens + ".conf", "directories.tokendir = " + tokens + "\nobjectstore.backend = file\n");
        setenv("SOFTHSM2_CONF", (tokens + ".conf").c_str(), 1);
        CmpTest::SetUp();
        restartWith("CONNECT_TIMEOUT=20\nTOTAL_TIMEOUT=60\nLANGUAGE=ENG\nCMP_KEY=256");
        ASSERT_EQ(call("MEDIA_Load", text(QGTK_SOFTHSM_FILE)), 0);
        const CommandResult made =
            runCommand({"env", "SOFTHSM2_CONF=" + tokens + ".conf", "softhsm2-util", "--init-token", "--free",
                        "--label", "T", "--so-pin", "87654321", "--pin", pin});
        ASSERT_EQ(made.status, 0) << made.output;
        ASSERT_EQ(logIn(), 0) << errorText();
        BinString list(library, authority.pki.ca.certificate());
        ASSERT_EQ(call("CERT_SetCaPubs", &list), 0);
    }

    int logIn() { return call("PKCS11_OpenSessionWithTokenName", text(pin), 0); }

    /** Goes on with a module that looks and fails as it is told. */
    std::shared_ptr<TokenSpy> goOnSpied()
    {
        EXPECT_EQ(call("MEDIA_Load", text(QGTK_SPY_FILE)), 0);
        const std::shared_ptr<TokenSpy> spy = spyInModule();
        EXPECT_EQ(logIn(), 0);
        return spy;
    }

    /** What another program sees on the token. */
    std::string objects()
    {
        return runCommand({"env", "SOFTHSM2_CONF=" + tokens + ".conf", "pkcs11-tool", "--module",
                           QGTK_SOFTHSM_FILE, "--login", "--pin", pin, "--list-objects"})
            .output;
    }

    static std::size_t countOf(const std::string& word, const std::string& in)
    {
        std::size_t count = 0;
        for (std::size_t at = in.find(word); at != std::string::npos; at = in.find(word, at + 1))
            ++count;
        return count;
    }

    int request(BinString& signing, BinString& management)
    {
        return call("PKCS11_CMP_CertRequest", text("127.0.0.1"), authority.port(), text(reference),
                    text(secretCode), text(idNumber), text(authority.authorityFile), &signing, &management);
    }

    int update(bool newKeys, BinString& signing, BinString& management)
    {
        return call("PKCS11_CMP_CertUpdate", text("127.0.0.1"), authority.port(), newKeys, text(idNumber),
                    text(authority.authorityFile), &signing, &management);
    }

    std::string certificateOf(BinString& id)
    {
        BinString certificate(library);
        EXPECT_EQ(call("PKCS11_ReadCert", &id, &certificate), 0);
        return certificate.bytes();
    }

    /** Writes a pair to the token. */
    void put(const Issued& pair)
    {
        BinString certificate(library, pair.certificate), key(library, pair.key);
        ASSERT_EQ(call("PKCS11_WriteCertAndPriKey", &certificate, &key), 0) << errorText();
    }

    /** That the pair with an identifier is one, and of the holder. */
    void expectPair(BinString& id)
    {
        const std::string data = "data";
        BinString message(library, data);
        BinString signature(library);
        ASSERT_EQ(call("PKCS11_Sign", &id, &message, &signature), 0) << errorText();
        BinString certificate(library, certificateOf(id));
        EXPECT_EQ(call("CRYPT_Verify", &certificate, 0, &message, &signature), 0);
        BinString random(library);
        EXPECT_EQ(call("PKCS11_ReadRandomForVID", &id, &random), 0);
        EXPECT_EQ(call("VID_Verify", &certificate, &random, text(idNumber)), 0);
    }

    std::string tokens;
};
INSTANTIATE_ZR_SIDE(CmpTokens);

TEST_P(CmpTokens, PairsAreMadeThereAndCertified)
{
    BinString signing(library, "before"), management(library, "before");
    ASSERT_EQ(request(signing, management), 0) << errorText();
    expectPair(signing);
    expectPair(management);
    EXPECT_THAT(textOf(certificateOf(signing)), HasSubstr("Digital Signature, Non Repudiation\n"));
    EXPECT_THAT(textOf(certificateOf(management)), HasSubstr("Key Agreement\n"));
    const std::string seen = objects();
    EXPECT_EQ(countOf("Certificate Object", seen), 2U) << seen;
    EXPECT_EQ(countOf("Private Key Object", seen), 2U) << seen;
    EXPECT_THAT(seen, HasSubstr("never extractable"));
    EXPECT_THAT(seen, HasSubstr(hex(signing.bytes())));
}

TEST_P(CmpTokens, OneWithoutARecordForTheOther)
{
    BinString signing(library);
    BINSTR* none = nullptr;
    ASSERT_EQ(call("PKCS11_CMP_CertRequest", text("127.0.0.1"), authority.port(), text(reference),
                   text(secretCode), text(""), text(authority.authorityFile), &signing, none),
              0)
        << errorText();
    EXPECT_EQ(countOf("Private Key Object", objects()), 1U);
}

TEST_P(CmpTokens, NothingStaysThereAfterAFailure)
{
    authority.options = [](std::size_t transaction) {
        return transaction == 1 ? std::vector<std::string>{"-pkistatus", "2"} : std::vector<std::string>{};
    };
    BinString signing(library, "before"), management(library, "before");
    EXPECT_EQ(request(signing, management), number(Code::CmpRefused));
    EXPECT_THAT(authority.bodies(),
                ElementsAre(InitialRequest, CertificateConfirm, InitialRequest, Revocation));
    EXPECT_EQ(signing.bytes() + management.bytes(), "beforebefore");
    EXPECT_THAT(objects(), Not(HasSubstr("Object")));
}

TEST_P(CmpTokens, PairsAreRenewedWithNewKeysOrTheSame)
{
    BinString signing(library), management(library);
    ASSERT_EQ(request(signing, management), 0) << errorText();
    const std::string firstIds = signing.bytes() + management.bytes();
    const std::string first = certificateOf(signing);
    authority.secret.clear();
    ASSERT_EQ(update(false, signing, management), 0) << errorText();
    EXPECT_EQ(signing.bytes() + management.bytes(), firstIds);
    EXPECT_NE(certificateOf(signing), first);
    expectPair(signing);
    expectPair(management);
    EXPECT_EQ(countOf("Certificate Object", objects()), 2U);
    ASSERT_EQ(update(true, signing, management), 0) << errorText();
    EXPECT_NE(signing.bytes() + management.bytes(), firstIds);
    expectPair(signing);
    expectPair(management);
    EXPECT_EQ(countOf("Certificate Object", objects()), 4U) << "old keys may still have to decrypt";

    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-pkistatus", "2"};
    };
    const std::string before = objects();
    const std::string ids = signing.bytes() + management.bytes();
    EXPECT_EQ(update(false, signing, management), number(Code::CmpRefused));
    EXPECT_EQ(signing.bytes() + management.bytes(), ids);
    EXPECT_EQ(objects(), before);
}

TEST_P(CmpTokens, PairsFromElsewhereMoveThere)
{
    authority.secret.clear();
    const Issued signs = issued(2, samplepki::SigningUse, "77");
    const Issued manages = issued(5, samplepki::EnvelopeUse, "78");
    const auto move = [&](bool newKeys, const std::string& signId, const std::string& manageId,
                          int option = 0) {
        BinString signCertificate(library, signs.certificate), signKey(library, signs.key);
        BinString manageCertificate(library, manages.certificate), manageKey(library, manages.key);
        BinString signing(library, signId), management(library, manageId);
        return call("PKCS11_CMP_CertUpdate2", text("127.0.0.1"), authority.port(), newKeys, option,
                    text(idNumber), text(authority.authorityFile), &signCertificate, &signKey,
                    &manageCertificate, &manageKey, &signing, &management);
    };
    ASSERT_EQ(move(true, "sign 1", "manage 1"), 0) << errorText();
    ASSERT_EQ(move(false, "sign 2", "manage 2"), 0) << errorText();
    for (const std::string id : {"sign 1", "sign 2", "manage 1"}) {
        BinString record(library, id);
        expectPair(record);
    }
    BinString same(library, "manage 2");
    BinString certificate(library, certificateOf(same));
    BinString key(library, manages.key);
    EXPECT_EQ(call("PRIKEY_CheckKeyPair", &certificate, &key), 0);
    const std::string before = objects();
    EXPECT_EQ(move(true, "sign 3", "manage 1"), number(Code::TokenObjectExists));
    EXPECT_EQ(move(false, "sign 2", "manage 3"), number(Code::TokenObjectExists));
    EXPECT_EQ(move(true, "sign 4", "manage 4", 1), number(Code::NotSupported));
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-send_error"};
    };
    EXPECT_EQ(move(false, "sign 5", "manage 5"), number(Code::CmpRefused));
    EXPECT_EQ(objects(), before);
}

TEST_P(CmpTokens, CertificatesAreRevoked)
{
    const Issued signs = issued(2, samplepki::SigningUse, "77");
    const Issued manages = issued(5, samplepki::EnvelopeUse, "78");
    put(signs);
    put(manages);
    BinString signing(library, testKey(2).identifier()), management(library, testKey(5).identifier());
    authority.secret.clear();
    const auto revoke = [&](int reason) {
        return call("PKCS11_CMP_CertRevoke", text("127.0.0.1"), authority.port(), reason, &signing,
                    &management);
    };
    ASSERT_EQ(revoke(1), 0) << errorText();
    EXPECT_EQ(askedBy(authority.request(0)).serial, serialOf(manages.certificate));
    EXPECT_EQ(askedBy(authority.request(1)).serial, serialOf(signs.certificate));
    EXPECT_EQ(revoke(7), number(Code::BadArgument));
}

TEST_P(CmpTokens, KeysThatMayNotSignGetNoNewCertificateButNewKeysDo)
{
    put(issued(2, samplepki::SigningUse, "77"));
    put(issued(5, samplepki::EnvelopeUse, "78"));
    BinString signing(library, testKey(2).identifier()), management(library, testKey(5).identifier());
    authority.secret.clear();
    const std::string before = objects();
    EXPECT_EQ(update(false, signing, management), number(Code::KeyUnsuitable));
    EXPECT_EQ(objects(), before);
    EXPECT_TRUE(authority.bodies().empty());
    ASSERT_EQ(update(true, signing, management), 0) << errorText();
    expectPair(signing);
    expectPair(management);
}

TEST_P(CmpTokens, WithoutSessionLoginOrPairNothingIsSent)
{
    BinString signing(library, "nothing"), management(library, "at all");
    EXPECT_EQ(update(true, signing, management), number(Code::TokenObjectMissing));
    EXPECT_EQ(call("PKCS11_Logout"), 0);
    EXPECT_EQ(request(signing, management), number(Code::TokenLoggedOut));
    EXPECT_EQ(update(true, signing, management), number(Code::TokenLoggedOut));
    EXPECT_EQ(call("PKCS11_CloseSession"), 0);
    EXPECT_EQ(request(signing, management), number(Code::NoTokenSession));
    EXPECT_EQ(update(false, signing, management), number(Code::NoTokenSession));
    BinString empty(library);
    EXPECT_EQ(update(false, empty, management), number(Code::BadArgument));
    EXPECT_EQ(signing.bytes() + management.bytes(), "nothingat all");
    EXPECT_TRUE(authority.bodies().empty());
}

TEST_P(CmpTokens, ATokenThatFailsAtAnyStepIsTold)
{
    const std::shared_ptr<TokenSpy> spy = goOnSpied();
    BinString signing(library), management(library);
    ASSERT_EQ(request(signing, management), 0) << errorText();
    const std::string ids = signing.bytes() + management.bytes();
    const std::string before = objects();
    spy->answer = CKR_DEVICE_REMOVED;
    const auto failAfter = [&](unsigned signatures, auto operation) {
        spy->spares = signatures;
        EXPECT_EQ(operation(), number(Code::TokenRemoved)) << signatures;
        EXPECT_THAT(errorText(), HasSubstr("C_Sign: CKR 0x00000032"));
        EXPECT_EQ(spy->spares, 0U);
    };
    BinString one(library), other(library);
    for (const unsigned signatures : {0U, 1U})
        failAfter(signatures, [&] { return request(one, other); });
    authority.secret.clear();
    // Each pair's own key proves possession, the signing pair's signs request and confirmation.
    for (unsigned signatures = 0; signatures < 6; ++signatures)
        for (const bool newKeys : {true, false})
            failAfter(signatures, [&] { return update(newKeys, signing, management); });
    for (const unsigned signatures : {0U, 1U})
        failAfter(signatures, [&] {
            return call("PKCS11_CMP_CertRevoke", text("127.0.0.1"), authority.port(), 1, &signing,
                        &management);
        });
    EXPECT_EQ(signing.bytes() + management.bytes(), ids);
    EXPECT_EQ(objects(), before);
}

TEST_P(CmpTokens, ASecondRenewalThatIsRefusedChangesNothing)
{
    BinString signing(library), management(library);
    ASSERT_EQ(request(signing, management), 0) << errorText();
    const std::string before = objects();
    const std::string ids = signing.bytes() + management.bytes();
    const std::string certificates = certificateOf(signing) + certificateOf(management);
    authority.secret.clear();
    for (const bool newKeys : {true, false}) {
        const std::size_t begun = authority.bodies().size();
        std::size_t transactions = 0;
        authority.options = [&](std::size_t) {
            return ++transactions == 2 ? std::vector<std::string>{"-pkistatus", "2"}
                                       : std::vector<std::string>{};
        };
        EXPECT_EQ(update(newKeys, signing, management), number(Code::CmpRefused));
        const std::vector<int> bodies = authority.bodies();
        EXPECT_THAT(std::vector<int>(bodies.begin() + static_cast<std::ptrdiff_t>(begun), bodies.end()),
                    ElementsAre(KeyUpdate, CertificateConfirm, KeyUpdate, Revocation));
        EXPECT_EQ(signing.bytes() + management.bytes(), ids);
        EXPECT_EQ(certificateOf(signing) + certificateOf(management), certificates);
        EXPECT_EQ(objects(), before);
    }
}

TEST_P(CmpTokens, CertificatesThatFindNoRoomAreGivenBack)
{
    const std::shared_ptr<TokenSpy> spy = goOnSpied();
    BinString signing(library, "before"), management(library, "before");
    const auto expectGivenBack = [&](int begins, auto operation) {
        const std::string before = objects();
        for (unsigned room = 0; room < 4; ++room) { // certificate and random value of each
            const std::size_t begun = authority.bodies().size();
            spy->room = room;
            EXPECT_EQ(operation(), number(Code::TokenFull)) << room;
            const std::vector<int> bodies = authority.bodies();
            EXPECT_THAT(
                std::vector<int>(bodies.begin() + static_cast<std::ptrdiff_t>(begun), bodies.end()),
                ElementsAre(begins, CertificateConfirm, begins, CertificateConfirm, Revocation, Revocation));
            EXPECT_EQ(objects(), before);
        }
    };
    expectGivenBack(InitialRequest, [&] { return request(signing, management); });
    EXPECT_EQ(signing.bytes() + management.bytes(), "beforebefore");
    spy->room = 4;
    ASSERT_EQ(request(signing, management), 0) << errorText();
    const std::string certificates = certificateOf(signing) + certificateOf(management);
    authority.secret.clear();
    for (const bool newKeys : {true, false})
        expectGivenBack(KeyUpdate, [&] { return update(newKeys, signing, management); });
    EXPECT_EQ(certificateOf(signing) + certificateOf(management), certificates);
}

TEST_P(CmpTokens, TheTimeThatATokenNeedsForKeysIsNotTheServers)
{
    BinString signing(library, "before"), management(library, "before");
    restartWith("CONNECT_TIMEOUT=1\nTOTAL_TIMEOUT=1\nLANGUAGE=ENG\nCMP_KEY=256");
    const std::shared_ptr<TokenSpy> spy = goOnSpied();
    spy->slowness = 600; // each of two
    EXPECT_EQ(call("PKCS11_CMP_CertRequest", text("127.0.0.1"), freePort(), text(reference), text(secretCode),
                   text(idNumber), text(authority.authorityFile), &signing, &management),
              number(Code::ServerUnreachable));
    EXPECT_THAT(objects(), Not(HasSubstr("Object")));
}

TEST_P(CmpTokens, WhatTheTokenCannotKeepIsNotAskedFor)
{
    BinString signing(library), management(library);
    ASSERT_EQ(request(signing, management), 0) << errorText();
    const std::size_t begun = authority.bodies().size();
    authority.secret.clear();
    const Issued signs = issued(2, samplepki::SigningUse, "77");
    const Issued manages = issued(5, samplepki::EnvelopeUse, "78");
    const auto move = [&](bool newKeys, const std::string& signId, const std::string& manageId) {
        BinString signCertificate(library, signs.certificate), signKey(library, signs.key);
        BinString manageCertificate(library, manages.certificate), manageKey(library, manages.key);
        BinString first(library, signId), second(library, manageId);
        return call("PKCS11_CMP_CertUpdate2", text("127.0.0.1"), authority.port(), newKeys, 0, text(idNumber),
                    text(authority.authorityFile), &signCertificate, &signKey, &manageCertificate, &manageKey,
                    &first, &second);
    };
    for (const bool newKeys : {true, false}) {
        EXPECT_EQ(move(newKeys, "same", "same"), number(Code::TokenObjectExists));
        EXPECT_EQ(move(newKeys, "sign", ""), number(Code::BadArgument)) << "two pairs, one identifier";
    }
    ASSERT_EQ(call("MEDIA_Load", text(QGTK_SPY_FILE)), 0);
    const std::shared_ptr<TokenSpy> spy = spyInModule();
    spy->isProtected = true;
    ASSERT_EQ(logIn(), 0);
    for (const bool newKeys : {true, false}) {
        EXPECT_EQ(update(newKeys, signing, management), number(Code::TokenReadOnly));
        EXPECT_EQ(move(newKeys, "sign", "manage"), number(Code::TokenReadOnly));
    }
    EXPECT_EQ(authority.bodies().size(), begun);
}
