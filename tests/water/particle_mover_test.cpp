#include "water_fixture.h"

namespace {

using ParticleMoverTest = WaterWorld;

TEST_F(ParticleMoverTest, GridReachesFrom512BelowTheViewCentreTo1535Above) {
    Camera::setPosition(Vector2D(100, -50));
    const std::tuple<Vector2D, bool, uint32_t, uint32_t> cases[] = {
        {{100, -50}, true, 256, 256},     {{-411, -561}, true, 0, 0},     // truncation towards zero
        {{-413.5f, -50}, true, 0, 256},   {{-414.5f, -50}, false, 0, 0},  // -2.5 truncates to -2: outside
        {{1635, 1485}, true, 1023, 1023}, {{1637, -50}, false, 0, 0},    {{100, 1487}, false, 0, 0},
    };
    for (const auto& [position, inGrid, cellX, cellY] : cases) {
        Particle particle;
        particle.position = position;
        ParticleMover::addGridParticle(particle);
        EXPECT_EQ(particle.inGrid, inGrid ? 1 : 0) << position.x << "," << position.y;
        if (inGrid) {
            EXPECT_EQ(std::tuple(particle.cellX, particle.cellY, ParticleMover::gridCell(cellX, cellY)),
                      std::tuple(cellX, cellY, &particle));
        }
        ParticleMover::removeGridParticle(particle);
        EXPECT_EQ(particle.inGrid, 0);
    }
}

TEST_F(ParticleMoverTest, CellsAreListsThatUnlinkFromAnyPlaceAndClearingForgetsThem) {
    Particle a, b, c;
    for (Particle* particle : {&a, &b, &c}) ParticleMover::addGridParticle(*particle);
    ParticleMover::addGridParticle(c);  // already in: no second link
    ASSERT_EQ(ParticleMover::gridCell(256, 256), &c);
    EXPECT_EQ(std::tuple(c.gridNext, b.gridNext, a.gridNext), std::tuple(&b, &a, nullptr));
    ParticleMover::removeGridParticle(b);
    EXPECT_EQ(std::tuple(c.gridNext, a.gridPrevious), std::tuple(&a, &c));
    ParticleMover::removeGridParticle(c);
    EXPECT_EQ(std::tuple(ParticleMover::gridCell(256, 256), a.gridPrevious), std::tuple(&a, nullptr));
    ParticleMover::removeGridParticle(a);
    EXPECT_EQ(ParticleMover::gridCell(256, 256), nullptr);
    a.position = Vector2D(5000, 10);  // outside the grid: the last cell is kept
    ParticleMover::addGridParticle(a);
    EXPECT_EQ(std::tuple(a.inGrid, a.cellX), std::tuple(0, 256u));
    Particle& listed = addParticle(Vector2D(1, 1));
    ParticleMover::addGridParticle(listed);
    ParticleMover::clearParticleGrid();
    EXPECT_EQ(std::tuple(listed.inGrid, ParticleMover::gridCell(256, 256)), std::tuple(0, nullptr));
}

TEST_F(ParticleMoverTest, AShortMoveIsOneStepAndALongOneStopsAt15UnitsWithItsVelocityKept) {
    Particle particle;
    particle.velocity = Vector2D(0, 1000);
    ParticleMover::moveParticle(particle, 0.1f);
    EXPECT_NEAR(particle.position.y, 15.0f, 1e-4f);
    EXPECT_EQ(std::tuple(particle.position.x, particle.velocity), std::tuple(0.0f, Vector2D(0, 1000)));
    Particle slow;
    slow.velocity = Vector2D(30, -40);
    slow.impulse = Vector2D(10, 0);
    ParticleMover::moveParticle(slow, 0.02f);
    EXPECT_LT(distance(slow.position, Vector2D(0.8f, -0.8f)), 1e-6f);
}

TEST_F(ParticleMoverTest, ARestingParticleIsNotPushedButAMovingNeighbourIs) {
    Particle& resting = addParticle(Vector2D(0, 0));
    Particle& moving = addParticle(Vector2D(2, 0), Vector2D(0.001f, 0), 40.0f);
    for (Particle* particle : {&resting, &moving}) ParticleMover::addGridParticle(*particle);
    ParticleMover::moveParticle(resting, 0.02f);
    EXPECT_EQ(std::tuple(resting.position, resting.temperature), std::tuple(Vector2D(), 20.0f));

    ParticleMover::moveParticle(moving, 0.02f);
    // Pushed by the overlap, 4 - 2, capped at 1.7, and mixed with its neighbour.
    EXPECT_NEAR(moving.position.x, 3.7f, 1e-4f);
    EXPECT_EQ(resting.velocity, moving.velocity);
    EXPECT_FLOAT_EQ(resting.velocity.x, 0.0005f);
    EXPECT_EQ(std::tuple(resting.temperature, moving.temperature), std::tuple(30.0f, 30.0f));
}

TEST_F(ParticleMoverTest, RepulsionIsCappedAndScaledByTheStep) {
    // Overlap 3.5 is capped at 1.7; at 100 steps a second the push is halved first.
    const std::tuple<float, float, float> cases[] = {
        {0.5f, 0.02f, 1.7f}, {2.0f, 0.01f, 1.0f}, {0.5f, 0.05f, 1.7f}, {3.0f, 0.04f, 1.0f}};
    for (const auto& [gap, dt, push] : cases) {
        useSettings("");
        Particle& still = addParticle(Vector2D(0, 0));
        Particle& moving = addParticle(Vector2D(gap, 0), Vector2D(0.0001f, 0));
        for (Particle* particle : {&still, &moving}) ParticleMover::addGridParticle(*particle);
        ParticleMover::moveParticle(moving, dt);
        EXPECT_NEAR(moving.position.x, gap + push, 1e-3f) << gap << " " << dt;
    }
}

TEST_F(ParticleMoverTest, CoincidingParticlesMixButDoNotPush) {
    Particle& a = addParticle(Vector2D(0, 0), Vector2D(), 0.0f);
    Particle& b = addParticle(Vector2D(0, 0), Vector2D(), 50.0f);
    b.impulse = Vector2D(0, 2);
    ParticleMover::addGridParticle(a);
    ParticleMover::addGridParticle(b);
    ParticleMover::moveParticle(b, 0.0f);
    EXPECT_EQ(std::tuple(b.position, a.position, a.temperature, a.impulse),
              std::tuple(Vector2D(), Vector2D(), 25.0f, Vector2D(0, 1)));
}

TEST_F(ParticleMoverTest, RepulsionAveragesItsNeighbours) {
    Particle& particle = addParticle(Vector2D(1, 1));
    Particle& left = addParticle(Vector2D(-1, 1));
    Particle& below = addParticle(Vector2D(1, 0));
    for (Particle* p : {&particle, &left, &below}) ParticleMover::addGridParticle(*p);
    Vector2D direction;
    float strength = 0.0f;
    ParticleMover::doParticleRepulsions(particle, direction, strength);
    EXPECT_FLOAT_EQ(strength, (2.0f + 3.0f) / 2.0f);
    EXPECT_LT(distance(direction, Vector2D(0.70710677f, 0.70710677f)), 1e-6f);
}

TEST_F(ParticleMoverTest, TheGroupCentreIsTheMeanAndAnEmptyGroupWritesNothing) {
    Particle a, b;
    a.position = Vector2D(2, 4);
    b.position = Vector2D(4, 8);
    Vector2D centre(99, 99);
    ParticleMover::getGroupCenter({}, centre);
    EXPECT_EQ(centre, Vector2D(99, 99));
    ParticleMover::getGroupCenter({&a, &b}, centre);
    EXPECT_EQ(centre, Vector2D(3, 6));
}

}  // namespace
