// Each operation once more and once more: it leaves no memory behind.

#include "Memory.h"
#include "MemoryGrowth.h"
#include "Scenes.h"

namespace {

class OperationRounds : public testing::TestWithParam<Scene>
{};

TEST_P(OperationRounds, LeaveNothingBehind)
{
    const Operation& operation = operationCalled(GetParam().row->operation);
    const Bench bench{*GetParam().side, GetParam().level};
    memory_growth::expectNone(
        [&] {
            const RightCall right = GetParam().row->call(bench, Samples::get());
            Memory memory(bench, right.arguments);
            ASSERT_EQ(bench.call(operation, memory.words()), right.answer) << bench.errorText();
        },
        memory_growth::rounds() / 25);
}

INSTANTIATE_TEST_SUITE_P(EachOperation, OperationRounds, testing::ValuesIn(outermostScenes()),
                         [](const auto& scene) { return nameOf(scene.param); });

} // namespace
