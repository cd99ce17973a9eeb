// Everything drawn through the window: the shared texture store and its value
// handles, bitmap-font text, and the renderers of the level, the water and the
// level's sprites.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <thread>
#include <vector>

// ---------------------------------------------------------------------------
// Textures. Every image is held once in OpenGL, found by its upper-cased name
// and counted by reference. A name that can't be loaded shows a checkerboard.

// A value handle on a stored texture; copying it takes another reference.
class GLTexture {
public:
    int width = 0;
    int height = 0;
    unsigned int id = 0;  // OpenGL texture name, bound directly by callers
    bool hasAlpha = false;
    std::string name;

    GLTexture();
    explicit GLTexture(const char* textureName);
    explicit GLTexture(const std::string& textureName);
    GLTexture(const GLTexture& other);
    GLTexture& operator=(const GLTexture& other);
    GLTexture& operator=(const char* textureName);
    GLTexture& operator=(const std::string& textureName);
    ~GLTexture();

    // Handles order by their OpenGL name alone, so that draws can be grouped by texture.
    bool operator<(const GLTexture& o) const { return id < o.id; }
    bool operator>(const GLTexture& o) const { return id > o.id; }
    bool operator<=(const GLTexture& o) const { return id <= o.id; }
    bool operator>=(const GLTexture& o) const { return id >= o.id; }
    bool operator==(const GLTexture& o) const { return id == o.id; }
    bool operator!=(const GLTexture& o) const { return id != o.id; }

private:
    void take(const std::string& textureName);
};

// One stored texture.
struct GLTextureInternal {
    int width = 0;
    int height = 0;
    int bytesPerPixel = 0;  // depth of the source image
    unsigned int id = 0;
    bool hasAlpha = false;
    bool loaded = false;  // false while the checkerboard stands in
    int referenceCount = 0;
    std::string name;  // upper case
    std::thread::id ownerThread;

    // Reads the image again into the same OpenGL name.
    void load();
};

namespace GLTextureManager {
constexpr const char* defaultTextureName = "gfx\\default.tga";

// Needs the window's OpenGL context for the extension tests.
void initialise();
void shutdown();
GLTextureInternal* loadTexture(const std::string& name);
void freeTexture(const std::string& name);
void reloadAllTextures();
// 0 best, 1 compressed or 16-bit, 2 as 1 at half size.
void setTextureDetailLevel(int level);
int getTextureDetailLevel();
void setAnisotropicFilteringLevel(int level);
int getAnisotropicFilteringLevel();
int getMaxAnisotropicLevel();
bool supportsAnisotropic();
bool supportsCompression();
unsigned int getTextureBytesUsed();
void getTextureList(std::vector<std::string>& list);
// The stored entry for a name in any case, or null; for the console and tests.
const GLTextureInternal* findTexture(const std::string& name);

// Gives pixels (4 bytes a pixel, blue, green, red, alpha, top row first) to a
// texture name with mipmaps, at the present detail level. Nothing for an empty image.
void uploadTexture32(unsigned int id, const uint8_t* pixels, int width, int height);
}  // namespace GLTextureManager

// The program's own reader of 32-bit TGA files, true colour, raw or run-length.
namespace GLTga32Loader {
bool load(const std::string& path, unsigned int id, int& width, int& height);
// The decoding alone: pixels top row first. False for anything the reader refuses.
bool decode(const uint8_t* data, uint32_t size, std::vector<uint8_t>& pixels, int& width, int& height);
}  // namespace GLTga32Loader

// ---------------------------------------------------------------------------
// Text from a texture of 16 by 16 square cells, one for each byte value.
class GLFont : public GLTexture {
public:
    GLFont() = default;
    explicit GLFont(const GLTexture& texture);
    GLFont(const GLFont& other);
    GLFont& operator=(const GLFont& other);
    GLFont& operator=(const GLTexture& texture);
    GLFont& operator=(const char* textureName);
    GLFont& operator=(const std::string& textureName);

    // (x, y) is the top left of the first character, size the edge of each square.
    void drawString(const char* text, float x, float y, float size, float r, float g, float b, float a) const;
    void drawStringCentered(const char* text, float x, float y, float width, float height, float size, float r,
                            float g, float b, float a) const;
};
