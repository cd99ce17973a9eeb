#include <gtest/gtest.h>

#include "foundation/foundation.h"
#include "support/test_support.h"

namespace {

ConfigFile parse(const ScratchFolder& folder, const std::string& text) {
    folder.write("cfg/test.cfg", text);
    return ConfigFile("cfg\\test.cfg");
}

}  // namespace

TEST(ConfigFile, FilterPassesKeepOnlyKeyValuePairsAndAZeroByteEndsTheText) {
    ScratchFolder folder;
    ConsoleCapture console;
    const std::pair<const char*, std::map<std::string, std::string>> cases[] = {
        {"a b = c", {{"B", "c"}}},
        {"a = b = c", {{"A", "c"}}},
        {"= a", {}},
        {"a =", {}},
        {"a = = b", {{"A", "b"}}},
        {"x = 1 y = 2", {{"X", "1"}, {"Y", "2"}}},
        {"x=1\ny\n=\n2", {{"X", "1"}, {"Y", "2"}}},
        {"a = 1 a = 2", {{"A", "2"}}},
        {"This line is a comment.\nspeed = 4.5 # trailing words\n", {{"SPEED", "4.5"}}},
        {"key = Mixed_Case_Value", {{"KEY", "Mixed_Case_Value"}}},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(parse(folder, text).variables(), expected) << text;
    EXPECT_EQ(console.text(), "");
    folder.write("cfg/zero.cfg", std::string("a = 1\0 b = 2", 12));
    ConfigFile config("cfg\\zero.cfg");
    EXPECT_EQ(std::tuple(config.variableExists("a"), config.variableExists("b")), std::tuple(true, false));
}

TEST(ConfigFile, ReadsConvertAndKeysIgnoreCase) {
    ScratchFolder folder;
    const ConfigFile config =
        parse(folder, "Speed = 2.5 count = 7 flag = tRuE other = 1 bad = 3x exp = 1e3 name = Hello");
    EXPECT_FLOAT_EQ(config.getVarAsFloat("SPEED"), 2.5f);
    EXPECT_FLOAT_EQ(config.getVarAsFloat(std::string("speed")), 2.5f);
    EXPECT_EQ(std::tuple(config.getVarAsInt("Count"), config.getVarAsBool("flag"),
                         config.getVarAsBool("other"), config.getVarAsInt("bad")),
              std::tuple(7, true, false, 0));
    EXPECT_FLOAT_EQ(config.getVarAsFloat("exp"), 0.0f);
    EXPECT_EQ(std::tuple(config.getVarAsString("NAME"), config.getVarAsString("missing"),
                         config.getVarAsInt("missing")),
              std::tuple("Hello", "", 0));
    EXPECT_FALSE(config.variableExists("missing"));
}

TEST(ConfigFile, FailuresReportAndLeaveAnEmptyMap) {
    ScratchFolder folder;
    ConsoleCapture console;
    ConfigFile config = parse(folder, "a = 1");
    ASSERT_TRUE(config.variableExists("a"));

    config.loadConfigFile("cfg\\missing.cfg");
    EXPECT_TRUE(config.variables().empty());
    EXPECT_EQ(console.take(), "\nCould not open config file: cfg\\missing.cfg");

    config.loadConfigFile(nullptr);
    EXPECT_EQ(console.take(), "\nError in configuration Loader: no file name given");

    folder.write("cfg/empty.cfg", "");
    config.loadConfigFile("cfg\\empty.cfg");
    EXPECT_TRUE(config.variables().empty());
    EXPECT_EQ(console.take(), "");

    std::filesystem::create_directories(folder.path() / "cfg" / "folder.cfg");
    config.loadConfigFile("cfg\\folder.cfg");
    EXPECT_TRUE(config.variables().empty());
    EXPECT_EQ(console.take(), "\nCould not open config file: cfg\\folder.cfg");
}
