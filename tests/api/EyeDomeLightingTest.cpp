// Eye-dome lighting through the exported function and the tool bar: the
// refusals in their order, the toggle and its mask bit, and a screenshot
// with it on.
#include <gtest/gtest.h>

#include <QAction>
#include <cmath>
#include <limits>

#include "ApiHost.h"
#include "Qel3DGraphics.h"

using namespace QELMV;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// A dense grid of points, overlapping at their size, with a trench across
// it, seen obliquely and coloured by height: a depth step along both sides
// of the trench.
long showTrench(long long h) {
    QelPointCloud cloud =
        gridCloud(100, 0.1f, [](float x, float) { return std::fabs(x) < 1.0f ? -1.5f : 0.0f; });
    const long id = QelDisplayPointCloud(h, cloud);
    QelSet3DElementSize(h, id, 5);
    QelSetLightState(h, false);
    QelSetAxisVisible(h, false);
    QelSetPerspective(h, QEL_3D_VIEW_OBLIQUE);
    return id;
}

}  // namespace

TEST(EyeDomeLighting, RefusalsInTheirOrderChangeNothing) {
    HostedWindow w;
    ASSERT_EQ(w.created, 0);
    QAction* toggle = findAction(w.handle, "Eye-Dome Lighting");
    ASSERT_NE(toggle, nullptr);
    EXPECT_EQ(QelSetEyeDomeLighting(w.handle + 999, true, 1.0, 2.0), 11504001);
    for (double strength : {0.0, -1.0, kNaN, kInf})
        EXPECT_EQ(QelSetEyeDomeLighting(w.handle, true, strength, 2.0), 11200003) << strength;
    for (double radius : {0.49, 8.01, kNaN, -kInf})
        EXPECT_EQ(QelSetEyeDomeLighting(w.handle, true, 1.0, radius), 11200004) << radius;
    EXPECT_EQ(QelSetEyeDomeLighting(w.handle, true, kNaN, kNaN), 11200003) << "strength first";
    EXPECT_FALSE(toggle->isChecked()) << "a refused call changes nothing";
    EXPECT_EQ(QelSetEyeDomeLighting(w.handle, true, 0.4, 0.5), 0);
    EXPECT_EQ(QelSetEyeDomeLighting(w.handle, true, 0.4, 8.0), 0);
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_EQ(QelSetEyeDomeLighting(w.handle, false, kNaN, -1.0), 0) << "off ignores both";
    EXPECT_FALSE(toggle->isChecked());
}

TEST(EyeDomeLighting, TheToggleAndItsMaskBitAndAScreenshot) {
    HostedWindow w(500, 450);
    ASSERT_EQ(w.created, 0);
    ASSERT_GE(showTrench(w.handle), 1);
    QAction* toggle = findAction(w.handle, "Eye-Dome Lighting");
    ASSERT_NE(toggle, nullptr);
    EXPECT_TRUE(toggle->isVisible()) << "shown like the other toggles";
    EXPECT_TRUE(toggle->isCheckable());
    EXPECT_EQ(QelSet3DToolbarVisible(w.handle, 0x00080000, false), 0);
    EXPECT_FALSE(toggle->isVisible());
    EXPECT_EQ(QelSet3DToolbarVisible(w.handle, 0x00080000, true), 0);
    EXPECT_TRUE(toggle->isVisible());

    // Pixels that lost more than a third of their brightness.
    const auto darkened = [](const Shot& a, const Shot& b) {
        int n = 0, r0, g0, b0, r1, g1, b1;
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x) {
                a.rgb(x, y, &r0, &g0, &b0);
                b.rgb(x, y, &r1, &g1, &b1);
                n += 3 * (r1 + g1 + b1) < 2 * (r0 + g0 + b0);
            }
        return n;
    };
    const auto coloured = [](int r, int g, int b) { return r + g + b > 200; };
    const Shot off(w.handle);
    ASSERT_EQ(off.status, 0);
    toggle->trigger();  // as the user clicks it
    pumpEvents();
    const Shot on(w.handle);
    ASSERT_EQ(on.status, 0);
    for (auto* shot : {&off, &on}) {
        static int n = 0;
        FILE* f = fopen(("/tmp/edl/shot" + std::to_string(n++) + ".ppm").c_str(), "wb");
        fprintf(f, "P6 %d %d 255\n", shot->width(), shot->height());
        for (int y = 0; y < shot->height(); ++y)
            for (int x = 0; x < shot->width(); ++x) {
                int r, g, b;
                shot->rgb(x, y, &r, &g, &b);
                fputc(r, f);
                fputc(g, f);
                fputc(b, f);
            }
        fclose(f);
    }
    // The ground darkens where the trench's floor stands in front of it (the
    // camera looks up from below): a line along the edge where they meet,
    // about as many pixels as the edge is long (some 120); the flat parts
    // keep their colour.
    EXPECT_GT(darkened(off, on), 80);
    EXPECT_LT(darkened(off, on), off.count(coloured) / 5);
    toggle->trigger();
    pumpEvents();
    const Shot again(w.handle);
    EXPECT_EQ(darkened(off, again), 0) << "off again, as before";
}
