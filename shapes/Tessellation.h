#pragma once

#include <functional>
#include <osg/Array>
#include <osg/Matrixd>
#include <vector>

// What the shape builders share: segment counts, the angle rules of swept
// solids, revolving a profile about the local z axis, sampling curves and
// surfaces, and poses. A builder states only its own profile or function.
namespace Tessellation {

// Segment counts, kept in one place.
constexpr int kRevolveSegments = 40;  // cylinder, cone, tube, torus section
constexpr int kSphereSlices = 40;
constexpr int kSphereStacks = 20;
constexpr int kTorusSweepSegments = 20;
constexpr int kCircleSegments = 80;
constexpr int kEllipseSegments = 40;
constexpr int kArcSegments = 40;
constexpr int kCurveSamples = 64;    // spline curves
constexpr int kSurfaceSamples = 24;  // spline and analytic surfaces, per direction

constexpr float kPi = 3.1415927f;
constexpr float kTwoPi = 6.2831855f;
float radians(float degrees);

// A start angle and a sweep in radians, from degrees: a sweep below 1e-8
// rad is empty; above 2 pi it is reduced by whole turns, an exact multiple
// of 360 degrees becoming exactly 2 pi.
struct Sweep {
    float start = 0, sweep = kTwoPi;
    bool empty = false;
    static Sweep fromDegrees(float startDegrees, float sweepDegrees);
};

// A point of a profile in the (r, z) half plane with its outward normal.
// edge: outlined as a ring in the surface form.
struct ProfilePoint {
    float r, z, nr, nz;
    bool edge = false;
};
// Consecutive points of one run form bands; runs meet at sharp corners.
using Profile = std::vector<std::vector<ProfilePoint>>;

// A sphere's half circle from the south pole up, one point a stack.
Profile sphereProfile(float radius);
// A closed cylinder: bottom cap, side, top cap, the rims outlined.
Profile cylinderProfile(float radius, float height);

struct Mesh {
    osg::Vec3Array& vertices;
    osg::Vec3Array& normals;
    std::vector<unsigned int>* outline = nullptr;  // ring edges, as index pairs
};

// Each band turned through the sweep in `segments` steps, scaled by
// `scale` (ellipsoids and elliptic cylinders), two triangles a step; a band
// starting on the axis gives one triangle a step when `apexFans`.
void revolveSurface(const Profile& profile, const Sweep& sweep, int segments, Mesh out,
                    const osg::Vec3& scale = osg::Vec3(1, 1, 1), bool apexFans = false);
// Rings at every profile point off the axis and meridians at every step.
void revolveLines(const Profile& profile, const Sweep& sweep, int segments,
                  osg::Vec3Array& vertices, const osg::Vec3& scale = osg::Vec3(1, 1, 1));

// A polyline through f(u) for u in [0, 1], as line pairs.
void sampleCurve(const std::function<osg::Vec3(float)>& f, int samples, osg::Vec3Array& vertices);
// Triangles of f(u, v) over [0, 1]^2 with normals from its tangents.
void sampleSurface(const std::function<osg::Vec3(float, float)>& f, int samplesU, int samplesV,
                   Mesh out);
// The grid lines of the same surface.
void sampleSurfaceLines(const std::function<osg::Vec3(float, float)>& f, int samplesU, int samplesV,
                        osg::Vec3Array& vertices);

// Local +z onto the axis, then to the centre.
osg::Matrixd poseByAxis(const osg::Vec3& centre, const osg::Vec3& axis);
// About x, then y, then z, by angles in degrees, then to the centre.
osg::Matrixd poseByAngles(const osg::Vec3& centre, const osg::Vec3& degrees);

}  // namespace Tessellation
