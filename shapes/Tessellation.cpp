#include "Tessellation.h"

#include <cmath>
#include <osg/Quat>

namespace Tessellation {

float radians(float degrees) {
    return degrees * kPi / 180.0f;
}

Sweep Sweep::fromDegrees(float startDegrees, float sweepDegrees) {
    Sweep s;
    s.start = radians(startDegrees);
    s.sweep = radians(sweepDegrees);
    if (!(double(s.sweep) >= 1e-8)) {
        s.empty = true;
        s.sweep = 0;
    } else if (s.sweep > kTwoPi) {
        const double rem = sweepDegrees - std::trunc(sweepDegrees / 360.0) * 360.0;
        s.sweep = std::fabs(rem) < 1e-8 ? kTwoPi : float(rem * M_PI / 180.0);
    }
    return s;
}

Profile sphereProfile(float radius) {
    std::vector<ProfilePoint> arc;
    for (int i = 0; i <= kSphereStacks; ++i) {
        const float latitude = -1.5707964f + kPi / float(kSphereStacks) * float(i);
        const float c = std::cos(latitude), s = std::sin(latitude);
        arc.push_back({radius * c, radius * s, c, s});
    }
    return {arc};
}

Profile cylinderProfile(float radius, float height) {
    const float h = 0.5f * height;
    return {{{0, -h, 0, -1}, {radius, -h, 0, -1, true}},
            {{radius, -h, 1, 0, true}, {radius, h, 1, 0, true}},
            {{radius, h, 0, 1, true}, {0, h, 0, 1}}};
}

namespace {

osg::Vec3 at(const ProfilePoint& p, float angle, const osg::Vec3& scale) {
    return osg::Vec3(p.r * std::cos(angle) * scale.x(), p.r * std::sin(angle) * scale.y(),
                     p.z * scale.z());
}

// A normal through a scaling turns by the inverse scale.
osg::Vec3 normalAt(float nr, float nz, float angle, const osg::Vec3& scale) {
    osg::Vec3 n(nr * std::cos(angle) / scale.x(), nr * std::sin(angle) / scale.y(), nz / scale.z());
    n.normalize();
    return n;
}

}  // namespace

void revolveSurface(const Profile& profile, const Sweep& sweep, int segments, Mesh out,
                    const osg::Vec3& scale, bool apexFans) {
    if (sweep.empty) return;
    const float step = sweep.sweep / float(segments);
    for (const std::vector<ProfilePoint>& run : profile)
        for (size_t k = 0; k + 1 < run.size(); ++k) {
            const ProfilePoint &a = run[k], &b = run[k + 1];
            for (int i = 0; i < segments; ++i) {
                const float t0 = sweep.start + step * float(i), t1 = t0 + step;
                const unsigned int first = static_cast<unsigned int>(out.vertices.size());
                auto put = [&](const ProfilePoint& p, float angle) {
                    out.vertices.push_back(at(p, angle, scale));
                    out.normals.push_back(normalAt(p.nr, p.nz, angle, scale));
                };
                if (apexFans && a.r == 0.0f) {
                    put(a, 0.5f * (t0 + t1));
                    put(b, t0);
                    put(b, t1);
                    if (out.outline && b.edge)
                        out.outline->insert(out.outline->end(), {first + 1, first + 2});
                    continue;
                }
                put(a, t0);
                put(b, t0);
                put(b, t1);
                put(a, t0);
                put(b, t1);
                put(a, t1);
                if (!out.outline) continue;
                if (a.edge) out.outline->insert(out.outline->end(), {first, first + 5});
                if (b.edge) out.outline->insert(out.outline->end(), {first + 1, first + 2});
            }
        }
}

void revolveLines(const Profile& profile, const Sweep& sweep, int segments,
                  osg::Vec3Array& vertices, const osg::Vec3& scale) {
    if (sweep.empty) return;
    const float step = sweep.sweep / float(segments);
    for (const std::vector<ProfilePoint>& run : profile) {
        for (const ProfilePoint& p : run) {
            if (p.r == 0.0f) continue;
            for (int i = 0; i < segments; ++i) {
                vertices.push_back(at(p, sweep.start + step * float(i), scale));
                vertices.push_back(at(p, sweep.start + step * float(i + 1), scale));
            }
        }
        for (int i = 0; i <= segments; ++i)
            for (size_t k = 0; k + 1 < run.size(); ++k) {
                vertices.push_back(at(run[k], sweep.start + step * float(i), scale));
                vertices.push_back(at(run[k + 1], sweep.start + step * float(i), scale));
            }
    }
}

void sampleCurve(const std::function<osg::Vec3(float)>& f, int samples, osg::Vec3Array& vertices) {
    osg::Vec3 previous = f(0.0f);
    for (int i = 1; i <= samples; ++i) {
        const osg::Vec3 next = f(float(i) / float(samples));
        vertices.push_back(previous);
        vertices.push_back(next);
        previous = next;
    }
}

void sampleSurface(const std::function<osg::Vec3(float, float)>& f, int samplesU, int samplesV,
                   Mesh out) {
    const float du = 1.0f / float(samplesU), dv = 1.0f / float(samplesV);
    auto normal = [&](float u, float v) {
        const float e = 1e-3f;
        const float u0 = std::max(0.0f, u - e), u1 = std::min(1.0f, u + e);
        const float v0 = std::max(0.0f, v - e), v1 = std::min(1.0f, v + e);
        osg::Vec3 n = (f(u1, v) - f(u0, v)) ^ (f(u, v1) - f(u, v0));
        n.normalize();
        return n;
    };
    for (int i = 0; i < samplesU; ++i)
        for (int j = 0; j < samplesV; ++j) {
            const float u0 = du * float(i), u1 = u0 + du, v0 = dv * float(j), v1 = v0 + dv;
            for (auto [u, v] :
                 {std::pair{u0, v0}, {u1, v0}, {u1, v1}, {u0, v0}, {u1, v1}, {u0, v1}}) {
                out.vertices.push_back(f(u, v));
                out.normals.push_back(normal(u, v));
            }
        }
}

void sampleSurfaceLines(const std::function<osg::Vec3(float, float)>& f, int samplesU, int samplesV,
                        osg::Vec3Array& vertices) {
    for (int i = 0; i <= samplesU; ++i) {
        const float u = float(i) / float(samplesU);
        sampleCurve([&](float v) { return f(u, v); }, samplesV, vertices);
    }
    for (int j = 0; j <= samplesV; ++j) {
        const float v = float(j) / float(samplesV);
        sampleCurve([&](float u) { return f(u, v); }, samplesU, vertices);
    }
}

osg::Matrixd poseByAxis(const osg::Vec3& centre, const osg::Vec3& axis) {
    osg::Quat q;
    q.makeRotate(osg::Vec3d(0, 0, 1), osg::Vec3d(axis));
    return osg::Matrixd::rotate(q) * osg::Matrixd::translate(centre);
}

osg::Matrixd poseByAngles(const osg::Vec3& centre, const osg::Vec3& degrees) {
    const double k = M_PI / 180.0;
    const osg::Quat q(degrees.x() * k, osg::Vec3d(1, 0, 0), degrees.y() * k, osg::Vec3d(0, 1, 0),
                      degrees.z() * k, osg::Vec3d(0, 0, 1));
    return osg::Matrixd::rotate(q) * osg::Matrixd::translate(centre);
}

}  // namespace Tessellation
