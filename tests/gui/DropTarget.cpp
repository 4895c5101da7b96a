// A test program to drag to.
//   drop-target --title TITLE
// Prints "ready", then "enter" when a drag comes over its window, and "drop ACTION URI..." for each drop.
#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QUrl>

#include <cstdio>

namespace {

class Target final : public QLabel {
public:
    Target() { setAcceptDrops(true); }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override {
        std::puts("enter");
        std::fflush(stdout);
        event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override {
        event->acceptProposedAction();
        std::printf("drop %s", event->dropAction() == Qt::CopyAction ? "copy" : "other");
        const QList<QUrl> urls = event->mimeData()->urls();
        for (const QUrl& url : urls)
            std::printf(" %s", url.toEncoded().constData());
        std::puts("");
        std::fflush(stdout);
    }
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    Target target;
    target.setText(QStringLiteral("Drop here"));
    target.setAlignment(Qt::AlignCenter);
    target.resize(200, 200);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == QStringLiteral("--title")) target.setWindowTitle(arguments[2]);
    target.show();
    std::puts("ready");
    std::fflush(stdout);
    return QApplication::exec();
}
