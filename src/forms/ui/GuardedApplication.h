#pragma once

#include <QApplication>

#include <functional>

namespace velmorak {

// The application object of the tool. Handlers stop their errors at their own boundary
// (atBoundary); what still reaches an event is caught here and reported the same way.
class GuardedApplication : public QApplication {
  public:
    using Reporter = std::function<void(const QString&)>;
    GuardedApplication(int& argc, char** argv) : QApplication(argc, argv) {}
    void setReporter(Reporter r);
    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace velmorak
