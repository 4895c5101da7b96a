#include "platform/qt/ChosenItem.h"

#include "platform/qt/ElidedLabel.h"

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
    , buttons_(new QHBoxLayout) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(pathLabel_);
    layout->addWidget(stateLabel_);
    layout->addStretch(1);
    layout->addLayout(buttons_);
    buttons_->setSpacing(kGap);
    buttons_->addStretch(1);
    setPath(QString());
    setState(QString(), State::prompt);
}

QPushButton* ChosenItem::addButton(const QString& title, const QString& description, std::function<void()> command) {
    auto* button = new QPushButton(title);
    button->setToolTip(description);
    button->setAccessibleDescription(description);
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, button, [command = std::move(command)] { command(); });
    buttons_->insertWidget(buttons_->count() - 1, button);
    return button;
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
