// A Qt program with one empty window: what start-up.py compares the program's start and memory with.
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
