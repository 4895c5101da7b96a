// The exporter's windows without a screen: records what the exporter shows, and lets the test run its actions.
#pragma once

#include "platform/ExporterInterface.h"
#include "platform/SavePanel.h"
#include "platform/SheetPanel.h"
#include "tests/fakes/Journal.h"

#include <utility>

namespace quillow {

class FakeSheetPanel final : public SheetPanel {
public:
    explicit FakeSheetPanel(Journal& journal)
        : journal_(journal) {}
    void beginSheetModalForWindow(Window* window, std::function<void(int returnCode)> didEnd) override {
        if (isUp_) return;
        journal_.add(QStringLiteral("settings begin"));
        isUp_ = true;
        isOnScreen_ = true;
        window_ = window;
        didEnd_ = std::move(didEnd);
    }
    void endSheet(int returnCode) override {
        if (!std::exchange(isUp_, false)) return;
        journal_.add(QStringLiteral("settings end"));
        if (const auto didEnd = std::exchange(didEnd_, nullptr)) didEnd(returnCode);
    }
    void orderOut() override {
        journal_.add(QStringLiteral("settings out"));
        isOnScreen_ = false;
    }

    [[nodiscard]] bool isUp() const { return isUp_; }
    [[nodiscard]] bool isOnScreen() const { return isOnScreen_; }
    [[nodiscard]] Window* window() const { return window_; }

private:
    Journal& journal_;
    bool isUp_ = false;
    bool isOnScreen_ = false;
    Window* window_ = nullptr;
    std::function<void(int)> didEnd_;
};

class FakeInterfaceLoader final : public InterfaceLoader {
public:
    explicit FakeInterfaceLoader(Journal& journal)
        : journal_(journal) {}

    [[nodiscard]] std::unique_ptr<ExporterInterface> loadExporterInterface(const QString& name,
                                                                           const ExporterOwner& owner) override {
        journal_.add(QStringLiteral("load ") + name);
        if (isMissing_) return nullptr;
        actions_ = owner.actions;
        auto loaded = std::make_unique<Interface>(journal_);
        interface_ = loaded.get();
        return loaded;
    }
    void setMissing() { isMissing_ = true; }

    [[nodiscard]] const ExporterActions& actions() const { return actions_; }
    [[nodiscard]] FakeSheetPanel& settings() const { return interface_->panel; }
    [[nodiscard]] AccessoryView& formatChooser() const { return interface_->accessoryView; }

private:
    struct Interface final : ExporterInterface {
        explicit Interface(Journal& journal)
            : panel(journal) {}
        [[nodiscard]] SheetPanel& exportSettingsPanel() override { return panel; }
        [[nodiscard]] AccessoryView& exportPanelAccessoryView() override { return accessoryView; }
        FakeSheetPanel panel;
        AccessoryView accessoryView;
    };

    Journal& journal_;
    bool isMissing_ = false;
    ExporterActions actions_;
    Interface* interface_ = nullptr;
};

} // namespace quillow
