#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdio>
#include <mutex>

namespace velmorak::sim {

// Every frame on the wire, one line each: "<ms> > 35 55 53 42" to the card, "<" from it.
class WireTrace {
  public:
    WireTrace() = default;
    ~WireTrace();
    WireTrace(const WireTrace&) = delete;
    WireTrace& operator=(const WireTrace&) = delete;

    // Also append every line to this file, flushed line by line. False if it can't be opened.
    bool writeTo(const QString& path);

    void toCard(qint64 ms, const QByteArray& frame) { add(ms, '>', frame); }
    void fromCard(qint64 ms, const QByteArray& reply) { add(ms, '<', reply); }

    QStringList lines() const;
    void clear();

    static QString line(qint64 ms, char direction, const QByteArray& bytes);

  private:
    void add(qint64 ms, char direction, const QByteArray& bytes);
    mutable std::mutex mutex_;
    QStringList lines_;
    std::FILE* file_ = nullptr;
};

} // namespace velmorak::sim
