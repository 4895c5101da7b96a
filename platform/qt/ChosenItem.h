// What the user has chosen, a folder or a document: its path, a line that says how it stands with it, and buttons.
#pragma once

#include <QString>
#include <QWidget>

#include <functional>

class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace quillow {

class ElidedLabel;

class ChosenItem final : public QWidget {
public:
    /// `subject` names the item to assistive tools, `nothing` stands where there is no path.
    ChosenItem(QString subject, QString nothing);

    /// The description is the button's tool tip, and what assistive tools read after its title.
    QPushButton* addButton(const QString& title, const QString& description, std::function<void()> command);

    void setPath(const QString& path);
    enum class State { prompt, stated };
    /// A prompt is shown more quietly than a statement.
    void setState(const QString& text, State state);

    [[nodiscard]] QString path() const { return path_; }
    [[nodiscard]] QString state() const;

private:
    QString subject_;
    QString nothing_;
    QString path_;
    ElidedLabel* pathLabel_;
    ElidedLabel* stateLabel_;
    QHBoxLayout* buttons_;
};

} // namespace quillow
