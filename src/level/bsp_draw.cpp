// Debug drawing of the tree: partition lines, the walk cursor, the test rays
// of the last BspCast and every node with its normal.
#include <GL/gl.h>

#include "graphics/window/window.h"
#include "level/bsp_state.h"

namespace {

using LevelBspTree::state;
using LevelBspTree::testRayCount;

constexpr float tickLength = 8.0f;
constexpr float lineReach = 9999.0f;

void segment(const Vector2D& from, const Vector2D& to) {
    GLWindow::glVertex(from);
    GLWindow::glVertex(to);
}

Vector2D midpoint(const BspNode& node) {
    return (node.start + node.end) * 0.5f;
}

// Positive side first, each node before its children.
template <typename Visit>
void positiveFirst(const BspNode* node, Visit&& visit) {
    std::vector<const BspNode*> pending;
    if (node) pending.push_back(node);
    while (!pending.empty()) {
        const BspNode* next = pending.back();
        pending.pop_back();
        visit(*next);
        if (next->negativeChild) pending.push_back(next->negativeChild);
        if (next->positiveChild) pending.push_back(next->positiveChild);
    }
}

void drawSplits() {
    positiveFirst(state().root, [](const BspNode& node) {
        glLineWidth(2.0f);
        glBegin(GL_LINES);
        glColor3f(0.0f, 0.0f, 0.0f);
        segment(node.start, node.end);
        glColor3f(1.0f, 0.0f, 0.0f);
        segment(midpoint(node), midpoint(node) + node.normal * tickLength);
        glEnd();
        glLineWidth(1.0f);
        glBegin(GL_LINES);
        glColor3f(0.0f, 0.0f, 0.0f);
        const Vector2D along = node.end - node.start;
        segment(node.start - along * lineReach, node.start + along * lineReach);
        glEnd();
    });
}

void drawCursor() {
    if (!state().cursor) return;
    glLineWidth(3.0f);
    glBegin(GL_LINES);
    glColor3f(1.0f, 1.0f, 0.0f);
    segment(state().cursor->start, state().cursor->end);
    glEnd();
    glLineWidth(4.0f);
    glBegin(GL_LINES);
    glColor3f(0.0f, 0.0f, 1.0f);
    segment(midpoint(*state().cursor), midpoint(*state().cursor) + state().cursor->normal * tickLength);
    glEnd();
}

void drawTestRays() {
    glLineWidth(1.0f);
    glBegin(GL_LINES);
    glColor3f(1.0f, 1.0f, 0.0f);
    for (int i = 0; i < testRayCount; ++i) segment(state().testRayStart[i], state().testRayEnd[i]);
    glEnd();
}

void drawNodes() {
    glLineWidth(1.0f);
    glPointSize(2.0f);
    positiveFirst(state().root, [](const BspNode& node) {
        glBegin(GL_LINES);
        if (node.collideable)
            glColor3f(0.0f, 1.0f, 0.0f);
        else
            glColor3f(1.0f, 0.0f, 0.0f);
        segment(node.start, node.end);
        glColor3f(0.0f, 0.0f, 1.0f);
        segment(midpoint(node), midpoint(node) + node.normal * tickLength);
        glEnd();
        glBegin(GL_POINTS);
        glColor3f(1.0f, 1.0f, 1.0f);
        segment(node.start, node.end);
        glEnd();
    });
}

void drawLayer(bool flag, void (*draw)()) {
    if (!flag) return;
    GLWindow::glPushState();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    draw();
    GLWindow::glPopState();
}

}  // namespace

namespace LevelBspTree {

void debugDraw() {
    TRACE_LOCATION("LevelBspTree::debugDraw");
    if (!GLWindow::contextAvailable()) return;
    drawLayer(state().splitDraw, drawSplits);
    drawLayer(state().walkDraw, drawCursor);
    drawLayer(state().castDraw, drawTestRays);
    drawLayer(state().nodeDraw, drawNodes);
}

}  // namespace LevelBspTree
