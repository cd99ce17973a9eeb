// The pictures the art bake ships: each one a TGA the game's own loader takes,
// and each fit for its use: tiles without seams, particles that fade out at
// their rims, complete animation sets and fonts of 16 by 16 cells.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <string>

#include "support/content_support.h"

namespace {

TgaPicture bakedPicture(const std::string& name) {
    return readTga(readBytes(bakedDataFolder() / name));
}

// Mean colour difference across the line between column at and at + 1
// (wrapping), or between row at and at + 1.
double step(const TgaPicture& p, int at, bool rows) {
    const int length = rows ? p.width : p.height, next = (at + 1) % (rows ? p.height : p.width);
    double sum = 0.0;
    for (int i = 0; i < length; ++i)
        for (int c = 0; c < 3; ++c)
            sum += std::abs(rows ? p.pixel(i, at)[c] - p.pixel(i, next)[c]
                                 : p.pixel(at, i)[c] - p.pixel(next, i)[c]);
    return sum / length;
}

// A seam is an edge step well above the picture's usual step between neighbours.
void expectTilesWithoutSeam(const TgaPicture& p, const std::string& name) {
    for (const bool rows : {false, true}) {
        const int size = rows ? p.height : p.width;
        double usual = 0.0;
        for (int at = 0; at < size - 1; ++at) usual += step(p, at, rows) / (size - 1);
        EXPECT_LT(step(p, size - 1, rows), usual * 2.5 + 4.0)
            << name << " shows a seam " << (rows ? "top to bottom" : "left to right");
    }
}

const char* surfaces[] = {"gfx/surfaces/metal.tga", "gfx/surfaces/wood.tga", "gfx/surfaces/stone.tga",
                          "gfx/surfaces/cloth.tga", "gfx/surfaces/sand.tga", "gfx/decor/grass.tga",
                          "gfx/decor/ice.tga",      "gfx/decor/rock.tga",    "gfx/decor/earth.tga"};

}  // namespace

TEST(BakedArt, EveryPictureIsATgaTheGameLoaderAccepts) {
    const std::vector<std::string> names = listFiles(bakedDataFolder() / "gfx");
    EXPECT_GT(names.size(), 40u);
    for (const std::string& name : names)
        EXPECT_TRUE(bakedPicture("gfx/" + name).ok()) << name << " " << bakedPicture("gfx/" + name).error;
}

TEST(BakedArt, SurfacesAreOpaqueAndTileWithoutSeams) {
    for (const char* name : surfaces) {
        const TgaPicture p = bakedPicture(name);
        ASSERT_TRUE(p.ok()) << name << " " << p.error;
        EXPECT_EQ(p.width, p.height) << name;
        bool opaque = true;
        for (int y = 0; y < p.height; ++y)
            for (int x = 0; x < p.width; ++x) opaque = opaque && p.alpha(x, y) == 255;
        EXPECT_TRUE(opaque) << name;
        expectTilesWithoutSeam(p, name);
    }
}

TEST(BakedArt, ParticlesFadeToNothingAtTheirCornersAndShowInTheMiddle) {
    for (const char* name :
         {"gfx/particles/water.tga", "gfx/particles/steam.tga", "gfx/particles/ice.tga", "gfx/fx/spark.tga",
          "gfx/fx/smoke.tga", "gfx/fx/drop.tga", "gfx/fx/bubble.tga"}) {
        const TgaPicture p = bakedPicture(name);
        ASSERT_TRUE(p.ok()) << name << " " << p.error;
        for (const auto& corner : {std::pair{0, 0}, std::pair{p.width - 1, 0}, std::pair{0, p.height - 1},
                                   std::pair{p.width - 1, p.height - 1}})
            EXPECT_EQ(p.alpha(corner.first, corner.second), 0) << name;
        int visible = 0;
        for (int y = 0; y < p.height; ++y)
            for (int x = 0; x < p.width; ++x) visible += p.alpha(x, y) > 64;
        EXPECT_GT(visible, p.width * p.height / 20) << name << " is nearly invisible";
    }
}

TEST(BakedArt, AnimationSetsAreNumberedFromOneWithoutGapsAndShareOneSize) {
    std::map<std::string, std::vector<std::string>> sets;
    for (const std::string& name : listFiles(bakedDataFolder() / "gfx")) {
        const size_t mark = name.rfind("_FRAME");
        if (mark != std::string::npos) sets[name.substr(0, mark)].push_back(name.substr(mark + 6));
    }
    EXPECT_GE(sets.size(), 6u);
    for (const auto& [stem, numbers] : sets) {
        ASSERT_GE(numbers.size(), 2u) << stem;
        const TgaPicture first = bakedPicture("gfx/" + stem + "_FRAME" + numbers.front());
        for (size_t i = 0; i < numbers.size(); ++i) {
            EXPECT_EQ(std::atoi(numbers[i].c_str()), static_cast<int>(i) + 1)
                << stem << " frame " << numbers[i];
            const TgaPicture frame = bakedPicture("gfx/" + stem + "_FRAME" + numbers[i]);
            EXPECT_EQ(frame.width, first.width) << stem;
            EXPECT_EQ(frame.height, first.height) << stem;
        }
        EXPECT_NE(readBytes(bakedDataFolder() / "gfx" / (stem + "_FRAME" + numbers[0])),
                  readBytes(bakedDataFolder() / "gfx" / (stem + "_FRAME" + numbers[1])))
            << stem << " does not move";
    }
}

TEST(BakedArt, FontsAreSixteenBySixteenCellsWithTheLettersInPlace) {
    for (const char* name : {"gfx/fonts/console.tga", "gfx/fonts/menu.tga", "gfx/fonts/label.tga"}) {
        const TgaPicture p = bakedPicture(name);
        ASSERT_TRUE(p.ok()) << name << " " << p.error;
        ASSERT_EQ(p.width, p.height) << name;
        ASSERT_EQ(p.width % 16, 0) << name;
        const int cell = p.width / 16;
        auto inked = [&](int c) {
            int count = 0;
            for (int y = 0; y < cell; ++y)
                for (int x = 0; x < cell; ++x)
                    count += p.alpha((c & 15) * cell + x, (c >> 4) * cell + y) > 128;
            return count;
        };
        EXPECT_EQ(inked(0), 0) << name << ": control codes are empty";
        EXPECT_EQ(inked(' '), 0) << name;
        EXPECT_GT(inked('A'), cell * cell / 40) << name;
        EXPECT_GT(inked('W'), inked('.')) << name;
        EXPECT_GT(inked(0xE9), 0) << name << ": Latin-1 letters are drawn";
        EXPECT_EQ(p.pixel(5, 5)[0], 255) << name << ": glyphs are white, tinted when drawn";
    }
}

TEST(BakedArt, CursorTipIsAtTheTopLeft) {
    const TgaPicture p = bakedPicture("gfx/cursor.tga");
    ASSERT_TRUE(p.ok()) << p.error;
    EXPECT_GT(p.alpha(1, 2), 128);
    EXPECT_EQ(p.alpha(p.width - 1, p.height - 1), 0);
    EXPECT_EQ(p.alpha(p.width - 1, 0), 0);
}
