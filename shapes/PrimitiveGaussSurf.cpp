#include "PrimitiveGaussSurf.h"

#include <cmath>

#include "Tessellation.h"

PrimitiveGaussSurf::PrimitiveGaussSurf(const osg::Vec3& centre, const osg::Vec3& angles,
                                       float amplitude, float sigmaX, float sigmaY, float extent)
    : PrimitiveParametricSurface([=](float u, float v) {
          const float x = (2 * u - 1) * extent, y = (2 * v - 1) * extent;
          const float sx = sigmaX != 0 ? sigmaX : 1, sy = sigmaY != 0 ? sigmaY : 1;
          return osg::Vec3(x, y,
                           amplitude * std::exp(-(x * x / (2 * sx * sx) + y * y / (2 * sy * sy))));
      }) {
    setPose(Tessellation::poseByAngles(centre, angles));
}
