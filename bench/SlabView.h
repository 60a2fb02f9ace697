#pragma once

// A view of the benchmarks that drive the viewer's classes directly: 800 x
// 800 pixels, no window around it, showing a random slab seen obliquely.
#include "CameraController.h"
#include "GLViewer.h"
#include "RandomSlab.h"
#include "SceneContent.h"

namespace bench {

// False when the cloud is refused.
inline bool showSlab(GLViewer& view, int points, unsigned seed, float thickness, float tilt) {
    view.resize(800, 800);
    view.grabFrame();
    if (view.content().addPointCloud(randomSlab(points, seed, thickness, tilt)) >= 11000000)
        return false;
    view.camera().moveToView(StandardView::Oblique);
    view.camera().zoomFit();
    view.grabFrame();
    return true;
}

}  // namespace bench
