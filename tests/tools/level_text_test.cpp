#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <tuple>

#include "level/level.h"
#include "level_tools/level_tools.h"
#include "support/level_fixtures.h"

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

TEST(LevelText, DumpIsReadable) {
    const std::string text = LevelText::write(levelFromText(everyRecordText));
    EXPECT_NE(text.find("polygon id 7 texture \"gfx\\rock.tga\" surface sand collision 7 layer 4\n  0 0\n"),
              std::string::npos);
    EXPECT_NE(text.find("trigger type Entity_remove_1 target 7 delay 0.5 corners"), std::string::npos);
    EXPECT_NE(text.find("mover id 4 speed 12.5 from 0 0 to 0 100\n"), std::string::npos);
}
