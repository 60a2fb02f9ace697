#pragma once

#include <QPointF>
#include <QVector>

#include "SceneModes.h"

class GLViewer;
class QelPointCloud;
class QelRangeImage;

// Selection by an outline drawn over a view, in widget coordinates: a free
// polygon or the rectangle spanned by its first and last point. It selects
// from the render object added last, projecting its points with the camera
// of the last frame (the picture the user drew on): 11501008 without render
// objects, 11501009 when the outline encloses nothing; 0 otherwise, also
// when nothing was selected (the output is then untouched) or the object
// has no points to select. 'used' tells whether the outline was applied
// (then the lasso is spent).
class OutlineSelection {
public:
    explicit OutlineSelection(GLViewer& view) : view_(view) {}

    // A cloud's points (with their colours), a range image's valid samples,
    // a mesh's vertices, in the object's own coordinates.
    long selectPoints(const QVector<QPointF>& outline, LassoShape shape, bool keepInside,
                      QelPointCloud* out, bool* used);
    // Range images only: a copy of the image with every sample outside the
    // selection made invalid.
    long selectRangeSamples(const QVector<QPointF>& outline, LassoShape shape, bool keepInside,
                            QelRangeImage* out, bool* used);

private:
    // What an outline selected: the object, its points in its own
    // coordinates with each one's index in the object (a range image's
    // pixel index), and which of them were chosen.
    struct Selection;
    // With onlyKind set, other kinds of object are not selected from.
    long select(const QVector<QPointF>& outline, LassoShape shape, bool keepInside,
                Selection* selection, const ObjectKind* onlyKind = nullptr);

    GLViewer& view_;
};
