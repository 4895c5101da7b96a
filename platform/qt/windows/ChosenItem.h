// What the user has chosen, a folder or a document: its path, a line that says how it stands with it, and buttons.
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
    /// `subject` names the item to assistive tools, `nothing` stands where there is no path.
    ChosenItem(QString subject, QString nothing);

    enum class Needs { nothing, item };
    /// The description is the button's tool tip, and what assistive tools read after its title.
    void addButton(const QString& title, const QString& description, Needs needs, std::function<void()> command);

    /// Whether the user may do something with it now. How it stands with the item is told all the same.
    void setUsable(bool isUsable);
    /// Whether there is an item for those buttons that need one.
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
