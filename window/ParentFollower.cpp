#include "ParentFollower.h"

#include <QEvent>
#include <QVariant>
#include <QWidget>

ParentFollower::ParentFollower(QWidget* window) : QObject(window), window_(window) {}

void ParentFollower::follow(QWidget* window) {
    QWidget* parent = window ? window->parentWidget() : nullptr;
    if (!parent) return;
    window->setProperty("qelFillParent", true);
    auto* follower = new ParentFollower(window);
    parent->installEventFilter(follower);
    follower->fill();
}

bool ParentFollower::eventFilter(QObject* watched, QEvent* event) {
    // Only the parent's own geometry and visibility; the event goes on to
    // the parent unchanged.
    if (window_ && watched == window_->parentWidget() &&
        (event->type() == QEvent::Resize || event->type() == QEvent::Show))
        fill();
    return QObject::eventFilter(watched, event);
}

void ParentFollower::fill() {
    if (!window_ || !window_->property("qelFillParent").toBool()) return;
    QWidget* parent = window_->parentWidget();
    if (parent && window_->geometry() != parent->rect()) window_->setGeometry(parent->rect());
}
