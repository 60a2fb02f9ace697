#pragma once

#include "Qel3DLineSet.h"
#include "QelDataEnums.h"
#include "QelDataExport.h"
#include "QelVector3d.h"
#include "QelVector3dArray.h"

// The description of one geometric primitive. A setter makes the shape that
// kind; the getter of the same kind fills its outputs and returns true. A
// getter of another kind, a null output, an invalid vector or a non-finite
// number make the getter return false (outputs are written whenever the kind
// matches and no output is null). Angles are in degrees. Cylinders, cones and
// tubes stand along an axis; the other solids and the planar figures are
// turned by Euler angles about x, then y, then z. Cones have their apex at
// +height/2 along the axis and sweep from the start angle.
class QEL_DATA_API Qel3DShape {
public:
    Qel3DShape() = default;

    // A Qel3DShapeType; 0 while the shape has no kind.
    int ShapeType3D() const { return kind_; }

    void Set3DPoint(const QelVector3d& position);
    void Set3DLine(const QelVector3d& start, const QelVector3d& end, Qel3DLineType type);
    void Set3DPlane(const QelVector3d& point, const QelVector3d& normal);
    void Set3DCircle(const QelVector3d& centre, const QelVector3d& normal, float radius);
    void Set3DEllipse(const QelVector3d& centre, const QelVector3d& angles, float radiusA,
                      float radiusB);
    void Set3DRect(const QelVector3d& centre, const QelVector3d& angles, float width, float height);
    void Set3DArc(const QelVector3d& centre, const QelVector3d& angles, float radius,
                  float startAngle, float sweepAngle);
    void Set3DTriangle(const QelVector3d& a, const QelVector3d& b, const QelVector3d& c);
    void Set3DPolygon(const QelVector3dArray& vertices);
    void Set3DBox(const QelVector3d& centre, const QelVector3d& angles, const QelVector3d& size);
    void Set3DSphere(const QelVector3d& centre, float radius);
    void Set3DCylinder(const QelVector3d& centre, const QelVector3d& axis, float radius,
                       float height);
    void Set3DEllipticCylinder(const QelVector3d& centre, const QelVector3d& angles, float radiusA,
                               float radiusB, float height);
    void Set3DCone(const QelVector3d& centre, const QelVector3d& axis, float radius, float height,
                   float startAngle, float sweepAngle);
    void Set3DTube(const QelVector3d& centre, const QelVector3d& axis, float innerRadius,
                   float outerRadius, float height, float startAngle, float sweepAngle);
    void Set3DEllipsoid(const QelVector3d& centre, const QelVector3d& angles,
                        const QelVector3d& radii);
    void Set3DTorus(const QelVector3d& centre, const QelVector3d& angles, float innerRadius,
                    float outerRadius, float startAngle, float sweepAngle, Qel3DTorusType type);
    void Set3DAnyShape(const Qel3DLineSet& lines);

    bool Get3DPoint(QelVector3d* position) const;
    bool Get3DLine(QelVector3d* start, QelVector3d* end, Qel3DLineType* type) const;
    bool Get3DPlane(QelVector3d* point, QelVector3d* normal) const;
    bool Get3DCircle(QelVector3d* centre, QelVector3d* normal, float* radius) const;
    bool Get3DEllipse(QelVector3d* centre, QelVector3d* angles, float* radiusA,
                      float* radiusB) const;
    bool Get3DRect(QelVector3d* centre, QelVector3d* angles, float* width, float* height) const;
    bool Get3DArc(QelVector3d* centre, QelVector3d* angles, float* radius, float* startAngle,
                  float* sweepAngle) const;
    bool Get3DTriangle(QelVector3d* a, QelVector3d* b, QelVector3d* c) const;
    bool Get3DPolygon(QelVector3dArray* vertices) const;
    bool Get3DBox(QelVector3d* centre, QelVector3d* angles, QelVector3d* size) const;
    bool Get3DSphere(QelVector3d* centre, float* radius) const;
    bool Get3DCylinder(QelVector3d* centre, QelVector3d* axis, float* radius, float* height) const;
    bool Get3DEllipticCylinder(QelVector3d* centre, QelVector3d* angles, float* radiusA,
                               float* radiusB, float* height) const;
    bool Get3DCone(QelVector3d* centre, QelVector3d* axis, float* radius, float* height,
                   float* startAngle, float* sweepAngle) const;
    bool Get3DTube(QelVector3d* centre, QelVector3d* axis, float* innerRadius, float* outerRadius,
                   float* height, float* startAngle, float* sweepAngle) const;
    bool Get3DEllipsoid(QelVector3d* centre, QelVector3d* angles, QelVector3d* radii) const;
    bool Get3DTorus(QelVector3d* centre, QelVector3d* angles, float* innerRadius,
                    float* outerRadius, float* startAngle, float* sweepAngle,
                    Qel3DTorusType* type) const;
    bool Get3DAnyShape(Qel3DLineSet* lines) const;

private:
    void setVectors(int kind, const QelVector3d* v, int nv, const float* f, int nf);
    bool getVectors(int kind, QelVector3d* const* v, int nv, float* const* f, int nf) const;

    int kind_ = QEL_3D_SHAPE_NONE;
    QelVector3d vectors_[3];
    float values_[5] = {0, 0, 0, 0, 0};
    int subType_ = 0;
    QelVector3dArray polygon_;
    Qel3DLineSet lineSet_;
};
