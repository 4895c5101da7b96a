#include "platform/qt/dialogs/FileDialog.h"

#include <QDir>
#include <QEvent>
#include <QLabel>
#include <QLayout>
#include <QPalette>

namespace quillow {
namespace {

constexpr QLatin1String kPlaces("sidebar");

/// The list's selection without the focus: quieter than with it, legible in every theme.
QPalette quiet(QPalette palette) {
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    constexpr float kShareOfText = 0.15F;
    const auto mixed = [](float a, float b) { return a + (b - a) * kShareOfText; };
    palette.setColor(QPalette::Highlight,
                     QColor::fromRgbF(mixed(base.redF(), text.redF()), mixed(base.greenF(), text.greenF()),
                                      mixed(base.blueF(), text.blueF())));
    palette.setColor(QPalette::HighlightedText, text);
    return palette;
}

} // namespace

FileDialog::FileDialog(const FileQuestion& question, QWidget* parent)
    : QFileDialog(parent) {
    setOption(QFileDialog::DontUseNativeDialog);
    setAcceptMode(QFileDialog::AcceptOpen);
    setWindowTitle(question.title());
    setLabelText(QFileDialog::Accept, question.prompt);
    if (auto* places = findChild<QWidget*>(kPlaces)) {
        places->setPalette(quiet(palette()));
        places->installEventFilter(this);
    }
    const bool hasFolder = !question.folder.isEmpty() && QDir(question.folder).exists();
    setDirectory(hasFolder ? question.folder : QDir::homePath());
    if (question.message.isEmpty()) return;
    auto* label = new QLabel(question.message, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    label->setContentsMargins(12, 12, 12, 0);
    // Only the menu bar's place is above the dialog's own grid.
    layout()->setMenuBar(label);
}

/// Styles draw a selected place the same with and without the focus.
bool FileDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched->objectName() == kPlaces) {
        auto* places = static_cast<QWidget*>(watched);
        if (event->type() == QEvent::FocusIn) places->setPalette(palette());
        if (event->type() == QEvent::FocusOut) places->setPalette(quiet(palette()));
    }
    return QFileDialog::eventFilter(watched, event);
}

} // namespace quillow
