#include "QelColorBarDialog.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "QelLUTSetting.h"

namespace {

const char kEditStyle[] = "background:transparent;border-width:0;border-style:outset";
constexpr int kDefaultHeight = 260;
constexpr int kEditWidth = 100;

double clamp01(double v) {
    return std::clamp(v, 0.0, 1.0);
}

QColor rgb(double r, double g, double b) {
    return QColor::fromRgbF(clamp01(r), clamp01(g), clamp01(b), 1.0);
}

}  // namespace

QelColorBarDialog::QelColorBarDialog(QWidget* parent) : QDialog(parent) {
    setFixedWidth(120);
    resize(120, kDefaultHeight);
    setWindowFlags(Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    font.setPointSize(10);
    void (QelColorBarDialog::*const handlers[4])() = {
        &QelColorBarDialog::ValueChange1, &QelColorBarDialog::ValueChange2,
        &QelColorBarDialog::ValueChange3, &QelColorBarDialog::ValueChange4};
    for (int i = 0; i < 4; ++i) {
        edits[i] = new QLineEdit(this);
        edits[i]->setStyleSheet(kEditStyle);
        edits[i]->setFont(font);
        connect(edits[i], &QLineEdit::editingFinished, this, handlers[i]);
    }
    recomputeTicks();
    updateLineEdit();
}

QColor QelColorBarDialog::rampColour(int scheme, int y, int height) {
    const double h = height, v = y;
    switch (scheme) {
        case 0: {  // counted from the top: white there, black at the bottom
            const double top = h - 1 - v;
            return QColor::fromHsv(0, 0, static_cast<int>((h - top) / h * 255));
        }
        case 1: {
            const double q = h * 0.25;
            if (v < q / 2) return rgb(0, 0, (q / 2 + v) / q);
            if (v < 1.5 * q) return rgb(0, (v - q / 2) / q, 1);
            if (v < 2.5 * q) return rgb((v - 1.5 * q) / q, 1, (2.5 * q - v) / q);
            if (v < 3.5 * q) return rgb(1, (3.5 * q - v) / q, 0);
            return rgb((h - v + q / 2) / q, 0, 0);
        }
        case 2:
            return QColor::fromHsvF(clamp01(v / h), 1.0, 1.0);
        case 3: {
            const double q = h / 2.5;
            if (v < q / 2) return rgb((q / 2 + v) / q, 0, 0);
            if (v < 1.5 * q) return rgb(1, (v - q / 2) / q, 0);
            return rgb(1, 1, (v - 1.5 * q) / (h - 1.5 * q + 20));  // "+ 20": never quite white
        }
        default: {
            // Position 0 of a table is the top of the range.
            QelColor c;
            QELMV::QelLUTSetting().GetColor(1.0 - v / h, scheme, &c);
            return QColor(c.r, c.g, c.b);
        }
    }
}

void QelColorBarDialog::setScheme(int table) {
    if (table < 0 || table >= QELMV::QelLUTSetting::kTableCount || table == scheme) return;
    scheme = table;
    update();
}

void QelColorBarDialog::setRange(double min, double max) {
    minimum = min;
    maximum = max;
    UpdateValue();
}

void QelColorBarDialog::setTextColour(const QColor& colour) {
    textColour = colour;
    const QString style = QString("color:rgb(%1, %2, %3);%4")
                              .arg(colour.red())
                              .arg(colour.green())
                              .arg(colour.blue())
                              .arg(kEditStyle);
    for (QLineEdit* e : edits)
        e->setStyleSheet(style);
    pen.setColor(colour);
    update();
}

void QelColorBarDialog::recomputeTicks() {
    tick1 = maximum;
    tick2 = minimum + 2 * (maximum - minimum) / 3;
    tick3 = minimum + (maximum - minimum) / 3;
    tick4 = minimum;
}

void QelColorBarDialog::updateLineEdit() {
    const double ticks[4] = {tick1, tick2, tick3, tick4};
    for (int i = 0; i < 4; ++i)
        edits[i]->setText(QString::number(ticks[i], 'g', 5));
}

void QelColorBarDialog::UpdateValue() {
    recomputeTicks();
    updateLineEdit();
    update();
}

double QelColorBarDialog::entered(int index) const {
    return edits[index]->text().toDouble();  // not a number reads as 0
}

void QelColorBarDialog::ValueChange1() {
    maximum = entered(0);
    rangeEdited();
}

void QelColorBarDialog::ValueChange2() {
    maximum = (entered(1) - minimum) * 1.5 + minimum;
    rangeEdited();
}

void QelColorBarDialog::ValueChange3() {
    maximum = (entered(2) - minimum) * 3 + minimum;
    rangeEdited();
}

void QelColorBarDialog::ValueChange4() {
    minimum = entered(3);
    rangeEdited();
}

void QelColorBarDialog::rangeEdited() {
    UpdateValue();
    emit sig_MinMax(minimum, maximum);
}

void QelColorBarDialog::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(pen);
    painter.setFont(font);
    const int h = height();
    for (int y = 0; y < h; ++y)
        painter.fillRect(0, h - 1 - y, barWidth, 1, rampColour(scheme, y, h));

    const int f = QFontMetrics(font).height();
    const int x = barWidth + 5;
    const int rows[4] = {f - edits[0]->height() / 2, (h + 1) / 4 - edits[1]->height() / 2 + 2 * f,
                         (h + 1) / 2 - edits[2]->height() / 2 + 3 * f, h - edits[3]->height()};
    int widest = 0;
    const double ticks[4] = {tick1, tick2, tick3, tick4};
    for (int i = 0; i < 4; ++i) {
        edits[i]->setGeometry(x, rows[i], kEditWidth, edits[i]->height());
        widest = std::max(widest,
                          QFontMetrics(font).horizontalAdvance(QString::number(ticks[i], 'g', 6)));
    }
    dragArea = QRect(QPoint(0, 0), QPoint(barWidth - 1 + widest, h - 2));
}

void QelColorBarDialog::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && dragArea.contains(event->pos())) {
        pressPosition = event->pos();
        dragging = true;
    }
    QDialog::mousePressEvent(event);
}

bool QelColorBarDialog::fitsParent(const QPoint& position) const {
    const QWidget* p = parentWidget();
    return !p || (position.x() >= 0 && position.y() >= 0 && position.x() + width() <= p->width() &&
                  position.y() + height() <= p->height());
}

void QelColorBarDialog::mouseMoveEvent(QMouseEvent* event) {
    if (dragging) {
        const QPoint next = pos() + (event->pos() - pressPosition);
        if (fitsParent(next)) move(next);
    }
    QDialog::mouseMoveEvent(event);
}

void QelColorBarDialog::mouseReleaseEvent(QMouseEvent* event) {
    dragging = false;
    QDialog::mouseReleaseEvent(event);
}

void QelColorBarDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        event->accept();  // a legend is not closed by Escape
        return;
    }
    QDialog::keyPressEvent(event);
}

void QelColorBarDialog::showEvent(QShowEvent* event) {
    UpdateValue();
    QDialog::showEvent(event);
}

void QelColorBarDialog::moveMessage() {
    const QWidget* p = parentWidget();
    if (!p || fitsParent(pos())) return;
    move(std::clamp(pos().x(), 0, std::max(0, p->width() - width())),
         std::clamp(pos().y(), 0, std::max(0, p->height() - height())));
}
