// The small exporting application on a real screen, for tests with real keys and for a look at it. --dark selects the
// colours of a dark theme.
#include "tests/platform/ExporterWindow.h"

#include <QApplication>
#include <QPalette>

namespace {

QPalette darkPalette() {
    QPalette palette(QColor(45, 45, 48));
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::Highlight, QColor(48, 105, 190));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("exporter_window"));
    if (QCoreApplication::arguments().contains(QStringLiteral("--dark"))) QApplication::setPalette(darkPalette());
    quillow::ExporterWindow window;
    window.widget().show();
    return QApplication::exec();
}
