// How many slices a refinement frame draws: fitted to the frames so far.
#include <gtest/gtest.h>

#include "RefinePace.h"

TEST(RefinePace, FitsTheFixedPartAndTheCostOfASlice) {
    RefinePace pace;
    EXPECT_EQ(pace.slicesFor(100), 1u) << "nothing known yet";
    // 40 ms whatever is drawn, 10 ms a slice.
    pace.add(1, 50);
    EXPECT_EQ(pace.slicesFor(100), 2u) << "one size only: in proportion, at least one more";
    pace.add(2, 60);
    EXPECT_EQ(pace.slicesFor(100), 6u);
    pace.add(6, 100);
    EXPECT_EQ(pace.slicesFor(100), 6u) << "a frame that fits stays";
    EXPECT_EQ(pace.slicesFor(1000), 24u) << "at most four times the last";

    pace.restart();
    pace.add(3, 300);
    EXPECT_EQ(pace.slicesFor(100), 1u) << "a slow frame: in proportion, never none";
    pace.add(1, 250);
    EXPECT_EQ(pace.slicesFor(100), 1u) << "a fixed part over the time: still one";
}
