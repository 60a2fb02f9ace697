#pragma once

// Symbols of the data layer that hosts and the viewer may use. Everything
// else in the library is compiled with hidden visibility.
#define QEL_DATA_API __attribute__((visibility("default")))
