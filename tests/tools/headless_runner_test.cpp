// Runs the built brookfall-headless on small levels made here.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "level/level.h"
#include "level_tools/level_tools.h"
#include "support/test_support.h"

namespace {

struct RunResult {
    std::string output;
    int exitCode = -1;
};

std::string runnerPath() {
    const char* binaryDir = std::getenv("BROOKFALL_BINARY_DIR");
    return std::string(binaryDir ? binaryDir : ".") + "/brookfall-headless";
}

RunResult runHeadless(const ScratchFolder& folder, const std::string& level, const std::string& script) {
    folder.write("script.txt", script);
    const std::string command = runnerPath() + " --data " + folder.path().string() + " '" + level + "' " +
                                (folder.path() / "script.txt").string() + " 2>&1";
    RunResult result;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return result;
    char buffer[4096];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof(buffer), pipe)) > 0;)
        result.output.append(buffer, count);
    const int status = pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

// A basin with the water above its floor, and settings under which water falls.
void writeBasin(const ScratchFolder& folder) {
    LevelFile level;
    std::string error;
    ASSERT_TRUE(LevelText::parse(
        "water 400 100\ncamera 400 100\n"
        "polygon id 1 layer 2\n  0 0, 0 400, 800 400, 800 0, 780 0, 780 380, 20 380, 20 0\nend\n",
        "basin.level", level, error))
        << error;
    folder.write("maps/basin.rill", LevelFileFormat::write(level));
    folder.write("cfg/water.cfg", "gravity = 260 roomTemperature = 20 heatTransferRate = 0.15");
}

std::vector<std::string> jsonLines(const std::string& output) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < output.size()) {
        std::size_t end = output.find('\n', start);
        if (end == std::string::npos) end = output.size();
        if (output.compare(start, 1, "{") == 0) lines.push_back(output.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

}  // namespace

TEST(HeadlessRunner, StepsTheGameAndReportsStateOnLinesOfTheirOwn) {
    ScratchFolder folder;
    writeBasin(folder);
    const RunResult run =
        runHeadless(folder, "maps\\basin.rill", ":state\n:step 120\n:state\n:tilt 25\n:state\n");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    const std::vector<std::string> states = jsonLines(run.output);
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
    writeBasin(folder);
    folder.write("cfg/camera.cfg", "waypointInterpolateDistance = 1000");  // no glide: the water runs at once
    folder.write("fx/puff.cfg", "frequency = 0.01 liveTime_1 = 10 liveTime_2 = 10 texture1 = gfx\\puff.tga");
    const RunResult run =
        runHeadless(folder, "maps\\basin.rill",
                    ":state\nFxEmitterCreate 400 200 0 -1 1 fx\\puff.cfg\n:step 120\n:state\n");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    const std::vector<std::string> states = jsonLines(run.output);
    ASSERT_EQ(states.size(), 2u) << run.output;
    EXPECT_NE(states[0].find(",\"fx_particles\":0,"), std::string::npos) << states[0];
    const std::size_t field = states[1].find(",\"fx_particles\":");
    ASSERT_NE(field, std::string::npos) << states[1];
    EXPECT_GT(std::atoi(states[1].c_str() + field + 16), 0) << states[1];
}

TEST(HeadlessRunner, ConsoleLinesAndMistakesAreAnsweredOnStandardOutput) {
    ScratchFolder folder;
    writeBasin(folder);
    const RunResult run = runHeadless(folder, "maps\\basin.rill", "Version\n:step x\n:bogus\n");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("\nVersion is 1.00"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("\nscript: expected :step N [DT]: :step x\n"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("\nscript: unknown directive: :bogus\n"), std::string::npos) << run.output;
}

TEST(HeadlessRunner, TwoRunsOfOneScriptPrintTheSameBytes) {
    ScratchFolder folder;
    writeBasin(folder);
    const std::string script = ":step 50\n:tilt -20\n:step 80 0.02\n:state\nShakeCamera\n:step 30\n:state\n";
    const RunResult first = runHeadless(folder, "maps\\basin.rill", script);
    const RunResult second = runHeadless(folder, "maps\\basin.rill", script);
    ASSERT_EQ(first.exitCode, 0) << first.output;
    EXPECT_EQ(first.output, second.output);
}

TEST(HeadlessRunner, UsageMistakesExitWithTwo) {
    ScratchFolder folder;
    const std::string command = runnerPath() + " --bogus 2>/dev/null";
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 2);
}

// Slow (several seconds sanitized): a strategy that does not win plays on until the
// water has stood still for five seconds of game time.
TEST(HeadlessRunner, TheProbePlaysEveryStrategyFromAFreshStart) {
    ScratchFolder folder;
    const std::filesystem::path source =
        std::filesystem::path(std::getenv("BROOKFALL_SOURCE_DIR")) / "data" / "cfg";
    for (const char* name : {"water.cfg", "camera.cfg", "game.cfg", "surfaces.cfg"}) {
        std::ifstream in(source / name, std::ios::binary);
        folder.write(std::string("cfg/") + name, std::string(std::istreambuf_iterator<char>(in), {}));
    }
    // A small closed box, the water at its bottom left and the end at its right:
    // the water settles fast whichever way it is tilted.
    LevelFile level;
    std::string error;
    ASSERT_TRUE(LevelText::parse(
        "water 32 100\ncamera 32 100\ntrigger type Level_end_a rect 48 20 70 120\n"
        "polygon\n 0 0, 90 0, 90 20, 0 20\nend\npolygon\n 0 120, 90 120, 90 140, 0 140\nend\n"
        "polygon\n 0 0, 20 0, 20 140, 0 140\nend\npolygon\n 70 0, 90 0, 90 140, 70 140\nend\n",
        "end.level", level, error))
        << error;
    folder.write("maps/end.rill", LevelFileFormat::write(level));
    const std::string command = runnerPath() + " --data " + folder.path().string() + " --probe ";
    FILE* pipe = popen((command + "'maps\\end.rill' 2>&1").c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string output;
    char buffer[4096];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof(buffer), pipe)) > 0;)
        output.append(buffer, count);
    EXPECT_EQ(pclose(pipe), 0) << output;
    const std::vector<std::string> lines = jsonLines(output);
    ASSERT_EQ(lines.size(), 51u) << output;
    int won = 0;
    for (const std::string& line : lines) won += line.find("\"won\":true") != std::string::npos;
    EXPECT_EQ(lines[0].rfind("{\"strategy\":\"tilt -180\",\"won\":", 0), 0u) << lines[0];
    EXPECT_EQ(lines[25].rfind("{\"strategy\":\"tilt -180 then 0\",\"won\":", 0), 0u) << lines[25];
    // The end lies to the right, where a view turned to the left sends the water.
    EXPECT_NE(lines[15].find("\"strategy\":\"tilt 45\",\"won\":false"), std::string::npos) << lines[15];
    EXPECT_NE(lines[9].find("\"strategy\":\"tilt -45\",\"won\":true"), std::string::npos) << lines[9];
    EXPECT_EQ(lines[50], "{\"strategies\":50,\"won\":" + std::to_string(won) + "}");
    EXPECT_NE(std::system((command + "'maps\\none.rill' > /dev/null 2>&1").c_str()), 0);
}
