#include "PrimitivePolynomialSurf.h"

#include "Tessellation.h"

PrimitivePolynomialSurf::PrimitivePolynomialSurf(const osg::Vec3& centre, const osg::Vec3& angles,
                                                 const std::vector<float>& coefficients, int order,
                                                 float extent)
    : PrimitiveParametricSurface([=](float u, float v) {
          const float x = (2 * u - 1) * extent, y = (2 * v - 1) * extent;
          float z = 0, xi = 1;
          for (int i = 0; i <= order; ++i, xi *= x) {
              float yj = 1;
              for (int j = 0; j <= order; ++j, yj *= y) {
                  const size_t k = size_t(i) * size_t(order + 1) + size_t(j);
                  if (k < coefficients.size()) z += coefficients[k] * xi * yj;
              }
          }
          return osg::Vec3(x, y, z);
      }) {
    setPose(Tessellation::poseByAngles(centre, angles));
}
