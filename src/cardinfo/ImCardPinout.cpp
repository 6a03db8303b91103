#include "cardinfo/ImCardPinout.h"

#include "cardinfo/CapturePrint.h"
#include "platform/Host.h"

#include <cmath>

namespace velmorak {

ImCardPinout::ImCardPinout(AppContext& ctx) : Form(QStringLiteral("imCardPinout")), c_(ctx) {
    setCaption(QStringLiteral("Pinout"));
    move(0, 0, 720, 480);
    struct Menu {
        MenuItem* item;
        MenuItem* parent;
        const char* caption;
    };
    const Menu menus[] = {
        {&mnuFile, nullptr, "&File"},          {&mnuPrintPinout, &mnuFile, "&Print"},
        {&mnuClosePinout, &mnuFile, "&Close"}, {&mnuZoom, nullptr, "&Zoom"},
        {&mnuIncreise, &mnuZoom, "+"},         {&mnuDecreise, &mnuZoom, "_"},
    };
    for (const Menu& m : menus) {
        m.item->setCaption(QString::fromLatin1(m.caption));
        if (m.parent) m.parent->addChild(*m.item);
    }
    mnuIncreise.onClick.connect([this] {
        if (height() * 0.2 + height() < c_.screen.height()) zoom(0.2);
    });
    mnuDecreise.onClick.connect([this] {
        if (height() - height() * 0.2 > kMinHeight) zoom(-0.2);
    });
    mnuPrintPinout.onClick.connect([this] { printWindowCapture(c_.dialogs, *this); });
    mnuClosePinout.onClick.connect([this] { unload(); });
}

void ImCardPinout::zoom(double factor) {
    const double w = width(), h = height();
    move(left(), top(), int(std::lround(w + w * factor)), int(std::lround(h + h * factor)));
}

void ImCardPinout::formUnload(bool& cancel) {
    (void)cancel;
    c_.host.sleep(1);
}

} // namespace velmorak
