#include "PrimitiveParametricSurface.h"

#include "Tessellation.h"

using namespace Tessellation;

void PrimitiveParametricSurface::buildSurface() {
    sampleSurface(f_, kSurfaceSamples, kSurfaceSamples, {*vertices_, *normals_});
    drawArrays(GL_TRIANGLES, 0);
}

void PrimitiveParametricSurface::buildLines() {
    sampleSurfaceLines(f_, kSurfaceSamples, kSurfaceSamples, *vertices_);
    drawArrays(GL_LINES, 0);
}
