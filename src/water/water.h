// The water: free particles and their per-step order (ParticleManager), their
// motion, neighbour grid, repulsion and attraction (ParticleMover), the rigid ice
// bodies that frozen particles join (ParticleGroupMover), and the circle test
// that keeps both out of the level's edges (CircleCollision).
#pragma once

#include <cstdint>
#include <list>
#include <vector>

#include "foundation/foundation.h"

struct BspNode;

// One water particle, a circle of radius 2. Its phase is its temperature alone:
// 100 or more is steam, 0 or less has frozen into a ParticleGroup.
struct Particle {
    Vector2D position;
    Vector2D previousPosition[3];  // newest first; the renderer draws the trail from them
    Vector2D velocity;
    Vector2D previousVelocity;  // before this step's gravity
    Vector2D impulse;           // counts for one step only, then cleared
    float temperature = 0.0f;
    float speed = 0.0f;  // length of velocity + impulse at the end of the last step
    Particle* gridNext = nullptr;
    Particle* gridPrevious = nullptr;
    uint32_t cellX = 0;
    uint32_t cellY = 0;
    uint8_t inGrid = 0;
    uint8_t dying = 0;
    float killTimer = 0.0f;
    Vector2D groupDirection;     // unit vector of the place in an ice body
    float groupDistance = 0.0f;  // 0 to 1, share of the body's radius
};

// One rigid round ice body; its members are held by value and follow it.
struct ParticleGroup {
    std::list<Particle> particles;
    float radius = 2.0f;
    float targetRadius = 2.0f;
    Vector2D position;
    Vector2D velocity;
    Vector2D previousVelocity;
    Vector2D impulse;
    uint8_t touching = 0;
    float temperature = 0.0f;
    uint8_t dying = 0;
    float killTimer = 0.0f;
};

namespace ParticleManager {

constexpr float steamTemperature = 100.0f;
constexpr float freezingTemperature = 0.0f;

void initialise();
void shutdown();
// Scatters amount particles over a disc of the given radius around (x, y).
void createParticles(float x, float y, float radius, int amount);
void killParticle(Particle& particle);
void removeAllParticles();
// One step of all water; dt in seconds.
void runSimulation(float dt);

constexpr float shortestKillTime = 0.0001f;

// The water's constants from "cfg\water.cfg", as made safe on reading; the
// console changes all but the kill time.
struct Settings {
    float gravity = 0.0f;
    float roomTemperature = 0.0f;
    float heatTransferRate = 0.0f;  // 0 to 1
    float steamRiseRate = 0.0f;
    float steamScatterRate = 0.0f;
    float particleKillTime = shortestKillTime;
};

// The free particles, front to back. Members of ice bodies are not here.
std::list<Particle>& getParticles();
const Settings& getSettings();
// This step's gravity velocity change: (0, 1) turned by the camera's tilt, times gravity and dt.
Vector2D gravityStep(float dt);

// The view rectangle that bounds the simulation: corners and inward edge normals.
struct ViewRectangle {
    Vector2D corners[4];
    Vector2D normals[4];
};
ViewRectangle viewRectangle();
// How far outside the rectangle a point lies, the most over its four edges (negative inside).
float distanceOutside(const ViewRectangle& view, const Vector2D& point);

}  // namespace ParticleManager

namespace ParticleMover {

constexpr float particleRadius = 2.0f;
constexpr float stepLimit = 0.85f * particleRadius;
constexpr float longestMove = 15.0f;
constexpr float repulsionRange = 4.0f;
constexpr float coincidenceLimit = 0.00001f;
constexpr float repulsionTimeBase = 0.02f;
constexpr int gridCells = 1024;
constexpr int gridCellSize = 2;
constexpr float gridOriginOffset = 512.0f;
constexpr float clusterRadius = 40.0f;
constexpr float attractionRestDistance = 4.0f;
constexpr float attractionTimeBase = 0.75f;
constexpr float attractionLimit = 0.75f * particleRadius;
constexpr float attractionCentreLimit = 0.0001f;
constexpr float jitter = 0.1f;

void initialise();
void shutdown();

// The neighbour grid, 1024 by 1024 cells of 2 units that move with the view.
void addGridParticle(Particle& particle);
void removeGridParticle(Particle& particle);
void clearParticleGrid();
// The first particle of a cell, or null; also null for a cell outside the grid.
Particle* gridCell(int cellX, int cellY);

void moveParticle(Particle& particle, float dt);
void doParticleRepulsions(Particle& particle, Vector2D& direction, float& strength);
void particleRepulse(Particle& a, Particle& b, Vector2D& direction, float& strength, int& count);
void runParticleAttractions(float dt);

// The attraction's candidates in the order they are taken into clusters
// (water/cluster_candidates.h).
class ClusterCandidates;

// One pass over the candidates in their order: a candidate within radius of a
// particle already in the group joins its end and links later candidates.
void groupParticles(std::vector<Particle*>& group, ClusterCandidates& candidates, float radius);
// The mean of the positions; an empty group leaves centre unwritten.
void getGroupCenter(const std::vector<Particle*>& group, Vector2D& centre);

}  // namespace ParticleMover

namespace ParticleGroupMover {

void initialise();
void shutdown();
void doParticleGrouping(std::list<Particle>& particles);
void particleGroupRecursive(Particle& seed, std::list<Particle>& members, std::list<Particle>& freeIce,
                            std::list<Particle>& particles);
void runSimulation(float dt, std::list<Particle>& particles);
void moveGroup(ParticleGroup& group, float dt);
void doGroupMerging();
void killGroup(ParticleGroup& group);
void debugDraw();
void removeAllGroups();
// The ice bodies, front to back.
std::list<ParticleGroup>& getGroups();

}  // namespace ParticleGroupMover

namespace CircleCollision {

// Moves the circle's centre out of every edge it overlaps; true on any contact.
// Tests the edges of moving polygons near the view and the level's tree.
bool collisionTest(Vector2D* centre, float radius);
// The same against the level's tree alone.
bool collisionTestStatic(Vector2D* centre, float radius);
// Results of the last test: mean contact normal (zero without contact) and
// mean friction (1.0 without contact).
Vector2D getCollisionNormal();
float getCollisionFriction();
// The edges of moving polygons near the view, by value, rebuilt each step by
// the movers; only edges of collideable polygons stand in it. The swap hands
// the new list in and the old one back.
void swapCollideableNodes(std::vector<BspNode>& nodes);
void clearCollideableNodes();

}  // namespace CircleCollision
