#include "platform/qt/dialogs/QtPanels.h"

#include "base/PathBytes.h"
#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/dialogs/OpenDialog.h"

#include <utility>

namespace quillow {
namespace {

class PanelSheet final : public Sheet {
public:
    PanelSheet(const OpenPanel& panel, const Workspace& workspace,
               std::function<void(const std::optional<QUrl>&)> handler)
        : panel_(panel)
        , workspace_(workspace)
        , handler_(std::move(handler)) {}

    [[nodiscard]] bool asksTheSameAs(const Sheet& other) const override {
        const auto* panel = dynamic_cast<const PanelSheet*>(&other);
        return panel && panel->panel_ == panel_;
    }
    [[nodiscard]] QDialog* makeDialog(QWidget* window) const override {
        auto* dialog = new OpenDialog(panel_.message, panel_.prompt, workspace_, window);
        if (panel_.canChooseFiles)
            dialog->showFiles(panel_.allowedFileTypes);
        else
            dialog->showFoldersOnly();
        // The URL may lack a scheme, for example if it was made from a plain path. It still names a folder here.
        if (panel_.directoryURL) dialog->startIn(panel_.directoryURL->path());
        return dialog;
    }
    void takeAnswer(const QDialog& dialog, int result) override {
        const QStringList chosen = static_cast<const OpenDialog&>(dialog).chosenPaths();
        if (result == QDialog::Accepted && !chosen.isEmpty()) answer_ = fileUrlFromPath(chosen.constFirst());
    }
    void complete() override {
        if (handler_) handler_(answer_);
    }

private:
    OpenPanel panel_;
    const Workspace& workspace_;
    std::function<void(const std::optional<QUrl>&)> handler_;
    std::optional<QUrl> answer_;
};

} // namespace

void QtPanels::beginSheetModalForWindow(const OpenPanel& panel, Window* window,
                                        std::function<void(const std::optional<QUrl>& url)> completionHandler) {
    sheets_.begin(std::make_unique<PanelSheet>(panel, workspace_, std::move(completionHandler)),
                  WidgetWindow::of(window));
}

} // namespace quillow
