#pragma once

#include "QelDataExport.h"
#include "QelVector3d.h"

// A plane through a point with a normal. The default plane is invalid.
class QEL_DATA_API Qel3DPlane {
public:
    Qel3DPlane();
    Qel3DPlane(const QelVector3d& point, const QelVector3d& normal);

    // False when the normal has length 0 or any value is not finite.
    bool IsValid() const;
    const QelVector3d& Point() const { return point_; }
    const QelVector3d& Normal() const { return normal_; }

private:
    QelVector3d point_;
    QelVector3d normal_;
};
