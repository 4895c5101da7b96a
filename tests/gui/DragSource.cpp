// A test program to drag from, with exact action masks.
//   drag-source --title TITLE --actions copy,link [--text TEXT] [--uri URI]...
// URIs are sent as they are written. Prints "ready", then "action NAME" whenever the target's answer changes, and
// "result NAME" when a drag has ended.
#include <QApplication>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>

#include <cstdio>

namespace {

const char* nameOf(Qt::DropAction action) {
    switch (action) {
    case Qt::CopyAction: return "copy";
    case Qt::MoveAction: return "move";
    case Qt::LinkAction: return "link";
    default: return "none";
    }
}

void print(const char* what, Qt::DropAction action) {
    std::printf("%s %s\n", what, nameOf(action));
    std::fflush(stdout);
}

class Source final : public QLabel {
public:
    Qt::DropActions actions;
    QString text;
    QByteArray uris;

protected:
    void mousePressEvent(QMouseEvent* event) override { start_ = event->pos(); }
    void mouseMoveEvent(QMouseEvent* event) override {
        const bool isFar = (event->pos() - start_).manhattanLength() >= QApplication::startDragDistance();
        if (!event->buttons().testFlag(Qt::LeftButton) || !isFar) return;
        auto* drag = new QDrag(this);
        auto* mimeData = new QMimeData;
        if (!text.isEmpty()) mimeData->setText(text);
        if (!uris.isEmpty()) mimeData->setData(QStringLiteral("text/uri-list"), uris);
        drag->setMimeData(mimeData);
        connect(drag, &QDrag::actionChanged, drag, [](Qt::DropAction action) { print("action", action); });
        print("result", drag->exec(actions));
    }

private:
    QPoint start_;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    Source source;
    source.setText(QStringLiteral("Drag from here"));
    source.setAlignment(Qt::AlignCenter);
    source.resize(200, 100);
    const QStringList arguments = QApplication::arguments();
    for (qsizetype i = 1; i + 1 < arguments.size(); i += 2) {
        const QString& value = arguments[i + 1];
        if (arguments[i] == QStringLiteral("--actions")) {
            source.actions.setFlag(Qt::CopyAction, value.contains(QStringLiteral("copy")));
            source.actions.setFlag(Qt::MoveAction, value.contains(QStringLiteral("move")));
            source.actions.setFlag(Qt::LinkAction, value.contains(QStringLiteral("link")));
        }
        if (arguments[i] == QStringLiteral("--title")) source.setWindowTitle(value);
        if (arguments[i] == QStringLiteral("--text")) source.text = value;
        if (arguments[i] == QStringLiteral("--uri")) source.uris += value.toUtf8() + "\r\n";
    }
    source.show();
    std::printf("ready\n");
    std::fflush(stdout);
    return QApplication::exec();
}
