#include "EyeDomePass.h"

#include <algorithm>
#include <osg/BlendFunc>
#include <osg/Depth>
#include <osg/GLExtensions>
#include <osg/State>

#include "EyeDomeShaderSource.h"

namespace {

osg::ref_ptr<osg::Program> program(const char* name, const char* fragment) {
    osg::ref_ptr<osg::Program> p = new osg::Program;
    p->setName(name);
    p->addShader(new osg::Shader(osg::Shader::VERTEX, kEyeDomeVertexSource));
    p->addShader(new osg::Shader(osg::Shader::FRAGMENT, fragment));
    return p;
}

void applyUniforms(osg::State& state, std::initializer_list<const osg::Uniform*> uniforms) {
    const osg::Program::PerContextProgram* pcp = state.getLastAppliedProgramObject();
    if (!pcp) return;
    for (const osg::Uniform* u : uniforms)
        pcp->apply(*u);
}

// Binds a texture on a unit whatever the state believes is bound there.
void bindTexture(osg::State& state, unsigned unit, osg::Texture2D& texture) {
    state.setActiveTextureUnit(unit);
    texture.apply(state);
    state.haveAppliedTextureAttribute(unit, &texture);
}

}  // namespace

EyeDomePass::EyeDomePass()
    : shadeProgram_(program("eyeDomeShade", kEyeDomeShadeSource)),
      compositeProgram_(program("eyeDomeComposite", kEyeDomeCompositeSource)),
      strength_(new osg::Uniform("strength", 0.4f)),
      radius_(new osg::Uniform("radius", 1.4f)),
      nearFar_(new osg::Uniform("nearFar", osg::Vec2(1, 2))),
      orthographic_(new osg::Uniform("orthographic", false)),
      depthScale_(new osg::Uniform("depthScale", 1.0f)),
      shadeScale_(new osg::Uniform("shadeScale", 1.0f)),
      viewSize_(new osg::Uniform("viewSize", osg::Vec2(1, 1))),
      viewOrigin_(new osg::Uniform("viewOrigin", osg::Vec2(0, 0))),
      shadeSize_(new osg::Uniform("shadeSize", osg::Vec2(1, 1))),
      depthMap_(new osg::Uniform("depthMap", 0)),
      shadeMap_(new osg::Uniform("shadeMap", 1)) {
    setName("eye-dome lighting");
    // One triangle over the whole view, in clip coordinates.
    osg::ref_ptr<osg::Vec3Array> corners = new osg::Vec3Array;
    corners->push_back(osg::Vec3(-1, -1, 0));
    corners->push_back(osg::Vec3(3, -1, 0));
    corners->push_back(osg::Vec3(-1, 3, 0));
    setVertexArray(corners.get());
    addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, 3));
    setUseDisplayList(false);
    setUseVertexBufferObjects(true);
    setCullingActive(false);

    // What the state holds after the pass: the composite program, the
    // picture multiplied by the shade, the depth neither tested nor
    // written, no clip plane.
    osg::StateSet* ss = getOrCreateStateSet();
    ss->setAttributeAndModes(compositeProgram_.get());
    ss->setAttributeAndModes(new osg::BlendFunc(GL_DST_COLOR, GL_ZERO));
    ss->setMode(GL_DEPTH_TEST, osg::StateAttribute::OFF);
    ss->setAttributeAndModes(new osg::Depth(osg::Depth::ALWAYS, 0, 1, false));
    ss->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    ss->setMode(GL_CLIP_PLANE0, osg::StateAttribute::OFF);
}

void EyeDomePass::fitTextures(int width, int height) const {
    const int sw = (width + scale_ - 1) / scale_, sh = (height + scale_ - 1) / scale_;
    if (depth_ && width == depthWidth_ && height == depthHeight_ && sw == shadeWidth_ &&
        sh == shadeHeight_)
        return;
    // New textures rather than resized ones: the old go with their GL objects.
    depth_ = new osg::Texture2D;
    depth_->setInternalFormat(GL_DEPTH_COMPONENT24);
    depth_->setSourceFormat(GL_DEPTH_COMPONENT);
    depth_->setSourceType(GL_UNSIGNED_INT);
    depth_->setTextureSize(width, height);
    shade_ = new osg::Texture2D;
    shade_->setInternalFormat(GL_RGBA8);
    shade_->setSourceFormat(GL_RGBA);
    shade_->setSourceType(GL_UNSIGNED_BYTE);
    shade_->setTextureSize(sw, sh);
    for (osg::Texture2D* t : {depth_.get(), shade_.get()}) {
        t->setResizeNonPowerOfTwoHint(false);
        t->setWrap(osg::Texture::WRAP_S, osg::Texture::CLAMP_TO_EDGE);
        t->setWrap(osg::Texture::WRAP_T, osg::Texture::CLAMP_TO_EDGE);
    }
    // Depth is read texel by texel; the shade is spread over its block.
    depth_->setFilter(osg::Texture::MIN_FILTER, osg::Texture::NEAREST);
    depth_->setFilter(osg::Texture::MAG_FILTER, osg::Texture::NEAREST);
    shade_->setFilter(osg::Texture::MIN_FILTER, osg::Texture::LINEAR);
    shade_->setFilter(osg::Texture::MAG_FILTER, osg::Texture::LINEAR);
    target_ = new osg::FrameBufferObject;
    target_->setAttachment(osg::Camera::COLOR_BUFFER0, osg::FrameBufferAttachment(shade_.get()));
    depthWidth_ = width;
    depthHeight_ = height;
    shadeWidth_ = sw;
    shadeHeight_ = sh;
}

void EyeDomePass::setDepthMapping(const osg::Matrixd& projection) const {
    double left, right, bottom, top, zNear = 1, zFar = 2;
    const bool ortho = projection(3, 3) != 0.0;
    if (ortho)
        projection.getOrtho(left, right, bottom, top, zNear, zFar);
    else
        projection.getFrustum(left, right, bottom, top, zNear, zFar);
    nearFar_->set(osg::Vec2(float(zNear), float(zFar)));
    orthographic_->set(ortho);
    // The scene's depth: what a unit of log depth is at its middle.
    depthScale_->set(float(std::max(zFar - zNear, 1e-9)));
}

void EyeDomePass::drawImplementation(osg::RenderInfo& renderInfo) const {
    osg::State& state = *renderInfo.getState();
    const osg::Viewport* view = state.getCurrentViewport();
    osg::GLExtensions* gl = state.get<osg::GLExtensions>();
    if (!view || view->width() < 1 || view->height() < 1 || !gl->isGlslSupported ||
        !gl->isFrameBufferObjectSupported)
        return;
    const int width = int(view->width()), height = int(view->height());
    fitTextures(width, height);
    setDepthMapping(state.getProjectionMatrix());
    shadeScale_->set(float(scale_));
    viewSize_->set(osg::Vec2(float(width), float(height)));
    viewOrigin_->set(osg::Vec2(float(view->x()), float(view->y())));
    shadeSize_->set(osg::Vec2(float(shadeWidth_ * scale_), float(shadeHeight_ * scale_)));

    // 1. The depth of what is drawn so far.
    state.setActiveTextureUnit(0);
    depth_->copyTexSubImage2D(state, 0, 0, int(view->x()), int(view->y()), width, height);

    // 2. The shade, into its own texture.
    GLint framebuffer = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING_EXT, &framebuffer);
    target_->apply(state, osg::FrameBufferObject::DRAW_FRAMEBUFFER);
    glViewport(0, 0, shadeWidth_, shadeHeight_);
    // Attaching may have bound the shade texture in the depth's place.
    bindTexture(state, 0, *depth_);
    state.applyMode(GL_BLEND, false);
    state.applyAttribute(shadeProgram_.get());
    applyUniforms(state, {depthMap_.get(), viewSize_.get(), shadeScale_.get(), nearFar_.get(),
                          orthographic_.get(), depthScale_.get(), strength_.get(), radius_.get()});
    osg::Geometry::drawImplementation(renderInfo);

    // 3. The picture times the shade, back in the view's framebuffer.
    gl->glBindFramebuffer(GL_DRAW_FRAMEBUFFER_EXT, GLuint(framebuffer));
    glViewport(GLint(view->x()), GLint(view->y()), width, height);
    state.applyMode(GL_BLEND, true);
    bindTexture(state, 1, *shade_);
    state.applyAttribute(compositeProgram_.get());
    applyUniforms(state, {shadeMap_.get(), viewOrigin_.get(), shadeSize_.get()});
    osg::Geometry::drawImplementation(renderInfo);
}
