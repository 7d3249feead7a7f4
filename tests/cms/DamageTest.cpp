// What no caller should hand in, to every operation on messages: a code and a text, the outputs as they were.

#include <functional>

#include "MessageTest.h"

using qgtk::Code;

namespace {

/** An operation with one of its byte strings open, the others being good. */
struct Slot
{
    std::string name;
    std::function<int(BINSTR*)> run;
    std::string good; /**< what the open one is in a right call */
};

} // namespace

class MessageDamage : public MessageTest
{
protected:
    void SetUp() override
    {
        MessageTest::SetUp();
        ASSERT_EQ(tell("CRYPT_SetKeyAndIV", QG_CIPHER_AES256 + 0, noise(32), noise(16)), 0);
        signedMessage = sign(hong(), content).bytes;
        sealed = envelope(hong().certificate, content, QG_CIPHER_AES256).bytes;
        sealedForCurve = envelope(ecHong().certificate, content, QG_CIPHER_ARIA128).bytes;
        both = signAndEnvelope(kim(), hong().certificate, content, QG_CIPHER_SEED).bytes;
    }

    /** Every operation that takes bytes, once for each of them. */
    std::vector<Slot> slots();

    std::string signedMessage;
    std::string sealed;
    std::string sealedForCurve;
    std::string both;

private:
    /** Adds an operation once for each of its inputs. */
    void add(std::vector<Slot>& list, const std::string& operation, const std::vector<std::string>& inputs,
             const std::function<int(const std::vector<BINSTR*>&, BINSTR*)>& run);
};
INSTANTIATE_BOTH_SIDES(MessageDamage);

void MessageDamage::add(std::vector<Slot>& list, const std::string& operation,
                        const std::vector<std::string>& inputs,
                        const std::function<int(const std::vector<BINSTR*>&, BINSTR*)>& run)
{
    for (std::size_t open = 0; open < inputs.size(); ++open) {
        const auto call = [this, operation, inputs, run, open](BINSTR* given) {
            std::vector<Passed<std::string>> records(inputs.begin(), inputs.end());
            std::vector<BINSTR*> arguments;
            for (Passed<std::string>& record : records)
                arguments.push_back(record.get());
            arguments[open] = given;
            BinString output(library, "as it was");
            const int code = run(arguments, &output);
            if (code != 0) {
                EXPECT_EQ(output.bytes(), "as it was") << operation;
            }
            return code;
        };
        list.push_back({operation + " " + std::to_string(open), call, inputs[open]});
    }
}

std::vector<Slot> MessageDamage::slots()
{
    std::vector<Slot> list;
    const std::string& own = hong().certificate;
    const std::string& key = hong().key;
    const bool zrtk = isZrtk();
    const int cipher = QG_CIPHER_AES256;
    char* now = text("");
    for (const auto& [operation, data] :
         {std::pair{"CMS_MakeSignedData", content}, {"CMS_MakeSignedDataWithAddSigner", signedMessage}})
        add(list, operation, {own, key, data}, [=, operation = operation, this](const auto& in, BINSTR* out) {
            return zrtk ? call(operation, 0, in[0], in[1], in[2], now, out)
                        : call(operation, in[0], in[1], in[2], now, out);
        });
    add(list, "CMS_ProcessSignedData", {signedMessage}, [=, this](const auto& in, BINSTR* out) {
        int count = 0;
        return zrtk ? call("CMS_ProcessSignedData", 0, in[0], out, &count)
                    : call("CMS_ProcessSignedData2", in[0], out, &count);
    });
    for (const char* operation : {"CMS_MakeEnvelopedData", "CMS_MakeEnvelopedDataWithMultiRecipients"})
        add(list, operation, {own, content}, [=, this](const auto& in, BINSTR* out) {
            return zrtk ? call(operation, 0, in[0], in[1], cipher, out)
                        : call(operation, in[0], in[1], cipher, out);
        });
    add(list, "CMS_ProcessEnvelopedData", {own, key, sealed}, [=, this](const auto& in, BINSTR* out) {
        return call("CMS_ProcessEnvelopedData", in[0], in[1], in[2], out);
    });
    add(list, "CMS_ProcessEnvelopedData for a curve", {ecHong().certificate, ecHong().key, sealedForCurve},
        [=, this](const auto& in, BINSTR* out) {
            return call("CMS_ProcessEnvelopedData", in[0], in[1], in[2], out);
        });
    add(list, "CMS_MakeSignedAndEnvData", {own, key, kim().certificate, content},
        [=, this](const auto& in, BINSTR* out) {
            const char* operation = "CMS_MakeSignedAndEnvData";
            return zrtk ? call(operation, 0, in[0], in[1], in[2], in[3], cipher, out)
                        : call(operation, in[0], in[1], in[2], in[3], cipher, out);
        });
    add(list, "CMS_ProcessSignedAndEnvData", {own, key, both}, [=, this](const auto& in, BINSTR* out) {
        const char* operation = "CMS_ProcessSignedAndEnvData";
        auto* noSigner = static_cast<BINSTR*>(nullptr);
        return zrtk ? call(operation, 0, in[0], in[1], in[2], out, noSigner)
                    : call(operation, in[0], in[1], in[2], out, noSigner);
    });
    if (zrtk) {
        add(list, "CMS_MakeTBSData", {own, content}, [=, this](const auto& in, BINSTR* out) {
            return call("CMS_MakeTBSData", 0, in[0], in[1], now, out);
        });
        add(list, "CMS_GetEnvDataRecipCnt", {sealed}, [=, this](const auto& in, BINSTR*) {
            int count = 0;
            return call("CMS_GetEnvDataRecipCnt", in[0], &count);
        });
        add(list, "WPKI_EncryptData", {own, content, own, key}, [=, this](const auto& in, BINSTR* out) {
            return call("WPKI_EncryptData", in[0], in[1], cipher, in[2], in[3], out);
        });
        add(list, "WPKI_DecryptData", {own, key, envelope(own, signedMessage, QG_CIPHER_SEED).bytes},
            [=, this](const auto& in, BINSTR* out) {
                return call("WPKI_DecryptData", in[0], in[1], in[2], out);
            });
    } else {
        const std::string asked = give("SIGEA_MakeChallenge");
        add(list, "SIGEA_MakeResponse", {asked, own, key}, [=, this](const auto& in, BINSTR* out) {
            return call("SIGEA_MakeResponse", in[0], in[1], in[2], out);
        });
        const std::string response = give("SIGEA_MakeResponse", asked, own, key);
        add(list, "SIGEA_VerifyResponse", {response, asked, own},
            [=, this](const auto& in, BINSTR*) { return call("SIGEA_VerifyResponse", in[0], in[1], in[2]); });
    }
    return list;
}

TEST_P(MessageDamage, NothingAndEmptyBytesAreRefused)
{
    for (const Slot& slot : slots()) {
        EXPECT_EQ(slot.run(nullptr), number(Code::BadArgument)) << slot.name;
        BINSTR empty = {};
        EXPECT_EQ(slot.run(&empty), number(Code::BadArgument)) << slot.name;
        unsigned char byte = 0;
        for (const int length : {0, -1}) {
            BINSTR strange{&byte, length};
            EXPECT_EQ(slot.run(&strange), number(Code::BadArgument)) << slot.name;
        }
        EXPECT_THAT(errorText(), testing::HasSubstr("(1000)")) << slot.name;
    }
}

TEST_P(MessageDamage, BytesThatEndEarlyAreRefused)
{
    for (const Slot& slot : slots()) {
        if (slot.good == content)
            continue; // any bytes may be signed or encrypted
        const std::size_t step = std::max<std::size_t>(1, slot.good.size() / 60);
        for (std::size_t length = 1; length < slot.good.size(); length += step) {
            const std::string part = slot.good.substr(0, length);
            Passed<std::string> argument(part);
            ASSERT_NE(slot.run(argument.get()), 0) << slot.name << " " << length;
            ASSERT_NE(errorText(), "");
        }
    }
}

TEST_P(MessageDamage, RandomBytesAreRefused)
{
    for (const Slot& slot : slots()) {
        if (slot.good == content)
            continue;
        for (unsigned seed = 0; seed < 20; ++seed) {
            const std::string random = noise(1 + seed * 37, seed);
            Passed<std::string> argument(random);
            ASSERT_NE(slot.run(argument.get()), 0) << slot.name;
        }
    }
}

TEST_P(MessageDamage, AlteredBytesNeverCrash)
{
    for (const Slot& slot : slots()) {
        if (slot.good == content)
            continue;
        for (std::size_t place = 0; place < slot.good.size(); place += 11) {
            std::string altered = slot.good;
            altered[place] = static_cast<char>(altered[place] ^ (1U << (place % 8)));
            Passed<std::string> argument(altered);
            slot.run(argument.get());
        }
    }
}

TEST_P(MessageDamage, OutputsOfOtherOperationsAreRefused)
{
    const std::vector<std::string> others = {
        signedMessage, sealed, both, hong().certificate, hong().key, give("BASE64_Encode", signedMessage),
        content};
    for (const Slot& slot : slots()) {
        if (slot.good == content)
            continue;
        for (const std::string& other : others) {
            const bool isCertificate = slot.good == hong().certificate || slot.good == kim().certificate;
            if (other == slot.good || (isCertificate && other == hong().certificate))
                continue;
            Passed<std::string> argument(other);
            ASSERT_NE(slot.run(argument.get()), 0) << slot.name;
        }
    }
}

TEST_P(MessageDamage, EveryOperationIsRightWithoutDamage)
{
    for (const Slot& slot : slots()) {
        if (slot.name.starts_with("SIGEA_VerifyResponse") && !slot.name.ends_with("0"))
            continue; // the first of the three has answered
        Passed<std::string> argument(slot.good);
        EXPECT_EQ(slot.run(argument.get()), 0) << slot.name;
    }
}

TEST_P(MessageDamage, NoContextAndNoOutputAreRefused)
{
    Passed<std::string> message(signedMessage);
    auto* none = static_cast<BINSTR*>(nullptr);
    int count = -1;
    Passed<std::string> own(hong().certificate);
    Passed<std::string> key(hong().key);
    Passed<std::string> envelopeBytes(sealed);
    EXPECT_EQ(call("CMS_ProcessEnvelopedData", own.get(), key.get(), envelopeBytes.get(), none),
              number(Code::BadArgument));
    EXPECT_EQ(isZrtk() ? call("CMS_ProcessSignedData", 0, message.get(), none, &count)
                       : call("CMS_ProcessSignedData2", message.get(), none, &count),
              number(Code::BadArgument));
    EXPECT_EQ(count, -1);
    BinString output(library);
    EXPECT_EQ(library.callBare("CMS_ProcessEnvelopedData", static_cast<void*>(&count), own.get(), key.get(),
                               envelopeBytes.get(), &output),
              number(Code::NoContext));
}
