// The shared texture store: one entry for each upper-cased name, counted by the
// handles of the thread that made it.
#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>

#include "foundation/foundation.h"
#include "graphics/graphics.h"
#include "graphics/texture_state.h"
#include "graphics/window/window.h"

namespace GLTextureManager {

State& state() {
    return singleInstance<State>();
}

namespace {

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
    for (auto& [name, entry] : state().textures) deleteGLTexture(entry.id);
    state().textures.clear();
}

void setCompressionHint(int level) {
    if (state().compressionSupported && GLWindow::contextAvailable())
        glHint(GL_TEXTURE_COMPRESSION_HINT_ARB, level < 2 ? GL_NICEST : GL_FASTEST);
}
}  // namespace

void initialise() {
    TRACE_LOCATION("GLTextureManager::initialise");
    deleteAll();
    state().anisotropicLevel = 1;
    state().textureDetailLevel = 0;
    state().compressionSupported = GLWindow::extensionSupported("GL_ARB_texture_compression");
    state().anisotropicSupported = GLWindow::extensionSupported("GL_EXT_texture_filter_anisotropic");
    setCompressionHint(0);
    state().maxAnisotropicLevel = 1;
    if (state().anisotropicSupported)
        glGetIntegerv(GL_MAX_TEXTURE_MAX_ANISOTROPY_EXT, &state().maxAnisotropicLevel);
    state().maxAnisotropicLevel = std::max(1, state().maxAnisotropicLevel);
}

void shutdown() {
    TRACE_LOCATION("GLTextureManager::shutdown");
    deleteAll();
    state().anisotropicLevel = 1;
}

GLTextureInternal* loadTexture(const std::string& name) {
    TRACE_LOCATION("GLTextureManager::loadTexture");
    const std::string key = upperCase(name);
    const auto found = state().textures.find(key);
    if (found != state().textures.end()) {
        if (ownedHere(found->second)) ++found->second.referenceCount;
        return &found->second;
    }
    GLTextureInternal& entry = state().textures[key];
    entry.name = key;
    entry.ownerThread = std::this_thread::get_id();
    if (GLWindow::contextAvailable()) glGenTextures(1, &entry.id);
    entry.load();
    entry.referenceCount = 1;
    return &entry;
}

void freeTexture(const std::string& name) {
    TRACE_LOCATION("GLTextureManager::freeTexture");
    const auto found = state().textures.find(upperCase(name));
    if (found == state().textures.end()) return;
    GLTextureInternal& entry = found->second;
    // Another thread's handles neither keep an entry alive nor free it.
    if (!ownedHere(entry)) return;
    if (--entry.referenceCount > 0) return;
    deleteGLTexture(entry.id);
    state().textures.erase(found);
}

void reloadAllTextures() {
    TRACE_LOCATION("GLTextureManager::reloadAllTextures");
    for (auto& [name, entry] : state().textures)
        if (ownedHere(entry)) entry.load();
}

void setTextureDetailLevel(int level) {
    TRACE_LOCATION("GLTextureManager::setTextureDetailLevel");
    if (level == state().textureDetailLevel || level < 0 || level >= 3) return;
    state().textureDetailLevel = level;
    setCompressionHint(level);
    reloadAllTextures();
}

int getTextureDetailLevel() {
    TRACE_LOCATION("GLTextureManager::getTextureDetailLevel");
    return state().textureDetailLevel;
}

void setAnisotropicFilteringLevel(int level) {
    TRACE_LOCATION("GLTextureManager::setAnisotropicFilteringLevel");
    if (!state().anisotropicSupported) return;
    state().anisotropicLevel = std::clamp(level, 1, state().maxAnisotropicLevel);
    if (!GLWindow::contextAvailable()) return;
    // A parameter of each texture, no reload.
    for (auto& [name, entry] : state().textures) {
        glBindTexture(GL_TEXTURE_2D, entry.id);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_ANISOTROPY_EXT, state().anisotropicLevel);
    }
}

int getAnisotropicFilteringLevel() {
    TRACE_LOCATION("GLTextureManager::getAnisotropicFilteringLevel");
    return state().anisotropicLevel;
}

unsigned int getTextureBytesUsed() {
    TRACE_LOCATION("GLTextureManager::getTextureBytesUsed");
    unsigned int bytes = 0;
    for (const auto& [name, entry] : state().textures)
        bytes += static_cast<unsigned int>(entry.width * entry.height * 4);
    return bytes;
}

void getTextureList(std::vector<std::string>& list) {
    TRACE_LOCATION("GLTextureManager::getTextureList");
    for (const auto& [name, entry] : state().textures) {
        std::string line = name;
        if (!entry.loaded) line += " (loading failed) ";
        line += " : " + std::to_string(entry.bytesPerPixel * 8) + " BIT";
        list.push_back(line);
    }
}

const GLTextureInternal* findTexture(const std::string& name) {
    TRACE_LOCATION("GLTextureManager::findTexture");
    const auto found = state().textures.find(upperCase(name));
    return found == state().textures.end() ? nullptr : &found->second;
}

}  // namespace GLTextureManager
