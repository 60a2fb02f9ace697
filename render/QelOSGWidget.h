#pragma once

#include "MOpenglWidget.h"

// The viewer widget of a 3D view: creates its renderer on the first paint
// and lends the renderer's scene lock to the rest of the library.
class QelOSGWidget : public MOpenglWidget {
    Q_OBJECT
public:
    explicit QelOSGWidget(QWidget* parent = nullptr);

    // Take and release the scene lock for writing; no-ops before the first
    // paint, when no frame can run anyway.
    void lockScene();
    void unlockScene();
    void requestRedraw();
    void makeCurrent();
    static void configureDisplaySettings();

public slots:
    void createRenderer();

private:
    // Nesting depth of lockScene calls that took the lock: nested brackets
    // share one lock, and an unlock never releases a lock it did not take.
    int lockDepth_ = 0;
};
