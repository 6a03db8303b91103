// An error thrown by a handler stops at the handler's boundary, before Qt's frames, and is
// reported after the event; the program goes on and the next click works.
#include "forms/ui/GuardedApplication.h"
#include "forms/Boundary.h"

#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace velmorak;

TEST(GuardedApplication, ReportsWhatAHandlerThrowsAndGoesOn) {
    auto* app = dynamic_cast<GuardedApplication*>(QCoreApplication::instance());
    ASSERT_NE(app, nullptr);
    QStringList reported;
    int depthInHandler = -1;
    app->setReporter([&reported](const QString& what) { reported << what; });
    QPushButton button;
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, guarded([&] {
        depthInHandler = HandlerScope::depth();
        if (++clicks == 1) throw std::runtime_error("database or disk is full");
    }));
    for (int i = 0; i < 2; ++i) {
        button.click();
        if (i == 0) {
            EXPECT_TRUE(reported.isEmpty()) << "not inside the event";
        }
        QCoreApplication::processEvents();
    }
    app->setReporter({});
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(depthInHandler, 1) << "a handler on the stack while it runs";
    EXPECT_EQ(HandlerScope::depth(), 0);
    EXPECT_EQ(reported, QStringList{"database or disk is full"});
}
