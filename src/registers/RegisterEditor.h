#pragma once

#include "forms/Form.h"
#include "link/AppContext.h"
#include "registers/RegisterMap.h"
#include "registers/RegisterWalker.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <initializer_list>
#include <span>

namespace velmorak {

// A menu of an editor window: its item, the item it hangs under, caption and visibility.
struct EditorMenu {
    const char* item;
    const char* parent; // nullptr: a top-level menu
    const char* caption;
    bool visible;
};

// The controls and state every register editor window has; a window derives from it beside
// Form and names itself first, so these controls come first in the window.
struct EditorControls {
    explicit EditorControls(Form& form);

    BitsFieldArray& ucBitsField1;
    TabStrip& TabStrip1;
    Button& cmdRead;
    Button& cmdLoad;
    Button& cmdDefault;
    Button& cmdSave;
    Button& cmdPreset;
    ListBox& lstPresets;
    CheckBox& ChkChange;
    TextBox& txtMsg;
    TextBox& txtChSum;
    Label& lblChSum;
    TextBox& txtDevAddr;
    Label& lblDevAddr;
    MenuItem& mnuFile;
    MenuItem& mnuRead;
    MenuItem& mnuLoad;
    MenuItem& mnuClose;

    bool LoadOnChange = false;
    // The byte of member i.
    qint16 byteOf(int member) { return ucBitsField1(member).ReadByte(); }
};

// What the register editor windows share: the chip behind their rows, the common buttons and
// texts, the result message, the preset list that loads both chips, the save into the
// resolution tables and the saved position. It works on the window's controls by their names
// (ucBitsField1, txtMsg, lstPresets, cmdSave ...) and on its load-on-change flag.
class RegisterEditor {
  public:
    using ImageSink = std::function<void(const QByteArray& image)>;

    RegisterEditor(Form& form, EditorControls& controls, AppContext& ctx, const RegisterMap& map);

    // --- set-up
    // Captions and texts of the common controls; the device address box shows `device`.
    void setUpCommonControls();
    void addMenus(std::span<const EditorMenu> menus);
    // The tab strip over the map's grids: tab i shows the frame of grid i only.
    void setUpTabs();
    // Builds the rows and sends a user's click on a row to `clickBit`; an error of the row's
    // reaction leaves the rest of it undone.
    void buildAndConnectRows(const std::function<void(int member)>& clickBit);
    // mnuRead and mnuLoad run their buttons' actions, or say there is no connection.
    void connectCommon(const std::function<void()>& read, const std::function<void()>& load,
                       const ImageSink& setToTable, std::span<const SaveColumn> columns,
                       const QString& changeTitle);

    // The window's own load: with a card, the buttons on and `read` spreads the chip's image;
    // without one, the buttons off. False without a card.
    bool firstRead(const std::function<void()>& read);
    // The end of the window's load: the saved position, load on change off, its device address.
    void settle(const QString& section);
    // At unload: load on change off, the position saved.
    void leave(const QString& section);

    // --- the chip
    int device() const { return map_.device; }
    // One register to the chip, the device address set first.
    void writeRegister(int reg, const QByteArray& data);
    // With load-on-change, the register of a member goes to the chip as one byte.
    void writeMember(int member);
    // A field's value into its register row (the field's bits cleared first), then the register
    // goes out as writeMember sends it.
    void mergeIntoRegister(int member, qint16 v);
    // The two replies of a transmitter read: registers 00H to 0EH and 32H to 3DH.
    static QByteArray transmitterImage(const QByteArray& low, const QByteArray& high);
    // The transmitter's load check: 08H but bit 7, then 36H to 39H.
    static bool transmitterLoaded(const QByteArray& reply, const QByteArray& sent);

    // The start of a load: the buttons off, cmdLoad "Loading", the rows' block sent to the
    // chip; returns the block.
    QByteArray startLoad(std::initializer_list<Button*> off);
    // The end of a load: cmdLoad's caption back, the buttons on.
    void endLoad(std::initializer_list<Button*> on);
    // The start of a read: the buttons off, the device address set.
    void startRead();
    // The end of a read: a short pause, the buttons on, the message on view for two seconds.
    void endRead();

    // --- the window
    // The "Control" cell of a member's grid row.
    QString controlCell(int member) const;
    void setControlCell(int member, const QString& text);
    // txtMsg selected and on view for `ms`, the window frozen.
    void showMessage(int ms);
    // Closes the port when it is open, then the window.
    void close();

  private:
    void presetClick();
    void presetListClick(const ImageSink& setToTable);
    void saveClick(std::span<const SaveColumn> columns, const QString& changeTitle);
    bool saveToTable(const QString& table, bool first, const QString& name,
                     const QString& description, std::span<const SaveColumn> columns,
                     const QString& changeTitle);
    void runOrRefuse(Button& button, const std::function<void()>& action);

    Form& form_;
    EditorControls& ctl_;
    AppContext& c_;
    const RegisterMap& map_;
};

// A slider from 0 to max; small steps of `step`, large ones of 2 for a step of 2, else 16.
struct SliderRange {
    ScrollBar* bar;
    int max;
    int step;
};
void setUpSliders(std::initializer_list<SliderRange> sliders);

// Slider handlers: change and scroll run the same body.
void onChangeOrScroll(ScrollBar& bar, const std::function<void()>& body);

} // namespace velmorak
