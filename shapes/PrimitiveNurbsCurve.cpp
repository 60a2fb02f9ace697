#include "PrimitiveNurbsCurve.h"

#include "Tessellation.h"

PrimitiveNurbsCurve::PrimitiveNurbsCurve(const std::vector<BSpline::Weighted>& controls, int degree)
    : controls_(controls), degree_(degree) {}

void PrimitiveNurbsCurve::buildLines() {
    if (controls_.size() < 2) return;
    Tessellation::sampleCurve([this](float u) { return BSpline::curve(controls_, degree_, u); },
                              Tessellation::kCurveSamples, *vertices_);
    drawArrays(GL_LINES, 0);
}
