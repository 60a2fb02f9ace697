#pragma once

#include "OpenGlOffscreenSurface.h"

// An offscreen surface whose GL hooks only emit signals, so a widget can do
// the drawing in its own slots.
class ExamplePaintSurface : public OpenGlOffscreenSurface {
    Q_OBJECT
public:
    using OpenGlOffscreenSurface::OpenGlOffscreenSurface;

signals:
    void sig_initializeGL();
    void sig_resizeGL(int width, int height);
    void sig_paintGL();

protected:
    void initializeGL() override { emit sig_initializeGL(); }
    void resizeGL(int width, int height) override { emit sig_resizeGL(width, height); }
    void paintGL() override { emit sig_paintGL(); }
};
