// About: the program's icon, what it is, its release, its page on the web and its licence.
#pragma once

#include <QDialog>

#include <functional>

class QLabel;
class QVBoxLayout;

namespace quillow {

class AboutBox final : public QDialog {
public:
    /// `isolation` says how documents are read. `visitPage` is called when the user follows the link.
    AboutBox(const QString& statement, const QString& isolation, const std::function<void()>& visitPage,
             QWidget* parent);

private:
    QLabel* addText(QVBoxLayout& column, const QString& text);
};

} // namespace quillow
