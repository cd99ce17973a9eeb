// The attraction pass gathers clusters through a spatial index. These tests hold
// it to the plain pass over the candidate list: the same clusters, members in
// the same order, the same random draws and so the same moves.

#include <deque>

#include "water/cluster_candidates.h"
#include "water_fixture.h"

namespace {

using Clusters = std::vector<std::vector<Particle*>>;

// Every cluster's seed is the first remaining candidate; one pass in order,
// each candidate tested against every particle already in the cluster.
Clusters plainClusters(std::list<Particle*> candidates, float radius) {
    Clusters clusters;
    while (!candidates.empty()) {
        std::vector<Particle*> group{candidates.front()};
        candidates.pop_front();
        for (auto it = candidates.begin(); it != candidates.end();) {
            bool near = false;
            for (const Particle* member : group)
                near = near || lengthSquared(member->position - (*it)->position) <= radius * radius;
            if (near) {
                group.push_back(*it);
                it = candidates.erase(it);
            } else {
                ++it;
            }
        }
        clusters.push_back(group);
    }
    return clusters;
}

Clusters indexedClusters(const std::vector<Particle*>& order, float radius) {
    Clusters clusters;
    ParticleMover::ClusterCandidates candidates(order, radius);
    while (!candidates.empty()) {
        std::vector<Particle*> group{candidates.takeFirst()};
        ParticleMover::groupParticles(group, candidates, radius);
        clusters.push_back(group);
    }
    return clusters;
}

std::vector<Particle> scatter(int count, float size, uint32_t seed) {
    setRandomSeed(seed);
    std::vector<Particle> particles(count);
    for (Particle& particle : particles)
        particle.position =
            Vector2D(static_cast<float>(randomUnit()) * size, static_cast<float>(randomUnit()) * size);
    return particles;
}

void expectSameClusters(std::vector<Particle>& particles, float radius) {
    std::vector<Particle*> order;
    for (Particle& particle : particles) order.push_back(&particle);
    const Clusters plain = plainClusters(std::list<Particle*>(order.begin(), order.end()), radius);
    const Clusters indexed = indexedClusters(order, radius);
    ASSERT_EQ(plain.size(), indexed.size());
    for (size_t i = 0; i < plain.size(); ++i) ASSERT_EQ(plain[i], indexed[i]) << "cluster " << i;
}

TEST(AttractionClusters, MatchThePlainPassOverScatteredWater) {
    const std::pair<int, float> cases[] = {{1, 10},     {2, 100},    {50, 60},     {300, 400},
                                           {300, 2000}, {1000, 800}, {1000, 3000}, {2000, 150}};
    uint32_t seed = 1;
    for (const auto& [count, size] : cases)
        for (int repeat = 0; repeat < 3; ++repeat) {
            std::vector<Particle> particles = scatter(count, size, seed++);
            SCOPED_TRACE(testing::Message() << count << " in " << size);
            expectSameClusters(particles, 40.0f);
        }
}

TEST(AttractionClusters, ChainsOutOfOrderTheExactRadiusAndFarFlungWaterMatch) {
    // Links 39 apart listed 0, 2, 4, 1, 3, 5 along each of two rows: a pass
    // reaches only what follows the particle that would link it.
    const int places[] = {0, 2, 4, 1, 3, 5};
    std::vector<Particle> chain(12);
    for (size_t i = 0; i < chain.size(); ++i)
        chain[i].position =
            Vector2D(39.0f * static_cast<float>(places[i % 6]), 100.0f * static_cast<float>(i / 6));
    std::vector<Particle*> order;
    for (Particle& particle : chain) order.push_back(&particle);
    const Clusters clusters = indexedClusters(order, 40.0f);
    ASSERT_EQ(clusters.size(), 6u);
    EXPECT_EQ(clusters[0], (std::vector<Particle*>{&chain[0], &chain[3]}));
    expectSameClusters(chain, 40.0f);

    std::vector<Particle> edge(3);  // exactly the radius links
    edge[1].position = Vector2D(40, 0);
    edge[2].position = Vector2D(40, 40.0001f);
    order = {&edge[0], &edge[1], &edge[2]};
    EXPECT_EQ(indexedClusters(order, 40.0f).front().size(), 2u);
    expectSameClusters(edge, 40.0f);

    std::vector<Particle> far = scatter(200, 100, 77);
    far[3].position = Vector2D(1e7f, -1e7f);
    far[4].position = far[5].position;
    far[6].position = Vector2D(-3e6f, 20);
    expectSameClusters(far, 40.0f);
}

// The whole pass, written plainly: candidates by the parity of randomBits, then
// for each cluster in order the two jitter draws of every member off the centre.
void plainAttractions(std::list<Particle>& water, float dt) {
    std::deque<Particle*> shuffled;
    for (Particle& particle : water) {
        if (randomBits() % 2 == 0)
            shuffled.push_front(&particle);
        else
            shuffled.push_back(&particle);
    }
    for (const std::vector<Particle*>& cluster :
         plainClusters(std::list<Particle*>(shuffled.begin(), shuffled.end()), 40.0f)) {
        Vector2D sum;
        for (const Particle* particle : cluster) sum += particle->position;
        const Vector2D centre = sum / static_cast<float>(cluster.size());
        for (Particle* particle : cluster) {
            const Vector2D towards = centre - particle->position;
            const float l = length(towards);
            if (!(l > 0.0001f)) continue;
            const float step = std::min((l - 4.0f) * (dt / 0.75f), 1.5f);
            const float jx = 0.1f * static_cast<float>(randomUnit() - 0.5);
            const float jy = 0.1f * static_cast<float>(randomUnit() - 0.5);
            if (step > 0.0f) particle->position += towards / l * step + Vector2D(jx, jy);
        }
    }
}

using AttractionPass = WaterWorld;

TEST_F(AttractionPass, MovesEveryParticleAsThePlainPassDoes) {
    ParticleManager::createParticles(0, 0, 150, 1500);
    ParticleManager::createParticles(400, 50, 30, 200);
    std::list<Particle> copy = ParticleManager::getParticles();
    for (int step = 0; step < 5; ++step) {
        const uint32_t seed = getRandomSeed();
        ParticleMover::runParticleAttractions(0.02f);
        const uint32_t seedAfter = getRandomSeed();
        setRandomSeed(seed);
        plainAttractions(copy, 0.02f);
        ASSERT_EQ(getRandomSeed(), seedAfter) << "step " << step;
        auto it = copy.begin();
        for (const Particle& particle : ParticleManager::getParticles()) {
            ASSERT_EQ(particle.position, it->position) << "step " << step;
            ++it;
        }
    }
}

}  // namespace
