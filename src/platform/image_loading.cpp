#include "platform/image_loading.h"

#include <SDL.h>
#include <SDL_image.h>

#include <cstring>

#include "platform/platform.h"

namespace Platform {

namespace {
bool hasColourKey(SDL_Surface* surface) {
    Uint32 key = 0;
    return SDL_GetColorKey(surface, &key) == 0;
}

// Rows of the converted surface, padding dropped.
void copyRows(const SDL_Surface* converted, LoadedImage& image) {
    const std::size_t rowBytes = static_cast<std::size_t>(image.width) * 4;
    image.pixels.resize(rowBytes * static_cast<std::size_t>(image.height));
    const auto* source = static_cast<const uint8_t*>(converted->pixels);
    for (int row = 0; row < image.height; ++row)
        std::memcpy(image.pixels.data() + rowBytes * row,
                    source + static_cast<std::size_t>(converted->pitch) * row, rowBytes);
}
}  // namespace

bool loadImage(const std::string& gameName, LoadedImage& image) {
    image = LoadedImage{};
    const std::string path = resolvePath(gameName);
    if (path.empty()) return false;
    SDL_Surface* surface = IMG_Load(path.c_str());
    if (!surface) return false;
    if (surface->w < 1 || surface->h < 1) {
        SDL_FreeSurface(surface);
        return false;
    }
    image.width = surface->w;
    image.height = surface->h;
    image.bytesPerPixel = surface->format->BytesPerPixel;
    image.hasAlpha = image.bytesPerPixel == 4 || (image.bytesPerPixel == 1 && hasColourKey(surface));
    // ARGB8888 lies in memory as blue, green, red, alpha; a colour key becomes alpha 0.
    SDL_Surface* converted = SDL_ConvertSurfaceFormat(surface, SDL_PIXELFORMAT_ARGB8888, 0);
    SDL_FreeSurface(surface);
    if (!converted) return false;
    const bool locked = SDL_LockSurface(converted) == 0;
    if (locked) copyRows(converted, image);
    if (locked) SDL_UnlockSurface(converted);
    SDL_FreeSurface(converted);
    return locked;
}

bool savePng(const std::string& gameName, int width, int height, const std::vector<uint8_t>& pixels) {
    if (width < 1 || height < 1 || pixels.size() < static_cast<std::size_t>(width) * height * 4) return false;
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormatFrom(const_cast<uint8_t*>(pixels.data()), width,
                                                              height, 32, width * 4, SDL_PIXELFORMAT_RGBA32);
    if (!surface) return false;
    const bool saved = IMG_SavePNG(surface, resolvePath(gameName).c_str()) == 0;
    SDL_FreeSurface(surface);
    return saved;
}

}  // namespace Platform
