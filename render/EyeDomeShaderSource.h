#pragma once

// GLSL sources of the eye-dome lighting pass.
extern const char* const kEyeDomeVertexSource;
extern const char* const kEyeDomeShadeSource;
extern const char* const kEyeDomeCompositeSource;
