// GLTexture: the value handle that the rest of the program holds.
#include "foundation/foundation.h"
#include "graphics/graphics.h"

GLTexture::GLTexture() {
    take(GLTextureManager::defaultTextureName);
}
GLTexture::GLTexture(const char* textureName) {
    take(textureName ? textureName : "");
}
GLTexture::GLTexture(const std::string& textureName) {
    take(textureName);
}
GLTexture::GLTexture(const GLTexture& other) {
    take(other.name);
}

GLTexture& GLTexture::operator=(const GLTexture& other) {
    TRACE_LOCATION("GLTexture::operator=");
    if (this == &other) return *this;
    const std::string otherName = other.name;
    GLTextureManager::freeTexture(name);
    take(otherName);
    return *this;
}

GLTexture& GLTexture::operator=(const char* textureName) {
    return *this = std::string(textureName ? textureName : "");
}

GLTexture& GLTexture::operator=(const std::string& textureName) {
    TRACE_LOCATION("GLTexture::operator=");
    std::string upper = textureName;
    slStringUpper(upper);
    if (upper == name) return *this;
    GLTextureManager::freeTexture(name);
    take(upper);
    return *this;
}

GLTexture::~GLTexture() {
    GLTextureManager::freeTexture(name);
}

// Width, height and id are copied now; a later reload keeps the id, so the copy stays good.
void GLTexture::take(const std::string& textureName) {
    TRACE_LOCATION("GLTexture::take");
    name = textureName;
    slStringUpper(name);
    const GLTextureInternal* entry = GLTextureManager::loadTexture(name);
    width = entry->width;
    height = entry->height;
    id = entry->id;
    hasAlpha = entry->hasAlpha;
}
