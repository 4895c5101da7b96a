// The program's life: launch from within the running event loop, documents and calls of later starts, the end. Whatever asks
// for the end (the menu, a signal, the session, the window system that goes away), the delegate is told once.
#pragma once

#include "platform/qt/life/HandoverMessage.h"
#include "platform/qt/life/TerminationSignals.h"
#include "platform/qt/services/QtMainQueue.h"
#include "program/Parts.h"

#include <QObject>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

namespace quillow {

/// Whether later starts find this one. One that is not found ends with its last window: nobody could bring it back.
enum class Findable { no, yes };

/// One at a time, made once there is a QApplication. Unless told otherwise, functions belong to the main thread.
class Application final : public QObject {
public:
    /// Launch begins with the event loop: alerts may come before the window.
    explicit Application(Findable findable);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application() override;

    /// The documents of this start.
    void open(const Handover& handover);
    /// What a later start hands over. It takes effect from the event loop, so never in the midst of a conversion. False when
    /// this program is ending. May be called from any thread.
    [[nodiscard]] bool take(const QByteArray& message);

    /// Until the program has ended; the exit code.
    [[nodiscard]] int run();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void launch();
    void whenLaunched(std::function<void()> action);
    void receive(const Handover& handover);
    void convert(const QStringList& paths);
    void quit();
    void terminate();
    /// Qt calls exit() when the window system goes away.
    static void terminateAtExit();

    static Application* running;
    const Findable findable_;
    std::atomic<bool> isEnding_ = false;
    QtMainQueue mainQueue_;
    TerminationSignals signals_;
    std::unique_ptr<Parts> parts_;
    bool isLaunched_ = false;
    bool isTerminated_ = false;
    std::vector<std::function<void()>> afterLaunch_;
    QStringList unconverted_; ///< they wait for the window to stand on the screen
};

} // namespace quillow
