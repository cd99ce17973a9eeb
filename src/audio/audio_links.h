// What the sound asks of the game around it: whether the game runs, so that
// sound may be heard, and where the view is. Private to the audio files.
#pragma once

#include "foundation/foundation.h"

namespace AudioLinks {

// Sound is heard while the game is played: not paused, not finished and with no menu open.
bool soundAllowed();
// Where the view is centred: the camera's position plus its shake.
Vector2D listenerPosition();

}  // namespace AudioLinks
