#pragma once

#include <string>
#include <vector>

// Tick values for a measuring axis: multiples of a round step (1, 2 or 5
// times a power of ten) inside a range, each labelled with as many decimals
// as the step needs and no more.
class AxisTicks {
public:
    struct Tick {
        double value;
        std::string label;
    };

    // The round step that divides [lo, hi] into about 'intervals' parts:
    // the smallest round number not below (hi - lo) / intervals. 0 for an
    // empty or unusable range.
    static double step(double lo, double hi, int intervals);
    // Decimals a label of multiples of 'step' needs (0 for steps of 1 and up).
    static int decimals(double step);
    // Every multiple of 'step' in [lo, hi] (ends included within a rounding
    // error), in increasing order.
    static std::vector<Tick> ticks(double lo, double hi, double step);
    static std::string label(double value, int decimals);
};
