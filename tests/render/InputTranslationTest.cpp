// Qt input turned into the viewer's events: keys, modifiers, buttons, wheel
// and the device pixel ratio.
#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <osgGA/EventQueue>

#include "MRenderer.h"
#include "PixelRatio.h"

namespace {

using E = osgGA::GUIEventAdapter;

std::vector<osg::ref_ptr<E>> takeEvents(MRenderer& r) {
    osgGA::EventQueue::Events events;
    r.graphicsWindow()->getEventQueue()->takeEvents(events);
    std::vector<osg::ref_ptr<E>> out;
    for (auto& e : events)
        out.push_back(e->asGUIEventAdapter());
    return out;
}

}  // namespace

TEST(InputTranslation, KeysOutsideTheMapUseTheirLatin1Text) {
    MRenderer r;
    r.setup(100, 100, 1.0f);
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a");
    r.keyPressEvent(&letter);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Enter, Qt::NoModifier, "\r");
    r.keyPressEvent(&enter);
    QKeyEvent insert(QEvent::KeyPress, Qt::Key_Insert, Qt::NoModifier);
    r.keyPressEvent(&insert);
    QKeyEvent noText(QEvent::KeyPress, Qt::Key_Launch0, Qt::NoModifier);
    r.keyPressEvent(&noText);
    QKeyEvent repeated(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, "a", true);
    r.keyReleaseEvent(&repeated);
    EXPECT_FALSE(repeated.isAccepted()) << "auto-repeated releases are dropped";
    QKeyEvent f12(QEvent::KeyRelease, Qt::Key_F12, Qt::NoModifier);
    r.keyReleaseEvent(&f12);

    const auto events = takeEvents(r);
    ASSERT_EQ(events.size(), 5u);
    EXPECT_EQ(events[0]->getKey(), 'a');
    EXPECT_EQ(events[1]->getKey(), E::KEY_KP_Enter);
    EXPECT_EQ(events[2]->getKey(), E::KEY_KP_Insert);
    EXPECT_EQ(events[3]->getKey(), 0);
    EXPECT_EQ(events[4]->getEventType(), E::KEYUP);
    EXPECT_EQ(events[4]->getKey(), E::KEY_F12);
}

TEST(InputTranslation, ModifiersButtonsAndPixelRatio) {
    EXPECT_EQ(MRenderer::modifierMask(Qt::ShiftModifier | Qt::ControlModifier), 0x0F);
    EXPECT_EQ(MRenderer::modifierMask(Qt::AltModifier | Qt::ShiftModifier), 0x33);
    EXPECT_EQ(MRenderer::modifierMask(Qt::MetaModifier), 0);
    EXPECT_EQ(MRenderer::mouseButton(Qt::BackButton), 0);

    // Sizes in device pixels; events in logical ones, scaled to device.
    MRenderer r;
    r.setup(200, 100, 2.0f);
    const osg::Viewport* viewport = r.getCamera()->getViewport();
    EXPECT_EQ(viewport->width(), 200);
    EXPECT_EQ(viewport->height(), 100);
    EXPECT_EQ(PixelRatio::of(r.getCamera()), 2.0f) << "what draws in the window reads the ratio";
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(10, 20), Qt::RightButton, Qt::RightButton,
                      Qt::ControlModifier);
    r.mousePressEvent(&press);
    const auto events = takeEvents(r);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0]->getEventType(), E::PUSH);
    EXPECT_EQ(events[0]->getButton(), E::RIGHT_MOUSE_BUTTON);
    EXPECT_EQ(events[0]->getX(), 20);
    EXPECT_EQ(events[0]->getY(), 40);
    EXPECT_EQ(events[0]->getModKeyMask(), 0x0C);
}

TEST(InputTranslation, WheelPostsMotionThenScroll) {
    MRenderer r;
    r.setup(100, 100, 1.0f);
    QWheelEvent down(QPointF(30.7, 40.2), QPointF(30.7, 40.2), QPoint(), QPoint(0, -1),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    r.wheelEvent(&down);
    QWheelEvent left(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(120, 0), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    r.wheelEvent(&left);
    const auto events = takeEvents(r);
    ASSERT_EQ(events.size(), 4u);
    EXPECT_EQ(events[0]->getEventType(), E::MOVE);
    EXPECT_EQ(events[0]->getX(), 30);
    EXPECT_EQ(events[1]->getScrollingMotion(), E::SCROLL_DOWN);
    EXPECT_EQ(events[3]->getScrollingMotion(), E::SCROLL_LEFT);
}
