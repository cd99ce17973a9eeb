// Game's side of the effects, which are not built yet: no effect particle moves.
#include "foundation/foundation.h"
#include "game/game.h"
#include "game/game_state.h"

namespace GameLinks {

void runEffects(float) {
    TRACE_LOCATION("GameLinks::runEffects");
}
}  // namespace GameLinks
