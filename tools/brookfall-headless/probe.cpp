// --probe: plays a level with simple strategies, each from a fresh start in a
// process of its own, to find wins that skip the level's idea. Strategies are
// independent, so two run at a time; the game's state is one set of globals a
// process, so each is a child forked before the game starts.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <map>
#include <thread>
#include <vector>

#include "dynamics/dynamics.h"
#include "game/game.h"
#include "headless.h"
#include "level/level.h"
#include "water/water.h"

namespace Headless {

namespace {

constexpr float stepSeconds = Game::stepThreshold;
// 120 seconds of game time.
constexpr long longestRun = 9000;
// Level time before a turning strategy turns the view upside down.
constexpr uint32_t turnAfterMilliseconds = 3000;
constexpr int mostAtOnce = 2;

struct Strategy {
    int tilt;
    bool turns;
    std::string name() const {
        std::string text = "tilt " + std::to_string(tilt);
        return turns ? text + " then " + std::to_string(upsideDown()) : text;
    }
    int upsideDown() const { return tilt > 0 ? tilt - 180 : tilt + 180; }
};

std::vector<Strategy> strategies() {
    std::vector<Strategy> all;
    for (bool turns : {false, true})
        for (int tilt = -180; tilt <= 180; tilt += 15) all.push_back({tilt, turns});
    return all;
}

// What may still change once the water stands still: a mover on its way, a
// particle or body that is dying, a delayed trigger action (the longest delay
// of the level bounds when the last one runs). When none of that is left and
// the water and the camera have stayed where they were for longer than that
// and five seconds more, nothing will change any more.
//
// Water at rest still stirs: its particles trade places, and the game keeps
// them in no fixed order. So the water stays where it was while every particle
// has one of the first look within a particle's width, at the same temperature
// to a degree, and while the middle of all of them (and the camera, which
// follows it) has moved less than a unit and a half: a pool's stirring moves
// its middle by about a unit, water that creeps down a gentle slope further.
class StillWater {
public:
    explicit StillWater(float longestDelay)
        : window(static_cast<long>(std::ceil((5.0f + longestDelay) / stepSeconds))) {}

    // True once the water has stood still for the whole window.
    bool update(long step) {
        if (step % checkEvery != 0) return false;
        Look now;
        if (!look(now) || !matches(now)) {
            since = step;
            first = std::move(now);
            return false;
        }
        return step - since >= window;
    }

private:
    static constexpr long checkEvery = 15;
    static constexpr float width = 2.0f * ParticleMover::particleRadius;
    static constexpr float drift = 1.5f;

    struct Look {
        std::vector<Vector2D> places;
        std::vector<float> temperatures;
        Vector2D middle, camera;
    };

    // False when something is sure to change.
    static bool look(Look& now) {
        if (Camera::getState() == Camera::movingToWaypoint) return false;
        for (const Mover& mover : MoverManager::getMovers())
            if (mover.state != Mover::stopped) return false;
        for (const Particle& p : ParticleManager::getParticles()) {
            if (p.dying) return false;
            now.places.push_back(p.position);
            now.temperatures.push_back(p.temperature);
        }
        for (const ParticleGroup& g : ParticleGroupMover::getGroups()) {
            if (g.dying) return false;
            now.places.push_back(g.position);
            now.temperatures.push_back(g.temperature);
        }
        for (const Vector2D& place : now.places) now.middle += place;
        if (!now.places.empty()) now.middle = now.middle * (1.0f / static_cast<float>(now.places.size()));
        now.camera = Camera::getPosition();
        return true;
    }

    bool matches(const Look& now) const {
        if (now.places.size() != first.places.size()) return false;
        if (!(length(now.middle - first.middle) < drift) || !(length(now.camera - first.camera) < drift))
            return false;
        for (std::size_t i = 0; i < now.places.size(); ++i) {
            bool found = false;
            for (std::size_t j = 0; j < first.places.size() && !found; ++j)
                found = std::fabs(now.places[i].x - first.places[j].x) < width &&
                        std::fabs(now.places[i].y - first.places[j].y) < width &&
                        std::fabs(now.temperatures[i] - first.temperatures[j]) < 1.0f;
            if (!found) return false;
        }
        return true;
    }

    long window;
    long since = 0;
    Look first;
};

float longestTriggerDelay(const std::string& levelName) {
    const LevelFile level = readLevelRecords(levelName);
    float longest = 0.0f;
    // A delay the game would never reach counts as none: the run ends at 120 s anyway.
    for (const TriggerRecord& trigger : level.triggers)
        if (trigger.delay > longest && trigger.delay < 1e4f) longest = trigger.delay;
    return longest;
}

std::string play(const Strategy& strategy, const std::string& levelName) {
    StillWater still(longestTriggerDelay(levelName));
    Camera::setTilt(static_cast<float>(strategy.tilt));
    bool turned = !strategy.turns;
    for (long step = 1; step <= longestRun && Game::isRunning() && !GameRules::levelIsWon(); ++step) {
        stepFrame(stepSeconds);
        if (!turned && GameRules::getLevelTime() >= turnAfterMilliseconds) {
            Camera::setTilt(static_cast<float>(strategy.upsideDown()));
            turned = true;
        }
        if (turned && still.update(step)) break;
    }
    const bool won = GameRules::levelIsWon();
    return "{\"strategy\":\"" + strategy.name() + "\",\"won\":" + (won ? "true" : "false") +
           ",\"level_ms\":" + std::to_string(GameRules::getLevelTime()) +
           ",\"total\":" + std::to_string(won ? GameRules::getTotalScore() : 0) + "}";
}

// The child: the game from a fresh start, one strategy, its line into the pipe.
[[noreturn]] void runChild(const Options& options, const Strategy& strategy, int out) {
    int code = 1;
    if (startGame(options)) {
        const std::string line = play(strategy, options.levelName) + "\n";
        code = write(out, line.data(), line.size()) == static_cast<ssize_t>(line.size()) ? 0 : 3;
    }
    stopGame();
    close(out);
    std::fflush(nullptr);
    // Straight out: the parent's state was copied, and only the line matters.
    _exit(code);
}

struct Child {
    std::size_t index;
    int pipe;
};

std::string readAll(int fd) {
    std::string text;
    char buffer[512];
    for (ssize_t n; (n = read(fd, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(n));
    return text;
}

}  // namespace

int runProbe(const Options& options) {
    const std::vector<Strategy> all = strategies();
    std::vector<std::string> lines(all.size());
    std::map<pid_t, Child> running;
    const int atOnce =
        std::max(1, std::min(mostAtOnce, static_cast<int>(std::thread::hardware_concurrency())));
    std::size_t next = 0, printed = 0;
    int won = 0;
    bool failed = false;
    std::fflush(nullptr);
    while (next < all.size() || !running.empty()) {
        while (next < all.size() && static_cast<int>(running.size()) < atOnce && !failed) {
            int ends[2];
            if (pipe(ends) != 0) return 1;
            const pid_t pid = fork();
            if (pid == 0) {
                close(ends[0]);
                runChild(options, all[next], ends[1]);
            }
            close(ends[1]);
            if (pid < 0) {
                close(ends[0]);
                return 1;
            }
            running[pid] = Child{next++, ends[0]};
        }
        if (running.empty()) break;
        int status = 0;
        const pid_t pid = waitpid(-1, &status, 0);
        const auto found = running.find(pid);
        if (found == running.end()) continue;
        std::string line = readAll(found->second.pipe);
        close(found->second.pipe);
        if (!line.empty() && line.back() == '\n') line.pop_back();
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || line.empty()) failed = true;
        lines[found->second.index] = line;
        running.erase(found);
        // In strategy order, each as soon as those before it are done.
        for (; printed < all.size() && !lines[printed].empty(); ++printed) {
            std::cout << lines[printed] << std::endl;
            won += lines[printed].find("\"won\":true") != std::string::npos;
        }
    }
    if (failed) {
        std::cerr << "brookfall-headless: the probe could not play " << options.levelName << "\n";
        return 1;
    }
    std::cout << "{\"strategies\":" << all.size() << ",\"won\":" << won << "}" << std::endl;
    return 0;
}

}  // namespace Headless
