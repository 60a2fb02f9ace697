#pragma once

// The one header a host includes: every data type of the data layer and the
// exported functions of the viewer in namespace QELMV.
#include "Qel3DData.h"

#define QEL_GRAPHICS_API __attribute__((visibility("default")))
