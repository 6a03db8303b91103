#pragma once

#include <QRect>
#include <QString>

namespace velmorak {

struct AppContext;
class Form;
class MenuItem;

enum class TestPicture { Sharp, Color, Gray };

// What a click on impicColor or impicGray does with frmTestC, by ColorTestStep.
struct BarsStep {
    enum Action { Place, Switch, Close } action;
    int step;      // the new ColorTestStep (Place: when beside the window)
    int stripStep; // Place: the new ColorTestStep for a narrow strip
    bool colour;   // which picture the window then shows
};
BarsStep barsStep(TestPicture which, int colorTestStep);

// Opens, places and closes the three test picture windows (state lives in CardState:
// TestBarsOn, SharpTestStep, ColorTestStep, GrayTestStep, TestW, TestH).
class TestBars {
  public:
    explicit TestBars(AppContext& c);
    // mnuTests of frmStart and mnuTestBars of frmAD9888: toggles the set of three.
    void toggleSet(MenuItem& tick, Form& caller);
    // A click on one of frmConsole's strips. `picture` is the strip's rectangle inside the
    // console window (its frame's left plus its own left, its width), as the view reports it.
    void pictureClick(TestPicture which, Form& console, const QRect& picture);
    // The strip's tool tip now: "Click on it to close 'TEST BAR'" while its window is open,
    // "Click on it to show 'TEST BAR'" otherwise.
    QString tip(TestPicture which) const;
    // frmConsole's Unload: closes frmTest when SharpTestStep != 0, frmTestC when ColorTestStep !=
    // 0.
    void consoleUnloaded();
    // mnuSharp / mnuColor / mnuGray of frmAD9888.
    void menuToggle(TestPicture which, MenuItem& tick);

    // Esc on frmTest and the set switched off: the three windows go and the menus lose their
    // tick.
    void closeSet();
    // Maximises the window to learn the usable height, returns to the normal state and gives
    // the window that height.
    int fitHeight(Form& f);

  private:
    void openSet(MenuItem& tick, Form& caller);
    void sharpClick(Form& console, const QRect& picture);
    void barsClick(TestPicture which, Form& console, const QRect& picture);
    int widthOf(const QString& name, int designed) const;
    AppContext& c_;
};

} // namespace velmorak
