#pragma once

// The floor of the stack for the benchmarks: a scene-graph viewer drawing
// into a framebuffer object of its own offscreen context, with nothing of
// the library in between. Torn down in the order that frees GL objects
// cleanly.
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <osg/ContextData>
#include <osg/Geode>
#include <osg/Geometry>
#include <osgViewer/Viewer>
#include <vector>

class BareViewer {
public:
    explicit BareViewer(int size) : size_(size), pixels_(size_t(size) * size * 4) {
        QSurfaceFormat format;
        format.setProfile(QSurfaceFormat::CompatibilityProfile);
        format.setDepthBufferSize(24);
        format.setStencilBufferSize(8);
        surface_.setFormat(format);
        surface_.create();
        context_.setFormat(format);
        context_.create();
        context_.makeCurrent(&surface_);
        QOpenGLFramebufferObjectFormat fboFormat;
        fboFormat.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
        fbo_ = new QOpenGLFramebufferObject(size, size, fboFormat);
        fbo_->bind();
        viewer_ = new osgViewer::Viewer;
        window_ = new osgViewer::GraphicsWindowEmbedded(0, 0, size, size);
        window_->setDefaultFboId(fbo_->handle());
        camera()->setGraphicsContext(window_);
        camera()->setViewport(0, 0, size, size);
        // The scene graph's default field of view, which the library keeps,
        // on a square view: both draw the same picture.
        double fovy = 0, aspect = 1, zNear = 1, zFar = 10000;
        camera()->getProjectionMatrixAsPerspective(fovy, aspect, zNear, zFar);
        camera()->setProjectionMatrixAsPerspective(fovy, 1.0, zNear, zFar);
        camera()->setClearColor(osg::Vec4(0, 0, 0, 1));
        viewer_->setThreadingModel(osgViewer::Viewer::SingleThreaded);
        viewer_->realize();
    }
    ~BareViewer() {
        viewer_->setSceneData(nullptr);
        const unsigned int id = window_->getState()->getContextID();
        window_->close(true);
        viewer_ = nullptr;
        window_ = nullptr;
        if (osg::getContextData(id)) {
            osg::getContextData(id)->deleteAllGLObjects();
            osg::ContextData::decrementContextIDUsageCount(id);
        }
        delete fbo_;
        context_.doneCurrent();
    }
    BareViewer(const BareViewer&) = delete;
    BareViewer& operator=(const BareViewer&) = delete;

    osg::Camera* camera() const { return viewer_->getCamera(); }
    // Points as the bare path draws them: buffer objects, coloured by height.
    static osg::ref_ptr<osg::Geode> cloudNode(const std::vector<osg::Vec3>& points) {
        osg::ref_ptr<osg::Vec3Array> v = new osg::Vec3Array(points.begin(), points.end());
        osg::ref_ptr<osg::Vec4ubArray> c = new osg::Vec4ubArray(v->size());
        c->setNormalize(true);
        for (size_t i = 0; i < points.size(); ++i)
            (*c)[i].set(static_cast<unsigned char>(128 + 127 * points[i].z() * 5), 90,
                        static_cast<unsigned char>(128 - 127 * points[i].z() * 5), 255);
        osg::ref_ptr<osg::Geometry> g = new osg::Geometry;
        g->setUseDisplayList(false);
        g->setUseVertexBufferObjects(true);
        g->setVertexArray(v);
        g->setColorArray(c, osg::Array::BIND_PER_VERTEX);
        g->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, static_cast<int>(v->size())));
        osg::ref_ptr<osg::Geode> geode = new osg::Geode;
        geode->addDrawable(g);
        return geode;
    }
    void setScene(osg::Node* scene) { viewer_->setSceneData(scene); }
    // One frame, finished.
    void frame() {
        viewer_->frame();
        context_.functions()->glFinish();
    }
    // One frame and its pixels read back, as a screenshot needs.
    void frameAndReadBack() {
        viewer_->frame();
        context_.functions()->glReadPixels(0, 0, size_, size_, GL_RGBA, GL_UNSIGNED_BYTE,
                                           pixels_.data());
    }

    // Pixels of the last read-back that are not black.
    long litPixels() const {
        long n = 0;
        for (size_t i = 0; i < pixels_.size(); i += 4)
            n += (pixels_[i] | pixels_[i + 1] | pixels_[i + 2]) != 0;
        return n;
    }

private:
    int size_;
    std::vector<unsigned char> pixels_;
    QOffscreenSurface surface_;
    QOpenGLContext context_;
    QOpenGLFramebufferObject* fbo_ = nullptr;
    osg::ref_ptr<osgViewer::Viewer> viewer_;
    osg::ref_ptr<osgViewer::GraphicsWindowEmbedded> window_;
};
