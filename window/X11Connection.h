#pragma once

#include <QObject>

class QSocketNotifier;
struct _XDisplay;

// The library's own connection to the X server the application uses: it
// checks foreign window ids and watches host windows for size changes,
// without touching the toolkit's connection. Bad ids raise X errors on
// this connection only, and they are caught here.
class X11Connection : public QObject {
    Q_OBJECT
public:
    // The process-wide connection, opened on first use (null without X).
    static X11Connection* instance();
    ~X11Connection() override;

    // Whether id names an existing window; never kills the process.
    bool isWindow(unsigned long id);
    // The window's size; false when it is not a window.
    bool windowSize(unsigned long id, int* width, int* height);
    // Reports sizeChanged whenever the window is resized.
    void watch(unsigned long id);
    void unwatch(unsigned long id);
    // Gives the keyboard focus to the window (for handing it back to a host).
    void focus(unsigned long id);
    // The window that has the keyboard focus, 0 for none.
    unsigned long focusedWindow();

signals:
    void sizeChanged(unsigned long window, int width, int height);

private:
    explicit X11Connection(_XDisplay* display);
    void readEvents();

    _XDisplay* display_;
    QSocketNotifier* notifier_;
};
