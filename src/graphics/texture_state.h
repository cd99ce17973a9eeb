// The texture store's state, shared by the store and the loading road that
// reads its detail level and driver features (and by tests).
#pragma once

#include <map>
#include <string>

#include "graphics/graphics.h"

namespace GLTextureManager {

struct State {
    std::map<std::string, GLTextureInternal> textures;
    int textureDetailLevel = 0;
    int anisotropicLevel = 1;
    int maxAnisotropicLevel = 1;
    bool anisotropicSupported = false;
    bool compressionSupported = false;
};
State& state();

}  // namespace GLTextureManager
