#include "platform/qt/exporter/QtSavePanels.h"

#include "base/PathBytes.h"
#include "base/PathStrings.h"
#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/dialogs/PortalDialog.h"
#include "platform/qt/dialogs/SheetHandle.h"
#include "platform/qt/exporter/QtAccessoryView.h"
#include "platform/qt/exporter/SaveDialog.h"

#include <utility>

namespace quillow {
namespace {

class QtSavePanel final : public SavePanel {
public:
    QtSavePanel(Sheets& sheets, FilePortal portal)
        : portal_(std::move(portal))
        , sheet_(sheets) {}

    void setAccessoryView(AccessoryView* view) override { accessoryView_ = static_cast<QtAccessoryView*>(view); }
    [[nodiscard]] QString nameFieldStringValue() const override { return dialog() ? dialog()->name() : name_; }
    void setNameFieldStringValue(const QString& name) override {
        name_ = name;
        if (dialog()) dialog()->setName(name);
    }
    [[nodiscard]] std::optional<QUrl> URL() const override { return url_; }
    void beginSheetModalForWindow(Window* window, std::function<void(int result)> completionHandler) override {
        url_.reset();
        sheet_.begin(WidgetWindow::of(window),
                     {[this](QWidget* parent) { return makeDialog(parent); },
                      [this](const QDialog& finished, int result) { takeAnswer(finished, result); },
                      [completed = std::move(completionHandler)](int result) {
                          completed(result == QDialog::Accepted ? kSavePanelConfirmed : kSavePanelCancelled);
                      }});
    }

private:
    /// Our dialog, which may be in the place of the portal's; null if the portal's is in use.
    [[nodiscard]] static const SaveDialog* ownOf(const QDialog* dialog) {
        const auto* portals = dynamic_cast<const PortalDialog*>(dialog);
        return dynamic_cast<const SaveDialog*>(portals ? portals->own() : dialog);
    }
    [[nodiscard]] SaveDialog* dialog() const { return const_cast<SaveDialog*>(ownOf(sheet_.dialog())); }
    [[nodiscard]] QDialog* makeDialog(QWidget* parent) const {
        FileQuestion question;
        question.answer = FileQuestion::Answer::newFile;
        question.prompt = QStringLiteral("&Save");
        question.name = name_;
        // The portal's dialog has no place for a control of ours.
        if (!accessoryView_ && portal_.isOffered()) {
            return new PortalDialog(
                portal_, question, [question](QWidget* window) { return new SaveDialog(question, window); }, parent);
        }
        auto* dialog = new SaveDialog(question, parent);
        if (accessoryView_) dialog->setAccessory(accessoryView_->title(), accessoryView_->makeControl(dialog));
        return dialog;
    }
    void takeAnswer(const QDialog& finished, int result) {
        QStringList chosen;
        if (const SaveDialog* own = ownOf(&finished)) {
            name_ = own->name();
            chosen = own->selectedFiles();
        } else {
            chosen = static_cast<const PortalDialog&>(finished).paths();
            if (!chosen.isEmpty()) name_ = lastPathComponent(chosen.constFirst());
        }
        if (result != QDialog::Accepted || chosen.isEmpty()) return;
        url_ = fileUrlFromPath(chosen.constFirst());
    }

    FilePortal portal_;
    QtAccessoryView* accessoryView_ = nullptr;
    QString name_;
    std::optional<QUrl> url_;
    SheetHandle sheet_;
};

} // namespace

std::unique_ptr<SavePanel> QtSavePanels::makeSavePanel() {
    return std::make_unique<QtSavePanel>(sheets_, portal_);
}

} // namespace quillow
