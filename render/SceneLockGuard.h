#pragma once

#include "QelOSGWidget.h"

// Holds a widget's scene lock for the life of a scope.
class SceneLockGuard {
public:
    explicit SceneLockGuard(QelOSGWidget* widget) : widget_(widget) {
        if (widget_) widget_->lockScene();
    }
    ~SceneLockGuard() {
        if (widget_) widget_->unlockScene();
    }
    SceneLockGuard(const SceneLockGuard&) = delete;
    SceneLockGuard& operator=(const SceneLockGuard&) = delete;

private:
    QelOSGWidget* widget_;
};
