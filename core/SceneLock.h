#pragma once

// The lock a view's frames hold while they read the scene. Whatever changes
// the scene graph (content, camera, decorations) takes it for writing first.
class SceneLock {
public:
    virtual ~SceneLock() = default;
    virtual void lockScene() = 0;
    virtual void unlockScene() = 0;
};
