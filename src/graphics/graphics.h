// Everything drawn through the window: the shared texture store and its value
// handles, bitmap-font text, the renderers of the level, the water and the
// level's sprites, and the intro video.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "foundation/foundation.h"
#include "graphics/window/window.h"
#include "platform/video_backend.h"

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
    void drawStringCentered(const char* text, float x, float y, float boxWidth, float boxHeight, float size,
                            float r, float g, float b, float a) const;
};

// ---------------------------------------------------------------------------
// The level's polygons in five layers, 0 at the back. Everything that never
// moves is compiled into one display list per layer when a level is loaded;
// polygons that move or vanish are picked near the view each frame.
struct Polygon2D;

constexpr int drawLayerCount = 5;

namespace LevelGeometryRenderer {
void initialise();
void shutdown();
// Calls the layer's display list while DrawLevelGeometry is on.
void drawLayer(int layer);
}  // namespace LevelGeometryRenderer

namespace DynamicPolygonRenderer {
void initialise();
void shutdown();
// Queues the moving and destructable polygons near the view for this frame.
void prepareDraw();
// Draws a layer's queue and leaves it empty.
void drawLayer(int layer);
// Polygons the renderer looks after, and those queued in a layer now (tests).
// The smallest box round a polygon's points, without its offset.
void findPolygonBounds(const Polygon2D& polygon, float& minX, float& maxX, float& minY, float& maxY);
}  // namespace DynamicPolygonRenderer

// ---------------------------------------------------------------------------
// The water: each particle a large soft square over a larger, darker one, so
// the squares melt into one surface with an outline round the whole body.
namespace ParticleRenderer {
void initialise();
void shutdown();
void draw();
}  // namespace ParticleRenderer

// ---------------------------------------------------------------------------
// A sprite placed in a level: one image or a run of animation frames, centred
// on its position, in one of the five layers. Names holding "_FRAME" stand for
// every file that differs only after it, taken in file-name order.
struct LevelObject {
    bool visible = true;
    int32_t id = 0;
    uint32_t layer = 0;
    std::vector<GLTexture> frames;
    uint32_t frameCount = 1;
    uint32_t currentFrame = 0;
    float frameTimer = 0.0f;
    Vector2D position;
    Vector2D offset;  // moved by movers; drawn at position plus offset
    bool mirrored = false;
    bool stopped = true;
    uint32_t repeatCount = 0;  // runs of the animation; 0 for ever
    uint32_t playCount = 0;

    void setTexture(const std::string& name);
    void resetAnimation();
    void runAnimation(float seconds, float speed);
    // The frame on show, or null when the object has none.
    const GLTexture* currentTexture() const;
};

namespace LevelObjectsManager {
void initialise();
void shutdown();
void addObject(const LevelObject& object);
void resetObjects();
void runAnimations(float seconds);
void prepareDraw();
void drawLayer(int layer);
void debugDraw();
// Objects of one frame and animated ones, newest first; triggers and movers reach them here.
std::list<LevelObject>& getStaticObjects();
std::list<LevelObject>& getAnimatedObjects();
}  // namespace LevelObjectsManager

// ---------------------------------------------------------------------------
// A video played frame by frame into one texture and drawn over the window's
// height. A file that can't be played says so once on the console and counts
// as finished at once, as does a video whose next frame can't be decoded.
class GLAviPlayer {
public:
    GLAviPlayer();
    explicit GLAviPlayer(const std::string& name);
    ~GLAviPlayer();
    GLAviPlayer(const GLAviPlayer&) = delete;
    GLAviPlayer& operator=(const GLAviPlayer&) = delete;

    void open(const std::string& name);
    void close();
    void rewind();
    // One turn of the caller's loop: at most one frame further, however long the turn.
    void play();
    void draw();
    void getAviFrame(uint32_t index);
    bool loaded() const;
    bool finished() const;

    unsigned int currentFrame = 0;
    unsigned int frameElapsed = 0;  // milliseconds this frame has stood
    unsigned int frameCount = 0;
    unsigned int frameLength = 0;  // milliseconds
    unsigned int texture = 0;
    int textureWidth = 0;
    int textureHeight = 0;
    FrameClock clock;
    VideoBackend::Stream* stream = nullptr;
    VideoBackend::StreamInfo streamInfo;
    VideoBackend::FrameReader* getFrame = nullptr;

private:
    bool openParts(const std::string& name);
};

// The intro at start-up: its video with its own sound track, once, until the
// video ends, a key or a mouse button is pressed, or the window is closed.
class IntroScreen : public GLWindowEventListener {
public:
    static constexpr const char* videoName = "vid\\intro.avi";
    static constexpr const char* soundTrackName = "vid\\intro.ogg";

    IntroScreen();
    ~IntroScreen() override;
    IntroScreen(const IntroScreen&) = delete;
    IntroScreen& operator=(const IntroScreen&) = delete;

    // Runs its own loop with itself as the window's listener.
    void run();

    void mousePressed(int x, int y, int button) override;
    void keyboardPressed(int key) override;
    void windowClosing() override;

private:
    std::unique_ptr<GLAviPlayer> player;
    bool running = false;
};
