#pragma once

#include "Rows.h"

/** One row on one side and level. */
struct Scene
{
    const Row* row;
    const Side* side;
    Level level;
};

/** What a report calls a scene, and a name for its test. */
void PrintTo(const Scene& scene, std::ostream* out);
std::string nameOf(const Scene& scene);

/** All rows on every side that offers their operations, at both levels. */
std::vector<Scene> allScenes();

/** The rows on every side, each at one level: the flat functions, and what none of them reaches. */
std::vector<Scene> outermostScenes();
