#include "TextOverlay.h"

#include <osg/CopyOp>

#include "TextLimit.h"

TextOverlay::TextOverlay(const osgText::Text& prototype, ObjectId id, const std::wstring& text,
                         const osg::Vec3& position, float size, const osg::Vec4& colour)
    : fullText_(text),
      text_(new osgText::Text(prototype, osg::CopyOp::SHALLOW_COPY)),
      geode_(new osg::Geode),
      id_(id) {
    text_->setCharacterSize(size);
    text_->setPosition(position);
    text_->setColor(colour);
    text_->setAlignment(osgText::Text::LEFT_TOP);
    text_->setAxisAlignment(osgText::Text::SCREEN);
    text_->setUseDisplayList(false);
    text_->setUseVertexBufferObjects(true);
    // Vertex array objects stay off: with them, text whose glyphs span
    // several glyph textures (CJK fonts) crashes in the GL driver.
    text_->setUseVertexArrayObject(false);
    text_->getOrCreateStateSet()->setMode(GL_DEPTH_TEST, osg::StateAttribute::OFF);
    text_->setText(laidOutText(text).c_str());
    geode_->addDrawable(text_.get());
}

void TextOverlay::setItemVisible(bool visible) {
    geode_->setNodeMask(visible ? ~0u : 0u);
}

bool TextOverlay::setItemColours(const osg::Vec4Array& colours) {
    if (colours.empty()) return false;
    text_->setColor(colours.front());
    return true;
}

osg::BoundingBox TextOverlay::itemBounds() const {
    osg::BoundingBox box;
    box.expandBy(text_->getPosition());
    return box;
}
