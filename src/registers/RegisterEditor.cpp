#include "registers/RegisterEditor.h"

#include "forms/Dialogs.h"
#include "forms/Forms.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/Placement.h"
#include "link/Transport.h"
#include "platform/Host.h"
#include "platform/Settings.h"

namespace velmorak {

EditorControls::EditorControls(Form& form)
    : ucBitsField1(form.addArray<UcBitsField>(QStringLiteral("ucBitsField1"))),
      TabStrip1(form.add<TabStrip>(QStringLiteral("TabStrip1"))),
      cmdRead(form.add<Button>(QStringLiteral("cmdRead"))),
      cmdLoad(form.add<Button>(QStringLiteral("cmdLoad"))),
      cmdDefault(form.add<Button>(QStringLiteral("cmdDefault"))),
      cmdSave(form.add<Button>(QStringLiteral("cmdSave"))),
      cmdPreset(form.add<Button>(QStringLiteral("cmdPreset"))),
      lstPresets(form.add<ListBox>(QStringLiteral("lstPresets"))),
      ChkChange(form.add<CheckBox>(QStringLiteral("ChkChange"))),
      txtMsg(form.add<TextBox>(QStringLiteral("txtMsg"))),
      txtChSum(form.add<TextBox>(QStringLiteral("txtChSum"))),
      lblChSum(form.add<Label>(QStringLiteral("lblChSum"))),
      txtDevAddr(form.add<TextBox>(QStringLiteral("txtDevAddr"))),
      lblDevAddr(form.add<Label>(QStringLiteral("lblDevAddr"))),
      mnuFile(form.add<MenuItem>(QStringLiteral("mnuFile"))),
      mnuRead(form.add<MenuItem>(QStringLiteral("mnuRead"))),
      mnuLoad(form.add<MenuItem>(QStringLiteral("mnuLoad"))),
      mnuClose(form.add<MenuItem>(QStringLiteral("mnuClose"))) {}

RegisterEditor::RegisterEditor(Form& form, EditorControls& controls, AppContext& ctx,
                               const RegisterMap& map)
    : form_(form), ctl_(controls), c_(ctx), map_(map) {}

void RegisterEditor::setUpCommonControls() {
    ctl_.cmdRead.setCaption(QStringLiteral("&Read"));
    ctl_.cmdLoad.setCaption(QStringLiteral("&Load"));
    ctl_.cmdDefault.setCaption(QStringLiteral("&Default Settings"));
    ctl_.cmdSave.setCaption(QStringLiteral("&Save As"));
    ctl_.cmdPreset.setCaption(QStringLiteral("&Preset"));
    ctl_.cmdSave.setToolTipText(QStringLiteral("Save current settings"));
    ctl_.cmdPreset.setToolTipText(QStringLiteral("Set setting from the List"));
    ctl_.ChkChange.setCaption(QStringLiteral("Load Register On Change"));
    TextBox& msg = ctl_.txtMsg;
    msg.setText(QStringLiteral("OK"));
    msg.setVisible(false);
    msg.setLocked(true);
    TextBox& sum = ctl_.txtChSum;
    sum.setText(QStringLiteral("00"));
    sum.setLocked(true);
    ctl_.lblChSum.setCaption(QStringLiteral("Check Sum :"));
    ctl_.lblDevAddr.setCaption(QStringLiteral(" Device Address:"));
    ctl_.txtDevAddr.setText(QString::number(map_.device));
    ctl_.lstPresets.setVisible(false);
}

void RegisterEditor::addMenus(std::span<const EditorMenu> menus) {
    for (const EditorMenu& m : menus) {
        auto& item = form_.control<MenuItem>(QString::fromLatin1(m.item));
        item.setCaption(QString::fromLatin1(m.caption));
        item.setVisible(m.visible);
        if (m.parent) form_.control<MenuItem>(QString::fromLatin1(m.parent)).addChild(item);
    }
}

void RegisterEditor::setUpTabs() {
    TabStrip& tabs = ctl_.TabStrip1;
    QStringList captions;
    for (const RegisterGrid& g : map_.grids)
        captions << QString::fromLatin1(g.caption);
    tabs.setTabs(captions);
    tabs.onClick.connect([this, &tabs] {
        for (int i = 0; i < int(map_.grids.size()); ++i)
            form_.control<Frame>(QString::fromLatin1(map_.grids[size_t(i)].frame))
                .setVisible(tabs.selectedIndex() == i + 1);
    });
}

void RegisterEditor::buildAndConnectRows(const std::function<void(int member)>& clickBit) {
    buildRows(form_, map_);
    for (UcBitsField& row : ctl_.ucBitsField1) {
        const int i = row.index();
        row.onClickBit.connect([clickBit, i] {
            try {
                clickBit(i);
            } catch (const RunTimeError&) {
                // A value no control can show leaves the rest of the row as it is.
            }
        });
    }
}

bool RegisterEditor::firstRead(const std::function<void()>& read) {
    const bool card = c_.st.Connected != 0;
    ctl_.cmdRead.setEnabled(card);
    ctl_.cmdLoad.setEnabled(card);
    if (!card) return false;
    c_.st.ChipBase = qint16(map_.device);
    read();
    return true;
}

void RegisterEditor::settle(const QString& section) {
    placeFromLayout(form_, c_.settings, c_.screen, section);
    ctl_.ChkChange.setValue(0);
    ctl_.LoadOnChange = false;
    c_.st.ChipBase = qint16(map_.device);
}

void RegisterEditor::leave(const QString& section) {
    ctl_.LoadOnChange = false;
    c_.settings.save(section, QStringLiteral("Layout"),
                     QString::number(form_.left()) + u',' + QString::number(form_.top()));
}

void RegisterEditor::runOrRefuse(Button& button, const std::function<void()>& action) {
    if (button.enabled())
        action();
    else
        c_.dialogs.messageBox(QStringLiteral("No USB connection"), MsgButtons::OK, c_.st.AppTitle);
}

void RegisterEditor::connectCommon(const std::function<void()>& read,
                                   const std::function<void()>& load, const ImageSink& setToTable,
                                   std::span<const SaveColumn> columns,
                                   const QString& changeTitle) {
    ctl_.cmdRead.onClick.connect(read);
    ctl_.cmdLoad.onClick.connect(load);
    ctl_.mnuRead.onClick.connect([this, read] { runOrRefuse(ctl_.cmdRead, read); });
    ctl_.mnuLoad.onClick.connect([this, load] { runOrRefuse(ctl_.cmdLoad, load); });
    ctl_.mnuClose.onClick.connect([this] { close(); });
    ctl_.cmdPreset.onClick.connect([this] { presetClick(); });
    ctl_.lstPresets.onClick.connect([this, setToTable] { presetListClick(setToTable); });
    ctl_.cmdSave.onClick.connect([this, columns, changeTitle] { saveClick(columns, changeTitle); });
}

void RegisterEditor::writeRegister(int reg, const QByteArray& data) {
    c_.st.ChipBase = qint16(map_.device);
    c_.fn.WriteEE(qint16(map_.device), qint16(reg), data);
}

void RegisterEditor::writeMember(int member) {
    if (!ctl_.LoadOnChange) return;
    const int regRow = registerRowOf(map_, member);
    writeRegister(map_.rows[size_t(regRow)].reg, QByteArray(1, char(ctl_.byteOf(regRow) & 0xFF)));
}

void RegisterEditor::mergeIntoRegister(int member, qint16 v) {
    const int regRow = registerRowOf(map_, member);
    const qint16 b = qint16((ctl_.byteOf(regRow) & ~map_.rows[size_t(member)].shown) + v);
    ctl_.ucBitsField1(regRow).WriteByte(b);
    writeMember(regRow);
}

QByteArray RegisterEditor::transmitterImage(const QByteArray& low, const QByteArray& high) {
    return low.left(15) + high.left(12);
}

bool RegisterEditor::transmitterLoaded(const QByteArray& reply, const QByteArray& sent) {
    if (reply.size() < 9 || sent.isEmpty()) return false;
    if (((quint8(reply[8]) ^ quint8(sent[0])) & 0x7F) != 0) return false;
    return reply.mid(19, 4) == sent.mid(7, 4);
}

namespace {

std::pair<const RegisterGrid*, int> gridRowOf(const RegisterMap& map, int member) {
    for (const RegisterGrid& g : map.grids)
        if (member >= g.first && member <= g.last) return {&g, member - g.first + 1};
    return {nullptr, 0};
}

} // namespace

QString RegisterEditor::controlCell(int member) const {
    const auto [grid, row] = gridRowOf(map_, member);
    if (!grid) return {};
    return form_.control<Grid>(QString::fromLatin1(grid->grid)).textMatrix(row, 3);
}

void RegisterEditor::setControlCell(int member, const QString& text) {
    const auto [grid, row] = gridRowOf(map_, member);
    if (grid) form_.control<Grid>(QString::fromLatin1(grid->grid)).setTextMatrix(row, 3, text);
}

QByteArray RegisterEditor::startLoad(std::initializer_list<Button*> off) {
    for (Button* b : off)
        b->setEnabled(false);
    ctl_.cmdLoad.setCaption(QStringLiteral("Loading"));
    const QByteArray data = collectBlock(ctl_.ucBitsField1, map_);
    c_.st.ChipBase = qint16(map_.device);
    c_.fn.WriteEEBlock(qint16(map_.device), data);
    return data;
}

void RegisterEditor::endLoad(std::initializer_list<Button*> on) {
    ctl_.cmdLoad.setCaption(QStringLiteral("&Load"));
    for (Button* b : on)
        b->setEnabled(true);
}

void RegisterEditor::startRead() {
    ctl_.cmdLoad.setEnabled(false);
    ctl_.cmdRead.setEnabled(false);
    c_.st.ChipBase = qint16(map_.device);
}

void RegisterEditor::endRead() {
    c_.host.sleep(100);
    ctl_.cmdLoad.setEnabled(true);
    ctl_.cmdRead.setEnabled(true);
    showMessage(2000);
}

void RegisterEditor::showMessage(int ms) {
    TextBox& msg = ctl_.txtMsg;
    msg.setSelStart(0);
    msg.setSelLength(int(msg.text().size()));
    msg.setVisible(true);
    c_.host.pump();
    c_.host.sleep(ms);
    msg.setVisible(false);
}

void RegisterEditor::close() {
    if (c_.port.isOpen()) c_.port.close();
    form_.unload();
}

void setUpSliders(std::initializer_list<SliderRange> sliders) {
    for (const SliderRange& s : sliders) {
        s.bar->setMin(0);
        s.bar->setMax(s.max);
        s.bar->setSmallChange(s.step);
        s.bar->setLargeChange(s.step == 2 ? 2 : 16);
    }
}

void onChangeOrScroll(ScrollBar& bar, const std::function<void()>& body) {
    bar.onChange.connect(body);
    bar.onScroll.connect(body);
}

} // namespace velmorak
