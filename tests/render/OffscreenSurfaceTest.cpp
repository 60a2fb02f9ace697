// The offscreen surface: coalesced updates, framebuffer life and upright
// read-back.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include "ExamplePaintSurface.h"

namespace {

class UpdateCounter : public QObject {
public:
    int updates = 0;
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::UpdateRequest) ++updates;
        return false;
    }
};

}  // namespace

TEST(OffscreenSurface, TwoUpdatesPostOneRequest) {
    ExamplePaintSurface surface(nullptr, QSize(16, 16));
    int paints = 0;
    QObject::connect(&surface, &ExamplePaintSurface::sig_paintGL, [&] { ++paints; });
    UpdateCounter counter;
    surface.installEventFilter(&counter);
    surface.update();
    surface.update();
    QCoreApplication::sendPostedEvents(&surface);
    EXPECT_EQ(counter.updates, 1);
    EXPECT_EQ(paints, 1);
    surface.update();  // handled, so a new request may be posted
    QCoreApplication::sendPostedEvents(&surface);
    EXPECT_EQ(counter.updates, 2);
}

TEST(OffscreenSurface, ResizeKeepsOrRebuildsTheFramebuffer) {
    ExamplePaintSurface surface(nullptr, QSize(32, 24));
    EXPECT_FALSE(surface.hasResolveFramebuffer());
    std::vector<QSize> hooked;
    QObject::connect(&surface, &ExamplePaintSurface::sig_resizeGL,
                     [&](int w, int h) { hooked.emplace_back(w, h); });
    const unsigned int before = surface.defaultFramebufferObject();
    surface.resize(QSize(32, 24));
    EXPECT_EQ(surface.defaultFramebufferObject(), before) << "same size, same framebuffer";
    surface.resize(QSize(40, 30));
    EXPECT_EQ(hooked, (std::vector<QSize>{QSize(32, 24), QSize(40, 30)}));
    EXPECT_EQ(surface.grabFramebuffer().size(), QSize(40, 30));
}

TEST(OffscreenSurface, GrabbedImageIsUpright) {
    ExamplePaintSurface surface(nullptr, QSize(20, 10));
    // Red in the upper half of the GL framebuffer (high y), blue below.
    QObject::connect(&surface, &ExamplePaintSurface::sig_paintGL, [&] {
        QOpenGLFunctions* gl = surface.context()->functions();
        gl->glEnable(GL_SCISSOR_TEST);
        gl->glScissor(0, 5, 20, 5);
        gl->glClearColor(1, 0, 0, 1);
        gl->glClear(GL_COLOR_BUFFER_BIT);
        gl->glScissor(0, 0, 20, 5);
        gl->glClearColor(0, 0, 1, 1);
        gl->glClear(GL_COLOR_BUFFER_BIT);
        gl->glDisable(GL_SCISSOR_TEST);
    });
    surface.render();
    const QImage image = surface.grabFramebuffer();
    EXPECT_EQ(image.pixelColor(3, 1), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(3, 8), QColor(0, 0, 255));
}
