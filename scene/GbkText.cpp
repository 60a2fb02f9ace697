#include "GbkText.h"

#include <QString>
#include <QTextCodec>

std::wstring GbkText::toWide(const char* text) {
    if (!text) return {};
    QTextCodec* codec = QTextCodec::codecForName("GBK");
    const QString decoded = codec ? codec->toUnicode(text) : QString::fromLatin1(text);
    return decoded.toStdWString();
}
