#pragma once

// Node mask bits of a view's scene. Visible data carries kPickable; what
// must never be picked (shapes, the cube axis) carries every other bit, so
// it is drawn but a visitor whose traversal mask is kPickable passes it by.
namespace NodeMasks {
constexpr unsigned int kPickable = 0x1u;
constexpr unsigned int kNotPickable = ~kPickable;
}  // namespace NodeMasks
