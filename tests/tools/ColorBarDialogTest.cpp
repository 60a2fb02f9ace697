// The colour bar: its four values, the range rules of each edit, the ramp
// of each colour table, dragging inside the parent and Escape.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <vector>

#include "MouseEvents.h"
#include "QelColorBarDialog.h"
#include "QelLUTSetting.h"

namespace {

QStringList texts(const QelColorBarDialog& bar) {
    QStringList out;
    for (int i = 0; i < 4; ++i)
        out << bar.edit(i)->text();
    return out;
}

// Types a value into one edit and finishes it, as a user does with Enter.
void enter(QelColorBarDialog& bar, int index, const QString& value) {
    bar.edit(index)->setText(value);
    emit bar.edit(index)->editingFinished();
}

}  // namespace

TEST(ColorBar, EditsFollowTheRangeAndEachEditItsRule) {
    QelColorBarDialog bar;
    EXPECT_EQ(texts(bar), QStringList({"255", "170", "85", "0"}));
    std::vector<std::pair<double, double>> emitted;
    QObject::connect(&bar, &QelColorBarDialog::sig_MinMax,
                     [&](double min, double max) { emitted.emplace_back(min, max); });

    enter(bar, 2, "100");  // one third of the range above the minimum
    EXPECT_EQ(bar.maximumValue(), 300.0);
    EXPECT_EQ(texts(bar), QStringList({"300", "200", "100", "0"}));
    ASSERT_EQ(emitted.size(), 1u);
    EXPECT_EQ(emitted[0], std::make_pair(0.0, 300.0));

    enter(bar, 1, "100");  // two thirds
    EXPECT_EQ(bar.maximumValue(), 150.0);
    enter(bar, 0, "12.345678");
    EXPECT_EQ(texts(bar).first(), "12.346") << "5 significant digits";

    // A minimum above the maximum is taken as it is: the values then rise
    // from top to bottom.
    enter(bar, 3, "500");
    EXPECT_EQ(bar.minimumValue(), 500.0);
    EXPECT_EQ(texts(bar), QStringList({"12.346", "174.9", "337.45", "500"}));
    enter(bar, 0, "not a number");
    EXPECT_EQ(bar.maximumValue(), 0.0);
    EXPECT_EQ(emitted.size(), 5u);

    // The data's range arrives without a signal.
    bar.setRange(-2.5, 7.5);
    EXPECT_EQ(texts(bar), QStringList({"7.5", "4.1667", "0.83333", "-2.5"}));
    EXPECT_EQ(emitted.size(), 5u);
}

TEST(ColorBar, RampsOfTheColourTables) {
    const int h = 200;
    // Grey: white at the top, black at the bottom.
    EXPECT_EQ(QelColorBarDialog::rampColour(0, h - 1, h).rgb(), QColor(255, 255, 255).rgb());
    EXPECT_LT(QelColorBarDialog::rampColour(0, 0, h).value(), 3);
    // The five-piece map: dark blue, blue, cyan, yellow, red, dark red.
    const QColor bottom = QelColorBarDialog::rampColour(1, 0, h);
    EXPECT_TRUE(bottom.red() == 0 && bottom.green() == 0 && bottom.blue() > 100 &&
                bottom.blue() < 160);
    EXPECT_EQ(QelColorBarDialog::rampColour(1, 75, h).rgb(), QColor(0, 255, 255).rgb());
    EXPECT_EQ(QelColorBarDialog::rampColour(1, 125, h).rgb(), QColor(255, 255, 0).rgb());
    const QColor top = QelColorBarDialog::rampColour(1, h - 1, h);
    EXPECT_TRUE(top.red() > 100 && top.red() < 160 && top.green() == 0 && top.blue() == 0);
    // Hot: never quite white at the top.
    const QColor hot = QelColorBarDialog::rampColour(3, h - 1, h);
    EXPECT_TRUE(hot.red() == 255 && hot.green() == 255 && hot.blue() < 255);
    // Tables without a formula are sampled: the top is the table's high end.
    for (int table : {4, 5, 6}) {
        QelColor high, low;
        QELMV::QelLUTSetting().GetColor(0.0, table, &high);
        QELMV::QelLUTSetting().GetColor(1.0, table, &low);
        EXPECT_EQ(QelColorBarDialog::rampColour(table, h, h), QColor(high.r, high.g, high.b));
        EXPECT_EQ(QelColorBarDialog::rampColour(table, 0, h), QColor(low.r, low.g, low.b));
    }
}

TEST(ColorBar, DragsInsideItsParentAndEscapeLeavesItOpen) {
    QWidget parent;
    parent.resize(400, 400);
    auto* bar = new QelColorBarDialog(&parent);
    bar->move(200, 50);
    parent.show();
    bar->show();
    QCoreApplication::processEvents();
    EXPECT_FALSE(bar->isWindow()) << "an overlay inside the view, not a window";

    sendMouse(bar, QEvent::MouseButtonPress, QPoint(4, 60));
    sendMouse(bar, QEvent::MouseMove, QPoint(-46, 90));
    EXPECT_EQ(bar->pos(), QPoint(150, 80));
    // A move that would take it past the parent's right edge is ignored.
    sendMouse(bar, QEvent::MouseMove, QPoint(300, 60));
    EXPECT_EQ(bar->pos(), QPoint(150, 80));
    sendMouse(bar, QEvent::MouseButtonRelease, QPoint(4, 60));
    sendMouse(bar, QEvent::MouseMove, QPoint(40, 60), Qt::NoButton);
    EXPECT_EQ(bar->pos(), QPoint(150, 80)) << "no drag after the release";
    // Presses beside the ramp and its values do not drag.
    sendMouse(bar, QEvent::MouseButtonPress, QPoint(115, bar->height() - 1));
    sendMouse(bar, QEvent::MouseMove, QPoint(100, 10));
    EXPECT_EQ(bar->pos(), QPoint(150, 80));

    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(bar, &escape);
    QCoreApplication::processEvents();
    EXPECT_TRUE(bar->isVisible());

    // The parent shrinks: the bar comes back inside it.
    parent.resize(240, 300);
    bar->moveMessage();
    EXPECT_LE(bar->x() + bar->width(), 240);
    EXPECT_LE(bar->y() + bar->height(), 300);
}
