#include "platform/qt/windows/ChosenItem.h"

#include "platform/qt/controls/ElidedLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace quillow {
namespace {

constexpr float kQuiet = 0.7F;
constexpr int kGap = 6;

} // namespace

ChosenItem::ChosenItem(QString subject, QString nothing)
    : subject_(std::move(subject))
    , nothing_(std::move(nothing))
    , pathLabel_(new ElidedLabel)
    , stateLabel_(new ElidedLabel)
    , buttonLine_(new QHBoxLayout) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(pathLabel_);
    layout->addWidget(stateLabel_);
    layout->addStretch(1);
    layout->addLayout(buttonLine_);
    buttonLine_->setSpacing(kGap);
    buttonLine_->addStretch(1);
    setPath(QString());
    setState(QString(), State::prompt);
}

void ChosenItem::addButton(const QString& title, const QString& description, Needs needs,
                           std::function<void()> command) {
    auto* button = new QPushButton(title);
    button->setToolTip(description);
    button->setAccessibleDescription(description);
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, button, [command = std::move(command)] { command(); });
    buttonLine_->insertWidget(buttonLine_->count() - 1, button);
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
    for (const Button& button : buttons_)
        button.widget->setEnabled(isUsable_ && (hasItem_ || button.needs == Needs::nothing));
}

void ChosenItem::setPath(const QString& path) {
    path_ = path;
    pathLabel_->setWholeText(path.isEmpty() ? nothing_ : path);
    pathLabel_->setAccessibleName(subject_ + QStringLiteral(": ") + pathLabel_->wholeText());
}

void ChosenItem::setState(const QString& text, State state) {
    QPalette colours;
    QColor colour = colours.color(QPalette::WindowText);
    if (state == State::prompt) colour.setAlphaF(kQuiet);
    colours.setColor(QPalette::Active, QPalette::WindowText, colour);
    stateLabel_->setPalette(colours);
    stateLabel_->setWholeText(text);
    stateLabel_->setAccessibleName(subject_ + QStringLiteral(" state: ") + text);
}

QString ChosenItem::state() const {
    return stateLabel_->wholeText();
}

} // namespace quillow
