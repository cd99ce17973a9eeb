// Drawing the effect particles: one quad each, in batches that share a texture
// and a blend mode, since a level can hold thousands of them and binds are dear.
#include <GL/gl.h>

#include <algorithm>
#include <functional>

#include "dynamics/dynamics.h"
#include "dynamics/fx_particle_state.h"
#include "graphics/textured_quad.h"
#include "graphics/window/window.h"

namespace {

// Orders the heap by texture entry, so that popping it yields each entry's particles together.
bool laterTexture(const FxParticle* a, const FxParticle* b) {
    return std::less<const GLTexture*>()(a->texture, b->texture);
}

// A particle made without an emitter has no texture and is drawn untextured.
unsigned int textureId(const FxParticle& particle) {
    return particle.texture ? particle.texture->id : 0;
}

void setBlending(bool alphaBlending) {
    glBlendFunc(GL_SRC_ALPHA, alphaBlending ? GL_ONE_MINUS_SRC_ALPHA : GL_ONE);
}

// No rotation and no change of size: a particle fades by its alpha alone, linearly over its life.
void emitQuad(const FxParticle& particle) {
    const float half = particle.size * 0.5f;
    const float x = particle.position.x, y = particle.position.y;
    glColor4f(particle.color.r, particle.color.g, particle.color.b,
              particle.lifeLeft / particle.lifeTotal * particle.color.a);
    texturedQuadVertices(x - half, y - half, x + half, y + half);
}

}  // namespace

namespace FxParticleManager {

void draw() {
    TRACE_LOCATION("FxParticleManager::draw");
    State& s = state();
    if (s.particles.empty() || !GLWindow::contextAvailable()) return;
    std::vector<const FxParticle*>& heap = s.drawHeap;
    heap.clear();
    for (const FxParticle& particle : s.particles) heap.push_back(&particle);
    std::make_heap(heap.begin(), heap.end(), laterTexture);
    bool alphaBlending = true;
    setBlending(alphaBlending);
    while (!heap.empty()) {
        std::pop_heap(heap.begin(), heap.end(), laterTexture);
        const FxParticle& first = *heap.back();
        heap.pop_back();
        glBindTexture(GL_TEXTURE_2D, textureId(first));
        if (first.useAlphaBlending != alphaBlending) {
            alphaBlending = first.useAlphaBlending;
            setBlending(alphaBlending);
        }
        glBegin(GL_QUADS);
        emitQuad(first);
        while (!heap.empty() && textureId(*heap.front()) == textureId(first) &&
               heap.front()->useAlphaBlending == alphaBlending) {
            std::pop_heap(heap.begin(), heap.end(), laterTexture);
            emitQuad(*heap.back());
            heap.pop_back();
        }
        glEnd();
    }
    // What is drawn after the effects expects the game's usual blending.
    if (!alphaBlending) setBlending(true);
}

// Emitters have no drawing of their own; FxEmitterDraw is kept for the console's sake.
void debugDraw() {
    TRACE_LOCATION("FxParticleManager::debugDraw");
}

}  // namespace FxParticleManager
