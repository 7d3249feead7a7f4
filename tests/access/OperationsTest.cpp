// Every operation on both sides: what reaches the library, what is refused, what is missing.

#include "Arguments.h"
#include "Context.h"
#include "TestHome.h"
#include "WrapperAPI.h"

#include <cstring>
#include <gmock/gmock.h>
#include <set>
#include <stdexcept>

namespace {

using testing::IsEmpty;

/** Runs with the ZR side and with the GPKI side. */
class EachSide : public testing::TestWithParam<RecordingToolkit::Side>
{
protected:
    static bool onZrtk() { return GetParam() == RecordingToolkit::ZRTK; }
    static Scope ownScope() { return onZrtk() ? Scope::Zrtk : Scope::Gpki; }
    static Scope otherScope() { return onZrtk() ? Scope::Gpki : Scope::Zrtk; }
    static int notLoaded() { return onZrtk() ? QG_ZRTK_NOT_LOADED : QG_GPKI_NOT_LOADED; }
    static const std::string& cell(const Operation& operation)
    {
        return onZrtk() ? operation.zrtk : operation.gpki;
    }
    static bool offered(const Operation& operation) { return cell(operation) != "-"; }
    static bool reachesLibrary(const Operation& operation)
    {
        return !expectedCalls(operation, cell(operation)).empty();
    }

    /** What a good call answers while every library operation answers 0. */
    static int goodResult(const Operation& operation)
    {
        if (!offered(operation))
            return QG_NOT_AVAILABLE;
        return cell(operation).starts_with("refused") ? QG_BAD_ARGUMENT : QG_OK;
    }

    /** These two clear the start of their text before the library is asked. Tested by name. */
    static bool clearsItsText(const Operation& operation)
    {
        return operation.name == "ZR_GetErrInfo" || (operation.name == "ZR_GetVersion" && onZrtk());
    }

    static std::vector<TestedArgument> ownTests(const Operation& operation)
    {
        std::vector<TestedArgument> tests = testsOf(operation, Scope::Both);
        for (const TestedArgument& test : testsOf(operation, ownScope()))
            tests.push_back(test);
        return tests;
    }
};

/** The one operation that needs a sensible answer to succeed. */
void tellValidity(RecordingToolkit& toolkit)
{
    toolkit.act("GPKI_CERT_GetValidity", [](const Word* words) {
        std::strcpy(pointer<char>(words[2]), "a ~ b"); // NOLINT: the buffer holds 1024 bytes
        return 0;
    });
}

void expectCalls(RecordingToolkit& toolkit, const std::vector<ExpectedCall>& expected,
                 const Arguments& arguments)
{
    ASSERT_EQ(toolkit.calls().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(toolkit.calls()[i].operation, expected[i].operation);
        for (std::size_t w = 0; w < expected[i].words.size(); ++w)
            expectWord(expected[i].words[w], toolkit.calls()[i].words[w], arguments, toolkit.context());
    }
}

std::string sideName(const testing::TestParamInfo<RecordingToolkit::Side>& info)
{
    return info.param == RecordingToolkit::ZRTK ? "ZrSide" : "GpkiSide";
}

INSTANTIATE_TEST_SUITE_P(Sides, EachSide, testing::Values(RecordingToolkit::ZRTK, RecordingToolkit::GPKI),
                         sideName);

} // namespace

TEST(Operations, CoverAll214FlatFunctions)
{
    std::set<std::string> names;
    for (const Operation& operation : allOperations())
        names.insert(operation.name);
    EXPECT_EQ(names.size(), 214U);
    EXPECT_EQ(allOperations().size(), 214U);
}

TEST(Operations, ReachALibraryOn124BothOn72TheZrSideAndOn17TheGpkiSide)
{
    int both = 0;
    int zrtk = 0;
    int gpki = 0;
    for (const Operation& operation : allOperations()) {
        both += operation.zrtk != "-" && operation.gpki != "-" && operation.zrtk != "no library call";
        zrtk += operation.gpki == "-";
        gpki += operation.zrtk == "-";
    }
    EXPECT_EQ(both, 124);
    EXPECT_EQ(zrtk, 72);
    EXPECT_EQ(gpki, 17);
}

TEST(Operations, AnswerNoContextForANullContext)
{
    for (const Operation& operation : allOperations()) {
        SCOPED_TRACE(operation.name);
        Arguments arguments(operation);
        EXPECT_EQ(operation.call(nullptr, arguments.words()), QG_NO_CONTEXT);
        arguments.clearAllBut({});
        EXPECT_EQ(operation.call(nullptr, arguments.words()), QG_NO_CONTEXT);
    }
}

TEST(Operations, AnswerNoContextBeforeTheirTestsOnAContextThatWasNotInitialised)
{
    CWrapperAPI api;
    for (const Operation& operation : allOperations()) {
        SCOPED_TRACE(operation.name);
        Arguments arguments(operation);
        EXPECT_EQ(operation.call(&api, arguments.words()), QG_NO_CONTEXT);
        arguments.clearAllBut({});
        EXPECT_EQ(operation.call(&api, arguments.words()), QG_NO_CONTEXT);
    }
}

TEST(Operations, DoNothingOnASideThatIsNeitherButKeepTheirTests)
{
    CWrapperAPI api;
    *reinterpret_cast<int*>(&api) = 7; // the API type is the object's first member
    for (const Operation& operation : allOperations()) {
        SCOPED_TRACE(operation.name);
        Arguments arguments(operation);
        EXPECT_EQ(operation.call(&api, arguments.words()), QG_OK);
        const std::vector<TestedArgument> tests = testsOf(operation, Scope::Both);
        if (tests.empty())
            continue;
        arguments.clearAllBut({});
        EXPECT_EQ(operation.call(&api, arguments.words()), tests[0].code);
    }
}

TEST_P(EachSide, PassesExactlyItsArgumentsToExactlyItsOperation)
{
    RecordingToolkit toolkit(GetParam());
    tellValidity(toolkit);
    Context context(toolkit);
    ASSERT_EQ(context.result(), QG_OK);
    for (const Operation& operation : allOperations())
        for (const Word truthValue : {1, 0}) {
            SCOPED_TRACE(operation.name);
            Arguments arguments(operation);
            for (const Parameter& parameter : operation.parameters)
                if (parameter.type == "bool")
                    arguments.set(parameter.name, truthValue);
            toolkit.forget();
            EXPECT_EQ(operation.call(context, arguments.words()), goodResult(operation));
            expectCalls(toolkit, expectedCalls(operation, cell(operation)), arguments);
        }
}

TEST_P(EachSide, PassesTheLibrarysOwnNumberOnUnchanged)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    for (const Operation& operation : allOperations()) {
        const std::vector<ExpectedCall> calls = expectedCalls(operation, cell(operation));
        if (calls.empty())
            continue;
        SCOPED_TRACE(operation.name);
        for (const int number : {4711, -5, 10005}) {
            toolkit.answer(calls.back().operation, number);
            EXPECT_EQ(operation.call(context, Arguments(operation).words()), number);
        }
        toolkit.answer(calls.back().operation, 0);
    }
}

TEST_P(EachSide, KeepsTheTextOfEveryFailure)
{
    RecordingToolkit toolkit(GetParam());
    const std::string errorText = std::string(toolkit.prefix()) + "_API_GetErrInfo";
    Context context(toolkit);
    for (const Operation& operation : allOperations())
        for (const ExpectedCall& call : expectedCalls(operation, cell(operation))) {
            if (call.operation == errorText)
                continue;
            SCOPED_TRACE(operation.name + ", " + call.operation);
            toolkit.tellError(operation.name);
            toolkit.answer(call.operation, 77);
            toolkit.forget();
            EXPECT_EQ(operation.call(context, Arguments(operation).words()), 77);
            EXPECT_EQ(toolkit.operations().back(), errorText) << "a failed step ends the operation";
            char kept[2048] = {};
            EXPECT_EQ(ZR_GetErrInfo2(context, sizeof kept, kept), QG_OK);
            EXPECT_EQ(kept, operation.name);
            toolkit.answer(call.operation, 0);
        }
}

TEST_P(EachSide, TouchesNoOutputUnlessTheLibraryIsReached)
{
    RecordingToolkit toolkit(GetParam());
    RecordingToolkit lacking(GetParam(), "empty");
    std::string directory = TestHome::scratch("no-library");
    Context loaded(toolkit);
    Context withoutOperations(lacking);
    Context withoutLibrary(GetParam(), directory.data(), nullptr);
    for (const Operation& operation : allOperations()) {
        if (clearsItsText(operation))
            continue;
        SCOPED_TRACE(operation.name);
        Arguments arguments(operation);
        const std::string before = arguments.memory();
        for (void* context : {static_cast<void*>(withoutOperations), static_cast<void*>(withoutLibrary)})
            operation.call(context, arguments.words());
        for (const TestedArgument& test : ownTests(operation)) {
            const Word good = arguments[test.name];
            for (const Word value : refusedValues(test, arguments)) {
                arguments.set(test.name, value);
                operation.call(loaded, arguments.words());
            }
            arguments.set(test.name, good);
        }
        EXPECT_TRUE(arguments.memory() == before);
    }
}

TEST_P(EachSide, RefusesEveryTestedArgumentBeforeTheLibraryIsReached)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    for (const Operation& operation : allOperations())
        for (const TestedArgument& test : ownTests(operation)) {
            SCOPED_TRACE(operation.name + ", " + test.name);
            Arguments arguments(operation);
            for (const Word value : refusedValues(test, arguments)) {
                arguments.set(test.name, value);
                EXPECT_EQ(operation.call(context, arguments.words()), test.code);
                EXPECT_THAT(toolkit.calls(), IsEmpty());
            }
        }
}

TEST_P(EachSide, AnswersTheFirstRefusalInTheOrderOfTesting)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    for (const Operation& operation : allOperations()) {
        std::vector<TestedArgument> tests = ownTests(operation);
        for (; !tests.empty(); tests.erase(tests.begin())) {
            SCOPED_TRACE(operation.name + " from " + tests[0].name);
            Arguments arguments(operation);
            for (const TestedArgument& test : tests)
                arguments.set(test.name, refusedValues(test, arguments)[0]);
            EXPECT_EQ(operation.call(context, arguments.words()), tests[0].code);
        }
    }
}

TEST_P(EachSide, LetsThroughWhatTheTestDoesNotName)
{
    RecordingToolkit toolkit(GetParam());
    tellValidity(toolkit);
    Context context(toolkit);
    for (const Operation& operation : allOperations())
        for (const TestedArgument& test : ownTests(operation)) {
            SCOPED_TRACE(operation.name + ", " + test.name);
            Arguments arguments(operation);
            for (const Word value : admittedValues(test, arguments)) {
                arguments.set(test.name, value);
                toolkit.forget();
                EXPECT_EQ(operation.call(context, arguments.words()), goodResult(operation));
                expectCalls(toolkit, expectedCalls(operation, cell(operation)), arguments);
            }
        }
}

TEST_P(EachSide, PassesArgumentsThatAreNotTestedOnUntested)
{
    RecordingToolkit toolkit(GetParam());
    tellValidity(toolkit);
    Context context(toolkit);
    for (const Operation& operation : allOperations()) {
        if (operation.name == "PKCS11OpenSessionWithSlotID")
            continue; // a null PIN is told apart; tested by name
        SCOPED_TRACE(operation.name);
        std::vector<std::string> tested;
        for (const TestedArgument& test : ownTests(operation))
            tested.push_back(test.name);
        Arguments arguments(operation);
        arguments.clearAllBut(tested);
        toolkit.forget();
        EXPECT_EQ(operation.call(context, arguments.words()), goodResult(operation));
        expectCalls(toolkit, expectedCalls(operation, cell(operation)), arguments);
    }
}

TEST_P(EachSide, LacksNothingButTheOperationWhenTheLibraryExportsNone)
{
    Context context(GetParam(), RecordingToolkit(GetParam(), "empty").directory(),
                    RecordingToolkit(GetParam(), "empty").fileName());
    EXPECT_EQ(context.result(), QG_NOT_AVAILABLE);
    for (const Operation& operation : allOperations()) {
        SCOPED_TRACE(operation.name);
        Arguments arguments(operation);
        EXPECT_EQ(operation.call(context, arguments.words()),
                  reachesLibrary(operation) ? QG_NOT_AVAILABLE : goodResult(operation));
        const std::vector<TestedArgument> tests = ownTests(operation);
        if (tests.empty())
            continue;
        arguments.set(tests[0].name, refusedValues(tests[0], arguments)[0]);
        EXPECT_EQ(operation.call(context, arguments.words()), tests[0].code);
    }
}

TEST_P(EachSide, GoesOnWorkingBesideOperationsThatTheLibraryLacks)
{
    RecordingToolkit toolkit(GetParam(), "bare");
    Context context(toolkit);
    ASSERT_EQ(context.result(), QG_OK);
    BINSTR bytes = {reinterpret_cast<unsigned char*>(toolkit.directory()), 3};
    char text[64] = "untouched";
    EXPECT_EQ(CertGetUID(context, sizeof text, text), QG_NOT_AVAILABLE);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
    EXPECT_STREQ(text, "untouched");
    EXPECT_EQ(CertLoad(context, &bytes), QG_OK);
    EXPECT_EQ(ZR_BINSTR_Create(context, &bytes), QG_OK);
    EXPECT_EQ(toolkit.calls().size(), 2U);
}

TEST_P(EachSide, TellsThatTheLibraryIsNotLoadedAfterTheDispatchersTestsAndBeforeTheWrappers)
{
    std::string directory = TestHome::scratch("no-library");
    Context context(GetParam(), directory.data(), nullptr);
    EXPECT_EQ(context.result(), notLoaded());
    for (const Operation& operation : allOperations()) {
        if (cell(operation) == "no library call")
            continue;
        SCOPED_TRACE(operation.name);
        const int expected = offered(operation) ? notLoaded() : QG_NOT_AVAILABLE;
        Arguments arguments(operation);
        EXPECT_EQ(operation.call(context, arguments.words()), expected);
        for (const TestedArgument& test : testsOf(operation, ownScope()))
            arguments.set(test.name, refusedValues(test, arguments)[0]);
        EXPECT_EQ(operation.call(context, arguments.words()), expected);
        for (const TestedArgument& test : testsOf(operation, Scope::Both)) {
            Arguments spoilt(operation);
            for (const Word value : refusedValues(test, spoilt)) {
                spoilt.set(test.name, value);
                EXPECT_EQ(operation.call(context, spoilt.words()), test.code) << test.name;
            }
        }
    }
}

TEST_P(EachSide, AnswersACodeWhenTheLibraryThrows)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    for (const Operation& operation : allOperations()) {
        const std::vector<ExpectedCall> calls = expectedCalls(operation, cell(operation));
        if (calls.empty())
            continue;
        SCOPED_TRACE(operation.name);
        toolkit.act(calls.back().operation, [](const Word*) -> int { throw std::runtime_error("library"); });
        EXPECT_EQ(operation.call(context, Arguments(operation).words()), QG_BAD_ARGUMENT);
        toolkit.answer(calls.back().operation, 0);
    }
}
