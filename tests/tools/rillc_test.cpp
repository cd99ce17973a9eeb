// The level text form and the level compiler: parsing and its errors, the dump
// read back, and rillc as a program: compile, dump and check, and the check's
// warnings of what would not play as meant.
// The tools' README level blocks compile, check without a warning and are won by their scripts.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <sstream>
#include <tuple>

#include "level/level.h"
#include "level_tools/level_tools.h"
#include "support/content_support.h"
#include "support/level_fixtures.h"
#include "support/test_support.h"

namespace fs = std::filesystem;

namespace {

std::string parseError(const std::string& text) {
    LevelFile level;
    std::string error;
    EXPECT_FALSE(LevelText::parse(text, "cave.txt", level, error));
    return error;
}

}  // namespace

TEST(LevelText, FieldsDefaultsAndNames) {
    const LevelFile level = levelFromText(
        "# a comment line\n"
        "water 1 2   # trailing comment\n"
        "polygon id -3 layer 1\n"
        "  0 0, 10 0\n"
        "  texture \"gfx\\a%25b%22.tga\" collision invisible\n"
        "  10 10\n"
        "end\n"
        "trigger type level_end_A target 2 rect 0 0 10 20\n"
        "object at 010 0x1F mirrored 7\n");
    ASSERT_EQ(level.polygons.size(), 1u);
    const PolygonRecord& polygon = level.polygons[0];
    // Stone (3) unless told; the points of every line.
    EXPECT_EQ(std::tuple(polygon.id, polygon.surfaceType, polygon.collisionMode, polygon.layer,
                         polygon.points.size()),
              std::tuple(-3, 3, 2, 1u, 3u));
    EXPECT_EQ(polygon.textureName, "gfx\\a%b\".tga");
    EXPECT_EQ(level.waterStart.y, 2);
    const TriggerRecord& trigger = level.triggers[0];
    EXPECT_EQ(std::tuple(trigger.type, trigger.corners[1].x, trigger.corners[3].y), std::tuple(801, 10, 20));
    // 010 is decimal, not octal.
    EXPECT_EQ(std::tuple(level.objects[0].mirrored, level.objects[0].position.x, level.objects[0].position.y),
              std::tuple(7, 10, 31));
}

TEST(LevelText, ErrorsNameTheLine) {
    EXPECT_EQ(parseError("water 0 0\nbanana 1\n"), "cave.txt:2: unknown record 'banana'");
    EXPECT_EQ(parseError("object colour 3\n"), "cave.txt:1: unknown field 'colour' in object");
    EXPECT_EQ(parseError("object id 1 id 2\n"), "cave.txt:1: field 'id' given twice in object");
    EXPECT_EQ(parseError("\n\npolygon layer 5\n"), "cave.txt:3: field 'layer' must lie within 0 and 4");
    EXPECT_EQ(parseError("polygon surface marble\nend\n"),
              "cave.txt:1: field 'surface' has no value 'marble'");
    EXPECT_EQ(parseError("polygon\n0 0\n1\nend\n"), "cave.txt:3: points come in pairs: x y");
    EXPECT_EQ(parseError("polygon\n0 0\n"), "cave.txt:2: polygon begun on line 1 has no 'end'");
    EXPECT_EQ(parseError("end\n"), "cave.txt:1: 'end' without a polygon");
    EXPECT_EQ(parseError("trigger target 1\n"), "cave.txt:1: a trigger needs a type");
    EXPECT_EQ(parseError("sound strength -1\n"),
              "cave.txt:1: field 'strength' must lie within 0 and 2147483647");
    EXPECT_EQ(parseError("force strength x\n"), "cave.txt:1: field 'strength' wants a number, not 'x'");
    EXPECT_EQ(parseError("object texture \"abc\n"), "cave.txt:1: name without closing quote");
    EXPECT_EQ(parseError("object texture abc\n"), "cave.txt:1: field 'texture' wants a quoted name");
    EXPECT_EQ(parseError("object texture \"" + std::string(65535, 'o') + "\"\n"),
              "cave.txt:1: name of field 'texture' is too long");
    EXPECT_EQ(parseError("water 1\n"), "cave.txt:1: 'water' wants x and y");
    EXPECT_EQ(parseError("polygon\n0 99999999999\nend\n"),
              "cave.txt:2: '99999999999' is no point coordinate");
}

TEST(LevelText, DumpThenCompileGivesTheSameBytes) {
    LevelFile level = levelFromText(everyRecordText);
    level.version = 11;
    level.polygons[0].textureName = std::string("odd\x01\xff\"%# name", 12);
    level.forces[0].directionX = -0.0f;
    level.forces[0].directionY = 0.1f;
    level.forces[0].strength = std::numeric_limits<float>::quiet_NaN();
    level.movers[0].speed = std::numeric_limits<float>::infinity();
    level.emitters[0].directionX = 1e-38f;
    level.triggers[0].type = 12345;
    level.sounds[0].looping = 200;
    const std::string bytes = LevelFileFormat::write(level);
    const std::string text = LevelText::write(level);
    LevelFile again;
    std::string error;
    ASSERT_TRUE(LevelText::parse(text, "dump", again, error)) << error << "\n" << text;
    EXPECT_EQ(LevelFileFormat::write(again), bytes) << text;
    EXPECT_EQ(LevelText::write(again), text);
}

namespace {

ToolRun rillc(const std::string& arguments) {
    return runTool(quoted(toolPath("rillc")) + " " + arguments);
}

class RillcTool : public ::testing::Test {
protected:
    ScratchFolder folder;
};

}  // namespace

TEST_F(RillcTool, CompileDumpCompileGivesTheSameBytes) {
    folder.write("all.level", everyRecordText);
    ASSERT_EQ(rillc("compile all.level all.rill").exitCode, 0);
    EXPECT_EQ(folder.read("all.rill"), bytesFromText(everyRecordText));
    const ToolRun dump = rillc("dump all.rill");
    ASSERT_EQ(dump.exitCode, 0);
    folder.write("again.level", dump.output);
    ASSERT_EQ(rillc("compile again.level again.rill").exitCode, 0);
    EXPECT_EQ(folder.read("again.rill"), folder.read("all.rill"));
}

TEST_F(RillcTool, CompileErrorsNameTheSourceLine) {
    folder.write("bad.level", "water 1 2\n\npolygon layer 9\nend\n");
    const ToolRun run = rillc("compile bad.level bad.rill");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "bad.level:3: field 'layer' must lie within 0 and 4\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "bad.rill"));
}

// Each run's exit status and a line of what it says.
TEST_F(RillcTool, CheckAndDumpSayWhatTheReaderSaysAndMistakesGiveUsage) {
    folder.write("maps/good.rill",
                 bytesFromText(std::string(squareText) + "polygon\n0 0\n10 10\n10 0\n0 10\nend\n"));
    const std::string bytes = bytesFromText(squareText);
    folder.write("maps/cut.rill", bytes.substr(0, bytes.size() - 1));
    const struct {
        const char* arguments;
        int exitCode;
        const char* said;
    } runs[] = {
        {"check maps/good.rill", 0, "\nLevel 'maps/good.rill' loaded successfully.."},
        {"check maps/good.rill", 0,
         "\nwarning: polygon 1 (id 0): it has no triangles: it is neither drawn nor solid"},
        {"check maps/cut.rill", 1, "\nError reading level file 'maps/cut.rill'\nReason: Unable to read file"},
        {"dump maps/cut.rill", 1, "Unable to read file"},
        {"compile only-one", 2, "usage: rillc compile SOURCE OUT.rill"},
    };
    for (const auto& expected : runs) {
        const ToolRun run = rillc(expected.arguments);
        EXPECT_EQ(run.exitCode, expected.exitCode) << expected.arguments;
        EXPECT_NE(run.output.find(expected.said), std::string::npos) << expected.arguments << ":\n"
                                                                     << run.output;
    }
}

namespace {

// A closed box with the water in the air above its floor, an end and a texture
// that the data directory holds: a level with nothing to warn of.
const char* const box =
    "water 100 100\ncamera 100 100\n"
    "polygon id 1 texture \"gfx\\stone.tga\"\n"
    "  0 0, 0 400, 400 400, 400 0, 380 0, 380 380, 20 380, 20 0\nend\n";
const char* const end = "trigger type Level_end_a rect 300 300 380 380\n";

// An arc of a big circle in short straight edges, closed below: each edge
// turns by half a degree, so the tree joins them, drawn this way round.
std::string arc() {
    std::vector<std::string> points;
    for (int step = 0; step <= 60; ++step) {
        const double angle = step * 0.5 * 3.14159265358979 / 180.0;
        points.push_back(std::to_string(std::lround(20000 * std::sin(angle))) + " " +
                         std::to_string(std::lround(20000 - 20000 * std::cos(angle)) + 1000));
    }
    points.push_back("10000 4000");
    points.push_back("0 4000");
    std::reverse(points.begin(), points.end());
    std::string text = "polygon\n";
    for (const std::string& p : points) text += "  " + p + "\n";
    return text + "end\n";
}

struct CheckCase {
    const char* name;
    std::string records;  // added to the box
    const char* warning;  // the one warning expected, from its start; null for none
};

const CheckCase checkCases[] = {
    {"NothingToWarnOf", "", nullptr},
    {"ASecondEndByItsNumber", "trigger type 801 rect 0 0 9 9\n", nullptr},
    {"CaulkAgainstASolidTrimsItAsMeant",
     "polygon collision caulk\n  100 360, 200 360, 200 380, 100 380\nend\n", nullptr},
    {"CaulkInsideASolidCutsItsEdges",
     "polygon id 5 collision caulk\n  100 380, 200 380, 200 400, 100 400\nend\n",
     "polygon 1 (id 5): this caulk lies inside solid polygon 0 (id 1) along its edges: the tree loses "},
    {"SolidsOverlappingWithEdgesRunningTheSameWay", "polygon\n  300 380, 500 380, 500 400, 300 400\nend\n",
     "polygon 1 (id 0): overlaps solid polygon 0 (id 1) with edges on one line that run the same way: the "
     "tree loses "},
    {"ASmoothCurveMergesAway", arc(),
     "polygon 1 (id 0): edges that run on almost straight merge in the tree into straight edges that leave "
     "the outline: the tree keeps "},
    {"TriggerAtTheDefaultCorners", "trigger type To_ice_a\n",
     "trigger 1 (To_ice_a): its corners enclose no area, so it fires for all the water wherever its point "
     "(0 0) is near the view"},
    {"TriggerOnALine", "trigger type To_ice_a rect 50 50 50 90\n",
     "trigger 1 (To_ice_a): its corners enclose no area: only water exactly on its line fires it"},
    {"TriggerTargetOfAnotherKind", "trigger type Mover_goto_end_1 target 1 rect 0 0 9 9\n",
     "trigger 1 (Mover_goto_end_1): its target 1 names no mover, so firing it does nothing"},
    {"TriggerTargetZeroIsNone", "object\ntrigger type Entity_remove_1 rect 0 0 9 9\n",
     "trigger 1 (Entity_remove_1): its target 0 names no polygon or object or force, so firing it does "
     "nothing"},
    {"SoundTriggerOnSoundsOfIdZero", "sound\ntrigger type Sound_play_1 rect 0 0 9 9\n", nullptr},
    {"MoverThatCarriesNothing", "mover id 8 speed 10 to 0 50\n",
     "mover 0 (id 8): it carries nothing: no polygon or object has id 8"},
    {"MoverAtTheFastestSpeed",
     "polygon id 2\n  200 200, 220 200, 220 220\nend\nmover id 2 speed 127.5 to 0 50\n", nullptr},
    {"MoverTooFast", "polygon id 2\n  200 200, 220 200, 220 220\nend\nmover id 2 speed -128 to 0 50\n",
     "mover 0 (id 2): its polygons move 1.71 units in a step of 0.013333334 s, more than 1.7: the water "
     "they carry is killed (a speed of at most 127.5 keeps it)"},
    {"MissingTexture", "object id 3 texture \"gfx\\lamp.tga\"\n",
     "object 0 (id 3): texture \"gfx\\lamp.tga\" is not in the data directory: it is drawn with the default "
     "picture"},
    {"MissingSound", "sound id 4 name \"snd\\drip.wav\"\n",
     "sound 0 (id 4): sound \"snd\\drip.wav\" is not in the data directory: it stays silent"},
    {"MissingEmitterSettings", "emitter id 6 settings \"fx\\spray.cfg\"\n",
     "emitter 0 (id 6): settings file \"fx\\spray.cfg\" is not in the data directory: it gives off nothing"},
    {"NoEnd", "", "level: it has no Level_end_a trigger, so it cannot be won"},
    {"WaterStartInTheRock", "water 10 10\n", "water 10 10: the water starts inside solid polygon 0 (id 1)"},
};

std::vector<std::string> warnings(const std::string& output) {
    std::vector<std::string> found;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);)
        if (line.rfind("warning: ", 0) == 0) found.push_back(line.substr(9));
    return found;
}

class RillcCheck : public RillcTool, public ::testing::WithParamInterface<CheckCase> {};

}  // namespace

TEST_P(RillcCheck, WarnsOfWhatWillNotPlayAsMeant) {
    const bool ended = std::string(GetParam().name) != "NoEnd";
    std::string level = std::string(box) + (ended ? end : "") + GetParam().records;
    // A second start point replaces the box's own.
    if (GetParam().records.rfind("water", 0) == 0) level.erase(0, level.find('\n') + 1);
    folder.write("level.txt", level);
    folder.write("data/gfx/stone.tga", "");
    ASSERT_EQ(rillc("compile level.txt level.rill").exitCode, 0);
    const ToolRun run = rillc("check --data data level.rill");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    const std::vector<std::string> found = warnings(run.output);
    if (!GetParam().warning) {
        EXPECT_TRUE(found.empty()) << run.output;
        return;
    }
    ASSERT_EQ(found.size(), 1u) << run.output;
    EXPECT_EQ(found[0].rfind(GetParam().warning, 0), 0u) << found[0];
}

INSTANTIATE_TEST_SUITE_P(Traps, RillcCheck, ::testing::ValuesIn(checkCases),
                         [](const auto& row) { return std::string(row.param.name); });

namespace {

struct Example {
    std::string level;
    std::string script;
};

// The blocks between "```level" and "```", each with the "```script" block that follows it.
std::vector<Example> examples(const std::string& markdown) {
    std::vector<Example> found;
    std::istringstream lines(markdown);
    std::string line, *into = nullptr;
    while (std::getline(lines, line)) {
        if (into) {
            if (line.rfind("```", 0) == 0)
                into = nullptr;
            else
                *into += line + "\n";
        } else if (line == "```level") {
            found.emplace_back();
            into = &found.back().level;
        } else if (line == "```script" && !found.empty()) {
            into = &found.back().script;
        }
    }
    return found;
}

class ReadmeExamples : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        // The baked data, with a maps folder of the examples' own.
        for (const char* folder : {"cfg", "gfx", "snd", "fx", "text"})
            fs::create_directory_symlink(bakedDataFolder() / folder, scratch.path() / folder);
        fs::create_directory(scratch.path() / "maps");
    }
    ScratchFolder scratch;
};

}  // namespace

TEST_P(ReadmeExamples, CompileCheckWithoutAWarningAndWin) {
    const std::vector<Example> all = examples(readBytes(sourceDataFolder().parent_path() / GetParam()));
    ASSERT_FALSE(all.empty()) << "no level in " << GetParam();
    for (std::size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE("example " + std::to_string(i));
        const std::string name = "example" + std::to_string(i);
        scratch.write(name + ".level", all[i].level);
        scratch.write(name + ".script", all[i].script.empty() ? ":step 300\n:state\n" : all[i].script);
        const fs::path level = scratch.path() / "maps" / (name + ".rill");
        const ToolRun compile =
            runTool(quoted(toolPath("rillc")) + " compile " + name + ".level " + quoted(level));
        ASSERT_EQ(compile.exitCode, 0) << compile.output;
        const ToolRun check = runTool(quoted(toolPath("rillc")) + " check --data . " + quoted(level));
        EXPECT_EQ(check.exitCode, 0);
        EXPECT_EQ(check.output.find("warning:"), std::string::npos) << check.output;
        const ToolRun play = runTool(quoted(toolPath("brookfall-headless")) + " --data . 'maps\\" + name +
                                     ".rill' " + name + ".script");
        ASSERT_EQ(play.exitCode, 0) << play.output;
        const std::vector<std::string> states = stateLines(play.output);
        ASSERT_FALSE(states.empty()) << "the script must end with :state";
        if (!all[i].script.empty()) {
            EXPECT_NE(states.back().find("\"finished\":true"), std::string::npos) << states.back();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Tools, ReadmeExamples,
                         ::testing::Values("tools/rillc/README.md", "tools/brookfall-headless/README.md"));
