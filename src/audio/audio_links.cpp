// The audio's side of the game state that decides what is heard.
#include "audio/audio_links.h"

#include "game/game.h"
#include "menus/menus.h"

namespace AudioLinks {

bool soundAllowed() {
    TRACE_LOCATION("AudioLinks::soundAllowed");
    return !Game::isPaused() && !GameRules::gameIsFinished() &&
           GameMenus::getCurrentMenu() == GameMenus::none;
}

Vector2D listenerPosition() {
    TRACE_LOCATION("AudioLinks::listenerPosition");
    return Camera::getViewCentre();
}

}  // namespace AudioLinks
