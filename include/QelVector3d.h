#pragma once

#include "QelDataExport.h"

// A 3D point or direction of three floats. The default value is the invalid
// point (0, 0, +FLT_MAX): point clouds use it to mark missing samples.
class QEL_DATA_API QelVector3d {
public:
    QelVector3d();
    QelVector3d(float x, float y, float z);

    // False for the invalid marker (z == +FLT_MAX) and for NaN or infinite
    // components.
    bool IsValid() const;
    float Norm() const;

    float x;
    float y;
    float z;
};
