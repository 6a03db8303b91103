#include "forms/FrmWait.h"

#include "forms/Forms.h"

#include <algorithm>

namespace velmorak {

FrmWait::FrmWait() : Form(QString::fromLatin1(kName)) {
    setCaption(QStringLiteral("Please wait..."));
    move(0, 0, 320, 70);
}

void FrmWait::progress(int value) {
    ProgBar.setValue(std::clamp(value, ProgBar.min(), ProgBar.max()));
    refresh();
}

FrmWait& FrmWait::showOver(Forms& forms, const Form& owner) {
    auto& w = forms.load<FrmWait>(QString::fromLatin1(kName));
    w.move(owner.left() + (owner.width() - w.width()) / 2,
           owner.top() + (owner.height() - w.height()) / 2);
    w.show();
    return w;
}

FrmWait* FrmWait::find(Forms& forms) {
    return forms.get<FrmWait>(QString::fromLatin1(kName));
}

} // namespace velmorak
