#pragma once

namespace osg {
class Camera;
class GraphicsContext;
}  // namespace osg

// Sizes that hosts and users give in pixels (point sizes, line widths,
// label sizes, pick tolerances) are logical pixels; a view's framebuffer
// is drawn in device pixels, ratio() of them to a logical pixel. The ratio
// is kept with the view's graphics context, so everything that draws or
// measures in that context reads the same one.
class PixelRatio {
public:
    // The programs' uniform that carries the ratio (a float).
    static constexpr const char* kUniform = "qel_pixelRatio";

    static void set(osg::GraphicsContext* context, float ratio);
    // 1 for a context without a ratio, or none.
    static float of(const osg::GraphicsContext* context);
    static float of(const osg::Camera* camera);
};
