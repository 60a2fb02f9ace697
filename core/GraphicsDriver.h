#pragma once

#include <string>

// What the process's OpenGL driver is, noted when a view's context is made.
// A software rasterizer reads vertex arrays straight from memory, so big
// arrays are drawn from client memory there: a buffer object would only
// copy them first (a 10-million-point cloud's first frame waited about
// 80 ms for that copy). Hardware keeps buffer objects in its own memory.
class GraphicsDriver {
public:
    // The context's GL_RENDERER string.
    static void noteRenderer(const std::string& renderer);
    // False until a context was made, and for hardware.
    static bool isSoftware();
};
