// Application-modal alerts: their return codes, their keys, and the main queue while they are open.
#include "platform/qt/dialogs/AlertBox.h"
#include "platform/qt/dialogs/QtAlerts.h"
#include "tests/platform/Waiting.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace quillow {
namespace {

class ModalAlertsTest : public testing::Test {
protected:
    /// Runs the alert, and calls `act` once it is shown.
    int run(const QStringList& buttons, const std::function<void(AlertBox&)>& act) {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* box = dynamic_cast<AlertBox*>(QApplication::activeModalWidget());
            if (!box) return;
            timer.stop();
            EXPECT_EQ(box->windowModality(), Qt::ApplicationModal);
            act(*box);
        });
        timer.start(1);
        return alerts_.runModal({QStringLiteral("message"), QStringLiteral("text"), AlertStyle::warning, buttons});
    }
    int press(const QStringList& buttons, Qt::Key key) {
        return run(buttons, [key](AlertBox& box) { QTest::keyClick(&box, key); });
    }

    Sheets sheets_;
    QtMainQueue queue_;
    QtAlerts alerts_{sheets_, queue_};
    const QStringList update_{QStringLiteral("Download Update"), QStringLiteral("Download Page"),
                              QStringLiteral("Later")};
};

TEST_F(ModalAlertsTest, codesFollowTheOrderOfTheList) {
    for (int place = 0; place < 3; ++place) {
        EXPECT_EQ(run(update_,
                      [&](AlertBox& box) {
                          for (QAbstractButton* button : box.buttons())
                              if (button->text().remove(u'&') == update_[place]) button->click();
                      }),
                  kAlertFirstButtonReturn + place);
    }
}

TEST_F(ModalAlertsTest, aLongMessageIsShownWhole) {
    Alert alert;
    alert.messageText = QStringLiteral("Preference was set to open at startup a document without specifying it");
    AlertBox box(alert, nullptr);
    box.show();
    runEvents();
    const auto* message = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    ASSERT_NE(message, nullptr);
    EXPECT_GE(message->height(), message->heightForWidth(message->width()));
    EXPECT_TRUE(message->wordWrap() || message->width() >= message->sizeHint().width());
}

TEST_F(ModalAlertsTest, returnPressesTheFirstButton) {
    EXPECT_EQ(press(update_, Qt::Key_Return), kAlertFirstButtonReturn);
}

TEST_F(ModalAlertsTest, escapePressesTheButtonThatAsksForNothing) {
    EXPECT_EQ(press(update_, Qt::Key_Escape), kAlertThirdButtonReturn);
    EXPECT_EQ(press({QStringLiteral("Go"), QStringLiteral("Close")}, Qt::Key_Escape), kAlertSecondButtonReturn);
    EXPECT_EQ(press({QStringLiteral("OK"), QStringLiteral("Site"), QStringLiteral("Cancel")}, Qt::Key_Escape),
              kAlertThirdButtonReturn);
}

TEST_F(ModalAlertsTest, escapeAnswersNoButtonWhereNoneAsksForNothing) {
    EXPECT_EQ(press({QStringLiteral("OK")}, Qt::Key_Escape), kAlertDismissed);
    EXPECT_EQ(press({QStringLiteral("Close")}, Qt::Key_Escape), kAlertDismissed);
    EXPECT_EQ(press({QStringLiteral("A"), QStringLiteral("B")}, Qt::Key_Escape), kAlertDismissed);
}

TEST_F(ModalAlertsTest, operationsOfTheMainQueueRunUnderIt) {
    std::vector<int> order;
    QTimer::singleShot(0, [&] { queue_.addOperation([&order] { order.push_back(1); }); });
    run(update_, [&](AlertBox& box) {
        EXPECT_TRUE(waitUntil([&order] { return !order.empty(); }));
        order.push_back(2);
        box.reject();
    });
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TEST_F(ModalAlertsTest, operationsRunUnderAnAlertThatAnOperationShows) {
    std::vector<int> order;
    queue_.addOperation([&] {
        queue_.addOperation([&order] { order.push_back(1); });
        run(update_, [&order](AlertBox& box) {
            EXPECT_TRUE(waitUntil([&order] { return !order.empty(); }));
            box.reject();
        });
        queue_.addOperation([&order] { order.push_back(3); });
        order.push_back(2);
    });
    ASSERT_TRUE(waitUntil([&order] { return order.size() == 3; }));
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST_F(ModalAlertsTest, theEndOfTheProgramDismissesOneAndThoseAfterIt) {
    std::vector<int> codes;
    QTimer::singleShot(0, [&] {
        codes.push_back(run(update_, [](AlertBox&) { QCoreApplication::exit(3); }));
        codes.push_back(alerts_.runModal({QStringLiteral("after"), QString(), AlertStyle::warning, update_}));
    });
    EXPECT_EQ(QApplication::exec(), 3);
    EXPECT_EQ(codes, (std::vector<int>{kAlertDismissed, kAlertDismissed}));
}

TEST_F(ModalAlertsTest, theAlertOfAnOperationThatRunsAtTheEndOfTheProgramWaitsForNoAnswer) {
    bool hasWaited = false;
    int code = 0;
    QTimer::singleShot(0, [&] {
        queue_.addOperation([&] {
            code = run(update_, [&hasWaited](AlertBox& box) {
                hasWaited = true;
                box.reject();
            });
        });
        queue_.runAllAtEnd();
    });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_FALSE(hasWaited);
    EXPECT_EQ(code, kAlertDismissed);
}

} // namespace
} // namespace quillow
