// The property dialog: quiet set-up, reported changes, click-to-position.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QSlider>

#include "../render/RenderTestScene.h"
#include "PropertyDlg.h"

namespace {

struct Recorder {
    std::vector<std::pair<char, float>> calls;
    void attach(PropertyDlg& dlg) {
        QObject::connect(&dlg, &PropertyDlg::SetPointSize, [this](float v) {
            calls.push_back({'p', v});
        });
        QObject::connect(&dlg, &PropertyDlg::SetLineWidth, [this](float v) {
            calls.push_back({'l', v});
        });
        QObject::connect(&dlg, &PropertyDlg::SetIntensity, [this](float v) {
            calls.push_back({'i', v});
        });
    }
};

QString valueText(PropertyDlg& dlg, const char* sliderName) {
    // The value label is the last widget of the slider's row.
    QSlider* slider = dlg.findChild<QSlider*>(sliderName);
    const auto labels = dlg.findChildren<QLabel*>();
    for (QLabel* l : labels)
        if (l->geometry().center().y() == slider->geometry().center().y() && l->width() == 30)
            return l->text();
    return {};
}

}  // namespace

TEST(PropertyDialog, OpensQuietlyWithClampedPositions) {
    PropertyDlg dlg(5, 7, 0.04f);
    Recorder rec;
    rec.attach(dlg);
    dlg.show();
    EXPECT_TRUE(rec.calls.empty());
    EXPECT_EQ(dlg.size(), QSize(650, 210));
    EXPECT_EQ(dlg.windowTitle(), "Property");
    EXPECT_TRUE(dlg.isModal());
    EXPECT_EQ(dlg.findChild<QSlider*>("slPointSize")->value(), 5);
    EXPECT_EQ(dlg.findChild<QSlider*>("slIntensity")->value(), 1) << "clamped to the minimum";
    EXPECT_EQ(valueText(dlg, "slIntensity"), "0.0");
    EXPECT_EQ(valueText(dlg, "slLineWidth"), "7");
    keepImage(dlg.grab().toImage(), "property-dialog");
    dlg.setPointSize(2);
    EXPECT_TRUE(rec.calls.empty()) << "the opener's refreshes are not reported";
}

TEST(PropertyDialog, ChangesAreReportedAndClicksJump) {
    PropertyDlg dlg(3, 2, 1.0f);
    Recorder rec;
    rec.attach(dlg);
    dlg.show();
    QSlider* intensity = dlg.findChild<QSlider*>("slIntensity");
    intensity->setValue(100);
    ASSERT_EQ(rec.calls.size(), 1u);
    EXPECT_EQ(rec.calls[0].first, 'i');
    EXPECT_FLOAT_EQ(rec.calls[0].second, 10.0f);
    EXPECT_EQ(valueText(dlg, "slIntensity"), "10.0");

    QSlider* size = dlg.findChild<QSlider*>("slPointSize");
    const QPoint nearRight(size->width() - 2, size->height() / 2);
    QMouseEvent press(QEvent::MouseButtonPress, nearRight, size->mapToGlobal(nearRight),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(size, &press);
    EXPECT_EQ(size->value(), 10) << "a click jumps instead of stepping by a page";
    EXPECT_EQ(rec.calls.back().first, 'p');
    EXPECT_FLOAT_EQ(rec.calls.back().second, 10.0f);
}
