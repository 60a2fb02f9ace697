#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

// A mouse event as a hand makes it: 'button' pressed, moved with (a move
// with Qt::NoButton hovers) or released, when no button is held any more.
inline void sendMouse(QWidget* w, QEvent::Type type, QPointF at,
                      Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent event(type, at, w->mapToGlobal(at.toPoint()), button, held, modifiers);
    QApplication::sendEvent(w, &event);
}
