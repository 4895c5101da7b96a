// The real windows, connected to the delegate as in the program. The delegate uses fakes, and one journal records all
// calls to them.
#pragma once

#include "app/QuillowAppDelegate.h"
#include "platform/qt/dragdrop/DropArea.h"
#include "platform/qt/services/QtImageCodec.h"
#include "platform/qt/storage/ObservedDefaults.h"
#include "platform/qt/storage/QtTextUnarchiver.h"
#include "platform/qt/windows/ChosenItem.h"
#include "platform/qt/windows/GeneralPane.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/PreferencesWindow.h"
#include "prefs/MyPrefToolbarDelegate.h"
#include "program/Wiring.h"
#include "tests/fakes/FakeLogView.h"
#include "tests/fakes/FakeTabView.h"
#include "tests/fakes/FakeToolbar.h"
#include "tests/fakes/FakeWindow.h"
#include "tests/prefs/SharedChecker.h"
#include "util/StandardTransformers.h"

#include <QAbstractButton>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QStringList>

#include <gtest/gtest.h>

namespace quillow {

using namespace Qt::StringLiterals;

class WiringFixture : public testing::Test {
protected:
    WiringFixture() {
        registerStandardTransformers(fakes.valueTransformers, fakes.bookmarks, fakes.clock, imageCodec, textUnarchiver);
        QuillowAppDelegate::initialize(defaults, {});
        mainWindow.recordIn(fakes.journal, u"main window"_s);
        preferencesWindow.recordIn(fakes.journal, u"preferences"_s);
        panes.recordIn(fakes.journal, u"preferences"_s);
        shared.background.recordIn(fakes.journal, u"update check"_s);
        fakes.recordEverything();
        toolbarDelegate.awakeFromNib();
        delegate.setWindow(&mainWindow);
        delegate.setMainWindow(&mainWindow);
        delegate.setPrefWindow(&preferencesWindow);
        delegate.setPrefToolbarDelegate(&toolbarDelegate);
        delegate.setTextLog(&log);
        delegate.setDragDropArea(&dropView);
        connection.emplace(*this);
        window.show();
    }
    ~WiringFixture() override { shared.background.stopRecording(); }

    static QString plain(QString title) { return title.remove(u'&'); }
    /// The items of the menu bar by "Menu/Item".
    [[nodiscard]] QMap<QString, QAction*> menuItems() const {
        QMap<QString, QAction*> items;
        for (const QAction* menu : window.menuBar()->actions())
            for (QAction* item : menu->menu()->actions())
                if (!item->isSeparator()) items.insert(plain(menu->text()) + u'/' + plain(item->text()), item);
        return items;
    }
    /// The buttons of a window by title, without Qt's internal ones, such as the extension button of a menu bar.
    [[nodiscard]] static QMap<QString, QAbstractButton*> buttonsOf(const QWidget& widget) {
        QMap<QString, QAbstractButton*> buttons;
        for (auto* button : widget.findChildren<QAbstractButton*>()) {
            const QString title = button->text().isEmpty() ? button->accessibleName() : plain(button->text());
            if (!button->objectName().startsWith(u"qt_")) buttons.insert(title, button);
        }
        return buttons;
    }
    [[nodiscard]] Boxed stored(const char16_t* key) const {
        return fakes.defaults.objectForKey(QString::fromUtf16(key));
    }
    void store(const Boxed& value, const char16_t* key) { defaults.setObject(value, QString::fromUtf16(key)); }
    [[nodiscard]] QByteArray bookmarkOf(const QString& path) {
        return MWBookmark(fakes.bookmarks).bookmarkForURL_RW(QUrl::fromLocalFile(path)).value();
    }

    FakePlatform fakes;
    ObservedDefaults defaults{fakes.defaults};
    SharedChecker& shared = SharedChecker::idle();
    QtImageCodec imageCodec;
    QtTextUnarchiver textUnarchiver;
    FakeWindow mainWindow;
    FakeWindow preferencesWindow;
    FakeTabView panes;
    FakeToolbarFactory toolbarFactory;
    MyPrefToolbarDelegate toolbarDelegate{toolbarFactory, preferencesWindow, panes};
    FakeLogView log;
    MainWindow window{fakes.alerts, fakes.workspace};
    PreferencesWindow preferences{UpdateCheck::wired};
    MWDragDropView dropView{window.dropArea()};
    QuillowAppDelegate delegate{fakes.platform(defaults), fakes.supportUtility, fakes.valueTransformers,
                                fakes.undoManager};

    /// Connects the delegate and the windows as the program does.
    struct Connection {
        explicit Connection(WiringFixture& test)
            : bindings(test.delegate, test.defaults, test.fakes.undoManager, test.window)
            , preferencesBindings(test.preferences, test.delegate, test.defaults, test.fakes.dates,
                                  transformsOf(test.fakes.valueTransformers), preferencesActionsOf(test.delegate)) {
            test.window.setCommands(commandsOf(test.delegate, test.dropView, test.fakes.undoManager,
                                               [&test] { test.fakes.journal.add(u"quit"_s); }));
        }
        Bindings bindings;
        PreferencesBindings preferencesBindings;
    };
    std::optional<Connection> connection;
};

} // namespace quillow
