#include "forms/ui/PaintProbe.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <algorithm>
#include <chrono>

namespace velmorak {

PaintProbe::PaintProbe(const QString& path, int askEveryMs) : out_(path) {
    out_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text);
    clock_.start();
    qApp->installEventFilter(this);
    asker_ = std::thread([this, askEveryMs] {
        while (running_) {
            std::this_thread::sleep_for(std::chrono::milliseconds(askEveryMs));
            QMetaObject::invokeMethod(
                qApp,
                [] {
                    for (QWidget* w : QApplication::topLevelWidgets())
                        if (w->isVisible()) w->update();
                },
                Qt::QueuedConnection);
        }
    });
}

PaintProbe::~PaintProbe() {
    running_ = false;
    asker_.join();
    qApp->removeEventFilter(this);
    close();
}

void PaintProbe::mark(const QString& name) {
    close();
    name_ = name;
    start_ = clock_.elapsed();
    lastPaint_ = start_;
    longest_ = 0;
    longestAt_ = start_;
    paints_ = 0;
}

void PaintProbe::close() {
    if (name_.isEmpty()) return;
    const qint64 now = clock_.elapsed();
    if (now - lastPaint_ > longest_) {
        longest_ = now - lastPaint_;
        longestAt_ = lastPaint_;
    }
    out_.write(QStringLiteral("%1 %2 %3 %4 %5\n")
                   .arg(name_)
                   .arg(longest_)
                   .arg(paints_)
                   .arg(now - start_)
                   .arg(longestAt_ - start_)
                   .toUtf8());
    out_.flush();
    name_.clear();
}

bool PaintProbe::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint && !name_.isEmpty() && watched->isWidgetType() &&
        static_cast<QWidget*>(watched)->isWindow()) {
        const qint64 now = clock_.elapsed();
        if (now - lastPaint_ > longest_) {
            longest_ = now - lastPaint_;
            longestAt_ = lastPaint_;
        }
        lastPaint_ = now;
        ++paints_;
    }
    return false;
}

} // namespace velmorak
