#include "platform/qt/windows/AboutBox.h"

#include "platform/qt/controls/QuietText.h"
#include "platform/qt/dragdrop/DocumentGlyph.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quillow {
namespace {

constexpr int kIconSize = 64;
constexpr int kMargin = 20;
constexpr int kLineGap = 6;
constexpr double kTitleScale = 1.4;
/// The width of the column of texts, in average characters.
constexpr int kColumnCharacters = 46;

QLabel* makeTitle() {
    auto* title = new QLabel(QStringLiteral("Quillow"));
    QFont font = title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * kTitleScale);
    title->setFont(font);
    return title;
}

/// A label that is one link. Qt alone would mark the link at the second press of the Tab key, and keep the focus at
/// Shift+Tab.
class LinkLabel final : public QLabel {
public:
    explicit LinkLabel(const QString& title)
        : QLabel(QStringLiteral("<a href=\"#\">%1</a>").arg(title)) {
        setTextFormat(Qt::RichText);
        setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        setAccessibleName(title);
        setWordWrap(true);
    }

protected:
    void focusInEvent(QFocusEvent* event) override {
        QLabel::focusInEvent(event);
        const bool isByKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
        if (isByKey) QLabel::focusNextPrevChild(true);
    }
    bool focusNextPrevChild(bool next) override { return QFrame::focusNextPrevChild(next); }
};

} // namespace

AboutBox::AboutBox(const QString& statement, const QString& isolation, const std::function<void()>& visitPage,
                   QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("about"));
    setWindowTitle(QStringLiteral("About Quillow"));
    setAttribute(Qt::WA_DeleteOnClose);

    auto* icon = new QLabel;
    icon->setPixmap(applicationIcon().pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    icon->setAccessibleName(QStringLiteral("The program's icon"));

    auto* column = new QVBoxLayout;
    column->setSpacing(kLineGap);
    column->addWidget(makeTitle());
    addText(*column, QStringLiteral("Release %1").arg(QCoreApplication::applicationVersion()));
    addText(*column, statement);
    auto* link = new LinkLabel(QStringLiteral("Quillow on the Web"));
    alignToLayout(*link);
    column->addWidget(link);
    connect(link, &QLabel::linkActivated, this, [visitPage] { visitPage(); });
    column->addSpacing(kMargin / 2);
    if (!isolation.isEmpty()) column->addWidget(new NoteLabel(isolation));
    column->addWidget(new NoteLabel(QStringLiteral(
        "\u00A9 2026 The Quillow developers. Free software under the MIT licence, without any warranty.")));

    column->addStretch(1);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* upper = new QHBoxLayout;
    upper->setSpacing(kMargin);
    upper->addWidget(icon, 0, Qt::AlignTop);
    upper->addLayout(column, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kMargin);
    // Texts are broken into lines, so the height follows from the width.
    layout->setSizeConstraint(QLayout::SetMinimumSize);
    layout->addLayout(upper);
    layout->addStretch(1);
    layout->addWidget(buttons);
    // A default button looks focused while the focus is on the link.
    buttons->button(QDialogButtonBox::Close)->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setFocus();
    const int width = kIconSize + 3 * kMargin + fontMetrics().averageCharWidth() * kColumnCharacters;
    resize(width, layout->totalHeightForWidth(width));
}

void AboutBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::InsertParagraphSeparator))
        reject();
    else
        QDialog::keyPressEvent(event);
}

void AboutBox::addText(QVBoxLayout& column, const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    alignToLayout(*label);
    column.addWidget(label);
}

} // namespace quillow
