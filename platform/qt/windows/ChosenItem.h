// The folder or document that the user has chosen: its path, a line with its state, and buttons.
#pragma once

#include <QList>
#include <QString>
#include <QWidget>

#include <functional>

class QHBoxLayout;
class QPushButton;

namespace quillow {

class ElidedLabel;

class ChosenItem final : public QWidget {
public:
    /// `subject` names the item for assistive tools. `nothing` is shown if there is no path.
    ChosenItem(QString subject, QString nothing);

    enum class Needs { nothing, item };
    /// The description is the button's tool tip. Assistive tools read it after the title.
    void addButton(const QString& title, const QString& description, Needs needs, std::function<void()> command);

    /// Whether the user may change the item now: enables the path and the buttons. The state line does not depend on
    /// it.
    void setUsable(bool isUsable);
    /// Whether there is an item, for the buttons that need one.
    void setHasItem(bool hasItem);
    void setPath(const QString& path);
    enum class State { prompt, stated };
    /// A prompt is shown more quietly than a statement.
    void setState(const QString& text, State state);

    [[nodiscard]] QString path() const { return path_; }
    [[nodiscard]] QString state() const;

private:
    struct Button {
        QPushButton* widget;
        Needs needs;
    };
    void enable();

    QString subject_;
    QString nothing_;
    QString path_;
    ElidedLabel* pathLabel_;
    ElidedLabel* stateLabel_;
    QHBoxLayout* buttonLine_;
    QList<Button> buttons_;
    bool isUsable_ = true;
    bool hasItem_ = true;
};

} // namespace quillow
