#include <GL/gl.h>
#include <gtest/gtest.h>

#include <thread>
#include <tuple>

#include "graphics/graphics.h"
#include "graphics/texture_state.h"
#include "real_window.h"
#include "support/test_support.h"
#include "test_images.h"

namespace {

// Red top row, green bottom row, blue between, so that a flip shows.
Bgra rowColours(int, int y, int height) {
    if (y == 0) return {0, 0, 255, 255};
    if (y == height - 1) return {0, 255, 0, 255};
    return {255, 0, 0, 128};
}

PixelAt rows(int height) {
    return [height](int x, int y) { return rowColours(x, y, height); };
}

void expectRows(const std::vector<uint8_t>& pixels, int width, int height) {
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const Bgra want = rowColours(x, y, height);
            const uint8_t* got = &pixels[(y * width + x) * 4];
            ASSERT_EQ(got[0], want.b) << x << "," << y;
            ASSERT_EQ(got[1], want.g) << x << "," << y;
            ASSERT_EQ(got[2], want.r) << x << "," << y;
            ASSERT_EQ(got[3], want.a) << x << "," << y;
        }
}

// Decodes a copy of exactly the file's length, so that the sanitizer sees any overrun.
bool decode(const std::string& bytes, std::vector<uint8_t>& pixels, int& width, int& height) {
    return GLTga32Loader::decode(reinterpret_cast<const uint8_t*>(bytes.data()),
                                 static_cast<uint32_t>(bytes.size()), pixels, width, height);
}

bool refused(const std::string& bytes) {
    std::vector<uint8_t> pixels;
    int width = 0, height = 0;
    return !decode(bytes, pixels, width, height);
}

TEST(TgaLoader, ReadsAllFourLayoutsTopRowFirst) {
    for (bool topFirst : {true, false})
        for (const std::string& file :
             {makeRawTga(5, 4, topFirst, rows(4)), makeRunLengthTga(5, 4, topFirst, rows(4))}) {
            std::vector<uint8_t> pixels;
            int width = 0, height = 0;
            ASSERT_TRUE(decode(file, pixels, width, height));
            EXPECT_EQ(width, 5);
            EXPECT_EQ(height, 4);
            expectRows(pixels, 5, 4);
        }
}

TEST(TgaLoader, RefusesWhatItDoesNotRead) {
    const std::string good = makeRawTga(4, 4, true, rows(4));
    // Byte at, value: a colour map, right-to-left rows, greyscale.
    for (const auto& [at, value] : {std::pair{1, 1}, {17, 0x21}, {2, 3}}) {
        std::string changed = good;
        changed[static_cast<std::size_t>(at)] = static_cast<char>(value);
        EXPECT_TRUE(refused(changed)) << "byte " << at;
    }
    for (const std::string& bytes :
         {makeRawTga(4, 4, true, rows(4), 24), makeRawTga(3, 4, true, rows(4)),
          makeRawTga(4, 3, true, rows(3)), std::string("TRUEVISION"), std::string()})
        EXPECT_TRUE(refused(bytes));
}

TEST(TgaLoader, ShortFilesAreNeverReadPastTheirEnd) {
    const std::string raw = makeRawTga(64, 64, true, rows(64));
    const std::string packed = makeRunLengthTga(64, 64, false, rows(64));
    for (std::size_t cut : {std::size_t{18}, std::size_t{21}, std::size_t{100}, packed.size() - 1})
        EXPECT_TRUE(refused(raw.substr(0, cut)) && refused(packed.substr(0, cut))) << cut;
}

TEST(TgaLoader, APacketCrossingARowEndStaysInsideThePicture) {
    std::string bytes = tgaHeader(4, 4, 10, true);
    bytes += static_cast<char>(0x80 | 127);  // a run of 128 in a picture of 16
    putPixel(bytes, {1, 2, 3, 4});
    bytes += static_cast<char>(127);  // 128 literal pixels, far beyond the picture
    for (int i = 0; i < 128; ++i) putPixel(bytes, {5, 6, 7, 8});
    for (int i = 0; i < 16; ++i) bytes += static_cast<char>(0x83), putPixel(bytes, {9, 9, 9, 9});
    std::vector<uint8_t> pixels;
    int width = 0, height = 0;
    decode(bytes, pixels, width, height);
    EXPECT_EQ(pixels.size(), 4u * 4u * 4u);
}

class TextureStore : public ::testing::Test {
protected:
    ScratchFolder folder;
    RealWindow window{64, 64};
    TextureStore() { GLTextureManager::initialise(); }
    ~TextureStore() override { GLTextureManager::shutdown(); }

    // The texels of level 0 of a texture, blue, green, red, alpha.
    static std::vector<uint8_t> texels(unsigned int id, int width, int height) {
        std::vector<uint8_t> pixels(static_cast<std::size_t>(width * height * 4));
        glBindTexture(GL_TEXTURE_2D, id);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, pixels.data());
        return pixels;
    }
    static GLint levelWidth(unsigned int id) {
        GLint width = 0;
        glBindTexture(GL_TEXTURE_2D, id);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
        return width;
    }
    static int references(const std::string& name) {
        const GLTextureInternal* entry = GLTextureManager::findTexture(name);
        return entry ? entry->referenceCount : 0;
    }
};

TEST_F(TextureStore, AMissingImageIsAnOpaqueCheckerboard) {
    ConsoleCapture console;
    GLTexture texture;
    EXPECT_TRUE(texture.width == 16 && texture.height == 16 && !texture.hasAlpha && texture.id != 0);
    std::vector<std::string> list;
    GLTextureManager::getTextureList(list);
    EXPECT_EQ(list, std::vector<std::string>{"GFX\\DEFAULT.TGA (loading failed)  : 32 BIT"});
    EXPECT_EQ(console.text(), "");

    // Cells of one texel, white in the corner.
    const std::vector<uint8_t> pixels = texels(texture.id, 16, 16);
    for (const auto& [x, y, white] : {std::tuple{0, 0, true}, {1, 0, false}, {0, 1, false}, {1, 1, true}})
        EXPECT_EQ(pixels[static_cast<std::size_t>((y * 16 + x) * 4 + 1)] > 200, white) << x << "," << y;
}

TEST_F(TextureStore, HandlesCountTheirReferences) {
    folder.write("gfx/rock.tga", makeRawTga(8, 8, false, rows(8)));
    GLTexture lower("gfx\\default.tga");
    auto* upper = new GLTexture("GFX\\DEFAULT.TGA");
    EXPECT_TRUE(lower == *upper);
    EXPECT_EQ(references("gfx\\Default.tga"), 2);
    const unsigned int id = [&] {
        GLTexture rock("gfx\\rock.tga");
        *upper = rock;
        *upper = *upper;
        EXPECT_EQ(references("GFX\\ROCK.TGA"), 2);
        EXPECT_EQ(upper->width, 8);
        return rock.id;
    }();
    EXPECT_EQ(references("gfx\\default.tga"), 1);
    EXPECT_TRUE(glIsTexture(id));
    delete upper;
    EXPECT_EQ(GLTextureManager::findTexture("gfx\\rock.tga"), nullptr);
    EXPECT_FALSE(glIsTexture(id));
}

// 32-bit TGA through our loader with alpha, the file's top row the top of the
// texture (t = 0); other TGA and other formats through SDL_image.
TEST_F(TextureStore, FormatsLoadWithTheirDepthAndTheTopRowFirst) {
    folder.write("gfx/packed.tga", makeRunLengthTga(16, 8, false, rows(8)));
    folder.write("gfx/rgb.tga", makeRawTga(4, 4, false, rows(4), 24));
    folder.write("gfx/narrow.tga", makeRawTga(3, 4, false, rows(4)));
    folder.write("gfx/sky.bmp", makeBmp24(8, 4, rows(4)));
    GLTexture packed("gfx\\packed.tga"), rgb("gfx\\rgb.tga"), narrow("gfx\\narrow.tga"), sky("gfx\\SKY.BMP");
    EXPECT_TRUE(packed.hasAlpha);
    EXPECT_FALSE(rgb.hasAlpha || sky.hasAlpha);
    EXPECT_EQ(narrow.width, 3);
    std::vector<std::string> list;
    GLTextureManager::getTextureList(list);
    EXPECT_EQ(list, (std::vector<std::string>{"GFX\\NARROW.TGA : 32 BIT", "GFX\\PACKED.TGA : 32 BIT",
                                              "GFX\\RGB.TGA : 24 BIT", "GFX\\SKY.BMP : 24 BIT"}));
    expectRows(texels(packed.id, 16, 8), 16, 8);
    const std::vector<uint8_t> bmp = texels(sky.id, 8, 4);
    EXPECT_EQ(bmp[2], 255);              // top row red
    EXPECT_EQ(bmp[3], 255);              // opaque
    EXPECT_EQ(bmp[3 * 8 * 4 + 1], 255);  // bottom row green
}

TEST_F(TextureStore, UnreadableFilesGiveTheCheckerboardAndARepairedFileComesBack) {
    ConsoleCapture console;
    folder.write("gfx/broken.png", "not a picture at all");
    folder.write("gfx/short.tga", makeRawTga(32, 32, true, rows(32)).substr(0, 10));
    folder.write("gfx/cut.tga", makeRawTga(32, 32, true, rows(32)).substr(0, 300));
    // Whatever the truncated file shows, it loads without harm.
    GLTexture truncated("gfx\\cut.tga"), broken("gfx\\broken.png"), cut("gfx\\short.tga"),
        absent("gfx\\nothing here.tga");
    for (const GLTexture* texture : {&broken, &cut, &absent})
        EXPECT_TRUE(texture->width == 16 && texture->height == 16 &&
                    !GLTextureManager::findTexture(texture->name)->loaded)
            << texture->name;
    EXPECT_EQ(console.text(), "");

    folder.write("gfx/short.tga", makeRawTga(32, 32, true, rows(32)));
    GLTextureManager::reloadAllTextures();
    const GLTextureInternal* repaired = GLTextureManager::findTexture("gfx\\short.tga");
    EXPECT_EQ(std::tuple(repaired->loaded, repaired->width, repaired->id), std::tuple(true, 32, cut.id));
}

TEST_F(TextureStore, DetailLevelsRebuildButDoNotChangeTheCount) {
    folder.write("gfx/dot.bmp", makeBmp24(1, 1, solid(10, 20, 30)));
    folder.write("gfx/wide.tga", makeRawTga(64, 32, true, rows(32)));
    GLTexture dot("gfx\\dot.bmp"), wide("gfx\\wide.tga");
    const unsigned int bytes = GLTextureManager::getTextureBytesUsed();
    EXPECT_EQ(bytes, 4u + 64u * 32u * 4u);
    GLTextureManager::setTextureDetailLevel(2);
    EXPECT_EQ(std::tuple(GLTextureManager::getTextureDetailLevel(), GLTextureManager::getTextureBytesUsed(),
                         levelWidth(dot.id), levelWidth(wide.id)),
              std::tuple(2, bytes, 1, 32));
    GLTextureManager::setTextureDetailLevel(3);
    GLTextureManager::setTextureDetailLevel(-1);
    EXPECT_EQ(GLTextureManager::getTextureDetailLevel(), 2);
}

TEST_F(TextureStore, AnisotropyIsClampedToTheDriversRange) {
    if (!GLTextureManager::state().anisotropicSupported) GTEST_SKIP() << "no anisotropic filtering here";
    GLTexture texture;
    GLTextureManager::setAnisotropicFilteringLevel(0);
    EXPECT_EQ(GLTextureManager::getAnisotropicFilteringLevel(), 1);
    GLTextureManager::setAnisotropicFilteringLevel(100000);
    EXPECT_EQ(GLTextureManager::getAnisotropicFilteringLevel(),
              GLTextureManager::state().maxAnisotropicLevel);
    GLfloat level = 0;
    glBindTexture(GL_TEXTURE_2D, texture.id);
    glGetTexParameterfv(GL_TEXTURE_2D, 0x84FE, &level);
    EXPECT_EQ(static_cast<int>(level), GLTextureManager::state().maxAnisotropicLevel);
}

TEST_F(TextureStore, HandlesOfAnotherThreadNeitherKeepNorFree) {
    GLTexture mine("gfx\\default.tga");
    std::thread other([] {
        GLTexture theirs("gfx\\default.tga");
        EXPECT_EQ(references("gfx\\default.tga"), 1);
    });
    other.join();
    EXPECT_EQ(references("gfx\\default.tga"), 1);
}

}  // namespace
