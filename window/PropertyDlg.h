#pragma once

#include <QDialog>

class QLabel;
class QSlider;

// The modal dialog behind "Set Point Size and Line Width": three sliders
// (point size, line width, light intensity) that report every change at
// once, so the scene follows while the user drags. A click on a slider's
// groove jumps the handle there.
class PropertyDlg : public QDialog {
    Q_OBJECT
public:
    PropertyDlg(int pointSize, int lineWidth, float intensity, QWidget* parent = nullptr);

    void setPointSize(int size);
    void setLineWidth(int width);
    void setIntensity(float intensity);

signals:
    void SetPointSize(float value);
    void SetLineWidth(float value);
    void SetIntensity(float value);

private slots:
    void on_slPointSize_valueChanged(int value);
    void on_slLineWidth_valueChanged(int value);
    void on_slIntensity_valueChanged(int value);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QSlider* addRow(const QString& name, const char* objectName, int min, int max, int value,
                    const QString& valueText, QLabel** valueLabel);

    QSlider* pointSize_ = nullptr;
    QSlider* lineWidth_ = nullptr;
    QSlider* intensity_ = nullptr;
    QLabel* pointSizeValue_ = nullptr;
    QLabel* lineWidthValue_ = nullptr;
    QLabel* intensityValue_ = nullptr;
};
