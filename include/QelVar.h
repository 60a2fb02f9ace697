#pragma once

#include <string>

#include "QelDataEnums.h"
#include "QelDataExport.h"

// A variant holding a long, a double, a narrow or a wide string. Readers of
// another kind convert between the two number kinds and give 0 or an empty
// string otherwise.
class QEL_DATA_API QelVar {
public:
    QelVar() = default;
    QelVar(long v);
    QelVar(int v);
    QelVar(double v);
    QelVar(float v);
    // A null pointer gives an empty variant.
    QelVar(const char* s);
    QelVar(const wchar_t* s);

    int ValType() const { return type_; }
    long L() const;
    double D() const;
    float F() const;
    const char* S() const;
    const wchar_t* WS() const;

private:
    int type_ = QEL_VAR_NONE;
    long long_ = 0;
    double double_ = 0.0;
    std::string string_;
    std::wstring wstring_;
};
