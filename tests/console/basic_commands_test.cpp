// The console's own commands, typed as a player would type them.
#include <cstdlib>
#include <regex>

#include "console_fixture.h"
#include "game/game.h"
#include "graphics/real_window.h"
#include "graphics/texture_state.h"

namespace {

const std::string rule = "\n\n" + std::string(64, '*') + "\n\n";

std::string title(const std::string& text) {
    return rule + text + rule;
}

class BasicCommandsTest : public ConsoleTest {
protected:
    void TearDown() override {
        GLTextureManager::setTextureDetailLevel(0);
        GLWindow::setAntiAliasingMode(1);
        GLWindow::enableVsync(true);
        GLWindow::setFullscreen(false, 800, 600);
        GLWindow::setResizeable(true);
        GLWindow::close();
        ConsoleTest::TearDown();
    }
};

}  // namespace

// Lines whose whole answer is known without a window or a game.
// A typed line and all it prints after its echo.
using Answer = std::pair<std::string, std::string>;

class WindowlessAnswers : public BasicCommandsTest, public ::testing::WithParamInterface<Answer> {};

TEST_P(WindowlessAnswers, AreExact) {
    ManualClock clock;
    EXPECT_EQ(run(GetParam().first), GetParam().second);
}

const std::string commandsHead = title("Command list: Use Commands < term > to filter listings");
const std::string everyCommand =
    "\nAnisotropicFilteringLevel\nAntiAliasingSamples\nClear\nCommands\nExtensions\nFullscreen\nIsExtension"
    "\nLogConsole\nMap\nMemory\nQuit\nRenderer\nTextureList\nTextureMemory\nTextureQuality\nTextureReload"
    "\nVersion\nVsyncEnable\n";

INSTANTIATE_TEST_SUITE_P(
    ConsoleCommands, WindowlessAnswers,
    ::testing::Values(
        // Commands lists every command in key order, or those whose name begins with the term.
        Answer{"commands", commandsHead + everyCommand}, Answer{"commands   ", commandsHead + everyCommand},
        Answer{"commands   tex",
               commandsHead + "\nTextureList\nTextureMemory\nTextureQuality\nTextureReload\n"},
        Answer{"Commands an", commandsHead + "\nAnisotropicFilteringLevel\nAntiAliasingSamples\n"},
        Answer{"Commands zebra", commandsHead + "\n"}, Answer{"Commands map x", commandsHead + "\n"},
        Answer{"renderer", title("Graphics renderer")},
        Answer{"extensions", title("Supported OpenGL Extensions")},
        Answer{"isextension", "\nUSAGE: IsExtension  < string >"},
        Answer{"isextension GL_NO_SUCH_thing", "\nExtension not found."},
        Answer{"vsyncenable false", "\nVsyncEnable is now false"},
        Answer{"texturelist", title("Textures in use")},
        Answer{"texturememory", title("Texture memory used") + "0 bytes"},
        Answer{"texturereload", "\nTexture refresh complete.\nTime take to reload: 0.000000"},
        Answer{"texturequality", "\nTextureQuality is 0"},
        Answer{"texturequality 3 4", "\nUSAGE: TextureQuality < integer number OR nothing >"},
        Answer{"map", "\nMap is "}));

TEST_F(BasicCommandsTest, WithoutAWindowVsyncIsKeptMapStartsNoGameAndAnisotropicFilteringReportsItsLevel) {
    run("vsyncenable false");
    EXPECT_FALSE(GLWindow::vsyncEnabled());
    EXPECT_EQ(run("vsyncenable"), "\nVsyncEnable is false");
    EXPECT_EQ(run("map maps\\none.rill"), "");
    EXPECT_FALSE(Game::isRunning());
    const std::string level = std::to_string(GLTextureManager::getAnisotropicFilteringLevel());
    EXPECT_EQ(run("anisotropicfilteringlevel"), "\nAnisotropicFilteringLevel is " + level);
    // Without the extension the level can't change.
    if (!GLTextureManager::state().anisotropicSupported) {
        EXPECT_EQ(run("anisotropicfilteringlevel 8"), "\nAnisotropicFilteringLevel is now " + level);
    }
    EXPECT_EQ(run("anisotropicfilteringlevel x"),
              "\nUSAGE: AnisotropicFilteringLevel < integer number OR nothing >");
}

TEST_F(BasicCommandsTest, MemoryReportsTheMachine) {
    const std::string text = run("memory");
    const std::regex layout(
        "\n\n\\*{64}\n\nMemory usage\n\n\\*{64}\n\n"
        "\nSystem memory usage: \n"
        "\nTotal : ([0-9]+)\t bytes\nFree  : ([0-9]+)\t bytes\nUsed  : ([0-9]+)\t bytes\n");
    std::smatch numbers;
    ASSERT_TRUE(std::regex_match(text, numbers, layout)) << text;
    const unsigned long long total = std::stoull(numbers[1]);
    const unsigned long long free = std::stoull(numbers[2]);
    EXPECT_GT(total, 0u);
    EXPECT_LE(free, total);
    EXPECT_EQ(std::stoull(numbers[3]), total - free);
}

TEST_F(BasicCommandsTest, FullscreenAntiAliasingSamplesAndQuitWorkOnTheWindow) {
    GLWindow::createWindow("Console test", 800, 600);
    EXPECT_EQ(run("fullscreen"), "\nFullscreen is false");
    EXPECT_EQ(run("fullscreen true"), "\nFullscreen is now true");
    EXPECT_EQ(GLWindow::getClientWidth(), GLWindow::getScreenWidth());
    EXPECT_EQ(GLWindow::getClientHeight(), GLWindow::getScreenHeight());
    EXPECT_EQ(run("fullscreen FALSE"), "\nFullscreen is now false");
    EXPECT_EQ(GLWindow::getClientWidth(), 800);
    EXPECT_EQ(GLWindow::getClientHeight(), 600);
    EXPECT_FALSE(GLWindow::isResizeable());
    EXPECT_EQ(run("fullscreen yes"), "\nUSAGE: Fullscreen < true OR false OR nothing >");
    EXPECT_EQ(run("AntiAliasingSamples 4"), "\nAntiAliasingSamples is now 4");
    EXPECT_EQ(run("AntiAliasingSamples 0"), "\nAntiAliasingSamples is now 4");
    EXPECT_EQ(run("antialiasingsamples"), "\nAntiAliasingSamples is 4");
    EXPECT_EQ(run("antialiasingsamples 2.0"), "\nUSAGE: AntiAliasingSamples < integer number OR nothing >");
    ASSERT_TRUE(GLWindow::exists());
    EXPECT_EQ(run("QUIT"), "");
    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(run("quit now"), "\nUSAGE: Quit < nothing >");
}

TEST_F(BasicCommandsTest, TextureListAndMemoryFollowTheStore) {
    const GLTexture first("gfx\\missing_one.tga");
    const GLTexture second("gfx\\missing_two.png");
    std::vector<std::string> lines;
    GLTextureManager::getTextureList(lines);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(run("texturelist"), title("Textures in use") + "\n" + lines[0] + "\n" + lines[1]);

    const unsigned int bytes = GLTextureManager::getTextureBytesUsed();
    ASSERT_GT(bytes, 0u);
    EXPECT_EQ(run("texturememory"),
              title("Texture memory used") + std::to_string(bytes + bytes / 3) + " bytes");
    // Each level of detail halves the size of the textures held.
    for (const int quality : {2, 1, 0}) {
        EXPECT_EQ(run("TextureQuality " + std::to_string(quality)),
                  "\nTextureQuality is now " + std::to_string(quality));
        const unsigned int held = bytes >> quality;
        EXPECT_EQ(run("texturememory"),
                  title("Texture memory used") + std::to_string(held + held / 3) + " bytes");
    }
}

TEST_F(BasicCommandsTest, RendererAndExtensionsAskTheRealContext) {
    if (!std::getenv("DISPLAY")) GTEST_SKIP() << "no display for a real window";
    RealWindow window;
    ASSERT_TRUE(GLWindow::contextAvailable());
    const char* renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    ASSERT_NE(renderer, nullptr);
    EXPECT_EQ(run("renderer"), title("Graphics renderer") + renderer);

    std::vector<std::string> extensions;
    GLWindow::getExtensionList(extensions);
    ASSERT_FALSE(extensions.empty());
    std::string listing = title("Supported OpenGL Extensions");
    for (const std::string& extension : extensions) listing += extension + "\n";
    EXPECT_EQ(run("extensions"), listing);
    EXPECT_EQ(run("isextension " + extensions.front()), "\nExtension detected.");
    EXPECT_EQ(run("isextension GL_NO_SUCH_thing"), "\nExtension not found.");
}

TEST_F(BasicCommandsTest, WhileAGameRunsMapAndAntiAliasingWorkOnIt) {
    GLWindow::createWindow("Console test", 800, 600);
    Game::initialise("maps\\absent.rill");
    ASSERT_TRUE(Game::isRunning());
    printed();
    // The change of level waits for the end of the frame.
    EXPECT_EQ(run("map maps\\other.rill"), "");
    EXPECT_TRUE(Game::isRunning());
    // The level's display lists go with the old context and are built again.
    const std::string text = run("antialiasingsamples 2");
    EXPECT_NE(text.find("\nInitialising level geometry renderer..."), std::string::npos) << text;
    EXPECT_EQ(text.substr(text.rfind('\n')), "\nAntiAliasingSamples is now 2");
    Game::shutdown();
}
