#pragma once

#include "Qel3DGraphics.h"
#include "SceneModes.h"

// The exported functions' numbers for modes and views, turned into the
// library's own names. Every function checks the range first; these take
// only values it accepted.
namespace ModeNumbers {

using namespace QELMV;

// Element states 0, 1, 2: points, wireframe, faces.
inline RenderMode renderMode(Qel3DGraphicsDataType state) {
    static constexpr RenderMode kModes[] = {RenderMode::Points, RenderMode::Wireframe,
                                            RenderMode::Faces};
    return kModes[state];
}

inline RenderMode shapeMode(Qel3DGraphicsShapeMode mode) {
    return mode == QEL_3D_SHAPE_WIREFRAME ? RenderMode::Wireframe : RenderMode::Faces;
}

inline StandardView view(Qel3DPerspective perspective) {
    static constexpr StandardView kViews[] = {
        StandardView::Top,  StandardView::Bottom, StandardView::Front,  StandardView::Back,
        StandardView::Left, StandardView::Right,  StandardView::Oblique};
    return kViews[perspective];
}

// Every mode but plain draws sprites.
inline PointRenderMode pointRenderMode(Qel3DPointRenderMode mode) {
    return mode == QEL_3D_POINT_PLAIN ? PointRenderMode::Plain : PointRenderMode::Sprite;
}

// Measurement kinds 0, 1, 2: distance, angle, height.
inline bool isMeasureKind(int kind) {
    return kind >= 0 && kind <= 2;
}
inline MeasureKind measureKind(int kind) {
    static constexpr MeasureKind kKinds[] = {MeasureKind::Distance, MeasureKind::Angle,
                                             MeasureKind::Height};
    return kKinds[kind];
}

}  // namespace ModeNumbers
