// The console's own settings from "cfg//console.cfg".
#include <string>

#include "console/console_state.h"
#include "console_fixture.h"
#include "graphics/graphics.h"

using GLConsole::state;

using ConfigurationTest = ConsoleTest;

TEST_F(ConfigurationTest, MissingFileIsReportedAndGivesBlackAndSizeOne) {
    state().fontSize = 9;
    state().outputText.r = 1.0f;
    GLConsole::loadConfiguration();
    EXPECT_EQ(printed(), "\nCould not open config file: cfg//console.cfg");
    EXPECT_EQ(state().fontSize, 1);
    EXPECT_EQ(state().outputText.r, 0.0f);
    EXPECT_EQ(state().outputBackground.a, 0.0f);
    EXPECT_FALSE(GLConsole::isLogging());
}

TEST_F(ConfigurationTest, InitialiseReportsAMissingFile) {
    GLConsole::shutdown();
    printed();
    GLConsole::initialise();
    EXPECT_EQ(printed(), "\nCould not open config file: cfg//console.cfg");
}

TEST_F(ConfigurationTest, ValuesAreRead) {
    scratch->write("CFG/Console.cfg",
                   "fontSize = 12\n"
                   "output_background_r = 0.1 output_background_g = 0.2 output_background_b = 0.3\n"
                   "output_background_a = 0.75\n"
                   "output_text_r=1 output_text_g=0.5 output_text_b=0.25\n"
                   "input_background_b = 0.5 input_border_g = 0.6 input_text_r = 0.7\n");
    GLConsole::loadConfiguration();
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(state().fontSize, 12);
    EXPECT_FLOAT_EQ(state().outputBackground.r, 0.1f);
    EXPECT_FLOAT_EQ(state().outputBackground.g, 0.2f);
    EXPECT_FLOAT_EQ(state().outputBackground.b, 0.3f);
    EXPECT_FLOAT_EQ(state().outputBackground.a, 0.75f);
    EXPECT_FLOAT_EQ(state().outputText.r, 1.0f);
    EXPECT_FLOAT_EQ(state().outputText.g, 0.5f);
    EXPECT_FLOAT_EQ(state().outputText.b, 0.25f);
    EXPECT_FLOAT_EQ(state().inputBackground.b, 0.5f);
    EXPECT_FLOAT_EQ(state().inputBorder.g, 0.6f);
    EXPECT_FLOAT_EQ(state().inputText.r, 0.7f);
    EXPECT_FLOAT_EQ(state().inputText.g, 0.0f);
}

TEST_F(ConfigurationTest, FontSizeBelowOneGivesOne) {
    scratch->write("cfg/console.cfg", "fontSize = -4");
    GLConsole::loadConfiguration();
    EXPECT_EQ(state().fontSize, 1);
    scratch->write("cfg/console.cfg", "fontSize = big");
    GLConsole::loadConfiguration();
    EXPECT_EQ(state().fontSize, 1);
}

TEST_F(ConfigurationTest, EnableLoggingStartsTheLogAtOnce) {
    scratch->write("cfg/console.cfg", "enableLogging = TRUE");
    GLConsole::shutdown();
    printed();
    GLConsole::initialise();
    EXPECT_TRUE(GLConsole::isLogging());
    EXPECT_EQ(printed(), "\nCommencing console log to ConsoleLog.txt");
    GLConsole::print("\nhello");
    GLConsole::shutdown();
    EXPECT_EQ(scratch->read("ConsoleLog.txt"), "\nCommencing console log to ConsoleLog.txt\nhello");
}

TEST_F(ConfigurationTest, InitialiseRegistersTheBasicCommands) {
    GLConsole::removeCommand("Version");
    GLConsole::shutdown();
    EXPECT_TRUE(GLConsole::state().commands.empty());
    GLConsole::initialise();
    EXPECT_EQ(run("version"), "\nVersion is 1.00");
}

TEST_F(ConfigurationTest, FontComesFromTheConfigurationAndGoesAtShutdown) {
    GLConsole::loadConfiguration();
    EXPECT_EQ(state().font, nullptr);
    EXPECT_EQ(GLConsole::getFontTexture().name, "GFX\\DEFAULT.TGA");

    scratch->write("cfg/console.cfg", "fontTextureName = gfx\\console_font.tga");
    GLConsole::loadConfiguration();
    ASSERT_NE(state().font, nullptr);
    EXPECT_EQ(state().font->name, "GFX\\CONSOLE_FONT.TGA");
    EXPECT_EQ(GLConsole::getFontTexture().name, "GFX\\CONSOLE_FONT.TGA");

    scratch->write("cfg/console.cfg", "fontTextureName = gfx\\other_font.tga");
    GLConsole::loadConfiguration();
    ASSERT_NE(state().font, nullptr);
    EXPECT_EQ(state().font->name, "GFX\\OTHER_FONT.TGA");

    GLConsole::shutdown();
    EXPECT_EQ(state().font, nullptr);
}
