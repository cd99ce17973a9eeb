// Runs the built brookfall-headless on small levels made here, without a
// window and with one, where it draws each step and saves what is on screen.
// A whole session played through the runner with the menus, as a player plays
// it: the main menu, a level won by its solution, the finish, the counters,
// the name screen, the high scores and quitting. Once by keyboard, once by mouse.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "graphics/test_images.h"
#include "platform/image_loading.h"
#include "support/content_support.h"
#include "support/level_fixtures.h"
#include "support/test_support.h"

namespace fs = std::filesystem;

namespace {

ToolRun runHeadless(const ScratchFolder& folder, const std::string& arguments) {
    return runTool(quoted(toolPath("brookfall-headless")) + " --data " + quoted(folder.path()) + " " +
                   arguments);
}

// A basin with the water above its floor, and settings under which water falls;
// the script is run on it.
ToolRun runBasin(const ScratchFolder& folder, const std::string& script) {
    folder.write("maps/basin.rill",
                 bytesFromText("water 400 100\ncamera 400 100\n"
                               "polygon id 1 layer 2\n  0 0, 0 400, 800 400, 800 0, 780 0, 780 380, 20 380, "
                               "20 0\nend\n"));
    folder.write("cfg/water.cfg", "gravity = 260 roomTemperature = 20 heatTransferRate = 0.15");
    folder.write("script.txt", script);
    return runHeadless(folder, "'maps\\basin.rill' " + quoted(folder.path() / "script.txt"));
}

}  // namespace

TEST(HeadlessRunner, StepsTheGameAndReportsStateOnLinesOfTheirOwn) {
    ScratchFolder folder;
    const ToolRun run = runBasin(folder, ":state\n:step 120\n:state\n:tilt 25\n:state\n");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    const std::vector<std::string> states = stateLines(run.output);
    ASSERT_EQ(states.size(), 3u) << run.output;
    EXPECT_EQ(states[0].rfind(
                  "{\"step\":0,\"particles\":128,\"ice_bodies\":0,\"ice_particles\":0,\"water\":128,", 0),
              0u)
        << states[0];
    EXPECT_EQ(states[1].rfind("{\"step\":120,", 0), 0u) << states[1];
    EXPECT_NE(states[2].find("\"tilt\":25.000"), std::string::npos) << states[2];
}

TEST(HeadlessRunner, TheStateLineCountsEffectParticles) {
    ScratchFolder folder;
    folder.write("cfg/camera.cfg", "waypointInterpolateDistance = 1000");  // no glide: the water runs at once
    folder.write("fx/puff.cfg", "frequency = 0.01 liveTime_1 = 10 liveTime_2 = 10 texture1 = gfx\\puff.tga");
    const ToolRun run =
        runBasin(folder, ":state\nFxEmitterCreate 400 200 0 -1 1 fx\\puff.cfg\n:step 120\n:state\n");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    const std::vector<std::string> states = stateLines(run.output);
    ASSERT_EQ(states.size(), 2u) << run.output;
    EXPECT_NE(states[0].find(",\"fx_particles\":0,"), std::string::npos) << states[0];
    const std::size_t field = states[1].find(",\"fx_particles\":");
    ASSERT_NE(field, std::string::npos) << states[1];
    EXPECT_GT(std::atoi(states[1].c_str() + field + 16), 0) << states[1];
}

TEST(HeadlessRunner, ConsoleLinesAndMistakesAreAnsweredOnStandardOutput) {
    ScratchFolder folder;
    const ToolRun run = runBasin(folder, "Version\n:step x\n:bogus\n");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    for (const char* answer : {"\nVersion is 1.00", "\nscript: expected :step N [DT]: :step x\n",
                               "\nscript: unknown directive: :bogus\n"})
        EXPECT_NE(run.output.find(answer), std::string::npos) << run.output;
    EXPECT_EQ(runTool(quoted(toolPath("brookfall-headless")) + " --bogus").exitCode, 2) << "a usage mistake";
}

TEST(HeadlessRunner, TwoRunsOfOneScriptPrintTheSameBytes) {
    ScratchFolder folder;
    const std::string script = ":step 50\n:tilt -20\n:step 80 0.02\n:state\nShakeCamera\n:step 30\n:state\n";
    const ToolRun first = runBasin(folder, script);
    ASSERT_EQ(first.exitCode, 0) << first.output;
    EXPECT_EQ(first.output, runBasin(folder, script).output);
}

// Slow (several seconds sanitized): a strategy that does not win plays on until the
// water has stood still for five seconds of game time.
TEST(HeadlessRunner, TheProbePlaysEveryStrategyFromAFreshStart) {
    ScratchFolder folder;
    for (const char* name : {"water.cfg", "camera.cfg", "game.cfg", "surfaces.cfg"})
        folder.write(std::string("cfg/") + name, readBytes(sourceDataFolder() / "cfg" / name));
    // A small closed box, the water at its bottom left and the end at its right:
    // the water settles fast whichever way it is tilted.
    folder.write(
        "maps/end.rill",
        bytesFromText("water 32 100\ncamera 32 100\ntrigger type Level_end_a rect 48 20 70 120\n"
                      "polygon\n 0 0, 90 0, 90 20, 0 20\nend\npolygon\n 0 120, 90 120, 90 140, 0 140\n"
                      "end\npolygon\n 0 0, 20 0, 20 140, 0 140\nend\n"
                      "polygon\n 70 0, 90 0, 90 140, 70 140\nend\n"));
    const ToolRun run = runHeadless(folder, "--probe 'maps\\end.rill'");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    const std::vector<std::string> lines = stateLines(run.output);
    ASSERT_EQ(lines.size(), 51u) << run.output;
    int won = 0;
    for (const std::string& line : lines) won += line.find("\"won\":true") != std::string::npos;
    EXPECT_EQ(lines[0].rfind("{\"strategy\":\"tilt -180\",\"won\":", 0), 0u) << lines[0];
    EXPECT_EQ(lines[25].rfind("{\"strategy\":\"tilt -180 then 0\",\"won\":", 0), 0u) << lines[25];
    // The end lies to the right, where a view turned to the left sends the water.
    EXPECT_NE(lines[15].find("\"strategy\":\"tilt 45\",\"won\":false"), std::string::npos) << lines[15];
    EXPECT_NE(lines[9].find("\"strategy\":\"tilt -45\",\"won\":true"), std::string::npos) << lines[9];
    EXPECT_EQ(lines[50], "{\"strategies\":50,\"won\":" + std::to_string(won) + "}");
    EXPECT_NE(runHeadless(folder, "--probe 'maps\\none.rill'").exitCode, 0);
}

namespace {

const char* const redView =
    "polygon id 1 texture \"gfx\\red.tga\" layer 0\n  -400 -300  400 -300  400 300  -400 300\nend\n";

int runRed(const ScratchFolder& folder, const std::string& options, const std::string& script) {
    folder.write("maps/red.rill", bytesFromText(redView));
    folder.write("gfx/red.tga", makeRawTga(32, 32, true, solid(255, 0, 0)));
    folder.write("script.txt", script);
    return runCommand(quoted(toolPath("brookfall-headless")) + " --data " + quoted(folder.path()) + options +
                      " 'maps\\red.rill' " + quoted(folder.path() / "script.txt") + " > /dev/null 2>&1");
}

// Pixels are blue, green, red, alpha in memory.
bool red(const Platform::LoadedImage& image, int x, int y) {
    const uint8_t* p = &image.pixels[(static_cast<std::size_t>(y) * image.width + x) * 4];
    return p[2] > 200 && p[1] < 60;
}

TEST(WindowedRunner, DrawsEveryStepAndSavesTheFrameOnScreenButWithoutAWindowSavesNone) {
    ScratchFolder folder;
    ASSERT_EQ(runRed(folder, "", ":screenshot shot.png\n"), 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "shot.png"));
    ASSERT_EQ(runRed(folder, " --window", ":step 3\n:screenshot shot.png\n"), 0);
    Platform::LoadedImage shot;
    ASSERT_TRUE(Platform::loadImage("shot.png", shot));
    EXPECT_EQ(shot.width, 800);
    EXPECT_EQ(shot.height, 600);
    // The level's one polygon fills the view.
    EXPECT_EQ(shot.pixels[(10 * 800 + 10) * 4 + 2], 255);
    EXPECT_EQ(shot.pixels[(10 * 800 + 10) * 4 + 1], 0);
}

TEST(WindowedRunner, TheOverviewShowsTheWholeLevelWherePicturesAreTakenFromTheStart) {
    ScratchFolder folder;
    // Two red blocks much further apart than a view is wide.
    folder.write(
        "data/maps/wide.rill",
        bytesFromText("polygon texture \"gfx\\red.tga\"\n  -3000 0, -2800 0, -2800 200, -3000 200\nend\n"
                      "polygon texture \"gfx\\red.tga\"\n  2800 0, 3000 0, 3000 200, 2800 200\nend\n"));
    folder.write("data/gfx/red.tga", makeRawTga(32, 32, true, solid(255, 0, 0)));
    folder.write("script.txt", ":overview view.png\n:screenshot missing/shot.png\n");
    const ToolRun run = runTool(quoted(toolPath("brookfall-headless")) +
                                " --data data --window 'maps\\wide.rill' script.txt");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("\nscript: no folder "), std::string::npos) << run.output;
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "data" / "view.png"));
    Platform::LoadedImage view;
    ASSERT_TRUE(Platform::loadImage("view.png", view));
    // Red at both sides of the picture.
    auto redColumns = [&](int from, int to) {
        int count = 0;
        for (int x = from; x < to; ++x)
            for (int y = 0; y < view.height; ++y)
                if (red(view, x, y)) {
                    ++count;
                    break;
                }
        return count;
    };
    EXPECT_GT(redColumns(0, view.width / 5), 0);
    EXPECT_GT(redColumns(view.width * 4 / 5, view.width), 0);
}

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
