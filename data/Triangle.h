#pragma once

// One triangle as three vertex indices, counter-clockwise seen from the
// polygon's normal.
struct Triangle {
    int a = 0;
    int b = 0;
    int c = 0;
};
