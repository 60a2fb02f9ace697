#include "AxisTicks.h"

#include <cmath>
#include <cstdio>

namespace {

// More ticks than this on one axis never reach the screen.
constexpr double kMaxTicks = 1000.0;

}  // namespace

double AxisTicks::step(double lo, double hi, int intervals) {
    const double span = hi - lo;
    if (!(span > 0.0) || !std::isfinite(span) || intervals < 1) return 0.0;
    const double raw = span / intervals;
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    for (double mantissa : {1.0, 2.0, 5.0, 10.0}) {
        // A relative tolerance keeps 0.3 / 3 from becoming 0.2 by rounding.
        if (mantissa * power >= raw * (1.0 - 1e-9)) return mantissa * power;
    }
    return 10.0 * power;
}

int AxisTicks::decimals(double step) {
    if (!(step > 0.0) || step >= 1.0) return 0;
    return static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
}

std::vector<AxisTicks::Tick> AxisTicks::ticks(double lo, double hi, double step) {
    std::vector<Tick> out;
    if (!(step > 0.0) || !(hi >= lo) || (hi - lo) / step > kMaxTicks) return out;
    const double slack = step * 1e-6;
    const int digits = decimals(step);
    // Integer multiples, so values do not drift by repeated addition.
    for (double k = std::ceil((lo - slack) / step); k * step <= hi + slack; k += 1.0) {
        const double value = k * step;
        out.push_back({value, label(value, digits)});
    }
    return out;
}

std::string AxisTicks::label(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    std::string s(text);
    // "-0" and "-0.00" read as zero.
    if (s.find_first_not_of("-0.") == std::string::npos && s[0] == '-') s.erase(0, 1);
    return s;
}
