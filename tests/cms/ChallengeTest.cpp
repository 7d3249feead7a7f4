// Challenge and response: who holds the key answers, once, and nobody else does.

#include "MessageTest.h"

using qgtk::Code;

class Challenge : public MessageTest
{
protected:
    std::string challenge() { return give("SIGEA_MakeChallenge"); }
    Answer respond(const Holder& holder, const std::string& asked)
    {
        return ask("SIGEA_MakeResponse", asked, holder.certificate, holder.key);
    }
    int check(const std::string& response, const std::string& asked, const Holder& holder)
    {
        return tell("SIGEA_VerifyResponse", response, asked, holder.certificate);
    }
};
INSTANTIATE_ONE_SIDE(Challenge, gpkiSide);

TEST_P(Challenge, IsAnsweredByTheHolderOfTheKey)
{
    for (const Holder* holder : {&hong(), &ecHong()}) {
        const std::string asked = challenge();
        const Answer response = respond(*holder, asked);
        ASSERT_EQ(response.code, 0);
        EXPECT_EQ(cms(response.bytes, verifyOptions()), asked) << "a plain signed message";
        EXPECT_EQ(check(response.bytes, asked, *holder), 0);
    }
}

TEST_P(Challenge, IsNewEachTime)
{
    EXPECT_NE(challenge(), challenge());
    EXPECT_EQ(challenge().size(), 49U);
}

TEST_P(Challenge, IsAnsweredOnce)
{
    const std::string asked = challenge();
    const std::string response = respond(hong(), asked).bytes;
    EXPECT_EQ(check(response, asked, hong()), 0);
    EXPECT_EQ(check(response, asked, hong()), number(Code::ChallengeUnknown)) << "replayed";
    EXPECT_EQ(check(respond(hong(), asked).bytes, asked, hong()), number(Code::ChallengeUnknown));
}

TEST_P(Challenge, RefusesTheAnswerToAnother)
{
    const std::string before = challenge();
    const std::string asked = challenge();
    EXPECT_EQ(check(respond(hong(), before).bytes, asked, hong()), number(Code::ResponseOther));
    EXPECT_EQ(check(respond(hong(), asked).bytes, asked, hong()), 0) << "it is still open";
}

TEST_P(Challenge, OfAnotherContextIsUnknown)
{
    const std::string asked = challenge();
    const std::string response = respond(hong(), asked).bytes;
    restartWith("");
    EXPECT_EQ(check(response, asked, hong()), number(Code::ChallengeUnknown));
}

TEST_P(Challenge, RefusesAlteredAnswers)
{
    std::string asked = challenge();
    std::string response = respond(hong(), asked).bytes;
    int accepted = 0;
    for (std::size_t i = 0; i < response.size(); ++i) {
        std::string altered = response;
        altered[i] ^= 1;
        const int code = check(altered, asked, hong());
        ASSERT_NE(code, number(Code::ChallengeUnknown)) << i;
        if (code != 0)
            continue;
        ++accepted;
        asked = challenge();
        response = respond(hong(), asked).bytes;
    }
    EXPECT_LE(accepted, 3)
        << "the two version numbers and an empty parameter, which nobody signs or looks at";
    EXPECT_EQ(check(response, asked, hong()), 0);
}

TEST_P(Challenge, RefusesForeignAnswers)
{
    const std::string asked = challenge();
    EXPECT_EQ(check(respond(kim(), asked).bytes, asked, hong()), number(Code::ResponseForeign));
    const std::string both = addSigner(kim(), respond(hong(), asked).bytes).bytes;
    EXPECT_EQ(check(both, asked, hong()), number(Code::ResponseForeign)) << "one more signer";
    EXPECT_EQ(check(respond(hong(), asked).bytes, asked, hong()), 0);
}

TEST_P(Challenge, IsNothingElseToSign)
{
    const std::string asked = challenge();
    for (const std::string& other : {std::string("I owe you a million"), asked.substr(1), asked + "x",
                                     std::string(49, 'x'), asked.substr(0, 17)})
        EXPECT_EQ(respond(hong(), other).code, number(Code::ChallengeDamaged)) << other;
    EXPECT_EQ(check(respond(hong(), asked).bytes, asked.substr(1), hong()), number(Code::ChallengeDamaged));
}

TEST_P(Challenge, StaysOpenForAThousandMore)
{
    const std::string first = challenge();
    const std::string second = challenge();
    for (int i = 0; i < 999; ++i)
        challenge();
    EXPECT_EQ(check(respond(hong(), first).bytes, first, hong()), number(Code::ChallengeUnknown));
    EXPECT_EQ(check(respond(hong(), second).bytes, second, hong()), 0);
}

TEST_P(Challenge, VerifiesTheCertificateWhenAsked)
{
    const std::string asked = challenge();
    setOptions(QG_CMS_VERIFY_SIGNER);
    EXPECT_EQ(check(respond(hong(), asked).bytes, asked, hong()), number(Code::NoTrustedRoot));
    setOptions(0);
    EXPECT_EQ(check(respond(hong(), asked).bytes, asked, hong()), 0);
}
