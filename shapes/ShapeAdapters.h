#pragma once

#include <utility>

#include "PrimitiveAnyShape.h"
#include "PrimitiveArc.h"
#include "PrimitiveBSplineCurve.h"
#include "PrimitiveBSplineSurf.h"
#include "PrimitiveBox.h"
#include "PrimitiveCircle.h"
#include "PrimitiveCone.h"
#include "PrimitiveCylinder.h"
#include "PrimitiveEllipse.h"
#include "PrimitiveEllipsoid.h"
#include "PrimitiveEllipticCylinder.h"
#include "PrimitiveGaussSurf.h"
#include "PrimitiveHexahedron.h"
#include "PrimitiveLine.h"
#include "PrimitiveLineSegment.h"
#include "PrimitiveNurbsCurve.h"
#include "PrimitiveNurbsSurf.h"
#include "PrimitivePlane.h"
#include "PrimitivePoint.h"
#include "PrimitivePointSphere.h"
#include "PrimitivePolygon.h"
#include "PrimitivePolynomialSurf.h"
#include "PrimitiveRect.h"
#include "PrimitiveSphere.h"
#include "PrimitiveTorus.h"
#include "PrimitiveTriangle.h"
#include "PrimitiveTube.h"
#include "QelDataEnums.h"
#include "Shape.h"

// One adapter per kind: a Shape and the kind's builder at once, sharing one
// BasePrimitive. It adds only wiring: the builder is made from the kind's
// parameters, then the shape part with the id, then the surface form is
// built and the kind stored.
template <typename Builder, int Kind>
class ShapeOf : public Builder, public Shape {
public:
    template <typename... Args>
    explicit ShapeOf(ObjectId id, Args&&... args)
        : Builder(std::forward<Args>(args)...), Shape(id) {
        setShapeMode(mode_);
        type_ = Kind;
    }

    // Infinite lines and planes are rebuilt at their new size.
    void fitToScene(const osg::Vec3& minCorner, const osg::Vec3& maxCorner, float radius,
                    const osg::Vec3& centre) override {
        Builder::fitToScene(minCorner, maxCorner, radius, centre);
        if (Builder::resizesToScene()) setShapeMode(mode_);
    }
};

using ShapePointSphere = ShapeOf<PrimitivePointSphere, QEL_3D_POINT>;
using ShapeLine = ShapeOf<PrimitiveLine, QEL_3D_LINE>;
using ShapeCircle = ShapeOf<PrimitiveCircle, QEL_3D_CIRCLE>;
using ShapePlane = ShapeOf<PrimitivePlane, QEL_3D_PLANE>;
using ShapeBox = ShapeOf<PrimitiveBox, QEL_3D_BOX>;
using ShapeSphere = ShapeOf<PrimitiveSphere, QEL_3D_SPHERE>;
using ShapeCylinder = ShapeOf<PrimitiveCylinder, QEL_3D_CYLINDER>;
using ShapeTriangle = ShapeOf<PrimitiveTriangle, QEL_3D_TRIANGLE>;
using ShapePolygon = ShapeOf<PrimitivePolygon, QEL_3D_POLYGON>;
using ShapeEllipse = ShapeOf<PrimitiveEllipse, QEL_3D_ELLIPSE>;
using ShapeEllipsoid = ShapeOf<PrimitiveEllipsoid, QEL_3D_ELLIPSOID>;
using ShapeRect = ShapeOf<PrimitiveRect, QEL_3D_RECT>;
using ShapeTorus = ShapeOf<PrimitiveTorus, QEL_3D_TORUS>;
using ShapeTube = ShapeOf<PrimitiveTube, QEL_3D_TUBE>;
using ShapeArc = ShapeOf<PrimitiveArc, QEL_3D_ARC>;
using ShapeAnyShape = ShapeOf<PrimitiveAnyShape, QEL_3D_ANY_SHAPE>;
using ShapeCone = ShapeOf<PrimitiveCone, QEL_3D_CONE>;
using ShapeEllipticCylinder = ShapeOf<PrimitiveEllipticCylinder, QEL_3D_ELLIPTIC_CYLINDER>;

// Kinds no shape description reaches: built from their parameters directly.
using ShapePoint = ShapeOf<PrimitivePoint, QEL_3D_SHAPE_NONE>;
using ShapeLineSegment = ShapeOf<PrimitiveLineSegment, QEL_3D_SHAPE_NONE>;
using ShapeHexahedron = ShapeOf<PrimitiveHexahedron, QEL_3D_SHAPE_NONE>;
using ShapeBSplineCurve = ShapeOf<PrimitiveBSplineCurve, QEL_3D_SHAPE_NONE>;
using ShapeNurbsCurve = ShapeOf<PrimitiveNurbsCurve, QEL_3D_SHAPE_NONE>;
using ShapeBSplineSurf = ShapeOf<PrimitiveBSplineSurf, QEL_3D_SHAPE_NONE>;
using ShapeNurbsSurf = ShapeOf<PrimitiveNurbsSurf, QEL_3D_SHAPE_NONE>;
using ShapeGaussSurf = ShapeOf<PrimitiveGaussSurf, QEL_3D_SHAPE_NONE>;
using ShapePolynomialSurf = ShapeOf<PrimitivePolynomialSurf, QEL_3D_SHAPE_NONE>;
