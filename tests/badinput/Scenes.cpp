#include "Scenes.h"

#include "Arguments.h"

namespace {

/** Whether an operation is there: offered by the side, and behind a flat function when it is called by one.
 */
bool isThere(const Operation& operation, const Side& side, Level level)
{
    const std::vector<ExpectedCall> calls = expectedCalls(operation, cellOf(operation, side));
    return level == Level::Flat ? operation.call && !calls.empty() : calls.size() == 1;
}

} // namespace

void PrintTo(const Scene& scene, std::ostream* out)
{
    *out << scene.row->operation;
}

std::string nameOf(const Scene& scene)
{
    return std::string(scene.side->name) + (scene.level == Level::Flat ? "_" : "_Bare_") +
           scene.row->operation + scene.row->variant;
}

std::vector<Scene> allScenes()
{
    std::vector<Scene> scenes;
    for (const Row& row : allRows())
        for (const Side* side : {&zrtkSide, &gpkiSide})
            for (const Level level : {Level::Flat, Level::Bare})
                if (isThere(operationCalled(row.operation), *side, level))
                    scenes.push_back({&row, side, level});
    return scenes;
}

std::vector<Scene> outermostScenes()
{
    std::vector<Scene> scenes = allScenes();
    std::erase_if(scenes, [](const Scene& scene) {
        return scene.level == Level::Bare && operationCalled(scene.row->operation).call;
    });
    return scenes;
}
