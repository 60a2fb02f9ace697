#pragma once

#include <osg/Vec4>
#include <osg/Vec4ub>

// Colours arrive as four integers 0..255 and are kept in the scene as floats
// 0..1; these are the one place that converts between the two.
namespace ColourBytes {

inline osg::Vec4 toVec4(int r, int g, int b, int a) {
    return osg::Vec4(r / 255.0f, g / 255.0f, b / 255.0f, a / 255.0f);
}

// The nearest byte of a float channel (exact for values that came from bytes).
inline unsigned char toByte(float channel) {
    const float scaled = channel * 255.0f + 0.5f;
    return scaled <= 0.0f ? 0 : scaled >= 255.0f ? 255 : static_cast<unsigned char>(scaled);
}

inline osg::Vec4ub toVec4ub(const osg::Vec4& colour) {
    return osg::Vec4ub(toByte(colour.r()), toByte(colour.g()), toByte(colour.b()),
                       toByte(colour.a()));
}

}  // namespace ColourBytes
