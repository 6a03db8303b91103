#include "forms/Control.h"

namespace velmorak {

QString Control::fullName() const {
    return index_ < 0 ? name_ : QStringLiteral("%1(%2)").arg(name_).arg(index_);
}

void Control::setEnabled(bool on) {
    if (enabled_ == on) return;
    enabled_ = on;
    changed(Prop::Enabled);
}

void Control::setVisible(bool on) {
    if (visible_ == on) return;
    visible_ = on;
    changed(Prop::Visible);
}

void Control::setToolTipText(const QString& t) {
    if (toolTip_ == t) return;
    toolTip_ = t;
    changed(Prop::ToolTip);
}

} // namespace velmorak
