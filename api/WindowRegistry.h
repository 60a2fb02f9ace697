#pragma once

#include <vector>

class GLViewer;
class QApplication;
class Qel3DGraphicsPrivate;

// The process-wide state of the exported functions: the live window handles
// in creation order (a handle is the address of its window) and the
// application object the library created for hosts that have none. Used on
// the GUI thread only, so nothing here is locked.
class WindowRegistry {
public:
    // The window behind a handle, or null when the handle is not live.
    static Qel3DGraphicsPrivate* find(long long handle);
    // The 3D view of that window, or null.
    static GLViewer* findViewer(long long handle);
    static void add(Qel3DGraphicsPrivate* window);
    static void remove(long long handle);
    static bool isEmpty() { return handles().empty(); }

    // Creates the application object when there is none. When one already
    // exists the remembered pointer is dropped, so the library never
    // deletes an application after that, even its own.
    static void ensureApplication();
    // Whether an application exists that the library did not create.
    static bool hostOwnsApplication();
    // Deletes the library's application once the last window is gone.
    static void releaseApplication();

private:
    static std::vector<long long>& handles();
    static inline QApplication* application_ = nullptr;
    static inline bool libraryCreated_ = false;
};
