#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QLabel;
class QWidget;
class QelPoint;
class QelVar;

// The texts a window shows besides its view: the number badge and the
// host's message floating over the view, and the status line below it
// whose text the log level picks.
class WindowStatus : public QObject {
    Q_OBJECT
public:
    // The badge and the message float over 'view'; the status line is a
    // child of 'window', for its layout.
    WindowStatus(QWidget* window, QWidget* view);

    QLabel* badge() const { return badge_; }
    QLabel* message() const { return message_; }
    QLabel* statusLine() const { return status_; }
    // The host's message, whole; the label shows at most kMaxLaidOutCharacters.
    const QString& messageText() const { return messageText_; }

    // Sets the badge's number; showing it is the caller's.
    void setNumber(int number);
    void setMessage(const QelVar& text);
    // Moves the message to a position in the view, clamped into it.
    void moveMessage(const QelPoint& position);
    void setLogLevel(int level);
    // The first line is for log level 0, the second (when there is one) for 1.
    void setStatusLines(const QStringList& lines);
    // Fits the status text to the line's width (after a resize).
    void showStatusText();

private:
    QWidget* view_;
    QLabel* badge_;
    QLabel* message_;
    QLabel* status_;
    QStringList statusLines_;
    QString messageText_;
    int logLevel_ = 0;
};
