#include "sim/WireTrace.h"

namespace velmorak::sim {

WireTrace::~WireTrace() {
    if (file_) std::fclose(file_);
}

bool WireTrace::writeTo(const QString& path) {
    std::lock_guard lock(mutex_);
    if (file_) std::fclose(file_);
    file_ = std::fopen(path.toLocal8Bit().constData(), "w");
    return file_ != nullptr;
}

QString WireTrace::line(qint64 ms, char direction, const QByteArray& bytes) {
    QString s = QString::number(ms) + ' ' + QLatin1Char(direction);
    for (char c : bytes)
        s += QStringLiteral(" %1").arg(static_cast<unsigned char>(c), 2, 16, QLatin1Char('0'));
    return s.toUpper();
}

void WireTrace::add(qint64 ms, char direction, const QByteArray& bytes) {
    const QString l = line(ms, direction, bytes);
    std::lock_guard lock(mutex_);
    lines_ << l;
    if (file_) {
        const QByteArray b = l.toLatin1() + '\n';
        std::fwrite(b.constData(), 1, static_cast<size_t>(b.size()), file_);
        std::fflush(file_);
    }
}

QStringList WireTrace::lines() const {
    std::lock_guard lock(mutex_);
    return lines_;
}

void WireTrace::clear() {
    std::lock_guard lock(mutex_);
    lines_.clear();
}

} // namespace velmorak::sim
