// SDL keys to Windows virtual key codes, which the game uses for every key.
#include <SDL.h>

#include "platform/window_backend.h"

namespace WindowBackend {

namespace {

// Keys found by their position on the keyboard, whatever the layout prints on them.
int virtualKeyForScancode(int scancode) {
    switch (scancode) {
        case SDL_SCANCODE_GRAVE:
            return 223;  // left of 1: opens the console
        case SDL_SCANCODE_KP_0:
            return 96;
        case SDL_SCANCODE_KP_MULTIPLY:
            return 106;
        case SDL_SCANCODE_KP_PLUS:
            return 107;
        case SDL_SCANCODE_KP_MINUS:
            return 109;
        case SDL_SCANCODE_KP_PERIOD:
            return 110;
        case SDL_SCANCODE_KP_DIVIDE:
            return 111;
        case SDL_SCANCODE_KP_ENTER:
            return 13;
        default:
            break;
    }
    if (scancode >= SDL_SCANCODE_KP_1 && scancode <= SDL_SCANCODE_KP_9)
        return 97 + scancode - SDL_SCANCODE_KP_1;
    if (scancode >= SDL_SCANCODE_F1 && scancode <= SDL_SCANCODE_F12) return 112 + scancode - SDL_SCANCODE_F1;
    if (scancode >= SDL_SCANCODE_F13 && scancode <= SDL_SCANCODE_F24)
        return 124 + scancode - SDL_SCANCODE_F13;
    return 0;
}

int virtualKeyForPunctuation(int keycode) {
    switch (keycode) {
        case SDLK_SEMICOLON:
            return 186;
        case SDLK_EQUALS:
            return 187;
        case SDLK_COMMA:
            return 188;
        case SDLK_MINUS:
            return 189;
        case SDLK_PERIOD:
            return 190;
        case SDLK_SLASH:
            return 191;
        case SDLK_LEFTBRACKET:
            return 219;
        case SDLK_BACKSLASH:
            return 220;
        case SDLK_RIGHTBRACKET:
            return 221;
        case SDLK_QUOTE:
            return 222;
        default:
            return 0;
    }
}

int virtualKeyForControl(int keycode) {
    switch (keycode) {
        case SDLK_BACKSPACE:
            return 8;
        case SDLK_TAB:
            return 9;
        case SDLK_RETURN:
            return 13;
        case SDLK_LSHIFT:
        case SDLK_RSHIFT:
            return 16;
        case SDLK_LCTRL:
        case SDLK_RCTRL:
            return 17;
        case SDLK_LALT:
        case SDLK_RALT:
            return 18;
        case SDLK_PAUSE:
            return 19;
        case SDLK_CAPSLOCK:
            return 20;
        case SDLK_ESCAPE:
            return 27;
        case SDLK_SPACE:
            return 32;
        case SDLK_PAGEUP:
            return 33;
        case SDLK_PAGEDOWN:
            return 34;
        case SDLK_END:
            return 35;
        case SDLK_HOME:
            return 36;
        case SDLK_LEFT:
            return 37;
        case SDLK_UP:
            return 38;
        case SDLK_RIGHT:
            return 39;
        case SDLK_DOWN:
            return 40;
        case SDLK_PRINTSCREEN:
            return 44;
        case SDLK_INSERT:
            return 45;
        case SDLK_DELETE:
            return 46;
        case SDLK_LGUI:
            return 91;
        case SDLK_RGUI:
            return 92;
        case SDLK_APPLICATION:
            return 93;
        case SDLK_NUMLOCKCLEAR:
            return 144;
        case SDLK_SCROLLLOCK:
            return 145;
        default:
            return 0;
    }
}

}  // namespace

int virtualKeyFor(int sdlKeycode, int sdlScancode) {
    if (const int key = virtualKeyForScancode(sdlScancode)) return key;
    if (sdlKeycode >= 'a' && sdlKeycode <= 'z') return sdlKeycode - 'a' + 'A';
    if (sdlKeycode >= '0' && sdlKeycode <= '9') return sdlKeycode;
    if (const int key = virtualKeyForControl(sdlKeycode)) return key;
    return virtualKeyForPunctuation(sdlKeycode);
}

}  // namespace WindowBackend
