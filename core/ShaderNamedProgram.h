#pragma once

#include <string>
#include <vector>

#include "ShaderBase.h"

// A shader whose program comes from QelGLShaderAlg by name. Setters do
// nothing until the provider exists and is ready.
class ShaderNamedProgram : public ShaderBase {
public:
    ShaderNamedProgram(osg::Node* node, const char* programName);

    // Makes the provider once; false when it already exists.
    bool create() override;
    void attach() override;
    void detach() override;

protected:
    void setUniformValues(const char* uniform, std::vector<float> values);

private:
    std::string programName_;
};
