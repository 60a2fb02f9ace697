#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

// Keeps a window the size of its parent widget's area, as a widget in a
// layout would be, while the window is marked "qelFillParent": it watches
// the parent's resizes and shows without changing the parent, its layout or
// its other children. A window whose geometry the host set (the rectangle
// form, a move) is no longer marked, and stays where the host put it.
class ParentFollower : public QObject {
    Q_OBJECT
public:
    // Marks the window, fills the parent now and follows it; owned by the
    // window.
    static void follow(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit ParentFollower(QWidget* window);
    void fill();

    QPointer<QWidget> window_;
};
