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

// Every subsystem with a table of commands, by name.
const std::tuple<const char*, void (*)(), void (*)()> subsystems[] = {
    {"ParticleManager", ParticleManager::initialise, ParticleManager::shutdown},
    {"ParticleRenderer", ParticleRenderer::initialise, ParticleRenderer::shutdown},
    {"TriggerManager", TriggerManager::initialise, TriggerManager::shutdown},
    {"MoverManager", MoverManager::initialise, MoverManager::shutdown},
    {"ForceManager", ForceManager::initialise, ForceManager::shutdown},
    {"FxParticleManager", FxParticleManager::initalise, FxParticleManager::shutdown},
    {"LevelObjectsManager", LevelObjectsManager::initialise, LevelObjectsManager::shutdown},
    {"LevelGeometryRenderer", LevelGeometryRenderer::initialise, LevelGeometryRenderer::shutdown},
    {"LevelBspTree", LevelBspTree::create, LevelBspTree::clear}};

using CommandTablesTest = ConsoleTest;

TEST_F(CommandTablesTest, ShutdownLeavesTheRegistryAsInitialiseFoundIt) {
    for (const auto& [name, start, stop] : subsystems) {
        SCOPED_TRACE(name);
        const std::set<std::string> before = registeredNames();
        start();
        EXPECT_GT(registeredNames().size(), before.size());
        stop();
        EXPECT_EQ(registeredNames(), before);
        stop();  // safe to call twice
        EXPECT_EQ(registeredNames(), before);
    }
}

int probe() {
    return 1;
}

// Starting prints the greeting, then the table answers; stopping prints the
// farewell and takes the table away.
TEST_F(CommandTablesTest, ASubsystemPrintsItsLinesAsItsTableComesAndGoes) {
    const GLConsoleCommand table[] = {{"Probe", probe}};
    const GLConsole::Subsystem subsystem("\nHello.", "\nGoodbye.", table);
    GLConsole::startSubsystem(subsystem);
    EXPECT_EQ(printed(), "\nHello.");
    EXPECT_EQ(run("probe"), "\nProbe is 1");
    GLConsole::stopSubsystem(subsystem);
    EXPECT_EQ(printed(), "\nGoodbye.");
    EXPECT_EQ(registeredNames().count("PROBE"), 0u);
}

}  // namespace
