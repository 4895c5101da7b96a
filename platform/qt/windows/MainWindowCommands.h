// The actions of the main window's controls and menu items. Each is called on the main thread.
#pragma once

#include <QStringList>

#include <functional>

namespace quillow {

struct MainWindowCommands {
    std::function<void(const QStringList& paths)> convert; ///< dropped or chosen documents
    std::function<void()> changeDestination;
    std::function<void()> openPreferences;
    std::function<void()> resetCounter;
    std::function<void()> showInput;
    std::function<void()> openInput;
    std::function<void()> showOutput;
    std::function<void()> openOutput;
    std::function<void()> showFolder;
    std::function<void()> clearLog;
    std::function<void()> switchWindows; ///< between the small and the big mode
    std::function<void()> showMainWindow;
    std::function<void()> undo;
    std::function<void()> redo;
    std::function<void()> openUserGuide;
    std::function<void()> emailUs;
    std::function<void()> visitAppUrl;
    std::function<void()> visitUs;
    std::function<void()> quit;
};

} // namespace quillow
