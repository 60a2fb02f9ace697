#pragma once

#include <QPointer>
#include <vector>

#include "StatusCodes.h"

class GLViewer;
class SceneContent;
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
    // What the window's view shows.
    static SceneContent* findContent(long long handle);
    static void add(Qel3DGraphicsPrivate* window);
    static void remove(long long handle);
    static bool isEmpty() { return handles().empty(); }

    // Creates the application object when there is none. When one already
    // exists the remembered pointer is dropped, so the library never
    // deletes an application after that, even its own.
    static void ensureApplication();
    // Whether an application exists that the library did not create.
    static bool hostOwnsApplication();
    // After a window is destroyed: deletes the library's application once the
    // last window is gone. While other windows remain, a host without an
    // event loop of its own never lets Qt handle what the destroyed window
    // left queued (X events, deferred deletions), so the library does it.
    static void releaseApplication();
    // Whether the caller runs on the application object's thread (or no
    // application exists yet). Widgets and GL contexts belong to that thread.
    static bool onGuiThread();

private:
    static std::vector<long long>& handles();
    static inline QApplication* application_ = nullptr;
    static inline bool libraryCreated_ = false;
    // The application the library made, for as long as it lives, whether or
    // not the library may still delete it.
    static inline QPointer<QApplication> made_;
};

// First line of every exported function: widgets and the GL context belong
// to the GUI thread, so a call from any other changes nothing.
#define QEL_ON_GUI_THREAD_ONLY()                                            \
    do {                                                                    \
        if (!WindowRegistry::onGuiThread()) return QelStatus::kWrongThread; \
    } while (false)
