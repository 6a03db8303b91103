#include "monitor/MonitorFileImport.h"

#include "forms/Dialogs.h"
#include "forms/Forms.h"
#include "link/AppContext.h"
#include "link/CardState.h"
#include "link/Transport.h"
#include "monitor/Edid.h"
#include "monitor/MonitorWrite.h"
#include "platform/Host.h"

#include <QFile>

namespace velmorak {

void importMonitorFile(AppContext& c, TextBox& txtMsg) {
    CardState& st = c.st;
    // Cancel and every failure end here: nothing told, progress taken away.
    auto cleanUp = [&] {
        txtMsg.setVisible(false);
        closeWait(c.forms);
    };
    const std::optional<QString> picked = c.dialogs.openFileName(
        QStringLiteral("Import Data from "), QStringLiteral("Monitor data (*.bin);;All files (*)"));
    if (!picked) {
        cleanUp();
        return;
    }
    const QString name = *picked;
    if (name.isEmpty()) return;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        cleanUp();
        return;
    }
    const qint64 length = file.size();
    if (length != 128 && length != 256) {
        c.dialogs.messageBox(QStringLiteral("Couldn't import this file : ") + name +
                                 QStringLiteral(". It is not valid."),
                             MsgButtons::OK, st.AppTitle);
        return;
    }
    const QByteArray image = file.readAll();
    if (image.size() != length) {
        cleanUp();
        return;
    }
    if (c.dialogs.messageBox(QStringLiteral("You are about to load the file to RGB Card"),
                             MsgButtons::OKCancel, st.AppTitle) != MsgResult::OK)
        return;
    st.LinkIdleCount = 0;
    c.host.sleep(1);
    showWait(c.forms);
    waitProgress(c.forms, 1, 14);
    txtMsg.setText(QStringLiteral("Loading. Wait a minute..."));
    txtMsg.setVisible(true);
    c.host.pump();
    const bool wasConnected = st.Connected != 0;
    const bool done = writeMonitorSlices(
        c, image, length == 256 ? 12 : kSlicesPerBlock, [&](int k) { waitProgress(c.forms, k); },
        [&](int k) {
            if (k == 3 || k == 4 || k == 5 || k == 8) st.LinkIdleCount = 0;
            // A lost card ends the load; the link has told the user already.
            return st.ExitRequested == 0 && !(wasConnected && st.Connected == 0);
        });
    if (!done) {
        cleanUp();
        return;
    }
    st.LinkIdleCount = 0;
    cleanUp();
    if (c.port.isOpen()) c.port.close();
    c.dialogs.messageBox(QStringLiteral("File : ") + name +
                             QStringLiteral(" is loaded to the RGB Card."),
                         MsgButtons::OK, st.AppTitle);
}

} // namespace velmorak
