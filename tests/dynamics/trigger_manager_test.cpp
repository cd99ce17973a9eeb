// The trigger store: the type table, the area test, targeting, the firing
// rule with its limits and delays, the active box and the console commands.

#include "console/console_state.h"
#include "dynamics/trigger_state.h"
#include "support/dynamics_fixture.h"

namespace {

constexpr float frame = 1.0f / 30.0f;

using TriggerManagerTest = DynamicsTest;

int32_t moverState(int32_t id) {
    for (const Mover& mover : MoverManager::getMovers())
        if (mover.id == id) return mover.state;
    return -100;
}

void addMover(int32_t id) {
    Mover mover;
    mover.id = id;
    mover.speed = 10.0f;
    mover.setStartPoint(Vector2D(0.0f, 0.0f));
    mover.setEndPoint(Vector2D(100.0f, 0.0f));
    MoverManager::addMover(mover);
}

}  // namespace

TEST_F(TriggerManagerTest, EdgesAndTheSharedDiagonalAreInsideWhicheverWayTheCornersRun) {
    const Vector2D a(0, 0), b(100, 0), c(100, 50), d(0, 50);
    TriggerManager::addTrigger(1, 0, 0.0f, a, b, c, d);
    TriggerManager::addTrigger(1, 0, 0.0f, d, c, b, a);
    for (const Trigger& trigger : TriggerManager::state().triggers) {
        // (60, 30) lies on the diagonal.
        for (const auto& [point, inside] : {std::pair{Vector2D(50, 25), true},
                                            {Vector2D(0, 0), true},
                                            {Vector2D(100, 20), true},
                                            {Vector2D(60, 30), true},
                                            {Vector2D(100.5f, 20), false},
                                            {Vector2D(50, -0.5f), false}})
            EXPECT_EQ(TriggerManager::pointInTrigger(point, trigger), inside) << point.x << "," << point.y;
        EXPECT_EQ(std::tuple(trigger.minX, trigger.maxX, trigger.maxY), std::tuple(0.0f, 100.0f, 50.0f));
    }
}

TEST_F(TriggerManagerTest, ANewTriggerIsTestedFirstAndUnknownTypesActAsNull) {
    addSquare(999, 0, 0, 0, 10);
    addSquare(1, 0, 0, 0, 10);
    EXPECT_EQ(TriggerManager::state().triggers.front().type, 1);
    const Trigger& unknown = TriggerManager::state().triggers.back();
    EXPECT_EQ(std::tuple(unknown.type, unknown.typeInfo->name), std::tuple(999, "Null_a"));
    addParticle(Vector2D(5, 5));
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(unknown.fireCount, 1u);
}

TEST_F(TriggerManagerTest, TargetsOfEveryKindShareAnIdAndZeroTargetsNothing) {
    ForceManager::addForce(7, 0, 0, 1, 0, 1);
    ForceManager::addForce(8, 0, 0, 1, 0, 1);
    Polygon2D polygon;
    polygon.id = 7;
    Level::addPolygon(polygon);
    addMover(7);
    LevelObject object;
    object.id = 7;
    LevelObjectsManager::addObject(object);
    std::vector<TriggerTargetKind> kinds;
    for (const auto& target : addSquare(405, 7, 0, 0, 10).targets) kinds.push_back(target.kind);
    EXPECT_EQ(
        std::tuple(kinds, addSquare(405, 0, 0, 0, 10).targets.empty(),
                   addSquare(405, 99, 0, 0, 10).targets.empty()),
        std::tuple((std::vector<TriggerTargetKind>{targetObject, targetForce, targetPolygon, targetMover}),
                   true, true));
}

TEST_F(TriggerManagerTest, AOnceTriggerFiresForTheFirstOfAHundredParticlesAndNeverAgainUntilReset) {
    addMover(3);
    const Trigger& trigger = addSquare(402, 3, 0, 0, 40);
    for (int i = 0; i < 100; ++i) addParticle(Vector2D(1.0f + static_cast<float>(i) * 0.3f, 20.0f));
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(std::tuple(trigger.fireCount, moverState(3)), std::tuple(1u, Mover::toEnd));
    MoverManager::getMovers().front().state = Mover::stopped;
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(moverState(3), Mover::stopped);
    TriggerManager::resetTriggers();
    EXPECT_EQ(trigger.fireCount, 0u);
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(moverState(3), Mover::toEnd);
}

TEST_F(TriggerManagerTest, AnAllTriggerFiresForEachParticleAndIceBodyEveryFrame) {
    const Trigger& trigger = addSquare(-1, 0, 0, 0, 40);
    for (int i = 0; i < 5; ++i) addParticle(Vector2D(5.0f + static_cast<float>(i), 5.0f));
    addParticle(Vector2D(60, 5));
    ParticleGroup group;
    group.position = Vector2D(20, 20);
    ParticleGroupMover::getGroups().push_back(group);
    TriggerManager::runTriggers(frame);
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(trigger.fireCount, 12u);
}

TEST_F(TriggerManagerTest, ADelayedOnceTriggerActsAfterItsDelayWithoutASubjectUnlessReset) {
    addMover(4);
    addSquare(402, 4, 0, 0, 20, 0.1f);
    addParticle(Vector2D(5, 5));
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(TriggerManager::state().delayedEvents.size(), 1u);
    ParticleManager::getParticles().clear();
    // A reset drops the queued event unrun.
    TriggerManager::resetTriggers();
    for (int i = 0; i < 5; ++i) TriggerManager::runTriggers(frame);
    EXPECT_EQ(moverState(4), Mover::stopped);
    addParticle(Vector2D(5, 5));
    TriggerManager::runTriggers(frame);
    ParticleManager::getParticles().clear();
    TriggerManager::runTriggers(frame);
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(moverState(4), Mover::stopped);
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(moverState(4), Mover::toEnd);
    EXPECT_TRUE(TriggerManager::state().delayedEvents.empty());
}

TEST_F(TriggerManagerTest, ADelayedAllTriggerQueuesAnEventForEachParticleAndFrameAndSubjectTypesTakeNoDelay) {
    addMover(4);
    addSquare(405, 4, 0, 0, 20, 1.0f);
    addParticle(Vector2D(5, 5));
    addParticle(Vector2D(10, 5));
    TriggerManager::runTriggers(frame);
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(TriggerManager::state().delayedEvents.size(), 4u);
    for (int32_t type : {0, 1, 2, 200, 201, 202, 203, 701, 702})
        EXPECT_EQ(addSquare(type, 0, 0, 0, 10, 2.0f).delay, 0.0f) << type;
    for (int32_t type : {3, 402, 801, 901}) EXPECT_EQ(addSquare(type, 0, 0, 0, 10, 2.0f).delay, 2.0f) << type;
    Particle& particle = addParticle(Vector2D(5, 5), 50.0f);
    TriggerManager::resetTriggers();
    TriggerManager::state().triggers.clear();
    addSquare(0, 0, 0, 0, 10, 2.0f);
    TriggerManager::runTriggers(frame);
    EXPECT_LT(particle.temperature, 50.0f);
    EXPECT_TRUE(TriggerManager::state().delayedEvents.empty());
}

TEST_F(TriggerManagerTest, WaterOutsideTheActiveBoxFiresNothingButQueuedEventsStillRun) {
    addMover(4);
    // The box reaches 0.55 times 800 = 440 units from the camera.
    const Trigger& far = addSquare(402, 4, 500, 0, 20, 0.05f);
    const Trigger& edge = addSquare(-1, 0, 430, 0, 20);
    addParticle(Vector2D(505, 5));
    addParticle(Vector2D(435, 5));
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(std::tuple(far.fireCount, edge.fireCount), std::tuple(0u, 1u));
    Camera::setPosition(Vector2D(400, 0));
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(far.fireCount, 1u);
    Camera::setPosition(Vector2D(-1000, 0));
    TriggerManager::runTriggers(frame);
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(moverState(4), Mover::toEnd);
}

TEST_F(TriggerManagerTest, TriggerCreateMakesARectangleOrPrintsItsUsage) {
    GLConsole::enterLine("TriggerCreate 1 0 0 0 100 100");
    ASSERT_EQ(TriggerManager::state().triggers.size(), 1u);
    const Trigger& trigger = TriggerManager::state().triggers.front();
    EXPECT_EQ(std::tuple(trigger.typeInfo->name, trigger.maxX, trigger.maxY),
              std::tuple("To_water_a", 100.0f, 100.0f));
    console.take();
    GLConsole::enterLine("TriggerCreate 1 0 0 0 100");
    GLConsole::enterLine("TriggerCreate 1.5 0 0 0 100 100");
    GLConsole::enterLine("TriggerCreate 1 0 0 x 100 100");
    const std::string usage =
        "\nUSAGE: TriggerCreate < id : integer > < target id : integer > < x : number > < y : number > "
        "< w : number > < h : number > ";
    const std::string text = console.take();
    EXPECT_NE(text.find(usage), std::string::npos) << text;
    EXPECT_EQ(TriggerManager::state().triggers.size(), 1u);
    GLConsole::enterLine("TriggerCreate 999 0 0 0 10 10");
    EXPECT_EQ(TriggerManager::conCmdTriggerCount(), 2);
    GLConsole::enterLine("TriggerDraw true");
    TriggerManager::debugDraw();  // no window: draws nothing and doesn't fail
}

TEST_F(TriggerManagerTest, TriggerTypeListNamesEveryTypeInAscendingOrder) {
    console.take();
    GLConsole::enterLine("TriggerTypeList");
    const std::string text = console.take();
    EXPECT_NE(text.find("Trigger types"), std::string::npos);
    const std::size_t null = text.find("\nTrigger id: -1\t\tTrigger name:   Null_a");
    const std::size_t ice = text.find("\nTrigger id: 0\t\tTrigger name:   To_ice_a");
    const std::size_t end = text.find("\nTrigger id: 901\t\tTrigger name:   Checkpoint_1");
    ASSERT_NE(null, std::string::npos) << text;
    EXPECT_LT(null, ice);
    EXPECT_LT(ice, end);
    EXPECT_LT(text.find("Mover_goto_start_loop_1"), text.find("Mover_goto_end_loop_a"));
}
