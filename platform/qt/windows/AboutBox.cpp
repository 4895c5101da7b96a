#include "platform/qt/windows/AboutBox.h"

#include "platform/qt/controls/QuietText.h"
#include "platform/qt/dragdrop/DocumentGlyph.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
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
    auto* link = addText(*column, QStringLiteral("<a href=\"#\">Quillow on the Web</a>"));
    link->setTextFormat(Qt::RichText);
    link->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    link->setAccessibleName(QStringLiteral("Quillow on the Web"));
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
    buttons->button(QDialogButtonBox::Close)->setFocus();
    const int width = kIconSize + 3 * kMargin + fontMetrics().averageCharWidth() * kColumnCharacters;
    resize(width, layout->totalHeightForWidth(width));
}

QLabel* AboutBox::addText(QVBoxLayout& column, const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    alignToLayout(*label);
    column.addWidget(label);
    return label;
}

} // namespace quillow
