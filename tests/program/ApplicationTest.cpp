// Events from outside that reach the program before its event loop runs: messages of later starts, and the session's
// end.
#include "program/Application.h"

#include <QApplication>
#include <QEvent>

#include <gtest/gtest.h>

namespace quillow {
namespace {

/// Counts the quit requests that it receives.
class Receiver final : public QObject {
public:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::Quit) ++quits;
        return true;
    }
    int quits = 0;
};

void sendQuit(QObject& receiver) {
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(&receiver, &quit);
}

TEST(Application, onlyTheApplicationsOwnQuitIsTheEnd) {
    Application application(Findable::yes);
    const Handover handover{{}, {}, "/", {}};
    Receiver other;

    sendQuit(other);
    EXPECT_EQ(other.quits, 1);
    EXPECT_TRUE(application.take(handover));

    sendQuit(*qApp);
    EXPECT_FALSE(application.take(handover));
}

} // namespace
} // namespace quillow
