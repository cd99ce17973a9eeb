// The trigger manager's file-level state, shared by its source files only.
#pragma once

#include <list>
#include <map>

#include "dynamics/dynamics.h"

namespace TriggerManager {

struct State {
    std::list<Trigger> triggers;
    std::list<DelayedTriggerEvent> delayedEvents;
    std::map<int32_t, TriggerType> types;
    bool drawTriggers = false;
};
State& state();

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

// Points on an edge count as inside.
inline bool insideTriangle(const Vector2D& p, const TriggerTriangle& t) {
    TRACE_LOCATION("TriggerManager::insideTriangle");
    for (int i = 0; i < 3; ++i)
        if (dot(p - t.corners[i], t.normals[i]) < 0.0f) return false;
    return true;
}
inline bool insideTrigger(const Vector2D& p, const Trigger& trigger) {
    TRACE_LOCATION("TriggerManager::insideTrigger");
    return insideTriangle(p, trigger.first) || insideTriangle(p, trigger.second);
}

}  // namespace TriggerManager
