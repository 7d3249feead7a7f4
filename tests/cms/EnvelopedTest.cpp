// Encrypted messages: what we encrypt others open, what others encrypt we open, and nobody else does.
// The fixture's functions are MakeEnvelopedDataWithMultiRecipients, ProcessEnvelopedData,
// MakeSignedAndEnvData and ProcessSignedAndEnvData.

#include <openssl/err.h>
#include <openssl/pkcs7.h>

#include "MessageTest.h"

using qgtk::Code;
using testing::HasSubstr;

namespace {

/** Ciphers and what openssl calls them. */
const std::vector<std::pair<int, std::string>> ciphers = {
    {QG_CIPHER_SEED, "-seed-cbc"},        {QG_CIPHER_AES128, "-aes-128-cbc"},
    {QG_CIPHER_AES192, "-aes-192-cbc"},   {QG_CIPHER_AES256, "-aes-256-cbc"},
    {QG_CIPHER_3DES, "-des-ede3-cbc"},    {QG_CIPHER_ARIA128, "-aria-128-cbc"},
    {QG_CIPHER_ARIA192, "-aria-192-cbc"}, {QG_CIPHER_ARIA256, "-aria-256-cbc"},
};

} // namespace

class EnvelopedMessage : public MessageTest
{
protected:
    static std::vector<std::string> decryptOptions(const Holder& holder)
    {
        return {"-decrypt", "-binary", "-recip", holder.certificateFile, "-inkey", holder.keyFile};
    }

    /** A DER message that openssl encrypts; the options stand before the recipients' files. */
    std::string encryptedByOpenssl(std::vector<std::string> options)
    {
        options.insert(options.begin(),
                       {"cms", "-encrypt", "-binary", "-in", file("content", content), "-outform", "DER",
                        "-provider", "default", "-provider", "legacy", "-out", at("message")});
        openssl(options);
        return readFile(at("message"));
    }

    /** The bytes of a message that openssl prints about it. */
    std::string print(const std::string& message)
    {
        return run({"openssl", "cms", "-cmsout", "-print", "-noout", "-inform", "DER", "-in",
                    file("printed", message)})
            .output;
    }
};
INSTANTIATE_BOTH_SIDES(EnvelopedMessage);

/** What one side alone has. */
class OwnEnvelopedMessage : public EnvelopedMessage
{};
INSTANTIATE_ONE_SIDE(OwnEnvelopedMessage, zrtkSide);

TEST_P(EnvelopedMessage, OpensslOpensEachCipherAndKey)
{
    for (const auto& [cipher, name] : ciphers) {
        for (const Holder* holder : {&hong(), &ecHong()}) {
            const Answer message = envelope(holder->certificate, content, cipher);
            ASSERT_EQ(message.code, 0) << name;
            EXPECT_EQ(cms(message.bytes, decryptOptions(*holder)), content) << name;
            const Answer opened = open(*holder, message.bytes);
            EXPECT_EQ(opened.code, 0);
            EXPECT_EQ(opened.bytes, content) << name;
        }
    }
}

TEST_P(OwnEnvelopedMessage, IsEncryptedAnewEachTimeWhetherAskedOrNot)
{
    constexpr std::size_t twoBlocks = 32; // of encrypted content, which stands last
    for (const bool asked : {false, true}) {
        if (asked) {
            ASSERT_EQ(call("CRYPT_SetEnvChangeIV"), 0);
        }
        const Answer first = envelope(hong().certificate, content, QG_CIPHER_AES256);
        const Answer second = envelope(hong().certificate, content, QG_CIPHER_AES256);
        ASSERT_GT(std::min(first.bytes.size(), second.bytes.size()), twoBlocks);
        EXPECT_NE(first.bytes.substr(first.bytes.size() - twoBlocks),
                  second.bytes.substr(second.bytes.size() - twoBlocks));
        EXPECT_EQ(open(hong(), second.bytes).bytes, content);
    }
}

TEST_P(EnvelopedMessage, OfOpensslIsOpened)
{
    for (const auto& [cipher, name] : ciphers) {
        for (const Holder* holder : {&hong(), &ecHong()}) {
            const Answer opened = open(*holder, encryptedByOpenssl({name, holder->certificateFile}));
            EXPECT_EQ(opened.code, 0) << name;
            EXPECT_EQ(opened.bytes, content) << name;
        }
    }
}

TEST_P(EnvelopedMessage, OfOpenssslInOtherFormsIsOpened)
{
    const std::vector<std::vector<std::string>> forms = {
        {"-aes256", "-stream", hong().certificateFile},
        {"-aes256", "-keyid", hong().certificateFile},
        {"-aes256", "-recip", hong().certificateFile, "-keyopt", "rsa_padding_mode:oaep"},
        {"-aes-256-gcm", hong().certificateFile},
    };
    for (const auto& form : forms)
        EXPECT_EQ(open(hong(), encryptedByOpenssl(form)).bytes, content) << testing::PrintToString(form);
    const std::string agreed =
        encryptedByOpenssl({"-aes128", "-recip", ecHong().certificateFile, "-keyopt", "ecdh_kdf_md:sha384"});
    EXPECT_EQ(open(ecHong(), agreed).bytes, content);
}

TEST_P(EnvelopedMessage, OpensForEachRecipientAndNobodyElse)
{
    const std::string recipients = hong().certificate + ecHong().certificate + ecKim().certificate;
    const std::string message = envelope(recipients, content, QG_CIPHER_SEED).bytes;
    for (const Holder* holder : {&hong(), &ecHong(), &ecKim()}) {
        EXPECT_EQ(open(*holder, message).bytes, content);
        EXPECT_EQ(cms(message, decryptOptions(*holder)), content);
    }
    EXPECT_EQ(open(kim(), message).code, number(Code::NotRecipient));
    EXPECT_EQ(open({hong().certificate, kim().key, {}, {}}, message).code, number(Code::KeyMismatch));
    const std::string foreign =
        encryptedByOpenssl({"-aes128", kim().certificateFile, ecKim().certificateFile});
    EXPECT_EQ(open(kim(), foreign).bytes, content);
    EXPECT_EQ(open(ecKim(), foreign).bytes, content);
    EXPECT_EQ(open(ecHong(), foreign).code, number(Code::NotRecipient));
}

TEST_P(EnvelopedMessage, IsForOneRecipientToo)
{
    const std::string operation = "CMS_MakeEnvelopedData";
    const Answer message = isZrtk() ? ask(operation, 0, hong().certificate, content, QG_CIPHER_ARIA256 + 0)
                                    : ask(operation, hong().certificate, content, QG_CIPHER_ARIA256 + 0);
    EXPECT_EQ(open(hong(), message.bytes).bytes, content);
    EXPECT_THAT(print(message.bytes), HasSubstr("aria-256-cbc"));
}

TEST_P(EnvelopedMessage, HasNoCipherThatThereIsNoneOf)
{
    for (const int cipher : {0, 1, 49, QG_CIPHER_AES256 + QG_MODE_CTR, -1, 4096})
        EXPECT_EQ(envelope(hong().certificate, content, cipher).code, number(Code::AlgorithmCodeUnknown));
}

TEST_P(EnvelopedMessage, WithAnAlteredContentKeyTellsNothing)
{
    // A key that doesn't come out right must look as a content that doesn't, or callers could ask for keys.
    std::string message = envelope(hong().certificate, content, QG_CIPHER_AES256).bytes;
    const std::size_t keyPlace = message.find(unhex("04820100"));
    ASSERT_NE(keyPlace, std::string::npos);
    int refused = 0;
    for (int i = 0; i < 20; ++i) {
        std::string altered = message;
        altered[keyPlace + 100 + static_cast<std::size_t>(i)] ^= 1;
        const Answer answer = open(hong(), altered);
        // The padding comes out right by chance once in 256 times; the content never does.
        EXPECT_NE(answer.bytes, content);
        EXPECT_TRUE(answer.code == 0 || answer.code == number(Code::NotDecryptable)) << answer.code;
        refused += answer.code != 0 ? 1 : 0;
    }
    EXPECT_GE(refused, 15);
}

TEST_P(EnvelopedMessage, LeavesTheHostsErrorsInOpenssl)
{
    // In the host's own OpenSSL, which is the toolkit's too: the same thread, the same queue.
    const std::string message = envelope(hong().certificate, content, QG_CIPHER_AES256).bytes;
    const std::string both = signAndEnvelope(hong(), hong().certificate, content, QG_CIPHER_AES256).bytes;
    ERR_clear_error();
    ERR_raise_data(ERR_LIB_USER, 17, "of the host");
    const unsigned long error = ERR_peek_error();
    EXPECT_EQ(open(hong(), message).code, 0);
    EXPECT_EQ(openSigned(hong(), both).code, 0);
    EXPECT_NE(open(kim(), message).code, 0);
    EXPECT_NE(openSigned(kim(), both).code, 0);
    const char* data = nullptr;
    int flags = 0;
    EXPECT_EQ(ERR_get_error_all(nullptr, nullptr, nullptr, &data, &flags), error);
    EXPECT_STREQ(data, "of the host");
    EXPECT_EQ(ERR_get_error(), 0UL);
}

TEST_P(EnvelopedMessage, IsEncryptedUnderTheKeyOfTheContext)
{
    const std::string key = noise(16);
    const auto encrypted = [this] {
        BinString message(library, "as it was");
        Passed<std::string> data(content);
        const int code =
            isZrtk() ? call("CMS_EncryptData", 0, static_cast<BINSTR*>(nullptr), data.get(), 0, &message)
                     : call("CMS_MakeEncryptedData", data.get(), &message);
        return Answer{code, message.bytes()};
    };
    EXPECT_EQ(encrypted().code, number(Code::NoCipherKey));
    ASSERT_EQ(tell("CRYPT_SetKeyAndIV", QG_CIPHER_SEED + 0, key, noise(16, 2)), 0);
    const Answer message = encrypted();
    ASSERT_EQ(message.code, 0);
    EXPECT_EQ(cms(message.bytes, {"-EncryptedData_decrypt", "-secretkey", hex(key)}), content);
    EXPECT_EQ(ask("CMS_ProcessEncryptedData", key, message.bytes).bytes, content);
    EXPECT_NE(encrypted().bytes, message.bytes) << "each message has an initial value of its own";
    EXPECT_NE(ask("CMS_ProcessEncryptedData", noise(16, 3), message.bytes).bytes, content);
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(ask("CMS_ProcessEncryptedData", noise(15), message.bytes).code,
                  number(Code::CipherKeyLength))
            << "not even by chance";
    EXPECT_EQ(ask("CMS_ProcessEncryptedData", key, sign(hong(), content).bytes).code,
              number(Code::MessageKind));

    for (const auto& [name, length] :
         {std::pair<std::string, std::size_t>{"-aes256", 32}, {"-aria-128-cbc", 16}}) {
        const std::string secret = noise(length, 5);
        openssl({"cms", "-EncryptedData_encrypt", "-binary", "-in", file("content", content), "-outform",
                 "DER", name, "-secretkey", hex(secret), "-out", at("message")});
        EXPECT_EQ(ask("CMS_ProcessEncryptedData", secret, readFile(at("message"))).bytes, content) << name;
    }
}

TEST_P(OwnEnvelopedMessage, NamesItsRecipients)
{
    const std::string message =
        envelope(hong().certificate + ecKim().certificate, content, QG_CIPHER_AES256).bytes;
    int count = -1;
    ASSERT_EQ(tell("CMS_GetEnvDataRecipCnt", message, &count), 0);
    EXPECT_EQ(count, 2);
    const auto names = [this](int index, int size = 200) {
        std::vector<std::string> buffers(3, std::string(300, '#'));
        EXPECT_EQ(call("CMS_GetEnvDataRecipInfo", index, size, buffers[0].data(), buffers[1].data(),
                       buffers[2].data()),
                  0);
        return std::vector<std::string>{buffers[0].c_str(), buffers[1].c_str(), buffers[2].c_str()};
    };
    std::vector<std::vector<std::string>> expected;
    for (const Holder* holder : {&hong(), &ecKim()}) {
        ASSERT_EQ(load(holder->certificate), 0);
        expected.push_back({get("CERT_GetIssuerName"), get("CERT_GetSerialNum"), ""});
    }
    EXPECT_THAT(std::vector({names(0), names(1)}), testing::UnorderedElementsAreArray(expected));
    EXPECT_EQ(names(0, 8)[0].size(), 7U) << "cut to the size";

    ASSERT_EQ(load(hong().certificate), 0);
    const std::string identified = encryptedByOpenssl({"-aes256", "-keyid", hong().certificateFile});
    ASSERT_EQ(tell("CMS_GetEnvDataRecipCnt", identified, &count), 0);
    EXPECT_THAT(names(0), testing::ElementsAre("", "", get("CERT_GetSubKeyID")));
    std::string buffer(8, '#');
    EXPECT_EQ(call("CMS_GetEnvDataRecipInfo", 1, 8, buffer.data(), buffer.data(), buffer.data()),
              number(Code::MessageIndex));
    EXPECT_EQ(tell("CMS_GetEnvDataRecipCnt", sign(hong(), content).bytes, &count), number(Code::MessageKind));
}

TEST_P(OwnEnvelopedMessage, TakesTheNewerFormsOfRsaWhenTheContextHasThem)
{
    ASSERT_EQ(call("CRYPT_SetRSAVersion", QG_RSA_V2 + 0), 0);
    const std::string message = envelope(hong().certificate, content, QG_CIPHER_AES256).bytes;
    EXPECT_THAT(print(message), HasSubstr("rsaesOaep"));
    EXPECT_EQ(cms(message, decryptOptions(hong())), content);
    EXPECT_EQ(open(hong(), message).bytes, content);
    for (const int options : {0, QG_CMS_NO_ATTRIBUTES + 0}) {
        setOptions(options);
        const std::string letter = sign(hong(), content).bytes;
        EXPECT_THAT(print(letter), HasSubstr("rsassaPss"));
        EXPECT_EQ(cms(letter, verifyOptions()), content);
        EXPECT_EQ(verify(letter).code, 0);
    }
}

TEST_P(EnvelopedMessage, MayBeSignedToo)
{
    for (const auto& [cipher, name] : ciphers) {
        for (const Holder* signer : {&hong(), &ecHong()}) {
            const Answer message =
                signAndEnvelope(*signer, hong().certificate + kim().certificate, content, cipher);
            ASSERT_EQ(message.code, 0) << name;
            for (const Holder* holder : {&hong(), &kim()})
                EXPECT_EQ(openSigned(*holder, message.bytes).bytes, content) << name;
            EXPECT_EQ(signerCertificate(0).bytes, signer->certificate);
            EXPECT_NE(signTime(0), "");
        }
    }
}

TEST_P(EnvelopedMessage, ThatIsSignedTooOpensForNobodyElse)
{
    const std::string message = signAndEnvelope(hong(), kim().certificate, content, QG_CIPHER_SEED).bytes;
    EXPECT_EQ(openSigned(hong(), message).code, number(Code::NotRecipient));
    EXPECT_EQ(openSigned({kim().certificate, hong().key, {}, {}}, message).code, number(Code::KeyMismatch));
    EXPECT_EQ(open(kim(), message).code, number(Code::MessageKind));
    EXPECT_EQ(verify(message).code, number(Code::MessageKind));
    EXPECT_EQ(openSigned(kim(), sign(hong(), content).bytes).code, number(Code::MessageKind));
    EXPECT_EQ(signAndEnvelope(hong(), ecKim().certificate, content, QG_CIPHER_SEED).code,
              number(Code::KeyUnsuitable))
        << "the form has no key agreement";
    std::string altered = message;
    altered.back() ^= 1; // of the signature
    EXPECT_EQ(openSigned(kim(), altered).code, number(Code::SignatureWrong));
    EXPECT_EQ(signerCertificate(0).code, number(Code::MessageIndex));
}

namespace {

template <auto Free>
struct Freed
{
    template <typename T>
    void operator()(T* object) const
    {
        Free(object);
    }
};
using Pkcs7 = std::unique_ptr<PKCS7, Freed<PKCS7_free>>;
using Certificate = std::unique_ptr<X509, Freed<X509_free>>;
using Key = std::unique_ptr<EVP_PKEY, Freed<EVP_PKEY_free>>;

template <typename Handle, typename Decode>
Handle decoded(Decode decode, const std::string& der)
{
    const auto* position = reinterpret_cast<const unsigned char*>(der.data());
    return Handle(decode(nullptr, &position, static_cast<long>(der.size())));
}

Key keyOf(const Holder& holder)
{
    return decoded<Key>(d2i_AutoPrivateKey, holder.key);
}

} // namespace

TEST_P(EnvelopedMessage, ThatIsSignedTooIsReadByOpensslItself)
{
    const std::string message = signAndEnvelope(hong(), kim().certificate, content, QG_CIPHER_AES256).bytes;
    EXPECT_THAT(
        run({"openssl", "pkcs7", "-print_certs", "-noout", "-inform", "DER", "-in", file("message", message)})
            .output,
        HasSubstr("CN = Hong"));
    const Pkcs7 decodedMessage = decoded<Pkcs7>(d2i_PKCS7, message);
    ASSERT_NE(decodedMessage, nullptr);
    const Certificate own = decoded<Certificate>(d2i_X509, kim().certificate);
    const Key key = keyOf(kim());
    const std::unique_ptr<BIO, Freed<BIO_free_all>> chain(
        PKCS7_dataDecode(decodedMessage.get(), key.get(), nullptr, own.get()));
    ASSERT_NE(chain, nullptr);
    std::string plain(1000, '\0');
    plain.resize(static_cast<std::size_t>(BIO_read(chain.get(), plain.data(), 1000)));
    EXPECT_EQ(plain, content);
    const Certificate signer = decoded<Certificate>(d2i_X509, hong().certificate);
    PKCS7_SIGNER_INFO* info = sk_PKCS7_SIGNER_INFO_value(PKCS7_get_signer_info(decodedMessage.get()), 0);
    EXPECT_EQ(PKCS7_signatureVerify(chain.get(), decodedMessage.get(), info, signer.get()), 1);
}

TEST_P(EnvelopedMessage, ThatOpensslSignedTooIsOpened)
{
    const Pkcs7 message(PKCS7_new());
    const Certificate signer = decoded<Certificate>(d2i_X509, kim().certificate);
    const Certificate recipient = decoded<Certificate>(d2i_X509, hong().certificate);
    const Key key = keyOf(kim());
    ASSERT_EQ(PKCS7_set_type(message.get(), NID_pkcs7_signedAndEnveloped), 1);
    ASSERT_EQ(PKCS7_set_cipher(message.get(), EVP_aria_128_cbc()), 1);
    ASSERT_NE(PKCS7_add_signature(message.get(), signer.get(), key.get(), EVP_sha512()), nullptr);
    ASSERT_EQ(PKCS7_add_certificate(message.get(), signer.get()), 1);
    ASSERT_NE(PKCS7_add_recipient(message.get(), recipient.get()), nullptr);
    const std::unique_ptr<BIO, Freed<BIO_free_all>> chain(PKCS7_dataInit(message.get(), nullptr));
    ASSERT_EQ(BIO_write(chain.get(), content.data(), static_cast<int>(content.size())),
              static_cast<int>(content.size()));
    ASSERT_EQ(BIO_flush(chain.get()), 1);
    ASSERT_EQ(PKCS7_dataFinal(message.get(), chain.get()), 1);
    std::string der(static_cast<std::size_t>(i2d_PKCS7(message.get(), nullptr)), '\0');
    auto* position = reinterpret_cast<unsigned char*>(der.data());
    i2d_PKCS7(message.get(), &position);
    EXPECT_EQ(openSigned(hong(), der).bytes, content);
    EXPECT_EQ(signerCertificate(0).bytes, kim().certificate);
    EXPECT_EQ(signTime(0), "");
}
