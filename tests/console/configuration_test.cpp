// The console's own settings from "cfg//console.cfg".
#include <string>

#include "console/console_state.h"
#include "console_fixture.h"
#include "graphics/graphics.h"

using GLConsole::state;

using ConfigurationTest = ConsoleTest;

TEST_F(ConfigurationTest, AMissingFileIsReportedAndGivesBlackAndSizeOne) {
    state().fontSize = 9;
    state().outputText.r = 1.0f;
    GLConsole::shutdown();
    printed();
    GLConsole::initialise();
    EXPECT_EQ(printed(), "\nCould not open config file: cfg//console.cfg");
    EXPECT_EQ(state().fontSize, 1);
    EXPECT_EQ(state().outputText.r, 0.0f);
    EXPECT_EQ(state().outputBackground.a, 0.0f);
    EXPECT_FALSE(GLConsole::isLogging());
    EXPECT_EQ(run("version"), "\nVersion is 1.00");
}

TEST_F(ConfigurationTest, ValuesAreReadAndSizesBelowOneGiveOne) {
    scratch->write("CFG/Console.cfg",
                   "fontSize = 12\n"
                   "output_background_r = 0.1 output_background_a = 0.75\n"
                   "output_text_g=0.5 input_background_b = 0.5 input_border_g = 0.6 input_text_r = 0.7\n");
    GLConsole::loadConfiguration();
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(state().fontSize, 12);
    const float read[] = {state().outputBackground.r, state().outputBackground.a, state().outputText.g,
                          state().inputBackground.b,  state().inputBorder.g,      state().inputText.r,
                          state().inputText.g};
    const float expected[] = {0.1f, 0.75f, 0.5f, 0.5f, 0.6f, 0.7f, 0.0f};
    for (std::size_t i = 0; i < std::size(read); ++i) EXPECT_FLOAT_EQ(read[i], expected[i]) << i;
    for (const char* size : {"fontSize = -4", "fontSize = big"}) {
        scratch->write("cfg/console.cfg", size);
        GLConsole::loadConfiguration();
        EXPECT_EQ(state().fontSize, 1) << size;
    }
}

TEST_F(ConfigurationTest, EnableLoggingStartsTheLogAtOnce) {
    scratch->write("cfg/console.cfg", "enableLogging = TRUE");
    GLConsole::shutdown();
    printed();
    GLConsole::initialise();
    EXPECT_TRUE(GLConsole::isLogging());
    GLConsole::print("\nhello");
    GLConsole::shutdown();
    EXPECT_EQ(scratch->read("ConsoleLog.txt"), "\nCommencing console log to ConsoleLog.txt\nhello");
}

TEST_F(ConfigurationTest, FontComesFromTheConfigurationAndGoesAtShutdown) {
    GLConsole::loadConfiguration();
    EXPECT_EQ(state().font, nullptr);
    EXPECT_EQ(GLConsole::getFontTexture().name, "GFX\\DEFAULT.TGA");
    for (const std::string name : {"console_font", "other_font"}) {
        scratch->write("cfg/console.cfg", "fontTextureName = gfx\\" + name + ".tga");
        GLConsole::loadConfiguration();
        ASSERT_NE(state().font, nullptr);
        std::string upper = "gfx\\" + name + ".tga";
        slStringUpper(upper);
        EXPECT_EQ(GLConsole::getFontTexture().name, upper);
    }
    GLConsole::shutdown();
    EXPECT_EQ(state().font, nullptr);
}
