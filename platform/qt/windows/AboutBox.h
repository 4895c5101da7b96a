// About: the program's icon, what it is, its release, its page on the web and its licence.
#pragma once

#include <QDialog>

#include <functional>

class QVBoxLayout;

namespace quillow {

class AboutBox final : public QDialog {
public:
    /// `isolation` says how documents are read. `visitPage` is called when the user follows the link.
    AboutBox(const QString& statement, const QString& isolation, const std::function<void()>& visitPage,
             QWidget* parent);

protected:
    /// Return closes the box, unless the focus is on the link.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addText(QVBoxLayout& column, const QString& text);
};

} // namespace quillow
