// SDL keys to Windows virtual key codes, which the game uses for every key.
#include <SDL.h>

#include "platform/window_backend.h"

namespace WindowBackend {

namespace {

struct KeyPair {
    int sdl;
    int virtualKey;
};

// Keys found by their position on the keyboard, whatever the layout prints on them.
constexpr KeyPair scancodeKeys[] = {
    {SDL_SCANCODE_GRAVE, 223},  // left of 1: opens the console
    {SDL_SCANCODE_KP_0, 96},      {SDL_SCANCODE_KP_MULTIPLY, 106}, {SDL_SCANCODE_KP_PLUS, 107},
    {SDL_SCANCODE_KP_MINUS, 109}, {SDL_SCANCODE_KP_PERIOD, 110},   {SDL_SCANCODE_KP_DIVIDE, 111},
    {SDL_SCANCODE_KP_ENTER, 13},
};

// Keys found by what they mean: controls and punctuation.
constexpr KeyPair keycodeKeys[] = {
    {SDLK_BACKSPACE, 8},    {SDLK_TAB, 9},
    {SDLK_RETURN, 13},      {SDLK_LSHIFT, 16},
    {SDLK_RSHIFT, 16},      {SDLK_LCTRL, 17},
    {SDLK_RCTRL, 17},       {SDLK_LALT, 18},
    {SDLK_RALT, 18},        {SDLK_PAUSE, 19},
    {SDLK_CAPSLOCK, 20},    {SDLK_ESCAPE, 27},
    {SDLK_SPACE, 32},       {SDLK_PAGEUP, 33},
    {SDLK_PAGEDOWN, 34},    {SDLK_END, 35},
    {SDLK_HOME, 36},        {SDLK_LEFT, 37},
    {SDLK_UP, 38},          {SDLK_RIGHT, 39},
    {SDLK_DOWN, 40},        {SDLK_PRINTSCREEN, 44},
    {SDLK_INSERT, 45},      {SDLK_DELETE, 46},
    {SDLK_LGUI, 91},        {SDLK_RGUI, 92},
    {SDLK_APPLICATION, 93}, {SDLK_NUMLOCKCLEAR, 144},
    {SDLK_SCROLLLOCK, 145}, {SDLK_SEMICOLON, 186},
    {SDLK_EQUALS, 187},     {SDLK_COMMA, 188},
    {SDLK_MINUS, 189},      {SDLK_PERIOD, 190},
    {SDLK_SLASH, 191},      {SDLK_LEFTBRACKET, 219},
    {SDLK_BACKSLASH, 220},  {SDLK_RIGHTBRACKET, 221},
    {SDLK_QUOTE, 222},
};

template <std::size_t N>
int lookUp(const KeyPair (&table)[N], int sdl) {
    for (const KeyPair& pair : table)
        if (pair.sdl == sdl) return pair.virtualKey;
    return 0;
}

int virtualKeyForScancode(int scancode) {
    if (const int key = lookUp(scancodeKeys, scancode)) return key;
    if (scancode >= SDL_SCANCODE_KP_1 && scancode <= SDL_SCANCODE_KP_9)
        return 97 + scancode - SDL_SCANCODE_KP_1;
    if (scancode >= SDL_SCANCODE_F1 && scancode <= SDL_SCANCODE_F12) return 112 + scancode - SDL_SCANCODE_F1;
    if (scancode >= SDL_SCANCODE_F13 && scancode <= SDL_SCANCODE_F24)
        return 124 + scancode - SDL_SCANCODE_F13;
    return 0;
}

}  // namespace

int virtualKeyFor(int sdlKeycode, int sdlScancode) {
    if (const int key = virtualKeyForScancode(sdlScancode)) return key;
    if (sdlKeycode >= 'a' && sdlKeycode <= 'z') return sdlKeycode - 'a' + 'A';
    if (sdlKeycode >= '0' && sdlKeycode <= '9') return sdlKeycode;
    return lookUp(keycodeKeys, sdlKeycode);
}

}  // namespace WindowBackend
