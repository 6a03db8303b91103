#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QObject>
#include <QString>

#include <atomic>
#include <thread>

namespace velmorak {

// Measures how long the windows go without painting. A second thread asks every visible
// window to repaint every few milliseconds, as a window uncovered or changed would; the probe
// notes each paint and, for every stretch between two marks, the longest gap between paints.
// The summary goes to a file, one line a stretch:
//   <name> <longest gap ms> <paints> <length ms> <where the longest gap began, ms>
class PaintProbe : public QObject {
  public:
    explicit PaintProbe(const QString& path, int askEveryMs = 10);
    ~PaintProbe() override;
    // Closes the stretch under way and opens one under this name.
    void mark(const QString& name);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void close();
    QFile out_;
    QElapsedTimer clock_;
    QString name_;
    qint64 start_ = 0;
    qint64 lastPaint_ = -1;
    qint64 longest_ = 0;
    qint64 longestAt_ = 0;
    int paints_ = 0;
    std::atomic<bool> running_{true};
    std::thread asker_;
};

} // namespace velmorak
