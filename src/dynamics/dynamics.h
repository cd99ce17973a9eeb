// What a level does by itself: trigger areas that act on the water and on the
// level's things (TriggerManager and the trigFunc actions), points that carry
// polygons and sprites back and forth (MoverManager, Mover), the forces that
// force triggers apply (ForceManager), and the emitters of decorative effect
// particles (FxParticleManager, FxParticleEmitter).
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "foundation/foundation.h"
#include "level/level.h"

struct Particle;
struct ParticleGroup;
struct LevelObject;

// ---------------------------------------------------------------------------
// Triggers.

// What fired a trigger: a free water particle or an ice body.
using TriggerSubjectKind = int32_t;
constexpr TriggerSubjectKind subjectParticle = 0;
constexpr TriggerSubjectKind subjectGroup = 1;

// What a trigger's target is. 2 is not used.
using TriggerTargetKind = int32_t;
constexpr TriggerTargetKind targetPolygon = 0;
constexpr TriggerTargetKind targetObject = 1;
constexpr TriggerTargetKind targetForce = 3;
constexpr TriggerTargetKind targetMover = 4;
constexpr TriggerTargetKind targetEmitter = 5;

struct Trigger;
// The subject is a Particle or a ParticleGroup by its kind, or null from a delayed event.
using TriggerFunction = void (*)(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);

struct TriggerType {
    std::string name;
    TriggerFunction function = nullptr;
    float refireDelay = 0.0f;
    uint32_t fireLimit = 0;  // 0: without limit
    // Acts on the particle or ice body that fired it, which a delayed event
    // doesn't have, so it always runs at once.
    bool needsSubject = false;
};

// Half of a trigger's area, with the inward normals ready for the inside test.
struct TriggerTriangle {
    Vector2D corners[3];
    Vector2D normals[3];
    Vector2D edges[3];
    float lengths[3] = {0.0f, 0.0f, 0.0f};
};

struct TriggerTarget {
    void* target = nullptr;
    TriggerTargetKind kind = targetPolygon;
};

struct Trigger {
    TriggerTriangle first, second;
    float minX = 0.0f, maxX = 0.0f, minY = 0.0f, maxY = 0.0f;
    int32_t type = 0;
    int32_t targetId = 0;
    const TriggerType* typeInfo = nullptr;
    std::vector<TriggerTarget> targets;
    float cooldown = 0.0f;
    float delay = 0.0f;
    uint32_t fireCount = 0;
};

struct DelayedTriggerEvent {
    TriggerFunction function = nullptr;
    Trigger* trigger = nullptr;
    float elapsed = 0.0f;
    float remaining = 0.0f;
};

namespace TriggerManager {

void initialise();
void shutdown();
void createTriggerTypeMap();
void addTrigger(int32_t type, int32_t targetId, float delay, const Vector2D& a, const Vector2D& b,
                const Vector2D& c, const Vector2D& d);
void findTargets(Trigger& trigger);
void runTriggers(float dt);
void checkDelayedTriggerEvents(float dt);
bool pointInTrigger(const Vector2D& point, const Trigger& trigger);
void resetTriggers();
void debugDraw();

// Console commands.
void conCmdTriggerTypeList();
void conCmdTriggerCreate(std::string arguments);
int conCmdTriggerCount();

}  // namespace TriggerManager

// The temperature settings of the state triggers, from "cfg\water.cfg".
void Triggers_HeatSources_LoadSettings();

// The actions behind the trigger types.
void trigFuncNull(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncToIce(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncToWater(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncToSteam(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncAnimPlayLoop(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncAnimPlayOnce(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncAnimStop(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncSoundPlay(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncSoundStop(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncForceDirectional(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncForceInstantenous(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncForceMultiDirPull(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncForceMultiDirPush(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncEntityRemove(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncEntityAdd(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncMoverGotoStart(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncMoverGotoEnd(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncMoverStop(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncMoverGotoStartLoop(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncMoverGotoEndLoop(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncEmitterCreateBurst(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncEmitterStart(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncEmitterStop(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncCameraZoom(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncCameraShake(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncParticleKill(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncParticleKillRandom(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncLevelEnd(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);
void trigFuncCheckPoint(Trigger& trigger, void* subject, TriggerSubjectKind kind, float dt);

// ---------------------------------------------------------------------------
// Forces.

struct Force {
    bool enabled = true;
    int32_t id = 0;
    Vector2D position;
    Vector2D direction;
    float strength = 0.0f;
};

namespace ForceManager {

void initialise();
void shutdown();
void addForce(int32_t id, float x, float y, float directionX, float directionY, float strength);
void debugDraw();
// In the order of adding; records stay at one address until shutdown.
std::list<Force>& getForces();

int conCmdForceCount();
void conCmdForceCreate(std::string arguments);

}  // namespace ForceManager

// ---------------------------------------------------------------------------
// Movers.

// A point that travels along a straight path. States: 0 stopped, 1 going to
// the end, 2 going to the start, 3 looping towards the start, 4 looping
// towards the end.
struct Mover {
    static constexpr int32_t stopped = 0;
    static constexpr int32_t toEnd = 1;
    static constexpr int32_t toStart = 2;
    static constexpr int32_t loopToStart = 3;
    static constexpr int32_t loopToEnd = 4;

    int32_t id = 0;
    Vector2D start, end;
    Vector2D direction;
    float length = 0.0f;
    float speed = 0.0f;
    float position = 0.0f;
    int32_t state = stopped;

    void setStartPoint(const Vector2D& point);
    void setEndPoint(const Vector2D& point);
    void reset();
    void run(float dt);

private:
    void updatePath();
};

// A collideable polygon that rides on a mover, with its edges in its own frame.
struct DynamicPolygon {
    Polygon2D* polygon = nullptr;
    std::list<BspNode> edges;
    float minX = 0.0f, maxX = 0.0f, minY = 0.0f, maxY = 0.0f;
};

namespace MoverManager {

// Particles within this distance of a moving edge are carried along.
constexpr float touchDistance = 2.25f;
// The longest stride of a push: less than a particle's diameter, so nothing is jumped over.
constexpr float pushStep = 1.7f;
constexpr float nearbyDistance = 6.0f;

void initialise();
void shutdown();
void addMover(const Mover& mover);
void addDynamicPolygon(Polygon2D* polygon);
void resetMovers();
void updateCollideableNodes();
void runMovers(float dt);
void moveMoverObjects();
void moveMoverPolygons();
void pushPolygonParticles(float dt);
void debugDraw();

std::list<Mover>& getMovers();

int conCmdMoverCount();

}  // namespace MoverManager

// ---------------------------------------------------------------------------
// Effect particles: textured squares that fade out as they fly. They fall
// along the view's gravity, touch nothing and change nothing in the game.

struct FxColour {
    float r = 1.0f, g = 1.0f, b = 1.0f, a = 1.0f;
};

struct FxParticle {
    bool useAlphaBlending = true;  // false: added to the picture
    Vector2D position;
    Vector2D velocity;  // world units a second
    FxColour color;     // a is the alpha at birth
    float size = 0.0f;  // edge of the square
    float lifeTotal = 0.0f;
    float lifeLeft = 0.0f;
    float gravity = 0.0f;  // factor on the view's gravity
    // An entry of the emitter's textures: particles go with their emitters.
    const GLTexture* texture = nullptr;
};

// The fields of an emitter, copied as one so that no field can be forgotten.
struct FxParticleEmitterFields {
    int32_t id = 0;
    Vector2D position;
    Vector2D direction{1.0f, 0.0f};
    float frequency = 1.0f;  // seconds between two particles, not a rate
    float timer = 0.0f;      // seconds since the last particle
    float spread = 0.0f;     // full width of the fan of directions, radians
    uint32_t burstSize = 16;
    bool active = true;
    bool useAlphaBlending = true;
    float velocity1 = 0.0f, velocity2 = 0.0f;
    float size1 = 0.0f, size2 = 0.0f;
    float liveTime1 = 1.0f, liveTime2 = 1.0f;
    FxColour color1, color2;
    float gravity1 = 0.0f, gravity2 = 0.0f;
    std::vector<GLTexture> textures;
};

// A point of a level that gives off effect particles, each drawing its
// properties from the ranges held here.
class FxParticleEmitter : public FxParticleEmitterFields {
public:
    static constexpr float shortestFrequency = 0.001f;
    static constexpr float shortestLiveTime = 0.0001f;
    static constexpr int32_t largestBurst = 4096;
    static constexpr std::size_t textureRoom = 8;

    FxParticleEmitter();
    FxParticleEmitter(const FxParticleEmitter& other);
    FxParticleEmitter& operator=(const FxParticleEmitter& other);

    // (0, 0) asks for a random direction, chosen once.
    void setDirection(float x, float y);
    void setFrequency(float seconds);
    void setColors(const FxColour& first, const FxColour& second);
    void setLiveTime(float time1, float time2);
    // Anything below 0 or above 4096 becomes 4096.
    void setBurstSize(int32_t size);
    // Gives off a particle for every whole frequency in the time gathered, while active.
    void run(float dt);
    // burstSize particles at once, active or not.
    void createBurst();
    void spawnParticle();
    // Overrides what the file holds; a missing file changes nothing but the textures.
    void loadEmitterSettings(const std::string& fileName);
    void addTexture(const std::string& fileName);
};

namespace FxParticleManager {

void initalise();
void shutdown();
void addEmitter(const FxParticleEmitter& emitter);
void addParticle(const FxParticle& particle);
// Emitters stay, with their timers and active flags.
void removeAllParticles();
// The emitters with this id, in the order of adding, for triggers to act on.
// They stay at one address until shutdown.
std::vector<FxParticleEmitter*> findEmitters(int32_t id);
std::size_t getParticleCount();
// One step: the emitters near the view give off particles, then every particle ages and moves.
void run(float dt);
// Draws with the game's view in place, in batches by texture.
void draw();
void debugDraw();

void conCmdFxEmitterCreate(std::string arguments);
int conCmdFxEmitterCount();
int conCmdFxParticleCount();

}  // namespace FxParticleManager
