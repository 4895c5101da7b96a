#include "platform/qt/dialogs/PortalDialog.h"

#include <QGuiApplication>

#include <utility>

namespace quillow {
namespace {

/// The window as the portals identify it; empty for a Wayland window, because Qt does not offer the protocol for that.
/// Then the portal's dialog is a window of its own.
QString portalsNameOf(const QWidget* window) {
    if (!window || QGuiApplication::platformName() != u"xcb") return {};
    return QStringLiteral("x11:") + QString::number(window->window()->winId(), 16);
}

} // namespace

PortalDialog::PortalDialog(FilePortal portal, FileQuestion question, MakeDialog makeOwn, QWidget* window)
    : QDialog(window)
    , portal_(std::move(portal))
    , question_(std::move(question))
    , makeOwn_(std::move(makeOwn)) {
    setAttribute(Qt::WA_DontShowOnScreen);
    setWindowTitle(question_.title());
}

PortalDialog::~PortalDialog() {
    delete own_.data();
}

void PortalDialog::setVisible(bool isVisible) {
    QDialog::setVisible(isVisible);
    if (isVisible && !request_ && !own_)
        request_ =
            portal_.ask(question_, portalsNameOf(parentWidget()), [this](const FileAnswer& answer) { take(answer); });
}

void PortalDialog::done(int result) {
    request_.reset();
    if (own_) own_->hide();
    QDialog::done(result);
}

void PortalDialog::take(const FileAnswer& answer) {
    if (answer.end == FileAnswer::End::unavailable) {
        showOwn();
        return;
    }
    paths_ = answer.paths;
    done(answer.end == FileAnswer::End::chosen ? QDialog::Accepted : QDialog::Rejected);
}

void PortalDialog::showOwn() {
    own_ = makeOwn_(parentWidget());
    own_->setWindowModality(windowModality());
    connect(own_, &QDialog::finished, this, &PortalDialog::done);
    hide();
    own_->show();
}

} // namespace quillow
