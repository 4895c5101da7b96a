// A Qt program with one empty window. start_up.py compares its start-up time and memory with those of the real program.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Empty"));
    window.resize(615, 580);
    window.show();
    return QApplication::exec();
}
