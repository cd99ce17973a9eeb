// Every subsystem adds its own commands when it starts and takes exactly those
// away when it shuts down, leaving the registry as it found it.

#include "console_fixture.h"
#include "dynamics/dynamics.h"
#include "game/game.h"
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
};

void PrintTo(const Subsystem& subsystem, std::ostream* out) {
    *out << subsystem.name;
}

class CommandTablesTest : public ConsoleTest, public ::testing::WithParamInterface<Subsystem> {};

TEST_P(CommandTablesTest, ShutdownLeavesTheRegistryAsInitialiseFoundIt) {
    const Subsystem& subsystem = GetParam();
    const std::set<std::string> before = registeredNames();
    subsystem.initialise();
    EXPECT_GT(registeredNames().size(), before.size());
    subsystem.shutdown();
    EXPECT_EQ(registeredNames(), before);
    subsystem.shutdown();  // safe to call twice
    EXPECT_EQ(registeredNames(), before);
}

INSTANTIATE_TEST_SUITE_P(
    EverySubsystem, CommandTablesTest,
    ::testing::Values(
        Subsystem{"ParticleManager", ParticleManager::initialise, ParticleManager::shutdown},
        Subsystem{"ParticleRenderer", ParticleRenderer::initialise, ParticleRenderer::shutdown},
        Subsystem{"TriggerManager", TriggerManager::initialise, TriggerManager::shutdown},
        Subsystem{"MoverManager", MoverManager::initialise, MoverManager::shutdown},
        Subsystem{"ForceManager", ForceManager::initialise, ForceManager::shutdown},
        Subsystem{"FxParticleManager", FxParticleManager::initalise, FxParticleManager::shutdown},
        Subsystem{"LevelObjectsManager", LevelObjectsManager::initialise, LevelObjectsManager::shutdown},
        Subsystem{"LevelGeometryRenderer", LevelGeometryRenderer::initialise,
                  LevelGeometryRenderer::shutdown},
        Subsystem{"LevelBspTree", LevelBspTree::create, LevelBspTree::clear}),
    [](const ::testing::TestParamInfo<Subsystem>& test) { return std::string(test.param.name); });

}  // namespace
