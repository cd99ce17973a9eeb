// Each audio subsystem adds its console commands, named letter for letter, in
// initialise and takes exactly those away again in shutdown.
#include <set>

#include "audio/audio.h"
#include "audio/listening.h"
#include "console/console.h"

using namespace Listening;

namespace {

struct CommandSet {
    const char* subsystem;
    void (*initialise)();
    void (*shutdown)();
    std::set<std::string> names;
};

std::ostream& operator<<(std::ostream& out, const CommandSet& set) {
    return out << set.subsystem;
}

std::set<std::string> registered() {
    std::set<std::string> names;
    for (const auto& [key, command] : GLConsole::getCommands()) names.insert(command.name);
    return names;
}

class AudioCommands : public AudioTest, public ::testing::WithParamInterface<CommandSet> {};

TEST_P(AudioCommands, ComeWithInitialiseAndGoWithShutdown) {
    const std::set<std::string> before = registered();
    GetParam().initialise();
    std::set<std::string> added;
    for (const std::string& name : registered())
        if (!before.count(name)) added.insert(name);
    EXPECT_EQ(added, GetParam().names);
    GetParam().initialise();
    EXPECT_EQ(registered().size(), before.size() + added.size()) << "a second initialise adds nothing more";
    GetParam().shutdown();
    EXPECT_EQ(registered(), before);
    GetParam().shutdown();
    EXPECT_EQ(registered(), before);
}

INSTANTIATE_TEST_SUITE_P(
    Audio, AudioCommands,
    ::testing::Values(CommandSet{"SoundManager",
                                 SoundManager::initialise,
                                 SoundManager::shutdown,
                                 {"SoundList", "SoundMemory"}},
                      CommandSet{"SoundSourceManager",
                                 SoundSourceManager::initialise,
                                 SoundSourceManager::shutdown,
                                 {"SoundSourceCreate", "SoundSourceCount", "SoundSourceDraw"}},
                      CommandSet{"MusicSystem",
                                 MusicSystem::initialise,
                                 MusicSystem::shutdown,
                                 {"MusicSystemInitialised", "MusicPlay", "MusicVolume"}}));

}  // namespace
