#include "WindowStatus.h"

#include <QLabel>
#include <algorithm>

#include "GbkText.h"
#include "QelPoint.h"
#include "QelVar.h"
#include "TextLimit.h"

WindowStatus::WindowStatus(QWidget* window, QWidget* view)
    : QObject(window),
      view_(view),
      badge_(new QLabel(view)),
      message_(new QLabel(view)),
      status_(new QLabel(window)) {
    badge_->setAlignment(Qt::AlignCenter);
    badge_->move(8, 8);
    badge_->hide();
    message_->setStyleSheet("QLabel{color: white; background: rgba(0,0,0,110); padding: 2px 4px;}");
    message_->move(8, 46);
    message_->hide();
    status_->setMinimumWidth(1);
    status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    status_->setContentsMargins(4, 2, 4, 2);
}

void WindowStatus::setNumber(int number) {
    const QString digits = QString::number(number);
    // A round badge that grows with the number of digits.
    const int size = 4 * std::max(4, int(digits.size())) + 14;
    badge_->setText(digits);
    badge_->setStyleSheet(QString("min-width: %1px; min-height: %1px; max-width:%1px; "
                                  "max-height: %1px;border-radius: %2px;  border:1px solid "
                                  "black;background:grey")
                              .arg(size)
                              .arg(size / 2));
    badge_->adjustSize();
    badge_->raise();
}

void WindowStatus::setMessage(const QelVar& text) {
    switch (text.ValType()) {
        case QEL_VAR_STRING:
            messageText_ = QString::fromStdWString(GbkText::toWide(text.S()));
            break;
        case QEL_VAR_WSTRING:
            messageText_ = QString::fromWCharArray(text.WS());
            break;
        case QEL_VAR_DOUBLE:
            messageText_ = QString::number(text.D(), 'g', 6);
            break;
        default:
            messageText_ = QString::number(text.L());
            break;
    }
    message_->setText(laidOutText(messageText_));
    message_->adjustSize();
    message_->raise();
    message_->show();
}

void WindowStatus::moveMessage(const QelPoint& position) {
    // Clamped into the view before the conversion: a non-finite or huge
    // double has no int value. NaN goes to 0.
    auto inside = [](double v, int size) {
        return v > 0 ? static_cast<int>(std::min(v, double(std::max(size - 1, 0)))) : 0;
    };
    message_->move(inside(position.x, view_->width()), inside(position.y, view_->height()));
}

void WindowStatus::setLogLevel(int level) {
    logLevel_ = level;
    showStatusText();
}

void WindowStatus::setStatusLines(const QStringList& lines) {
    statusLines_ = lines;
    showStatusText();
}

void WindowStatus::showStatusText() {
    QString text;
    if (statusLines_.size() == 1)
        text = statusLines_.front();
    else if (logLevel_ < statusLines_.size())
        text = statusLines_.at(logLevel_);
    status_->setToolTip(text);
    const int width = status_->contentsRect().width();
    status_->setText(status_->fontMetrics().elidedText(text, Qt::ElideRight, std::max(width, 1)));
}
