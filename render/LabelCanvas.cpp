#include "LabelCanvas.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <osg/BlendFunc>
#include <osg/TexEnv>

#include "LabelFont.h"
#include "NodeMasks.h"

namespace {

// The face of numbers, registered with the text engine once.
QString labelFamily() {
    static const QString family = [] {
        const int id = QFontDatabase::addApplicationFont(QString::fromUtf8(LabelFont::path()));
        const QStringList families = QFontDatabase::applicationFontFamilies(id);
        return families.isEmpty() ? QString("Sans Serif") : families.first();
    }();
    return family;
}

QColor toQColor(const osg::Vec4& c) {
    return QColor::fromRgbF(qBound(0.0, double(c.r()), 1.0), qBound(0.0, double(c.g()), 1.0),
                            qBound(0.0, double(c.b()), 1.0), qBound(0.0, double(c.a()), 1.0));
}

// The shadow that keeps a label readable over the data: the inverse of its
// colour, a little see-through, a fourteenth of the character height down
// and right (at least a pixel).
constexpr float kShadowAlpha = 0.8f;
constexpr double kShadowShare = 0.07;

}  // namespace

LabelCanvas::LabelCanvas()
    : camera_(new osg::Camera),
      quads_(new osg::Geometry),
      image_(new osg::Image),
      texture_(new osg::Texture2D) {
    camera_->setName("measurement labels");
    camera_->setReferenceFrame(osg::Transform::ABSOLUTE_RF);
    camera_->setRenderOrder(osg::Camera::NESTED_RENDER);
    camera_->setClearMask(0);
    camera_->setAllowEventFocus(false);
    camera_->setViewMatrix(osg::Matrix::identity());
    camera_->setProjectionMatrixAsOrtho2D(0, 1, 0, 1);
    camera_->setNodeMask(NodeMasks::kNotPickable);
    camera_->setCullingActive(false);

    texture_->setFilter(osg::Texture::MIN_FILTER, osg::Texture::NEAREST);
    texture_->setFilter(osg::Texture::MAG_FILTER, osg::Texture::NEAREST);
    texture_->setWrap(osg::Texture::WRAP_S, osg::Texture::CLAMP_TO_EDGE);
    texture_->setWrap(osg::Texture::WRAP_T, osg::Texture::CLAMP_TO_EDGE);
    texture_->setResizeNonPowerOfTwoHint(false);
    texture_->setUnRefImageDataAfterApply(false);
    texture_->setDataVariance(osg::Object::DYNAMIC);
    texture_->setImage(image_.get());

    osg::StateSet* ss = camera_->getOrCreateStateSet();
    ss->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    ss->setMode(GL_DEPTH_TEST, osg::StateAttribute::OFF);
    // A label is shown whole or not at all: the clip plane does not cut it.
    ss->setMode(GL_CLIP_PLANE0, osg::StateAttribute::OFF);
    // The picture's colours are premultiplied by their coverage.
    ss->setAttributeAndModes(new osg::BlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA));
    ss->setTextureAttributeAndModes(0, texture_.get());
    ss->setTextureAttribute(0, new osg::TexEnv(osg::TexEnv::REPLACE));
    // After the measurements' lines.
    ss->setRenderBinDetails(1002, "RenderBin");

    quads_->setUseDisplayList(false);
    quads_->setUseVertexBufferObjects(true);
    quads_->setUseVertexArrayObject(true);
    quads_->setVertexArray(new osg::Vec3Array);
    quads_->setTexCoordArray(0, new osg::Vec2Array);
    quads_->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, 0));
    quads_->setCullingActive(false);
    camera_->addChild(quads_.get());
}

void LabelCanvas::begin(int width, int height, float size) {
    width = std::max(width, 1);
    height = std::max(height, 1);
    if (picture_.width() != width || picture_.height() != height) {
        picture_ = QImage(width, height, QImage::Format_RGBA8888_Premultiplied);
        used_ = true;  // new memory: cleared below
    }
    if (used_) picture_.fill(Qt::transparent);
    used_ = false;
    font_ = QFont(labelFamily());
    font_.setPixelSize(std::max(1, int(std::lround(size))));
    font_.setHintingPreference(QFont::PreferNoHinting);
    camera_->setProjectionMatrixAsOrtho2D(0, width, 0, height);
    corners_.clear();
    texels_.clear();
}

double LabelCanvas::textWidth(const std::string& text) const {
    return QFontMetricsF(font_).horizontalAdvance(QString::fromStdString(text));
}

void LabelCanvas::text(double x, double y, const std::string& line, const osg::Vec4& colour) {
    QPainter painter(&picture_);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setFont(font_);
    const QString text = QString::fromStdString(line);
    // The image's rows run top down.
    const QPointF at(x, picture_.height() - y);
    const double shadow = std::max(1.0, std::round(kShadowShare * font_.pixelSize()));
    painter.setPen(
        toQColor(osg::Vec4(1 - colour.r(), 1 - colour.g(), 1 - colour.b(), kShadowAlpha)));
    painter.drawText(at + QPointF(shadow, shadow), text);
    painter.setPen(toQColor(colour));
    painter.drawText(at, text);
    used_ = true;
    changed_ = true;
    const QFontMetricsF metrics(font_);
    addQuad(x, y - metrics.descent() - shadow, x + metrics.horizontalAdvance(text) + shadow,
            y + metrics.ascent());
}

void LabelCanvas::addQuad(double left, double bottom, double right, double top) {
    // Whole pixels, a little beyond the text (glyphs that overhang), inside
    // the view: each quad pixel takes its own texel.
    const double w = picture_.width(), h = picture_.height();
    const double l = std::clamp(std::floor(left) - 2, 0.0, w);
    const double r = std::clamp(std::ceil(right) + 2, 0.0, w);
    const double b = std::clamp(std::floor(bottom) - 1, 0.0, h);
    const double t = std::clamp(std::ceil(top) + 1, 0.0, h);
    const osg::Vec3 c[4] = {{float(l), float(b), 0},
                            {float(r), float(b), 0},
                            {float(r), float(t), 0},
                            {float(l), float(t), 0}};
    for (int k : {0, 1, 2, 0, 2, 3}) {
        corners_.push_back(c[k]);
        // Row 0 of the image is the view's top.
        texels_.emplace_back(float(c[k].x() / w), float(1.0 - c[k].y() / h));
    }
}

void LabelCanvas::end() {
    // The image is handed over again when painted or moved in memory.
    if (changed_ || image_->data() != picture_.constBits()) {
        changed_ = false;
        image_->setImage(picture_.width(), picture_.height(), 1, GL_RGBA8, GL_RGBA,
                         GL_UNSIGNED_BYTE, picture_.bits(), osg::Image::NO_DELETE);
        image_->dirty();
    }
    auto* vertices = static_cast<osg::Vec3Array*>(quads_->getVertexArray());
    vertices->assign(corners_.begin(), corners_.end());
    vertices->dirty();
    auto* texels = static_cast<osg::Vec2Array*>(quads_->getTexCoordArray(0));
    texels->assign(texels_.begin(), texels_.end());
    texels->dirty();
    // A grown array reaches the GL through array objects only when handed
    // over again.
    quads_->setVertexArray(vertices);
    quads_->setTexCoordArray(0, texels);
    quads_->setPrimitiveSet(0, new osg::DrawArrays(GL_TRIANGLES, 0, GLsizei(corners_.size())));
    quads_->dirtyBound();
}
