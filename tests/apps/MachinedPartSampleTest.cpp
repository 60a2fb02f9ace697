// The demo's bundled sample: deterministic, and it holds the features a
// person should see.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "MachinedPartSample.h"

namespace {
int column(double x) {
    return static_cast<int>(x / MachinedPartSample::kPixelSize);
}
}  // namespace

TEST(MachinedPartSample, HasStepsHolesARampAndGaps) {
    using S = MachinedPartSample;
    EXPECT_NEAR(S::heightAt(column(80), column(10)), 8.0, 1e-9) << "base";
    EXPECT_NEAR(S::heightAt(column(30), column(40)), 14.0, 1e-9) << "pad";
    EXPECT_NEAR(S::heightAt(column(40), column(40)), 15.5, 1e-9) << "step on the pad";
    EXPECT_NEAR(S::heightAt(column(59), column(45)), 4.0, 1e-9) << "inner pocket";
    EXPECT_TRUE(std::isnan(S::heightAt(column(14), column(12)))) << "through-hole";
    EXPECT_LT(S::heightAt(column(26), column(15)), S::heightAt(column(42), column(15))) << "ramp";
    EXPECT_NEAR(S::heightAt(column(1), column(1)), 0.0, 1e-9) << "fixture plate";

    const QelRangeImage a = S::build(), b = S::build();
    ASSERT_EQ(a.Width(), S::kWidth);
    ASSERT_EQ(a.Height(), S::kHeight);
    const auto* pa = reinterpret_cast<const std::uint16_t*>(a.Data());
    const auto* pb = reinterpret_cast<const std::uint16_t*>(b.Data());
    int invalid = 0, differing = 0;
    for (int i = 0; i < a.Width() * a.Height(); ++i) {
        invalid += pa[i] == 0;
        differing += pa[i] != pb[i];
    }
    EXPECT_EQ(differing, 0);
    const double share = double(invalid) / (a.Width() * a.Height());
    EXPECT_GT(share, 0.005);
    EXPECT_LT(share, 0.05);
}
