#pragma once

#include <string>

// Narrow text from a host is GBK (code page 936), which leaves ASCII as it
// is. Decoded with the toolkit's codec; the process locale is not touched.
class GbkText {
public:
    static std::wstring toWide(const char* text);
};
