#pragma once

// The modes that travel from the exported functions down to the scene. The
// exported numbers are turned into these once, where a call enters the
// library; below that only the names are used.

// How a range image, mesh, image or shape draws its surface. The values are
// the ones the scene's objects have always stored.
enum class RenderMode { Points = 0, Wireframe = 1, Faces = 4 };

// How a point cloud draws its points.
enum class PointRenderMode { Plain, Sprite };

// The standard views, looking at the data's centre.
enum class StandardView { Top, Bottom, Front, Back, Left, Right, Oblique };

// What a render object holds.
enum class ObjectKind { Image, PointCloud, RangeImage, TriangleMesh, RangeImageStream };

// The outline a lasso draws: a free polygon, or the rectangle spanned by its
// first and last point.
enum class LassoShape { FreePolygon, Rectangle };

// What a measurement measures: the distance of two points, the angle at the
// middle of three, or the height of a fourth point above the plane of the
// first three.
enum class MeasureKind { Distance, Angle, Height };

// Every object shown in a view (render objects, shapes, streams, text
// overlays) is numbered from one process-wide counter.
using ObjectId = long;
