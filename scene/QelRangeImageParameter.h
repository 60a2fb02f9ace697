#pragma once

#include <cfloat>

// The description of a streamed range image: sample type, final size,
// sampling steps, the pixel-to-world mapping and the accepted height range.
struct QelRangeImageParameter {
    int dataType = 2;
    int width = 0;
    int height = 0;
    int rowStep = 1;
    int columnStep = 1;
    double resolutionX = 1, offsetX = 0;
    double resolutionY = 1, offsetY = 0;
    double resolutionZ = 1, offsetZ = 0;
    double zMin = -DBL_MAX, zMax = DBL_MAX;
    int colourChannels = 1;
};
