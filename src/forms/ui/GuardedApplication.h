#pragma once

#include <QApplication>

#include <functional>

namespace velmorak {

// The application object of the tool. An error thrown by a handler never reaches Qt's event
// loop: it is printed, handed to the reporter after the event (so a message box does not open
// inside another handler), and the program goes on.
class GuardedApplication : public QApplication {
  public:
    using Reporter = std::function<void(const QString&)>;
    GuardedApplication(int& argc, char** argv) : QApplication(argc, argv) {}
    void setReporter(Reporter r) { reporter_ = std::move(r); }
    bool notify(QObject* receiver, QEvent* event) override;

  private:
    void report(const QString& what);
    Reporter reporter_;
};

} // namespace velmorak
