// The trigger actions: state changes by temperature, forces, killing, the
// level's end, check points and the actions on targets.

#include "dynamics/trigger_state.h"
#include "game/game_state.h"
#include "support/dynamics_fixture.h"

namespace {

constexpr float frame = 1.0f / 30.0f;

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

TEST_F(TriggerFunctionsTest, ANegativeSpeedInTheFileActsAsPositiveAndAMissingOneStopsStateTriggers) {
    EXPECT_EQ(Triggers_getTemperatureChangeSpeed(), 1000.0f);
    folder.write("cfg/water.cfg",
                 "triggerTemperatureChangeAmountIce = 100\ntriggerTemperatureChangeAmountSteam = 200\n");
    Triggers_HeatSources_LoadSettings();
    Particle& particle = addParticle(Vector2D(), 50.0f);
    run(trigger(0), particle);
    run(trigger(2), particle);
    EXPECT_EQ(particle.temperature, 50.0f);
}

// Ice (0), water (1) and steam (2) triggers move a temperature by 1000 a second
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
            EXPECT_LE(std::fabs(temperature - start), std::fabs(expected - start) + 0.1f);
        }
        EXPECT_NEAR(temperature, expected, 0.1f);
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
