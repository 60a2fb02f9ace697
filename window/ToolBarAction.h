#pragma once

#include <cstddef>

// The actions of a window's tool bar, in the order the user sees them.
enum class ToolBarAction {
    Import,
    SaveScreen,
    RenderPoints,
    RenderEdges,
    RenderFaces,
    Properties,
    ColorBar,
    Light,
    EyeDome,
    Axis,
    BoundingBox,
    ResetView,
    ObliqueView,
    TopView,
    BottomView,
    LeftView,
    RightView,
    FrontView,
    BackView,
    ClearScene,
    BackgroundColour,
    ColourMode,
    Measure,
    Lasso,
    SelectPoint,
};

constexpr std::size_t kToolBarActionCount =
    static_cast<std::size_t>(ToolBarAction::SelectPoint) + 1;
