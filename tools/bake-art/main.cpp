// bake-art: draws all of the game's pictures from code, the same bytes on
// every run, into a data folder.
//
//   bake-art <data folder> [font folder]
//
// The font folder defaults to the DejaVu fonts of Debian's fonts-dejavu-core.
#include <cstdio>
#include <filesystem>
#include <string>

#include "art.h"
#include "tga_writer.h"

namespace {

const char* defaultFontFolder = "/usr/share/fonts/truetype/dejavu";

// Writes a set; counts the files that could not be written.
int writeSet(const std::string& dataFolder, const ArtSet& set) {
    int failures = 0;
    for (const BakedImage& baked : set) {
        const std::string path = dataFolder + "/" + baked.name;
        if (!writeTga(path, baked.image, baked.runLength)) {
            std::fprintf(stderr, "bake-art: cannot write %s\n", path.c_str());
            ++failures;
        }
    }
    return failures;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: bake-art <data folder> [font folder]\n");
        return 2;
    }
    const std::string dataFolder = argv[1];
    const std::string fontFolder = argc == 3 ? argv[2] : defaultFontFolder;
    std::error_code error;
    std::filesystem::create_directories(dataFolder + "/gfx", error);
    if (error) {
        std::fprintf(stderr, "bake-art: cannot make %s/gfx: %s\n", dataFolder.c_str(),
                     error.message().c_str());
        return 1;
    }
    int failures = 0;
    failures += writeSet(dataFolder, bakeInterface());
    failures += writeSet(dataFolder, bakeSurfaces());
    failures += writeSet(dataFolder, bakeParticles());
    failures += writeSet(dataFolder, bakeSprites());
    std::string fontError;
    failures += writeSet(dataFolder, bakeFonts(fontFolder, fontError));
    failures += writeSet(dataFolder, bakeSplash(fontFolder, fontError));
    failures += writeSet(dataFolder, bakeMenus(fontFolder, fontError));
    if (!fontError.empty()) {
        std::fprintf(stderr, "bake-art: %s (install fonts-dejavu-core)\n", fontError.c_str());
        ++failures;
    }
    return failures == 0 ? 0 : 1;
}
