#include "MonitorBench.h"

#include "sim/VirtualCard.h"

#include <stdexcept>

namespace velmorak::test {

namespace {

class WaitStandIn : public Form {
  public:
    explicit WaitStandIn(std::vector<QString>& log) : Form(QStringLiteral("frmWait")) {
        ProgBar.onPropertyChanged.connect([this, &log](Prop) {
            log.push_back(QStringLiteral("%1:%2").arg(ProgBar.max()).arg(ProgBar.value()));
        });
    }
    ProgressBar& ProgBar = add<ProgressBar>("ProgBar");
};

} // namespace

MonitorBench::MonitorBench(const SimLink::Card& card) : SessionBench(card) {
    session->forms.registerForm(QStringLiteral("frmWait"),
                                [this] { return std::make_unique<WaitStandIn>(progress); });
}

bool MonitorBench::waitOpen() const {
    return session->forms.isLoaded(QStringLiteral("frmWait"));
}

FrmReadEEMon& MonitorBench::open() {
    if (!start()) throw std::runtime_error("the start failed");
    link.clearTrace();
    frm().mnuReadMonInfo.click();
    FrmReadEEMon* f = window();
    if (!f) throw std::runtime_error("frmReadEEMon did not open");
    return *f;
}

FrmReadEEMon* MonitorBench::window() const {
    return session->forms.get<FrmReadEEMon>(QStringLiteral("frmReadEEMon"));
}

std::vector<std::pair<qint64, QByteArray>> MonitorBench::frames(const QByteArray& keyword) const {
    std::vector<std::pair<qint64, QByteArray>> out;
    for (const QString& line : link.trace()) {
        const int at = line.indexOf(QStringLiteral(" > "));
        if (at < 0) continue;
        const QByteArray f = QByteArray::fromHex(line.mid(at + 3).toLatin1());
        if (f.startsWith(keyword)) out.emplace_back(line.left(at).toLongLong(), f);
    }
    return out;
}

std::vector<int> MonitorBench::readOffsets() const {
    std::vector<int> out;
    for (const auto& [t, f] : frames("RDEE"))
        if (quint8(f[4]) == 128) out.push_back(quint8(f[5]));
    return out;
}

} // namespace velmorak::test
