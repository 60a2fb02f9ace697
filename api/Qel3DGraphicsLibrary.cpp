// The viewer library's exported functions are added here and in the
// neighbouring files of api/; this unit anchors the library target.
#include "Qel3DGraphics.h"
