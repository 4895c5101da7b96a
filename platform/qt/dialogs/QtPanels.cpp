#include "platform/qt/dialogs/QtPanels.h"

#include "base/PathBytes.h"
#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/dialogs/OpenDialogs.h"

#include <utility>

namespace quillow {
namespace {

class PanelSheet final : public Sheet {
public:
    PanelSheet(const OpenPanel& panel, const FilePortal& portal, const Workspace& workspace,
               std::function<void(const std::optional<QUrl>&)> handler)
        : panel_(panel)
        , portal_(portal)
        , workspace_(workspace)
        , handler_(std::move(handler)) {}

    [[nodiscard]] bool asksTheSameAs(const Sheet& other) const override {
        const auto* panel = dynamic_cast<const PanelSheet*>(&other);
        return panel && panel->panel_ == panel_;
    }
    [[nodiscard]] QDialog* makeDialog(QWidget* window) const override {
        FileQuestion question;
        question.answer = panel_.canChooseFiles ? FileQuestion::Answer::file : FileQuestion::Answer::folder;
        question.message = panel_.message;
        question.prompt = panel_.prompt;
        question.extensions = panel_.allowedFileTypes;
        // The URL may lack a scheme, for example if it was made from a plain path. It still names a folder here.
        if (panel_.directoryURL) question.folder = pathFromFileUrl(*panel_.directoryURL);
        return makeOpenDialog(portal_, question, workspace_, window);
    }
    void takeAnswer(const QDialog& dialog, int result) override {
        if (result != QDialog::Accepted) return;
        const QStringList chosen = chosenPathsOf(dialog, workspace_);
        if (!chosen.isEmpty()) answer_ = fileUrlFromPath(chosen.constFirst());
    }
    void complete() override {
        if (handler_) handler_(answer_);
    }

private:
    OpenPanel panel_;
    const FilePortal& portal_;
    const Workspace& workspace_;
    std::function<void(const std::optional<QUrl>&)> handler_;
    std::optional<QUrl> answer_;
};

} // namespace

void QtPanels::beginSheetModalForWindow(const OpenPanel& panel, Window* window,
                                        std::function<void(const std::optional<QUrl>& url)> completionHandler) {
    sheets_.begin(std::make_unique<PanelSheet>(panel, portal_, workspace_, std::move(completionHandler)),
                  WidgetWindow::of(window));
}

} // namespace quillow
