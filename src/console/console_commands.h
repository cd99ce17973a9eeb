// The functions behind the console's own commands, shared by the files that
// define them and the one that registers them.
#pragma once

#include <string>

namespace GLConsole {

// The console and the machine.
void conCmdQuit();
void conCmdClear();
void conCmdCommands(std::string term);
std::string conCmdVersion();
void conCmdMemory();
bool conCmdLogConsole(bool enable, bool set);

// The window and its OpenGL context.
bool conCmdFullscreen(bool fullscreen, bool set);
void conCmdRenderer();
void conCmdExtensions();
void conCmdIsExtension(std::string name);
bool conCmdVsyncEnable(bool enable, bool set);

// The texture store.
void conCmdTextureList();
void conCmdTextureMemory();
void conCmdTextureReload();
int conCmdAntiAliasingSamples(int samples, bool set);
int conCmdAnisotropicFilteringLevel(int level, bool set);
int conCmdTextureQuality(int level, bool set);

// The game.
void conCmdMap(std::string name);

}  // namespace GLConsole
