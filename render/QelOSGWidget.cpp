#include "QelOSGWidget.h"

#include <osg/DisplaySettings>

#include "MRenderer.h"

QelOSGWidget::QelOSGWidget(QWidget* parent) : MOpenglWidget(parent) {
    connect(this, &MOpenglWidget::newRender, this, &QelOSGWidget::createRenderer);
}

void QelOSGWidget::configureDisplaySettings() {
    osg::DisplaySettings* settings = osg::DisplaySettings::instance().get();
    settings->setNvOptimusEnablement(1);
    settings->setStereo(false);
}

void QelOSGWidget::createRenderer() {
    if (renderer_) return;
    configureDisplaySettings();
    MRenderer* renderer = MRenderer::create();
    const QSize device = deviceSize();
    renderer->setup(device.width(), device.height(), pixelRatio());
    renderer->setParent(this);
    renderer_ = renderer;
}

void QelOSGWidget::lockScene() {
    if (!renderer_) return;
    if (lockDepth_++ == 0) {
        ownsLock_ = !frameInProgress();
        if (ownsLock_) renderer_->sceneLock().writeLock();
    }
}

void QelOSGWidget::unlockScene() {
    if (!renderer_ || lockDepth_ == 0) return;
    if (--lockDepth_ == 0 && ownsLock_) {
        ownsLock_ = false;
        renderer_->sceneLock().writeUnlock();
    }
}

void QelOSGWidget::requestRedraw() {
    if (renderer_) renderer_->requestRedraw();
}

void QelOSGWidget::makeCurrent() {
    if (!renderer_) return;
    osg::ref_ptr<osg::GraphicsContext> context = renderer_->getCamera()->getGraphicsContext();
    if (context) context->makeCurrent();
}
