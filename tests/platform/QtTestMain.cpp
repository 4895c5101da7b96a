// Runs GoogleTest with a Qt application that does not need a screen.
#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // No portal and no file manager of the session that the tests run in.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    QApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral("1.5.1")); // as the program does
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
