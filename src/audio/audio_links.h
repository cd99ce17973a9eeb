// What the sound asks of the game around it: whether the game runs, so that
// sound may be heard, and where the view is. Private to the audio files.
#pragma once

#include "foundation/foundation.h"

namespace AudioLinks {

// Sound is heard while the game runs: not paused and not finished. The menus
// will silence it too, through this one place, once they are in the build.
bool soundAllowed();
// Where the view is centred: the camera's position plus its shake.
Vector2D listenerPosition();

}  // namespace AudioLinks
