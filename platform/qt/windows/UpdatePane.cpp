#include "platform/qt/windows/UpdatePane.h"

#include "platform/qt/controls/QuietText.h"
#include "platform/qt/controls/Spinner.h"

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

QLabel* makeReleaseLabel() {
    auto* release = new QLabel(QStringLiteral("This is Quillow %1.").arg(QCoreApplication::applicationVersion()));
    release->setAccessibleName(release->text());
    alignToLayout(*release);
    return release;
}

} // namespace

UpdatePane::UpdatePane(UpdateCheck updateCheck) {
    auto* layout = new QVBoxLayout(&contents());
    layout->setContentsMargins(kMargin, kMargin - 2, kMargin, kMargin - 2);
    layout->setSpacing(4);
    if (updateCheck == UpdateCheck::leftOut) {
        layout->addWidget(makeReleaseLabel());
        layout->addWidget(new NoteLabel(QStringLiteral("Newer releases come with the system's updates.")));
        layout->addStretch(1);
        return;
    }

    notifies_ = new QCheckBox(QStringLiteral("&Tell me when there is a newer release"));
    connect(notifies_, &QCheckBox::toggled, this, [this](bool isOn) {
        if (!isShowing_ && commands_.setNotifies) commands_.setNotifies(isOn);
    });
    auto* daily = new NoteLabel(QStringLiteral("Quillow looks for one once a day in either case."));
    lastCheck_ = new QLabel;
    lastCheck_->setTextFormat(Qt::PlainText);
    lastCheck_->setWordWrap(true);
    alignToLayout(*lastCheck_);
    spinner_ = new Spinner(QStringLiteral("Not checking"), QStringLiteral("Checking"));
    checkNow_ = new QPushButton(QStringLiteral("Check &Now"));
    checkNow_->setAccessibleDescription(QStringLiteral("Look for a newer release now"));
    checkNow_->setToolTip(checkNow_->accessibleDescription());
    connect(checkNow_, &QPushButton::clicked, this, [this] {
        if (commands_.checkNow) commands_.checkNow();
    });

    auto* facts = new QVBoxLayout;
    facts->setSpacing(2);
    facts->addWidget(makeReleaseLabel());
    facts->addWidget(lastCheck_);
    auto* lastLine = new QHBoxLayout;
    lastLine->addLayout(facts, 1);
    lastLine->addWidget(spinner_, 0, Qt::AlignBottom);
    lastLine->addWidget(checkNow_, 0, Qt::AlignBottom);
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

void UpdatePane::setChecking(bool isChecking) {
    if (!checkNow_) return;
    checkNow_->setEnabled(!isChecking);
    if (isChecking)
        spinner_->startAnimation();
    else
        spinner_->stopAnimation();
}

bool UpdatePane::isSpinning() const {
    return spinner_ && spinner_->isAnimated();
}

void UpdatePane::focusFirst() {
    if (notifies_) notifies_->setFocus();
}

void UpdatePane::setLastCheck(const QString& instant) {
    if (!lastCheck_) return;
    lastCheck_->setText(QStringLiteral("Last check: ") + (instant.isEmpty() ? QStringLiteral("never") : instant));
    lastCheck_->setAccessibleName(lastCheck_->text());
}

} // namespace quillow
