#include "WindowRegistry.h"

#include "GLViewer.h"

#include <QCoreApplication>
#include <QThread>

#include <QApplication>
#include <algorithm>

#include "Qel3DGraphicsPrivate.h"

std::vector<long long>& WindowRegistry::handles() {
    static std::vector<long long> list;
    return list;
}

Qel3DGraphicsPrivate* WindowRegistry::find(long long handle) {
    const std::vector<long long>& list = handles();
    if (std::find(list.begin(), list.end(), handle) == list.end()) return nullptr;
    return reinterpret_cast<Qel3DGraphicsPrivate*>(handle);
}

GLViewer* WindowRegistry::findViewer(long long handle) {
    Qel3DGraphicsPrivate* window = find(handle);
    return window ? window->viewer() : nullptr;
}

SceneContent* WindowRegistry::findContent(long long handle) {
    GLViewer* view = findViewer(handle);
    return view ? &view->content() : nullptr;
}

void WindowRegistry::add(Qel3DGraphicsPrivate* window) {
    handles().push_back(reinterpret_cast<long long>(window));
}

void WindowRegistry::remove(long long handle) {
    std::vector<long long>& list = handles();
    list.erase(std::remove(list.begin(), list.end(), handle), list.end());
}

void WindowRegistry::ensureApplication() {
    if (!QApplication::instance()) {
        // The argument count must outlive the application.
        static int argc = 0;
        static char* argv[] = {nullptr};
        application_ = new QApplication(argc, argv);
        made_ = application_;
        libraryCreated_ = true;
    } else {
        application_ = nullptr;
    }
}

bool WindowRegistry::hostOwnsApplication() {
    return QApplication::instance() && !libraryCreated_;
}

void WindowRegistry::releaseApplication() {
    if (!handles().empty() || !application_) {
        if (!made_ || made_ != QCoreApplication::instance()) return;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        return;
    }
    delete application_;
    application_ = nullptr;
    libraryCreated_ = false;
}

bool WindowRegistry::onGuiThread() {
    const QCoreApplication* app = QCoreApplication::instance();
    return !app || QThread::currentThread() == app->thread();
}
