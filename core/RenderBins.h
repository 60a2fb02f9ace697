#pragma once

// The render bins that order a frame after the data. Opaque data draws in
// the default bin (0) and translucent data in the depth-sorted bin (10);
// then, in this order:
namespace RenderBins {
// The kept picture of the data is copied here (progressive frames).
constexpr int kKeptSnapshot = 11;
// Shapes, depth-sorted among themselves. After the snapshot, so a frame
// that goes on from the kept picture draws them anew over the data.
constexpr int kShapes = 12;
// The eye-dome lighting pass over what is drawn so far.
constexpr int kEyeDomePass = 15;
// The box and the axis, when they must not be shaded or kept.
constexpr int kAfterData = 20;
}  // namespace RenderBins
