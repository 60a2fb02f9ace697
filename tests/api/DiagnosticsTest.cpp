// What a host reads about failures: a text for every status code, and the
// library's diagnostics kept out of the host's terminal unless asked for.
#include <gtest/gtest.h>

#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSet>
#include <fstream>
#include <sstream>

#include "ApiHost.h"

using namespace QELMV;

namespace {

// Every eight-digit code named in a status header.
QSet<long> codesNamedIn(const char* header) {
    std::ifstream in(std::string(QEL_SOURCE_DIR) + "/" + header);
    std::stringstream text;
    text << in.rdbuf();
    QSet<long> codes;
    QRegularExpression named("=\\s*(1[01]\\d{6})\\b");
    auto it = named.globalMatch(QString::fromStdString(text.str()));
    while (it.hasNext())
        codes.insert(it.next().captured(1).toLong());
    return codes;
}

QStringList captured;
void capture(QtMsgType, const QMessageLogContext& context, const QString& message) {
    captured << QString(context.category) + ": " + message;
}

}  // namespace

TEST(Diagnostics, EveryStatusCodeHasItsOwnText) {
    const QSet<long> codes =
        codesNamedIn("core/StatusCodes.h") | codesNamedIn("include/QelDataStatus.h");
    ASSERT_GT(codes.size(), 30);
    // The library's own list holds the data layer's public codes too.
    EXPECT_TRUE(
        codesNamedIn("core/StatusCodes.h").contains(codesNamedIn("include/QelDataStatus.h")));
    const std::string unknown = QelGetStatusText(-12345);
    QSet<QString> texts;
    for (long code : codes) {
        const char* text = QelGetStatusText(code);
        ASSERT_NE(text, nullptr);
        EXPECT_NE(text, unknown) << code;
        texts.insert(text);
    }
    EXPECT_EQ(texts.size(), codes.size()) << "two codes share a text";

    EXPECT_STREQ(QelGetStatusText(0), "success");
    EXPECT_STREQ(QelGetStatusText(11504001), "unknown window handle");
    EXPECT_STREQ(QelGetStatusText(11200003), "argument 3 is out of range");
    EXPECT_STREQ(QelGetStatusText(11200013), "argument 13 is out of range");
    EXPECT_NE(std::string(QelGetStatusText(42)).find("id"), std::string::npos);
    for (long odd : {-1L, 11200000L, 11999999L, 2147483647L})
        EXPECT_EQ(QelGetStatusText(odd), unknown) << odd;
}

TEST(Diagnostics, DebugMessagesStayQuietUntilTheHostEnablesTheCategory) {
    HostedWindow window;
    QelRangeImage image;
    image.SetSize(16, 16, QEL_16U);
    const QtMessageHandler previous = qInstallMessageHandler(capture);
    captured.clear();
    EXPECT_GE(QelDisplayRangeImage(window.handle, image), 1);
    pumpEvents();
    EXPECT_TRUE(captured.isEmpty()) << captured.join("\n").toStdString();

    QLoggingCategory::setFilterRules("qel3dgraphics.debug=true");
    EXPECT_GE(QelDisplayRangeImage(window.handle, image), 1);
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(previous);
    ASSERT_FALSE(captured.isEmpty());
    EXPECT_TRUE(captured.front().startsWith("qel3dgraphics: ")) << captured.front().toStdString();
}
