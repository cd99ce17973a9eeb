// Movers: the five states, what rides on them, the edges placed near the view,
// and the push that carries water in strides that cannot jump a particle.

#include "console/console.h"
#include "dynamics/mover_state.h"
#include "support/dynamics_fixture.h"
#include "water/water_state.h"

namespace {

constexpr float frame = 1.0f / 30.0f;

Mover makeMover(int32_t id, const Vector2D& start, const Vector2D& end, float speed) {
    Mover mover;
    mover.id = id;
    mover.speed = speed;
    mover.setStartPoint(start);
    mover.setEndPoint(end);
    return mover;
}

class MoverTest : public DynamicsTest {
protected:
    // A square block of the given id with its top left at (x, y).
    static Polygon2D& addBlock(int32_t id, float x, float y, float size, bool collideable = true) {
        Polygon2D polygon;
        polygon.id = id;
        polygon.collideable = collideable;
        polygon.addPoints(
            {Vector2D(x, y), Vector2D(x + size, y), Vector2D(x + size, y + size), Vector2D(x, y + size)});
        Level::addPolygon(polygon);
        return Level::getPolygons().back();
    }
};

}  // namespace

TEST_F(MoverTest, APathOfNoLengthEndsItsMoveInTheFirstStep) {
    Mover mover = makeMover(1, Vector2D(5, 5), Vector2D(5, 5), 10.0f);
    EXPECT_EQ(std::tuple(mover.length, mover.direction), std::tuple(0.0f, Vector2D()));
    for (int32_t state : {Mover::toEnd, Mover::toStart}) {
        mover.state = state;
        mover.run(frame);
        EXPECT_EQ(std::tuple(mover.state, mover.position), std::tuple(Mover::stopped, 0.0f));
    }
    // Standing on its end is not passing it: a mover that does not move goes on.
    mover.speed = 0.0f;
    mover.state = Mover::toEnd;
    mover.run(0.0f);
    EXPECT_EQ(mover.state, Mover::toEnd);
}

TEST_F(MoverTest, PolygonsAndObjectsWithTheMoversIdRideOnItAndThingsOnTwoMoversGetBoth) {
    Polygon2D& solid = addBlock(3, 0, 0, 20);
    Polygon2D& scenery = addBlock(3, 50, 0, 20, false);
    addBlock(4, 100, 0, 20);
    LevelObject object;
    object.id = 3;
    object.position = Vector2D(7, 7);
    LevelObjectsManager::addObject(object);
    MoverManager::addMover(makeMover(3, Vector2D(0, 0), Vector2D(100, 0), 30.0f));
    MoverManager::addMover(makeMover(3, Vector2D(0, 0), Vector2D(0, 100), 60.0f));
    EXPECT_EQ(MoverManager::conCmdMoverCount(), 2);
    // Each polygon is kept once among the moving edges, and only a collideable one.
    ASSERT_EQ(MoverManager::state().dynamicPolygons.size(), 1u);
    EXPECT_EQ(MoverManager::state().dynamicPolygons.front().polygon, &solid);
    EXPECT_EQ(MoverManager::state().dynamicPolygons.front().edges.size(), 4u);
    for (Mover& mover : MoverManager::getMovers()) mover.state = Mover::toEnd;
    MoverManager::runMovers(1.0f);
    EXPECT_EQ(std::tuple(solid.offset, scenery.offset, Level::getPolygons().back().offset),
              std::tuple(Vector2D(30, 60), Vector2D(30, 60), Vector2D()));
    std::size_t riding = 0;
    for (auto* list : {&LevelObjectsManager::getStaticObjects(), &LevelObjectsManager::getAnimatedObjects()})
        for (const LevelObject& o : *list)
            riding += o.offset == Vector2D(30, 60) && o.position == Vector2D(7, 7);
    EXPECT_EQ(riding, 1u);
    LevelObjectsManager::resetObjects();
    Level::reset();
    for (const Mover& mover : MoverManager::getMovers()) EXPECT_EQ(mover.state, Mover::stopped);
    EXPECT_EQ(solid.offset, Vector2D());
}

TEST_F(MoverTest, TheEdgesNearTheViewArePlacedAtTheirPolygonsOffsetEachStep) {
    Polygon2D& near = addBlock(1, 0, 0, 20);
    addBlock(2, 3000, 0, 20);
    MoverManager::addMover(makeMover(1, Vector2D(), Vector2D(100, 0), 10.0f));
    MoverManager::addMover(makeMover(2, Vector2D(), Vector2D(100, 0), 10.0f));
    near.offset = Vector2D(5, 0);
    MoverManager::updateCollideableNodes();
    std::vector<BspNode>& nodes = CircleCollision::state().collideableNodes;
    ASSERT_EQ(nodes.size(), 4u);
    float smallestX = 1e9f;
    for (const BspNode& node : nodes) {
        smallestX = std::min({smallestX, node.start.x, node.end.x});
        EXPECT_EQ(node.polygon, &near);
    }
    EXPECT_EQ(smallestX, 5.0f);
    Level::setPolygonCollideable(&near, false);
    MoverManager::updateCollideableNodes();
    EXPECT_TRUE(nodes.empty());
}

// Water carried ahead of a polygon that moves more than a stride in a step lies
// inside the polygon's final place after the first stride, and dies there.
TEST_F(MoverTest, APushOfFiveAndAHalfUnitsCarriesTheWaterInFourStrides) {
    addBlock(1, 0, 0, 20);
    MoverManager::addMover(makeMover(1, Vector2D(), Vector2D(100, 0), 5.5f / frame));
    Particle& ahead = addParticle(Vector2D(22, 10));
    Particle& neighbour = addParticle(Vector2D(27, 10));
    Particle& aside = addParticle(Vector2D(10, 40));
    MoverManager::getMovers().front().state = Mover::toEnd;
    MoverManager::runMovers(frame);
    EXPECT_NEAR(ahead.position.x, 27.5f, 1e-4f);
    EXPECT_NEAR(ahead.impulse.x, 4.0f * 5.5f / frame, 0.01f);
    // The neighbour was drawn in by the touched particle and moved from then on.
    EXPECT_GT(neighbour.position.x, 27.0f);
    EXPECT_EQ(std::tuple(aside.position, ahead.dying != 0, Level::getPolygons().front().previousOffset),
              std::tuple(Vector2D(10, 40), true, Level::getPolygons().front().offset));
}

// A block of 20 at the origin pushed right by the stride each step, and one particle in its way.
TEST_F(MoverTest, WaterAheadIsCarriedKilledInsideAndNeverJumped) {
    const std::tuple<const char*, float, bool, Vector2D, int, float, float, bool> cases[] = {
        {"a stride under the push limit carries it alive", 1.5f, true, {21, 10}, 10, 35, 1e9f, false},
        {"a fast polygon can't jump over it but kills it", 300, true, {100, 10}, 1, 300, 1e9f, true},
        {"carried inside the polygon it dies", 3, true, {1, 10}, 1, -1e9f, 1e9f, true},
        {"a polygon that isn't collideable pushes nothing", 5, false, {22, 10}, 1, 22, 22, false}};
    for (const auto& [what, stride, collideable, start, steps, fromX, toX, dying] : cases) {
        Level::clear();
        MoverManager::initialise();
        ParticleManager::getParticles().clear();
        SCOPED_TRACE(what);
        Polygon2D& block = addBlock(1, 0, 0, 20, collideable);
        MoverManager::addMover(makeMover(1, Vector2D(), Vector2D(500, 0), stride / frame));
        Particle& particle = addParticle(start);
        MoverManager::getMovers().front().state = Mover::toEnd;
        for (int step = 0; step < steps; ++step) MoverManager::runMovers(frame);
        EXPECT_GE(particle.position.x, fromX);
        EXPECT_LE(particle.position.x, toX);
        EXPECT_EQ(particle.dying != 0, dying);
        EXPECT_NEAR(block.offset.x, stride * static_cast<float>(steps), 1e-3f);
    }
}

TEST_F(MoverTest, AParticleTouchedByOneMovingPolygonIsNotPushedByASecond) {
    addBlock(1, 0, 0, 20);
    addBlock(1, 0, 20, 20);
    MoverManager::addMover(makeMover(1, Vector2D(), Vector2D(100, 0), 5.5f / frame));
    Particle& particle = addParticle(Vector2D(22, 20));
    MoverManager::getMovers().front().state = Mover::toEnd;
    MoverManager::runMovers(frame);
    EXPECT_NEAR(particle.position.x, 27.5f, 1e-4f);
    EXPECT_NEAR(particle.impulse.x, 4.0f * 5.5f / frame, 0.01f);
}

TEST_F(MoverTest, CommandsAndMessagesAndForceCreateAddsAForceWithoutScalingOrPrintsItsUsage) {
    EXPECT_NE(console.text().find("\nInitialising down mover manager.."), std::string::npos);
    EXPECT_NE(console.text().find("\nInitialising force manager."), std::string::npos);
    for (const char* line : {"MoverDraw true", "DynamicNodeDraw true"}) GLConsole::enterLine(line);
    EXPECT_TRUE(MoverManager::state().moverDraw);
    MoverManager::debugDraw();
    MoverManager::resetMovers();
    EXPECT_FALSE(MoverManager::state().moverDraw);
    EXPECT_FALSE(MoverManager::state().dynamicNodeDraw);
    GLConsole::enterLine("ForceCreate 3 10 20 0 0 2.5");
    ASSERT_EQ(ForceManager::getForces().size(), 1u);
    const Force& force = ForceManager::getForces().front();
    EXPECT_EQ(std::tuple(force.position, force.direction, force.strength),
              std::tuple(Vector2D(10, 20), Vector2D(1, 0), 2.5f));
    console.take();
    GLConsole::enterLine("ForceCreate 3 10 20 0 0");
    GLConsole::enterLine("ForceCreate 3.5 10 20 0 0 1");
    const std::string usage =
        "\nUSAGE: ForceCreate  < id : integer > < x : number > < y : number > < dir_x : number > "
        "< dir_y : number > < strenght : number >";
    EXPECT_NE(console.take().find(usage), std::string::npos);
    EXPECT_EQ(ForceManager::conCmdForceCount(), 1);
    // A trigger added before the force doesn't find it.
    const Trigger& before = addSquare(200, 8, 0, 0, 10);
    GLConsole::enterLine("ForceCreate 8 0 0 1 0 1");
    EXPECT_TRUE(before.targets.empty());
    EXPECT_EQ(addSquare(200, 8, 0, 0, 10).targets.size(), 1u);
    MoverManager::shutdown();
    ForceManager::shutdown();
    EXPECT_NE(console.text().find("\nShutting down mover manager.."), std::string::npos);
    EXPECT_NE(console.text().find("\nShutting down force manager."), std::string::npos);
}

TEST_F(MoverTest, AnAbsurdlyFastPolygonEndsItsPushInBoundedTime) {
    const float distances[] = {3.0e7f, 3.0e9f, 3.0e38f};
    std::vector<Particle*> carried;
    for (int32_t i = 0; i < 3; ++i) {
        const float y = 100.0f * static_cast<float>(i);
        addBlock(i + 1, 0, y, 20).previousOffset = Vector2D(distances[i], 0);
        Mover mover = makeMover(i + 1, Vector2D(), Vector2D(distances[i], 0), distances[i] / frame);
        mover.position = mover.length;
        mover.state = Mover::toStart;
        MoverManager::addMover(mover);
        carried.push_back(&addParticle(Vector2D(30, y + 10)));
    }
    MoverManager::runMovers(frame);  // each comes home to the view in one step
    for (const Polygon2D& block : Level::getPolygons()) EXPECT_EQ(block.offset, Vector2D());
    for (const Particle* particle : carried) EXPECT_TRUE(std::isfinite(particle->position.x));
}
