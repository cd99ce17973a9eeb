// One mover: a point that runs along its path at a fixed speed, by its state.
#include "dynamics/dynamics.h"

namespace {
// A step of no length would leave a mover of length 0 in its state for ever.
constexpr float shortestStep = 1e-7f;
}  // namespace

void Mover::setStartPoint(const Vector2D& point) {
    TRACE_LOCATION("Mover::setStartPoint");
    start = point;
    updatePath();
}

void Mover::setEndPoint(const Vector2D& point) {
    TRACE_LOCATION("Mover::setEndPoint");
    end = point;
    updatePath();
}

void Mover::updatePath() {
    TRACE_LOCATION("Mover::updatePath");
    const Vector2D path = end - start;
    length = ::length(path);
    direction = length > 0.0f ? path / length : Vector2D();
}

void Mover::reset() {
    TRACE_LOCATION("Mover::reset");
    position = 0.0f;
    state = stopped;
}

void Mover::run(float dt) {
    TRACE_LOCATION("Mover::run");
    const float d = speed * (dt < shortestStep ? shortestStep : dt);
    switch (state) {
        case toEnd:
        case loopToEnd:
            position += d;
            // Landing exactly on the end is not yet passing it.
            if (position > length) {
                position = length;
                state = state == toEnd ? stopped : loopToStart;
            }
            break;
        case toStart:
        case loopToStart:
            position -= d;
            if (position < 0.0f) {
                position = 0.0f;
                state = state == toStart ? stopped : loopToEnd;
            }
            break;
        default:
            break;
    }
}
