#include <cstring>

#include "console/console_state.h"
#include "level/level_state.h"
#include "support/level_fixtures.h"

namespace {

// The square is loaded first, so that failures can be seen to leave it.
class LevelLoaderTest : public LevelTest {
protected:
    void expectSquareStanding() {
        ASSERT_EQ(Level::getPolygons().size(), 1u);
        EXPECT_EQ(
            std::tuple(Level::getPolygons().front().id, Level::getWaterStart(), LevelBspTree::conCmdBspSize(),
                       GLConsole::state().commands.count("DRAWTRIANGLES")),
            std::tuple(1, Vector2D(50, 50), 4, 1u));
    }
    // Loads the bytes and returns the reason printed for their failure.
    std::string failureReason(const std::string& bytes) {
        folder.write("maps/bad.rill", bytes);
        console.take();
        EXPECT_FALSE(LevelLoader::loadLevel("maps\\bad.rill"));
        const std::string text = console.take();
        EXPECT_NE(text.find("\nError reading level file 'maps\\bad.rill'\nReason: "), std::string::npos)
            << text;
        const std::size_t at = text.find("\nReason: ");
        return at == std::string::npos ? text : text.substr(at + 9);
    }
};

std::string u32(uint32_t value) {
    std::string bytes(4, '\0');
    for (int i = 0; i < 4; ++i) bytes[i] = static_cast<char>((value >> (8 * i)) & 0xFF);
    return bytes;
}

const std::string header = u32(0x008F1397) + u32(12);

}  // namespace

TEST_F(LevelLoaderTest, SmallestFileHas52BytesAndLoadsEmptyAndAMissingFileKeepsTheLevel) {
    const std::string bytes = LevelFileFormat::write(LevelFile());
    ASSERT_EQ(bytes.size(), 52u);
    folder.write("maps/empty.rill", bytes + "trailing bytes are never looked at");
    EXPECT_TRUE(Level::load("maps\\empty.rill"));
    EXPECT_EQ(std::tuple(Level::getPolygons().empty(), LevelBspTree::getRoot()), std::tuple(true, nullptr));
    EXPECT_NE(console.text().find("\nLevel 'maps\\empty.rill' loaded successfully..\nLevel loading took "),
              std::string::npos);
    load(squareText);
    EXPECT_FALSE(Level::load("maps\\nothere.rill"));
    EXPECT_NE(console.text().find("\nUnable to open level file 'maps\\nothere.rill'"), std::string::npos);
    expectSquareStanding();
}

TEST_F(LevelLoaderTest, CollisionModesSetTheTwoFlags) {
    for (const auto& [mode, collideable, visible] : {std::tuple{"solid", true, true},
                                                     {"scenery", false, true},
                                                     {"invisible", true, false},
                                                     {"caulk", false, false}}) {
        folder.write("m.rill",
                     bytesFromText(std::string("polygon collision ") + mode + "\n0 0\n9 0\n9 9\nend\n"));
        ASSERT_TRUE(LevelLoader::loadLevel("m.rill"));
        EXPECT_EQ(Level::getPolygons().front().collideable, collideable) << mode;
        EXPECT_EQ(Level::getPolygons().front().visible, visible) << mode;
    }
}

TEST_F(LevelLoaderTest, CutAtAnyByteFailsAndLeavesTheLevelAndZeroStrengthsAndEmptyNamesLoadAfterwards) {
    load(squareText);
    const std::string bytes = bytesFromText(everyRecordText);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_EQ(failureReason(bytes.substr(0, size)), "Unable to read file") << "cut at " << size;
        expectSquareStanding();
    }
    load("polygon texture \"\"\n0 0\n9 0\n9 9\nend\nsound strength 0\n");
    EXPECT_EQ(Level::getPolygons().front().texture->name, "");
    EXPECT_EQ(Level::state().records.sounds.size(), 1u);
}

TEST_F(LevelLoaderTest, HeaderCountAndFieldMessages) {
    load(squareText);  // every failure leaves it standing
    EXPECT_EQ(failureReason(u32(0x12345678) + u32(12)), "Not a BKF level file.");
    folder.write("maps/v.rill", u32(0x008F1397) + u32(11));
    console.take();
    EXPECT_FALSE(LevelLoader::loadLevel("maps\\v.rill"));
    EXPECT_EQ(console.take(),
              "\nInvalid level file version. Version is 11. Version used by game is 12."
              "\nError reading level file 'maps\\v.rill'\nReason: Invalid level file version.");
    // 65535 passes the test (the file then ends), 65536 and a negative count do not.
    EXPECT_EQ(failureReason(header + u32(65535)), "Unable to read file");
    EXPECT_EQ(failureReason(header + u32(65536)), "Too many polygons in level.");
    EXPECT_EQ(failureReason(header + u32(0xFFFFFFFF)), "Too many polygons in level.");
    const char* messages[] = {"Too many objects in level", "Too many forces in level.",
                              "Too many movers in level.", "Too many triggers in level.",
                              "Too many sounds in level.", "Too many emitters in level."};
    std::string before = header + u32(0);
    for (const char* message : messages) {
        EXPECT_EQ(failureReason(before + u32(65536)), message);
        EXPECT_EQ(failureReason(before + u32(65535)), "Unable to read file");
        before += u32(0);
    }
    LevelFile level = levelFromText("polygon\n0 0\n9 0\n9 9\nend\n");
    auto withPolygon = [&](auto change) {
        LevelFile copy = level;
        change(copy.polygons[0]);
        return LevelFileFormat::write(copy);
    };
    for (const int surface : {0, 6})
        EXPECT_EQ(failureReason(withPolygon([&](PolygonRecord& p) { p.surfaceType = surface; })),
                  "Invalid surface type encountered.");
    EXPECT_EQ(failureReason(withPolygon([](PolygonRecord& p) { p.layer = 5; })), "Invalid polygon layer.");
    // A polygon name of 65535 bytes is legal; names and point counts above are not.
    std::string bytes = header + u32(1) + u32(0) + u32(65536);
    EXPECT_EQ(failureReason(bytes), "\nPolygon texture name too long.");
    bytes = header + u32(1) + u32(0) + u32(65535) + std::string(65535, 'x') + u32(1) + u32(0) + u32(0);
    EXPECT_EQ(failureReason(bytes + u32(65536)), "Too many polygon points.");
    EXPECT_EQ(failureReason(bytes + u32(65535)), "Unable to read file");

    const std::string noPolygons = header + u32(0);
    EXPECT_EQ(failureReason(noPolygons + u32(1) + u32(0) + u32(65535)), "Object texture name too long.");
    EXPECT_EQ(failureReason(noPolygons + u32(1) + u32(0) + u32(0) + u32(5)), "Invalid polygon layer.");

    LevelFile sounds = levelFromText("sound strength 0\n");
    sounds.sounds[0].strength = -1;
    EXPECT_EQ(failureReason(LevelFileFormat::write(sounds)), "Invalid sound source strenght.");
    const std::string toSounds = noPolygons + u32(0) + u32(0) + u32(0) + u32(0);
    const std::string soundHead = u32(1) + u32(0) + u32(0) + u32(0) + u32(0) + std::string(1, '\1');
    EXPECT_EQ(failureReason(toSounds + soundHead + u32(65536)), "Sound source sound name too long.");
    const std::string emitterHead = u32(1) + u32(0) + u32(0) + u32(0) + u32(0) + u32(0);
    EXPECT_EQ(failureReason(toSounds + u32(0) + emitterHead + u32(65536)),
              "Emitter settings file name too long.");
    expectSquareStanding();
}

TEST_F(LevelLoaderTest, SurfaceTypesAndTheirFrictionsAreClamped) {
    EXPECT_EQ(
        std::tuple(SurfaceTypeManager::validSurfaceType(0), SurfaceTypeManager::validSurfaceType(6),
                   SurfaceTypeManager::validSurfaceType(5), SurfaceTypeManager::getSurfaceTypeFriction(9)),
        std::tuple(false, false, true, 1.0f));
    folder.write("cfg/surfaces.cfg",
                 "surfaceFriction_metal = 1.5\nsurfaceFriction_wood = -0.5\n"
                 "surfaceFriction_stone = 0.25\n");
    SurfaceTypeManager::initialise();
    // Clamped to 0 to 1; the missing key of surface 4 reads as 0.
    EXPECT_EQ(std::tuple(SurfaceTypeManager::getSurfaceTypeFriction(1),
                         SurfaceTypeManager::getSurfaceTypeFriction(2),
                         SurfaceTypeManager::getSurfaceTypeFriction(3),
                         SurfaceTypeManager::getSurfaceTypeFriction(4)),
              std::tuple(1.0f, 0.0f, 0.25f, 0.0f));
    load("polygon surface stone\n0 0\n9 0\n9 9\nend\n");
    EXPECT_EQ(Level::getPolygons().front().friction, 0.25f);
    // Back to the values before any configuration, for the tests that follow.
    folder.write("cfg/surfaces.cfg",
                 "surfaceFriction_metal = 1\nsurfaceFriction_wood = 1\nsurfaceFriction_stone = 1\n"
                 "surfaceFriction_cloth = 1\nsurfaceFriction_sand = 1\n");
    SurfaceTypeManager::initialise();
    EXPECT_EQ(SurfaceTypeManager::getSurfaceTypeFriction(5), 1.0f);
}
