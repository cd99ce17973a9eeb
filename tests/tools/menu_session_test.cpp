// A whole session played through the runner with the menus, as a player plays
// it: the main menu, a level won by its solution, the finish, the counters,
// the name screen, the high scores and quitting. Once by keyboard, once by mouse.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/content_support.h"
#include "support/test_support.h"

namespace fs = std::filesystem;

namespace {

// The baked data, read-only, beside a fresh folder for the scores.
void linkBakedData(const ScratchFolder& folder) {
    for (const char* part : {"cfg", "gfx", "snd", "maps", "text", "fx"})
        fs::create_directory_symlink(bakedDataFolder() / part, folder.path() / part);
}

struct Session {
    const char* name;
    std::string start, carryOn, leaveHighScores, quit;
};

// Each menu acts 0.8 seconds (60 steps) after its button is pressed.
const std::string wait = ":step 70\n";

std::string key(int code, int times = 1) {
    std::string lines;
    for (int i = 0; i < times; ++i)
        lines += ":key " + std::to_string(code) + " down\n:key " + std::to_string(code) + " up\n";
    return lines;
}

std::string click(int x, int y) {
    const std::string at = std::to_string(x) + " " + std::to_string(y);
    return ":mouse move " + at + "\n:mouse press " + at + " 1\n:mouse release " + at + " 1\n" + wait;
}

// The first key on a screen only wakes its focus.
const std::string pressDefault = key(13, 2) + wait;
const std::string typeName = key('R') + key('I') + key('L', 2) + key(13) + wait;

const Session sessions[] = {
    // Down six times from Start reaches Quit; on the question Left wakes No, then reaches Yes.
    {"keyboard", pressDefault, pressDefault, pressDefault,
     key(13) + key(40, 6) + key(13) + wait + key(37, 2) + key(13) + wait},
    // The buttons' places in the shipped menus.
    {"mouse", click(400, 188), click(528, 488), click(400, 528), click(400, 548) + click(248, 368)},
};

void PrintTo(const Session& session, std::ostream* out) {
    *out << session.name;
}

class MenuSession : public ::testing::TestWithParam<Session> {};

TEST_P(MenuSession, FromTheMainMenuToTheScoresFile) {
    ScratchFolder folder;
    linkBakedData(folder);
    const Session& session = GetParam();
    folder.write("session.script", ":mouse move 5 5\n:state\n" + session.start +
                                       readBytes(sourceDataFolder() / "solutions" / "testLevel.script") +
                                       ":step 600\n:state\n" + session.carryOn + typeName + ":state\n" +
                                       session.leaveHighScores + ":state\n" + session.quit + ":state\n");
    const std::string command = quoted(toolPath("brookfall-headless")) + " --menus --data " +
                                quoted(folder.path()) + " 'maps\\testLevel.rill' " +
                                quoted(folder.path() / "session.script") + " > " +
                                quoted(folder.path() / "out.txt");
    ASSERT_EQ(runCommand(command), 0);
    const std::string output = folder.read("out.txt");
    // Main menu, the level won, its end, the high scores, back on the main menu; Yes then ends the game.
    std::size_t at = 0;
    for (const char* expected :
         {"\"menu\":1}", "\"finished\":true", "\"menu\":9}", "\"menu\":4}", "\"menu\":1}"}) {
        at = output.find(expected, at);
        ASSERT_NE(at, std::string::npos) << expected << "\n" << output;
    }
    EXPECT_EQ(output.find("script:"), std::string::npos) << "every script line was understood";
    EXPECT_EQ(output.find("\"menu\":6}", at), std::string::npos) << "the last :state is never reached";

    const std::string scores = folder.read("sav/scores.sav");
    ASSERT_EQ(scores.size(), 284u);
    EXPECT_EQ(scores.substr(0, 4), std::string("\x0F\x23\x31\x12", 4));
    EXPECT_STREQ(scores.c_str() + 4, "rill");
    EXPECT_EQ(scores.substr(28, 4), std::string("\x20\xA1\x07\x00", 4)) << "500,000 points";
}

INSTANTIATE_TEST_SUITE_P(Controls, MenuSession, ::testing::ValuesIn(sessions),
                         [](const ::testing::TestParamInfo<Session>& test) {
                             return std::string(test.param.name);
                         });

}  // namespace
