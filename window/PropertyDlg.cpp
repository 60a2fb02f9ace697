#include "PropertyDlg.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QVBoxLayout>

PropertyDlg::PropertyDlg(int pointSize, int lineWidth, float intensity, QWidget* parent)
    : QDialog(parent) {
    setWindowTitle("Property");
    setFixedSize(650, 210);
    auto* layout = new QVBoxLayout(this);
    QMargins margins = layout->contentsMargins();
    margins.setRight(9);
    layout->setContentsMargins(margins);
    pointSize_ = addRow("Point Size", "slPointSize", 1, 10, 3, "3", &pointSizeValue_);
    lineWidth_ = addRow("Line Width", "slLineWidth", 1, 10, 2, "2", &lineWidthValue_);
    intensity_ = addRow("Intensity", "slIntensity", 1, 100, 10, "1.0", &intensityValue_);
    QMetaObject::connectSlotsByName(this);

    setWindowFlags(Qt::WindowFlags(0x08000003));  // dialog with a close button only
    setModal(true);
    setPointSize(pointSize);
    setLineWidth(lineWidth);
    setIntensity(intensity);
    for (QSlider* slider : {pointSize_, lineWidth_, intensity_})
        slider->installEventFilter(this);
}

QSlider* PropertyDlg::addRow(const QString& name, const char* objectName, int min, int max,
                             int value, const QString& valueText, QLabel** valueLabel) {
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(name, this);
    label->setFixedWidth(60);
    // The column is 60 pixels wide; a wide font gets smaller until the name
    // fits rather than being cut off.
    QFont font = label->font();
    while (QFontMetrics(font).horizontalAdvance(name) > 60 && font.pointSizeF() > 6)
        font.setPointSizeF(font.pointSizeF() - 0.5);
    label->setFont(font);
    auto* slider = new QSlider(Qt::Horizontal, this);
    slider->setObjectName(objectName);
    slider->setRange(min, max);
    slider->setPageStep(1);
    slider->setSingleStep(1);
    slider->setValue(value);
    slider->setFixedWidth(490);
    *valueLabel = new QLabel(valueText, this);
    (*valueLabel)->setFixedWidth(30);
    row->addWidget(label);
    row->addWidget(slider);
    row->addWidget(*valueLabel);
    static_cast<QVBoxLayout*>(this->layout())->addLayout(row);
    return slider;
}

// The setters move the handles without reporting: only the user's changes
// are signalled.
void PropertyDlg::setPointSize(int size) {
    const QSignalBlocker block(pointSize_);
    pointSizeValue_->setText(QString::number(size));
    pointSize_->setValue(size);
}

void PropertyDlg::setLineWidth(int width) {
    const QSignalBlocker block(lineWidth_);
    lineWidthValue_->setText(QString::number(width));
    lineWidth_->setValue(width);
}

void PropertyDlg::setIntensity(float intensity) {
    const QSignalBlocker block(intensity_);
    intensityValue_->setText(QString::number(intensity, 'f', 1));
    intensity_->setValue(static_cast<int>(intensity * 10));
}

void PropertyDlg::on_slPointSize_valueChanged(int value) {
    pointSizeValue_->setText(QString::number(value));
    emit SetPointSize(static_cast<float>(value));
}

void PropertyDlg::on_slLineWidth_valueChanged(int value) {
    lineWidthValue_->setText(QString::number(value));
    emit SetLineWidth(static_cast<float>(value));
}

void PropertyDlg::on_slIntensity_valueChanged(int value) {
    intensityValue_->setText(QString::number(value / 10.0, 'f', 1));
    emit SetIntensity(static_cast<float>(value / 10.0));
}

bool PropertyDlg::eventFilter(QObject* watched, QEvent* event) {
    auto* slider = qobject_cast<QSlider*>(watched);
    if (slider && (slider == pointSize_ || slider == lineWidth_ || slider == intensity_) &&
        event->type() == QEvent::MouseButtonPress) {
        auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() == Qt::LeftButton)
            slider->setValue(QStyle::sliderValueFromPosition(
                slider->minimum(), slider->maximum(), press->pos().x(), slider->width(), false));
    }
    return QDialog::eventFilter(watched, event);
}
