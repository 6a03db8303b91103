#include "EdidTools.h"

#include <QProcess>
#include <QTemporaryFile>

namespace velmorak::test {

QString edidDecode(const QByteArray& edid, bool check) {
    QTemporaryFile f;
    if (!f.open()) return {};
    f.write(edid);
    f.flush();
    QProcess p;
    QStringList args;
    if (check) args << QStringLiteral("--check");
    p.start(QStringLiteral("edid-decode"), args << f.fileName());
    if (!p.waitForFinished(10000)) return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}

QByteArray harrier24() {
    QByteArray b = QByteArray::fromHex(
        "00FFFFFFFFFFFF002252182439300000FF200104A13420783AEE91A3544C99260F5054000000D1C081800101"
        "01010101010101010101283C80A070B023403020360008402100001A000000FD00384C1E5311000A20202020"
        "2020000000FC00486172726965722032340A2020000000FF00485252323231323334350A20200141"
        "02030400");
    b += QByteArray(123, '\0');
    b += char(0xF7);
    return b;
}

QString pdfText(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    if (!p.waitForFinished(10000) || p.exitCode() != 0) return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}

} // namespace velmorak::test
