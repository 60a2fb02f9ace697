#pragma once

#include "SceneLock.h"

// Holds a view's scene lock for the life of a scope; a null lock (a view
// that has not drawn yet) takes nothing.
class SceneLockGuard {
public:
    explicit SceneLockGuard(SceneLock* lock) : lock_(lock) {
        if (lock_) lock_->lockScene();
    }
    ~SceneLockGuard() {
        if (lock_) lock_->unlockScene();
    }
    SceneLockGuard(const SceneLockGuard&) = delete;
    SceneLockGuard& operator=(const SceneLockGuard&) = delete;

private:
    SceneLock* lock_;
};
