// The program's life cycle: launch inside the running event loop, documents and messages of later starts,
// termination. The delegate is notified of the end exactly once, whatever causes it (the menu, a signal, the session,
// a lost window system).
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

/// Whether later starts can find this process. A process that cannot be found ends with its last window: nobody could
/// bring the window back.
enum class Findable { no, yes };

/// One instance at a time; construct it after the QApplication. Call its functions on the main thread unless noted
/// otherwise.
class Application final : public QObject {
public:
    /// The launch begins when the event loop runs: alerts may appear before the window.
    explicit Application(Findable findable);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application() override;

    /// Converts the documents of this start.
    void open(const Handover& handover);
    /// Takes what a later start hands over. It is handled from the event loop, so never during a conversion. Returns
    /// false if this program is ending. Callable from any thread.
    [[nodiscard]] bool take(const Handover& handover);

    /// Runs the event loop until the program ends. Returns the exit code.
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
    /// Qt calls exit() when it loses the connection to the window system.
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
    QStringList unconverted_; ///< documents that wait until the window is on the screen
};

} // namespace quillow
