#pragma once

#include <QString>

#include "Qel3DGraphics.h"

// Where the sensor of a scan stood, and whether a view from there shows
// the scan. A PCD file names it in its VIEWPOINT header line (translation
// first); files without one were taken from the origin.
class SensorPose {
public:
    // The VIEWPOINT's translation of a PCD file, or the origin.
    static QelVector3d ofPcdFile(const QString& path);
    // Whether the sensor lies inside the cloud's box grown by ten times the
    // box's diagonal on every side. A georeferenced tile (map coordinates thousands of
    // kilometres from the origin) with a viewpoint at the origin does not.
    static bool isNear(const QelVector3d& sensor, const QelPointCloud& cloud);
};
