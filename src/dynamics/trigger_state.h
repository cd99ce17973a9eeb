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

}  // namespace TriggerState
