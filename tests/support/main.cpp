// One QApplication for every test program, offscreen.
#include <QApplication>

#include <gtest/gtest.h>

#include <cstdio>

namespace {

QtMessageHandler g_previous = nullptr;

// The offscreen platform warns about every window it can't size by hints.
void QuietHandler(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.contains(QStringLiteral("propagateSizeHints"))) return;
    if (g_previous) g_previous(type, context, message);
    else std::fprintf(stderr, "%s\n", qPrintable(message));
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    g_previous = qInstallMessageHandler(QuietHandler);
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
