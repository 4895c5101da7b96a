#include "platform/qt/windows/ChosenItem.h"

#include "base/StateTexts.h"
#include "platform/qt/controls/ElidedLabel.h"
#include "platform/qt/controls/FlowRows.h"
#include "platform/qt/controls/TitleDirection.h"

#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace quillow {
namespace {

constexpr int kGap = 6;

} // namespace

ChosenItem::ChosenItem(QString subject, QString nothing)
    : subject_(std::move(subject))
    , nothing_(std::move(nothing))
    , pathLabel_(new ElidedLabel)
    , stateLabel_(new ElidedLabel)
    , buttonLine_(new FlowRows(kGap)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(pathLabel_);
    layout->addWidget(stateLabel_);
    layout->addStretch(1);
    layout->addLayout(buttonLine_);
    setPath(QString());
    setState(QString(), State::prompt);
}

void ChosenItem::addButton(const QString& title, const QString& description, Needs needs,
                           std::function<void()> command) {
    auto* button = new QPushButton(directed(title));
    button->setToolTip(description);
    button->setAccessibleDescription(description);
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, button, [command = std::move(command)] { command(); });
    buttonLine_->addWidget(button);
    buttons_.append({button, needs});
}

void ChosenItem::setUsable(bool isUsable) {
    isUsable_ = isUsable;
    enable();
}

void ChosenItem::setHasItem(bool hasItem) {
    hasItem_ = hasItem;
    enable();
}

void ChosenItem::enable() {
    pathLabel_->setEnabled(isUsable_);
    stateLabel_->setEnabled(isUsable_);
    for (const Button& button : buttons_)
        button.widget->setEnabled(isUsable_ && (hasItem_ || button.needs == Needs::nothing));
}

void ChosenItem::setPath(const QString& path) {
    path_ = path;
    pathLabel_->setWholeText(path.isEmpty() ? nothing_ : path);
    pathLabel_->setAccessibleName(subject_ + QStringLiteral(": ") + pathLabel_->wholeText());
    showState();
}

void ChosenItem::setState(const QString& text, State state) {
    stateText_ = text;
    stateLabel_->setQuiet(state == State::prompt);
    showState();
}

void ChosenItem::showState() {
    const QString shown = isPromptForItem(stateText_) && !path_.isEmpty() ? QString() : stateText_;
    stateLabel_->setWholeText(shown);
    stateLabel_->setAccessibleName(subject_ + QStringLiteral(" state: ") + shown);
}

void ChosenItem::setTextRoom(const QString& text) {
    roomText_ = text;
    // The buttons too have their place in one row, if the window has that width.
    setMinimumWidth(qMax(fontMetrics().horizontalAdvance(text) + 4, buttonLine_->sizeHint().width()));
}

void ChosenItem::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) setTextRoom(roomText_);
}

QString ChosenItem::state() const {
    return stateLabel_->wholeText();
}

} // namespace quillow
