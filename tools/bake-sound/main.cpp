// bake-sound: synthesises all of the game's sounds, the same bytes on every
// run, into a data folder.
//
//   bake-sound <data folder>
#include <cstdio>
#include <string>

#include "sounds.h"
#include "wave_writer.h"

namespace {

int writeSet(const std::string& dataFolder, const std::vector<BakedSound>& set) {
    int failures = 0;
    for (const BakedSound& sound : set) {
        const std::string path = dataFolder + "/" + sound.name;
        if (!writeWave(path, sound.samples)) {
            std::fprintf(stderr, "bake-sound: cannot write %s\n", path.c_str());
            ++failures;
        }
    }
    return failures;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: bake-sound <data folder>\n");
        return 2;
    }
    const int failures = writeSet(argv[1], bakeEventSounds()) + writeSet(argv[1], bakeWaterSounds());
    return failures == 0 ? 0 : 1;
}
