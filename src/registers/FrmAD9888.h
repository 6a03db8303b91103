#pragma once

#include "forms/Form.h"
#include "link/AppContext.h"
#include "registers/Ad9888Map.h"
#include "registers/RegisterEditor.h"
#include "registers/RegisterWalker.h"

#include <QByteArray>

namespace velmorak {

// The service window of the video converter: its registers in four grids, read from and loaded
// into the chip, edited row by row, saved to and loaded from the resolution database.
class FrmAD9888 : public Form, public EditorControls {
  public:
    static constexpr int kDevice = 32;
    explicit FrmAD9888(AppContext& ctx);

    // --- the register image and the grids
    Frame& fraT1 = add<Frame>("fraT1");
    Frame& fraT2 = add<Frame>("fraT2");
    Frame& fraT3 = add<Frame>("fraT3");
    Frame& fraT4 = add<Frame>("fraT4");
    Grid& FlexGr1 = add<Grid>("FlexGr1");
    Grid& FlexGr2 = add<Grid>("FlexGr2");
    Grid& FlexGr3 = add<Grid>("FlexGr3");
    Grid& FlexGr4 = add<Grid>("FlexGr4");

    // --- buttons and texts
    Button& cmdConnect = add<Button>("cmdConnect");

    // --- controls over the "Control" column
    ScrollBar& HScrlPLL = add<ScrollBar>("HScrlPLL");
    TextBox& txtPLLc = add<TextBox>("txtPLLc");
    ComboBox& cbo03_1 = add<ComboBox>("cbo03_1");
    ComboBox& cbo03_2 = add<ComboBox>("cbo03_2");
    ScrollBar& HScrlPhA = add<ScrollBar>("HScrlPhA");
    TextBox& txtPhAdj = add<TextBox>("txtPhAdj");
    ScrollBar& HScrlClPl = add<ScrollBar>("HScrlClPl");
    ScrollBar& HScrlClDur = add<ScrollBar>("HScrlClDur");
    ScrollBar& HScrlHsync = add<ScrollBar>("HScrlHsync");
    ScrollBar& HScrlCR = add<ScrollBar>("HScrlCR");
    ScrollBar& HScrlCG = add<ScrollBar>("HScrlCG");
    ScrollBar& HScrlCB = add<ScrollBar>("HScrlCB");
    TextBox& txtRedC = add<TextBox>("txtRedC");
    TextBox& txtGreenC = add<TextBox>("txtGreenC");
    TextBox& txtBlueC = add<TextBox>("txtBlueC");
    ScrollBar& HScrlBrR = add<ScrollBar>("HScrlBrR");
    ScrollBar& HScrlBrG = add<ScrollBar>("HScrlBrG");
    ScrollBar& HScrlBrB = add<ScrollBar>("HScrlBrB");
    TextBox& txtRed = add<TextBox>("txtRed");
    TextBox& txtGreen = add<TextBox>("txtGreen");
    TextBox& txtBlue = add<TextBox>("txtBlue");
    ScrollBar& HScrlContrast = add<ScrollBar>("HScrlContrast");
    TextBox& txtContrast = add<TextBox>("txtContrast");
    ScrollBar& HScrlBritnes = add<ScrollBar>("HScrlBritnes");
    TextBox& txtBrite = add<TextBox>("txtBrite");
    ScrollBar& HScrl10 = add<ScrollBar>("HScrl10");
    TextBox& txt10 = add<TextBox>("txt10");
    ScrollBar& HScrl11 = add<ScrollBar>("HScrl11");
    ScrollBar& HScrl12 = add<ScrollBar>("HScrl12");
    ScrollBar& HScrl13 = add<ScrollBar>("HScrl13");
    ComboBox& cbo15_2 = add<ComboBox>("cbo15_2");
    Timer& tmrWait = add<Timer>("tmrWait");

    // --- menus
    MenuItem& mnuLRReg = add<MenuItem>("mnuLRReg");
    MenuItem& mnuPresets = add<MenuItem>("mnuPresets");
    MenuItem& mnuATest = add<MenuItem>("mnuATest");
    MenuItem& mnuSharp = add<MenuItem>("mnuSharp");
    MenuItem& mnuColor = add<MenuItem>("mnuColor");
    MenuItem& mnuGray = add<MenuItem>("mnuGray");
    MenuItem& mnuTests = add<MenuItem>("mnuTests");
    MenuItem& mnuTestBars = add<MenuItem>("mnuTestBars");

    // --- state
    QByteArray LastImage;
    // Brightness and contrast coupling.
    qint16 ContrOld = 0, BriOld = 0;
    qint16 GainRed = 0, GainGreen = 0, GainBlue = 0;
    qint16 OffsetRed = 0, OffsetGreen = 0, OffsetBlue = 0;
    qint16 ContrMax = 0, ContrMin = 0, BriMax = 0, BriMin = 0;
    bool ContrResync = false, BriResync = false;
    bool ContrReady = false, BriReady = false;
    qint16 ContrLastStep = 0, BriLastStep = 0;

    // --- operations
    void ucBitsField1_ClickBit(int index);
    void SetToTable(const QByteArray& image);
    void LoadPreset(const QString& list);
    qint16 ReadfromDevice(qint16 v) { return v; }
    void CheckContr();
    void CheckBri();

  protected:
    void formLoad() override;
    void formUnload(bool& cancel) override;
    void formActivate() override;

  private:
    void setUpControls();
    void connectHandlers();
    void connectColour();
    void readClick();
    void loadClick();
    void defaultClick();
    void connectClick();
    void writeRegister(int reg, const QByteArray& data) { ed_.writeRegister(reg, data); }
    void writeMember(int member) { ed_.writeMember(member); }
    void mergeIntoRegister(int member, qint16 v) { ed_.mergeIntoRegister(member, v); }
    void pllChanged(int s, bool write);
    void list03Changed(ComboBox& list, bool click);
    void list15Changed(bool click);
    // Colour coupling
    void contrastChange(bool scroll);
    void brightnessChange(bool scroll);
    void gainChange(int channel, bool scroll);
    void offsetChange(int channel, bool scroll);
    void masterDone(bool contrast);

    AppContext& c_;
    RegisterEditor ed_{*this, *this, c_, kAd9888Map};
    bool textByCode_ = false;
};

} // namespace velmorak
