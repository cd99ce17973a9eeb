// Triggers. The store: the type table, the area test, targeting, the firing
// rule with its limits and delays, the active box and the console commands.
// The actions: state changes by temperature, forces, killing, the level's end,
// check points and the actions on targets.

#include "console/console_state.h"
#include "dynamics/trigger_state.h"
#include "game/game_state.h"
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
    for (int i = 0; i < 2; ++i) TriggerManager::runTriggers(frame);
    EXPECT_EQ(moverState(4), Mover::stopped);
    TriggerManager::runTriggers(frame);
    EXPECT_EQ(moverState(4), Mover::toEnd);
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
    for (int i = 0; i < 2; ++i) TriggerManager::runTriggers(frame);
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
    TriggerManager::initialise();
    EXPECT_FALSE(TriggerManager::state().drawTriggers);
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

namespace {

class TriggerFunctionsTest : public DynamicsTest {
protected:
    void SetUp() override {
        DynamicsTest::SetUp();
        folder.write("cfg/water.cfg",
                     "triggerTemperatureChangeSpeed = -1000\ntriggerTemperatureChangeAmountIce = 100\n"
                     "triggerTemperatureChangeAmountSteam = 200\n");
        Triggers_HeatSources_LoadSettings();
    }

    Trigger& trigger(int32_t type, int32_t targetId = 0) { return addSquare(type, targetId, -50, -50, 100); }
    static void run(Trigger& t, Particle& p, float dt = frame) {
        t.typeInfo->function(t, &p, subjectParticle, dt);
    }
    static void run(Trigger& t, ParticleGroup& g, float dt = frame) {
        t.typeInfo->function(t, &g, subjectGroup, dt);
    }
};

}  // namespace

TEST_F(TriggerFunctionsTest, AMissingSpeedInTheFileStopsStateTriggers) {
    folder.write("cfg/water.cfg",
                 "triggerTemperatureChangeAmountIce = 100\ntriggerTemperatureChangeAmountSteam = 200\n");
    Triggers_HeatSources_LoadSettings();
    Particle& particle = addParticle(Vector2D(), 50.0f);
    run(trigger(0), particle);
    run(trigger(2), particle);
    EXPECT_EQ(particle.temperature, 50.0f);
}

// Ice (0), water (1) and steam (2) triggers move a temperature by 1000 a second
// (the file says -1000: a negative speed counts as positive)
// towards their aim without passing it: ice stops at -100, water settles at 50
// from either side and steam stops at 200, while bodies of ice warm without limit.
TEST_F(TriggerFunctionsTest, StateTriggersMoveTheTemperatureTowardsTheirAimWithoutPassingIt) {
    const std::tuple<int32_t, bool, float, int, float> cases[] = {
        {0, false, 50, 4, -83.333f}, {0, false, 50, 6, -100},  {0, true, -90, 1, -100},
        {2, false, -100, 10, 200},   {2, true, -100, 15, 400}, {1, false, 200, 10, 50},
        {1, false, -100, 10, 50},    {1, true, -50, 30, 950}};
    for (const auto& [type, body, start, frames, expected] : cases) {
        SCOPED_TRACE(testing::Message() << "type " << type << (body ? ", a body" : "") << " from " << start);
        Trigger& state = trigger(type);
        Particle& particle = addParticle(Vector2D(), start);
        ParticleGroup group;
        group.temperature = start;
        const float& temperature = body ? group.temperature : particle.temperature;
        for (int i = 0; i < frames; ++i) {
            body ? run(state, group) : run(state, particle);
            EXPECT_LE(std::fabs(temperature - start), std::fabs(expected - start) + 1e-3f);
        }
        EXPECT_NEAR(temperature, expected, 1e-3f);
    }
}

TEST_F(TriggerFunctionsTest, ForcesActOnlyWhileEnabledAndInTheirListOrder) {
    ForceManager::addForce(5, 0, 0, 0, 0, 30.0f);  // (0, 0) becomes (1, 0)
    ForceManager::addForce(5, 0, 0, 0, -2, 60.0f);
    Trigger& directional = trigger(200, 5);
    Trigger& instant = trigger(201, 5);
    Particle& particle = addParticle(Vector2D());
    particle.velocity = Vector2D(1, 1);
    run(directional, particle, 0.5f);
    EXPECT_EQ(particle.velocity, Vector2D(16, -29));
    run(instant, particle);
    EXPECT_EQ(particle.velocity, Vector2D(0, -60));
    for (Force& force : ForceManager::getForces()) force.enabled = false;
    particle.velocity = Vector2D(3, 4);
    run(instant, particle);
    run(directional, particle);
    EXPECT_EQ(std::tuple(particle.velocity, ForceManager::conCmdForceCount()), std::tuple(Vector2D(3, 4), 2));
}

TEST_F(TriggerFunctionsTest, MultiDirectionalForcesPushAndPullAboutTheForceAndSparePointsOnIt) {
    ForceManager::addForce(6, 10, 0, 1, 0, 100.0f);
    Trigger& push = trigger(203, 6);
    Trigger& pull = trigger(202, 6);
    Particle& particle = addParticle(Vector2D(13, 0));
    run(push, particle, 0.1f);
    EXPECT_NEAR(particle.velocity.x, std::sqrt(1.0f / 4.0f) * 0.1f * 100.0f, 1e-5f);
    EXPECT_EQ(particle.velocity.y, 0.0f);
    run(pull, particle, 0.1f);
    EXPECT_NEAR(particle.velocity.x, 0.0f, 1e-6f);
    Particle& centred = addParticle(Vector2D(10, 0));
    run(push, centred, 0.1f);
    EXPECT_EQ(centred.velocity, Vector2D());
    ParticleGroup group;
    group.position = Vector2D(10, -3);
    run(pull, group, 0.1f);
    EXPECT_GT(group.velocity.y, 0.0f);
}

TEST_F(TriggerFunctionsTest, KillKillsParticlesAndBodiesAndRandomKillSomeOfTheWaterInASecond) {
    Trigger& random = trigger(702);
    for (int i = 0; i < 1000; ++i) addParticle(Vector2D());
    for (Particle& particle : ParticleManager::getParticles()) run(random, particle, 1.0f);
    int dead = 0;
    for (const Particle& particle : ParticleManager::getParticles()) dead += particle.dying;
    EXPECT_GT(dead, 100);
    EXPECT_LT(dead, 900);
    // No time takes none; two seconds take all.
    Particle& lucky = addParticle(Vector2D());
    run(random, lucky, 0.0f);
    EXPECT_FALSE(lucky.dying);
    run(random, lucky, 2.0f);
    EXPECT_TRUE(lucky.dying);
    Particle& particle = addParticle(Vector2D());
    ParticleGroup group;
    run(trigger(701), particle);
    run(trigger(701), group);
    EXPECT_TRUE(particle.dying);
    EXPECT_TRUE(group.dying);
}

TEST_F(TriggerFunctionsTest, MoverTriggersSetTheStateOfTheirMoversAndLeavePolygonsAlone) {
    Mover mover;
    mover.id = 9;
    mover.setEndPoint(Vector2D(10, 0));
    MoverManager::addMover(mover);
    Polygon2D polygon;
    polygon.id = 9;
    Level::addPolygon(polygon);
    Mover& added = MoverManager::getMovers().front();
    Particle& particle = addParticle(Vector2D());
    const std::pair<int32_t, int32_t> cases[] = {{402, 1}, {401, 2}, {407, 3}, {410, 4}, {403, 0}, {405, 1}};
    for (const auto& [type, state] : cases) {
        run(trigger(type, 9), particle);
        EXPECT_EQ(added.state, state) << type;
    }
    added.state = Mover::loopToStart;
    added.position = 4.0f;
    run(trigger(403, 9), particle);
    EXPECT_EQ(std::tuple(added.state, added.position, Level::getPolygons().front().present),
              std::tuple(Mover::stopped, 4.0f, true));
}

TEST_F(TriggerFunctionsTest, EntityAndAnimationTriggersActOnPolygonsObjectsAndForces) {
    Polygon2D polygon;
    polygon.id = 4;
    Level::addPolygon(polygon);
    LevelObject object;
    object.id = 4;
    LevelObjectsManager::addObject(object);
    ForceManager::addForce(4, 0, 0, 1, 0, 1);
    Particle& particle = addParticle(Vector2D());
    run(trigger(300, 4), particle);
    const Polygon2D& stored = Level::getPolygons().front();
    EXPECT_EQ(std::tuple(stored.present, stored.collideable, ForceManager::getForces().front().enabled),
              std::tuple(false, false, false));
    std::size_t hidden = 0;
    for (const auto* list :
         {&LevelObjectsManager::getStaticObjects(), &LevelObjectsManager::getAnimatedObjects()})
        for (const LevelObject& o : *list) hidden += !o.visible;
    EXPECT_EQ(hidden, 1u);
    run(trigger(301, 4), particle);
    EXPECT_EQ(std::tuple(stored.present, stored.collideable, ForceManager::getForces().front().enabled),
              std::tuple(true, true, true));
    // Animation triggers start and stop their objects.
    object.id = 2;
    object.repeatCount = 3;
    LevelObjectsManager::getStaticObjects().clear();
    LevelObjectsManager::getAnimatedObjects().clear();
    LevelObjectsManager::addObject(object);
    auto animated = [] {
        auto& list = LevelObjectsManager::getStaticObjects();
        return list.empty() ? &LevelObjectsManager::getAnimatedObjects().front() : &list.front();
    };
    run(trigger(3, 2), particle);
    EXPECT_EQ(std::tuple(animated()->stopped, animated()->repeatCount), std::tuple(false, 0u));
    run(trigger(5, 2), particle);
    EXPECT_TRUE(animated()->stopped);
    run(trigger(4, 2), particle);
    EXPECT_EQ(std::tuple(animated()->stopped, animated()->repeatCount), std::tuple(false, 1u));
}

TEST_F(TriggerFunctionsTest, TheCheckPointIsTheMeanOfTheSixTriangleCorners) {
    GameRules::initialise();
    for (int i = 0; i < 50; ++i) addParticle(Vector2D());
    Trigger& square = addSquare(901, 0, 100, 200, 40);
    square.typeInfo->function(square, nullptr, subjectParticle, frame);
    EXPECT_EQ(GameRules::state().checkPoint, Vector2D(120, 220));
    EXPECT_EQ(GameRules::state().checkPointCount, 50u);
    // The two corners the triangles share weigh double.
    TriggerManager::addTrigger(901, 0, 0.0f, Vector2D(0, 0), Vector2D(60, 0), Vector2D(60, 60),
                               Vector2D(0, 30));
    Trigger& kite = TriggerManager::state().triggers.front();
    kite.typeInfo->function(kite, nullptr, subjectParticle, frame);
    EXPECT_EQ(GameRules::state().checkPoint, Vector2D(30, 25));
}
