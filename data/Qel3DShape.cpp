#include "Qel3DShape.h"

#include <cmath>

void Qel3DShape::setVectors(int kind, const QelVector3d* v, int nv, const float* f, int nf) {
    kind_ = kind;
    for (int i = 0; i < 3; ++i)
        vectors_[i] = i < nv ? v[i] : QelVector3d();
    for (int i = 0; i < 5; ++i)
        values_[i] = i < nf ? f[i] : 0.0f;
    subType_ = 0;
    polygon_ = QelVector3dArray();
    lineSet_ = Qel3DLineSet();
}

bool Qel3DShape::getVectors(int kind, QelVector3d* const* v, int nv, float* const* f,
                            int nf) const {
    if (kind_ != kind) return false;
    for (int i = 0; i < nv; ++i)
        if (!v[i]) return false;
    for (int i = 0; i < nf; ++i)
        if (!f[i]) return false;
    bool valid = true;
    for (int i = 0; i < nv; ++i) {
        *v[i] = vectors_[i];
        valid = valid && vectors_[i].IsValid();
    }
    for (int i = 0; i < nf; ++i) {
        *f[i] = values_[i];
        valid = valid && std::isfinite(values_[i]);
    }
    return valid;
}

void Qel3DShape::Set3DPoint(const QelVector3d& position) {
    setVectors(QEL_3D_POINT, &position, 1, nullptr, 0);
}

void Qel3DShape::Set3DLine(const QelVector3d& start, const QelVector3d& end, Qel3DLineType type) {
    const QelVector3d v[] = {start, end};
    setVectors(QEL_3D_LINE, v, 2, nullptr, 0);
    subType_ = type;
}

void Qel3DShape::Set3DPlane(const QelVector3d& point, const QelVector3d& normal) {
    const QelVector3d v[] = {point, normal};
    setVectors(QEL_3D_PLANE, v, 2, nullptr, 0);
}

void Qel3DShape::Set3DCircle(const QelVector3d& centre, const QelVector3d& normal, float radius) {
    const QelVector3d v[] = {centre, normal};
    setVectors(QEL_3D_CIRCLE, v, 2, &radius, 1);
}

void Qel3DShape::Set3DEllipse(const QelVector3d& centre, const QelVector3d& angles, float radiusA,
                              float radiusB) {
    const QelVector3d v[] = {centre, angles};
    const float f[] = {radiusA, radiusB};
    setVectors(QEL_3D_ELLIPSE, v, 2, f, 2);
}

void Qel3DShape::Set3DRect(const QelVector3d& centre, const QelVector3d& angles, float width,
                           float height) {
    const QelVector3d v[] = {centre, angles};
    const float f[] = {width, height};
    setVectors(QEL_3D_RECT, v, 2, f, 2);
}

void Qel3DShape::Set3DArc(const QelVector3d& centre, const QelVector3d& angles, float radius,
                          float startAngle, float sweepAngle) {
    const QelVector3d v[] = {centre, angles};
    const float f[] = {radius, startAngle, sweepAngle};
    setVectors(QEL_3D_ARC, v, 2, f, 3);
}

void Qel3DShape::Set3DTriangle(const QelVector3d& a, const QelVector3d& b, const QelVector3d& c) {
    const QelVector3d v[] = {a, b, c};
    setVectors(QEL_3D_TRIANGLE, v, 3, nullptr, 0);
}

void Qel3DShape::Set3DPolygon(const QelVector3dArray& vertices) {
    setVectors(QEL_3D_POLYGON, nullptr, 0, nullptr, 0);
    polygon_ = vertices;
}

void Qel3DShape::Set3DBox(const QelVector3d& centre, const QelVector3d& angles,
                          const QelVector3d& size) {
    const QelVector3d v[] = {centre, angles, size};
    setVectors(QEL_3D_BOX, v, 3, nullptr, 0);
}

void Qel3DShape::Set3DSphere(const QelVector3d& centre, float radius) {
    setVectors(QEL_3D_SPHERE, &centre, 1, &radius, 1);
}

void Qel3DShape::Set3DCylinder(const QelVector3d& centre, const QelVector3d& axis, float radius,
                               float height) {
    const QelVector3d v[] = {centre, axis};
    const float f[] = {radius, height};
    setVectors(QEL_3D_CYLINDER, v, 2, f, 2);
}

void Qel3DShape::Set3DEllipticCylinder(const QelVector3d& centre, const QelVector3d& angles,
                                       float radiusA, float radiusB, float height) {
    const QelVector3d v[] = {centre, angles};
    const float f[] = {radiusA, radiusB, height};
    setVectors(QEL_3D_ELLIPTIC_CYLINDER, v, 2, f, 3);
}

void Qel3DShape::Set3DCone(const QelVector3d& centre, const QelVector3d& axis, float radius,
                           float height, float startAngle, float sweepAngle) {
    const QelVector3d v[] = {centre, axis};
    const float f[] = {radius, height, startAngle, sweepAngle};
    setVectors(QEL_3D_CONE, v, 2, f, 4);
}

void Qel3DShape::Set3DTube(const QelVector3d& centre, const QelVector3d& axis, float innerRadius,
                           float outerRadius, float height, float startAngle, float sweepAngle) {
    const QelVector3d v[] = {centre, axis};
    const float f[] = {innerRadius, outerRadius, height, startAngle, sweepAngle};
    setVectors(QEL_3D_TUBE, v, 2, f, 5);
}

void Qel3DShape::Set3DEllipsoid(const QelVector3d& centre, const QelVector3d& angles,
                                const QelVector3d& radii) {
    const QelVector3d v[] = {centre, angles, radii};
    setVectors(QEL_3D_ELLIPSOID, v, 3, nullptr, 0);
}

void Qel3DShape::Set3DTorus(const QelVector3d& centre, const QelVector3d& angles, float innerRadius,
                            float outerRadius, float startAngle, float sweepAngle,
                            Qel3DTorusType type) {
    const QelVector3d v[] = {centre, angles};
    const float f[] = {innerRadius, outerRadius, startAngle, sweepAngle};
    setVectors(QEL_3D_TORUS, v, 2, f, 4);
    subType_ = type;
}

void Qel3DShape::Set3DAnyShape(const Qel3DLineSet& lines) {
    setVectors(QEL_3D_ANY_SHAPE, nullptr, 0, nullptr, 0);
    lineSet_ = lines;
}

bool Qel3DShape::Get3DPoint(QelVector3d* position) const {
    QelVector3d* const v[] = {position};
    return getVectors(QEL_3D_POINT, v, 1, nullptr, 0);
}

bool Qel3DShape::Get3DLine(QelVector3d* start, QelVector3d* end, Qel3DLineType* type) const {
    if (kind_ != QEL_3D_LINE || !type) return false;
    QelVector3d* const v[] = {start, end};
    const bool ok = getVectors(QEL_3D_LINE, v, 2, nullptr, 0);
    if (start && end) *type = static_cast<Qel3DLineType>(subType_);
    return ok;
}

bool Qel3DShape::Get3DPlane(QelVector3d* point, QelVector3d* normal) const {
    QelVector3d* const v[] = {point, normal};
    return getVectors(QEL_3D_PLANE, v, 2, nullptr, 0);
}

bool Qel3DShape::Get3DCircle(QelVector3d* centre, QelVector3d* normal, float* radius) const {
    QelVector3d* const v[] = {centre, normal};
    float* const f[] = {radius};
    return getVectors(QEL_3D_CIRCLE, v, 2, f, 1);
}

bool Qel3DShape::Get3DEllipse(QelVector3d* centre, QelVector3d* angles, float* radiusA,
                              float* radiusB) const {
    QelVector3d* const v[] = {centre, angles};
    float* const f[] = {radiusA, radiusB};
    return getVectors(QEL_3D_ELLIPSE, v, 2, f, 2);
}

bool Qel3DShape::Get3DRect(QelVector3d* centre, QelVector3d* angles, float* width,
                           float* height) const {
    QelVector3d* const v[] = {centre, angles};
    float* const f[] = {width, height};
    return getVectors(QEL_3D_RECT, v, 2, f, 2);
}

bool Qel3DShape::Get3DArc(QelVector3d* centre, QelVector3d* angles, float* radius,
                          float* startAngle, float* sweepAngle) const {
    QelVector3d* const v[] = {centre, angles};
    float* const f[] = {radius, startAngle, sweepAngle};
    return getVectors(QEL_3D_ARC, v, 2, f, 3);
}

bool Qel3DShape::Get3DTriangle(QelVector3d* a, QelVector3d* b, QelVector3d* c) const {
    QelVector3d* const v[] = {a, b, c};
    return getVectors(QEL_3D_TRIANGLE, v, 3, nullptr, 0);
}

bool Qel3DShape::Get3DPolygon(QelVector3dArray* vertices) const {
    if (kind_ != QEL_3D_POLYGON || !vertices) return false;
    *vertices = polygon_;
    for (int i = 0; i < polygon_.Length(); ++i)
        if (!polygon_[i].IsValid()) return false;
    return true;
}

bool Qel3DShape::Get3DBox(QelVector3d* centre, QelVector3d* angles, QelVector3d* size) const {
    QelVector3d* const v[] = {centre, angles, size};
    return getVectors(QEL_3D_BOX, v, 3, nullptr, 0);
}

bool Qel3DShape::Get3DSphere(QelVector3d* centre, float* radius) const {
    QelVector3d* const v[] = {centre};
    float* const f[] = {radius};
    return getVectors(QEL_3D_SPHERE, v, 1, f, 1);
}

bool Qel3DShape::Get3DCylinder(QelVector3d* centre, QelVector3d* axis, float* radius,
                               float* height) const {
    QelVector3d* const v[] = {centre, axis};
    float* const f[] = {radius, height};
    return getVectors(QEL_3D_CYLINDER, v, 2, f, 2);
}

bool Qel3DShape::Get3DEllipticCylinder(QelVector3d* centre, QelVector3d* angles, float* radiusA,
                                       float* radiusB, float* height) const {
    QelVector3d* const v[] = {centre, angles};
    float* const f[] = {radiusA, radiusB, height};
    return getVectors(QEL_3D_ELLIPTIC_CYLINDER, v, 2, f, 3);
}

bool Qel3DShape::Get3DCone(QelVector3d* centre, QelVector3d* axis, float* radius, float* height,
                           float* startAngle, float* sweepAngle) const {
    QelVector3d* const v[] = {centre, axis};
    float* const f[] = {radius, height, startAngle, sweepAngle};
    return getVectors(QEL_3D_CONE, v, 2, f, 4);
}

bool Qel3DShape::Get3DTube(QelVector3d* centre, QelVector3d* axis, float* innerRadius,
                           float* outerRadius, float* height, float* startAngle,
                           float* sweepAngle) const {
    QelVector3d* const v[] = {centre, axis};
    float* const f[] = {innerRadius, outerRadius, height, startAngle, sweepAngle};
    return getVectors(QEL_3D_TUBE, v, 2, f, 5);
}

bool Qel3DShape::Get3DEllipsoid(QelVector3d* centre, QelVector3d* angles,
                                QelVector3d* radii) const {
    QelVector3d* const v[] = {centre, angles, radii};
    return getVectors(QEL_3D_ELLIPSOID, v, 3, nullptr, 0);
}

bool Qel3DShape::Get3DTorus(QelVector3d* centre, QelVector3d* angles, float* innerRadius,
                            float* outerRadius, float* startAngle, float* sweepAngle,
                            Qel3DTorusType* type) const {
    if (kind_ != QEL_3D_TORUS || !type) return false;
    QelVector3d* const v[] = {centre, angles};
    float* const f[] = {innerRadius, outerRadius, startAngle, sweepAngle};
    const bool ok = getVectors(QEL_3D_TORUS, v, 2, f, 4);
    *type = static_cast<Qel3DTorusType>(subType_);
    return ok;
}

bool Qel3DShape::Get3DAnyShape(Qel3DLineSet* lines) const {
    if (kind_ != QEL_3D_ANY_SHAPE || !lines) return false;
    *lines = lineSet_;
    return true;
}
