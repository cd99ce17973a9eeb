// LevelObject: a sprite of one image or a run of animation frames.
#include "foundation/foundation.h"
#include "graphics/graphics.h"
#include "platform/platform.h"

namespace {
// "gfx\\tree_FRAME01.tga" stands for every "gfx\\tree_FRAME*.tga", in file-name order.
std::vector<std::string> frameNames(const std::string& name) {
    const std::size_t marker = name.rfind("_FRAME");
    const std::size_t dot = name.rfind('.');
    std::string pattern = name.substr(0, marker) + "_FRAME*";
    if (dot != std::string::npos && dot > marker) pattern += name.substr(dot);
    const std::size_t slash = pattern.rfind('\\');
    const std::string folder = slash == std::string::npos ? "" : pattern.substr(0, slash + 1);
    std::vector<std::string> names;
    for (const std::string& file : Platform::findFiles(pattern)) names.push_back(folder + file);
    return names;
}
}  // namespace

void LevelObject::setTexture(const std::string& textureName) {
    TRACE_LOCATION("LevelObject::setTexture");
    frames.clear();
    std::string name = textureName;
    slStringUpper(name);
    std::vector<std::string> names;
    if (name.find("_FRAME") != std::string::npos) names = frameNames(name);
    if (names.empty()) names.push_back(name);
    frames.reserve(names.size());
    for (const std::string& frame : names) frames.emplace_back(frame);
    frameCount = static_cast<uint32_t>(frames.size());
    if (currentFrame >= frameCount) currentFrame = 0;
}

void LevelObject::resetAnimation() {
    TRACE_LOCATION("LevelObject::resetAnimation");
    frameTimer = 0.0f;
    currentFrame = 0;
    playCount = 0;
}

void LevelObject::runAnimation(float seconds, float speed) {
    TRACE_LOCATION("LevelObject::runAnimation");
    if (speed <= 0.0f || stopped) return;
    frameTimer += seconds;
    if (frameTimer < 1.0f / speed) return;
    // Time beyond one frame's length is dropped, not carried to the next frame.
    frameTimer = 0.0f;
    if (currentFrame + 1 < frameCount) {
        ++currentFrame;
    } else if (repeatCount == 0) {
        currentFrame = 0;
    } else if (playCount + 1 < repeatCount) {
        ++playCount;
        currentFrame = 0;
    } else {
        playCount = 0;
        stopped = true;
    }
}

const GLTexture* LevelObject::currentTexture() const {
    TRACE_LOCATION("LevelObject::currentTexture");
    return currentFrame < frames.size() ? &frames[currentFrame] : nullptr;
}
