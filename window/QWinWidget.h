#pragma once

#include <QWidget>

class QWindow;

// Hosts the library's window inside a foreign X11 window given by id: the
// widget's own native window becomes the host window's child and follows
// its size; focus moves in from and back out to the host window.
class QWinWidget : public QWidget {
    Q_OBJECT
public:
    // success (when given) tells whether id named a window; without one the
    // widget stays unembedded.
    QWinWidget(unsigned long parentWindow, bool* success = nullptr, QObject* parentObject = nullptr,
               Qt::WindowFlags flags = Qt::WindowFlags());
    ~QWinWidget() override;

    unsigned long parentWindow() const { return parentWindow_; }
    // A rectangle in the host's X pixels (device pixels) in this widget's
    // logical pixels, grown outwards to whole pixels so it covers the area.
    QRect toLogical(const QRect& devicePixels) const;
    void show();
    // Centres the widget's top-level children (dialogs) over the host window.
    void center();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    // Children marked with the property "qelFillParent" keep the widget's size.
    void resizeEvent(QResizeEvent* event) override;
    void childEvent(QChildEvent* event) override;

private:
    void initialize();
    void followParentSize(unsigned long window, int width, int height);

    unsigned long parentWindow_;
    unsigned long previousFocus_ = 0;
    bool parentDisabled_ = false;
    bool reserved_ = false;
    QWindow* hostWindow_ = nullptr;  // the wrapper of the host's X window
};
