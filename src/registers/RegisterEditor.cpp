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

RegisterEditor::RegisterEditor(Form& form, AppContext& ctx, const RegisterMap& map,
                               const bool& loadOnChange)
    : form_(form), c_(ctx), map_(map), loadOnChange_(loadOnChange) {}

BitsFieldArray& RegisterEditor::rows() {
    return form_.array<UcBitsField>(QString::fromLatin1(map_.array));
}

qint16 RegisterEditor::byteOf(int member) {
    return rows()(member).ReadByte();
}

void RegisterEditor::setUpCommonControls() {
    struct Caption {
        const char* control;
        const char* text;
    };
    for (const Caption& b : {Caption{"cmdRead", "&Read"}, Caption{"cmdLoad", "&Load"},
                             Caption{"cmdDefault", "&Default Settings"},
                             Caption{"cmdSave", "&Save As"}, Caption{"cmdPreset", "&Preset"}})
        form_.control<Button>(QString::fromLatin1(b.control))
            .setCaption(QString::fromLatin1(b.text));
    form_.control<Button>(QStringLiteral("cmdSave"))
        .setToolTipText(QStringLiteral("Save current settings"));
    form_.control<Button>(QStringLiteral("cmdPreset"))
        .setToolTipText(QStringLiteral("Set setting from the List"));
    form_.control<CheckBox>(QStringLiteral("ChkChange"))
        .setCaption(QStringLiteral("Load Register On Change"));
    auto& msg = form_.control<TextBox>(QStringLiteral("txtMsg"));
    msg.setText(QStringLiteral("OK"));
    msg.setVisible(false);
    msg.setLocked(true);
    auto& sum = form_.control<TextBox>(QStringLiteral("txtChSum"));
    sum.setText(QStringLiteral("00"));
    sum.setLocked(true);
    form_.control<Label>(QStringLiteral("lblChSum")).setCaption(QStringLiteral("Check Sum :"));
    form_.control<Label>(QStringLiteral("lblDevAddr"))
        .setCaption(QStringLiteral(" Device Address:"));
    form_.control<TextBox>(QStringLiteral("txtDevAddr")).setText(QString::number(map_.device));
    form_.control<ListBox>(QStringLiteral("lstPresets")).setVisible(false);
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
    auto& tabs = form_.control<TabStrip>(QStringLiteral("TabStrip1"));
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
    for (UcBitsField& row : rows()) {
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

void RegisterEditor::runOrRefuse(const char* button, const std::function<void()>& action) {
    if (form_.control<Button>(QString::fromLatin1(button)).enabled())
        action();
    else
        c_.dialogs.messageBox(QStringLiteral("No USB connection"), MsgButtons::OK, c_.st.AppTitle);
}

void RegisterEditor::connectCommon(const std::function<void()>& read,
                                   const std::function<void()>& load, const ImageSink& setToTable,
                                   std::span<const SaveColumn> columns,
                                   const QString& changeTitle) {
    form_.control<Button>(QStringLiteral("cmdRead")).onClick.connect(read);
    form_.control<Button>(QStringLiteral("cmdLoad")).onClick.connect(load);
    form_.control<MenuItem>(QStringLiteral("mnuRead")).onClick.connect([this, read] {
        runOrRefuse("cmdRead", read);
    });
    form_.control<MenuItem>(QStringLiteral("mnuLoad")).onClick.connect([this, load] {
        runOrRefuse("cmdLoad", load);
    });
    form_.control<MenuItem>(QStringLiteral("mnuClose")).onClick.connect([this] { close(); });
    form_.control<Button>(QStringLiteral("cmdPreset")).onClick.connect([this] { presetClick(); });
    form_.control<ListBox>(QStringLiteral("lstPresets")).onClick.connect([this, setToTable] {
        presetListClick(setToTable);
    });
    form_.control<Button>(QStringLiteral("cmdSave")).onClick.connect([this, columns, changeTitle] {
        saveClick(columns, changeTitle);
    });
}

void RegisterEditor::writeRegister(int reg, const QByteArray& data) {
    c_.st.ChipBase = qint16(map_.device);
    c_.fn.WriteEE(qint16(map_.device), qint16(reg), data);
}

void RegisterEditor::writeMember(int member) {
    if (!loadOnChange_) return;
    const int regRow = registerRowOf(map_, member);
    writeRegister(map_.rows[size_t(regRow)].reg, QByteArray(1, char(byteOf(regRow) & 0xFF)));
}

void RegisterEditor::mergeIntoRegister(int member, qint16 v) {
    const int regRow = registerRowOf(map_, member);
    const qint16 b = qint16((byteOf(regRow) & ~map_.rows[size_t(member)].shown) + v);
    rows()(regRow).WriteByte(b);
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

void RegisterEditor::showMessage(int ms) {
    auto& msg = form_.control<TextBox>(QStringLiteral("txtMsg"));
    msg.setSelStart(0);
    msg.setSelLength(int(msg.text().size()));
    msg.setVisible(true);
    c_.host.pump();
    c_.host.sleep(ms);
    msg.setVisible(false);
}

void RegisterEditor::restoreLayout(const QString& section) {
    placeFromLayout(form_, c_.settings, c_.screen, section);
}

void RegisterEditor::saveLayout(const QString& section) {
    c_.settings.save(section, QStringLiteral("Layout"),
                     QString::number(form_.left()) + u',' + QString::number(form_.top()));
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
