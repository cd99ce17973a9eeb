// The running level: the main loop and the order in which everything steps
// (Game), the view that follows the water and whose tilt is gravity (Camera),
// the rules (GameRules) and the split times at check points
// (CheckPointTimesManager).
#pragma once

#include <cstdint>
#include <string>

#include "foundation/foundation.h"
#include "graphics/window/window.h"

namespace Camera {

// States of the camera. The water only moves outside the glide to the waypoint.
constexpr int movingToWaypoint = 0;
constexpr int following = 1;
constexpr int zoomingOut = 2;
constexpr int holdingZoom = 3;
constexpr int zoomingIn = 4;

constexpr float largestZoom = 2.5f;

// Reads "cfg\camera.cfg" and puts every field at its start value.
void initialise();
// States 0 to 4; anything else is ignored.
void setState(int state);
bool movingTowardsWaypoint();
// One step: follow the water, zoom, shake and, if allowed, turn by the player's input.
void doMovements(bool turningAllowed, float dt);
void doMovement(float dt);
void doZooming(float dt);
void doShaking(float dt);
void doTurning(float dt);
void zoomOut();
void shake();
// Sets the current matrix to the view: the world turned against the tilt, so
// that gravity in the world points down the screen.
void viewFrom();

Vector2D getPosition();
void setPosition(const Vector2D& position);
// Where the view is centred: position plus shake offset.
Vector2D getViewCentre();
float getTilt();
// Turns the view to a tilt in degrees at once (tools and tests; players turn it by input).
void setTilt(float degrees);
float getZoom();
int getState();

}  // namespace Camera

// The rules of winning and scoring: the level timer, the water counted into
// the level's end in one step, the finish, the scores, and the water given
// back at the last check point when none is left.
namespace GameRules {

constexpr int fullLevelParticles = 128;
constexpr double fullLevelWaterScore = 64000.0;
constexpr uint32_t bestTime = 160000;
constexpr uint32_t worstTime = 480000;
constexpr double timeScoreRange = 435000.0;
constexpr int timeScoreFloor = 1000;
constexpr float checkPointRadius = 10.0f;

// Runs with every start and reset of a level.
void initialise();
void update(float dt);
// Won and the finish animation over.
bool gameIsFinished();
// Won, whether or not the finish animation still runs.
bool levelIsWon();
// Free particles and the members of every ice body.
int getParticleCount();
int getWaterScore();
int getTimeScore();
int getTotalScore();
// Milliseconds of play.
uint32_t getLevelTime();
void setCheckPoint(float x, float y);
void incrementEndOfLevelTriggerParticleCount(uint32_t n);
void unpauseLevelTimer();
void draw();

}  // namespace GameRules

struct Trigger;

// Split times: each pass of a check point shows, in the middle of the screen,
// the level time at its first pass and afterwards the gain or loss against the
// previous pass of the same check point. The display fades in and out on a
// clock of its own, so it runs on during a pause.
namespace CheckPointTimesManager {

// Reads "cfg\checkPoints.cfg" at each level load; the comparisons start afresh.
void initialise();
void shutdown();
// A pass of the check point at this level time in milliseconds.
void recordTime(const Trigger* trigger, uint32_t time);
void draw();
// Minutes, seconds and hundredths, two digits each, joined by ":"; hours are dropped.
std::string formatTime(uint32_t milliseconds);

}  // namespace CheckPointTimesManager

// The window's listener while a level runs, and the operations of the level's
// life under one name. All state is file-level; the object itself only forwards
// window events.
class Game : public GLWindowEventListener {
public:
    // Mean frame time at which a game step is due, and the longest simulation step.
    static constexpr float stepThreshold = 0.013333334f;
    static constexpr float longestSimulationStep = 0.033333335f;
    static constexpr int frameBatch = 16;
    static constexpr int simulationTimingBatch = 32;
    static constexpr float waterStartRadius = 10.0f;
    static constexpr int waterParticles = 128;

    // The whole game; returns when it has ended.
    static void run(const std::string& levelName);
    // The end of the program after the game: the scores are saved, then the
    // services the entry started stop in reverse order.
    static void stopServices();
    static void stop();
    // Asks for a change of level at the end of the frame.
    static void map(const std::string& levelName);
    // The level starts again at the end of this frame.
    static void requestRestart();
    // The world rectangle shown at zoom 1: the shorter side of the window shows 800 or 600 units.
    static float getViewAreaX();
    static float getViewAreaY();

    // Loads a level and sets every subsystem up for it (again for each change of level).
    static void initialise(const std::string& levelName);
    // Puts the level back to its start without reading it again.
    static void resetLevel();
    static void shutdown();
    // One frame: measure, maybe step, draw, then carry out requests.
    static void gameLoop();
    static void runSimulation(float dt);
    static void soundUpdate(float dt);
    static void draw();
    // Everything draw does but presenting: the frame stays in the back buffer,
    // where screenshots and tests read it.
    static void drawFrame();
    // The level's five layers back to front, the water between the second and
    // the third, as far as the renderers have queued them for this frame.
    static void drawQueuedLayers();

    // For tools that drive frames themselves: one frame of gameLoop in which a
    // game step of exactly stepSeconds is due, whatever the frame clock says.
    static void runFrame(float stepSeconds);
    // Closes whatever menu is open and starts the level's music, as the start
    // button of the main menu does.
    static void startPlaying();

    static bool isRunning();
    static bool isPaused();
    static const std::string& getCurrentMapName();
    // Game steps taken since the program started.
    static uint64_t getGameStepCount();

    void mouseMoved(int x, int y) override;
    void mousePressed(int x, int y, int button) override;
    void mouseReleased(int x, int y, int button) override;
    void keyboardPressed(int key) override;
    void keyboardReleased(int key) override;
    void windowClosing() override;
    void windowFocusLost() override;
};
