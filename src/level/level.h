// Level data: the level file and what it turns into. Polygons with their
// triangles, the BSP tree of their edges, surface friction and the reader of
// level files (the text form and the writer are the tools' own, in
// tools/level_tools).
#pragma once

#include <cstdint>
#include <cstdio>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "foundation/foundation.h"
#include "graphics/graphics.h"

// ---------------------------------------------------------------------------
// One solid or decorative piece of level geometry: a simple polygon, the
// triangles that draw it and their edge normals.
struct Polygon2D {
    // One edge of the triangulator's chain.
    struct Edge {
        Vector2D start;
        Vector2D end;
    };

    bool collideable = true;
    bool present = true;
    bool visible = true;
    bool moveable = false;
    bool destructable = false;
    // The winding of the last triangulation: true puts the interior on the
    // (-dy, dx) side of each edge.
    bool clockwise = false;
    uint32_t triangleCount = 0;
    int32_t id = 0;
    float friction = 1.0f;
    Vector2D offset;
    Vector2D previousOffset;
    // Made while the level file is read; a polygon made otherwise has none
    // and is drawn with the default texture.
    std::optional<GLTexture> texture;
    std::vector<float> pointsX, pointsY;
    // Three vertices a triangle; three edge normals a triangle.
    std::vector<float> triangleX, triangleY;
    std::vector<float> normalX, normalY;
    uint32_t layer = 0;

    Polygon2D() = default;
    // Deep copies; a copy of a polygon without triangles has no normals either.
    Polygon2D(const Polygon2D& other);
    Polygon2D& operator=(const Polygon2D& other);
    Polygon2D(Polygon2D&&) = default;
    Polygon2D& operator=(Polygon2D&&) = default;

    // Polygons compare by their textures' object numbers, so that sorting
    // groups equal textures for drawing.
    bool operator<(const Polygon2D& other) const { return textureId() < other.textureId(); }
    bool operator>(const Polygon2D& other) const { return textureId() > other.textureId(); }
    bool operator<=(const Polygon2D& other) const { return textureId() <= other.textureId(); }
    bool operator>=(const Polygon2D& other) const { return textureId() >= other.textureId(); }
    bool operator==(const Polygon2D& other) const { return textureId() == other.textureId(); }
    bool operator!=(const Polygon2D& other) const { return textureId() != other.textureId(); }
    unsigned int textureId() const { return texture ? texture->id : 0; }

    void setFrictionLevel(float value);
    // Appends a point unless it repeats one, then triangulates the outline so far.
    void addPoint(float x, float y);
    // Leaves the polygon exactly as addPoint for each point in turn would, at
    // the cost of one triangulation instead of one a point.
    void addPoints(const std::vector<Vector2D>& points);
    void triangulate(bool clockwiseWinding);
    void clearTriangles();
    void clearNormals();
    void calculateNormals();
    bool isDegenerate() const;
    bool edgeCrossesPolygonEdges(const Vector2D& p1, const Vector2D& p2) const;
    static bool edgeCrossesEdges(const Edge& edge, const std::vector<Edge>& edges);
    static bool triangleCoversPolyPoint(const Vector2D* triangle, const std::vector<Edge>& edges);
    static void removeColinearEdges(std::vector<Edge>& edges);
    void expand(float distance);
    std::size_t longestUsableOutline(std::size_t shortest) const;
    // Debug drawing: the outline in white, the triangles in red at the offset.
    void drawOutline() const;
    void drawTrianglesOutline() const;

    std::size_t pointCount() const { return pointsX.size(); }
    Vector2D point(std::size_t index) const { return {pointsX[index], pointsY[index]}; }
};

// ---------------------------------------------------------------------------
// One level edge in the BSP tree. The normal points into the solid: free space
// lies on the negative side.
struct BspNode {
    Vector2D start, end;
    Vector2D normal;
    Vector2D direction;
    float length = 0.0f;
    float friction = 1.0f;
    bool collideable = true;
    bool caulk = false;
    Polygon2D* polygon = nullptr;
    BspNode* parent = nullptr;
    BspNode* negativeChild = nullptr;
    BspNode* positiveChild = nullptr;

    // Negative on the free side.
    float signedDistance(const Vector2D& q) const { return dot(q - start, normal); }
};

// ---------------------------------------------------------------------------
// The level file's records, field for field as the file stores them. The
// reader fills them; the loader hands each kind to the subsystem that owns it.
struct LevelPoint {
    int32_t x = 0;
    int32_t y = 0;

    Vector2D toVector() const { return {static_cast<float>(x), static_cast<float>(y)}; }
};

struct PolygonRecord {
    int32_t id = 0;
    std::string textureName;
    int32_t surfaceType = 1;
    int32_t collisionMode = 0;
    uint32_t layer = 0;
    std::vector<LevelPoint> points;
};

struct ObjectRecord {
    int32_t id = 0;
    std::string textureName;
    uint32_t layer = 0;
    LevelPoint position;
    uint8_t mirrored = 0;
};

// As stored in the file; the loader normalises the direction and scales the
// strength when it hands the force over.
struct ForceRecord {
    int32_t id = 0;
    LevelPoint position;
    float directionX = 0.0f, directionY = 0.0f;
    float strength = 0.0f;
};

struct MoverRecord {
    int32_t id = 0;
    float speed = 0.0f;
    LevelPoint start;
    LevelPoint end;
};

struct TriggerRecord {
    int32_t targetId = 0;
    int32_t type = 0;
    float delay = 0.0f;
    LevelPoint corners[4];
};

struct SoundSourceRecord {
    int32_t id = 0;
    LevelPoint position;
    int32_t strength = 0;
    uint8_t looping = 0;
    std::string soundName;
};

struct EmitterRecord {
    int32_t id = 0;
    LevelPoint position;
    float directionX = 0.0f, directionY = 0.0f;
    std::string settingsName;
};

// A whole level file. version is what the file says (the game reads only 12).
struct LevelFile {
    int32_t version = 12;
    std::vector<PolygonRecord> polygons;
    std::vector<ObjectRecord> objects;
    std::vector<ForceRecord> forces;
    std::vector<MoverRecord> movers;
    std::vector<TriggerRecord> triggers;
    std::vector<SoundSourceRecord> sounds;
    std::vector<EmitterRecord> emitters;
    LevelPoint waterStart;
    LevelPoint cameraStart;
};

// The records of the level in memory whose owners keep them by kind. Forces
// are kept as handed over: direction normalised, strength times 10.
struct LevelRecords {
    std::vector<ObjectRecord> objects;
    std::vector<ForceRecord> forces;
    std::vector<SoundSourceRecord> sounds;
    std::vector<MoverRecord> movers;
    std::vector<EmitterRecord> emitters;
    std::vector<TriggerRecord> triggers;
};

namespace LevelFileFormat {
constexpr uint32_t magic = 0x008F1397;
constexpr int32_t version = 12;
constexpr uint32_t countLimit = 65535;
constexpr uint32_t objectNameLimit = 65534;

// Reads a level file from the stream and checks every limit. A failure throws
// the reason as a const char* (the messages the level reader prints).
void read(FILE* file, LevelFile& level);
}  // namespace LevelFileFormat

// ---------------------------------------------------------------------------
namespace SurfaceTypeManager {
void initialise();
bool validSurfaceType(int type);
float getSurfaceTypeFriction(int type);
}  // namespace SurfaceTypeManager

namespace LevelLoader {
// True when the level in memory is now this file's. A failure leaves the old
// level standing.
bool loadLevel(const std::string& fileName);
}  // namespace LevelLoader

namespace LevelBspTree {
void create();
void clear();
void resetTree();
// Null and end untouched on no hit; on a hit end becomes the hit point.
BspNode* raycast(const Vector2D& start, Vector2D& end);
void getNodeList(std::vector<BspNode*>& nodes);
void debugDraw();
BspNode* getRoot();
// The outline's edges as nodes in outline order, the closing edge last, each
// with its normal into the solid; edges too short to have a direction are left
// out. The tree and the moving polygons build their edges from it.
std::vector<BspNode> polygonEdges(Polygon2D& polygon);

// Console commands.
int conCmdBspSize();
int conCmdBspDepth();
void conCmdBspWalk(std::string word);
void conCmdBspCast(std::string arguments);
}  // namespace LevelBspTree

namespace Level {
bool load(const std::string& fileName);
void clear();
void reset();
void setPolygonCollideable(Polygon2D* polygon, bool value);
void playUntargetedSounds();
void debugDraw();

// Polygons stay at one address while the level is loaded.
std::list<Polygon2D>& getPolygons();
Vector2D getWaterStart();
Vector2D getCameraStart();

// Used by the level loader's hand-over.
void addPolygon(const Polygon2D& polygon);
}  // namespace Level
