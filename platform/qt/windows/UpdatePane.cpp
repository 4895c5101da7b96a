#include "platform/qt/windows/UpdatePane.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace quillow {
namespace {

constexpr int kMargin = 14;
constexpr float kQuiet = 0.7F;

QLabel* makeQuietLabel(const QString& text) {
    auto* label = new QLabel(text);
    QPalette colours = label->palette();
    QColor quiet = colours.color(QPalette::WindowText);
    quiet.setAlphaF(kQuiet);
    colours.setColor(QPalette::WindowText, quiet);
    label->setPalette(colours);
    return label;
}

QLabel* makeReleaseLabel() {
    auto* release = new QLabel(QStringLiteral("This is Quillow %1.").arg(QCoreApplication::applicationVersion()));
    release->setAccessibleName(release->text());
    return release;
}

} // namespace

UpdatePane::UpdatePane(UpdateCheck updateCheck) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin - 2, kMargin, kMargin - 2);
    layout->setSpacing(4);
    if (updateCheck == UpdateCheck::leftOut) {
        layout->addWidget(makeReleaseLabel());
        layout->addWidget(makeQuietLabel(QStringLiteral("Newer releases come with the system's updates.")));
        layout->addStretch(1);
        return;
    }

    notifies_ = new QCheckBox(QStringLiteral("&Tell me when there is a newer release"));
    connect(notifies_, &QCheckBox::toggled, this, [this](bool isOn) {
        if (!isShowing_ && commands_.setNotifies) commands_.setNotifies(isOn);
    });
    auto* daily = makeQuietLabel(QStringLiteral("Quillow looks for one once a day in either case."));
    lastCheck_ = new QLabel;
    lastCheck_->setTextFormat(Qt::PlainText);
    auto* checkNow = new QPushButton(QStringLiteral("Check &Now"));
    checkNow->setAccessibleDescription(QStringLiteral("Look for a newer release now"));
    checkNow->setToolTip(checkNow->accessibleDescription());
    connect(checkNow, &QPushButton::clicked, this, [this] {
        if (commands_.checkNow) commands_.checkNow();
    });

    auto* facts = new QVBoxLayout;
    facts->setSpacing(2);
    facts->addWidget(makeReleaseLabel());
    facts->addWidget(lastCheck_);
    auto* lastLine = new QHBoxLayout;
    lastLine->addLayout(facts);
    lastLine->addStretch(1);
    lastLine->addWidget(checkNow, 0, Qt::AlignBottom);
    layout->addWidget(notifies_);
    layout->addWidget(daily);
    layout->addStretch(1);
    layout->addLayout(lastLine);
    setLastCheck(QString());
}

void UpdatePane::setNotifies(bool notifies) {
    const QScopedValueRollback showing(isShowing_, true);
    if (notifies_) notifies_->setChecked(notifies);
}

void UpdatePane::setLastCheck(const QString& instant) {
    if (!lastCheck_) return;
    lastCheck_->setText(QStringLiteral("Last check: ") + (instant.isEmpty() ? QStringLiteral("never") : instant));
    lastCheck_->setAccessibleName(lastCheck_->text());
}

} // namespace quillow
