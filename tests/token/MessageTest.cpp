// Messages with the keys of a token: what it signs and opens, others read and write.

#include <dlfcn.h>
#include <memory>
#include <openssl/crypto.h>
#include <openssl/provider.h>

#include "TokenTest.h"

using qgtk::Code;
using testing::HasSubstr;

/** A token with the pairs of hong() and ecHong(). */
class TokenMessage : public TokenTest
{
protected:
    void SetUp() override
    {
        TokenTest::SetUp();
        makeOpenToken();
        rsaId = put(hong());
        curveId = put(ecHong());
    }

    /** Writes a pair and gives its identifier. */
    std::string put(const Holder& holder)
    {
        EXPECT_EQ(write({holder.certificate, holder.key}), 0);
        return idOf(holder.certificate);
    }

    /** Ends every session on the token behind our back, as pulling it out does. */
    void endSessions()
    {
        const std::unique_ptr<void, int (*)(void*)> module(dlopen(QGTK_SOFTHSM_FILE, RTLD_NOW), dlclose);
        const auto close = reinterpret_cast<CK_C_CloseAllSessions>(dlsym(module.get(), "C_CloseAllSessions"));
        ASSERT_EQ(close(slots().front()), CKR_OK);
    }

    /** Deletes one object of a pair. */
    void drop(const std::string& kind, const std::string& id)
    {
        ASSERT_THAT(asUser("--delete-object --type " + kind + " --id " + hex(id)),
                    testing::Not(HasSubstr("failed")));
        reopen();
    }

    /** SoftHSM shows what others change to new sessions. */
    void reopen()
    {
        ASSERT_EQ(token("CloseSession"), 0);
        ASSERT_EQ(open(slots().front()), 0);
    }

    std::string rsaId;
    std::string curveId;
};
INSTANTIATE_BOTH_SIDES(TokenMessage);

class ZrtkTokenMessage : public TokenMessage
{
protected:
    /** What SignAndEnvData gives; "code ..." when it fails. */
    std::string signAndSeal(const std::string& id, const std::string& recipient, const std::string& data)
    {
        const Answer answer = ask("PKCS11_SignAndEnvData", id, recipient, data);
        return answer.code == 0 ? answer.bytes : "code " + std::to_string(answer.code);
    }

    /** What VerifyAndDecData gives; a failure leaves both outputs as they were. */
    std::string openSealed(const std::string& id, const std::string& message)
    {
        BinString signer(library, "as it was");
        BinString opened(library, "as it was");
        Passed<std::string> key(id);
        Passed<std::string> input(message);
        const int code = token("VerifyAndDecData", key.get(), input.get(), &opened, &signer);
        if (code == 0)
            return opened.bytes();
        EXPECT_EQ(opened.bytes(), "as it was");
        EXPECT_EQ(signer.bytes(), "as it was");
        return "code " + std::to_string(code);
    }

    /** An envelope that shows when it is opened with a wrong key; others do so nearly always. */
    std::string authenticated() { return sealedByOpenssl(hong(), {"-aes-256-gcm"}); }

    /** What each of the operations on a pair answers. */
    std::vector<std::string> answers(const std::string& id)
    {
        return {read("SignData", id, content), read("SignData_NoContent", id, content),
                read("DecryptData", id, sealed), signAndSeal(id, kim().certificate, content),
                openSealed(id, both)};
    }

    void SetUp() override
    {
        TokenMessage::SetUp();
        sealed = envelope(hong().certificate + ecHong().certificate, content, QG_CIPHER_AES128).bytes;
        both = signAndEnvelope(ecKim(), hong().certificate, content, QG_CIPHER_AES128).bytes;
    }
    std::string sealed;
    std::string both;

    /** An envelope that openssl makes. */
    std::string sealedByOpenssl(const Holder& holder, const std::vector<std::string>& options)
    {
        std::vector<std::string> arguments = {
            "cms",      "-encrypt", "-binary", "-in",       file("content", content),
            "-outform", "DER",      "-out",    at("sealed")};
        arguments.insert(arguments.end(), {"-recip", holder.certificateFile});
        arguments.insert(arguments.end(), options.begin(), options.end());
        openssl(arguments);
        return readFile(at("sealed"));
    }
};
INSTANTIATE_ZR_SIDE(ZrtkTokenMessage);

TEST_P(TokenMessage, SignedOnTheTokenIsVerifiedByOpenssl)
{
    for (const int hash : {QG_HASH_SHA1, QG_HASH_SHA224, QG_HASH_SHA256, QG_HASH_SHA384, QG_HASH_SHA512}) {
        ASSERT_EQ(call("API_SetHashAlgo", hash), 0);
        for (const Holder* holder : {&hong(), &ecHong()}) {
            const std::string message = read("SignData", holder == &hong() ? rsaId : curveId, content);
            EXPECT_EQ(cms(message, verifyOptions()), content) << hash;
            EXPECT_EQ(verify(message).content, content) << hash;
            EXPECT_EQ(signerCertificate(0).bytes, holder->certificate);
            EXPECT_NE(signTime(0), "");
        }
    }
}

TEST_P(TokenMessage, OptionsOfMessagesHold)
{
    setOptions(QG_CMS_DETACHED);
    const std::string message = read("SignData", curveId, content);
    EXPECT_EQ(message.find("A letter"), std::string::npos);
    EXPECT_EQ(verify(message, content).code, 0);
    EXPECT_EQ(verify(message, content + "!").code, number(Code::SignatureWrong));
    setOptions(QG_CMS_NO_ATTRIBUTES);
    for (const std::string& id : {rsaId, curveId})
        EXPECT_EQ(cms(read("SignData", id, content), verifyOptions()), content);
    setOptions(QG_CMS_NO_CERTIFICATES);
    EXPECT_EQ(verify(read("SignData", rsaId, content)).code, number(Code::SignerCertMissing));
}

TEST_P(TokenMessage, SigningRefusesWhatIsMissing)
{
    const int bad = number(Code::BadArgument);
    const BINSTR none = {};
    const auto nothing = static_cast<BINSTR*>(nullptr);
    BinString id(library, rsaId);
    BinString data(library, content);
    EXPECT_EQ(token("SignData", nothing, &data, &data), bad);
    EXPECT_EQ(token("SignData", &none, &data, &data), bad);
    EXPECT_EQ(token("SignData", &id, nothing, &data), bad);
    EXPECT_EQ(token("SignData", &id, &none, &data), bad);
    EXPECT_EQ(token("SignData", &id, &data, nothing), bad);
    EXPECT_EQ(data.bytes(), content);
    EXPECT_EQ(read("SignData", "none", content), refused(Code::TokenObjectMissing));
    ASSERT_EQ(call("API_SetHashAlgo", QG_HASH_SHA3_256 + 0), 0);
    EXPECT_EQ(read("SignData", curveId, content), refused(Code::KeyUnsuitable)) << "SHA-3 is for RSA";
    EXPECT_EQ(verify(read("SignData", rsaId, content)).code, 0);
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_EQ(read("SignData", rsaId, content), refused(Code::TokenLoggedOut));
    ASSERT_EQ(token("CloseSession"), 0);
    EXPECT_EQ(read("SignData", rsaId, content), refused(Code::NoTokenSession));
}

TEST_P(ZrtkTokenMessage, SignsWithPssByBareRsa)
{
    ASSERT_EQ(call("CRYPT_SetRSAVersion", int(QG_RSA_V2)), 0);
    for (const int options : {0, int(QG_CMS_NO_ATTRIBUTES)}) {
        setOptions(options);
        const std::string message = read("SignData", rsaId, content);
        EXPECT_THAT(run({"openssl", "cms", "-cmsout", "-print", "-noout", "-inform", "DER", "-in",
                         file("message", message)})
                        .output,
                    HasSubstr("rsassaPss"));
        EXPECT_EQ(cms(message, verifyOptions()), content);
    }
}

TEST_P(ZrtkTokenMessage, WithoutItsContentIsVerifiedAgainstIt)
{
    for (const std::string& id : {rsaId, curveId}) {
        const std::string message = read("SignData_NoContent", id, content);
        EXPECT_EQ(message.find("A letter"), std::string::npos);
        EXPECT_EQ(cms(message, verifyOptions({"-content", file("content", content)})), content);
        EXPECT_EQ(verify(message, content).code, 0);
    }
}

TEST_P(ZrtkTokenMessage, EnvelopesOfOpensslAreOpened)
{
    for (const std::string cipher : {"-aes128", "-aes-256-cbc", "-des3", "-aes-256-gcm"}) {
        EXPECT_EQ(read("DecryptData", rsaId, sealedByOpenssl(hong(), {cipher})), content) << cipher;
        EXPECT_EQ(read("DecryptData", curveId, sealedByOpenssl(ecHong(), {cipher})), content) << cipher;
    }
    EXPECT_EQ(read("DecryptData", rsaId,
                   sealedByOpenssl(hong(), {"-aes128", "-keyopt", "rsa_padding_mode:oaep", "-keyopt",
                                            "rsa_oaep_md:sha512"})),
              content);
}

TEST_P(ZrtkTokenMessage, OwnEnvelopesAreOpened)
{
    for (const int version : {int(QG_RSA_V15), int(QG_RSA_V2)}) {
        ASSERT_EQ(call("CRYPT_SetRSAVersion", version), 0);
        const std::string message =
            envelope(kim().certificate + hong().certificate + ecHong().certificate, content, QG_CIPHER_SEED)
                .bytes;
        EXPECT_EQ(read("DecryptData", rsaId, message), content);
        EXPECT_EQ(read("DecryptData", curveId, message), content);
    }
}

TEST_P(ZrtkTokenMessage, SignedAndEnvelopedGoesBothWays)
{
    for (const Holder* holder : {&hong(), &ecHong()}) {
        const std::string message =
            signAndSeal(holder == &hong() ? rsaId : curveId, kim().certificate, content);
        EXPECT_EQ(openSigned(kim(), message).bytes, content);
        EXPECT_EQ(signerCertificate(0).bytes, holder->certificate);
    }
    BinString key(library, rsaId);
    BinString message(library, both);
    BinString opened(library);
    BinString signer(library);
    ASSERT_EQ(token("VerifyAndDecData", &key, &message, &opened, &signer), 0);
    EXPECT_EQ(opened.bytes(), content);
    EXPECT_EQ(signer.bytes(), ecKim().certificate);
    EXPECT_EQ(token("VerifyAndDecData", &key, &message, &opened, static_cast<BINSTR*>(nullptr)), 0);
}

TEST_P(ZrtkTokenMessage, AnOpenedMessageIsWhole)
{
    std::string altered = both;
    altered.back() ^= 1; // of the signature
    EXPECT_EQ(openSealed(rsaId, altered), refused(Code::SignatureWrong));
    for (const std::string& message : {sealed, both})
        for (std::size_t length = 1; length < message.size(); length += 97) {
            const std::string cut = message.substr(0, length);
            EXPECT_THAT(read("DecryptData", rsaId, cut), refused(Code::MessageDamaged));
            EXPECT_THAT(openSealed(rsaId, cut), refused(Code::MessageDamaged));
        }
    std::string otherKey = authenticated();
    const std::size_t encryptedKey = otherKey.find(unhex("04820100"));
    ASSERT_NE(encryptedKey, std::string::npos);
    otherKey[encryptedKey + 100] ^= 1;
    EXPECT_EQ(read("DecryptData", rsaId, otherKey), refused(Code::NotDecryptable));
    EXPECT_EQ(read("DecryptData", rsaId, sealed), content) << "no failure leaves the session busy";
}

TEST_P(ZrtkTokenMessage, WhatIsNoSuchMessageIsRefused)
{
    EXPECT_EQ(read("DecryptData", rsaId, noise(1000)), refused(Code::MessageDamaged));
    EXPECT_EQ(openSealed(rsaId, noise(1000)), refused(Code::MessageDamaged));
    EXPECT_EQ(read("DecryptData", rsaId, both), refused(Code::MessageKind));
    EXPECT_EQ(openSealed(rsaId, envelope(hong().certificate, content, QG_CIPHER_AES128).bytes),
              refused(Code::MessageKind));
    EXPECT_EQ(read("DecryptData", rsaId, read("SignData", rsaId, content)), refused(Code::MessageKind));
    EXPECT_EQ(read("DecryptData", rsaId, hong().certificate), refused(Code::MessageDamaged));
    const std::string forKim = envelope(kim().certificate, content, QG_CIPHER_AES128).bytes;
    EXPECT_EQ(read("DecryptData", rsaId, forKim), refused(Code::NotRecipient));
    EXPECT_EQ(openSealed(curveId, both), refused(Code::NotRecipient));
    EXPECT_EQ(signAndSeal(rsaId, "text", content), refused(Code::CertListDamaged));
    EXPECT_EQ(signAndSeal(rsaId, ecKim().certificate, content), refused(Code::KeyUnsuitable));
}

TEST_P(ZrtkTokenMessage, MissingArgumentsChangeNothing)
{
    const int bad = number(Code::BadArgument);
    const BINSTR none = {};
    BinString result(library, "as it was");
    BinString id(library, rsaId);
    BinString data(library, content);
    const auto nothing = static_cast<BINSTR*>(nullptr);
    for (const char* operation : {"SignData", "SignData_NoContent", "DecryptData"}) {
        EXPECT_EQ(token(operation, nothing, &data, &result), bad) << operation;
        EXPECT_EQ(token(operation, &none, &data, &result), bad) << operation;
        EXPECT_EQ(token(operation, &id, nothing, &result), bad) << operation;
        EXPECT_EQ(token(operation, &id, &none, &result), bad) << operation;
        EXPECT_EQ(token(operation, &id, &data, nothing), bad) << operation;
    }
    for (const char* operation : {"SignAndEnvData", "VerifyAndDecData"}) {
        EXPECT_EQ(token(operation, nothing, &data, &data, &result), bad) << operation;
        EXPECT_EQ(token(operation, &id, nothing, &data, &result), bad) << operation;
    }
    EXPECT_EQ(token("SignAndEnvData", &id, &data, nothing, &result), bad);
    EXPECT_EQ(token("SignAndEnvData", &id, &data, &data, nothing), bad);
    EXPECT_EQ(token("VerifyAndDecData", &id, &data, nothing, &result), bad);
    EXPECT_EQ(result.bytes(), "as it was");
}

TEST_P(ZrtkTokenMessage, NeedTheUserAndASession)
{
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_THAT(answers(rsaId), testing::Each(refused(Code::TokenLoggedOut)));
    ASSERT_EQ(token("Login", text("999999")), number(Code::WrongPin));
    EXPECT_THAT(answers(rsaId), testing::Each(refused(Code::TokenLoggedOut)));
    ASSERT_EQ(token("CloseSession"), 0);
    EXPECT_THAT(answers(rsaId), testing::Each(refused(Code::NoTokenSession)));
    ASSERT_EQ(open(slots().front()), 0);
    EXPECT_EQ(read("DecryptData", rsaId, sealed), content);
    endSessions();
    EXPECT_THAT(answers(rsaId), testing::Each(refused(Code::TokenRemoved)));
}

TEST_P(ZrtkTokenMessage, NeedKeyAndCertificate)
{
    EXPECT_THAT(answers("no such"), testing::Each(refused(Code::TokenObjectMissing)));
    drop("pubkey", rsaId);
    drop("pubkey", curveId);
    EXPECT_EQ(verify(read("SignData", rsaId, content)).code, 0) << "the certificate has the public key too";
    EXPECT_EQ(verify(read("SignData", curveId, content)).code, 0);
    EXPECT_EQ(read("DecryptData", curveId, sealed), content);
    EXPECT_EQ(openSealed(rsaId, both), content);
    drop("cert", rsaId);
    EXPECT_THAT(answers(rsaId), testing::Each(refused(Code::TokenObjectMissing)));
    drop("privkey", curveId);
    EXPECT_EQ(read("SignData", curveId, content), refused(Code::TokenObjectMissing));
}

TEST_P(ZrtkTokenMessage, TheCertificateIsTheKeys)
{
    drop("cert", rsaId);
    writeFile(tokens + "/other.der", kim().certificate);
    ASSERT_THAT(asUser("--write-object other.der --type cert --id " + hex(rsaId)),
                testing::Not(HasSubstr("failed")));
    reopen();
    EXPECT_THAT(answers(rsaId), testing::Each(refused(Code::KeyMismatch)));
}

TEST_P(ZrtkTokenMessage, BothHalvesAreOfOnePair)
{
    ASSERT_EQ(call("CRYPT_SetRSAVersion", int(QG_RSA_V2)), 0);
    ASSERT_EQ(write({kim().certificate, kim().key}), 0);
    const auto exchange = [&](const std::string& id, const Holder& other) {
        drop("privkey", id);
        writeFile(tokens + "/other.der", other.key);
        ASSERT_THAT(asUser("--write-object other.der --type privkey --usage-sign --id " + hex(id)),
                    testing::Not(HasSubstr("failed")));
    };
    exchange(rsaId, kim());
    exchange(curveId, ecKim());
    reopen();
    EXPECT_EQ(read("SignData", rsaId, content), refused(Code::KeyMismatch));
    EXPECT_EQ(read("SignData", curveId, content), refused(Code::KeyMismatch));
    ASSERT_EQ(call("CRYPT_SetRSAVersion", int(QG_RSA_V15)), 0);
    EXPECT_EQ(read("SignData", rsaId, content), refused(Code::KeyMismatch));
    EXPECT_EQ(verify(read("SignData", idOf(kim().certificate), content)).code, 0);
}

TEST_P(ZrtkTokenMessage, AKeyDoesWhatItIsMadeFor)
{
    Passed<std::string> same(rsaId);
    ASSERT_EQ(token("DeleteCertAndPriKey", same.get()), 0) << "the samples share keys";
    ASSERT_EQ(write(sampleHolder().management), 0);
    ASSERT_EQ(write(sampleHolder().signing), 0);
    const std::string management = idOf(sampleHolder().management.certificate);
    const std::string signing = idOf(sampleHolder().signing.certificate);
    EXPECT_EQ(read("SignData", management, content), refused(Code::KeyUnsuitable));
    EXPECT_EQ(signAndSeal(management, kim().certificate, content), refused(Code::KeyUnsuitable));
    const std::string message = envelope(sampleHolder().signing.certificate, content, QG_CIPHER_SEED).bytes;
    EXPECT_EQ(read("DecryptData", signing, message), refused(Code::KeyUnsuitable));
    EXPECT_THAT(errorText(), HasSubstr("C_DecryptInit: CKR 0x00000068"));
    EXPECT_EQ(read("DecryptData", management,
                   envelope(sampleHolder().management.certificate, content, QG_CIPHER_SEED).bytes),
              content);
}

TEST_P(ZrtkTokenMessage, PairsMadeOnTheTokenDoTheirPart)
{
    std::string id = "A";
    for (const int algorithm : {QG_KEYPAIR_RSA2048, QG_KEYPAIR_P256, QG_KEYPAIR_P521})
        for (const int kind : {QG_TOKEN_SIGNING, QG_TOKEN_MANAGEMENT}) {
            Passed<std::string> made(id);
            ASSERT_EQ(token("GenKeyPair", algorithm, kind, made.get()), 0);
            const std::string certificate = certify(id);
            reopen();
            const bool signs = kind == QG_TOKEN_SIGNING;
            const std::string message = read("SignData", id, content);
            const std::string opened =
                read("DecryptData", id, envelope(certificate, content, QG_CIPHER_AES256).bytes);
            EXPECT_EQ(signs ? verify(message).content : message,
                      signs ? content : refused(Code::KeyUnsuitable))
                << algorithm;
            EXPECT_EQ(opened, signs ? refused(Code::KeyUnsuitable) : content) << algorithm;
            ++id[0];
        }
}

/** The same on a module that looks and fails as it is told. */
class SpiedTokenMessage : public ZrtkTokenMessage
{
protected:
    void SetUp() override
    {
        ZrtkTokenMessage::SetUp();
        ASSERT_EQ(call("MEDIA_Load", text(QGTK_SPY_FILE)), 0);
        ASSERT_EQ(open(slots().front()), 0);
        spy = spyInModule();
    }

    std::shared_ptr<TokenSpy> spy;
};
INSTANTIATE_ZR_SIDE(SpiedTokenMessage);

TEST_P(SpiedTokenMessage, NothingIsDoneInTheHostsContext)
{
    // A default context that can do nothing: what falls back to it fails.
    const std::unique_ptr<OSSL_LIB_CTX, void (*)(OSSL_LIB_CTX*)> host(OSSL_LIB_CTX_new(), OSSL_LIB_CTX_free);
    OSSL_PROVIDER* const none = OSSL_PROVIDER_load(host.get(), "null");
    ASSERT_NE(none, nullptr);
    std::vector<std::string> done;
    spy->expected = host.get();
    OSSL_LIB_CTX* const before = OSSL_LIB_CTX_set0_default(host.get());
    for (const int version : {int(QG_RSA_V15), int(QG_RSA_V2)}) {
        EXPECT_EQ(call("CRYPT_SetRSAVersion", version), 0);
        done.push_back(read("DecryptData", rsaId, sealed));
        done.push_back(read("DecryptData", curveId, sealed));
        done.push_back(openSealed(rsaId, both));
        EXPECT_THAT(read("SignData", rsaId, content), HasSubstr(content));
        EXPECT_THAT(read("SignData", curveId, content), HasSubstr(content));
    }
    EXPECT_EQ(OSSL_LIB_CTX_set0_default(before), host.get());
    EXPECT_THAT(done, testing::Each(content));
    EXPECT_EQ(spy->strangers, 0U) << "the module finds the context that the host left";
    OSSL_PROVIDER_unload(none);
}

TEST_P(SpiedTokenMessage, WhatTheTokenAnswersInTheMiddleIsTold)
{
    spy->answer = CKR_DEVICE_REMOVED;
    EXPECT_THAT(answers(rsaId), testing::Each(refused(Code::TokenRemoved)));
    EXPECT_EQ(read("SignData", curveId, content), refused(Code::TokenRemoved));
    EXPECT_THAT(errorText(), HasSubstr("C_Sign: CKR 0x00000032"));
    EXPECT_EQ(read("DecryptData", curveId, sealed), refused(Code::TokenRemoved));
    EXPECT_THAT(errorText(), HasSubstr("C_DeriveKey: CKR 0x00000032"));
    spy->answer = CKR_GENERAL_ERROR;
    EXPECT_EQ(read("SignData", rsaId, content), refused(Code::ModuleFailed));
    EXPECT_EQ(read("DecryptData", rsaId, authenticated()), refused(Code::NotDecryptable))
        << "which is how some tell it";
    EXPECT_EQ(read("DecryptData", curveId, sealed), refused(Code::ModuleFailed));
    spy->answer = CKR_OK;
    EXPECT_EQ(verify(read("SignData", rsaId, content)).code, 0);
    EXPECT_EQ(read("DecryptData", rsaId, sealed), content);
}

TEST_P(SpiedTokenMessage, NoSecretOfAnAgreementStays)
{
    EXPECT_EQ(read("DecryptData", curveId, sealed), content);
    EXPECT_EQ(spy->agreed, 0U);
}

TEST_P(SpiedTokenMessage, ATokenMayLackBareRsa)
{
    spy->lacks = CKM_RSA_X_509;
    EXPECT_EQ(verify(read("SignData", rsaId, content)).code, 0);
    EXPECT_EQ(read("DecryptData", rsaId, sealed), content);
    ASSERT_EQ(call("CRYPT_SetRSAVersion", int(QG_RSA_V2)), 0);
    EXPECT_EQ(read("SignData", rsaId, content), refused(Code::NotSupported));
    const std::string oaep = envelope(hong().certificate, content, QG_CIPHER_AES128).bytes;
    EXPECT_EQ(read("DecryptData", rsaId, oaep), refused(Code::NotSupported));
}

TEST_P(SpiedTokenMessage, ATokenMayCutZerosOffBareRsa)
{
    ASSERT_EQ(call("CRYPT_SetRSAVersion", int(QG_RSA_V2)), 0);
    const std::string oaep = envelope(hong().certificate, content, QG_CIPHER_AES128).bytes;
    spy->cutsZeros = true;
    EXPECT_EQ(read("DecryptData", rsaId, oaep), content);
}

TEST_P(SpiedTokenMessage, ATokenMayAnswerNonsense)
{
    spy->damages = true;
    EXPECT_EQ(read("SignData", rsaId, content), refused(Code::KeyMismatch));
    EXPECT_EQ(read("SignData", curveId, content), refused(Code::KeyMismatch));
    EXPECT_EQ(read("DecryptData", rsaId, authenticated()), refused(Code::NotDecryptable));
    spy->damages = false;
    spy->lengthens = true;
    EXPECT_EQ(read("SignData", rsaId, content), refused(Code::ModuleFailed));
    EXPECT_EQ(read("SignData", curveId, content), refused(Code::KeyMismatch));
}

TEST_P(ZrtkTokenMessage, FilesOfDriversAreVerified)
{
    const std::string first = file("first.so", noise(200000));
    const std::string second = file("second.so", "the other");
    const std::string whole = file("whole", noise(200000) + "the other");
    const std::string inOrder = first + ";" + second;
    const auto verifies = [&](const std::string& paths, const Holder& signer, const std::string& signature) {
        return tell("PKCS11_VerifySignatureValue", text(paths), signer.certificate, signature);
    };
    for (const Holder* signer : {&hong(), &ecHong()}) {
        openssl({"dgst", "-sha256", "-sign", signer->keyFile, "-out", at("value"), whole});
        const std::string value = readFile(at("value"));
        EXPECT_EQ(verifies(inOrder, *signer, value), 0);
        EXPECT_EQ(verifies(inOrder + ";", *signer, value), 0);
        EXPECT_EQ(verifies(second + ";" + first, *signer, value), number(Code::SignatureWrong));
        EXPECT_EQ(verifies(first, *signer, value), number(Code::SignatureWrong));
        EXPECT_EQ(verifies(inOrder, kim(), value), number(Code::SignatureWrong));
        EXPECT_EQ(verifies(inOrder, *signer, "short"), number(Code::SignatureWrong));
        EXPECT_EQ(verifies(inOrder, *signer, ""), number(Code::BadArgument));
    }
    EXPECT_EQ(verifies(first + ";" + at("none"), hong(), "value"), number(Code::FileMissing));
    EXPECT_THAT(errorText(), HasSubstr(at("none")));
    EXPECT_EQ(verifies("", hong(), "value"), number(Code::BadArgument));
    EXPECT_EQ(verifies(";", hong(), "value"), number(Code::BadArgument));
    EXPECT_EQ(tell("PKCS11_VerifySignatureValue", static_cast<char*>(nullptr), hong().certificate,
                   std::string("value")),
              number(Code::BadArgument));
    EXPECT_EQ(verifies(first, {"text", {}, {}, {}}, "value"), number(Code::CertDamaged));
}

TEST_P(ZrtkTokenMessage, TheFirstTokenIsOpenedWithoutASlot)
{
    EXPECT_EQ(token("OpenSession", text(userPin)), number(Code::TokenSessionOpen));
    ASSERT_EQ(token("CloseSession"), 0);
    EXPECT_EQ(token("OpenSession", static_cast<char*>(nullptr)), number(Code::BadArgument));
    EXPECT_EQ(token("OpenSession", text("999999")), number(Code::WrongPin));
    EXPECT_EQ(token("CloseSession"), number(Code::NoTokenSession));
    ASSERT_EQ(token("OpenSession", text(userPin)), 0);
    EXPECT_EQ(verify(read("SignData", rsaId, content)).code, 0);
}
