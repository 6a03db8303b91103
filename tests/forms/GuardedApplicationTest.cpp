// An error thrown by a handler stays out of the event loop and is reported after the event.
#include "forms/ui/GuardedApplication.h"

#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace velmorak;

TEST(GuardedApplication, ReportsWhatAHandlerThrowsAndGoesOn) {
    auto* app = dynamic_cast<GuardedApplication*>(QCoreApplication::instance());
    ASSERT_NE(app, nullptr);
    QStringList reported;
    app->setReporter([&reported](const QString& what) { reported << what; });
    QPushButton button;
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&clicks] {
        if (++clicks == 1) throw std::runtime_error("database or disk is full");
    });
    for (int i = 0; i < 2; ++i) {
        QTimer::singleShot(0, &button, [&button] { button.click(); });
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
    app->setReporter({});
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(reported, QStringList{"database or disk is full"});
}
