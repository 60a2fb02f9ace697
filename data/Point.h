#pragma once

// A polygon vertex of three doubles, as handed to SimplePolygon.
struct Point {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};
