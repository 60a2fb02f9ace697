#pragma once

#include <memory>

#include "Shape.h"

class Qel3DShape;

// Builds the adapter of a shape description's kind with the given id: null
// when the kind is not handled (3, 0, negative, above 19), when the kind's
// getter refuses its parameters (invalid or non-finite values), or when a
// point or a line has a z at or beyond the largest float (an unset point).
std::unique_ptr<Shape> createShape(const Qel3DShape& shape, ObjectId id);
