#include "link/Placement.h"

#include "forms/Form.h"
#include "link/ValueHelpers.h"
#include "platform/Settings.h"

namespace velmorak {

void placeFromLayout(Form& f, const Settings& settings, const QRect& screen,
                     const QString& section) {
    const QString layout = settings.get(section, QStringLiteral("Layout"));
    const int comma = int(layout.indexOf(u','));
    if (comma <= 0) return;
    // Far off the screen is pulled back like any other position off it.
    const int x = ToInt32(Val(layout.left(comma)), OnOverflow::Clamp);
    const int y = ToInt32(Val(layout.mid(comma + 1)), OnOverflow::Clamp);
    f.move(qBound(screen.left(), x, screen.right() - f.width() / 2),
           qBound(screen.top(), y, screen.bottom() - f.height() / 2));
}

} // namespace velmorak
