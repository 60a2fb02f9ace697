#pragma once

#include "MOpenglWidget.h"
#include "SceneLock.h"

// The viewer widget of a 3D view: creates its renderer on the first paint
// and lends the renderer's scene lock to the rest of the library.
class QelOSGWidget : public MOpenglWidget, public SceneLock {
    Q_OBJECT
public:
    explicit QelOSGWidget(QWidget* parent = nullptr);

    // Take and release the scene lock for writing; no-ops before the first
    // paint, when no frame can run anyway, and inside a frame.
    void lockScene() override;
    void unlockScene() override;
    void requestRedraw();
    void makeCurrent();
    static void configureDisplaySettings();

public slots:
    void createRenderer();

private:
    // Nested brackets share one lock. A bracket opened by an event handler
    // inside a frame takes none: the frame already holds the lock for
    // reading on this same thread, and everything runs on that thread.
    int lockDepth_ = 0;
    bool ownsLock_ = false;
};
