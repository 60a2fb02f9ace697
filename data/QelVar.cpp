#include "QelVar.h"

#include <cmath>
#include <limits>

QelVar::QelVar(long v) : type_(QEL_VAR_LONG), long_(v) {}

QelVar::QelVar(int v) : type_(QEL_VAR_LONG), long_(v) {}

QelVar::QelVar(double v) : type_(QEL_VAR_DOUBLE), double_(v) {}

QelVar::QelVar(float v) : type_(QEL_VAR_DOUBLE), double_(v) {}

QelVar::QelVar(const char* s) {
    if (s) {
        type_ = QEL_VAR_STRING;
        string_ = s;
    }
}

QelVar::QelVar(const wchar_t* s) {
    if (s) {
        type_ = QEL_VAR_WSTRING;
        wstring_ = s;
    }
}

long QelVar::L() const {
    if (type_ == QEL_VAR_LONG) return long_;
    if (type_ == QEL_VAR_DOUBLE) {
        // Out-of-range and NaN conversions are undefined; saturate instead.
        if (std::isnan(double_)) return 0;
        if (double_ >= static_cast<double>(std::numeric_limits<long>::max()))
            return std::numeric_limits<long>::max();
        if (double_ <= static_cast<double>(std::numeric_limits<long>::min()))
            return std::numeric_limits<long>::min();
        return static_cast<long>(double_);
    }
    return 0;
}

double QelVar::D() const {
    if (type_ == QEL_VAR_DOUBLE) return double_;
    if (type_ == QEL_VAR_LONG) return static_cast<double>(long_);
    return 0.0;
}

float QelVar::F() const {
    return static_cast<float>(D());
}

const char* QelVar::S() const {
    return string_.c_str();
}

const wchar_t* QelVar::WS() const {
    return wstring_.c_str();
}
