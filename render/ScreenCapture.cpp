#include "ScreenCapture.h"

#include <QLayout>
#include <vector>

#include "GLViewer.h"
#include "PointBudget.h"
#include "QelImage.h"
#include "QelOSGWidget.h"
#include "SceneContent.h"
#include "StatusCodes.h"

bool ScreenCapture::overlaysShown() const {
    for (const QObject* child : view_.children()) {
        const auto* widget = qobject_cast<const QWidget*>(child);
        if (widget && widget != view_.osgWidget() && widget->isVisibleTo(&view_)) return true;
    }
    return false;
}

// The frame as the view's drawing widget holds it (rows bottom up, red,
// green, blue, alpha), upright in the blue, green, red order of the data
// layer's images.
namespace {

std::vector<unsigned char> uprightBgr(const std::vector<unsigned char>& rgba, std::size_t width,
                                      std::size_t height) {
    std::vector<unsigned char> bgr(width * height * 3);
    for (std::size_t row = 0; row < height; ++row) {
        const unsigned char* from = rgba.data() + (height - 1 - row) * width * 4;
        unsigned char* to = bgr.data() + row * width * 3;
        for (std::size_t x = 0; x < width; ++x, from += 4, to += 3) {
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
        }
    }
    return bgr;
}

}  // namespace

long ScreenCapture::screenShot(QelImage* out) {
    if (view_.content().renderObjectCount() == 0) return QelStatus::kNoRenderObject;
    view_.viewer();
    if (!out) return QelStatus::kScreenshotFailed;
    // A frame takes the scene lock for reading itself.
    view_.budget().setFullFrame(true);  // a screenshot always shows every point
    QelImage image;
    bool made = false;
    if (overlaysShown()) {
        // The colour bar or the lasso's layer lies over the frame: the
        // widget paints them all together.
        const QImage picture = view_.grab().toImage().convertToFormat(QImage::Format_BGR888);
        made = !picture.isNull() &&
               image.CreateImage(picture.constBits(), picture.width(), picture.height(),
                                 picture.bytesPerLine(), 3, QelImageType(0));
    } else {
        // The frame alone is read straight from the framebuffer. The view
        // may have been resized while hidden: its drawing widget takes the
        // new size first.
        view_.layout()->activate();
        std::vector<unsigned char> rgba;
        QSize size;
        if (view_.osgWidget()->grabPixels(rgba, size)) {
            const std::vector<unsigned char> bgr =
                uprightBgr(rgba, std::size_t(size.width()), std::size_t(size.height()));
            made = image.CreateImage(bgr.data(), size.width(), size.height(), size.width() * 3, 3,
                                     QelImageType(0));
        }
    }
    view_.budget().setFullFrame(false);
    if (!made) return QelStatus::kScreenshotFailed;
    *out = std::move(image);
    return 0;
}

QImage ScreenCapture::grabFrame() {
    QelOSGWidget* widget = view_.osgWidget();
    if (!widget->renderer()) widget->grab();  // the first paint creates the viewer
    QImage image;
    view_.budget().setFullFrame(true);
    widget->grabImage(image);
    view_.budget().setFullFrame(false);
    return image;
}
