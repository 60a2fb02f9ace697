#pragma once

#include "BasePrimitive.h"

// The base of every shape adapter: the render mode and the colour and
// blending state all shapes share. Mode 1 is the line form, mode 4 the
// surface form (GL_LINES and GL_TRIANGLES).
class Shape : public virtual BasePrimitive {
public:
    enum Mode { Lines = GL_LINES, Surface = GL_TRIANGLES };

    explicit Shape(unsigned int id);

    // The first colour of the array becomes the shape's colour; false for
    // an empty array.
    virtual bool setColor(const osg::Vec4Array& colours);
    // Always empties the geometry; rebuilds it for mode 1 or 4, and keeps
    // the old mode (and an empty shape) for any other value.
    virtual void setShapeMode(int mode);
    int mode() const { return mode_; }

protected:
    int mode_ = Surface;
};
