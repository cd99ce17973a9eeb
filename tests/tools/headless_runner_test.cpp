// Runs the built brookfall-headless on small levels made here.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/content_support.h"
#include "support/level_fixtures.h"

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
