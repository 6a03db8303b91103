#pragma once

#include "session/SessionBench.h"

#include "forms/Forms.h"

#include <QByteArray>
#include <QString>

namespace velmorak::test {

inline QByteArray bytesOf(std::initializer_list<int> v) {
    QByteArray out;
    for (int b : v)
        out += char(b);
    return out;
}

// The laser bytes of the card, from the first.
inline QByteArray cardLaser(SessionBench& b, int count) {
    QByteArray out;
    for (int i = 0; i < count; ++i)
        out += char(b.link.reg(64, i));
    return out;
}

inline void setCardLaser(SessionBench& b, const QByteArray& image) {
    for (int i = 0; i < image.size(); ++i)
        b.link.setReg(64, i, quint8(image[i]));
}

} // namespace velmorak::test
