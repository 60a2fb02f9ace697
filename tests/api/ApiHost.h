#pragma once

// A host program as users write one: it makes its own X11 window with Xlib
// and drives the library only through <Qel3DGraphics.h>. Qt is used only to
// pump events and to find what the library shows (labels, tool bar,
// dialogs), the way a person would see it.
#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMessageBox>
#include <QSlider>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QWidget>
#include <algorithm>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "Qel3DGraphics.h"

// Xlib's macros clash with Qt's: it comes last.
#include <X11/Xlib.h>

// One top-level X11 window on its own connection.
class XHostWindow {
public:
    explicit XHostWindow(int width = 400, int height = 400) {
        display_ = XOpenDisplay(nullptr);
        if (!display_) return;
        window_ = XCreateSimpleWindow(display_, DefaultRootWindow(display_), 0, 0, width, height, 0,
                                      0, 0);
        XMapWindow(display_, window_);
        XSync(display_, False);
    }
    ~XHostWindow() {
        if (!display_) return;
        XDestroyWindow(display_, window_);
        XCloseDisplay(display_);
    }
    XHostWindow(const XHostWindow&) = delete;
    XHostWindow& operator=(const XHostWindow&) = delete;

    long long id() const { return static_cast<long long>(window_); }
    Display* display() const { return display_; }
    void resize(int width, int height) {
        XResizeWindow(display_, window_, width, height);
        XSync(display_, False);
    }
    // The X children of the host window.
    std::vector<Window> children() const {
        Window root = 0, parent = 0, *list = nullptr;
        unsigned int count = 0;
        std::vector<Window> out;
        if (XQueryTree(display_, window_, &root, &parent, &list, &count)) {
            out.assign(list, list + count);
            XFree(list);
        }
        return out;
    }

private:
    Display* display_ = nullptr;
    Window window_ = 0;
};

inline void pumpEvents(int rounds = 3) {
    for (int i = 0; i < rounds; ++i)
        QCoreApplication::processEvents();
}

// The window widget behind a handle (the handle is its address).
inline QWidget* windowWidget(long long handle) {
    return reinterpret_cast<QWidget*>(handle);
}

// The first widget of a class inside the window.
inline QWidget* childOfClass(long long handle, const char* className) {
    for (QWidget* w : windowWidget(handle)->findChildren<QWidget*>())
        if (w->inherits(className)) return w;
    return nullptr;
}

inline QLabel* statusLabel(long long handle) {
    // The status line is the label laid out directly in the window.
    for (QLabel* label :
         windowWidget(handle)->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
        return label;
    return nullptr;
}

// The status line's whole text (the label itself may show it elided).
inline QString statusText(long long handle) {
    return statusLabel(handle)->toolTip();
}

inline QToolBar* toolBar(long long handle) {
    return windowWidget(handle)->findChild<QToolBar*>();
}

inline QAction* findAction(long long handle, const QString& text) {
    for (QAction* a : windowWidget(handle)->findChildren<QAction*>())
        if (a->text() == text) return a;
    return nullptr;
}

// Clicks a tool-bar button the way a user does (false when there is none).
inline bool pressButton(long long handle, const char* text) {
    auto* button =
        qobject_cast<QToolButton*>(toolBar(handle)->widgetForAction(findAction(handle, text)));
    if (!button) return false;
    button->click();
    return true;
}

// Whether a returned value is an id, not a status code.
inline bool isId(long value) {
    return value >= 1 && value < 11000000;
}

// The camera straight above the origin, up along +y.
inline long lookDown(long long handle, float distance) {
    QelVector3d eye(0, 0, distance), centre(0, 0, 0), up(0, 1, 0);
    return QELMV::QelSetCamera(handle, eye, centre, up);
}

// Answers the library's modal dialogs as a person would: file dialogs get
// the given path, the colour dialog the given colour; message boxes are
// recorded and closed with OK.
class DialogAnswerer {
public:
    QString path;
    QColor colour;
    QMap<QString, int> sliders;  // slider object name -> value to set
    QStringList fileDialogTitles, fileDialogFilters, messages, messageTitles;

    DialogAnswerer() {
        timer_.setInterval(20);
        QObject::connect(&timer_, &QTimer::timeout, [this] { answer(); });
        timer_.start();
    }

private:
    void answer() {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* files = qobject_cast<QFileDialog*>(modal)) {
            fileDialogTitles << files->windowTitle();
            fileDialogFilters << files->nameFilters().join(";;");
            if (path.isEmpty()) {
                files->reject();
            } else {
                // Typed as a person would: selectFile() leaves a focused
                // name field alone and races the directory listing.
                if (auto* name = files->findChild<QLineEdit*>("fileNameEdit"))
                    name->setText(path);
                else
                    files->selectFile(path);
                static_cast<QDialog*>(files)->done(QDialog::Accepted);
            }
        } else if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            messageTitles << box->windowTitle();
            messages << box->text();
            box->button(QMessageBox::Ok) ? box->button(QMessageBox::Ok)->click() : box->accept();
        } else if (auto* colours = qobject_cast<QColorDialog*>(modal)) {
            fileDialogTitles << colours->windowTitle();
            colours->setCurrentColor(colour);
            colours->accept();
        } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
            // Any other dialog (the property dialog): move the named sliders.
            fileDialogTitles << dialog->windowTitle();
            for (auto it = sliders.begin(); it != sliders.end(); ++it)
                if (auto* slider = dialog->findChild<QSlider*>(it.key()))
                    slider->setValue(it.value());
            dialog->reject();
        }
    }
    QTimer timer_;
};

// A window in its own X11 host window, destroyed with the fixture.
struct HostedWindow {
    XHostWindow host;
    long long handle = 0;
    long created = -1;
    explicit HostedWindow(int width = 400, int height = 400) : host(width, height) {
        created = QELMV::QelCreate3DWnd(host.id(), &handle);
    }
    ~HostedWindow() {
        if (created == 0) QELMV::QelDestory3DWnd(handle);
    }
};

// Saves a widget as drawn, for a person to look at, when QEL_TEST_IMAGE_DIR is set.
inline void keepWidget(QWidget* widget, const char* name) {
    const QByteArray dir = qgetenv("QEL_TEST_IMAGE_DIR");
    if (!dir.isEmpty()) widget->grab().save(QString::fromUtf8(dir) + "/" + name + ".png");
}

// Data builders.
inline QelPointCloud gridCloud(int n, float spacing, std::function<float(float, float)> height) {
    QelVector3dArray points;
    points.SetSize(n * n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            const float x = (i - (n - 1) / 2.0f) * spacing, y = (j - (n - 1) / 2.0f) * spacing;
            points[i * n + j] = QelVector3d(x, y, height(x, y));
        }
    QelPointCloud cloud;
    cloud.SetPoints(points);
    return cloud;
}

inline QelTriangleMesh meshOf(std::initializer_list<QelVector3d> vertices,
                              std::initializer_list<int> triangles) {
    QelVector3dArray v;
    for (const QelVector3d& p : vertices)
        v.Append(p);
    Qel3DIntArray t;
    t.SetSize(static_cast<int>(triangles.size()));
    std::copy(triangles.begin(), triangles.end(), t.Data());
    QelTriangleMesh mesh;
    mesh.SetVertices(v);
    mesh.SetTriangles(t);
    return mesh;
}

inline QelTriangleMesh squareMesh(float half) {
    return meshOf({{-half, -half, 0}, {half, -half, 0}, {half, half, 0}, {-half, half, 0}},
                  {0, 1, 2, 0, 2, 3});
}

// Reads pixels of a 3-channel screenshot (stored blue, green, red).
struct Shot {
    QelImage image;
    long status = -1;
    explicit Shot(long long handle) { status = QELMV::Qel3DScreenShot(handle, &image); }
    int width() const { return image.Width(); }
    int height() const { return image.Height(); }
    // red, green, blue at (x, y)
    void rgb(int x, int y, int* r, int* g, int* b) const {
        const unsigned char* p = image.ImageData() + (static_cast<size_t>(y) * width() + x) * 3;
        *b = p[0];
        *g = p[1];
        *r = p[2];
    }
    int count(const std::function<bool(int, int, int)>& test) const {
        int n = 0, r, g, b;
        for (int y = 0; y < height(); ++y)
            for (int x = 0; x < width(); ++x) {
                rgb(x, y, &r, &g, &b);
                n += test(r, g, b);
            }
        return n;
    }
    int countUnlike(int r0, int g0, int b0, int tolerance = 12) const {
        return count([&](int r, int g, int b) {
            return std::abs(r - r0) > tolerance || std::abs(g - g0) > tolerance ||
                   std::abs(b - b0) > tolerance;
        });
    }
    // Saves the picture for a person to look at when QEL_TEST_IMAGE_DIR is set.
    void keep(const char* name) const {
        const char* dir = std::getenv("QEL_TEST_IMAGE_DIR");
        if (!dir || status != 0) return;
        const std::wstring path = std::wstring(dir, dir + std::strlen(dir)) + L"/" +
                                  std::wstring(name, name + std::strlen(name)) + L".png";
        image.SaveImage(path.c_str(), QEL_IMAGE_FORMAT_PNG);
    }
};
