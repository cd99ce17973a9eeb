// The console's own commands and the registration of all basic commands.
#include <cinttypes>
#include <cstdio>

#include "console/console_commands.h"
#include "console/console_state.h"
#include "foundation/foundation.h"
#include "graphics/window/window.h"
#include "platform/platform.h"

namespace GLConsole {

namespace {

// Machines have more memory than an unsigned int holds, so the byte counts are
// written as 64-bit numbers in the same plain decimal form.
void printBytes(uint64_t bytes) {
    char text[32];
    std::snprintf(text, sizeof(text), "%1" PRIu64, bytes);
    print(text);
    print("\t bytes");
}

}  // namespace

void conCmdQuit() {
    TRACE_LOCATION("GLConsole::conCmdQuit");
    GLWindow::close();
}

void conCmdClear() {
    TRACE_LOCATION("GLConsole::conCmdClear");
    clear();
}

void conCmdCommands(std::string term) {
    TRACE_LOCATION("GLConsole::conCmdCommands");
    printTitle("Command list: Use Commands < term > to filter listings");
    term.erase(0, term.find_first_not_of(' '));
    slStringUpper(term);
    const auto& registry = state().commands;
    for (auto it = registry.lower_bound(term); it != registry.end() && keyStartsWith(it->first, term); ++it) {
        print("\n");
        print(it->second.name);
    }
    print("\n");
}

std::string conCmdVersion() {
    TRACE_LOCATION("GLConsole::conCmdVersion");
    return "1.00";
}

void conCmdMemory() {
    TRACE_LOCATION("GLConsole::conCmdMemory");
    const Platform::MemoryStatus status = Platform::memoryStatus();
    printTitle("Memory usage");
    print("\nSystem memory usage: \n");
    print("\nTotal : ");
    printBytes(status.totalPhysical);
    print("\nFree  : ");
    printBytes(status.availablePhysical);
    print("\nUsed  : ");
    printBytes(status.totalPhysical - status.availablePhysical);
    print("\n");
}

bool conCmdLogConsole(bool enable, bool set) {
    TRACE_LOCATION("GLConsole::conCmdLogConsole");
    if (set) {
        if (enable)
            enableLogging();
        else
            disableLogging();
    }
    return isLogging();
}

namespace {
// In the order Commands lists them after start-up.
const GLConsoleCommand basicCommands[] = {
    {"Quit", conCmdQuit},
    {"Clear", conCmdClear},
    {"Commands", conCmdCommands},
    {"Version", conCmdVersion},
    {"Memory", conCmdMemory},
    {"Fullscreen", conCmdFullscreen},
    {"LogConsole", conCmdLogConsole},
    {"Renderer", conCmdRenderer},
    {"TextureList", conCmdTextureList},
    {"TextureMemory", conCmdTextureMemory},
    {"TextureReload", conCmdTextureReload},
    {"Extensions", conCmdExtensions},
    {"IsExtension", conCmdIsExtension},
    {"AntiAliasingSamples", conCmdAntiAliasingSamples},
    {"AnisotropicFilteringLevel", conCmdAnisotropicFilteringLevel},
    {"VsyncEnable", conCmdVsyncEnable},
    {"TextureQuality", conCmdTextureQuality},
    {"Map", conCmdMap},
};
}  // namespace

void addBasicGLConsoleCommands() {
    TRACE_LOCATION("GLConsole::addBasicGLConsoleCommands");
    addCommands(basicCommands);
}

}  // namespace GLConsole
