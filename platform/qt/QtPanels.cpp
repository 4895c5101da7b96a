#include "platform/qt/QtPanels.h"

#include "platform/qt/FileDialog.h"
#include "platform/qt/PathBytes.h"
#include "platform/qt/QtWindow.h"

#include <utility>

namespace quillow {
namespace {

class PanelSheet final : public Sheet {
public:
    PanelSheet(const OpenPanel& panel, std::function<void(const std::optional<QUrl>&)> handler)
        : panel_(panel)
        , handler_(std::move(handler)) {}

    [[nodiscard]] bool asksTheSameAs(const Sheet& other) const override {
        const auto* panel = dynamic_cast<const PanelSheet*>(&other);
        return panel && panel->panel_ == panel_;
    }
    [[nodiscard]] QDialog* makeDialog(QWidget* window) const override {
        auto* dialog = new FileDialog(panel_.message, panel_.prompt, window);
        if (panel_.canChooseFiles)
            dialog->showFiles(panel_.allowedFileTypes);
        else
            dialog->showFoldersOnly();
        // A URL without a scheme, as one made from a plain path is, names a folder here all the same.
        if (panel_.directoryURL) dialog->startIn(panel_.directoryURL->path());
        return dialog;
    }
    void takeAnswer(const QDialog& dialog, int result) override {
        const QStringList chosen = static_cast<const FileDialog&>(dialog).selectedFiles();
        if (result == QDialog::Accepted && !chosen.isEmpty()) answer_ = fileUrlFromPath(chosen.constFirst());
    }
    void complete() override {
        if (handler_) handler_(answer_);
    }

private:
    OpenPanel panel_;
    std::function<void(const std::optional<QUrl>&)> handler_;
    std::optional<QUrl> answer_;
};

} // namespace

void QtPanels::beginSheetModalForWindow(const OpenPanel& panel, Window* window,
                                        std::function<void(const std::optional<QUrl>& url)> completionHandler) {
    sheets_.begin(std::make_unique<PanelSheet>(panel, std::move(completionHandler)), QtWindow::widgetOf(window));
}

} // namespace quillow
