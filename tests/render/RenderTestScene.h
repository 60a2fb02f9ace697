#pragma once

#include <QImage>
#include <QString>
#include <initializer_list>
#include <memory>
#include <osg/Geode>
#include <osg/Geometry>

#include "CameraController.h"
#include "ClipPlane.h"
#include "GLViewer.h"
#include "LightController.h"
#include "PointBudget.h"
#include "QelOSGWidget.h"
#include "SceneContent.h"
#include "ScreenCapture.h"
#include "ViewDecorations.h"
#include "ViewerManipulator.h"

inline osg::ref_ptr<osg::Vec3Array> vec3s(std::initializer_list<osg::Vec3> values) {
    osg::ref_ptr<osg::Vec3Array> a = new osg::Vec3Array;
    for (const osg::Vec3& v : values)
        a->push_back(v);
    return a;
}

inline osg::ref_ptr<osg::Vec4Array> vec4s(std::initializer_list<osg::Vec4> values) {
    osg::ref_ptr<osg::Vec4Array> a = new osg::Vec4Array;
    for (const osg::Vec4& v : values)
        a->push_back(v);
    return a;
}

// A quad through the four corners, one colour and one normal.
inline osg::ref_ptr<osg::Geode> makeQuad(const osg::Vec3& a, const osg::Vec3& b, const osg::Vec3& c,
                                         const osg::Vec3& d, const osg::Vec4& colour,
                                         const osg::Vec3& normal = osg::Vec3(0, 0, 1)) {
    osg::ref_ptr<osg::Geometry> g = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> v = vec3s({a, b, c, d});
    g->setVertexArray(v);
    osg::ref_ptr<osg::Vec4Array> colours = vec4s({colour});
    g->setColorArray(colours, osg::Array::BIND_OVERALL);
    osg::ref_ptr<osg::Vec3Array> normals = vec3s({normal});
    g->setNormalArray(normals, osg::Array::BIND_OVERALL);
    g->addPrimitiveSet(new osg::DrawArrays(GL_QUADS, 0, 4));
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(g);
    return geode;
}

// A view of the given size, initialised, with its manipulator looking down
// -z from (0, 0, distance).
inline std::unique_ptr<GLViewer> makeView(int width = 200, int height = 200,
                                          double distance = 30.0) {
    auto view = std::make_unique<GLViewer>();
    view->resize(width, height);
    view->grabFrame();
    view->installManipulator();
    view->manipulator()->setLookAt(osg::Vec3d(0, 0, distance), osg::Vec3d(0, 0, 0),
                                   osg::Vec3d(0, 1, 0));
    return view;
}

// Saves a picture for a person to look at when QEL_TEST_IMAGE_DIR is set.
inline void keepImage(const QImage& image, const char* name) {
    const QByteArray dir = qgetenv("QEL_TEST_IMAGE_DIR");
    if (!dir.isEmpty()) image.save(QString::fromLocal8Bit(dir) + "/" + name + ".png");
}

// Number of pixels whose colour differs from c by more than tolerance in any
// channel.
inline int countUnlike(const QImage& image, QColor c, int tolerance = 8) {
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor p = image.pixelColor(x, y);
            if (std::abs(p.red() - c.red()) > tolerance ||
                std::abs(p.green() - c.green()) > tolerance ||
                std::abs(p.blue() - c.blue()) > tolerance)
                ++n;
        }
    return n;
}

// Pixels that are not black: what a frame drew over a black background.
inline int litPixels(const QImage& image) {
    return countUnlike(image, Qt::black, 0);
}

// Number of pixels in which two pictures of one size differ by more than
// tolerance in any channel.
inline int differingPixels(const QImage& a, const QImage& b, int tolerance = 0) {
    int n = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QColor p = a.pixelColor(x, y), q = b.pixelColor(x, y);
            n += std::abs(p.red() - q.red()) > tolerance ||
                 std::abs(p.green() - q.green()) > tolerance ||
                 std::abs(p.blue() - q.blue()) > tolerance;
        }
    return n;
}
