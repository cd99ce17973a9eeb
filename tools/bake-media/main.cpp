// bake-media: the level music and the intro video with its sound track,
// encoded bit-exact so that every bake gives the same bytes.
//
//   bake-media <data folder>
//
// The intro shows the logo that bake-art drew into the same data folder.
#include <cstdio>
#include <string>

extern "C" {
#include <libavutil/log.h>
}

#include "encoder.h"
#include "media.h"

namespace {

bool report(const char* what, bool done, const std::string& error) {
    if (!done) std::fprintf(stderr, "bake-media: %s: %s\n", what, error.c_str());
    return done;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: bake-media <data folder>\n");
        return 2;
    }
    av_log_set_level(AV_LOG_ERROR);
    const std::string data = argv[1];
    std::string error;
    bool good = report("music", writeOgg(data + "/snd/music/brookfall.ogg", levelMusic(), error), error);
    good = report("intro sound", writeOgg(data + "/vid/intro.ogg", introSoundTrack(), error), error) && good;
    const Logo logo = readLogo(data + "/gfx/menu/logo.tga");
    if (logo.rgba.empty())
        std::fprintf(stderr, "bake-media: no logo in %s/gfx/menu, the intro goes without\n", data.c_str());
    const bool video = writeAvi(
        data + "/vid/intro.avi", introWidth, introHeight, introFramesPerSecond, introFrames,
        [&logo](int frame) { return introFrame(frame, logo); }, error);
    good = report("intro video", video, error) && good;
    return good ? 0 : 1;
}
