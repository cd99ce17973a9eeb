// Effect emitters and their particles: the settings reader and its clamps
// (with a fuzz of damaged files), the emitter's clock, the step about the view,
// and the roads to emitters from the console, triggers and level files.

#include <random>

#include "console/console.h"
#include "dynamics/fx_particle_state.h"
#include "dynamics/trigger_state.h"
#include "support/dynamics_fixture.h"
#include "support/level_fixtures.h"

namespace {

constexpr float pi = 3.14159265f;

class FxTest : public DynamicsTest {
protected:
    void SetUp() override {
        DynamicsTest::SetUp();
        folder.write("cfg/water.cfg", "gravity = 100\n");
        ParticleManager::initialise();
        Camera::setTilt(0.0f);
        FxParticleManager::initalise();
    }
    void TearDown() override {
        FxParticleManager::shutdown();
        ParticleManager::shutdown();
        DynamicsTest::TearDown();
    }

    // An emitter that gives off one particle each time, from a texture that isn't there.
    static FxParticleEmitter emitterAt(const Vector2D& at) {
        FxParticleEmitter emitter;
        emitter.position = at;
        emitter.addTexture("gfx\\spark.tga");
        return emitter;
    }
    static std::vector<FxParticle>& particles() { return FxParticleManager::state().particles; }
};

// The settings reader. Each file is read over an emitter whose gravity and
// colour differ from what a missing key reads as, so that a value left alone
// shows.

// Frequency, burst, live times, gravities, red of colour 1, spread in degrees to a thousandth, textures.
using Snapshot = std::tuple<float, uint32_t, float, float, float, float, float, float, std::size_t>;

Snapshot snapshot(const FxParticleEmitter& e) {
    return {e.frequency,      e.burstSize, e.liveTime1, e.liveTime2,
            e.gravity1,       e.gravity2,  e.color1.r,  std::round(e.spread / 0.017453292f * 1000) / 1000,
            e.textures.size()};
}

const Snapshot untouched{1.0f, 16, 1.0f, 1.0f, 7.0f, 7.0f, 0.5f, 0.0f, 0};

TEST_F(FxTest, TheSettingsReaderClampsAndKeepsWhatTheFileLeavesOut) {
    // What each file shows, the file (null: none at all) and the emitter read from it.
    const std::tuple<const char*, const char*, Snapshot> cases[] = {
        {"no file drops only the textures", nullptr, untouched},
        {"a burst of -1 is the largest", "burstSize = -1", {1, 4096, 1, 1, 7, 7, 0.5f, 0, 0}},
        {"a burst above the limit is the largest", "burstSize = 10000", {1, 4096, 1, 1, 7, 7, 0.5f, 0, 0}},
        {"a burst at the limit stays", "burstSize = 4096", {1, 4096, 1, 1, 7, 7, 0.5f, 0, 0}},
        {"a burst as text reads as none", "burstSize = lots", {1, 0, 1, 1, 7, 7, 0.5f, 0, 0}},
        {"frequency 0 is the shortest", "frequency = 0", {0.001f, 16, 1, 1, 7, 7, 0.5f, 0, 0}},
        {"lives of 0", "liveTime_1 = 0 liveTime_2 = -5", {1, 16, 0.0001f, 0.0001f, 7, 7, 0.5f, 0, 0}},
        {"a life alone changes nothing", "liveTime_1 = 4", untouched},
        {"a gravity alone changes nothing", "gravity_1 = 3", untouched},
        {"gravity as text reads as 0", "gravity_1 = 3 gravity_2 = down", {1, 16, 1, 1, 3, 0, 0.5f, 0, 0}},
        {"colours with a key missing change nothing",
         "color_1_r = 0.1 color_1_g = 0 color_1_b = 0 color_1_a = 1 "
         "color_2_r = 0 color_2_g = 0 color_2_b = 0",
         untouched},
        {"colours with all eight keys",
         "color_1_r = 0.1 color_1_g = 0 color_1_b = 0 color_1_a = 1 "
         "color_2_r = 0 color_2_g = 0 color_2_b = 0 color_2_a = 1",
         {1, 16, 1, 1, 7, 7, 0.1f, 0, 0}},
        {"spread in degrees", "spread = 360", {1, 16, 1, 1, 7, 7, 0.5f, 360, 0}},
        {"textures by number with gaps",
         "texture1 = gfx\\a.tga texture3 = gfx\\b.tga texture9 = c",
         {1, 16, 1, 1, 7, 7, 0.5f, 0, 2}}};
    for (const auto& [name, file, expected] : cases) {
        SCOPED_TRACE(name);
        if (file) folder.write("fx/test.cfg", file);
        FxParticleEmitter emitter = emitterAt(Vector2D());
        emitter.gravity1 = emitter.gravity2 = 7.0f;
        emitter.color1.r = 0.5f;
        console.take();
        emitter.loadEmitterSettings("fx\\test.cfg");
        EXPECT_EQ(snapshot(emitter), expected);
        EXPECT_EQ(console.take().find("Could not open config file") != std::string::npos, file == nullptr);
    }
}

// A whole settings file, cut short at every byte and then damaged at random:
// whatever is read, the clamps hold and the emitter's particles live and die.
const char* const fullSettings =
    "active = true\nfrequency = 0.05\nburstSize = 12\nspread = 70\ngravity_1 = 30\ngravity_2 = 50\n"
    "size_1 = 10\nsize_2 = 18\nliveTime_1 = 0.05\nliveTime_2 = 0.1\nvelocity_1 = 100\nvelocity_2 = 220\n"
    "useAlphaBlending = false\ncolor_1_r = 1.0\ncolor_1_g = 0.85\ncolor_1_b = 0.4\ncolor_1_a = 1.0\n"
    "color_2_r = 1.0\ncolor_2_g = 0.4\ncolor_2_b = 0.1\ncolor_2_a = 0.8\n"
    "texture1 = gfx\\fx\\spark.tga\ntexture2 = gfx\\fx\\smoke.tga\ntexture3 = gfx\\fx\\drop.tga\n";

void expectHealthyEmitterFrom(const std::string& bytes, ScratchFolder& folder, const std::string& what) {
    folder.write("fx/damaged.cfg", bytes);
    FxParticleEmitter emitter;
    emitter.loadEmitterSettings("fx\\damaged.cfg");
    ASSERT_GE(emitter.frequency, 0.001f) << what;
    ASSERT_LE(emitter.burstSize, 4096u) << what;
    ASSERT_GE(std::min(emitter.liveTime1, emitter.liveTime2), 0.0001f) << what;
    ASSERT_LE(emitter.textures.size(), 8u) << what;
    FxParticleManager::removeAllParticles();
    FxParticleManager::addEmitter(emitter);
    FxParticleEmitter& added = *FxParticleManager::findEmitters(0).back();
    added.createBurst();
    ASSERT_EQ(FxParticleManager::getParticleCount(), added.textures.empty() ? 0u : added.burstSize) << what;
    for (int i = 0; i < 3; ++i) FxParticleManager::run(0.0333f);
    FxParticleManager::draw();
    FxParticleManager::initalise();
}

TEST_F(FxTest, DamagedSettingsFilesNeverBreakTheClamps) {
    const std::string whole = fullSettings;
    for (std::size_t size = 0; size <= whole.size(); ++size)
        expectHealthyEmitterFrom(whole.substr(0, size), folder, "cut at " + std::to_string(size));
    std::mt19937 random(1234);
    for (int round = 0; round < 400; ++round) {
        std::string bytes = whole;
        const int flips = 1 + static_cast<int>(random() % 4);
        for (int i = 0; i < flips; ++i)
            bytes[random() % bytes.size()] ^= static_cast<char>(1u << (random() % 8));
        expectHealthyEmitterFrom(bytes, folder, "flip round " + std::to_string(round));
    }
}

// The emitter's own clock and its fan of directions.

TEST_F(FxTest, ParticlesAreSpacedByTimeWhateverTheStepAndFannedOutByTheSpread) {
    FxParticleEmitter emitter = emitterAt(Vector2D());
    emitter.setFrequency(0.01f);
    emitter.run(0.033f);
    EXPECT_EQ(particles().size(), 3u);
    EXPECT_NEAR(emitter.timer, 0.003f, 1e-5f);
    emitter.active = false;
    emitter.run(1.0f);
    EXPECT_EQ(particles().size(), 3u);
    emitter.createBurst();  // a stopped emitter bursts all the same
    EXPECT_EQ(particles().size(), 3u + 16u);
    particles().clear();  // they point at this emitter's textures
    FxParticleEmitter first, second;
    first.setDirection(0, 0);
    second.setDirection(0, 0);
    EXPECT_NEAR(length(first.direction), 1.0f, 1e-6f);
    EXPECT_NE(first.direction, second.direction);
    second.setDirection(0, -3);
    EXPECT_EQ(second.direction, Vector2D(0, -1));

    FxParticleEmitter fan = emitterAt(Vector2D());
    fan.setDirection(0, -1);
    fan.velocity1 = fan.velocity2 = 10.0f;
    for (int i = 0; i < 20; ++i) fan.spawnParticle();
    for (const FxParticle& particle : particles()) EXPECT_EQ(particle.velocity, Vector2D(0, -10));
    particles().clear();
    fan.spread = 2.0f * pi;
    bool quadrants[4] = {false, false, false, false};
    for (int i = 0; i < 200; ++i) fan.spawnParticle();
    for (const FxParticle& particle : particles())
        quadrants[(particle.velocity.x > 0 ? 1 : 0) + (particle.velocity.y > 0 ? 2 : 0)] = true;
    for (bool seen : quadrants) EXPECT_TRUE(seen);
    particles().clear();
}

// The manager's step. The camera stands at the origin untilted at zoom 1 in a
// window of 800 by 600: the active box reaches 400 units each way.

TEST_F(FxTest, OnlyEmittersInsideTheSquareAboutTheViewRun) {
    // The square, not the 800 by 600 view: (0, 350) runs.
    for (const auto& [position, expected] : {std::pair{Vector2D(400, 0), 1u},
                                             {Vector2D(400.1f, 0), 0u},
                                             {Vector2D(-400, -400), 1u},
                                             {Vector2D(0, 400.1f), 0u},
                                             {Vector2D(0, 350), 1u}}) {
        FxParticleManager::initalise();
        FxParticleEmitter emitter = emitterAt(position);
        emitter.setFrequency(0.01f);
        FxParticleManager::addEmitter(emitter);
        FxParticleManager::run(0.0105f);
        EXPECT_EQ(FxParticleManager::getParticleCount(), expected) << position.x << ", " << position.y;
        EXPECT_EQ(FxParticleManager::conCmdFxEmitterCount(), 1);
    }
}

// Roads to emitters.

TEST_F(FxTest, EmitterCreateChecksItsSixArguments) {
    folder.write("fx/puff.cfg", "burstSize = 3\ntexture1 = gfx\\puff.tga\n");
    const char* wrong[] = {"", "1 2 0 1 5", "1 2 0 1 5 fx\\puff.cfg extra", "x 2 0 1 5 fx\\puff.cfg",
                           "1 2 0 1 5.5 fx\\puff.cfg"};
    for (const char* line : wrong) {
        console.take();
        FxParticleManager::conCmdFxEmitterCreate(line);
        EXPECT_NE(
            console.text().find("\nUSAGE: Emitter create < x : number > < y : number > < dir_x : number > "
                                "< dir_y : number > < id : integer > < emitter settings : fileName > "),
            std::string::npos)
            << line;
    }
    EXPECT_EQ(FxParticleManager::conCmdFxEmitterCount(), 0);
    GLConsole::enterLine("FxEmitterCreate 10 -20 0 2 5 fx\\puff.cfg");
    ASSERT_EQ(FxParticleManager::conCmdFxEmitterCount(), 1);
    const FxParticleEmitter& emitter = *FxParticleManager::findEmitters(5).front();
    EXPECT_EQ(std::tuple(emitter.position, emitter.direction, emitter.burstSize, emitter.textures.size()),
              std::tuple(Vector2D(10, -20), Vector2D(0, 1), 3u, 1u));
}

TEST_F(FxTest, TriggersStartStopAndBurstTheEmittersThatExistedBeforeThem) {
    Trigger& tooEarly = addSquare(501, 9, -50, -50, 100);
    FxParticleEmitter emitter = emitterAt(Vector2D(1000, 1000));  // out of view
    emitter.id = 9;
    FxParticleManager::addEmitter(emitter);
    FxParticleEmitter& added = *FxParticleManager::findEmitters(9).front();
    Trigger& stop = addSquare(503, 9, -50, -50, 100);
    Trigger& start = addSquare(502, 9, -50, -50, 100);
    Trigger& burst = addSquare(501, 9, -50, -50, 100);
    EXPECT_TRUE(tooEarly.targets.empty());
    stop.typeInfo->function(stop, nullptr, subjectParticle, 0.0f);
    EXPECT_FALSE(added.active);
    burst.typeInfo->function(burst, nullptr, subjectParticle, 0.0f);
    EXPECT_EQ(FxParticleManager::conCmdFxParticleCount(), 16);  // counted out of view too
    start.typeInfo->function(start, nullptr, subjectParticle, 0.0f);
    EXPECT_TRUE(added.active);
}

TEST_F(FxTest, ALevelHandsItsEmittersOverWithTheirSettingsAndAFailedLoadKeepsThem) {
    folder.write("fx/jet.cfg", "burstSize = 7\ntexture1 = gfx\\jet.tga\n");
    folder.write("maps/jets.rill",
                 bytesFromText("emitter id 4 at 10 20 direction 0 0 settings \"fx\\jet.cfg\"\n"
                               "emitter id 4 at 30 40 direction 1 1 settings \"fx\\none.cfg\"\n"
                               "trigger type Emitter_create_burst_1 target 4 rect 0 0 9 9\n"));
    ASSERT_TRUE(Level::load("maps\\jets.rill"));
    const std::vector<FxParticleEmitter*> emitters = FxParticleManager::findEmitters(4);
    ASSERT_EQ(emitters.size(), 2u);
    EXPECT_EQ(std::tuple(emitters[0]->burstSize, emitters[0]->textures.size()), std::tuple(7u, 1u));
    EXPECT_NEAR(length(emitters[0]->direction), 1.0f, 1e-6f);
    EXPECT_EQ(emitters[1]->position, Vector2D(30, 40));
    EXPECT_TRUE(emitters[1]->textures.empty());
    // The trigger found both, since triggers are handed over last.
    EXPECT_EQ(TriggerManager::state().triggers.front().targets.size(), 2u);
    folder.write("maps/broken.rill", "not a level");
    EXPECT_FALSE(Level::load("maps\\broken.rill"));
    EXPECT_EQ(FxParticleManager::findEmitters(4), emitters);
}

}  // namespace
