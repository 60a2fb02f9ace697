#pragma once

#include <QImage>

class GLViewer;
class QelImage;

// Pictures of a view. Both draw a full frame: every point, whatever the
// point budget would leave out while the camera moves.
class ScreenCapture {
public:
    explicit ScreenCapture(GLViewer& view) : view_(view) {}

    // The view as a 3-channel 8-bit image: 11501008 without render objects,
    // 11501002 when the picture cannot be taken. Widgets over the frame (the
    // colour bar, the lasso's layer) are in the picture.
    long screenShot(QelImage* out);
    // Renders one frame and returns it (initialising the viewer first).
    QImage grabFrame();

private:
    // Whether a widget lies over the frame, so a screenshot must paint
    // widgets rather than read the frame.
    bool overlaysShown() const;

    GLViewer& view_;
};
