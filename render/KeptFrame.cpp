#include "KeptFrame.h"

#include <osg/GLExtensions>
#include <osg/State>

#include "NodeMasks.h"

namespace {

// One copy step, drawn in its place among the scene's bins.
class CopyStep : public osg::Drawable {
public:
    CopyStep(KeptFrame& frame, bool intoKept) : frame_(frame), intoKept_(intoKept) {
        setUseDisplayList(false);
        setCullingActive(false);
    }
    void drawImplementation(osg::RenderInfo& renderInfo) const override {
        frame_.copy(renderInfo, intoKept_);
    }
    osg::BoundingBox computeBoundingBox() const override { return osg::BoundingBox(); }

private:
    KeptFrame& frame_;
    bool intoKept_;
};

osg::ref_ptr<osg::Geode> stepNode(osg::Drawable* step, int bin, const char* name) {
    osg::ref_ptr<osg::Geode> node = new osg::Geode;
    node->setName(name);
    node->addDrawable(step);
    node->setCullingActive(false);
    node->setNodeMask(NodeMasks::kNotPickable);
    node->getOrCreateStateSet()->setRenderBinDetails(bin, "RenderBin");
    return node;
}

}  // namespace

KeptFrame::KeptFrame()
    : snapshot_(stepNode(new CopyStep(*this, true), kSnapshotBin, "kept frame: snapshot")),
      restore_(stepNode(new CopyStep(*this, false), -1000, "kept frame: restore")) {}

void KeptFrame::copy(osg::RenderInfo& renderInfo, bool intoKept) {
    if (!intoKept && !restoring_) return;
    osg::State& state = *renderInfo.getState();
    const osg::Viewport* view = state.getCurrentViewport();
    osg::GLExtensions* gl = state.get<osg::GLExtensions>();
    if (!view || !gl->isFrameBufferObjectSupported || !gl->glBlitFramebuffer) return;
    const int x = int(view->x()), y = int(view->y()), w = int(view->width()),
              h = int(view->height());
    if (!intoKept && !holds(w, h)) return;
    if (intoKept && !holds(w, h)) {
        // The formats of the view's own framebuffer: colour, and depth with
        // stencil (a blit copies between equal formats only).
        kept_ = new osg::FrameBufferObject;
        kept_->setAttachment(osg::Camera::COLOR_BUFFER0,
                             osg::FrameBufferAttachment(new osg::RenderBuffer(w, h, GL_RGBA8)));
        kept_->setAttachment(
            osg::Camera::PACKED_DEPTH_STENCIL_BUFFER,
            osg::FrameBufferAttachment(new osg::RenderBuffer(w, h, GL_DEPTH24_STENCIL8_EXT)));
        width_ = w;
        height_ = h;
    }
    GLint draw = 0, read = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING_EXT, &draw);
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING_EXT, &read);
    const GLbitfield what = GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT;
    if (intoKept) {
        kept_->apply(state, osg::FrameBufferObject::DRAW_FRAMEBUFFER);
        gl->glBindFramebuffer(GL_READ_FRAMEBUFFER_EXT, GLuint(draw));
        gl->glBlitFramebuffer(x, y, x + w, y + h, 0, 0, w, h, what, GL_NEAREST);
    } else {
        kept_->apply(state, osg::FrameBufferObject::READ_FRAMEBUFFER);
        gl->glBlitFramebuffer(0, 0, w, h, x, y, x + w, y + h, what, GL_NEAREST);
    }
    gl->glBindFramebuffer(GL_DRAW_FRAMEBUFFER_EXT, GLuint(draw));
    gl->glBindFramebuffer(GL_READ_FRAMEBUFFER_EXT, GLuint(read));
    if (intoKept && onKept_) onKept_();
}
