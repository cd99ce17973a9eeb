// The shared texture store: one entry for each upper-cased name, counted by the
// handles of the thread that made it.
#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>

#include "foundation/foundation.h"
#include "graphics/graphics.h"
#include "graphics/window/window.h"

namespace GLTextureManager {

namespace {
std::map<std::string, GLTextureInternal> textures;
int textureDetailLevel = 0;
int anisotropicLevel = 1;
int maxAnisotropicLevel = 1;
bool anisotropicSupported = false;
bool compressionSupported = false;

std::string upperCase(const std::string& name) {
    std::string upper = name;
    slStringUpper(upper);
    return upper;
}

bool ownedHere(const GLTextureInternal& entry) {
    return entry.ownerThread == std::this_thread::get_id();
}

void deleteGLTexture(unsigned int id) {
    if (id != 0 && GLWindow::contextAvailable()) glDeleteTextures(1, &id);
}

void deleteAll() {
    for (auto& [name, entry] : textures) deleteGLTexture(entry.id);
    textures.clear();
}

void setCompressionHint(int level) {
    if (compressionSupported && GLWindow::contextAvailable())
        glHint(GL_TEXTURE_COMPRESSION_HINT_ARB, level < 2 ? GL_NICEST : GL_FASTEST);
}
}  // namespace

void initialise() {
    TRACE_LOCATION("GLTextureManager::initialise");
    deleteAll();
    anisotropicLevel = 1;
    textureDetailLevel = 0;
    compressionSupported = GLWindow::extensionSupported("GL_ARB_texture_compression");
    anisotropicSupported = GLWindow::extensionSupported("GL_EXT_texture_filter_anisotropic");
    setCompressionHint(0);
    maxAnisotropicLevel = 1;
    if (anisotropicSupported) glGetIntegerv(GL_MAX_TEXTURE_MAX_ANISOTROPY_EXT, &maxAnisotropicLevel);
    maxAnisotropicLevel = std::max(1, maxAnisotropicLevel);
}

void shutdown() {
    TRACE_LOCATION("GLTextureManager::shutdown");
    deleteAll();
    anisotropicLevel = 1;
}

GLTextureInternal* loadTexture(const std::string& name) {
    TRACE_LOCATION("GLTextureManager::loadTexture");
    const std::string key = upperCase(name);
    const auto found = textures.find(key);
    if (found != textures.end()) {
        if (ownedHere(found->second)) ++found->second.referenceCount;
        return &found->second;
    }
    GLTextureInternal& entry = textures[key];
    entry.name = key;
    entry.ownerThread = std::this_thread::get_id();
    if (GLWindow::contextAvailable()) glGenTextures(1, &entry.id);
    entry.load();
    entry.referenceCount = 1;
    return &entry;
}

void freeTexture(const std::string& name) {
    TRACE_LOCATION("GLTextureManager::freeTexture");
    const auto found = textures.find(upperCase(name));
    if (found == textures.end()) return;
    GLTextureInternal& entry = found->second;
    // Another thread's handles neither keep an entry alive nor free it.
    if (!ownedHere(entry)) return;
    if (--entry.referenceCount > 0) return;
    deleteGLTexture(entry.id);
    textures.erase(found);
}

void reloadAllTextures() {
    TRACE_LOCATION("GLTextureManager::reloadAllTextures");
    for (auto& [name, entry] : textures)
        if (ownedHere(entry)) entry.load();
}

void setTextureDetailLevel(int level) {
    TRACE_LOCATION("GLTextureManager::setTextureDetailLevel");
    if (level == textureDetailLevel || level < 0 || level >= 3) return;
    textureDetailLevel = level;
    setCompressionHint(level);
    reloadAllTextures();
}

int getTextureDetailLevel() {
    return textureDetailLevel;
}

void setAnisotropicFilteringLevel(int level) {
    TRACE_LOCATION("GLTextureManager::setAnisotropicFilteringLevel");
    if (!anisotropicSupported) return;
    anisotropicLevel = std::clamp(level, 1, maxAnisotropicLevel);
    if (!GLWindow::contextAvailable()) return;
    // A parameter of each texture, no reload.
    for (auto& [name, entry] : textures) {
        glBindTexture(GL_TEXTURE_2D, entry.id);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_ANISOTROPY_EXT, anisotropicLevel);
    }
}

int getAnisotropicFilteringLevel() {
    return anisotropicLevel;
}
int getMaxAnisotropicLevel() {
    return maxAnisotropicLevel;
}
bool supportsAnisotropic() {
    return anisotropicSupported;
}
bool supportsCompression() {
    return compressionSupported;
}

unsigned int getTextureBytesUsed() {
    unsigned int bytes = 0;
    for (const auto& [name, entry] : textures)
        bytes += static_cast<unsigned int>(entry.width * entry.height * 4);
    return bytes;
}

void getTextureList(std::vector<std::string>& list) {
    for (const auto& [name, entry] : textures) {
        std::string line = name;
        if (!entry.loaded) line += " (loading failed) ";
        line += " : " + std::to_string(entry.bytesPerPixel * 8) + " BIT";
        list.push_back(line);
    }
}

const GLTextureInternal* findTexture(const std::string& name) {
    const auto found = textures.find(upperCase(name));
    return found == textures.end() ? nullptr : &found->second;
}

}  // namespace GLTextureManager
