#pragma once

// Sample type of a range image; the names are the texts the viewer shows.
enum QelDataType {
    QEL_8U = 0,
    QEL_8S = 1,
    QEL_16U = 2,
    QEL_16S = 3,
    QEL_32S = 4,
    QEL_32F = 5,
    QEL_64F = 6,
};

// Kind of value held by a QelVar. QEL_VAR_NONE is an empty variant.
enum QelVarType {
    QEL_VAR_NONE = -1,
    QEL_VAR_LONG = 0,
    QEL_VAR_DOUBLE = 1,
    QEL_VAR_STRING = 2,
    QEL_VAR_WSTRING = 3,
};

// Pixel type of a QelImage.
enum QelImageType {
    QEL_IMAGE_8U = 0,
    QEL_IMAGE_8S = 1,
    QEL_IMAGE_16U = 2,
    QEL_IMAGE_16S = 3,
    QEL_IMAGE_32F = 4,
};

// File format given to QelImage::SaveImage.
enum QelImageFormat {
    QEL_IMAGE_FORMAT_BMP = 0,
    QEL_IMAGE_FORMAT_PNG = 1,
    QEL_IMAGE_FORMAT_JPG = 2,
};

// Kind of a Qel3DShape. Value 3 is reserved and never describes a shape.
enum Qel3DShapeType {
    QEL_3D_SHAPE_NONE = 0,
    QEL_3D_POINT = 1,
    QEL_3D_LINE = 2,
    QEL_3D_SHAPE_RESERVED = 3,
    QEL_3D_CIRCLE = 4,
    QEL_3D_PLANE = 5,
    QEL_3D_BOX = 6,
    QEL_3D_SPHERE = 7,
    QEL_3D_CYLINDER = 8,
    QEL_3D_TRIANGLE = 9,
    QEL_3D_POLYGON = 10,
    QEL_3D_ELLIPSE = 11,
    QEL_3D_ELLIPSOID = 12,
    QEL_3D_RECT = 13,
    QEL_3D_TORUS = 14,
    QEL_3D_TUBE = 15,
    QEL_3D_ARC = 16,
    QEL_3D_ANY_SHAPE = 17,
    QEL_3D_CONE = 18,
    QEL_3D_ELLIPTIC_CYLINDER = 19,
};

// How a 3D line is drawn: a plain segment between its two points, a segment
// with an arrow head at the second point, or a line through both points
// stretched over the scene.
enum Qel3DLineType {
    QEL_LINE_SEGMENT = 0,
    QEL_LINE_ARROW = 1,
    QEL_LINE_INFINITE = 2,
};

// A full ring, or the part of it between the start and the sweep angle.
enum Qel3DTorusType {
    QEL_TORUS_FULL = 0,
    QEL_TORUS_PARTIAL = 1,
};
