#pragma once

#include <QLabel>
#include <QPointF>
#include <QVector>

#include "SceneModes.h"

// The transparent layer over the 3D view on which the user draws a lasso
// (a free polygon) or, with Shift held at the start, a rectangle with the
// left button while the lasso tool is on. It records the outline in widget coordinates and paints
// it red.
class PaintWidget : public QLabel {
    Q_OBJECT
public:
    explicit PaintWidget(QWidget* parent);

    LassoShape shapeMode() const { return shapeMode_; }
    void setShapeMode(LassoShape shape) { shapeMode_ = shape; }
    bool isDrawingEnabled() const { return enabled_; }
    void setDrawingEnabled(bool on) { enabled_ = on; }
    const QVector<QPointF>& outline() const { return points_; }
    void clear();

signals:
    void drawingFinished();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    LassoShape shapeMode_ = LassoShape::FreePolygon;
    QVector<QPointF> points_;
    bool drawing_ = false;
    bool enabled_ = false;
};
