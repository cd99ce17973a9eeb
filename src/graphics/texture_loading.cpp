// The load road of one stored texture, the checkerboard that stands in for a
// missing image, and the upload of pixels with their mipmaps.
#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>

#include <algorithm>

#include "foundation/foundation.h"
#include "graphics/graphics.h"
#include "graphics/texture_state.h"
#include "graphics/window/window.h"
#include "platform/image_loading.h"

namespace {
constexpr int defaultSize = 16;

bool endsWith(const std::string& text, const char* suffix) {
    const std::size_t length = std::char_traits<char>::length(suffix);
    return text.size() >= length && text.compare(text.size() - length, length, suffix) == 0;
}

// White where x + y is even, black where it is odd: a missing image shows on screen.
std::vector<uint8_t> checkerboard() {
    std::vector<uint8_t> pixels(defaultSize * defaultSize * 4);
    for (int y = 0; y < defaultSize; ++y)
        for (int x = 0; x < defaultSize; ++x) {
            const uint8_t shade = (x + y) % 2 == 0 ? 255 : 0;
            uint8_t* pixel = &pixels[(y * defaultSize + x) * 4];
            pixel[0] = pixel[1] = pixel[2] = shade;
            pixel[3] = 255;
        }
    return pixels;
}

GLenum internalFormat(int detailLevel) {
    if (detailLevel == 0) return GL_RGBA;
    return GLTextureManager::state().compressionSupported ? GL_COMPRESSED_RGBA_ARB : GL_RGBA4;
}
}  // namespace

void GLTextureInternal::load() {
    TRACE_LOCATION("GLTextureInternal::load");
    width = height = bytesPerPixel = 0;
    hasAlpha = false;
    loaded = true;
    if (endsWith(name, ".TGA") && GLTga32Loader::load(name, id, width, height)) {
        bytesPerPixel = 4;
        hasAlpha = true;
        return;
    }
    Platform::LoadedImage image;
    if (Platform::loadImage(name, image)) {
        width = image.width;
        height = image.height;
        bytesPerPixel = image.bytesPerPixel;
        hasAlpha = image.hasAlpha;
        GLTextureManager::uploadTexture32(id, image.pixels.data(), width, height);
        return;
    }
    width = height = defaultSize;
    bytesPerPixel = 4;
    loaded = false;
    GLTextureManager::uploadTexture32(id, checkerboard().data(), width, height);
}

namespace GLTextureManager {

void uploadTexture32(unsigned int id, const uint8_t* pixels, int width, int height) {
    TRACE_LOCATION("loadGLTexture32::load");
    if (width <= 0 || height <= 0 || !pixels || !GLWindow::contextAvailable()) return;
    glBindTexture(GL_TEXTURE_2D, id);
    if (state().anisotropicSupported)
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_ANISOTROPY_EXT, state().anisotropicLevel);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    const int level = state().textureDetailLevel;
    if (level < 2) {
        gluBuild2DMipmaps(GL_TEXTURE_2D, internalFormat(level), width, height, GL_BGRA, GL_UNSIGNED_BYTE,
                          pixels);
        return;
    }
    const int halfWidth = std::max(1, width / 2);
    const int halfHeight = std::max(1, height / 2);
    std::vector<uint8_t> half(static_cast<std::size_t>(halfWidth) * halfHeight * 4);
    gluScaleImage(GL_BGRA, width, height, GL_UNSIGNED_BYTE, pixels, halfWidth, halfHeight, GL_UNSIGNED_BYTE,
                  half.data());
    gluBuild2DMipmaps(GL_TEXTURE_2D, internalFormat(level), halfWidth, halfHeight, GL_BGRA, GL_UNSIGNED_BYTE,
                      half.data());
}

}  // namespace GLTextureManager
