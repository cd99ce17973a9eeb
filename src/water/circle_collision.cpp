// Until the level's edges are loaded there is nothing to collide with: every
// test reports no contact, so the water falls freely.
#include "foundation/foundation.h"
#include "water/water.h"

namespace CircleCollision {

namespace {
Vector2D collisionNormal;
float collisionFriction = 1.0f;
uint32_t contactCount = 0;

bool noContact() {
    TRACE_LOCATION("CircleCollision::noContact");
    contactCount = 0;
    collisionNormal = Vector2D();
    collisionFriction = 1.0f;
    return false;
}
}  // namespace

bool collisionTest(Vector2D*, float) {
    TRACE_LOCATION("CircleCollision::collisionTest");
    return noContact();
}

bool collisionTestStatic(Vector2D*, float) {
    TRACE_LOCATION("CircleCollision::collisionTestStatic");
    return noContact();
}

Vector2D getCollisionNormal() {
    TRACE_LOCATION("CircleCollision::getCollisionNormal");
    return collisionNormal;
}

float getCollisionFriction() {
    TRACE_LOCATION("CircleCollision::getCollisionFriction");
    return collisionFriction;
}

uint32_t getContactCount() {
    TRACE_LOCATION("CircleCollision::getContactCount");
    return contactCount;
}

}  // namespace CircleCollision
