// The small exporting application on a real screen, for the tests that press its keys.
#include "tests/platform/ExporterWindow.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("exporter_window"));
    quillow::ExporterWindow window;
    window.widget().show();
    return QApplication::exec();
}
