// The folder or document that the user has chosen: its path, a line with its state, and buttons.
#pragma once

#include <QList>
#include <QString>
#include <QWidget>

#include <functional>

class QLayout;
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

    /// Makes the item wide enough for this text, in the present font.
    void setTextRoom(const QString& text);

    /// Whether the user may change the item now: enables the path, the state line and the buttons.
    void setUsable(bool isUsable);
    /// Whether there is an item, for the buttons that need one.
    void setHasItem(bool hasItem);
    void setPath(const QString& path);
    enum class State { prompt, stated };
    /// A prompt is shown more quietly than a statement. The texts that ask for an item are hidden if there is a path:
    /// the logic leaves them in place when the user has chosen one.
    void setState(const QString& text, State state);

    [[nodiscard]] QString path() const { return path_; }
    /// The state line as it is shown.
    [[nodiscard]] QString state() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Button {
        QPushButton* widget;
        Needs needs;
    };
    void enable();
    void showState();

    QString subject_;
    QString nothing_;
    QString path_;
    QString stateText_;
    QString roomText_;
    ElidedLabel* pathLabel_;
    ElidedLabel* stateLabel_;
    QLayout* buttonLine_;
    QList<Button> buttons_;
    bool isUsable_ = true;
    bool hasItem_ = true;
};

} // namespace quillow
