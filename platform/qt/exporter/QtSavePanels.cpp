#include "platform/qt/exporter/QtSavePanels.h"

#include "base/PathBytes.h"
#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/dialogs/SheetHandle.h"
#include "platform/qt/exporter/QtAccessoryView.h"
#include "platform/qt/exporter/SaveDialog.h"

#include <utility>

namespace quillow {
namespace {

class QtSavePanel final : public SavePanel {
public:
    explicit QtSavePanel(Sheets& sheets)
        : sheet_(sheets) {}

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
    [[nodiscard]] SaveDialog* dialog() const { return static_cast<SaveDialog*>(sheet_.dialog()); }
    [[nodiscard]] QDialog* makeDialog(QWidget* parent) const {
        auto* dialog = new SaveDialog(parent);
        if (accessoryView_) dialog->setAccessory(accessoryView_->title(), accessoryView_->makeControl(dialog));
        dialog->setName(name_);
        return dialog;
    }
    void takeAnswer(const QDialog& finished, int result) {
        const auto& answered = static_cast<const SaveDialog&>(finished);
        name_ = answered.name();
        const QStringList chosen = answered.selectedFiles();
        if (result == QDialog::Accepted && !chosen.isEmpty()) url_ = fileUrlFromPath(chosen.constFirst());
    }

    QtAccessoryView* accessoryView_ = nullptr;
    QString name_;
    std::optional<QUrl> url_;
    SheetHandle sheet_;
};

} // namespace

std::unique_ptr<SavePanel> QtSavePanels::makeSavePanel() {
    return std::make_unique<QtSavePanel>(sheets_);
}

} // namespace quillow
