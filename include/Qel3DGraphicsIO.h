#pragma once

#include "Qel3DIntArray.h"
#include "QelDataExport.h"
#include "QelPointArray.h"
#include "QelVector3dArray.h"

namespace osg {
class Camera;
}

// Selection of points by a polygon drawn on the screen.
class QEL_DATA_API Qel3DGraphicsIO {
public:
    Qel3DGraphicsIO() = default;

    // Projects every valid point with the camera's view, projection and
    // viewport matrices into window pixels (y up) and keeps the points whose
    // projection lies inside the polygon by the even-odd rule
    // (keepInside = true) or outside it (false). Points behind the camera
    // never count as inside. The polygon needs 3 distinct vertices; it may
    // repeat its first vertex at the end. Fails with nothing written when the
    // camera has no viewport or the polygon is degenerate.
    long GetPointsInScreenPolygon(const osg::Camera& camera, const QelVector3dArray& points,
                                  const QelPointArray& polygon, QelVector3dArray* out,
                                  bool keepInside);
    // As above; also writes the indices of the kept points.
    long GetPointsInScreenPolygon(const osg::Camera& camera, const QelVector3dArray& points,
                                  const QelPointArray& polygon, QelVector3dArray* out,
                                  Qel3DIntArray* indices, bool keepInside);
};
