// Every subsystem adds its own commands when it starts and takes exactly those
// away when it shuts down, leaving the registry as it found it.
#include <set>
#include <string>

#include "console_fixture.h"
#include "dynamics/dynamics.h"
#include "game/game.h"
#include "graphics/graphics.h"
#include "level/level.h"
#include "water/water.h"

namespace {

std::set<std::string> registeredNames() {
    std::set<std::string> names;
    for (const auto& [key, command] : GLConsole::state().commands) names.insert(key);
    return names;
}

struct Subsystem {
    const char* name;
    void (*initialise)();
    void (*shutdown)();
    std::set<std::string> commands;
};

void PrintTo(const Subsystem& subsystem, std::ostream* out) {
    *out << subsystem.name;
}

class CommandTablesTest : public ConsoleTest, public ::testing::WithParamInterface<Subsystem> {};

TEST_P(CommandTablesTest, ShutdownLeavesTheRegistryAsInitialiseFoundIt) {
    const Subsystem& subsystem = GetParam();
    const std::set<std::string> before = registeredNames();
    subsystem.initialise();
    std::set<std::string> added;
    for (const std::string& name : registeredNames())
        if (!before.count(name)) added.insert(name);
    EXPECT_EQ(added, subsystem.commands);
    subsystem.shutdown();
    EXPECT_EQ(registeredNames(), before);
    subsystem.shutdown();  // safe to call twice
    EXPECT_EQ(registeredNames(), before);
}

INSTANTIATE_TEST_SUITE_P(
    EverySubsystem, CommandTablesTest,
    ::testing::Values(
        Subsystem{"ParticleManager",
                  ParticleManager::initialise,
                  ParticleManager::shutdown,
                  {"GRAVITY", "ROOMTEMPERATURE", "HEATTRANSFERRATE", "STEAMRISERATE", "STEAMSCATTERRATE",
                   "PARTICLECREATE", "PARTICLECOUNT", "PARTICLEGROUPCOUNT", "PARTICLEGROUPDRAW"}},
        Subsystem{
            "ParticleRenderer", ParticleRenderer::initialise, ParticleRenderer::shutdown, {"PARTICLEDRAW"}},
        Subsystem{"TriggerManager",
                  TriggerManager::initialise,
                  TriggerManager::shutdown,
                  {"TRIGGERTYPELIST", "TRIGGERCREATE", "TRIGGERDRAW", "TRIGGERCOUNT"}},
        Subsystem{"MoverManager",
                  MoverManager::initialise,
                  MoverManager::shutdown,
                  {"MOVERCOUNT", "MOVERDRAW", "DYNAMICNODEDRAW"}},
        Subsystem{"ForceManager",
                  ForceManager::initialise,
                  ForceManager::shutdown,
                  {"FORCECOUNT", "FORCECREATE", "FORCEDRAW"}},
        Subsystem{"FxParticleManager",
                  FxParticleManager::initalise,
                  FxParticleManager::shutdown,
                  {"FXEMITTERCREATE", "FXEMITTERDRAW", "FXEMITTERCOUNT", "FXPARTICLECOUNT"}},
        Subsystem{"LevelObjectsManager",
                  LevelObjectsManager::initialise,
                  LevelObjectsManager::shutdown,
                  {"OBJECTSDRAW", "OBJECTSCULL", "OBJECTSCOUNT", "OBJECTSDRAWIDS", "OBJECTSCREATE"}},
        Subsystem{"LevelGeometryRenderer",
                  LevelGeometryRenderer::initialise,
                  LevelGeometryRenderer::shutdown,
                  {"DRAWLEVELGEOMETRY"}},
        Subsystem{"LevelBspTree",
                  LevelBspTree::create,
                  LevelBspTree::clear,
                  {"BSPSIZE", "BSPDEPTH", "BSPWALK", "BSPWALKDRAW", "BSPCAST", "BSPCASTDRAW", "BSPSPLITDRAW",
                   "BSPNODEDRAW"}}),
    [](const ::testing::TestParamInfo<Subsystem>& test) { return std::string(test.param.name); });

}  // namespace
