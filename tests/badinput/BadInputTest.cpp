// Every operation that takes foreign bytes or files, on both interfaces, gets what is none of its business:
// nothing, bytes that are cut, random or altered, and the outputs of other operations. It answers with a code
// and a text, and leaves its outputs as they were.

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <set>

#include "Arguments.h"
#include "Memory.h"
#include "Scenes.h"
#include "TestHome.h"
#include "quillgate/returncodes.h"

namespace {

using testing::HasSubstr;

/** Codes of the toolkit's table that tell of bad input, or of what it led to. */
const std::set<int>& answersInOrder()
{
    static const std::set<int> codes = [] {
        std::set<int> all;
#define INSERT_CODE(name, number, english, korean) all.insert(number);
        QGTK_CODES(INSERT_CODE)
#undef INSERT_CODE
        for (const qgtk::Code code :
             {qgtk::Code::Ok, qgtk::Code::NoContext, qgtk::Code::OutOfMemory, qgtk::Code::Internal})
            all.erase(static_cast<int>(code));
        return all;
    }();
    return codes;
}

/** The dispatcher and the wrappers refuse by themselves what is missing, and have no text. */
bool isRefusedAbove(int code)
{
    return code == QG_NO_MEMORY || code == QG_BAD_ARGUMENT;
}

class BadInput : public testing::TestWithParam<Scene>
{
protected:
    BadInput() : operation(operationCalled(GetParam().row->operation)) {}

    RightCall prepare() const { return GetParam().row->call(bench, Samples::get()); }

    /** Makes a right call, which answers as it should. */
    void expectRight(const std::string& when) const
    {
        const RightCall right = prepare();
        ASSERT_EQ(right.arguments.size(), operation.parameters.size());
        Memory memory(bench, right.arguments);
        EXPECT_EQ(bench.call(operation, memory.words()), right.answer) << when << ": " << bench.errorText();
        if (right.answer != 0) {
            EXPECT_EQ(memory.changes(), "") << when;
        }
    }

    /** Tries all substitutes for one argument. */
    void spoil(std::size_t position) const;

    /** Whether the toolkit gets an argument at all. */
    bool isPassedOn(std::size_t position) const
    {
        const std::vector<std::string> words =
            expectedCalls(operation, cellOf(operation, *GetParam().side)).front().words;
        return std::ranges::find(words, operation.parameters[position].name) != words.end();
    }

    std::vector<Substitute> substitutesFor(std::size_t position, const Argument& argument) const;

    /** Expects a code and a text, and outputs as they were. */
    void expectRefused(int code, const Memory& memory) const;

    const Operation& operation;
    const Bench bench{*GetParam().side, GetParam().level};
};

std::vector<Substitute> BadInput::substitutesFor(std::size_t position, const Argument& argument) const
{
    std::vector<Substitute> list = absences(argument);
    // Behind the layers above, bytes go the same way.
    if (GetParam().level == Level::Flat || !operation.call) {
        const std::vector<Substitute> bytes = foreignBytes(argument);
        list.insert(list.end(), bytes.begin(), bytes.end());
    }
    if (!isPassedOn(position))
        for (Substitute& substitute : list)
            substitute.mayBeGood = true;
    return list;
}

void BadInput::expectRefused(int code, const Memory& memory) const
{
    EXPECT_EQ(memory.changes(), "") << "code " << code;
    if (GetParam().level == Level::Flat && isRefusedAbove(code))
        return;
    EXPECT_TRUE(answersInOrder().count(code)) << code;
    EXPECT_THAT(bench.errorText(), HasSubstr("(" + std::to_string(code) + ")"));
}

void BadInput::spoil(std::size_t position) const
{
    const RightCall right = prepare();
    Memory memory(bench, right.arguments);
    for (const Substitute& substitute : substitutesFor(position, right.arguments[position])) {
        SCOPED_TRACE(operation.parameters[position].name + ": " + substitute.what);
        const int code = bench.call(operation, memory.words(position, substitute));
        if (!substitute.mayBeGood) {
            EXPECT_NE(code, 0);
            EXPECT_NE(code, right.answer);
        }
        if (code != 0)
            expectRefused(code, memory);
    }
}

TEST_P(BadInput, IsRefusedWithACodeAndATextAndChangesNothing)
{
    expectRight("at first");
    ASSERT_FALSE(HasFatalFailure());
    for (std::size_t position = 0; position < operation.parameters.size(); ++position)
        if (operation.parameters[position].type.ends_with('*'))
            spoil(position);
    expectRight("in the end");
}

INSTANTIATE_TEST_SUITE_P(EachOperation, BadInput, testing::ValuesIn(allScenes()),
                         [](const auto& scene) { return nameOf(scene.param); });

std::set<std::string> operationsOfRows()
{
    std::set<std::string> names;
    for (const Row& row : allRows())
        names.insert(row.operation);
    return names;
}

TEST(BadInputRows, HaveEveryFlatFunctionOrTheReasonWhyNot)
{
    std::set<std::string> exported;
    const std::string list = readFile(EXPORTS_LIST);
    const std::regex flat("\n(\\w+)\\(void\\*[,)]");
    for (std::sregex_iterator found(list.begin(), list.end(), flat), end; found != end; ++found)
        if (const std::string name = (*found)[1];
            !name.starts_with("CLP_") && !name.ends_with("ClearCertData") && name != "ZR_Finish")
            exported.insert(name);
    EXPECT_EQ(exported.size(), 214U);
    const std::set<std::string> rows = operationsOfRows();
    for (const std::string& name : exported)
        EXPECT_EQ(rows.count(name) + operationsWithoutRow().count(name), 1U) << name;
}

/** The toolkit's operations that the rows' and the excluded functions' calls reach, and those named
 * themselves. */
std::set<std::string> reachedOperations()
{
    std::set<std::string> names = operationsOfRows();
    for (const auto& [name, reason] : operationsWithoutRow())
        names.insert(name);
    for (const Operation& operation : allOperations())
        for (const std::string& cell : {operation.zrtk, operation.gpki})
            for (const ExpectedCall& call : expectedCalls(operation, cell))
                names.insert(call.operation);
    return names;
}

TEST(BadInputRows, ReachEveryOperationOfTheManual)
{
    const std::string manual = readFile(MANUAL_FILE);
    const std::regex row("\n\\| `(\\w+)` \\| (works|-|not supported) \\| (works|-|not supported) \\|");
    const std::set<std::string> reached = reachedOperations();
    int count = 0;
    for (std::sregex_iterator found(manual.begin(), manual.end(), row), end; found != end; ++found)
        for (const auto& [column, prefix] : {std::pair(2, "ZRTK_"), {3, "GPKI_"}})
            if ((*found)[static_cast<std::size_t>(column)] == "works") {
                EXPECT_TRUE(reached.count(prefix + (*found)[1].str())) << prefix << (*found)[1];
                ++count;
            }
    EXPECT_GT(count, 300);
}

} // namespace
