#include "ShapeFactory.h"

#include <cmath>

#include "Qel3DShape.h"
#include "ShapeAdapters.h"

namespace {

osg::Vec3 vec(const QelVector3d& v) {
    return osg::Vec3(v.x, v.y, v.z);
}

// A z strictly inside the float range: the data layer's unset point has z
// at the largest float.
bool setPoint(const QelVector3d& v) {
    return v.z > -3.4028235e38f && v.z < 3.4028235e38f;
}

using Made = std::unique_ptr<Shape>;
using Maker = Made (*)(const Qel3DShape&, ObjectId);

struct Row {
    int kind;
    Maker make;
};

// One row a kind: fetch the parameters, then build. Each maker returns null
// when the getter refuses.
const Row kDispatch[] = {
    {QEL_3D_POINT,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d p;
         if (!s.Get3DPoint(&p) || !setPoint(p)) return nullptr;
         return std::make_unique<ShapePointSphere>(id, vec(p));
     }},
    {QEL_3D_LINE,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d a, b;
         Qel3DLineType type{};
         if (!s.Get3DLine(&a, &b, &type) || !setPoint(a) || !setPoint(b)) return nullptr;
         return std::make_unique<ShapeLine>(id, vec(a), vec(b), int(type));
     }},
    {QEL_3D_CIRCLE,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, n;
         float r = 0;
         if (!s.Get3DCircle(&c, &n, &r)) return nullptr;
         return std::make_unique<ShapeCircle>(id, vec(c), vec(n), r);
     }},
    {QEL_3D_PLANE,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d p, n;
         if (!s.Get3DPlane(&p, &n)) return nullptr;
         return std::make_unique<ShapePlane>(id, vec(p), vec(n));
     }},
    {QEL_3D_BOX,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, a, size;
         if (!s.Get3DBox(&c, &a, &size)) return nullptr;
         return std::make_unique<ShapeBox>(id, vec(c), vec(a), vec(size));
     }},
    {QEL_3D_SPHERE,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c;
         float r = 0;
         if (!s.Get3DSphere(&c, &r)) return nullptr;
         return std::make_unique<ShapeSphere>(id, vec(c), r);
     }},
    {QEL_3D_CYLINDER,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, axis;
         float r = 0, h = 0;
         if (!s.Get3DCylinder(&c, &axis, &r, &h)) return nullptr;
         return std::make_unique<ShapeCylinder>(id, vec(c), vec(axis), r, h);
     }},
    {QEL_3D_TRIANGLE,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d a, b, c;
         if (!s.Get3DTriangle(&a, &b, &c)) return nullptr;
         return std::make_unique<ShapeTriangle>(id, vec(a), vec(b), vec(c));
     }},
    {QEL_3D_POLYGON,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3dArray corners;
         if (!s.Get3DPolygon(&corners)) return nullptr;
         std::vector<osg::Vec3> points;
         for (int i = 0; i < corners.Length(); ++i)
             points.push_back(vec(corners[i]));
         return std::make_unique<ShapePolygon>(id, points);
     }},
    {QEL_3D_ELLIPSE,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, a;
         float ra = 0, rb = 0;
         if (!s.Get3DEllipse(&c, &a, &ra, &rb)) return nullptr;
         return std::make_unique<ShapeEllipse>(id, vec(c), vec(a), ra, rb);
     }},
    {QEL_3D_ELLIPSOID,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, a, r;
         if (!s.Get3DEllipsoid(&c, &a, &r)) return nullptr;
         return std::make_unique<ShapeEllipsoid>(id, vec(c), vec(a), vec(r));
     }},
    {QEL_3D_RECT,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, a;
         float w = 0, h = 0;
         if (!s.Get3DRect(&c, &a, &w, &h)) return nullptr;
         return std::make_unique<ShapeRect>(id, vec(c), vec(a), w, h);
     }},
    {QEL_3D_TORUS,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, a;
         float inner = 0, outer = 0, start = 0, sweep = 0;
         Qel3DTorusType type{};
         if (!s.Get3DTorus(&c, &a, &inner, &outer, &start, &sweep, &type)) return nullptr;
         return std::make_unique<ShapeTorus>(id, vec(c), vec(a), inner, outer, start, sweep,
                                             int(type));
     }},
    {QEL_3D_TUBE,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, axis;
         float inner = 0, outer = 0, h = 0, start = 0, sweep = 0;
         if (!s.Get3DTube(&c, &axis, &inner, &outer, &h, &start, &sweep)) return nullptr;
         return std::make_unique<ShapeTube>(id, vec(c), vec(axis), inner, outer, h, start, sweep);
     }},
    {QEL_3D_ARC,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, a;
         float r = 0, start = 0, sweep = 0;
         if (!s.Get3DArc(&c, &a, &r, &start, &sweep)) return nullptr;
         return std::make_unique<ShapeArc>(id, vec(c), vec(a), r, start, sweep);
     }},
    {QEL_3D_ANY_SHAPE,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         Qel3DLineSet set;
         if (!s.Get3DAnyShape(&set)) return nullptr;
         std::vector<osg::Vec3> points;
         for (int i = 0; i < set.NumVertex(); ++i) {
             const float* p = set.VertexData() + 3 * i;
             points.emplace_back(p[0], p[1], p[2]);
         }
         const int* l = set.LineData();
         std::vector<unsigned int> lines;
         for (int i = 0; i < 2 * set.NumLine(); ++i)
             lines.push_back(static_cast<unsigned int>(l[i]));
         return std::make_unique<ShapeAnyShape>(id, points, lines);
     }},
    {QEL_3D_CONE,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, axis;
         float r = 0, h = 0, start = 0, sweep = 0;
         if (!s.Get3DCone(&c, &axis, &r, &h, &start, &sweep)) return nullptr;
         return std::make_unique<ShapeCone>(id, vec(c), vec(axis), r, h, start, sweep);
     }},
    {QEL_3D_ELLIPTIC_CYLINDER,
     [](const Qel3DShape& s, ObjectId id) -> Made {
         QelVector3d c, a;
         float ra = 0, rb = 0, h = 0;
         if (!s.Get3DEllipticCylinder(&c, &a, &ra, &rb, &h)) return nullptr;
         return std::make_unique<ShapeEllipticCylinder>(id, vec(c), vec(a), ra, rb, h);
     }},
};

}  // namespace

std::unique_ptr<Shape> createShape(const Qel3DShape& shape, ObjectId id) {
    const unsigned int kind = static_cast<unsigned int>(shape.ShapeType3D());
    for (const Row& row : kDispatch)
        if (static_cast<unsigned int>(row.kind) == kind) return row.make(shape, id);
    return nullptr;
}
