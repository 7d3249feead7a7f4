// PINs and what a token opens stand in memory only where the caller holds them.

#include "FreedScan.h"
#include "Programs.h"
#include "RawFile.h"
#include "TokenTest.h"

using qgtk::Code;

class TokenSecrets : public TokenTest
{
protected:
    void SetUp() override
    {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "the sanitizer maps terabytes and keeps freed memory";
#endif
        TokenTest::SetUp();
        // Made by other processes: nothing of it was ever in this one.
        shell("for name in pin other wrong; do openssl rand -hex 16 | tr -d '\\n' > $name; done");
        shell("openssl rand -out random 32");
        shell(std::string("softhsm2-util --init-token --free --label first --so-pin ") + officerPin +
              " --pin $(cat pin)");
    }

    void shell(const std::string& command) const
    {
        const Outcome ran = runIn(tokens, command);
        ASSERT_EQ(ran.status, 0) << ran.output;
    }

    std::string in(const std::string& name) const
    {
        return tokens + "/" + name;
    }

    int logIn(RawFile& pin)
    {
        return open(slots().front(), pin.text());
    }

    void release(BINSTR& record)
    {
        EXPECT_EQ(library.callBare("BINSTR_Delete", &record), 0);
    }
};
INSTANTIATE_BOTH_SIDES(TokenSecrets);

class ZrtkTokenSecrets : public TokenSecrets
{};
INSTANTIATE_ZR_SIDE(ZrtkTokenSecrets);

TEST_P(TokenSecrets, PinsAreTheCallersAlone)
{
    RawFile pin(in("pin"));
    RawFile other(in("other"));
    RawFile wrong(in("wrong"));
    MemoryScan scan;
    FreedScan freed;
    for (RawFile* file : {&pin, &other, &wrong}) {
        scan.add("PIN", {file->text() + lostWhenFreed, file->length() - lostWhenFreed});
        freed.add(file->text(), file->length());
    }
    ASSERT_EQ(logIn(wrong), number(Code::WrongPin));
    token("CloseSession");
    ASSERT_EQ(logIn(pin), 0);
    EXPECT_EQ(token("ChangePIN", wrong.text(), other.text()), number(Code::WrongPin));
    EXPECT_EQ(token("ChangePIN", pin.text(), other.text()), 0);
    EXPECT_EQ(token("Logout"), 0);
    EXPECT_EQ(token("Login", pin.text()), number(Code::WrongPin));
    EXPECT_EQ(token("Login", other.text()), 0);
    EXPECT_THAT(scan.find(), testing::SizeIs(3)) << "one of each";
    for (RawFile* file : {&pin, &other, &wrong})
        file->wipe();
    EXPECT_THAT(scan.find(), testing::IsEmpty());
    EXPECT_EQ(freed.hits(), 0U);
}

TEST_P(TokenSecrets, ARandomValueIsTheCallersAlone)
{
    shell(std::string("pkcs11-tool --module ") + QGTK_SOFTHSM_FILE +
          " --token-label first --login --pin $(cat pin) --write-object random --type data --private"
          " --application-label Quillgate --label 'random 41'");
    RawFile pin(in("pin"));
    ASSERT_EQ(logIn(pin), 0);
    const std::string id = "A";
    Passed<std::string> given(id);
    BINSTR value = {};
    ASSERT_EQ(token("ReadRandomForVID", given.get(), &value), 0);
    ASSERT_EQ(value.nLen, 32);
    const MemoryScan scan = scanFor("random value", value);
    EXPECT_THAT(scan.find(), testing::SizeIs(1));
    release(value);
    EXPECT_THAT(scan.find(), testing::IsEmpty());
}

TEST_P(ZrtkTokenSecrets, OpenedMessagesAreTheCallersAlone)
{
    RawFile pin(in("pin"));
    ASSERT_EQ(logIn(pin), 0);
    for (const Holder* holder : {&hong(), &ecHong()}) {
        ASSERT_EQ(write({holder->certificate, holder->key}), 0);
        shell("openssl cms -encrypt -binary -aes128 -in random -outform DER -out sealed " +
              holder->certificateFile);
        const std::string sealed = readFile(in("sealed"));
        Passed<std::string> message(sealed);
        const std::string id = idOf(holder->certificate);
        Passed<std::string> given(id);
        BINSTR opened = {};
        ASSERT_EQ(token("DecryptData", given.get(), message.get(), &opened), 0);
        ASSERT_EQ(opened.nLen, 32);
        const MemoryScan scan = scanFor("content", opened);
        EXPECT_THAT(scan.find(), testing::SizeIs(1));
        release(opened);
        EXPECT_THAT(scan.find(), testing::IsEmpty());
    }
}

TEST_P(ZrtkTokenSecrets, SignedAndEnvelopedContentIsTheCallersAlone)
{
    RawFile pin(in("pin"));
    ASSERT_EQ(logIn(pin), 0);
    ASSERT_EQ(write({hong().certificate, hong().key}), 0);
    const std::string id = idOf(hong().certificate);
    Passed<std::string> given(id);
    Passed<std::string> recipient(hong().certificate);
    RawFile plain(in("random"));
    BINSTR data = plain.record();
    const MemoryScan scan = scanFor("content", data);
    BINSTR message = {};
    BINSTR opened = {};
    ASSERT_EQ(token("SignAndEnvData", given.get(), recipient.get(), &data, &message), 0);
    EXPECT_THAT(scan.find(), testing::SizeIs(1));
    plain.wipe();
    ASSERT_EQ(token("VerifyAndDecData", given.get(), &message, &opened, static_cast<BINSTR*>(nullptr)), 0);
    EXPECT_THAT(scan.find(), testing::SizeIs(1));
    release(opened);
    release(message);
    EXPECT_THAT(scan.find(), testing::IsEmpty());
}
