#pragma once

#include "adjust/TestBars.h"
#include "adjust/UcScrollChange.h"
#include "forms/Form.h"
#include "link/AppContext.h"

#include <QByteArray>

namespace velmorak {

class Recordset;

// Display Adjustment: trims the picture of the current resolution live, one register write a
// step, and keeps the result in the customer table and the card memory.
class FrmConsole : public Form {
  public:
    FrmConsole(AppContext& ctx, QString appPath);

    Frame& frPhase = add<Frame>("frPhase");
    Label& lblFine = add<Label>("lblFine");
    UcScrollChange& ucScrlPhase = add<UcScrollChange>("ucScrlPhase");
    Label& lblCoarse = add<Label>("lblCoarse");
    UcScrollChange& ucScrlCoarse = add<UcScrollChange>("ucScrlCoarse");
    Frame& frColor = add<Frame>("frColor");
    UcScrollChange& ucScrlR = add<UcScrollChange>("ucScrlR");
    UcScrollChange& ucScrlG = add<UcScrollChange>("ucScrlG");
    UcScrollChange& ucScrlB = add<UcScrollChange>("ucScrlB");
    Frame& frBrite = add<Frame>("frBrite");
    UcScrollChange& ucScrlBrite = add<UcScrollChange>("ucScrlBrite");
    Frame& frContrast = add<Frame>("frContrast");
    UcScrollChange& ucScrlContrast = add<UcScrollChange>("ucScrlContrast");
    Frame& frVPoz = add<Frame>("frVPoz");
    UcScrollChange& ucScrlVPoz = add<UcScrollChange>("ucScrlVPoz");
    Frame& frHPoz = add<Frame>("frHPoz");
    UcScrollChange& ucScrlHPoz = add<UcScrollChange>("ucScrlHPoz");
    Label& lblRez = add<Label>("lblRez");
    Label& lblSerial = add<Label>("lblSerial");
    TextBox& txtSerial = add<TextBox>("txtSerial");
    Label& lblCardSN = add<Label>("lblCardSN");
    TextBox& txtCardSN = add<TextBox>("txtCardSN");
    Frame& frSharp = add<Frame>("frSharp");
    PictureBox& picSharp = add<PictureBox>("picSharp");
    Frame& frTestColor = add<Frame>("frTestColor");
    Image& impicColor = add<Image>("impicColor");
    Frame& frTestGray = add<Frame>("frTestGray");
    Image& impicGray = add<Image>("impicGray");
    Button& cmdDefault = add<Button>("cmdDefault");
    Button& cmdSave = add<Button>("cmdSave");
    Button& cmdClose = add<Button>("cmdClose");

    qint16 AdjustEnabled = 0;
    QByteArray ChipImage;
    QByteArray TxImage;
    qint16 DirtyR = 0, DirtyG = 0, DirtyB = 0, DirtyContrast = 0, DirtyHPoz = 0, DirtyVPoz = 0,
           DirtyPhase = 0, DirtyCoarse = 0;
    qint16 RedOffset = 0, GreenOffset = 0, BlueOffset = 0, BriteMean = 0;
    qint16 RedGain = 0, GreenGain = 0, BlueGain = 0, GainMean = 0;
    qint16 TxByte33 = 0;

    // One register write of a stepper: chip base, register and the column it is saved in.
    struct Target {
        int base;
        int reg;
        const char* column;
    };
    // What a stepper writes: its targets, its dirty flag, the flag a save clears for it, and
    // whether its writes wait 1 ms first. In the order of the writes of cmdDefault and of the
    // columns of cmdSave.
    enum class Kind { Coarse, Phase, Contrast, Offset, HPoz, VPoz };
    struct Rule {
        const char* control;
        Kind kind;
        qint16 FrmConsole::*dirty;
        qint16 FrmConsole::*clearedBySave;
        bool settle;
        std::vector<Target> targets;
    };
    static const std::vector<Rule>& rules();

    // The strip of a test picture, and where it stands in the window when no view tells.
    PictureBox& strip(TestPicture which);
    static QRect designedStrip(TestPicture which);
    // The mouse over a strip: its tool tip tells what a click does now.
    void stripHover(TestPicture which);
    // The bytes a stepper stands for now, one a target; upper33 is the kept upper bits of
    // register 33H (the H position's ninth bit goes below them).
    std::vector<int> bytesOf(const Rule& r, int upper33) const;
    UcScrollChange& stepper(const Rule& r) const;

  protected:
    void formLoad() override;
    void formUnload(bool& cancel) override;

  private:
    void stripClick(TestPicture which);
    void demoState();
    void placeWindow();
    bool readRanges();
    void readChip();
    void readTransmitter();
    void step(const Rule& r);
    void writeRule(const Rule& r);
    void brightness(int delta);
    int codeOf(const QByteArray& image, int position) const;
    void defaultClick();
    void saveClick();
    void setButtons(bool on);
    void saveRow(Recordset& rs);
    void writeCardMemory(Recordset& cust);
    bool connected() const;
    void box(const QString& text);

    AppContext& c_;
    QString appPath_;
};

} // namespace velmorak
