// The trigger manager's file-level state, shared by its source files only.
#pragma once

#include <list>
#include <map>

#include "dynamics/dynamics.h"

namespace TriggerState {

extern std::list<Trigger> triggers;
extern std::list<DelayedTriggerEvent> delayedEvents;
extern std::map<int32_t, TriggerType> types;
extern bool drawTriggers;

// The square about the view inside which triggers are tested.
struct ActiveBox {
    float centreX = 0.0f, centreY = 0.0f, halfWidth = 0.0f;
    bool touches(const Trigger& trigger) const {
        return trigger.minX <= centreX + halfWidth && trigger.minY <= centreY + halfWidth &&
               trigger.maxX >= centreX - halfWidth && trigger.maxY >= centreY - halfWidth;
    }
};
ActiveBox activeBox();

bool limitReached(const Trigger& trigger);

// The inside test without the location trace, for the per-particle loop; the
// same arithmetic as dot(p - corner, normal), so that points on an edge count.
inline bool insideTriangle(const Vector2D& p, const TriggerTriangle& t) {
    for (int i = 0; i < 3; ++i) {
        const Vector2D q = p - t.corners[i];
        const double d =
            static_cast<double>(q.x) * t.normals[i].x + static_cast<double>(q.y) * t.normals[i].y;
        if (static_cast<float>(d) < 0.0f) return false;
    }
    return true;
}
inline bool insideTrigger(const Vector2D& p, const Trigger& trigger) {
    return insideTriangle(p, trigger.first) || insideTriangle(p, trigger.second);
}

}  // namespace TriggerState
