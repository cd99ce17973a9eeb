// Distance and inside tests for the drawn sprites, in pixel coordinates.
#pragma once

#include <vector>

struct Point {
    float x = 0.0f;
    float y = 0.0f;
};

float distanceToSegment(Point p, Point a, Point b);
// Even-odd rule.
bool insidePolygon(Point p, const std::vector<Point>& polygon);
float distanceToOutline(Point p, const std::vector<Point>& polygon);
// Turns p about the centre by angle radians.
Point rotateAbout(Point p, Point centre, float angle);
// 1 inside, falling to 0 over one pixel across the edge: a cheap soft edge.
float coverage(float signedDistance);
