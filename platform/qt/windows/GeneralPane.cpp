#include "platform/qt/windows/GeneralPane.h"

#include "base/StateTexts.h"
#include "platform/qt/controls/QuietText.h"
#include "platform/qt/windows/ChosenItem.h"

#include <QComboBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace quillow {
namespace {

constexpr int kMargin = 14;
constexpr int kVerticalMargin = 8;
constexpr int kColumnGap = 16;

QLabel* makeTitle(const QString& text) {
    auto* title = new QLabel(text);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    alignToLayout(*title);
    return title;
}

/// Extra height goes between the rows.
void addRows(QVBoxLayout& column, QWidget* title, QLayout* choices, QWidget* item) {
    column.setSpacing(4);
    column.addWidget(title);
    column.addLayout(choices);
    column.addStretch(1);
    column.addWidget(item, 4);
}

} // namespace

GeneralPane::GeneralPane()
    : asks_(new QRadioButton(QStringLiteral("&Ask when saving")))
    , fixed_(new QRadioButton(QStringLiteral("&Fixed folder")))
    , destinationNote_(new NoteLabel(QString()))
    , folder_(new ChosenItem(QStringLiteral("Destination folder"), QStringLiteral("No folder chosen")))
    , startupAction_(new QComboBox)
    , document_(new ChosenItem(QStringLiteral("Start-up document"), QStringLiteral("No document chosen"))) {
    // In the order of the tags.
    startupAction_->addItems({QStringLiteral("Show the window"), QStringLiteral("Ask for documents if none came"),
                              QStringLiteral("Ask for documents"), QStringLiteral("Open a document")});
    columns_ = new QHBoxLayout(&contents());
    line_ = new QFrame;
    line_->setFrameShadow(QFrame::Sunken);
    columns_->setContentsMargins(kMargin, kVerticalMargin, kMargin, kVerticalMargin + 2);
    columns_->setSpacing(kColumnGap);
    columns_->addLayout(makeDestination(), 1);
    columns_->addWidget(line_);
    columns_->addLayout(makeStartup(), 1);
    setBeside(true);
    setDestinationIsFixed(false);
    setStartupAction(0);
    setDocumentIsSpecified(false);
}

QLayout* GeneralPane::makeDestination() {
    folder_->addButton(QStringLiteral("&Select\u2026"), QStringLiteral("Choose the folder that converted text goes to"),
                       ChosenItem::Needs::nothing, running(&GeneralPaneCommands::selectFolder));
    folder_->addButton(QStringLiteral("S&how"), QStringLiteral("Show the destination folder in the file manager"),
                       ChosenItem::Needs::item, running(&GeneralPaneCommands::showFolder));
    folder_->addButton(QStringLiteral("&Clear"), QStringLiteral("Forget the destination folder"),
                       ChosenItem::Needs::item, running(&GeneralPaneCommands::clearFolder));
    folder_->setTextRoom(QString::fromUtf16(kPleaseSelectFolder));
    // toggled(), not clicked(): assistive tools toggle. Both buttons change together; only the one that is now on
    // runs the command.
    connect(asks_, &QRadioButton::toggled, this, [this](bool isOn) {
        if (isOn && !isShowing_ && commands_.setDestinationIsFixed) commands_.setDestinationIsFixed(false);
    });
    connect(fixed_, &QRadioButton::toggled, this, [this](bool isOn) {
        if (isOn && !isShowing_ && commands_.setDestinationIsFixed) commands_.setDestinationIsFixed(true);
    });

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kColumnGap);
    buttons->addWidget(asks_);
    buttons->addWidget(fixed_);
    buttons->addStretch(1);
    // Aligns the rows of both columns.
    buttons->addStrut(startupAction_->sizeHint().height());
    auto* choices = new QVBoxLayout;
    choices->setSpacing(4);
    choices->addLayout(buttons);
    choices->addWidget(destinationNote_);
    auto* column = new QVBoxLayout;
    addRows(*column, makeTitle(QStringLiteral("Destination of converted text")), choices, folder_);
    return column;
}

QLayout* GeneralPane::makeStartup() {
    startupAction_->setAccessibleName(QStringLiteral("At start-up"));
    connect(startupAction_, &QComboBox::currentIndexChanged, this, [this](int tag) {
        document_->setUsable(tag == kOpenChosenDocument);
        if (!isShowing_ && tag >= 0 && commands_.setStartupAction) commands_.setStartupAction(tag);
    });
    document_->addButton(QStringLiteral("Se&lect\u2026"), QStringLiteral("Choose the document to open at start-up"),
                         ChosenItem::Needs::nothing, running(&GeneralPaneCommands::selectDocument));
    document_->addButton(QStringLiteral("Sho&w"), QStringLiteral("Show the start-up document in the file manager"),
                         ChosenItem::Needs::item, running(&GeneralPaneCommands::showDocument));
    document_->addButton(QStringLiteral("T&est"), QStringLiteral("Open the start-up document now"),
                         ChosenItem::Needs::item, running(&GeneralPaneCommands::testDocument));
    document_->addButton(QStringLiteral("Clea&r"), QStringLiteral("Forget the start-up document"),
                         ChosenItem::Needs::item, running(&GeneralPaneCommands::clearDocument));
    document_->setTextRoom(QString::fromUtf16(kPleaseSelectFolder));

    auto* title = makeTitle(QStringLiteral("At s&tart-up"));
    title->setBuddy(startupAction_);
    auto* column = new QVBoxLayout;
    auto* choices = new QVBoxLayout;
    choices->setSpacing(4);
    choices->addWidget(startupAction_);
    choices->addWidget(new NoteLabel(QStringLiteral("Stored, but Quillow does not act on it.")));
    addRows(*column, title, choices, document_);
    return column;
}

void GeneralPane::setBeside(bool isBeside) {
    columns_->setDirection(isBeside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    columns_->setSpacing(isBeside ? kColumnGap : kVerticalMargin);
    // Above one another there is no room for more than is needed.
    destinationNote_->setVisible(isBeside);
    line_->setFrameShape(isBeside ? QFrame::VLine : QFrame::HLine);
}

void GeneralPane::arrange(const QSize& room) {
    setBeside(true);
    const int width = columns_->minimumSize().width();
    if (width > room.width() || columns_->minimumHeightForWidth(width) > room.height()) setBeside(false);
    ScrolledPane::arrange(room);
}

void GeneralPane::focusFirst() {
    (fixed_->isChecked() ? fixed_ : asks_)->setFocus();
}

std::function<void()> GeneralPane::running(std::function<void()> GeneralPaneCommands::*command) const {
    return [this, command] {
        if (commands_.*command) (commands_.*command)();
    };
}

void GeneralPane::setDestinationAsks(bool asks) {
    const QScopedValueRollback showing(isShowing_, true);
    if (asks) asks_->setChecked(true);
}

void GeneralPane::setDestinationIsFixed(bool isFixed) {
    const QScopedValueRollback showing(isShowing_, true);
    if (isFixed) fixed_->setChecked(true);
    folder_->setUsable(isFixed);
    destinationNote_->setText(isFixed ? QStringLiteral("Every text goes into this folder:")
                                      : QStringLiteral("Each drop asks for the folder of its texts."));
}

void GeneralPane::setStartupAction(std::int64_t tag) {
    const QScopedValueRollback showing(isShowing_, true);
    // A tag outside the four does nothing at start-up, and no choice is shown for it.
    startupAction_->setCurrentIndex(tag >= 0 && tag < startupAction_->count() ? static_cast<int>(tag) : -1);
    document_->setUsable(tag == kOpenChosenDocument);
}

void GeneralPane::setDocumentIsSpecified(bool isSpecified) {
    document_->setHasItem(isSpecified);
}

} // namespace quillow
