#include "cardinfo/FrmMemCard.h"

#include "cardinfo/CardMemory.h"
#include "forms/Dialogs.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "platform/Host.h"
#include "platform/Settings.h"

#include <cstdio>

namespace velmorak {

using namespace CardMemory;

namespace {
const QString kSection = QStringLiteral("frmMem_card");
const QString kAddTitle = QStringLiteral("Write to Card/Module Memory");
constexpr int kServiceExtraHeight = 600 / 15;

int keyOf(const QString& setting, char fallback) {
    const QString t = setting.trimmed().toUpper();
    return t.size() == 1 && t[0].isLetterOrNumber() ? t[0].unicode() : fallback;
}
} // namespace

FrmMemCard::FrmMemCard(AppContext& ctx) : Form(QStringLiteral("frmMem_card")), c_(ctx) {
    setCaption(QStringLiteral("Card Memory"));
    move(0, 0, 620, 400);
    setKeyPreview(true);
    lblCapture.setCaption(QStringLiteral("Card Information"));
    lblPartN.setCaption(QStringLiteral(" * Part Number"));
    lblSerNumber.setCaption(QStringLiteral(" * Serial Number"));
    lblDate.setCaption(QStringLiteral(" * Date of Manufacture"));
    lblSalesOrder.setCaption(QStringLiteral(" * Sales Order"));
    lblTechCode.setCaption(QStringLiteral(" * Calibration Code of Technician     /Final/"));
    lblDays.setCaption(QStringLiteral(" * Running time of Card/Module in days"));
    lblTemp.setCaption(QString::fromUtf8(" * Card/Module temperature /max/ \u00B0C"));
    Label1.setCaption(
        QStringLiteral(" * Duration of exceeded Card/Module     temperature in days"));
    lblRepiar.setCaption(QStringLiteral(" * Service date of repairs"));
    cmdAddR.setCaption(QStringLiteral("&Add"));
    cmdApplyMem.setCaption(QStringLiteral("A&pply"));
    cmdClear.setCaption(QStringLiteral("&Clear"));
    mnuClose.setCaption(QStringLiteral("&Close"));
    for (TextBox* t : {&txtDays, &txtTemp, &txtDuration})
        t->setLocked(true);
    txtPartN.setMaxLength(30);
    txtSerN.setMaxLength(30);
    for (Control* c :
         std::initializer_list<Control*>{&cmdApplyMem, &txtPartN, &txtSerN, &txtSalesOrder,
                                         &txtTechCode, &txtDate, &cmdAddR, &cmdClear})
        c->setEnabled(false);
    for (Control* c :
         std::initializer_list<Control*>{&lblSalesOrder, &txtSalesOrder, &lblTechCode, &txtTechCode,
                                         &lblRepiar, &grRepair, &cmdApplyMem})
        c->setVisible(false);

    for (TextBox* t : {&txtPartN, &txtSerN, &txtDate, &txtSalesOrder, &txtTechCode}) {
        t->onChange.connect([this] {
            if (EditState == 1) EditState = 2;
        });
    }
    cmdApplyMem.onClick.connect([this] { applyClick(); });
    cmdAddR.onClick.connect([this] { addClick(); });
    cmdClear.onClick.connect([this] { clearClick(); });
    mnuClose.onClick.connect([this] { unload(); });
}

int FrmMemCard::serviceKey() const {
    return keyOf(c_.settings.get(kSection, QStringLiteral("ServiceKey"), QStringLiteral("K")), 'K');
}

int FrmMemCard::clearKey() const {
    return keyOf(c_.settings.get(kSection, QStringLiteral("ClearKey"), QStringLiteral("J")), 'J');
}

void FrmMemCard::keyDown(int& keyCode, Qt::KeyboardModifiers mods) {
    if (!(mods & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier))) return;
    if (keyCode == serviceKey()) {
        openServiceSection();
        keyCode = 0;
    } else if (keyCode == clearKey()) {
        cmdClear.setEnabled(true);
        keyCode = 0;
    }
}

void FrmMemCard::openServiceSection() {
    for (Control* c : std::initializer_list<Control*>{
             &cmdApplyMem, &txtPartN, &txtSerN, &txtSalesOrder, &txtTechCode, &txtDate, &cmdAddR})
        c->setEnabled(true);
    setHeight(height() + kServiceExtraHeight);
    for (Control* c :
         std::initializer_list<Control*>{&lblSalesOrder, &txtSalesOrder, &lblTechCode, &txtTechCode,
                                         &lblRepiar, &grRepair, &cmdApplyMem})
        c->setVisible(true);
}

// --- the memory

void FrmMemCard::setAddress(int address) {
    AddrHi = qint16(address / 256);
    AddrLo = qint16(address % 256);
}

bool FrmMemCard::advance(int step) {
    AddrLo = qint16(AddrLo + step);
    if (AddrLo > 255) {
        AddrLo = qint16(AddrLo - 256);
        AddrHi = qint16(AddrHi + 1);
    }
    return AddrHi <= kLastPage;
}

QByteArray FrmMemCard::read(int count) {
    return c_.fn.ReadDB(kDevice, qint16(count), AddrHi, AddrLo);
}

void FrmMemCard::write(const QByteArray& data, int hi, int lo) {
    c_.fn.WriteDB(qint16(hi), qint16(lo), data);
    c_.host.sleep(100);
}

void FrmMemCard::message(const QString& text) {
    c_.dialogs.messageBox(text);
}

// --- load

void FrmMemCard::formLoad() {
    grRepair.setCols(2);
    grRepair.setFixedCols(0);
    grRepair.setFixedRows(1);
    grRepair.setRows(1);
    grRepair.setTextMatrix(0, 0, QStringLiteral("When/Who"));
    grRepair.setTextMatrix(0, 1, QStringLiteral("What"));
    grRepair.setColWidth(0, 2000 / 15);
    grRepair.setColWidth(1, 4500 / 15);
    try {
        readRecord();
        if (isLoaded()) readRepairs();
    } catch (const std::exception& e) {
        std::fprintf(stderr, "frmMem_card: %s\n", e.what());
        unload();
    }
}

void FrmMemCard::readRecord() {
    for (TextBox* t : {&txtDays, &txtTemp, &txtDuration})
        t->setText(QString());
    setAddress(kCounters);
    const Counters n = decodeCounters(read(30));
    txtDays.setText(n.days);
    txtTemp.setText(n.temperature);
    txtDuration.setText(n.duration);

    // Two regions of 32-byte fields: part and serial numbers, then date, order and code.
    int i = 1;
    struct Region {
        int address, last;
    };
    for (const Region r : {Region{kPartNumber, 2}, Region{kDate, 5}}) {
        setAddress(r.address);
        while (isLoaded()) {
            const QString s = text(read(30));
            if (i > r.last) break;
            switch (i) {
            case 1:
                txtPartN.setText(trimmed(s.left(30)));
                MemFields[1] = txtPartN.text();
                break;
            case 2:
                txtSerN.setText(trimmed(s.left(30)));
                MemFields[2] = txtSerN.text();
                break;
            case 3:
                txtDate.setText(trimmed(s.left(20)));
                MemFields[3] = txtDate.text();
                break;
            case 4:
                txtSalesOrder.setText(s.left(30));
                MemFields[4] = txtSalesOrder.text();
                break;
            default:
                txtTechCode.setText(s.left(30));
                MemFields[5] = txtTechCode.text();
                break;
            }
            ++i;
            advance(32);
            if (AddrHi > 8) break;
        }
    }
    EditState = 0;
}

void FrmMemCard::readRepairs() {
    setAddress(kRepairs);
    while (isLoaded()) {
        const QString block = text(read(32));
        const QString when = trimmed(block);
        if (when.isEmpty()) return;
        for (int k = 0; k < 4 && k < when.size(); ++k)
            if (foreign(when[k])) return;
        if (!advance(32)) return;
        if (block.isEmpty() || foreign(block[0])) return;
        const QString what = trimmed(block);
        if (!advance(32)) return;
        addRow(when, what);
    }
}

void FrmMemCard::addRow(const QString& when, const QString& what) {
    const int r = grRepair.rows();
    grRepair.setRows(r + 1);
    grRepair.setTextMatrix(r, 0, when);
    grRepair.setTextMatrix(r, 1, what);
}

void FrmMemCard::removeRow(int row) {
    for (int r = row; r + 1 < grRepair.rows(); ++r)
        for (int col = 0; col < grRepair.cols(); ++col)
            grRepair.setTextMatrix(r, col, grRepair.textMatrix(r + 1, col));
    grRepair.setRows(grRepair.rows() - 1);
}

// --- Apply

void FrmMemCard::applyClick() {
    if (EditState != 2) return;
    if (c_.dialogs.messageBox(QStringLiteral("Are you sure you want to save changes?"),
                              MsgButtons::YesNo) != MsgResult::Yes) {
        EditState = 0;
        return;
    }
    if (txtPartN.text() != MemFields[1])
        applyField(1, txtPartN, kPartNumber, bytes(padded(trimmed(txtPartN.text()), 30)), 30,
                   "Wrong write to mem PartN");
    if (isLoaded() && txtSerN.text() != MemFields[2])
        applyField(2, txtSerN, kSerialNumber, bytes(padded(trimmed(txtSerN.text()), 30)), 30,
                   "Wrong write to mem SerN");
    if (isLoaded() && trimmed(MemFields[3]) != txtDate.text())
        applyField(3, txtDate, kDate, bytes(txtDate.text()), 30,
                   "Wrong write to mem Manufacture date");
    if (isLoaded() && txtSalesOrder.text() != MemFields[4])
        applyField(4, txtSalesOrder, kSalesOrder, bytes(txtSalesOrder.text()), 32,
                   "Wrong write to mem Sales Order");
    if (isLoaded() && txtTechCode.text() != MemFields[5])
        applyField(5, txtTechCode, kTechCode, bytes(txtTechCode.text()), 32,
                   "Wrong write to mem Technician Code");
    EditState = 0;
}

void FrmMemCard::applyField(int slot, TextBox& box, int address, const QByteArray& data, int keep,
                            const char* failure) {
    setAddress(address);
    write(data, AddrHi, AddrLo);
    if (!isLoaded()) return;
    MemReadBack = read(30);
    if (!isLoaded()) return;
    const QString t = box.text();
    if (text(MemReadBack).left(t.size()) == t) {
        MemFields[size_t(slot)] = padded(t, keep);
    } else {
        message(QString::fromLatin1(failure));
        box.setText(MemFields[size_t(slot)]);
    }
}

// --- Add

void FrmMemCard::addClick() {
    auto ask = [this](const char* prompt) {
        const auto a = c_.dialogs.inputBox(QString::fromLatin1(prompt), kAddTitle, QString());
        return a ? *a : QString();
    };
    const QString when = ask("Enter Date of repair and Name who repairs :");
    if (trimmed(when).isEmpty()) return;
    const QString what = ask("Enter the Information of what was repaired :");
    if (trimmed(what).isEmpty()) return;
    const QString lf = QStringLiteral("\n\r");
    const QString confirm = QStringLiteral("You are going to write to Card/Module memory : ") + lf +
                            QStringLiteral("When/Who :  ' ") + when + QStringLiteral(" '") + lf +
                            QStringLiteral("What     :  ' ") + what + QStringLiteral(" '") + lf +
                            QStringLiteral("Is it correct? ");
    if (c_.dialogs.messageBox(confirm, MsgButtons::YesNo, kAddTitle) != MsgResult::Yes) return;
    addRow(when, what);

    const int offset = (grRepair.rows() - 2) * kRepairRecord;
    AddrHi = qint16(5 + offset / 256);
    AddrLo = qint16(offset % 256);
    if (!addPiece(when)) return;
    if (!advance(32)) return;
    if (!addPiece(what.left(32))) return;
    if (what.size() < 33) return;
    if (!advance(32)) return;
    addPiece(what.mid(32));
}

bool FrmMemCard::addPiece(const QString& piece) {
    // The card has always received these pieces at address 0: the write's address is never set.
    const int hi = 0, lo = 0;
    write(bytes(piece), hi, lo);
    if (!isLoaded()) return false;
    MemReadBack = read(32);
    if (!isLoaded()) return false;
    if (trimmed(text(MemReadBack)) != trimmed(piece))
        message(QStringLiteral("Wrong write to mem Repair"));
    return true;
}

// --- Clear

void FrmMemCard::clearClick() {
    cmdClear.setEnabled(false);
    if (c_.dialogs.messageBox(QStringLiteral("Are you sure to clear memory?"), MsgButtons::YesNo,
                              QString(), MsgIcon::Question) == MsgResult::Yes)
        clearCounters();
    if (!isLoaded()) return;
    if (c_.dialogs.messageBox(QStringLiteral("Would you like to erase Table of repairs?"),
                              MsgButtons::YesNo, QStringLiteral("Memory Erase")) != MsgResult::Yes)
        return;
    clearRepairs();
}

void FrmMemCard::clearCounters() {
    const QByteArray block = clearedCounters();
    setAddress(kCounters);
    for (int attempt = 1; attempt <= 2; ++attempt) {
        write(block, AddrHi, AddrLo);
        if (!isLoaded()) return;
        MemReadBack = c_.fn.ReadDB(kDevice, 30, 0, 0);
        if (!isLoaded()) return;
        if (MemReadBack.left(8) == block.left(8)) {
            for (TextBox* t : {&txtDays, &txtTemp, &txtDuration})
                t->setText(QStringLiteral("0"));
            return;
        }
    }
    message(QStringLiteral("Wrong writing to mem "));
}

void FrmMemCard::clearRepairs() {
    const QByteArray block(32, '\0');
    setAddress(kRepairs);
    const int rows = grRepair.rows() - 1;
    for (int i = 1; i <= rows; ++i) {
        write(block, AddrHi, AddrLo);
        if (!isLoaded()) return;
        MemReadBack = read(30);
        if (!isLoaded()) return;
        if (MemReadBack.left(30) == block.left(30))
            removeRow(1);
        else
            message(QStringLiteral("Couldn't clear memory(i)"));
        if (!advance(kRepairRecord)) return;
        c_.host.sleep(20);
    }
}

} // namespace velmorak
