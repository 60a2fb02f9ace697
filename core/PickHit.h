#pragma once

#include <osg/Vec3d>

#include "SceneModes.h"

// What a pick found: the render object, the element (a cloud's point by the
// host's index, else the vertex or primitive of the drawn geometry; -1 when
// not known) and the point in world coordinates.
struct PickHit {
    ObjectId object = 0;  // 0: none of the render objects
    long long element = -1;
    osg::Vec3d position;
};
