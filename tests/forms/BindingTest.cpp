#include "forms/ui/Binding.h"
#include "forms/Forms.h"
#include "forms/ui/FormWindow.h"
#include "forms/ui/QtDialogs.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace velmorak;

namespace {

class frmDemo : public Form {
  public:
    frmDemo() : Form("frmDemo") {}
    Button& cmdConnect = add<Button>("cmdConnect");
    TextBox& txtAddr = add<TextBox>("txtAddr");
    Label& lblMsg = add<Label>("lblMsg");
    CheckBox& chkAuto = add<CheckBox>("chkAuto");
    OptionButton& optRGB = add<OptionButton>("optRGB");
    OptionButton& optDVI = add<OptionButton>("optDVI");
    ScrollBar& HScrlContrast = add<ScrollBar>("HScrlContrast");
    ScrollBar& spnPage = add<ScrollBar>("spnPage");
    ComboBox& cboPresets = add<ComboBox>("cboPresets");
    ListBox& lstPorts = add<ListBox>("lstPorts");
    MenuItem& mnuFile = add<MenuItem>("mnuFile");
    MenuItem& mnuExit = add<MenuItem>("mnuExit");
    Grid& FlexGr = add<Grid>("FlexGr");
    Frame& fraMode = add<Frame>("fraMode");
    StatusBar& StatusBar1 = add<StatusBar>("StatusBar1");
    ProgressBar& ProgBar = add<ProgressBar>("ProgBar");
    ControlArray<TextBox>& ucBitsField1 = addArray<TextBox>("ucBitsField1", {0, 3});
    Timer& tmrWait = add<Timer>("tmrWait");
    bool cancelUnload = false;

  protected:
    void formUnload(bool& cancel) override { cancel = cancelUnload; }
};

template <class W> W* named(QWidget* parent, const QString& name) {
    auto* w = new W(parent);
    w->setObjectName(name);
    parent->layout()->addWidget(w);
    return w;
}

// A window with one widget per control, plus one stray widget.
QMainWindow* buildDemo() {
    auto* win = new QMainWindow;
    auto* central = new QWidget(win);
    central->setLayout(new QVBoxLayout);
    win->setCentralWidget(central);
    named<QPushButton>(central, "cmdConnect");
    auto* buddy = named<QLabel>(central, "");
    buddy->setText("&Address:");
    buddy->setBuddy(named<QLineEdit>(central, "txtAddr"));
    named<QLabel>(central, "lblMsg");
    named<QCheckBox>(central, "chkAuto");
    named<QRadioButton>(central, "optRGB");
    named<QRadioButton>(central, "optDVI");
    named<QScrollBar>(central, "HScrlContrast")->setOrientation(Qt::Horizontal);
    named<QSpinBox>(central, "spnPage");
    named<QComboBox>(central, "cboPresets");
    named<QListWidget>(central, "lstPorts");
    named<QTableWidget>(central, "FlexGr");
    named<QGroupBox>(central, "fraMode");
    named<QProgressBar>(central, "ProgBar");
    named<QLineEdit>(central, "ucBitsField1(3)");
    named<QPushButton>(central, "cmdStray");
    auto* sb = new QStatusBar(win);
    sb->setObjectName("StatusBar1");
    win->setStatusBar(sb);
    auto* menu = win->menuBar()->addMenu("&File");
    menu->setObjectName("mnuFile");
    menu->addAction("E&xit")->setObjectName("mnuExit");
    return win;
}

struct BindingFixture : ::testing::Test {
    frmDemo form;
    std::unique_ptr<QMainWindow> win{buildDemo()};
    std::unique_ptr<FormBinding> binding = bindForm(form, win.get());
    template <class W> W* w(const QString& name) { return win->findChild<W*>(name); }
};

void sendKey(QWidget* w, int key, const QString& text) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(w, &press);
}

} // namespace

TEST_F(BindingFixture, ReportsMissingAndStrayAndNamesEveryWidget) {
    EXPECT_EQ(binding->unboundControls(), QStringList({"ucBitsField1(0) (TextBox)"}));
    EXPECT_EQ(binding->unboundWidgets(), QStringList({"cmdStray (QPushButton)"}));
    EXPECT_TRUE(binding->mismatches().isEmpty());
    EXPECT_EQ(binding->report().size(), 2);
    for (auto name : {"cmdConnect", "txtAddr", "HScrlContrast", "ucBitsField1(3)", "FlexGr"})
        EXPECT_EQ(w<QWidget>(name)->accessibleDescription(), name);
    EXPECT_EQ(w<QLineEdit>("txtAddr")->accessibleName(), "Address:");
}

TEST_F(BindingFixture, AWidgetOfTheWrongKindIsReported) {
    frmDemo other;
    QWidget root;
    root.setLayout(new QVBoxLayout);
    named<QLabel>(&root, "cmdConnect");
    auto b = bindForm(other, &root);
    EXPECT_TRUE(b->mismatches().join("").contains("cmdConnect: QLabel does not fit Button"));
}

TEST_F(BindingFixture, ModelWritesShowWithoutEcho) {
    int events = 0;
    form.txtAddr.onChange.connect([&] { ++events; });
    form.chkAuto.onClick.connect([&] { ++events; });
    form.HScrlContrast.onChange.connect([&] { ++events; });
    form.cboPresets.onClick.connect([&] { ++events; });
    form.lstPorts.onClick.connect([&] { ++events; });

    form.cmdConnect.setCaption("&Connect");
    form.cmdConnect.setEnabled(false);
    form.txtAddr.setText("0x20");
    form.lblMsg.setCaption("Load OK");
    form.chkAuto.setValue(1);
    form.HScrlContrast.setMax(0); // reversed bar: Max first keeps the value 0 inside
    form.HScrlContrast.setMin(255);
    form.HScrlContrast.setValue(200);
    form.cboPresets.addItem("640x480x60");
    form.cboPresets.addItem("1024x768x75");
    form.cboPresets.setListIndex(1);
    form.lstPorts.addItem("COM1");
    form.lstPorts.setListIndex(0);
    form.mnuExit.setEnabled(false);
    form.mnuFile.setCaption("&Card");
    form.FlexGr.setRows(3);
    form.FlexGr.setTextMatrix(2, 1, "7Fh");
    form.fraMode.setCaption("Mode");
    form.StatusBar1.setPanelText(2, "Connected");
    form.ProgBar.setValue(40);
    form.ucBitsField1(3).setVisible(false);

    EXPECT_EQ(events, 5) << "only the model's own events, none echoed back";
    EXPECT_EQ(w<QPushButton>("cmdConnect")->text(), "&Connect");
    EXPECT_FALSE(w<QPushButton>("cmdConnect")->isEnabled());
    EXPECT_EQ(w<QLineEdit>("txtAddr")->text(), "0x20");
    EXPECT_EQ(w<QLabel>("lblMsg")->text(), "Load OK");
    EXPECT_TRUE(w<QCheckBox>("chkAuto")->isChecked());
    auto* sl = w<QScrollBar>("HScrlContrast");
    EXPECT_EQ(sl->minimum(), 0);
    EXPECT_EQ(sl->maximum(), 255);
    EXPECT_EQ(sl->value(), 200);
    EXPECT_TRUE(sl->invertedAppearance());
    EXPECT_EQ(w<QComboBox>("cboPresets")->currentText(), "1024x768x75");
    EXPECT_EQ(w<QListWidget>("lstPorts")->currentRow(), 0);
    EXPECT_FALSE(win->findChild<QAction*>("mnuExit")->isEnabled());
    EXPECT_EQ(win->findChild<QMenu*>("mnuFile")->title(), "&Card");
    EXPECT_EQ(w<QTableWidget>("FlexGr")->item(2, 1)->text(), "7Fh");
    EXPECT_EQ(w<QGroupBox>("fraMode")->title(), "Mode");
    auto panels = w<QStatusBar>("StatusBar1")->findChildren<QLabel*>();
    ASSERT_EQ(panels.size(), 2);
    EXPECT_EQ(panels[1]->text(), "Connected");
    EXPECT_EQ(w<QProgressBar>("ProgBar")->value(), 40);
    EXPECT_TRUE(w<QLineEdit>("ucBitsField1(3)")->isHidden());
}

TEST_F(BindingFixture, UserActionsReachTheModelOnce) {
    QStringList log;
    form.cmdConnect.onClick.connect([&] { log << "connect"; });
    form.chkAuto.onClick.connect(
        [&] { log << QStringLiteral("auto %1").arg(form.chkAuto.value()); });
    form.optDVI.onClick.connect([&] { log << "dvi"; });
    form.optRGB.onClick.connect([&] { log << "rgb"; });
    form.HScrlContrast.setMax(100);
    form.HScrlContrast.onChange.connect(
        [&] { log << QStringLiteral("change %1").arg(form.HScrlContrast.value()); });
    form.HScrlContrast.onScroll.connect(
        [&] { log << QStringLiteral("scroll %1").arg(form.HScrlContrast.value()); });
    form.spnPage.setMax(10);
    form.spnPage.onChange.connect([&] { log << "page"; });
    form.cboPresets.addItem("a");
    form.cboPresets.addItem("b");
    form.cboPresets.onClick.connect([&] { log << "preset " + form.cboPresets.text(); });
    form.lstPorts.addItem("COM1");
    form.lstPorts.addItem("COM2");
    form.lstPorts.onClick.connect([&] { log << "port " + form.lstPorts.text(); });
    form.mnuExit.onClick.connect([&] { log << "exit"; });
    form.FlexGr.setRows(4);
    form.FlexGr.onClick.connect([&] { log << QStringLiteral("cell %1").arg(form.FlexGr.row()); });

    w<QPushButton>("cmdConnect")->click();
    w<QCheckBox>("chkAuto")->click();
    form.optRGB.setValue(true);
    log.clear();
    w<QRadioButton>("optDVI")->click();
    EXPECT_FALSE(w<QRadioButton>("optRGB")->isChecked()) << "the model's group clears the other";
    auto* sl = w<QScrollBar>("HScrlContrast");
    sl->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    sl->setSliderDown(true);
    sl->setSliderPosition(40);
    sl->setSliderPosition(60);
    sl->setSliderDown(false);
    w<QSpinBox>("spnPage")->stepUp();
    auto* cbo = w<QComboBox>("cboPresets");
    cbo->setCurrentIndex(1);
    emit cbo->activated(1);
    w<QListWidget>("lstPorts")->setCurrentRow(1);
    win->findChild<QAction*>("mnuExit")->trigger();
    emit w<QTableWidget>("FlexGr")->cellClicked(3, 1);

    EXPECT_EQ(log, QStringList({"dvi", "change 1", "scroll 40", "scroll 60", "change 60", "page",
                                "preset b", "port COM2", "exit", "cell 3"}));
    EXPECT_EQ(form.cboPresets.listIndex(), 1);
    EXPECT_EQ(form.spnPage.value(), 1);
    EXPECT_EQ(form.FlexGr.col(), 1);
}

TEST_F(BindingFixture, FirstClicksAreCountedOnce) {
    int connect = 0, chk = 0;
    form.cmdConnect.onClick.connect([&] { ++connect; });
    form.chkAuto.onClick.connect([&] { ++chk; });
    w<QPushButton>("cmdConnect")->click();
    w<QCheckBox>("chkAuto")->click();
    EXPECT_EQ(connect, 1);
    EXPECT_EQ(chk, 1);
    EXPECT_EQ(form.chkAuto.value(), 1);
    w<QCheckBox>("chkAuto")->click();
    EXPECT_EQ(form.chkAuto.value(), 0);
    EXPECT_FALSE(w<QCheckBox>("chkAuto")->isChecked());
}

TEST_F(BindingFixture, TypingGoesThroughKeyPress) {
    auto* le = w<QLineEdit>("txtAddr");
    int changes = 0;
    form.txtAddr.onChange.connect([&] { ++changes; });
    form.txtAddr.onKeyPress.connect([](int& k) {
        if (!(k >= '0' && k <= '9') && k != 8) k = 0;
    });
    for (QChar c : QStringLiteral("1x2"))
        sendKey(le, c.isDigit() ? Qt::Key_0 + c.digitValue() : Qt::Key_X, QString(c));
    sendKey(le, Qt::Key_Backspace, QString());
    sendKey(le, Qt::Key_7, "7");
    EXPECT_EQ(form.txtAddr.text(), "17");
    EXPECT_EQ(le->text(), "17");
    EXPECT_EQ(changes, 4);

    le->setText("170"); // a paste
    emit le->textEdited("170");
    EXPECT_EQ(form.txtAddr.text(), "170");
    EXPECT_EQ(changes, 5);
}

TEST(FormWindowTest, CloseUnloadsUnlessCancelledAndKeysReachTheForm) {
    Forms forms;
    forms.registerForm<frmDemo>("frmDemo");
    ViewRegistry views;
    QPointer<QMainWindow> made;
    views.add("frmDemo", [&](Form&) { return made = buildDemo(); });
    views.install(forms);

    auto& f = forms.load<frmDemo>("frmDemo");
    f.setCaption("Demo");
    f.move(30, 40);
    f.show();
    ASSERT_TRUE(made);
    EXPECT_EQ(made->windowTitle(), "Demo");
    EXPECT_EQ(made->accessibleName(), "");
    auto* view = dynamic_cast<FormWindow*>(f.view());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->binding().unboundWidgets(), QStringList({"cmdStray (QPushButton)"}));
    EXPECT_EQ(f.width(), made->frameGeometry().width()) << "the frame's size goes to the form";
    EXPECT_EQ(made->frameGeometry().topLeft(), QPoint(30, 40)) << "the frame stands there";

    int clicks = 0;
    f.cmdConnect.setDefault(true);
    f.cmdConnect.onClick.connect([&] { ++clicks; });
    sendKey(made->findChild<QLineEdit*>("txtAddr"), Qt::Key_Return, "\r");
    EXPECT_EQ(clicks, 1) << "Enter presses the default button";

    f.setCaption("Renamed");
    EXPECT_EQ(made->windowTitle(), "Renamed");
    f.hide();
    EXPECT_FALSE(made->isVisible());
    f.show();

    f.cancelUnload = true;
    made->close();
    EXPECT_TRUE(forms.isLoaded("frmDemo"));
    EXPECT_TRUE(made->isVisible());
    f.cancelUnload = false;
    made->close();
    EXPECT_FALSE(forms.isLoaded("frmDemo"));
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(made) << "the window is freed with its form";
}

TEST(QtDialogsTest, MessageBoxTitleAndButtons) {
    QtDialogs dialogs;
    struct Case {
        MsgButtons buttons;
        QMessageBox::StandardButton press;
        MsgResult expected;
    };
    const Case cases[] = {
        {MsgButtons::YesNo, QMessageBox::No, MsgResult::No},
        {MsgButtons::YesNoCancel, QMessageBox::Cancel, MsgResult::Cancel},
        {MsgButtons::OKCancel, QMessageBox::Ok, MsgResult::OK},
    };
    for (const auto& c : cases) {
        QString title;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            title = box->windowTitle();
            box->button(c.press)->click();
        });
        EXPECT_EQ(dialogs.messageBox("Load OK", c.buttons, QString()), c.expected);
        EXPECT_EQ(title, "Velmorak");
    }
}

TEST(ScriptedDialogsTest, RecordsAndAnswersInOrder) {
    ScriptedDialogs d;
    d.answer(MsgResult::No);
    d.answerText(QStringLiteral("1024x768"));
    d.answerText(std::nullopt);
    EXPECT_EQ(d.messageBox("Save?", MsgButtons::YesNo, "", MsgIcon::Question), MsgResult::No);
    EXPECT_EQ(d.messageBox("Again?", MsgButtons::YesNo, "", MsgIcon::Question), MsgResult::Yes);
    EXPECT_EQ(d.messageBox("Done", MsgButtons::OK, "", MsgIcon::None), MsgResult::OK);
    EXPECT_EQ(d.inputBox("Name", "Velmorak", ""), std::optional<QString>("1024x768"));
    EXPECT_EQ(d.openFileName("Open", "*.bin"), std::nullopt);
    EXPECT_FALSE(d.printerDialog());
    EXPECT_EQ(d.messages(), QStringList({"Save?", "Again?", "Done"}));
    ASSERT_EQ(d.asked().size(), 6u);
    EXPECT_EQ(d.asked()[3].kind, "input");
    EXPECT_EQ(d.asked()[5].kind, "printer");
}

// The modal loop ends with its window unloaded under it (the card pulled out, every window
// closed); the show that opened it returns without touching what is gone.
TEST(FormWindowTest, AModalWindowUnloadedWhileOpenReturnsToItsCaller) {
    Forms forms;
    forms.registerForm<frmDemo>("frmDemo");
    ViewRegistry views;
    views.add("frmDemo", [](Form&) { return buildDemo(); });
    views.install(forms);
    auto& f = forms.load<frmDemo>("frmDemo");
    QTimer::singleShot(0, [&forms] { forms.unload("frmDemo"); });
    f.show(true);
    EXPECT_FALSE(forms.isLoaded("frmDemo"));
    f.show(true); // released: nothing opens, nothing blocks
    FormWindow::releasePending();
}
