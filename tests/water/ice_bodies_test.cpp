#include "console/console_state.h"
#include "support/level_fixtures.h"
#include "water/water_fixture.h"

namespace {

class IceBodies : public WaterWorld {
protected:
    void TearDown() override {
        Level::clear();
        WaterWorld::TearDown();
    }
    static std::list<ParticleGroup>& groups() { return ParticleGroupMover::getGroups(); }
    static void freeze() { ParticleGroupMover::doParticleGrouping(ParticleManager::getParticles()); }
    ParticleGroup& bodyAt(const Vector2D& position, int members, float temperature = -10.0f) {
        for (int i = 0; i < members; ++i)
            addParticle(position + Vector2D(static_cast<float>(i), 0), {}, temperature);
        freeze();
        return groups().front();
    }
};

}  // namespace

TEST_F(IceBodies, ALoneFrozenParticleIsABodyOfOneAndTheTargetRadiusGivesTheArea) {
    addParticle(Vector2D(100, 0), Vector2D(), 20.0f);
    Particle& cold = addParticle(Vector2D(0, 0), Vector2D(3, 4), -1.0f);
    cold.impulse = Vector2D(1, 1);
    freeze();
    ASSERT_EQ(groups().size(), 1u);
    const ParticleGroup& body = groups().front();
    EXPECT_EQ(std::tuple(body.particles.size(), body.targetRadius, body.radius, body.velocity, body.impulse,
                         body.temperature, ParticleManager::getParticles().size()),
              std::tuple(1u, 2.0f, 2.0f, Vector2D(3, 4), Vector2D(1, 1), -1.0f, 1u));
    const Particle& member = body.particles.front();
    EXPECT_EQ(member.speed, 0.0f);
    EXPECT_NEAR(length(member.groupDirection), 1.0f, 1e-5);
    // The target radius gives the area of the members.
    ParticleGroupMover::shutdown();
    ParticleManager::getParticles().clear();
    EXPECT_EQ(bodyAt(Vector2D(0, 0), 4).targetRadius, 4.0f);
    ParticleGroupMover::shutdown();
    EXPECT_FLOAT_EQ(bodyAt(Vector2D(0, 0), 128).targetRadius, 22.627417f);
}

TEST_F(IceBodies, FreezingSpreadsThroughGapsOfTwelveToWaterAndSteam) {
    addParticle(Vector2D(0, 0), {}, -5.0f);
    addParticle(Vector2D(12, 0), {}, 20.0f);
    addParticle(Vector2D(24, 0), {}, 150.0f);
    addParticle(Vector2D(36.5f, 0), {}, 20.0f);  // too far from the last link
    freeze();
    ASSERT_EQ(groups().size(), 1u);
    EXPECT_EQ(groups().front().particles.size(), 3u);
    ASSERT_EQ(ParticleManager::getParticles().size(), 1u);
    EXPECT_EQ(ParticleManager::getParticles().front().position.x, 36.5f);
}

TEST_F(IceBodies, ABodyAtZeroStaysAndAWarmOneMelts) {
    ParticleGroup& body = bodyAt(Vector2D(0, 0), 3, 0.0f);
    body.velocity = Vector2D(0, 0);
    ParticleGroupMover::runSimulation(0.01f, ParticleManager::getParticles());
    ASSERT_EQ(groups().size(), 1u);
    groups().front().temperature = 0.5f;
    groups().front().velocity = Vector2D(0, 10);
    ParticleGroupMover::runSimulation(0.01f, ParticleManager::getParticles());
    EXPECT_TRUE(groups().empty());
    ASSERT_EQ(ParticleManager::getParticles().size(), 3u);
    for (const Particle& particle : ParticleManager::getParticles()) {
        EXPECT_EQ(std::tuple(particle.velocity, particle.temperature, particle.speed, particle.inGrid,
                             particle.previousPosition[2]),
                  std::tuple(Vector2D(0, 10), 0.5f, 10.0f, 0, particle.position));
    }
}

TEST_F(IceBodies, ALongMoveIsTakenWholeAndMembersFollow) {
    useSettings("particleGroupInterpolation = 1\ngroupExpandSpeed = 1\n");
    ParticleGroup& body = bodyAt(Vector2D(-50, 0), 1);
    body.velocity = Vector2D(100, 0);
    const Vector2D memberBefore = body.particles.front().position;
    ParticleGroupMover::runSimulation(1.0f, ParticleManager::getParticles());
    ASSERT_EQ(groups().size(), 1u);
    EXPECT_NEAR(groups().front().position.x, 50.0f, 1e-3);
    EXPECT_NEAR(groups().front().particles.front().position.x - memberBefore.x, 100.0f, 1e-3);
    EXPECT_EQ(groups().front().touching, 0);
}

TEST_F(IceBodies, MergingGivesTheSmallerBodysMembersToTheOther) {
    ParticleGroup& first = bodyAt(Vector2D(0, 0), 1);
    ParticleGroup& second = bodyAt(Vector2D(7, 0), 1);  // front of the list now
    first.targetRadius = second.targetRadius = 3.0f;
    ParticleGroupMover::doGroupMerging();
    // second stands before first in the list, so it gives on the tie.
    EXPECT_EQ(std::tuple(second.particles.empty(), first.particles.size()), std::tuple(true, 2u));
    EXPECT_FLOAT_EQ(first.targetRadius, 2.0f * std::sqrt(2.0f));
    EXPECT_EQ(groups().size(), 2u);
    ParticleGroupMover::runSimulation(0.01f, ParticleManager::getParticles());
    EXPECT_EQ(groups().size(), 1u);  // the empty body goes, cold as it is
    EXPECT_EQ(ParticleManager::getParticles().size(), 0u);
}

TEST_F(IceBodies, KilledBodiesFadeOnceAndBodiesFarOutsideTheViewGo) {
    useSettings("particleKillTime = 0.5\n");
    ParticleGroup& body = bodyAt(Vector2D(0, 0), 2);
    ParticleGroupMover::killGroup(body);
    ParticleGroupMover::runSimulation(0.3f, ParticleManager::getParticles());
    ParticleGroupMover::killGroup(groups().front());  // no restart
    EXPECT_NEAR(groups().front().killTimer, 0.2f, 1e-6);
    EXPECT_EQ(groups().front().particles.front().dying, 1);
    ParticleGroupMover::runSimulation(0.3f, ParticleManager::getParticles());
    EXPECT_TRUE(groups().empty());
    bodyAt(Vector2D(400 + 128 + 3, 0), 1);
    ParticleGroupMover::runSimulation(0.01f, ParticleManager::getParticles());
    EXPECT_TRUE(groups().empty());
}

TEST_F(IceBodies, IceSlidesAlongAWallWithoutFriction) {
    folder.write("maps/floor.rill",
                 bytesFromText("polygon surface sand\n-200 10\n200 10\n200 50\n-200 50\nend\n"));
    ASSERT_TRUE(Level::load("maps\\floor.rill"));
    ParticleGroup& body = bodyAt(Vector2D(0, 7.5f), 1);
    body.velocity = Vector2D(20, 30);
    ParticleGroupMover::moveGroup(body, 0.05f);
    EXPECT_EQ(body.touching, 1);
    EXPECT_LT(distance(body.velocity, Vector2D(20, 0)), 1e-4f);
    EXPECT_NEAR(body.position.y, 8.0f, 1e-4);
}
