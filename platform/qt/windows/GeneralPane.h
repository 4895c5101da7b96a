// The General pane: where texts go, and what happens at start-up.
#pragma once

#include "platform/qt/windows/ScrolledPane.h"

#include <QString>

#include <cstdint>
#include <functional>

class QBoxLayout;
class QComboBox;
class QFrame;
class QLabel;
class QLayout;
class QRadioButton;

namespace quillow {

class ChosenItem;

struct GeneralPaneCommands {
    std::function<void(bool isFixed)> setDestinationIsFixed; ///< the user has changed it
    std::function<void()> selectFolder;
    std::function<void()> showFolder;
    std::function<void()> clearFolder;
    std::function<void(int tag)> setStartupAction; ///< the user has changed it
    std::function<void()> selectDocument;
    std::function<void()> showDocument;
    std::function<void()> testDocument;
    std::function<void()> clearDocument;
};

class GeneralPane final : public ScrolledPane {
public:
    /// The start-up action that opens a chosen document.
    static constexpr int kOpenChosenDocument = 3;

    GeneralPane();

    /// Puts the two columns beside one another if there is room for that in a window of the given size, else above one
    /// another.
    void arrange(const QSize& room) override;
    /// Gives the focus to the choice of the destination that is on.
    void focusFirst() override;

    void setCommands(const GeneralPaneCommands& commands) { commands_ = commands; }

    // Setters for what the pane shows. They run no command.
    void setDestinationAsks(bool asks);
    void setDestinationIsFixed(bool isFixed);
    void setStartupAction(std::int64_t tag);
    /// Whether there is a chosen document that can be shown, tested and cleared.
    void setDocumentIsSpecified(bool isSpecified);
    [[nodiscard]] ChosenItem& folder() { return *folder_; }
    [[nodiscard]] ChosenItem& document() { return *document_; }

private:
    [[nodiscard]] QLayout* makeDestination();
    [[nodiscard]] QLayout* makeStartup();
    void setBeside(bool isBeside);
    [[nodiscard]] std::function<void()> running(std::function<void()> GeneralPaneCommands::*command) const;

    GeneralPaneCommands commands_;
    QBoxLayout* columns_;
    QFrame* line_;
    bool isShowing_ = false; ///< true while code, not the user, changes the controls
    QRadioButton* asks_;
    QRadioButton* fixed_;
    QLabel* destinationNote_;
    ChosenItem* folder_;
    QComboBox* startupAction_;
    ChosenItem* document_;
};

} // namespace quillow
