#pragma once

// The process-wide counter that numbers render objects, images, shapes, text
// overlays and streamed range images of every window: 1, 2, 3, ... Ids are
// taken before an object is built, so a failed build still uses one, and
// are never reused.
class ObjectIdCounter {
public:
    static long take() { return next_++; }
    static long peek() { return next_; }

private:
    static inline long next_ = 1;
};
