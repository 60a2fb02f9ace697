#include "PaintWidget.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

PaintWidget::PaintWidget(QWidget* parent) : QLabel(parent) {
    setAttribute(Qt::WA_TranslucentBackground);
    setStyleSheet("background: transparent;");
}

void PaintWidget::clear() {
    points_.clear();
    update();
}

void PaintWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && !drawing_ && enabled_) {
        // Shift held at the start draws a rectangle instead of a free lasso.
        shapeMode_ = (event->modifiers() & Qt::ShiftModifier) ? LassoShape::Rectangle
                                                              : LassoShape::FreePolygon;
        drawing_ = true;
        points_.clear();
        return;
    }
    QLabel::mousePressEvent(event);
}

void PaintWidget::mouseMoveEvent(QMouseEvent* event) {
    if (drawing_) {
        points_.append(event->localPos());
        update();
        return;
    }
    QLabel::mouseMoveEvent(event);
}

void PaintWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (drawing_) {
        drawing_ = false;
        update();
        emit drawingFinished();
    }
    QLabel::mouseReleaseEvent(event);
}

void PaintWidget::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (points_.size() < 2) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(255, 0, 0, 255), 2));
    if (shapeMode_ == LassoShape::Rectangle) {
        painter.drawRect(QRectF(points_.first(), points_.last()).normalized());
        return;
    }
    QPainterPath path(points_.first());
    for (int i = 1; i < points_.size(); ++i)
        path.lineTo(points_[i]);
    path.closeSubpath();
    painter.drawPath(path);
}
