// Runs the desktop program's parts in a separate process, without a screen and a network. Its arguments are steps:
// first the settings to store before launch, then the actions and outputs after it.
#include "platform/qt/controls/DiscloseButton.h"
#include "platform/qt/windows/ChosenItem.h"
#include "platform/qt/windows/GeneralPane.h"
#include "platform/qt/windows/QtLogView.h"
#include "program/Parts.h"
#include "tests/platform/Waiting.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

#include <cstdio>

namespace quillow {
namespace {

struct NoTermination final : Termination {
    [[nodiscard]] bool isRequested() const override { return false; }
};

QString plain(QString title) {
    return title.remove(u'&');
}

void say(const QString& line) {
    std::printf("%s\n", line.toUtf8().constData());
}

void storeFixedFolder(const QString& folder) {
    AccessRegistry access;
    QtBookmarkStore bookmarks(access);
    QtDefaults defaults(QtDefaults::standardFilePath());
    defaults.setObject(1, QStringLiteral("destinationType"));
    defaults.setObject(MWBookmark(bookmarks).bookmarkForURL_RW(QUrl::fromLocalFile(folder)),
                       QStringLiteral("destBookmark"));
}

class Run {
public:
    Run() {
        QuillowAppDelegate& delegate = parts_.delegate();
        delegate.applicationWillFinishLaunching({});
        delegate.applicationDidFinishLaunching({});
        runEvents();
    }
    ~Run() {
        queue_.runAllAtEnd();
        parts_.delegate().applicationWillTerminate({});
    }

    void step(const QString& name, const QString& argument) {
        if (name == u"destination") say(labelOf(parts_.window(), QStringLiteral("Destination: ")));
        if (name == u"state") say(parts_.preferences().generalPane().folder().state());
        if (name == u"clear") press(parts_.preferences().generalPane().folder(), QStringLiteral("Clear"));
        if (name == u"preferences") parts_.delegate().openPreferences();
        if (name == u"drop") parts_.dropView().addLinkToFiles({argument});
        if (name == u"dropTimes") {
            const QStringList documents(argument.section(u' ', 0, 0).toInt(), argument.section(u' ', 1));
            parts_.dropView().addLinkToFiles(documents);
        }
        if (name == u"log") say(parts_.window().logView().string().section(QStringLiteral("} "), 1));
        if (name == u"count") say(labelOf(parts_.window(), QStringLiteral("Converted: ")));
        if (name == u"big") parts_.window().discloseButton().click();
        if (name == u"height") say(QString::number(parts_.window().window().frame().height));
        if (name == u"other") showOther(argument);
        if (name == u"windows") sayWindows();
        if (name == u"windowMenu") sayWindowMenu();
        runEvents();
    }

private:
    static QString labelOf(const QWidget& widget, const QString& beginning) {
        for (const auto* label : widget.findChildren<QLabel*>())
            if (label->accessibleName().startsWith(beginning)) return label->accessibleName().mid(beginning.size());
        return QStringLiteral("no such label");
    }
    static void press(const QWidget& widget, const QString& title) {
        for (auto* button : widget.findChildren<QPushButton*>())
            if (plain(button->text()) == title) button->click();
    }
    void showOther(const QString& title) {
        other_.setWindowTitle(title);
        other_.show();
    }
    /// Prints the titles of the visible windows.
    static void sayWindows() {
        QStringList titles;
        for (const QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible()) titles.append(window->windowTitle());
        titles.sort();
        say(titles.join(u','));
    }
    /// Prints the items of the Window menu as the user sees them when it opens.
    void sayWindowMenu() {
        for (const QAction* menu : parts_.window().menuBar()->actions()) {
            if (plain(menu->text()) != u"Window") continue;
            Q_EMIT menu->menu()->aboutToShow();
            for (const QAction* item : menu->menu()->actions())
                if (!item->isSeparator()) say(plain(item->text()));
        }
    }

    NoTermination termination_;
    QtMainQueue queue_;
    Parts parts_{queue_, termination_, [] {}};
    QMainWindow other_;
};

} // namespace
} // namespace quillow

int main(int argc, char** argv) {
    using namespace quillow;
    const QApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    // The last update check was today, so there is no other.
    QtDefaults(QtDefaults::standardFilePath())
        .setObject(QDateTime::currentDateTimeUtc(), QStringLiteral("lastCheckDateForUpdate"));
    if (arguments.value(0) == u"fixedFolder") {
        storeFixedFolder(arguments.value(1));
        arguments = arguments.mid(2);
    }
    Run run;
    for (const QString& argument : arguments)
        run.step(argument.section(u'=', 0, 0), argument.section(u'=', 1));
    return 0;
}
